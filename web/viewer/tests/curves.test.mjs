// The edges of real parts: circles that come in pieces, and splines that are circles.
import assert from "node:assert/strict";
import { test } from "node:test";

const rule = (name) => import(`../../../build/viewer/rules/${name}.js`);
const { wholeCircles } = await rule("circles");
const { recognised } = await rule("curves");
const { add, cross, scale, unit, distance } = await rule("vec");

const axis = unit([1, -2, 3]);
const x = unit(cross(axis, [0, 0, 1]));
const centre = [10, 20, 30];
const at = (angle, radius = 5) =>
    add(centre, add(scale(x, radius * Math.cos(angle)), scale(cross(axis, x), radius * Math.sin(angle))));
const arc = (from, to, radius = 5) => ({
    kind: "arc",
    centre,
    normal: axis,
    radius,
    start: at(from, radius),
    end: at(to, radius),
});
/** The same piece, told from the other side. */
const reversed = (piece) => ({
    ...piece,
    normal: scale(piece.normal, -1),
    start: piece.end,
    end: piece.start,
});
const line = { kind: "line", start: [0, 0, 0], end: [1, 0, 0] };

test("arcs that run all the way round are one circle, in the place of the first", () => {
    const halves = [arc(0.3, 3.4), reversed(arc(3.4, 0.3))];
    const quarters = [arc(5, 1), arc(1, 2), reversed(arc(2, 4)), arc(4, 5)];
    // Two parts of an assembly that share an edge.
    const doubled = [arc(0, 4), arc(0, 4), arc(3, 0.5)];
    for (const pieces of [halves, quarters, doubled]) {
        const edges = wholeCircles([line, pieces[0], line, ...pieces.slice(1)]);
        assert.equal(edges.length, 3);
        assert.deepEqual([edges[0], edges[2]], [line, line]);
        const { start, radius, kind } = edges[1];
        assert.deepEqual([kind, radius, start], ["arc", 5, undefined]);
    }
    // Noise of a reader, where rounding would fall to one side or the other.
    const noisy = { ...arc(3.4, 0.3), centre: add(centre, [1e-12, -1e-12, 0]), radius: 5 + 1e-12 };
    assert.equal(wholeCircles([arc(0.3, 3.4), noisy]).length, 1);
});

test("arcs with a gap between them stay as they are", () => {
    const cases = [
        [arc(0, 3), arc(3.01, 6.28)],
        [arc(0, 3.2), arc(3.2, 0, 5.001)],
        [arc(0, 3.2), { ...arc(3.2, 0), centre: add(centre, [0.001, 0, 0]) }],
        [arc(0, 2), line],
    ];
    for (const edges of cases) {
        assert.deepEqual(wholeCircles(edges), edges);
    }
});

test("a spline that is straight or round is the line or the arc that was meant", () => {
    // A parameter that does not run evenly, as a spline's.
    const uneven = (t) => t * t * (3 - 2 * t);
    const close = (a, b) => assert.ok(distance(a, b) < 1e-6, `${a} instead of ${b}`);
    const circle = recognised((t) => at(2 * Math.PI * uneven(t)));
    assert.equal(circle.start, undefined);
    assert.equal(circle.radius, 5);
    close(circle.centre, centre);
    const part = recognised((t) => at(1 + 1.5 * uneven(t)));
    assert.equal(part.radius, 5);
    close(part.normal, axis);
    close(part.start, at(1));
    close(part.end, at(2.5));
    const straight = recognised((t) => add(centre, scale(axis, 7 * uneven(t))));
    assert.deepEqual([straight.type, straight.start], ["line", centre]);
    close(straight.end, add(centre, scale(axis, 7)));
    for (const other of [
        (t) => [t, t * t, 0],
        (t) => add(at(6 * t), scale(axis, 0.001 * t)),
        (t) => [5 * Math.cos(6 * t), 5.001 * Math.sin(6 * t), 0],
        () => centre,
    ]) {
        assert.equal(recognised(other), undefined);
    }
});
