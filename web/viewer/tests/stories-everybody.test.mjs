// Stories of people without a mouse, with small screens, and in the dark.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { test } from "node:test";
import { story } from "./story.mjs";

const press = async (viewer, ...keys) => {
    for (const key of keys) {
        await viewer.press(key);
    }
};

/** Tab after Tab, until an element has the keyboard. */
async function tabTo(viewer, selector) {
    for (let i = 0; i < 60; ++i) {
        await viewer.press("Tab");
        if (await viewer.page.evaluate((s) => document.activeElement.matches(s), selector)) {
            return;
        }
    }
    assert.fail(`no Tab leads to ${selector}`);
}

story(
    "from opening to a placed and saved dimension, by keyboard alone",
    async (viewer) => {
        const { page } = viewer;
        await tabTo(viewer, "#samples");
        await page.keyboard.type("flange");
        await page.waitForFunction(() => document.getElementById("title").textContent === "Flange");
        await tabTo(viewer, "#canvas");
        await viewer.press("1");
        await viewer.rest();
        for (let i = 0; !/^Circle, diameter 120 mm/.test(await viewer.status()); ++i) {
            assert.ok(i < 40, await viewer.status());
            await viewer.press(".");
        }
        await viewer.press("Enter");
        await viewer.says("Diameter: 120 mm · click: place it");
        await viewer.press("Tab");
        await viewer.says("Radius: 60 mm");
        await press(viewer, "Shift+Tab", "ArrowRight", "ArrowRight", "ArrowUp", "Shift+ArrowUp", "Enter");
        await viewer.waitForCount(1);
        assert.deepEqual(await viewer.values(), ["⌀120.00"]);
        // It is selected in the list, taken, put elsewhere, and written in inches.
        await tabTo(viewer, "#list");
        await press(viewer, "ArrowDown", "m", "ArrowUp", "ArrowUp", "ArrowUp");
        const [before] = await viewer.recipes();
        await viewer.press("Enter");
        const [moved] = await viewer.recipes();
        assert.ok(moved.locate[1] > before.locate[1] + 1, `${before.locate} to ${moved.locate}`);
        await viewer.press("v");
        await viewer.press("ArrowDown");
        assert.deepEqual(await viewer.values(), ['⌀4.724"']);
        await tabTo(viewer, "#canvas");
        await press(viewer, "Control+ArrowRight", "+", "Alt+ArrowUp", "]");
        const waiting = page.waitForEvent("download");
        await viewer.press("Control+s");
        const saved = JSON.parse(readFileSync(await (await waiting).path(), "utf8"));
        assert.deepEqual(saved.annotations, await viewer.recipes());
        assert.notDeepEqual(saved.view.slice(0, 3), [1, 0, 0]);
    },
    { scene: undefined },
);

/** A touch screen: fingers as the browser reports them. */
async function fingers(viewer) {
    const client = await viewer.page.context().newCDPSession(viewer.page);
    const send = (type, ...points) =>
        client.send("Input.dispatchTouchEvent", {
            type,
            touchPoints: points.map(([x, y], id) => ({ x, y, id })),
        });
    const slide = async (from, to) => {
        await send("touchStart", ...from);
        for (const t of [0.3, 0.6, 1]) {
            const now = from.map((p, i) => p.map((c, k) => c + t * (to[i][k] - c)));
            await send("touchMove", ...now);
        }
        await send("touchEnd");
        await viewer.rest();
    };
    const tap = async (x, y) => {
        await send("touchStart", [x, y]);
        await send("touchEnd");
    };
    return { send, slide, tap };
}

story(
    "from opening to a placed and saved dimension, by touch, on a phone",
    async (viewer) => {
        const { page } = viewer;
        const { send, slide, tap } = await fingers(viewer);
        await viewer.look("top");
        // A finger is broad: it lies 10 pixels beside the edge.
        const [x, y] = await viewer.at([60, 0, 20]);
        await tap(x, y + 10);
        await viewer.says("Length in XY: 120 mm");
        const place = await viewer.at([60, -20, 20]);
        await tap(...place);
        await viewer.waitForCount(1);
        // One finger that starts on the text drags it ...
        const [first] = await viewer.recipes();
        const [u, v] = await viewer.textAt(0);
        await slide([[u, v]], [[u, v + 30]]);
        const [moved] = await viewer.recipes();
        assert.ok(moved.locate[1] < first.locate[1] - 5, `${first.locate} to ${moved.locate}`);
        // ... and anywhere else turns; two move and zoom.
        const frame = () => viewer.app((app) => app.space.frame);
        const flat = await frame();
        const middle = await viewer.at([80, 20, 20]);
        await slide([middle], [[middle[0] + 60, middle[1] - 40]]);
        const turned = await frame();
        assert.notDeepEqual(turned.view, flat.view);
        const [a, b] = [[120, 200], [220, 200]];
        await slide([a, b], [[80, 230], [280, 230]]);
        const zoomed = await frame();
        assert.deepEqual(zoomed.view, turned.view);
        assert.ok(Math.abs(turned.unitsPerPixel / zoomed.unitsPerPixel - 2) < 0.1);
        assert.notDeepEqual(zoomed.target, turned.target);
        assert.deepEqual(await viewer.recipes(), [moved]);
        // Holding shows a lens; the finger slides onto the circle and lets go.
        await viewer.look("top");
        const hole = await viewer.at([55, 40, 20]);
        await send("touchStart", [hole[0] + 30, hole[1]]);
        await page.waitForSelector("#lens", { state: "visible" });
        await send("touchMove", hole);
        await viewer.says("Circle, diameter 30 mm");
        await viewer.rest();
        const seen = await page.evaluate(() => {
            const lens = document.getElementById("lens");
            return lens.getContext("2d").getImageData(0, 0, lens.width, lens.height).data.some((c) => c > 0);
        });
        assert.ok(seen);
        await send("touchEnd");
        await viewer.says("Diameter: 30 mm");
        assert.ok(await page.isHidden("#lens"));
        const waiting = page.waitForEvent("download");
        const save = await (await page.$("#save")).boundingBox();
        await tap(save.x + 5, save.y + 5);
        const text = readFileSync(await (await waiting).path(), "utf8");
        assert.deepEqual(JSON.parse(text).annotations, [moved]);
    },
    { width: 390, height: 700 },
);

story("the help sheet names every command that has a key", async (viewer) => {
    await viewer.press("?");
    const sheet = await viewer.page.textContent("#help-keys");
    const table = await viewer.app((app) =>
        app.commands.table.flatMap(({ keys, label }) => (keys === undefined ? [] : [[keys[0], label]])),
    );
    assert.ok(table.length > 30);
    for (const [, label] of table) {
        assert.ok(sheet.includes(label), label);
    }
    const keys = await viewer.app((app) => app.commands.table.flatMap(({ keys = [] }) => keys));
    assert.equal(new Set(keys).size, keys.length);
    await viewer.press("Escape");
    assert.ok(await viewer.page.isHidden("#help"));
});

story("light and dark follow the system, and then the reader", async (viewer) => {
    const { page } = viewer;
    // The page hears of another system's colours a little later.
    const turns = (theme) =>
        page.waitForFunction((name) => document.documentElement.dataset.theme === name, theme);
    await turns("light");
    await page.emulateMedia({ colorScheme: "dark" });
    await turns("dark");
    await viewer.press("d");
    await turns("light");
    await page.reload();
    await page.waitForFunction(() => window.viewer !== undefined);
    await turns("light");
});

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

for (const [size, colorScheme] of [
    [{}, "light"],
    [{}, "dark"],
    [{ width: 390, height: 700 }, "light"],
]) {
    story(
        `nothing serious is found in the ${size.width === undefined ? colorScheme : "narrow"} page`,
        async (viewer) => {
            const { page } = viewer;
            await page.emulateMedia({ colorScheme });
            await page.addScriptTag({ content: axe });
            const check = async (state) => {
                const found = await page.evaluate(async () => {
                    const { violations } = await window.axe.run();
                    return violations.filter(({ impact }) => /serious|critical/.test(impact)).map(
                        ({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html).join(" ")}`,
                    );
                });
                assert.deepEqual(found, [], state);
            };
            await viewer.look("top");
            await check("as it opens");
            await viewer.click([60, 0, 20]);
            await check("with a dimension that follows");
            await viewer.click([60, -8, 20]);
            await viewer.waitForCount(1);
            await page.click("#list b");
            await viewer.press("v");
            await page.evaluate(() => window.viewer.app.fail("scene.json: edges[0]: it is wrong"));
            await check("with a selected one, its values and an error");
            await viewer.press("Escape");
            await page.focus("#canvas");
            await viewer.press("?");
            await check("with the help sheet");
        },
        size,
    );
}
