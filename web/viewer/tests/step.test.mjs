// Real parts: STEP files opened in the viewer, and the pages that pmi-step makes of them.
import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { after, test } from "node:test";
import { root } from "../../tests/package.mjs";
import { Viewer } from "./page.mjs";
import { story as told } from "./story.mjs";

const folder = mkdtempSync(`${tmpdir()}/viewer-step-`);
after(() => rmSync(folder, { recursive: true }));

const partFile = (name) => `${root}tests/step/parts/${name}.stp`;
const program = process.env.PMI_STEP ?? `${root}build/release/bin/pmi-step`;

/** A story that begins with the page's own sample. */
const story = (name, tell, options) => told(name, tell, { scene: undefined, ...options });

const title = (viewer) => viewer.page.textContent("#title");

/** The one line that the page shows of what is wrong. */
async function complaint(viewer) {
    const line = await viewer.page.textContent("#error");
    assert.ok(!line.includes("\n") && !(await viewer.page.isHidden("#error")), line);
    return line;
}

/** Drops a text on the page as a file. */
function dropFile(viewer, text, name) {
    return viewer.page.evaluate(
        ([content, called]) => {
            const dataTransfer = new DataTransfer();
            dataTransfer.items.add(new File([content], called));
            window.dispatchEvent(new DragEvent("drop", { dataTransfer, cancelable: true }));
        },
        [text, name],
    );
}

story(
    "a STEP file opens under the page's own policy, and its holes measure exactly",
    async (viewer) => {
        await viewer.chooseFile(partFile("plate"));
        assert.equal(await title(viewer), "plate");
        assert.ok(await viewer.page.isHidden("#progress"));
        await viewer.page.click("#view-top");
        const says = async (expected) => {
            const status = await viewer.status();
            assert.ok(status.includes(expected), `${status} instead of ${expected}`);
        };
        const cases = [
            [[14.5, 10, 12], "Circle, diameter 9 mm, centre (10, 10, 12)", "⌀9.00"],
            [[60, 0, 12], "Edge, length 120 mm", "120.00"],
            [[0, 40, 12], "Edge, length 80 mm", "80.00"],
        ];
        for (const [i, [point, status, value]] of cases.entries()) {
            await viewer.hover(point);
            await says(status);
            await viewer.click(point);
            await viewer.click([30 + 8 * i, 25, 12]);
            assert.equal((await viewer.values())[i], value);
        }
        const measured = await viewer.app((app) => app.placed.annotations.map((a) => a.measured.value));
        [9, 120, 80].forEach((value, i) => assert.ok(Math.abs(measured[i] - value) < 1e-9));
        const others = viewer.requests.filter((url) => !/^(file:.*(index\.html|occt\.js)|data:|blob:)/.test(url));
        assert.deepEqual(others, []);
    },
    { bypassCSP: false },
);

story("inches become millimetres, and round faces have no seams", async (viewer) => {
    await viewer.chooseFile(partFile("bracket"));
    const diameters = await viewer.app((app) =>
        app.document.part.things.edges
            .filter(({ edge }) => edge.kind === "arc" && edge.start === undefined)
            .map(({ edge }) => 2 * edge.radius),
    );
    assert.equal(diameters.length, 4);
    diameters.forEach((d) => assert.ok(Math.abs(d - 0.281 * 25.4) < 1e-9, String(d)));
    await viewer.chooseFile(partFile("shaft"));
    // Each edge of the shaft lies on two faces; those of one face would be its seams.
    const lines = await viewer.app(
        (app) => app.document.part.things.edges.filter(({ edge }) => edge.kind === "line").length,
    );
    assert.equal(lines, 0);
});

story("a hole that the file has as a spline measures as the circle it is", async (viewer) => {
    await dropFile(viewer, readFileSync(partFile("splines"), "utf8"), "splines.stp");
    await viewer.until(() => /^splines/.test(document.title));
    await viewer.look("top");
    await viewer.hover([20 + 8 * Math.SQRT1_2, 20 + 8 * Math.SQRT1_2, 10]);
    await viewer.says("Circle, diameter 16 mm, centre (20, 20, 10)");
    // The oblique hole leaves an ellipse, which is drawn and not measured.
    const isDrawn = await viewer.app((app) => app.document.members_.mesh.curves.length > 0);
    assert.ok(isDrawn);
    await viewer.hover([30, 40, 10]);
    await viewer.says("Edge, length 60 mm");
});

story("reading is given up by a key, by the button, and by another part", async (viewer) => {
    const before = await title(viewer);
    const start = async () => {
        await dropFile(viewer, readFileSync(partFile("plate"), "utf8"), "plate.stp");
        await viewer.page.waitForSelector("#progress:not([hidden])");
    };
    const isOver = async () => {
        await viewer.page.waitForSelector("#progress", { state: "hidden" });
        for (let waited = 0; viewer.page.workers().length > 0; ++waited) {
            assert.ok(waited < 100, "the worker goes on");
            await new Promise((resolve) => setTimeout(resolve, 50));
        }
        assert.ok(await viewer.page.isHidden("#error"));
    };
    await start();
    await viewer.press("Escape");
    await isOver();
    await start();
    await viewer.page.waitForFunction(() => /starting/.test(document.getElementById("doing").textContent));
    await viewer.page.click("#give-up");
    await isOver();
    assert.equal(await title(viewer), before);
    await start();
    await viewer.page.selectOption("#samples", "flange");
    await viewer.page.waitForFunction(() => /flange/i.test(document.title));
    await isOver();
});

story("the reader starts when a file is dragged in, compiles once, and goes with a scene", async (viewer) => {
    const drag = (kind, name, type) =>
        viewer.page.evaluate(
            ([event, content, called, media]) => {
                const dataTransfer = new DataTransfer();
                dataTransfer.items.add(new File([content], called, { type: media }));
                window.dispatchEvent(new DragEvent(event, { dataTransfer, cancelable: true }));
            },
            [kind, readFileSync(partFile("blank"), "utf8"), name, type],
        );
    const loaded = () => viewer.requests.filter((url) => url.endsWith("occt.js")).length;
    const reach = async (workers) => {
        for (let waited = 0; viewer.page.workers().length !== workers; ++waited) {
            assert.ok(waited < 200, `${viewer.page.workers().length} workers`);
            await new Promise((resolve) => setTimeout(resolve, 50));
        }
    };
    await drag("dragover", "scene.json", "application/json");
    assert.equal(loaded(), 0);
    await drag("dragover", "blank.stp", "");
    await drag("dragover", "blank.stp", "");
    await reach(1);
    await viewer.page.selectOption("#samples", "flange");
    await reach(0);
    await drag("dragover", "blank.stp", "");
    await reach(1);
    await drag("drop", "blank.stp", "");
    await viewer.until(() => /^blank/.test(document.title));
    await reach(0);
    const before = loaded();
    await viewer.chooseFile(partFile("pin"));
    assert.equal(await title(viewer), "pin");
    assert.equal(loaded(), before);
});

story("what is no part is one line, and the part that was open stays", async (viewer) => {
    const before = await title(viewer);
    const plate = readFileSync(partFile("plate"), "utf8");
    const pin = readFileSync(partFile("pin"), "utf8");
    const curve = "DEFINITIONAL_REPRESENTATION('',(#172),#176);";
    assert.ok(pin.includes(curve));
    const astray = "DEFINITIONAL_REPRESENTATION('',));\n#150 = ( GEOMETRIC_REPRE(#172),#176);";
    const blank = readFileSync(partFile("blank"), "utf8");
    const inItself = blank.replace("#26 = SURFACE_CURVE('',#27", "#26 = SURFACE_CURVE('',#26");
    const endless = blank.replace("#25 = CARTESIAN_POINT('',(0.,0.,10.))", "#25 = CARTESIAN_POINT('',(0.,0.,9.9E12))");
    assert.ok(inItself !== blank && endless !== blank);
    const header = "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n";
    const cases = [
        ["Dear reader,\nthis is no part.\n", /^broken\.stp: is not a STEP file that can be read$/],
        [plate.slice(0, 4000), /^broken\.stp: is not a STEP file that can be read$/],
        // OCCT follows it out of its memory.
        [pin.replace(curve, astray), /^broken\.stp: cannot be read: it makes the reader crash$/],
        // A curve that is its own curve is followed until the stack ends.
        [inItself, /^broken\.stp: cannot be read: it makes the reader crash$/],
        // No scene reaches so far.
        [endless, /^broken\.stp: cannot be read: its geometry is damaged$/],
        [header, /^broken\.stp: (is not a STEP file|holds no part) that can be read$/],
    ];
    for (const [text, message] of cases) {
        await viewer.chooseFile({ name: "broken.stp", mimeType: "", buffer: Buffer.from(text) });
        assert.match(await complaint(viewer), message);
        assert.equal(await title(viewer), before);
    }
});

/** Numbers below a limit, the same ones on every run. */
function random(seed) {
    let state = seed;
    return (below) => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return Math.floor((state / 2 ** 32) * below);
    };
}

/** A file with a few bytes changed, doubled or cut out. */
export function mutated(text, below) {
    for (let change = 1 + below(8); change > 0; --change) {
        const at = below(text.length);
        const kinds = [
            () => text.slice(0, at) + "0123456789#,();$*'."[below(19)] + text.slice(at + 1),
            () => text.slice(0, at) + text.slice(at + 1 + below(40)),
            () => text.slice(0, at) + text.substr(below(text.length), 1 + below(60)) + text.slice(at),
            () => text.slice(0, at) + text.slice(at).replace(/#\d+/, `#${100 + below(900)}`),
        ];
        text = kinds[below(kinds.length)]();
    }
    return text;
}

/** How many are tried; more of them by hand. */
const mutations = Number(process.env.STEP_MUTATIONS ?? 12);

story("damaged files are parts or one line each, and the page lives on", async (viewer) => {
    const below = random(20261122);
    const names = ["plate", "shaft", "bracket", "pin", "assembly", "blank"];
    let refused = 0;
    for (let i = 0; i < mutations; ++i) {
        const text = mutated(readFileSync(partFile(names[below(names.length)]), "latin1"), below);
        const buffer = Buffer.from(text, "latin1");
        await viewer.chooseFile({ name: "damaged.stp", mimeType: "", buffer });
        if (!(await viewer.page.isHidden("#error"))) {
            assert.match(await complaint(viewer), /^damaged\.stp: \S/);
            ++refused;
        }
    }
    console.log(`${mutations} damaged files: ${refused} refused`);
    await viewer.chooseFile(partFile("blank"));
    assert.equal(await title(viewer), "blank");
});

/** A page of a part, and its report. */
function pageOf(name, file = partFile(name)) {
    const path = `${folder}/${name}.html`;
    const { status, stderr } = spawnSync(program, ["page", file, "-o", path]);
    assert.ok(status === 0 || status === 1, String(stderr));
    const { stdout } = spawnSync(program, ["report", "--json", file]);
    return { path, report: JSON.parse(stdout) };
}

for (const name of ["plate", "shaft", "bracket", "pin", "assembly", "blank"]) {
    test(`the page of ${name} shows each dimension of the report with its text`, async () => {
        const { path, report } = pageOf(name);
        assert.ok(statSync(path).size <= 5e6);
        const viewer = await Viewer.open({ path, bypassCSP: false });
        const first = await viewer.page.evaluate(
            () => performance.getEntriesByName("first frame")[0].startTime,
        );
        assert.ok(first < 10000, `${first} ms`);
        const shown = await viewer.app((app) =>
            app.placed.drawings.map(({ text }, i) => [app.document.recipes[i].name, text]),
        );
        // Two limits stand one above the other.
        const expected = report.dimensions
            .filter(({ fate }) => fate !== "refused")
            .map(({ entity, text }) => [`#${entity}`, text.replace(" / ", " ")]);
        assert.deepEqual(new Map(shown), new Map(expected));
        const rows = await viewer.page.$$eval("#dimensions li", (items) =>
            items.map(({ dataset, children }) => [dataset.name, dataset.fate, children[0].textContent]),
        );
        assert.deepEqual(
            rows,
            report.dimensions.map((d) => [`#${d.entity}`, d.fate, d.text === "" ? d.name : d.text]),
        );
        // Each view shows its own annotations, and all of them whole.
        const views = await viewer.app((app) => app.space.shown.sheets.map((sheet) => sheet.name));
        for (const [i, view] of views.entries()) {
            await viewer.page.click(`#sheets button:nth-child(${i + 1})`);
            const drawn = await viewer.app((app) => {
                const { frame } = app.stage.camera;
                return app.placed.drawings.flatMap(({ labels, segments }, k) => {
                    const isInside = Array.from({ length: segments.length / 3 }, (_, n) => {
                        const [x, y] = window.viewer.toScreen(segments.slice(3 * n), frame);
                        return x >= 0 && y >= 0 && x <= frame.width && y <= frame.height;
                    }).every((inside) => inside);
                    return labels.length > 0 && isInside ? [app.document.recipes[k].name] : [];
                });
            });
            const own = report.dimensions.filter((d) => d.views.includes(view));
            assert.deepEqual(new Set(drawn), new Set(own.map(({ entity }) => `#${entity}`)), view);
        }
        const others = viewer.requests.filter((url) => !/^(file:.*\.html|data:|blob:)/.test(url));
        assert.deepEqual(others, []);
        assert.deepEqual(viewer.errors, []);
        await viewer.close();
    });
}

const seen = (viewer) =>
    viewer.app((app) =>
        app.placed.drawings.flatMap(({ labels }, i) =>
            labels.length > 0 ? [app.document.recipes[i].name] : [],
        ),
    );

test("a dimension of a page is found, hidden, dragged, measured beside and saved", async () => {
    const { path, report } = pageOf("plate");
    const viewer = await Viewer.open({ path, width: 1000, height: 700 });
    const entity = (text) => `#${report.dimensions.find((d) => d.text === text).entity}`;
    const [width, depth] = [entity("120.0 ±0.2"), entity("4.0")];
    assert.ok((await seen(viewer)).includes(width));
    // By its text, then by its number.
    await viewer.page.fill("#filter", "120.0");
    assert.deepEqual(await seen(viewer), [width]);
    await viewer.page.fill("#filter", depth);
    assert.deepEqual(await seen(viewer), []);
    assert.equal(await viewer.page.locator("#dimensions li:visible").count(), 1);
    await viewer.page.click("#dimensions li:visible b");
    assert.deepEqual(await seen(viewer), [depth]);
    await viewer.page.fill("#filter", "");
    await viewer.page.click("#sheets button >> text=top");
    const all = await seen(viewer);
    await viewer.page.click(`#dimensions li[data-name="${width}"] button`);
    assert.deepEqual(await seen(viewer), all.filter((name) => name !== width));
    await viewer.page.click(`#dimensions li[data-name="${width}"] button`);
    assert.deepEqual(await seen(viewer), all);
    const index = await viewer.app(
        (app, name) => app.document.recipes.findIndex((recipe) => recipe.name === name),
        width,
    );
    const placeOf = async () => (await viewer.recipes())[index].calls[0].locate;
    const [, before] = await placeOf();
    const from = await viewer.textAt(index);
    await viewer.drag(from, [from[0], from[1] - 25]);
    const [, moved] = await placeOf();
    assert.ok(moved > before + 2, `${moved} instead of above ${before}`);
    // Another one, measured in the page.
    await viewer.click([14.5, 10, 12]);
    await viewer.click([30, 20, 12]);
    await viewer.waitForCount(report.counts.drawn + report.counts.noted + 1);
    assert.equal((await viewer.values()).at(-1), "⌀9.00");
    const { text } = await viewer.save();
    const saved = `${folder}/saved.json`;
    writeFileSync(saved, text);
    const host = process.env.PMI_HOST ?? `${root}build/release/bin/pmi-host`;
    const drawn = (view) => String(execFileSync(host, ["draw", saved, "--view", view]));
    assert.match(drawn("top"), /120\.0 ±0\.2/);
    assert.doesNotMatch(drawn("front"), /120\.0 ±0\.2/);
    assert.match(drawn("front"), /12\.1/);
    assert.deepEqual(viewer.errors, []);
    await viewer.close();
});

test("the way from a file to a page, as it is documented, leads there", () => {
    const blocks = ["README.md", "docs/step.md", "docs/viewer.md"].map((name) =>
        [...readFileSync(`${root}${name}`, "utf8").matchAll(/^```sh\n(.*?)^```/gms)]
            .map(([, text]) => text.trim().split("\n"))
            .find((lines) => lines.some((line) => line.includes("page PART.stp -o PART.html"))),
    );
    assert.deepEqual(blocks[1], blocks[0]);
    assert.deepEqual(blocks[2], blocks[0]);
    const [viewer, build, page] = blocks[0];
    assert.equal(viewer, "./dev viewer");
    assert.match(build, /--preset release .*--target pmi-step$/);
    const made = `${folder}/PART.html`;
    const command = page.replace("PART.stp", partFile("blank")).replace("PART.html", made);
    execFileSync("bash", ["-c", command], { cwd: root });
    assert.match(readFileSync(made, "utf8"), /"title":"BLANK/);
});

test("names in a file end no script, and a page says what it lacks for STEP files", async () => {
    const name = "</script><script>window.stolen = 1</script>";
    const file = `${folder}/named.stp`;
    const blank = readFileSync(partFile("blank"), "utf8");
    writeFileSync(file, blank.replace(/PRODUCT\('[^']*','[^']*'/, `PRODUCT('${name}','${name}'`));
    const { path } = pageOf("named", file);
    const viewer = await Viewer.open({ path });
    assert.equal(await title(viewer), name);
    assert.equal(await viewer.page.evaluate(() => window.stolen), undefined);
    await viewer.chooseFile(partFile("plate"));
    assert.match(await complaint(viewer), /^plate\.stp: occt\.js, which reads STEP files, is not beside this page$/);
    assert.deepEqual(viewer.errors, []);
    await viewer.close();
});
