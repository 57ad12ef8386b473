// How values are written, and how large: changed, read back, and built by the library.
import assert from "node:assert/strict";
import { test } from "node:test";
import { load } from "../../dorvale/dist/node.js";

const rule = (name) => import(`../../../build/viewer/rules/${name}.js`);
const { formatOf, inUnit, withFormat, withMeasure, commonMeasure } = await rule("formats");
const { spokenIn } = await rule("spoken");
const { described } = await rule("words");
const { heightOf, withHeight, withArrow, withFrame, isFramed } = await rule("styles");
const library = await load();

const finish = { arrow: "fit", gap: 1.4, readable: true };
const place = { locate: [30, 25, 0], height: 4, finish };
const line = (end) => ({ type: "line", start: [0, 0, 0], end });
const circle = { type: "arc", centre: [0, 0, 0], normal: [0, 0, 1], radius: 15.5 };
const length = { call: "PMICreateClipDim3D", type: 1, normal: [0, 0, 1], pointA: [0, 0, 0], pointB: [800.125, 0, 0], ...place };
const diameter = { call: "PMICreateDiameterDim3D", circle, ...place };
const radius = { ...diameter, call: "PMICreateRadiusDim3D" };
const width = { ...length, type: 4, finish: { ...finish, label: "⌀{}" } };
const angle = { call: "PMICreateAngleDim", angleMode: 0, edge1: line([60, 0, 0]), edge2: line([60, 60, 0]), ...place, locate: [40, 15, 0] };
const note = { display: true, calls: [{ call: "PMICreateNote3D", lines: ["DEBURR"], text: [0, 0, 0], height: 5 }] };

const textOf = (recipe) => library.build(recipe, "top").texts.map(({ text }) => text).join("|");

test("a value in each unit reads as people write it, and is read back", () => {
    const cases = [
        [length, "mm", null, "800.13"],
        [length, "mm", 3, "800.125"],
        [length, "in", 3, '31.501"'],
        [length, "in/", 16, '31 1/2"'],
        [length, "ft", null, `2' 7.5"`],
        [length, "ft/", 8, `2' 7 1/2"`],
        [radius, "in", 2, 'R0.61"'],
        [radius, "mm", null, "R15.5"],
        [diameter, "mm", 1, "⌀31.0"],
        [diameter, "in", 2, '⌀1.22"'],
        [width, "in", 1, '⌀31.5"'],
        [width, "mm", null, "⌀800.13"],
        [angle, "deg", 1, "45.0°"],
        [angle, "dms", null, `45° 0' 0"`],
        [angle, "rad", 4, "0.7854 rad"],
    ];
    for (const [recipe, unit, places, text] of cases) {
        for (const [prefix, suffix] of [["", ""], ["4X ", " ±0.1"], ["{a} ", ' "b" {}']]) {
            // By way of another form: what it had before must not show.
            const quantity = recipe === angle ? "rad" : "in/";
            const other = withFormat(recipe, { ...inUnit(quantity, 3), prefix: "2X ", suffix: " H7" });
            const format = { unit, places, prefix, suffix };
            const written = withFormat(other, format);
            assert.equal(textOf(written), prefix + text + suffix);
            assert.deepEqual(formatOf(written), format);
        }
    }
});

test("as the library writes it takes no label, and what is no value stays", () => {
    assert.deepEqual(withFormat(withFormat(length, inUnit("in", 3)), inUnit("mm", null)), length);
    assert.equal(withMeasure(note, inUnit("in", 3)), note);
    assert.equal(withMeasure(angle, inUnit("in", 3)), angle);
    const fixed = { ...length, finish: { label: "SEE NOTE" } };
    assert.equal(withMeasure(fixed, inUnit("in", 3)), fixed);
    const dual = { ...length, finish: { label: ["{} ±0.1", "({.3in})"] } };
    assert.equal(textOf(withMeasure(dual, inUnit("mm", 1))), "800.1 ±0.1|(31.501)");
    assert.deepEqual(commonMeasure([length, note, angle, radius], "length"), inUnit("mm", null));
    assert.equal(commonMeasure([length, withMeasure(radius, inUnit("in", 3))], "length"), undefined);
});

test("text height, arrow heads and frames are set and taken back", () => {
    for (const recipe of [length, radius, angle, note]) {
        const tall = library.build(withHeight(recipe, 10), "top");
        assert.ok(tall.texts.every(({ height }) => height === 10));
        assert.equal(heightOf(withHeight(recipe, 10)), 10);
        const framed = withFrame(recipe, true);
        assert.ok(isFramed(framed));
        assert.ok(library.build(framed, "top").frames.every(({ envelope }) => envelope.frame));
        assert.equal(textOf(framed), textOf(recipe));
        const bare = library.build(withFrame(framed, false), "top");
        assert.ok(bare.frames.every(({ envelope }) => envelope === null));
    }
    assert.equal(withHeight(length, 8).finish.gap, 2.8);
    const [leader] = library.build(withArrow(length, 7), "top").leaders;
    assert.equal(leader.arrow.length, 7);
});

test("what is pointed at is said as its dimension writes it, exactly where that is as usual", () => {
    const edge = { kind: "line", start: [-10, 0, 0], end: [790.125, 0, 0] };
    const corner = { kind: "vertex", at: [-25.4, 0, -1e-9] };
    const arc = { kind: "arc", centre: [0, 0, 0], normal: [0, 0, 1], radius: 25.4, start: [25.4, 0, 0] };
    const turned = (degrees) => {
        const t = (Math.PI * degrees) / 180;
        return { ...arc, end: [25.4 * Math.cos(t), 25.4 * Math.sin(t), 0] };
    };
    const cases = [
        ["mm", null, "deg", null, "Edge, length 800.125 mm", "Vertex (-25.4, 0, 0)", "Arc, radius 25.4 mm, 180.5°, length 80.01811 mm"],
        ["mm", 1, "deg", 0, "Edge, length 800.1 mm", "Vertex (-25.4, 0.0, 0.0)", "Arc, radius 25.4 mm, 181°, length 80.0 mm"],
        ["in", 3, "dms", null, 'Edge, length 31.501"', 'Vertex (-1.000", 0.000", 0.000")', `Arc, radius 1.000", 180° 30' 0", length 3.150"`],
        ["ft/", 16, "rad", 3, `Edge, length 2' 7 1/2"`, `Vertex (-0' 1", 0' 0", 0' 0")`, `Arc, radius 0' 1", 3.150 rad, length 0' 3 1/8"`],
    ];
    for (const [unit, places, ofAngles, anglePlaces, ...expected] of cases) {
        const spoken = spokenIn(library, { unit, places }, { unit: ofAngles, places: anglePlaces });
        assert.deepEqual([edge, corner, turned(180.5)].map((thing) => described(thing, spoken)), expected);
    }
    // A half turn and nearly a whole one, too.
    const { angle: said } = spokenIn(library, inUnit("mm", null), { unit: "deg", places: 2 });
    assert.deepEqual([180, 359.5, 0.25].map(said), ["180.00°", "359.50°", "0.25°"]);
});
