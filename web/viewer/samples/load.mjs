// The generator of the sample parts, compiled.

import { fileURLToPath } from "node:url";

import { build } from "esbuild";

export const here = fileURLToPath(new URL(".", import.meta.url));

/** The exports of parts.ts. */
export const loadParts = () => load(`${here}parts.ts`);

/** The exports of a source in TypeScript. */
export async function load(source) {
    const { outputFiles } = await build({
        entryPoints: [source],
        bundle: true,
        platform: "node",
        format: "esm",
        write: false,
    });
    const code = Buffer.from(outputFiles[0].contents).toString("base64");
    return import(`data:text/javascript;base64,${code}`);
}
