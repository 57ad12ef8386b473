// The viewer's rules: which dimension fits, in which plane, where it goes, how it is taken back.
import assert from "node:assert/strict";
import { test } from "node:test";
import { load } from "../../dorvale/dist/node.js";

const rule = (name) => import(`../../../build/viewer/rules/${name}.js`);
const { fitting } = await rule("fit");
const { normalsAlong, isEdgeOn } = await rule("planes");
const { placeOn } = await rule("place");
const { facing } = await rule("facing");
const { pickable, snapsAt } = await rule("snap");
const { begun, changed, undone, redone } = await rule("undo");
const { clicked, chosen, idle } = await rule("session");
const { textHeight } = await rule("textheight");
const { standardViews, orbited, rolled, zoomed, toScreen, fromScreen, fitted, matrixOf } = await rule("view");
const { cross, dot, unit, sub, moved, distance } = await rule("vec");

const library = await load();
const line = (start, end) => ({ kind: "line", start, end });
const pick = (thing, at = thing.start ?? thing.centre ?? thing.at) => ({ thing, at });
const vertex = (...at) => ({ kind: "vertex", at });
const circle = { kind: "arc", centre: [40, 40, 20], normal: [0, 0, 1], radius: 15 };
const arc = { ...circle, radius: 20, start: [60, 40, 20], end: [40, 60, 20] };
const bottom = line([0, 0, 0], [120, 0, 0]);
const opposite = line([120, 80, 0], [0, 80, 0]);
const left = line([0, 0, 0], [0, 65, 0]);
const upright = line([0, 0, 0], [0, 0, 20]);

const near = (actual, expected, tolerance = 1e-6) =>
    assert.ok(Math.abs(actual - expected) <= tolerance, `${actual} instead of ${expected}`);

/** Every way round: the 26 views along sums of the axes, each upright and rolled. */
const views = [-1, 0, 1].flatMap((x) =>
    [-1, 0, 1].flatMap((y) =>
        [-1, 0, 1].flatMap((z) => {
            if (x === 0 && y === 0 && z === 0) {
                return [];
            }
            const to = unit([x, y, z]);
            const right = unit(cross(Math.abs(to[2]) < 0.9 ? [0, 0, 1] : [0, 1, 0], to));
            const view = { right, up: cross(to, right), to };
            return [view, rolled(view, 2), rolled(view, Math.PI)];
        }),
    ),
);

test("what fits is what the library then measures, in every view", () => {
    const cases = [
        [[pick(bottom)], ["Length"], 120],
        [[pick(upright)], ["Length"], 20],
        [[pick(circle)], ["Diameter", "Diameter"], 30],
        [[pick(arc)], ["Arc length"], 10 * Math.PI],
        [[pick(bottom), pick(opposite)], ["Distance of edges"], 80],
        [[pick(bottom, [90, 0, 0]), pick(left, [0, 50, 0])], ["Angle"], 90],
        [[pick(vertex(0, 0, 20)), pick(vertex(30, 40, 20))], ["Distance"], 50],
        [[pick(circle), pick({ ...circle, centre: [80, 40, 20] })], ["Distance"], 40],
        [[pick(left), pick(vertex(33, 10, 0))], ["Distance to edge"], 33],
        [[pick(circle), pick(left)], ["Distance to edge"], Math.hypot(40, 20)],
    ];
    for (const [picks, [name], value] of cases) {
        let seen = 0;
        for (const view of views) {
            const fits = fitting(picks, view);
            seen += fits.length > 0 ? 1 : 0;
            fits.forEach((candidate, i) => {
                assert.ok(!isEdgeOn(candidate.plane.normal, view), candidate.name);
                const place = placeOn(candidate.plane, [70, 90, 5], view.to);
                const annotation = library.build(candidate.recipe(place, 3), matrixOf(view));
                near(annotation.measured.value, candidate.value, 1e-4 * candidate.value);
                if (i === 0 && !candidate.name.includes("along")) {
                    assert.ok(candidate.name.startsWith(name), candidate.name);
                    near(candidate.value, value);
                }
            });
        }
        assert.ok(seen > views.length / 2, `${name}: offered in ${seen} views`);
    }
});

test("circles offer their radius, slanting points their distances along the axes", () => {
    const names = (picks) => fitting(picks, standardViews.top).map(({ name, value }) => [name, value]);
    assert.deepEqual(names([pick(circle)]), [["Diameter", 30], ["Radius", 15]]);
    assert.deepEqual(names([pick(arc)]).slice(1), [["Radius", 20], ["Diameter", 40]]);
    const slanting = names([pick(vertex(0, 0, 20)), pick(vertex(30, 40, 20))]);
    assert.deepEqual(slanting.slice(-2), [["Distance along X", 30], ["Distance along Y", 40]]);
    const angles = names([pick(bottom), pick(line([0, 0, 0], [50, 50, 0]))]);
    assert.deepEqual(angles.map(([name, value]) => [name, Math.round(value)]), [
        ["Angle", 45],
        ["Angle beside", 135],
    ]);
});

test("no plane that is offered is seen edge-on, and the principal one comes first", () => {
    for (const along of [[1, 0, 0], [0, 0, 1], unit([1, 2, 0]), unit([1, 2, 3])]) {
        for (const view of views) {
            const normals = normalsAlong(along, view);
            normals.forEach((normal) => {
                near(dot(normal, along), 0);
                assert.ok(Math.abs(dot(normal, view.to)) >= 0.2);
            });
            const isAlongSight = Math.abs(dot(along, view.to)) > 0.99;
            assert.equal(normals.length === 0, isAlongSight);
        }
    }
    assert.deepEqual(normalsAlong([0, 0, 1], standardViews.front)[0], [0, 1, 0]);
});

test("a placed point lies on its plane and under the mouse, and no view moves the dimension", () => {
    const plane = { origin: [0, 0, 20], normal: unit([1, 2, 3]) };
    const seen = [13, 7, -4];
    for (const { to } of views) {
        const place = placeOn(plane, seen, to);
        if (place === undefined) {
            near(dot(plane.normal, to), 0, 1e-3);
            continue;
        }
        near(dot(sub(place, plane.origin), plane.normal), 0);
        near(distance(cross(sub(place, seen), to), [0, 0, 0]), 0);
    }
    const [diameter] = fitting([pick(circle)], standardViews.iso);
    const recipe = diameter.recipe([70, 70, 20], 3);
    for (const view of views) {
        const { located, plane: m } = library.build(recipe, matrixOf(view));
        const [u, v, w] = located.point;
        [70, 70, 20].forEach((x, i) => near(u * m[i] + v * m[4 + i] + w * m[8 + i] + m[12 + i], x, 1e-3));
    }
});

test("text that faces the reader is neither mirrored nor upside down", () => {
    for (const [x, y] of [[[1, 0, 0], [0, 1, 0]], [unit([1, 2, 3]), unit([-2, 1, 0])]]) {
        for (const view of views) {
            const turned = facing({ x, y }, view);
            if (Math.abs(dot(cross(x, y), view.to)) < 1e-6) {
                continue;
            }
            assert.ok(dot(cross(turned.x, turned.y), view.to) > 0);
            assert.ok(dot(turned.x, view.right) > -1e-4);
        }
    }
});

test("what is within 6 pixels is found: points before edges, the nearer one first", () => {
    const frame = { view: standardViews.top, target: [0, 0, 0], unitsPerPixel: 0.5, width: 640, height: 400 };
    const things = pickable([bottom, { ...bottom, start: [0, 0, 20], end: [120, 0, 20] }, circle]);
    const at = (p, dx = 0, dy = 0) => {
        const [x, y] = toScreen(p, frame);
        return snapsAt(things, x + dx, y + dy, frame);
    };
    assert.deepEqual(at([60, 0, 0], 0, 5.9).map(({ thing }) => thing.start[2]), [20, 0]);
    assert.deepEqual(at([60, 0, 0], 0, 6.1), []);
    assert.deepEqual(at([120, 0, 0], -4)[0].thing, vertex(120, 0, 20));
    assert.deepEqual(at(circle.centre)[0].thing, { kind: "centre", at: circle.centre });
    const [onCircle] = at(moved(circle.centre, unit([1, 1, 0]), 15), 3);
    assert.equal(onCircle.thing, things.edges[2].edge);
    near(distance(onCircle.at, circle.centre), 15, 0.05);
});

test("clicks pick one thing or two that fit, then place", () => {
    const view = standardViews.top;
    const one = clicked(idle, pick(bottom), view);
    assert.equal(one.does, "pick");
    assert.equal(clicked(one.picking, undefined, view).does, "place");
    assert.equal(clicked(one.picking, pick(bottom), view).does, "place");
    const two = clicked(one.picking, pick(left), view);
    assert.ok(chosen(two.picking, view).name.startsWith("Angle"));
    assert.equal(clicked(two.picking, pick(opposite), view).does, "place");
    const point = clicked(idle, pick(vertex(0, 0, 0)), view).picking;
    assert.equal(clicked(point, undefined, view).does, "nothing");
});

test("what was done can be undone and done again, until something else is done", () => {
    const three = changed(changed(begun("a"), "b"), "c");
    assert.equal(undone(undone(undone(three))).present, "a");
    assert.equal(redone(undone(three)).present, "c");
    assert.equal(redone(changed(undone(three), "d")).present, "d");
});

test("zooming keeps what is under the cursor, turning goes over the poles", () => {
    const frame = { view: standardViews.iso, target: [1, 2, 3], unitsPerPixel: 0.5, width: 640, height: 400 };
    const under = fromScreen(100, 300, frame);
    const [x, y] = toScreen(under, zoomed(frame, 100, 300, 0.3));
    near(x, 100);
    near(y, 300);
    let view = standardViews.front;
    for (let i = 0; i < 8; ++i) {
        view = orbited(view, 0, Math.PI / 4);
        near(dot(view.right, cross(view.up, view.to)), 1);
    }
    near(dot(view.to, standardViews.front.to), 1);
});

test("a fitted picture shows the part with a margin, and all that stands beside it", () => {
    const frame = { view: standardViews.top, target: [0, 0, 0], unitsPerPixel: 1, width: 640, height: 400 };
    const part = [[0, 0, 0], [120, 80, 20]];
    const box = (points, around) => {
        const seen = points.map((p) => toScreen(p, fitted(frame, part, around)));
        return [0, 1].map((i) => [Math.min(...seen.map((p) => p[i])), Math.max(...seen.map((p) => p[i]))]);
    };
    const [, [top, low]] = box(part, []);
    near((low - top) / 400, 0.72);
    near(top + low, 400);
    assert.deepEqual(box(part, [[60, -5, 0]]), box(part, []));
    const [[left], [, bottom]] = box([...part, [60, -200, 0], [-300, 0, 0]], [[60, -200, 0], [-300, 0, 0]]);
    assert.ok(left > 5 && bottom < 395, `${left} ${bottom}`);
    // What lies at the top is left free, but for half of the picture.
    for (const [strip, free] of [[60, 60], [390, 200]]) {
        for (const view of [standardViews.top, standardViews.iso]) {
            const seen = [...part, [60, 300, 0]].map((p) =>
                toScreen(p, fitted({ ...frame, view }, part, [[60, 300, 0]], strip))[1],
            );
            assert.ok(Math.min(...seen) > free && Math.max(...seen) < 396, `${seen}`);
        }
    }
});

test("text is a round number high, and as high on the screen at every zoom", () => {
    for (const zoom of [1e-4, 0.03, 0.5, 7, 1234]) {
        const pixels = textHeight(zoom) / zoom;
        assert.ok(pixels >= 12.9 && pixels < 17.4, `${pixels}`);
    }
    assert.equal(textHeight(0.25), 4);
});
