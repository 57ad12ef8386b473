// What the tests share: the package as it is built, and the viewer without a screen beside it.
import { execFileSync, spawnSync } from "node:child_process";
import { readdirSync, readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";

export const root = fileURLToPath(new URL("../..", import.meta.url));
export const dist = `${root}web/dorvale/dist/`;
const pmiHost = process.env.PMI_HOST ?? `${root}build/release/bin/pmi-host`;

export const { load, RecipeError, OutOfMemoryError, Scene, toModel } = await import(
    `${dist}node.js`
);

export const read = (path) => readFileSync(`${root}${path}`, "utf8");

/** The sample scenes: their names and what they hold. */
export const scenes = readdirSync(`${root}host/scenes`)
    .filter((name) => name.endsWith(".json"))
    .map((name) => [name, JSON.parse(read(`host/scenes/${name}`))]);

/** A scene as `pmi-host dump` has it. */
export function dump(scene) {
    const options = { input: JSON.stringify(scene), maxBuffer: 1 << 28 };
    return JSON.parse(execFileSync(pmiHost, ["dump", "/dev/stdin"], options));
}

/** What `pmi-host` has against a scene. */
export function complaint(scene) {
    const { stderr } = spawnSync(pmiHost, ["dump", "/dev/stdin"], { input: JSON.stringify(scene) });
    return String(stderr).trim().replace("/dev/stdin: ", "");
}

export const top = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];
export const radius = {
    call: "PMICreateRadiusDim3D",
    circle: { centre: [0, 0, 0], normal: [0, 0, 1], radius: 10 },
    locate: [14, 9, 0],
    height: 3.5,
};
