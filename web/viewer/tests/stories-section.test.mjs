// Stories of parts that are cut open.
import assert from "node:assert/strict";
import { story } from "./story.mjs";

story("a section is opened, measured in, moved, turned and closed", async (viewer) => {
    const { page } = viewer;
    await viewer.look("front");
    const slide = (id, value) =>
        page.$eval(id, (input, v) => {
            input.value = v;
            input.dispatchEvent(new Event("input"));
        }, String(value));
    await viewer.press("x");
    assert.equal(await page.textContent("#section-says"), "-40 mm");
    // The rim of the hole is cut at the ends of its diameter; the front edge is gone.
    await viewer.hover([25, 40, 20]);
    await viewer.says("Cut edge (25, 40, 20)");
    await viewer.click([25, 40, 20]);
    await viewer.click([55, 40, 20]);
    await viewer.says("Distance in the section: 30 mm");
    await viewer.click([40, 40, 30]);
    await viewer.waitForCount(1);
    const [recipe] = await viewer.recipes();
    assert.deepEqual([recipe.call, recipe.normal.map(Math.round)], ["PMICreateClipDim3D", [0, -1, 0]]);
    assert.deepEqual(await viewer.values(), ["30.00"]);
    await viewer.hover([80, 0, 20]);
    assert.doesNotMatch(await viewer.status(), /^Edge, length 120/);
    // What lies behind the cut is not seen through it.
    await viewer.hover([15, 80, 10]);
    assert.doesNotMatch(await viewer.status(), /^Edge/);
    // The cut face is shown, and the whole part again.
    const colors = async () => {
        await viewer.rest();
        return viewer.app((app) => {
            const picture = app.stage.picture(1);
            const [x, y] = window.viewer.toScreen([80, 40, 10], app.space.frame);
            return [...picture.getContext("2d").getImageData(x, y, 1, 1).data];
        });
    };
    const [red, , blue] = await colors();
    assert.ok(red > blue + 30, `${red} ${blue}`);
    await slide("#section-place", -50);
    assert.equal(await page.textContent("#section-says"), "-60 mm");
    await slide("#section-turn", 30);
    await slide("#section-tilt", -20);
    await viewer.hover([25, 40, 20]);
    assert.doesNotMatch(await viewer.status(), /^Cut edge .25, 40, 20/);
    await page.click("#section-z");
    await page.click("#section-flip");
    await page.click("#section-view");
    await page.focus("#canvas");
    await viewer.press("x");
    const [whole, , blueAgain] = await colors();
    assert.ok(whole <= blueAgain);
    await viewer.hover([80, 0, 20]);
    await viewer.says("Edge, length 120 mm");
});
