// How values are written, and how large: changed, read back, and built by the library.
import assert from "node:assert/strict";
import { test } from "node:test";
import { load } from "../../dorvale/dist/node.js";

const rule = (name) => import(`../../../build/viewer/rules/${name}.js`);
const { formatOf, inUnit, withFormat, withMeasure, commonMeasure } = await rule("formats");
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
