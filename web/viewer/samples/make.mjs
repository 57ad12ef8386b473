// Writes the sample parts: node web/viewer/samples/make.mjs

import { writeFileSync } from "node:fs";

import { here, loadParts } from "./load.mjs";

const { parts, sceneOf } = await loadParts();
for (const [name, make] of Object.entries(parts)) {
    writeFileSync(`${here}${name}.json`, sceneOf(make()));
}
