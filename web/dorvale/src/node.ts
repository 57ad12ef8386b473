// The same for Node, where files are not fetched.
import { readFile } from "node:fs/promises";

import type { Dorvale } from "./dorvale.js";
import { load as loadFrom, type Source } from "./index.js";

export * from "./index.js";

export async function load(
    source: Source = new URL("./dorvale.wasm", import.meta.url),
): Promise<Dorvale> {
    const isAddress = source instanceof URL || typeof source === "string";
    if (!isAddress || /^(https?|data|blob):/.test(String(source))) {
        return loadFrom(source);
    }
    const isFileUrl = String(source).startsWith("file:");
    return loadFrom(await readFile(isFileUrl ? new URL(source) : source));
}
