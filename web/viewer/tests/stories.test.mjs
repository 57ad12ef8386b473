// Stories of people who use the viewer, told to the real page in a browser.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, statSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { read, root } from "../../tests/package.mjs";
import { block, length } from "./block.mjs";
import { file } from "./page.mjs";
import { story as told } from "./story.mjs";

/** The 26 views along sums of the axes, each upright and rolled twice. */
const views = [-1, 0, 1].flatMap((x) => [-1, 0, 1].flatMap((y) => [-1, 0, 1].flatMap((z) => {
    const to = [x, y, z].map((c) => c / Math.max(1, Math.hypot(x, y, z)));
    const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
    const across = cross(Math.abs(to[2]) < 0.9 ? [0, 0, 1] : [0, 1, 0], to);
    const level = across.map((c) => c / Math.hypot(...across));
    return x === 0 && y === 0 && z === 0 ? [] : [0, 2, 4].map((roll) => {
        const right = level.map((c, i) => Math.cos(roll) * c + Math.sin(roll) * cross(to, level)[i]);
        return { right, up: cross(to, right), to };
    });
})));

/** A story that has the views at hand. */
function story(name, tell, options) {
    const withViews = async (viewer) => {
        await viewer.page.evaluate((list) => void (window.viewer.views = list), views);
        await tell(viewer);
    };
    told(name, withViews, options);
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
    const [request] = viewer.requests;
    assert.match(request, /index\.html$/);
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
    const offered = () => viewer.page.$$eval("#palette button", (all) => all.map((b) => [b.textContent, b.ariaSelected]));
    assert.deepEqual(await offered(), [["Diameter", "true"], ["Radius", "false"]]);
    await viewer.press("Tab");
    await viewer.says("Radius: 15 mm · click: place it");
    assert.deepEqual(await offered(), [["Diameter", "false"], ["Radius", "true"]]);
    await viewer.press("Shift+Tab");
    await viewer.says("Diameter: 30 mm");
    await viewer.press("Escape");
    await viewer.says("Point at an edge");
    await viewer.click(onHole);
    await viewer.hover(leftEdge);
    await viewer.says("Edge, length 65 mm · click: to it: distance to edge: 40 mm");
    const lit = ({ stage }) => [stage.picked, stage.hovered].map(({ lines }) => lines.visible);
    assert.deepEqual(await viewer.app(lit), [true, true]);
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
    // From this corner the back and the left side are hidden, and of the bottom what lies behind.
    const found = await viewer.app((app) => {
        const things = [];
        for (let x = 0; x < 450; x += 5) {
            for (let y = 0; y < 330; y += 5) {
                app.move(x, y);
                const { hovered } = app.measuring;
                if (hovered !== undefined) things.push(hovered);
            }
        }
        return things;
    });
    assert.ok(found.length > 150, String(found.length));
    for (const { thing, at: [x, y, z] } of found) {
        const isInHole = Math.hypot(x - 40, y - 40) < 16;
        const isSeen = z > 19.9 || y < 0.1 || (x > 105 && y < 78) || isInHole;
        assert.ok(isSeen, `${thing.kind} at ${[x, y, z]}`);
    }
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
    const moved = await viewer.app((app) => {
        const points = () => app.placed.annotations.map(({ located, plane: m }) => {
            const [u, v, w] = located.point;
            return [0, 1, 2].map((n) => u * m[n] + v * m[4 + n] + w * m[8 + n] + m[12 + n]);
        });
        const found = [];
        for (const view of window.viewer.views) {
            app.look(view);
            points().forEach((p, i) => {
                const { locate } = app.document.recipes[i];
                if (Math.hypot(...p.map((x, n) => x - locate[n])) > 1e-3) found.push([i, p, view]);
            });
        }
        return found;
    });
    assert.deepEqual(moved, []);
    assert.deepEqual(await viewer.recipes(), placed);
});

story("an annotation that was placed off its plane does not slide away", async (viewer) => {
    const scene = { ...block, annotations: [{ ...length, locate: [60, -10, 60] }, { ...length, locate: [60, -90, 20] }] };
    await viewer.choose(scene);
    const [off, on] = await viewer.recipes();
    // Along the line of sight of iso: (1, -1, 1).
    assert.ok(Math.hypot(off.locate[0] - 20, off.locate[1] - 30, off.locate[2] - 20) < 1e-4, off.locate);
    assert.deepEqual(on, scene.annotations[1]);
    const lines = () => viewer.app((app) => [...app.placed.drawings[0].segments]);
    const drawn = await lines();
    await viewer.look("top");
    const turned = await lines();
    const [, y] = await viewer.textAt(1);
    assert.ok(y > 200 && y < 370, `the fitted picture has it at ${y}`);
    assert.equal(turned.length, drawn.length);
    turned.forEach((x, i) => assert.ok(Math.abs(x - drawn[i]) < 1e-3));
});

story(
    "in every view the page draws text neither mirrored nor upside down",
    async (viewer) => {
        // An L leans to the left and to the bottom: where its ink is tells how it stands.
        const wrong = await viewer.app((app) => {
            const { camera, placed } = app.stage;
            const [ghost, rim] = placed.writing_;
            [placed.lines_, placed.hiddenLines_, placed.heads_, ghost, rim].forEach((m) => (m.visible = false));
            const canvas = document.getElementById("canvas");
            const gl = canvas.getContext("webgl2");
            const pixels = new Uint8Array(4 * canvas.width * canvas.height);
            const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
            const found = [];
            let seen = 0;
            for (const view of window.viewer.views) {
                const before = app.placed.drawings[0].labels[0];
                camera.look({ view, target: before.center, unitsPerPixel: 0.2 });
                app.stage.draw();
                gl.readPixels(0, 0, canvas.width, canvas.height, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
                const { center, x, y } = app.placed.drawings[0].labels[0];
                const { target } = camera.frame;
                const [ax, ay, bx, by] = [dot(x, view.right), dot(x, view.up), dot(y, view.right), dot(y, view.up)];
                const area = ax * by - ay * bx;
                if (Math.abs(area) < 0.2) continue;
                const [s, t] = [[], []];
                const away = center.map((c, i) => c - target[i]);
                const [cx, cy] = [dot(away, view.right), dot(away, view.up)];
                for (let i = 0; i < pixels.length / 4; ++i) {
                    if (pixels[4 * i + 3] < 128) continue;
                    const u = ((i % canvas.width) + 0.5 - canvas.width / 2) * 0.2 - cx;
                    const v = (Math.floor(i / canvas.width) + 0.5 - canvas.height / 2) * 0.2 - cy;
                    s.push((u * by - v * bx) / area);
                    t.push((ax * v - ay * u) / area);
                }
                const lean = (list) => {
                    const low = list.reduce((a, b) => Math.min(a, b), Infinity);
                    const high = list.reduce((a, b) => Math.max(a, b), -Infinity);
                    return list.reduce((a, b) => a + b, 0) / list.length < (low + high) / 2 ? 1 : -1;
                };
                const [right, up] = [lean(s), lean(t)];
                ++seen;
                if (s.length < 50 || right * up * area < 0 || right * ax < -1e-3) found.push([view, s.length, right, up]);
            }
            return seen < 40 ? seen : found;
        });
        assert.deepEqual(wrong, []);
    },
    {
        scene: {
            view: "top",
            annotations: [{ ...length, height: 20, finish: { ...length.finish, label: "L" } }],
        },
    },
);

story("what is open is built once for a view, and text that flips at once", async (viewer) => {
    const counts = await viewer.app((app, length) => {
        const { library } = app.space;
        const build = library.buildAll.bind(library);
        let built = 0;
        library.buildAll = (recipes, ...others) => {
            built += recipes.length;
            return build(recipes, ...others);
        };
        const taking = (act) => {
            built = 0;
            act();
            return built;
        };
        const scene = { view: "top", annotations: Array(120).fill(length) };
        const { camera } = app.stage;
        const from = ([right, up, to]) => ({ right, up, to });
        return [
            taking(() => app.open(JSON.stringify(scene), "many.json")),
            taking(() => app.space.fit()),
            taking(() => app.space.change([...app.document.recipes, { ...length }])),
            // Turned a little, with nothing to be read from another side; then from below.
            taking(() => (camera.orbit(5, 5), app.stage.draw())),
            taking(() => (camera.look({ view: from([[1, 0, 0], [0, -1, 0], [0, 0, -1]]) }), app.stage.draw())),
            taking(() => (camera.orbit(5, 5), app.stage.draw())),
            taking(() => app.stage.settle()),
        ];
    }, length);
    assert.deepEqual(counts, [120, 0, 1, 0, 121, 0, 121]);
    await viewer.page.waitForFunction(() => document.querySelectorAll("#list li").length === 121);
});

story("a text of more characters than the atlas first has room for is drawn whole", async (viewer) => {
    const many = String.fromCodePoint(...Array.from({ length: 400 }, (_, i) => 0x4e00 + i));
    const note = (lines) => ({
        display: true,
        screenParallel: true,
        calls: [{ call: "PMICreateNote3D", lines, text: [0, 0, 0], height: 10 }],
    });
    await viewer.choose({ view: "top", annotations: [note([many]), note(["█"])] });
    const [isWhole, places] = await viewer.app((app) => {
        const { camera, glyphs } = app.stage;
        const { center } = app.placed.drawings[1].labels[0];
        app.space.change(app.document.recipes.slice(1));
        camera.look({ target: [center[0] + 3, center[1] + 3, center[2]], unitsPerPixel: 0.1 });
        app.stage.draw();
        const canvas = document.getElementById("canvas");
        const gl = canvas.getContext("webgl2");
        const pixel = new Uint8Array(4);
        gl.readPixels(canvas.width / 2, canvas.height / 2, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, pixel);
        const at = [...glyphs.glyphs_.values()].map(({ x, y }) => `${x} ${y}`);
        return [[...pixel], [at.length, new Set(at).size]];
    });
    // The block covers the middle, in the colour of placed annotations.
    assert.deepEqual(isWhole, [0x12, 0x3c, 0x8c, 255]);
    assert.ok(places[0] > 400 && places[0] === places[1], String(places));
});

story("the view is turned, rolled, moved and zoomed by the mouse, and set by keys and buttons", async (viewer) => {
    await viewer.look("top");
    const view = () => viewer.app((app) => app.stage.camera.view);
    const near = (a, b, tolerance = 1e-3) =>
        a.forEach((x, i) => assert.ok(Math.abs(x - b[i]) < tolerance, `${a} instead of ${b}`));
    const corner = await viewer.at([120, 0, 20]);
    await viewer.page.mouse.move(...corner);
    await viewer.page.mouse.wheel(0, -300);
    await viewer.rest();
    near(await viewer.at([120, 0, 20]), corner, 1);
    assert.ok(Math.hypot(...(await viewer.at([0, 0, 20])).map((x, i) => x - corner[i])) > 450);
    const [x, y] = corner;
    await viewer.drag(corner, [x - 60, y - 40], { button: "right" });
    near(await viewer.at([120, 0, 20]), [x - 60, y - 40], 2);
    await viewer.page.keyboard.down("Alt");
    await viewer.drag([200, 200], [200 + 50 * Math.PI, 200]);
    await viewer.page.keyboard.up("Alt");
    near((await view()).to, [0, 0, 1]);
    near([Math.hypot(...(await view()).right.slice(0, 2))], [1]);
    assert.ok(Math.abs((await view()).right[0]) < 0.75);
    await viewer.press("f");
    for (const p of [[0, 0, 0], [120, 80, 20]]) {
        const [u, v] = await viewer.at(p);
        assert.ok(u > 0 && u < 450 && v > 30 && v < 370, `${u} ${v}`);
    }
    // Half a turn over the pole, and on.
    await viewer.press("2");
    await viewer.drag([200, 60], [200, 310]);
    near((await view()).to, [0, 0, 1]);
    await viewer.drag([200, 60], [200, 310]);
    near((await view()).to, [0, 1, 0]);
    near((await view()).up, [0, 0, -1]);
    await viewer.page.click("text=Right");
    near((await view()).to, [1, 0, 0]);
    await viewer.drop({ ...block, views: [{ name: "from behind", matrix: [-1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1] }] });
    await viewer.page.click("text=from behind");
    near((await view()).to, [0, 1, 0]);
    near((await view()).up, [0, 0, 1]);
});

story("a window of another size shows all again, until the picture is moved", async (viewer) => {
    const { page } = viewer;
    const size = () => viewer.app(({ space }) => space.frame.unitsPerPixel);
    const turned = (width) =>
        viewer.until(`document.getElementById("canvas").clientWidth === viewer.app.space.frame.width &&
            innerWidth === ${width}`);
    const whole = await size();
    await page.setViewportSize({ width: 1000, height: 700 });
    await turned(1000);
    assert.ok((await size()) < 0.8 * whole);
    await page.mouse.move(300, 200);
    await page.mouse.wheel(0, -300);
    await viewer.rest();
    const near = await size();
    await page.setViewportSize({ width: 640, height: 400 });
    await turned(640);
    assert.equal(await size(), near);
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
    // From where it covers an edge.
    await viewer.drag(await viewer.textAt(0), await viewer.at([60, 80, 20]));
    await viewer.page.mouse.move(...(await viewer.at([60, 80, 20])));
    await viewer.says("Annotation 120.00");
    await viewer.press("Control+z");
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
    await viewer.page.click("#list li i");
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
    const [x, y] = await viewer.at([20, 20, 20]);
    await viewer.drag([x, y], [x + 41, y - 23]);
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
        [{ ...block, finish: 7 }, /^broken\.json: finish: expected/],
        [{ ...block, mesh: { ...block.mesh, positions: "?" } }, /^broken\.json: mesh\.positions: /],
        [{ annotations: [{ call: "PMICreateNothing" }] }, /^broken\.json: annotations\[0\]\.call: /],
    ];
    for (const [scene, message] of cases) {
        await viewer.drop(scene, "broken.json");
        const said = await viewer.page.textContent("#error");
        assert.match(said, message);
        assert.doesNotMatch(said, /\n/);
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
