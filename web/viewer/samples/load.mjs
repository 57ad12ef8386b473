// The generator of the sample parts, compiled.

import { fileURLToPath } from "node:url";

import { build } from "esbuild";

export const here = fileURLToPath(new URL(".", import.meta.url));

/** The exports of parts.ts. */
export async function loadParts() {
    const { outputFiles } = await build({
        entryPoints: [`${here}parts.ts`],
        bundle: true,
        platform: "node",
        format: "esm",
        write: false,
    });
    const code = Buffer.from(outputFiles[0].contents).toString("base64");
    return import(`data:text/javascript;base64,${code}`);
}
