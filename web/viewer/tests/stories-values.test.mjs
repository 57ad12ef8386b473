// Stories of values as people read them.
import assert from "node:assert/strict";
import { block, length } from "./block.mjs";
import { story } from "./story.mjs";

async function measure(viewer, thing, place) {
    const count = (await viewer.recipes()).length;
    await viewer.click(thing);
    await viewer.click(place);
    await viewer.waitForCount(count + 1);
}

story("values are switched at once, for all or for one, and taken back", async (viewer) => {
    const { page } = viewer;
    await viewer.look("top");
    await measure(viewer, [60, 0, 20], [60, -12, 20]);
    await measure(viewer, [55, 40, 20], [70, 60, 20]);
    await viewer.press("v");
    await page.selectOption("#unit", "in");
    assert.deepEqual(await viewer.values(), ['4.724"', '⌀1.181"']);
    await page.selectOption("#places", "2");
    assert.deepEqual(await viewer.values(), ['4.72"', '⌀1.18"']);
    await viewer.hover([120, 30, 20]);
    await viewer.says('Edge, length 2.36" · click: measure length in XY: 2.36"');
    // New ones are like the others.
    await measure(viewer, [0, 30, 20], [-12, 30, 20]);
    assert.deepEqual(await viewer.values(), ['4.72"', '⌀1.18"', '2.56"']);
    await page.click("#list li:nth-child(2) b");
    assert.equal(await page.textContent("#values-of"), '⌀1.18"');
    await page.selectOption("#unit", "mm");
    await page.fill("#prefix", "4X ");
    await page.press("#prefix", "Enter");
    await page.fill("#suffix", " ±0.1");
    await page.press("#suffix", "Enter");
    assert.deepEqual(await viewer.values(), ['4.72"', "4X ⌀30.00 ±0.1", '2.56"']);
    await page.click("#undo");
    await page.click("#undo");
    await page.click("#undo");
    assert.deepEqual(await viewer.values(), ['4.72"', '⌀1.18"', '2.56"']);
    assert.equal(await page.inputValue("#unit"), "in");
    while (await page.isEnabled("#undo")) await page.click("#undo");
    await viewer.hover([120, 30, 20]);
    await viewer.says("Edge, length 60 mm");
});

story("an annotation has its scene's finish, or none of it", async (viewer) => {
    const finishes = [undefined, null, { readable: false }, { label: "own {}" }];
    const annotations = finishes.map((finish) => ({ ...length, finish }));
    await viewer.drop({ ...block, finish: { label: "2X {.1}" }, annotations });
    assert.deepEqual(await viewer.values(), ["2X 120.0", "120.00", "2X 120.0", "own 120.00"]);
});

story("text height, arrow heads and frames are set; what cannot be is not taken", async (viewer) => {
    const { page } = viewer;
    await viewer.look("top");
    await measure(viewer, [60, 0, 20], [60, -12, 20]);
    await viewer.press("v");
    for (const [field, value] of [["#text-height", "7,5"], ["#arrow", "4"], ["#text-height", "tall"]]) {
        await page.fill(field, value);
        await page.press(field, "Enter");
    }
    assert.equal(await page.inputValue("#text-height"), "7.5");
    await page.check("#frame");
    await measure(viewer, [55, 40, 20], [70, 60, 20]);
    for (const recipe of await viewer.recipes()) {
        const { calls, finish } = recipe;
        assert.deepEqual([calls[0].height, finish.arrow, calls[1].call], [7.5, 4, "PMISetEnvelope"]);
    }
});

story("the units of 1,000 annotations are switched together, and taken back together", async (viewer) => {
    await viewer.drop({
        ...block,
        annotations: Array.from({ length: 1000 }, (_, i) => ({
            call: "PMICreateDiameterDim3D",
            circle: { centre: [12 * (i % 40), 12 * Math.floor(i / 40), 30], normal: [0, 0, 1], radius: 4 },
            locate: [12 * (i % 40) + 5, 12 * Math.floor(i / 40) + 5, 30],
            height: 2,
            finish: { arrow: "fit", gap: 0.7 },
        })),
    });
    await viewer.press("v");
    await viewer.page.selectOption("#unit", "in");
    assert.deepEqual(new Set(await viewer.values()), new Set(['⌀0.315"']));
    await viewer.page.click("#undo");
    assert.deepEqual(new Set(await viewer.values()), new Set(["⌀8.00"]));
});
