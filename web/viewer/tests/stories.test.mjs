// Stories of people who use the viewer, told to the real page in a browser.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, statSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { after, test } from "node:test";
import { read, root } from "../../tests/package.mjs";
import { block } from "./block.mjs";
import { browser, file, Viewer } from "./page.mjs";

after(() => browser.close());

/** A story has a page of its own, and nothing may go wrong in it. */
function story(name, tell, options = {}) {
    test(name, async () => {
        const viewer = await Viewer.open({ scene: block, ...options });
        await tell(viewer);
        assert.deepEqual(viewer.errors, []);
        await viewer.close();
    });
}

/** What the host without a screen makes of a file. */
function drawnByHost(text) {
    const folder = mkdtempSync(`${tmpdir()}/viewer-`);
    const host = process.env.PMI_HOST ?? `${root}build/release/bin/pmi-host`;
    writeFileSync(`${folder}/scene.json`, text);
    try {
        return JSON.parse(execFileSync(host, ["dump", `${folder}/scene.json`]));
    } finally {
        rmSync(folder, { recursive: true });
    }
}

/** Numbers in single precision. */
const single = (value) =>
    JSON.parse(JSON.stringify(value, (_, x) => (typeof x === "number" ? Math.fround(x) : x)));

/** Places of the block. */
const bottomEdge = [60, 0, 20];
const leftEdge = [0, 30, 20];
const onHole = [55, 40, 20];
const centre = [40, 40, 20];
const onArc = [100 + 20 * Math.SQRT1_2, 60 + 20 * Math.SQRT1_2, 20];

async function placeLength(viewer, at = [60, -10, 20]) {
    const count = (await viewer.recipes()).length;
    await viewer.click(bottomEdge);
    await viewer.says("Length");
    await viewer.click(at);
    await viewer.waitForCount(count + 1);
}

story("the page is one small file that asks for nothing", async (viewer) => {
    assert.ok(statSync(file).size <= 1.5e6);
    const others = viewer.requests.filter((url) => !/^(file:.*index\.html|data:|blob:)/.test(url));
    assert.deepEqual(others, []);
    await viewer.page.click("#about summary");
    assert.match(await viewer.page.textContent("#licences"), /three\.js authors[\s\S]*three-mesh-bvh/i);
});

story("a user who reads nothing but the status line measures a hole", async (viewer) => {
    await viewer.look("top");
    await viewer.hover([20, 20, 20]);
    await viewer.says("Point at an edge, a circle, a vertex or a centre");
    await viewer.hover(onHole);
    await viewer.says("Circle, diameter 30 mm, centre (40, 40, 20) · click: measure diameter: 30 mm");
    await viewer.click(onHole);
    await viewer.hover([60, 60, 20]);
    await viewer.says("Diameter: 30 mm · click: place it · Tab: another kind · Esc: cancel");
    await viewer.press("Tab");
    await viewer.says("Radius: 15 mm · click: place it");
    await viewer.press("Shift+Tab");
    await viewer.says("Diameter: 30 mm");
    await viewer.press("Escape");
    await viewer.says("Point at an edge");
    await viewer.click(onHole);
    await viewer.hover(leftEdge);
    await viewer.says("Edge, length 65 mm · click: to it: distance to edge: 40 mm");
    await viewer.click(leftEdge);
    await viewer.click([20, 20, 20]);
    await viewer.waitForCount(1);
    await viewer.hover([60, 60, 20]);
    await viewer.page.mouse.move(...(await viewer.textAt(0)));
    await viewer.says("Annotation 40.00 · click: select it · drag: move it");
});

story("one thing or two give the dimension that fits", async (viewer) => {
    await viewer.look("top");
    const cases = [
        [[bottomEdge], [60, -10, 20], "120.00", "PMICreateClipDim3D"],
        [[onHole], [60, 60, 20], "⌀30.00", "PMICreateDiameterDim3D"],
        [[onArc], [107, 67, 20], "31.42", "PMICreateArcDim3D"],
        [[bottomEdge, [60, 80, 20]], [70, 30, 20], "80.00", "PMICreateLinDistDim3D"],
        [[centre, leftEdge], [20, 25, 20], "40.00", "PMICreateLinDotDim3D"],
        [[[0, 0, 20], centre], [30, 10, 20], "56.57", "PMICreateClipDim3D"],
        [[[60, 80, 20], [7.5, 72.5, 20]], [30, 72, 20], "135°", "PMICreateAngleDim3D"],
        [[onHole, [100, 60, 20]], [70, 70, 20], "63.25", "PMICreateClipDim3D"],
    ];
    for (const [picks, place, value, call] of cases) {
        for (const [i, pick] of picks.entries()) {
            await viewer.click(pick);
            await viewer.app((app) => app.measuring.picking.picks.length).then((n) => assert.equal(n, i + 1));
        }
        await viewer.click(place);
        await viewer.waitForCount(1);
        const [recipe] = await viewer.recipes();
        assert.equal(recipe.call, call);
        assert.deepEqual(await viewer.values(), [value]);
        await viewer.press("Control+z");
        await viewer.waitForCount(0);
    }
});

story("hidden edges never light, and a hole lights whole", async (viewer) => {
    await viewer.look("iso");
    await viewer.hover([60, 80, 0]);
    assert.doesNotMatch(await viewer.status(), /^Edge/);
    await viewer.hover([120, 30, 0]);
    await viewer.says("Edge, length 60 mm");
    await viewer.hover([60, 80, 20]);
    await viewer.says("Edge, length 85 mm");
    for (const angle of [0.2, 2, 4]) {
        await viewer.hover([40 + 15 * Math.cos(angle), 40 + 15 * Math.sin(angle), 20]);
        await viewer.says("Circle, diameter 30 mm, centre (40, 40, 20)");
    }
    await viewer.hover([25, 40, 20], -5, -3);
    await viewer.says("Circle");
    await viewer.hover([25, 40, 20], -8, -3);
    await viewer.says("Point at");
});

story("turning the view moves nothing, and all text stays readable", async (viewer) => {
    await viewer.look("top");
    await placeLength(viewer);
    await viewer.click(onHole);
    await viewer.click([70, 60, 20]);
    await viewer.click(onArc);
    await viewer.click([125, 85, 20]);
    await viewer.waitForCount(3);
    const placed = await viewer.recipes();
    const [left, top] = await viewer.at([20, 20, 20]);
    const views = [];
    for (const [dx, dy] of [[120, 0], [0, 160], [0, 160], [-90, 70], [60, -150]]) {
        await viewer.drag([left, top], [left + dx, top + dy]);
        views.push(JSON.stringify(await viewer.app((app) => app.stage.camera.view)));
    }
    assert.equal(new Set(views).size, views.length);
    const wrong = await viewer.app((app) => {
        const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
        const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
        const unit = (a) => a.map((x) => x / Math.hypot(...a));
        const found = [];
        for (let i = 0; i < 27; ++i) {
            const to = unit([(i % 3) - 1, (Math.floor(i / 3) % 3) - 1, Math.floor(i / 9) - 1]);
            if (i === 13) continue;
            const level = unit(cross(Math.abs(to[2]) < 0.9 ? [0, 0, 1] : [0, 1, 0], to));
            for (const roll of [0, 2, 4]) {
                const across = cross(to, level);
                const right = level.map((x, k) => Math.cos(roll) * x + Math.sin(roll) * across[k]);
                app.look({ right, up: cross(to, right), to });
                for (const { labels, text } of app.placed.drawings) {
                    for (const { x, y } of labels) {
                        const normal = cross(x, y);
                        const isSeen = Math.abs(dot(normal, to)) > 1e-3;
                        if (isSeen && (dot(normal, to) < 0 || dot(x, right) < -1e-3)) found.push([text, i, roll]);
                    }
                }
                app.placed.annotations.forEach(({ located, plane: m }, k) => {
                    const { locate } = app.document.recipes[k];
                    const [u, v, w] = located.point;
                    locate.forEach((value, n) => {
                        const now = u * m[n] + v * m[4 + n] + w * m[8 + n] + m[12 + n];
                        if (Math.abs(now - value) > 1e-3) found.push(["moved", k, i, roll]);
                    });
                });
            }
        }
        return found;
    });
    assert.deepEqual(wrong, []);
    assert.deepEqual(await viewer.recipes(), placed);
});

story("text is dragged, also in front of the model, undone and done again", async (viewer) => {
    await viewer.look("top");
    await placeLength(viewer);
    const [first] = await viewer.recipes();
    const text = await viewer.textAt(0);
    const over = await viewer.at([75, 30, 20]);
    await viewer.drag(text, over);
    const [moved] = await viewer.recipes();
    assert.ok(moved.locate[1] > 20 && Math.abs(moved.locate[2] - 20) < 1e-9, String(moved.locate));
    await viewer.drag(await viewer.textAt(0), await viewer.at([60, -12, 20]));
    const [back] = await viewer.recipes();
    assert.ok(back.locate[1] < -5, String(back.locate));
    await viewer.press("Control+z");
    assert.deepEqual(await viewer.recipes(), [moved]);
    await viewer.press("Control+z");
    assert.deepEqual(await viewer.recipes(), [first]);
    await viewer.press("Control+y");
    assert.deepEqual(await viewer.recipes(), [moved]);
    await viewer.press("Control+z");
    await viewer.press("Control+z");
    assert.deepEqual(await viewer.recipes(), []);
    assert.ok(await viewer.page.isDisabled("#undo"));
});

story("the list and the model light each other, and what is selected is deleted", async (viewer) => {
    await viewer.look("top");
    await placeLength(viewer);
    await viewer.click(onHole);
    await viewer.click([70, 60, 20]);
    await viewer.waitForCount(2);
    await viewer.page.hover("#list li:nth-child(2)");
    await viewer.page.waitForFunction(() => window.viewer.app.placed.lit === 1);
    await viewer.page.mouse.move(...(await viewer.textAt(0)));
    await viewer.page.waitForSelector("#list li:nth-child(1).lit");
    const [x, y] = await viewer.textAt(0);
    await viewer.page.mouse.click(x, y);
    await viewer.page.waitForSelector("#list li:nth-child(1).selected");
    await viewer.press("Delete");
    assert.deepEqual(await viewer.values(), ["⌀30.00"]);
    await viewer.page.click("#list li button");
    assert.deepEqual(await viewer.values(), []);
    await viewer.press("Control+z");
    await viewer.press("Control+z");
    assert.deepEqual(await viewer.values(), ["120.00", "⌀30.00"]);
});

story("a note is written; the keys of its text stay its own", async (viewer) => {
    await viewer.look("top");
    await placeLength(viewer);
    await viewer.click([120, 60, 20]);
    await viewer.press("n");
    await viewer.hover([80, 60, 20]);
    await viewer.says("Note · click: place it");
    await viewer.click([80, 60, 20]);
    await viewer.page.waitForSelector("#text:focus");
    await viewer.page.keyboard.type("DEBURR!");
    await viewer.press("Control+z");
    await viewer.page.keyboard.insertText(" ALL EDGES");
    assert.equal((await viewer.recipes()).length, 1);
    await viewer.press("Enter");
    await viewer.waitForCount(2);
    const note = (await viewer.recipes())[1].calls[0];
    // Ctrl+Z has taken back what was typed, and no annotation.
    assert.deepEqual(note.lines, ["ALL EDGES"]);
    assert.deepEqual(note.target, [120, 60, 20]);
    assert.equal((await viewer.values())[1], note.lines[0]);
});

story("what is saved opens again, and pmi-host draws the same", async (viewer) => {
    await viewer.look("iso");
    await placeLength(viewer);
    await viewer.click(onHole);
    await viewer.click([85, 70, 20]);
    await viewer.click([120, 30, 20]);
    await viewer.click([60, 0, 20]);
    await viewer.click([90, 25, 20]);
    await viewer.click([120, 0, 20]);
    await viewer.press("n");
    await viewer.click([110, 30, 20]);
    await viewer.page.keyboard.type("CORNER");
    await viewer.press("Enter");
    await viewer.waitForCount(4);
    await viewer.rest();
    // In the words of the host, found in the page: numbers in single precision, as they are drawn.
    const words = read("web/tests/dump.mjs").replaceAll("export ", "");
    await viewer.page.addScriptTag({ content: `${words}\nwindow.dumpOf = dumpOf;` });
    const shown = await viewer.app((app) => app.placed.annotations.map((a) => window.dumpOf(a)));
    const { name, text } = await viewer.save();
    assert.equal(name, "A_block_with_a_hole.json");
    const saved = JSON.parse(text);
    const { mesh, edges } = block;
    assert.deepEqual({ mesh: saved.mesh, edges: saved.edges }, { mesh, edges });
    const drawn = drawnByHost(text).annotations;
    assert.equal(drawn.length, 4);
    assert.deepEqual(single(shown), single(drawn));
    const values = await viewer.values();
    await viewer.drop(text, name);
    assert.deepEqual(await viewer.recipes(), saved.annotations);
    assert.deepEqual(await viewer.values(), values);
    const again = await viewer.save();
    assert.deepEqual(JSON.parse(again.text), saved);
});

story("a file with a mistake is refused in one line, and the scene stays", async (viewer) => {
    await placeLength(viewer);
    const circle = { type: "arc", centre: [0, 0, 0], normal: [0, 0, 1] };
    const cases = [
        ["{", /^broken\.json: not JSON: /],
        [{ ...block, edges: [circle] }, /^broken\.json: edges\[0\]: "radius" is missing$/],
        [{ ...block, version: 7 }, /^broken\.json: version: expected 1/],
        [{ ...block, mesh: { ...block.mesh, positions: "?" } }, /^broken\.json: mesh\.positions: /],
        [{ annotations: [{ call: "PMICreateNothing" }] }, /^broken\.json: annotations\[0\]\.call: /],
    ];
    for (const [scene, message] of cases) {
        await viewer.drop(scene, "broken.json");
        assert.match(await viewer.page.textContent("#error"), message);
        assert.deepEqual(await viewer.values(), ["120.00"]);
    }
    await viewer.drop({ ...block, title: "Another" }, "another.json");
    assert.ok(await viewer.page.isHidden("#error"));
    assert.equal(await viewer.page.textContent("#title"), "Another");
});

story(
    "a sample that there is not is told by its name",
    async (viewer) => {
        assert.match(await viewer.page.textContent("#error"), /^\?scene=nothing: there is no such sample/);
    },
    { query: "?scene=nothing", scene: undefined },
);

story(
    "clicks on the mounting plate give its designer's values",
    async (viewer) => {
        const { rows } = JSON.parse(read("web/viewer/tests/data/mounting_plate.json"));
        assert.ok(rows.length >= 40);
        for (const { id, view, target, unitsPerPixel, picks, tabs, place, value } of rows) {
            await viewer.app((app, [side, frame]) => {
                app.look(side);
                app.stage.camera.look(frame);
                app.stage.settle();
            }, [view, { target, unitsPerPixel }]);
            for (const pick of picks) {
                await viewer.click(pick);
            }
            for (let tab = 0; tab < tabs; ++tab) {
                await viewer.press("Tab");
            }
            await viewer.clickPixel(place);
            const measured = await viewer.app((app) => app.placed.annotations.map((a) => a.measured.value));
            assert.equal(measured.length, 1, id);
            assert.ok(Math.abs(measured[0] - value) < 1e-4, `${id}: ${measured} instead of ${value}`);
            await viewer.press("Control+z");
        }
    },
    { scene: undefined, query: "?scene=mounting_plate" },
);
