// The drawing module beside `pmi-host`: the same pictures, to the byte, and the same complaints.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { after, test } from "node:test";
import { read, root } from "../../tests/package.mjs";
import { block } from "./block.mjs";

const { Drawing } = await import("../../../build/viewer/export/drawing.js");
const drawing = await Drawing.of(readFileSync(`${root}build/web/drawing/drawing.wasm`));
const folder = mkdtempSync(`${tmpdir()}/drawing-`);
after(() => rmSync(folder, { recursive: true }));

/** What `pmi-host draw` prints, or says. */
function drawnByHost(text, view) {
    const file = `${folder}/scene.json`;
    writeFileSync(file, text);
    const host = process.env.PMI_HOST ?? `${root}build/release/bin/pmi-host`;
    const named = view === undefined ? [] : ["--view", view];
    const run = spawnSync(host, ["draw", file, ...named], { encoding: "utf8", maxBuffer: 1 << 28 });
    return run.status === 0 ? run.stdout : run.stderr.trim().replace(`${file}: `, "");
}

const drawn = (text, view) => drawing.svg(text, view).catch((error) => error.message);

/** The scene, with a dimension on each of its edges where it has none. */
function dimensioned(text) {
    const scene = JSON.parse(text);
    const finish = { arrow: "fit", gap: 1, readable: true };
    const annotations = (scene.edges ?? []).map(({ type, start, end, centre, normal, radius }) => {
        const [x, y, z] = start ?? centre;
        const common = { locate: [x + 30, y + 20, z + 10], height: 3.5, finish };
        return type === "line"
            ? { call: "PMICreateParallelDim3D", edge: { type, start, end },
                reference: { type, start: [0, 0, 0], end: [1, 0, 0] }, ...common }
            : { call: "PMICreateDiameterDim3D", circle: { centre, normal, radius, type }, ...common };
    });
    return (scene.annotations ?? []).length > 0 ? text : JSON.stringify({ ...scene, annotations });
}

for (const [what, place, count] of [
    ["the gallery", "host/scenes", 50],
    ["the viewer's samples", "web/viewer/samples", 4],
]) {
    test(`the scenes of ${what}, drawn from every side`, async () => {
        const names = readdirSync(root + place).filter((name) => /^(?!tsconfig).*\.json$/.test(name));
        assert.ok(names.length >= count);
        for (const name of names) {
            const text = dimensioned(read(`${place}/${name}`));
            for (const view of [undefined, "iso", "back"]) {
                const picture = await drawing.svg(text, view);
                assert.ok(picture.startsWith("<svg") && picture.includes('class="annotation"'), name);
                assert.ok(picture === drawnByHost(text, view), `${name} from ${view ?? "its view"}`);
            }
        }
    });
}

test("what is wrong with a scene is told as by the host", async () => {
    const scene = JSON.stringify(block);
    const cases = [
        ["{"],
        ['{"annotations": 3}'],
        [scene.replace('"radius":15', '"radius":"wide"')],
        [scene.replace('"positions":"', '"positions":"?')],
        [scene, "Seite"],
        ["[".repeat(100)],
    ];
    for (const [text, view] of cases) {
        const complaint = await drawn(text, view);
        assert.equal(complaint, drawnByHost(text, view));
        assert.doesNotMatch(complaint, /^<svg|\n/);
    }
    assert.match(await drawn(scene), /^<svg/);
});
