// What the viewer costs: node web/viewer/tests/measure.mjs, on a machine that does nothing else.
import { browser, Viewer } from "./page.mjs";
import { block } from "./block.mjs";

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

/** Diameters in a grid above the block. */
const many = (count) => ({
    ...block,
    annotations: Array.from({ length: count }, (_, i) => ({
        call: "PMICreateDiameterDim3D",
        circle: { centre: [12 * (i % 100), 12 * Math.floor(i / 100), 30], normal: [0, 0, 1], radius: 4 },
        locate: [12 * (i % 100) + 5, 12 * Math.floor(i / 100) + 5, 30],
        height: 2,
        finish: { arrow: "fit", gap: 0.7 },
    })),
});

const opened = [];
for (let i = 0; i < 5; ++i) {
    const viewer = await Viewer.open();
    opened.push(await viewer.page.evaluate(() => performance.getEntriesByName("first frame")[0].startTime));
    await viewer.close();
}
console.log(`first frame: ${median(opened).toFixed(0)} ms after opening`);

/** Milliseconds of script for another unit of 1,000 annotations until it is drawn, by the thread's own clock. */
async function units() {
    const viewer = await Viewer.open({ scene: many(1000) });
    await viewer.rest();
    const client = await viewer.page.context().newCDPSession(viewer.page);
    await client.send("Performance.enable", { timeDomain: "threadTicks" });
    const spent = async () => {
        const { metrics } = await client.send("Performance.getMetrics");
        return 1000 * metrics.find(({ name }) => name === "ScriptDuration").value;
    };
    const times = [];
    for (const unit of ["in", "in/", "ft", "mm", "in", "mm", "ft/"]) {
        const before = await spent();
        await viewer.app((_, name) => {
            const select = document.getElementById("unit");
            select.value = name;
            select.dispatchEvent(new Event("change"));
            // The page has asked for its frame before.
            return new Promise((drawn) => requestAnimationFrame(drawn));
        }, unit);
        times.push((await spent()) - before);
    }
    await viewer.close();
    return times;
}
const switches = await units();
console.log(`another unit of 1,000 annotations: ${median(switches).toFixed(0)} ms of script, at first ${switches[0].toFixed(0)}`);

const text = JSON.stringify(many(10000));
const loading = [];
for (let i = 0; i < 3; ++i) {
    const viewer = await Viewer.open();
    loading.push(
        await viewer.app((app, scene) => {
            // Without a graphics card it takes seconds, and the next one waits for them.
            const gl = document.getElementById("canvas").getContext("webgl2");
            gl.enable(gl.RASTERIZER_DISCARD);
            const started = performance.now();
            app.open(scene, "many.json");
            app.stage.draw();
            return performance.now() - started;
        }, text),
    );
    await viewer.close();
}
console.log(`10,000 annotations: open after ${median(loading).toFixed(0)} ms, the rasteriser aside`);

/** Milliseconds of script in a frame while the view turns. */
async function frame(scene) {
    const viewer = await Viewer.open({ scene });
    await viewer.rest();
    const times = await viewer.app((app) => {
        const list = [];
        for (let i = 0; i < 60; ++i) {
            const started = performance.now();
            app.stage.camera.orbit(3, 1);
            app.stage.draw();
            list.push(performance.now() - started);
        }
        return list;
    });
    await viewer.close();
    return median(times);
}
const alone = await frame(block);
const full = await frame(many(1000));
console.log(`a frame: ${alone.toFixed(2)} ms of script alone, ${full.toFixed(2)} ms with 1,000 annotations`);

await browser.close();
