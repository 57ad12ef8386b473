// What the package adds to the calls: kept recipes, names, value text, model coordinates, memory.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import test from "node:test";

import {
    dist,
    load,
    OutOfMemoryError,
    radius,
    read,
    RecipeError,
    Scene,
    toModel,
    top,
} from "./package.mjs";

const dorvale = await load();

test("a radius as its reader would ask for it", () => {
    const annotation = dorvale.build(radius, top);
    assert.equal(annotation.texts[0].text, "R10.00");
    assert.deepEqual(annotation.measured, { value: 10, kind: "length" });
    assert.deepEqual(structuredClone(annotation), annotation);
});

test("edges are named by a scene, and their type follows where one kind fits", () => {
    const hole = { id: "hole", type: "arc", centre: [0, 0, 0], normal: [0, 0, 1], radius: 10 };
    const scene = new Scene({ edges: [hole], points: { there: [14, 9, 0] } });
    const named = { ...radius, circle: "hole", locate: "there" };
    assert.deepEqual(dorvale.build(named, top, scene), dorvale.build(radius, top));
    const point = { call: "PMICreateLinDotDim3D", locate: [0, 5, 0], height: 5 };
    const edge = { start: [0, 0, 0], end: [60, 0, 0] };
    for (const end of [radius.circle, [0, 0, 0], { start: [0, 0, 0], end: [0, 9, 0] }]) {
        const built = dorvale.build({ ...point, edge, point: end });
        assert.equal(built.texts[0].text, "0.00");
    }
});

test("recipes that are kept are built in any view as they were", () => {
    const note = { call: "PMICreateNote3D", lines: ["a𝛼\ud800", "ß"], text: [1, 2, 3], height: 5 };
    const recipes = [radius, note, { ...radius, finish: { label: ["R {.1}", "{{}}"], gap: 1 } }];
    const kept = dorvale.keep(recipes);
    for (const view of ["top", "front", "iso"]) {
        const all = dorvale.buildAll(kept, view);
        assert.equal(all.length, 3);
        assert.deepEqual(
            [...all],
            recipes.map((recipe) => dorvale.build(recipe, view)),
        );
    }
    assert.deepEqual(
        dorvale.build(note).texts.map(({ text }) => text),
        note.lines,
    );
    assert.throws(() => dorvale.buildAll(kept).at(3), RangeError);
});

test("numbers that are not finite are taken as they are", () => {
    for (const number of [NaN, Infinity, -Infinity, 1e300, -0]) {
        const circle = { ...radius.circle, radius: number };
        assert.equal(dorvale.build({ ...radius, circle }).type, 6);
        assert.equal(dorvale.build({ ...radius, locate: [number, 1, number] }).type, 6);
    }
});

test("value text has the forms of docs/value-text.md", () => {
    const units = { "1,1": "metric", "1,2": "thousandths", "2,1": "inches", "2,2": "feet" };
    const forms = { 1: "decimal", 2: "fraction", 3: "whole" };
    const rows = read("docs/value-text.md").matchAll(
        /^\| ([\d.]+) \| (\d), (\d), (\d), (\d), (-?\d+), (\d+) \| (`[^`]*`|none)/gm,
    );
    let count = 0;
    for (const [, value, system, metric, imperial, form, precision, denominator, text] of rows) {
        const code = system === "1" ? `1,${metric}` : `2,${imperial}`;
        const format = {
            units: units[code] ?? "feetAndInches",
            form: forms[form],
            precision: Number(precision),
            denominator: Number(denominator),
        };
        ++count;
        if (text === "none") {
            assert.throws(() => dorvale.valueText(Number(value), format), RecipeError);
        } else {
            assert.equal(dorvale.valueText(Number(value), format), text.slice(1, -1));
        }
    }
    assert.equal(count, 14);
    assert.equal(dorvale.valueText(12.345), "12.35");
    assert.equal(dorvale.valueText(45.5, "angle"), "45.5°");
    assert.throws(() => dorvale.valueText(-1), { path: "value" });
    assert.throws(() => dorvale.valueText(1, { units: "miles" }), { path: "format.units" });
});

test("in the model, a circle's dimension points at the circle, wherever it is", () => {
    const unit = 1 / Math.sqrt(3);
    const circle = { centre: [5, -7, 11], normal: [unit, unit, unit], radius: 10 };
    const edge = { start: [5, -7, 11], end: [65, -7, 11] };
    const { arrows } = toModel(dorvale.build({ ...radius, circle, locate: [20, 9, 0] }, "iso"));
    assert.equal(arrows.length, 1);
    const from = arrows[0].tip.map((x, i) => x - circle.centre[i]);
    assert.ok(Math.abs(Math.hypot(...from) - 10) < 1e-5);
    assert.ok(Math.abs(from[0] + from[1] + from[2]) < 1e-5);
    // The arc of an angle is a circle about the vertex, from one edge to the other.
    const angle = {
        call: "PMICreateAngleDim",
        edge1: edge,
        edge2: { start: [5, -7, 11], end: [5, -7, 71] },
        locate: [25, -7, 31],
        height: 5,
    };
    const { arcs, texts } = toModel(dorvale.build(angle, "front"));
    assert.equal(texts[0].text, "90°");
    assert.ok(arcs.length > 0);
    for (const arc of arcs) {
        assert.ok(Math.hypot(...arc.centre.map((x, i) => x - edge.start[i])) < 1e-4);
        assert.ok(Math.abs(arc.radius - Math.hypot(20, 20)) < 1e-4);
        assert.ok(Math.abs(Math.abs(arc.normal[1]) - 1) < 1e-6);
        for (const end of [arc.from, arc.to]) {
            const away = Math.hypot(...end.map((x, i) => x - edge.start[i]));
            assert.ok(Math.abs(away - arc.radius) < 1e-4);
        }
    }
});

/** The module with a limit of its own on its memory, in pages of 64 KB. */
function limited(pages) {
    const bytes = new Uint8Array(readFileSync(`${dist}dorvale.wasm`));
    const numberAt = (at) => {
        let value = 0;
        for (let shift = 0; ; shift += 7, ++at) {
            value |= (bytes[at] & 127) << shift;
            if (bytes[at] < 128) {
                return [value, at + 1];
            }
        }
    };
    for (let at = 8; ; ) {
        const [size, start] = numberAt(at + 1);
        if (bytes[at] === 5) {
            const [, limit] = numberAt(start + 2);
            const [, end] = numberAt(limit);
            for (let i = limit, left = pages; i < end; ++i, left >>= 7) {
                bytes[i] = (left & 127) | (i < end - 1 ? 128 : 0);
            }
            return bytes;
        }
        at = start + size;
    }
}

test("where memory runs out there is an exception, and the module works on", async () => {
    const small = await load(limited(64));
    const expected = dorvale.build(radius, top);
    let failed = 0;
    for (let length = 1; length < 3e6; length = Math.ceil(length * 1.3)) {
        const lines = ["x".repeat(length), "y".repeat(length >> 1)];
        const note = { call: "PMICreateNote3D", lines, text: [0, 0, 0], height: 5 };
        try {
            assert.equal(small.build(note).texts[0].text.length, length);
        } catch (error) {
            assert.ok(error instanceof OutOfMemoryError, error);
            ++failed;
        }
        assert.deepEqual(small.build(radius, top), expected);
    }
    assert.ok(failed > 3);
});

test("memory does not grow, however many annotations are built and dropped", () => {
    const kept = dorvale.keep(Array(1000).fill(radius));
    dorvale.buildAll(kept);
    const size = dorvale.memorySize;
    for (let i = 0; i < 100; ++i) {
        assert.equal(dorvale.buildAll(kept).at(999).texts[0].text, "R10.00");
        dorvale.build(radius);
    }
    assert.equal(dorvale.memorySize, size);
});
