import { type Dorvale, instantiate } from "./dorvale.js";

export type { CallDescription, HandedBackDescription, MemberDescription } from "./calls.js";
export { Annotations, Dorvale, KeptRecipes } from "./dorvale.js";
export { OutOfMemoryError, RecipeError } from "./errors.js";
export {
    type ModelAnnotation,
    type ModelArc,
    type ModelArrow,
    type ModelLine,
    type ModelText,
    toModel,
} from "./model.js";
export type * from "./recipes.js";
export { Scene } from "./scene.js";
export type * from "./types.js";
export type { ValueFormat } from "./valuetext.js";

/** Where the module is, or the module. */
export type Source = string | URL | BufferSource | WebAssembly.Module;

async function bytesFrom(url: string | URL): Promise<ArrayBuffer> {
    const response = await fetch(url);
    if (!response.ok) {
        throw new Error(`${url}: ${response.status} ${response.statusText}`);
    }
    return response.arrayBuffer();
}

/**
 * Loads the library.
 *
 * @param source the module's address, its bytes, or the compiled module; `dorvale.wasm` beside this
 * file unless said otherwise
 */
export async function load(
    source: Source = new URL("./dorvale.wasm", import.meta.url),
): Promise<Dorvale> {
    const isAddress = typeof source === "string" || source instanceof URL;
    return instantiate(isAddress ? await bytesFrom(source) : source);
}
