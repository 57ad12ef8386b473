// What the tests share: the package as it is built, and the viewer without a screen beside it.
import { spawnSync } from "node:child_process";
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import path from "node:path";
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

const folder = mkdtempSync(path.join(tmpdir(), "dorvale-scenes-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));

/** What `pmi-host dump` says to a scene. */
function dumped(scene) {
    const file = path.join(folder, "scene.json");
    writeFileSync(file, JSON.stringify(scene));
    const { stdout, stderr } = spawnSync(pmiHost, ["dump", file], { maxBuffer: 1 << 28 });
    return { stdout: String(stdout), stderr: String(stderr).trim().replace(`${file}: `, "") };
}

export const dump = (scene) => JSON.parse(dumped(scene).stdout);

/** What `pmi-host` has against a scene: one line, or nothing. */
export const complaint = (scene) => dumped(scene).stderr;

export const top = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];
export const radius = {
    call: "PMICreateRadiusDim3D",
    circle: { centre: [0, 0, 0], normal: [0, 0, 1], radius: 10 },
    locate: [14, 9, 0],
    height: 3.5,
};
