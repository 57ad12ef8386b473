// A plane through edges, and what is measured in it.
import assert from "node:assert/strict";
import { test } from "node:test";
import { load } from "../../dorvale/dist/node.js";

const rule = (name) => import(`../../../build/viewer/rules/${name}.js`);
const { above, crossings, principal, through, tilted } = await rule("section");
const { cut, pickable } = await rule("snap");
const { fitting } = await rule("fit");
const { placeOn } = await rule("place");
const { standardViews, matrixOf } = await rule("view");
const { distance, dot, size, sub } = await rule("vec");
const library = await load();

const line = (start, end) => ({ kind: "line", start, end });
const circle = { kind: "arc", centre: [40, 40, 20], normal: [0, 0, 1], radius: 15 };
const half = { ...circle, start: [55, 40, 20], end: [25, 40, 20] };
const near = (actual, expected) => assert.ok(Math.abs(actual - expected) < 1e-9, `${actual}, not ${expected}`);

test("an edge is cut exactly where the plane is", () => {
    const across = through([0, 49, 0], [0, 1, 0]);
    const cases = [
        [line([0, 0, 0], [0, 70, 35]), across, [[0, 49, 24.5]]],
        [line([0, 0, 0], [0, 40, 0]), across, []],
        [line([0, 49, 0], [9, 49, 0]), across, []],
        [circle, across, [[28, 49, 20], [52, 49, 20]]],
        [half, across, [[28, 49, 20], [52, 49, 20]]],
        [{ ...half, normal: [0, 0, -1] }, across, []],
        [circle, through([0, 60, 0], [0, 1, 0]), []],
        [circle, through([0, 0, 20], [0, 0, 1]), []],
    ];
    for (const [edge, section, expected] of cases) {
        const found = crossings(edge, section).sort((a, b) => a[0] - b[0]);
        assert.equal(found.length, expected.length);
        found.forEach((p, i) => p.forEach((c, k) => near(c, expected[i][k])));
    }
    // Any plane that meets a circle, whichever way it is turned.
    for (let i = 0; i < 200; ++i) {
        const normal = tilted([0.6, 0, 0.8], 0.1 * i, 0.37 * i);
        near(size(normal), 1);
        const section = through([40 + 10 * Math.sin(i), 40, 20], normal);
        for (const p of crossings(circle, section)) {
            near(above(p, section), 0);
            near(distance(p, circle.centre), 15);
            near(p[2], 20);
        }
    }
    near(dot(principal([0.2, -0.9, 0.3]), [0, -1, 0]), 1);
});

test("what is cut off cannot be picked, and the cut is measured in its plane", () => {
    const things = pickable([circle, line([0, 0, 0], [120, 0, 0]), line([0, 80, 0], [120, 80, 0]), line([10, 40, 0], [90, 40, 0])]);
    const left = cut(things, through([0, 40, 0], [0, 1, 0]), 1e-6);
    assert.equal(left.edges.length, 3);
    assert.ok(left.points.every(({ at }) => at[1] <= 40.000001));
    const points = left.points.filter(({ section }) => section !== undefined);
    assert.equal(points.length, 2);
    const pick = (thing) => ({ thing, at: thing.at ?? thing.start });
    const cases = [
        [pick(points[0]), pick(points[1]), "PMICreateClipDim3D", 30],
        [pick(points[0]), pick(left.edges.at(-1).edge), "PMICreateClipLinDotDim3D", 20],
        [pick(left.edges.at(-1).edge), pick(points[0]), "PMICreateClipLinDotDim3D", 20],
    ];
    for (const [first, second, call, value] of cases) {
        const [candidate] = fitting([first, second], standardViews.back);
        const place = placeOn(candidate.plane, [60, 0, 50], standardViews.back.to);
        const recipe = candidate.recipe(place, 3);
        assert.equal(recipe.call, call);
        const annotation = library.build(recipe, matrixOf(standardViews.back));
        near(Math.abs(dot([...annotation.plane.slice(8, 11)], [0, 1, 0])), 1);
        near(annotation.measured.value, value);
        near(dot(sub(place, points[0].at), [0, 1, 0]), 0);
    }
});

test("the length of an arc that lies in the section is measured in its plane, whichever way it runs", () => {
    const full = 15 * Math.PI;
    const ends = { start: [55, 40, 20], end: [40, 55, 20] };
    const cases = [
        [{ ...half, ...ends }, full / 2],
        [{ ...half, ...ends, normal: [0, 0, -1] }, (3 * full) / 2],
        [half, full],
    ];
    for (const [arc, length] of cases) {
        for (const normal of [[0, 0, 1], [0, 0, -1]]) {
            const left = cut(pickable([arc]), through(arc.centre, normal), 1e-6);
            const thing = left.edges[0].edge;
            const [candidate, own] = fitting([{ thing, at: thing.start }], standardViews.top);
            const place = placeOn(candidate.plane, [62, 62, 50], standardViews.top.to);
            const recipe = candidate.recipe(place, 3);
            assert.equal(recipe.call, "PMICreateClipArcDim3D");
            assert.equal(own.recipe(place, 3).call, "PMICreateArcDim3D");
            const annotation = library.build(recipe, matrixOf(standardViews.top));
            near(annotation.measured.value, length);
            near(candidate.value, length);
            near(dot([...annotation.plane.slice(8, 11)], normal), 1);
        }
    }
    // One that the section leaves, and that lies elsewhere, is measured as ever.
    const [{ edge }] = cut(pickable([half]), through([0, 0, 30], [0, 0, 1]), 1e-6).edges;
    const [first] = fitting([{ thing: edge, at: edge.start }], standardViews.top);
    assert.equal(first.recipe([60, 60, 20], 3).call, "PMICreateArcDim3D");
});
