// The sample parts: closed and turned outwards, of the volume that their drawings give, with an
// edge wherever the mesh has a crease; and as they are in the repository.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";

import { here, loadParts } from "../viewer/samples/load.mjs";

const { parts, sceneOf } = await loadParts();

const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
const minus = (a, b) => a.map((x, i) => x - b[i]);
const cross = (a, b) => [0, 1, 2].map((i) => {
    const [j, k] = [(i + 1) % 3, (i + 2) % 3];
    return a[j] * b[k] - a[k] * b[j];
});
const middle = (a, b) => a.map((x, i) => (x + b[i]) / 2);
const distance = (a, b) => Math.hypot(...minus(a, b));

/** The triangles of a scene's mesh, as three points each. */
function trianglesOf({ positions, triangles }) {
    const numbers = Buffer.from(positions, "base64");
    const indices = Buffer.from(triangles, "base64");
    const vertices = Array.from({ length: numbers.length / 12 }, (_, i) =>
        [0, 4, 8].map((at) => numbers.readFloatLE(12 * i + at)));
    return Array.from({ length: indices.length / 12 }, (_, i) =>
        [0, 4, 8].map((at) => vertices[indices.readUInt32LE(12 * i + at)]));
}

/** The sides of the triangles by their ends, each with the normals of the triangles to its left. */
function sidesOf(triangles) {
    const sides = new Map();
    for (const [a, b, c] of triangles) {
        const normal = cross(minus(b, a), minus(c, a));
        const size = Math.hypot(...normal);
        assert.ok(size > 1e-6, `a triangle without an area at ${a}`);
        for (const [from, to] of [[a, b], [b, c], [c, a]]) {
            const key = `${from}|${to}`;
            assert.ok(!sides.has(key), `two triangles on one side of ${key}`);
            sides.set(key, { from, to, normal: normal.map((x) => x / size) });
        }
    }
    return sides;
}

/** How far a point lies from the line or circle of an edge. */
function offEdge(edge, p) {
    if (edge.type === "line") {
        const along = minus(edge.end, edge.start);
        const part = dot(minus(p, edge.start), along) / dot(along, along);
        const within = Math.min(1, Math.max(0, part));
        return distance(p, edge.start.map((x, i) => x + within * along[i]));
    }
    const out = minus(p, edge.centre);
    const height = dot(out, edge.normal);
    const inPlane = Math.hypot(...out.map((x, i) => x - height * edge.normal[i]));
    return Math.hypot(height, inPlane - edge.radius);
}

/** Of a turn of 48 chords, what pi is of a circle. */
const p = 24 * Math.sin(Math.PI / 24);
const chord = 2 * Math.sin(Math.PI / 48);

function lengthOf(edge) {
    if (edge.type === "line") {
        return distance(edge.start, edge.end);
    }
    const start = edge.start && minus(edge.start, edge.centre);
    const end = edge.end && minus(edge.end, edge.centre);
    const angle = start ? Math.atan2(dot(cross(start, end), edge.normal), dot(start, end)) : 0;
    const turns = angle > 1e-6 ? angle / (2 * Math.PI) : 1 + angle / (2 * Math.PI);
    return edge.radius * chord * 48 * turns;
}

function plateVolume() {
    const corners = 7 * 2500 * (1 - p / 4) + 1250;
    const notch = 35 * (10 * Math.sqrt(3) + 35 / Math.sqrt(3)) + (100 * p) / 3 - 25 * Math.sqrt(3);
    const recess = 85 * 25 - 2 * 100 * (1 - p / 4);
    const fillets = 4 * 625 * (1 - p / 4);
    const slot = 80 * 40 + 400 * p;
    const window = 100 * 50 - 100 * (4 - p);
    const holes = 4 * p * 12.5 ** 2 + slot + window;
    const plate = 500 * 250 + 2 * 150 * 450 + fillets - corners - 2 * notch - 2 * recess - holes;
    const legs = 4 * 150 * 100 - corners;
    const bores = 2 * 100 * p * (45 + 10 / Math.tan((59 * Math.PI) / 180) / 3);
    const hexagon = 2 * Math.sqrt(3) * (45 * 50 ** 2 + (5 / 3) * (50 ** 2 + 50 * 45 + 45 ** 2));
    return 50 * plate + 50 * legs - 100 * 4 * p * 17.5 ** 2 - bores + hexagon;
}

// The edges of the small parts are counted on their drawings: a bracket has 8 corners, and the 4
// beside its bends are smooth.
const expected = {
    bracket: { volume: 12 * ((p / 4) * (40 ** 2 - 25 ** 2) + 2 * 60 * 15), edges: 8 + 8 + 4 },
    flange: { volume: 15 * p * (60 ** 2 - 20 ** 2 - 6 * 5 ** 2), edges: 2 * 8 },
    housing: { volume: 60 * (100 * 60 - 60 * 40), edges: 3 * 8 },
    mounting_plate: { volume: plateVolume() },
};

for (const [name, { volume, edges }] of Object.entries(expected)) {
    test(`${name}: its mesh is closed, and has its drawing's volume and edges`, () => {
        const text = sceneOf(parts[name]());
        const stored = readFileSync(`${here}${name}.json`, "utf8");
        assert.ok(text === stored, `${name}.json is another: node viewer/samples/make.mjs`);
        const scene = JSON.parse(text);
        const triangles = trianglesOf(scene.mesh);
        assert.equal(scene.mesh.faces.reduce((sum, n) => sum + n), triangles.length);

        const six = triangles.reduce((sum, [a, b, c]) => sum + dot(a, cross(b, c)), 0);
        assert.ok(Math.abs(six / 6 / volume - 1) < 1e-6, `${six / 6} instead of ${volume}`);

        const own = scene.edges.filter(({ id }) => !id.startsWith("mark "));
        assert.equal(new Set(scene.edges.map(({ id }) => id)).size, scene.edges.length);
        assert.equal(own.length, edges ?? own.length);
        let creases = 0;
        const sides = sidesOf(triangles);
        for (const { from, to, normal } of sides.values()) {
            const other = sides.get(`${to}|${from}`);
            assert.ok(other, `no triangle on the other side of ${from} to ${to}`);
            if (dot(normal, other.normal) > Math.cos(Math.PI / 9)) {
                continue;
            }
            creases += distance(from, to) / 2;
            const edge = own.find((e) => offEdge(e, from) < 1e-4 && offEdge(e, to) < 1e-4);
            assert.ok(edge, `no edge from ${from} to ${to}`);
            assert.ok(offEdge(edge, middle(from, to)) <= 0.005 * (edge.radius ?? 0) + 1e-4);
        }
        const length = own.reduce((sum, edge) => sum + lengthOf(edge), 0);
        assert.ok(Math.abs(creases / length - 1) < 1e-6, `${creases} mm of ${length} mm`);
    });
}
