// Stories of handing on what was measured, and of not losing it.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { after } from "node:test";
import { inflateSync } from "node:zlib";
import { root } from "../../tests/package.mjs";
import { block } from "./block.mjs";
import { browser } from "./page.mjs";
import { story } from "./story.mjs";

const folder = mkdtempSync(`${tmpdir()}/handing-`);
after(() => rmSync(folder, { recursive: true }));

async function measureHole(viewer) {
    const count = (await viewer.recipes()).length;
    await viewer.click([55, 40, 20]);
    await viewer.click([70, 60 + 8 * count, 20]);
    await viewer.waitForCount(count + 1);
}

/** The bytes of the file that a click on a button saves. */
async function saved(viewer, button) {
    const waiting = viewer.page.waitForEvent("download");
    await viewer.page.click(button);
    const download = await waiting;
    return { name: download.suggestedFilename(), bytes: readFileSync(await download.path()) };
}

/** The size of a PNG, and its pixels as it has them. */
function pixelsOf(png) {
    const [width, height] = [png.readUInt32BE(16), png.readUInt32BE(20)];
    const parts = [];
    for (let at = 8; at < png.length; ) {
        const size = png.readUInt32BE(at);
        if (png.toString("latin1", at + 4, at + 8) === "IDAT") {
            parts.push(png.subarray(at + 8, at + 8 + size));
        }
        at += 12 + size;
    }
    return { width, height, packed: inflateSync(Buffer.concat(parts)) };
}

story("a drawing is that of pmi-host for the saved scene, and prints at scale", async (viewer) => {
    for (const view of ["top", "iso"]) {
        await viewer.look(view);
        await measureHole(viewer);
        const scene = await saved(viewer, "#save");
        const drawing = await saved(viewer, "#svg");
        assert.equal(drawing.name, "A_block_with_a_hole.svg");
        writeFileSync(`${folder}/scene.json`, scene.bytes);
        const host = process.env.PMI_HOST ?? `${root}build/release/bin/pmi-host`;
        const expected = execFileSync(host, ["draw", `${folder}/scene.json`]);
        assert.ok(drawing.bytes.equals(expected), view);
        const [, wide, viewed, scale] = /width="([\d.]+)mm".* viewBox="\S+ \S+ ([\d.]+) .*data-scale="(\S+)"/.exec(
            String(drawing.bytes),
        );
        const [paper, model] = scale.split(":").map(Number);
        assert.ok(Math.abs(wide - (viewed * paper) / model) < 0.01, `${wide} for ${viewed} at ${scale}`);
    }
});

story("a picture shows the annotations, twice as fine as the screen", async (viewer) => {
    await viewer.look("top");
    const size = await viewer.app((app) => [app.space.frame.width, app.space.frame.height]);
    const bare = pixelsOf((await saved(viewer, "#png")).bytes);
    await measureHole(viewer);
    await viewer.press("Escape");
    const { name, bytes } = await saved(viewer, "#png");
    const picture = pixelsOf(bytes);
    assert.equal(name, "A_block_with_a_hole.png");
    assert.deepEqual([picture.width, picture.height], [2 * size[0], 2 * size[1]]);
    assert.notDeepEqual(picture.packed, bare.packed);
});

story("unsaved work survives a reload, and can be discarded", async (viewer) => {
    const reload = async () => {
        await viewer.page.reload();
        await viewer.page.waitForFunction(() => window.viewer !== undefined);
    };
    await viewer.look("top");
    await measureHole(viewer);
    await reload();
    assert.equal(await viewer.page.textContent("#title"), block.title);
    assert.deepEqual(await viewer.values(), ["⌀30.00"]);
    await viewer.page.waitForSelector("text=Unsaved work is back.");
    await viewer.look("top");
    await measureHole(viewer);
    await viewer.press("Control+z");
    await reload();
    assert.deepEqual(await viewer.values(), ["⌀30.00"]);
    await viewer.page.click("text=Discard it");
    assert.deepEqual(await viewer.values(), []);
    assert.ok(await viewer.page.isHidden("#notice"));
    await reload();
    assert.equal(await viewer.page.textContent("#title"), "Mounting plate");
    // Saved work needs no keeping, and a sample that was asked for is opened.
    await viewer.drop(block);
    await viewer.look("top");
    await measureHole(viewer);
    await saved(viewer, "#save");
    await reload();
    assert.equal(await viewer.page.textContent("#title"), "Mounting plate");
});

story("work on a scene that the browser cannot keep is told once", async (viewer) => {
    const large = { ...block, licence: "x".repeat(6e6) };
    await viewer.drop(large, "large.json");
    await viewer.look("top");
    await measureHole(viewer);
    await viewer.page.waitForSelector("text=This scene (6.0 MB) is too large");
    await viewer.page.click("#notice button");
    await measureHole(viewer);
    await viewer.page.waitForTimeout(400);
    assert.ok(await viewer.page.isHidden("#notice"));
});
