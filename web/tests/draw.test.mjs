// What a pen is told against what `toModel` makes of annotations that are read whole.
import assert from "node:assert/strict";
import { test } from "node:test";
import { Drawer } from "../dorvale/dist/draw.js";
import { load, RecipeError, scenes, toModel } from "./package.mjs";

const dorvale = await load();

/** What a pen was told, sorted as `toModel` sorts it. */
class Notes {
    lines = [];
    arcs = [];
    arrows = [];
    texts = [];
    framed = [];
    line(...points) {
        this.lines.push(points.flat());
    }
    arc(centre, normal, radius, from, to) {
        this.arcs.push({ centre, normal, radius, from, to });
    }
    arrow(tip, direction, length, width) {
        this.arrows.push({ tip, direction, length, width });
    }
    block(texts, isFramed) {
        this.texts.push(...texts);
        this.framed.push(isFramed);
    }
}

const segmentsOf = ({ points }) =>
    Array.from({ length: points.length / 3 - 1 }, (_, i) => [...points.slice(3 * i, 3 * i + 6)]);

test("a pen is told everything that the sample scenes show", () => {
    const told = { lines: 0, arcs: 0, arrows: 0, texts: 0, frames: 0 };
    for (const [name, scene] of scenes) {
        const built = dorvale.buildAll(scene.annotations, undefined, { ...scene, mesh: undefined });
        const drawer = new Drawer(built, dorvale.calls);
        [...built].forEach((annotation, i) => {
            const notes = new Notes();
            const ground = drawer.draw(i, notes);
            const where = `${name}: annotation ${i}`;
            const { lines, arcs, arrows, texts } = toModel(annotation);
            assert.deepEqual(notes.lines, lines.flatMap(segmentsOf), where);
            assert.deepEqual(notes.arcs, arcs.map(({ kind, of, ...arc }) => arc), where);
            assert.deepEqual(notes.arrows, arrows.map(({ type, ...arrow }) => arrow), where);
            const widths = annotation.texts.map(({ width }) => width);
            assert.deepEqual(notes.texts, texts.map((text, k) => ({ ...text, width: widths[k] })), where);
            assert.deepEqual(notes.framed, annotation.frames.map(({ envelope }) => envelope?.frame ?? false));
            const { dim, ...flags } = annotation.flags;
            assert.deepEqual(ground, { plane: annotation.plane, ...flags }, where);
            told.lines += lines.length;
            told.arcs += arcs.length;
            told.arrows += arrows.length;
            told.texts += texts.length;
            told.frames += notes.framed.filter(Boolean).length;
        });
    }
    assert.ok(Object.values(told).every((count) => count > 0), JSON.stringify(told));
});

test("a label that cannot be is refused where it is drawn, too", () => {
    const note = { call: "PMICreateNote3D", text: [0, 0, 0], lines: ["a"], height: 3, finish: { label: "{x}" } };
    const built = dorvale.buildAll([note]);
    assert.throws(() => new Drawer(built, dorvale.calls).draw(0, new Notes()), (error) => {
        assert.ok(error instanceof RecipeError);
        assert.throws(() => built.at(0), { message: error.message });
        return true;
    });
});
