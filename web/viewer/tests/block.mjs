// A block of 120 x 80 x 20 with a hole, a chamfer and a rounded corner: small enough to know by heart.
import { ShapeUtils, Vector2 } from "three";

const thickness = 20;
const hole = { centre: [40, 40], radius: 15 };
const rounding = { centre: [100, 60], radius: 20 };
/** The outline, counter-clockwise; the corner at (120, 80) is an arc. */
const corners = [[0, 0], [120, 0], [120, 60], [100, 80], [15, 80], [0, 65]];
const arcAt = 2;

const circle = ({ centre, radius }, from, to, chords) =>
    Array.from({ length: chords + 1 }, (_, i) => {
        const angle = from + ((to - from) * i) / chords;
        return [centre[0] + radius * Math.cos(angle), centre[1] + radius * Math.sin(angle)];
    });

function mesh() {
    const outline = corners.flatMap((p, i) =>
        i === arcAt ? circle(rounding, 0, Math.PI / 2, 24) : i === arcAt + 1 ? [] : [p],
    );
    const inner = circle(hole, 0, 2 * Math.PI, 64).slice(0, -1).reverse();
    const vectors = (points) => points.map(([x, y]) => new Vector2(x, y));
    const flat = ShapeUtils.triangulateShape(vectors(outline), [vectors(inner)]);
    const positions = [];
    const triangles = [];
    const faces = [];
    const face = (points, list) => {
        const start = positions.length / 3;
        points.forEach((p) => positions.push(...p));
        list.forEach((t) => triangles.push(...t.map((i) => start + i)));
        faces.push(list.length);
    };
    const all = [...outline, ...inner];
    face(all.map(([x, y]) => [x, y, thickness]), flat);
    face(all.map(([x, y]) => [x, y, 0]), flat.map(([a, b, c]) => [a, c, b]));
    const wall = (points) => {
        points.forEach(([x, y], i) => {
            const [u, v] = points[(i + 1) % points.length];
            face([[x, y, 0], [u, v, 0], [u, v, thickness], [x, y, thickness]], [[0, 1, 2], [0, 2, 3]]);
        });
    };
    wall(outline);
    wall(inner);
    const base64 = (array) => Buffer.from(array.buffer).toString("base64");
    return {
        positions: base64(new Float32Array(positions)),
        triangles: base64(new Uint32Array(triangles)),
        faces,
    };
}

function edges() {
    const at = (z) =>
        corners.map(([x, y], i) => {
            const [u, v] = corners[(i + 1) % corners.length];
            const ends = { start: [x, y, z], end: [u, v, z] };
            return i === arcAt
                ? { type: "arc", centre: [...rounding.centre, z], normal: [0, 0, 1], radius: 20, ...ends }
                : { type: "line", ...ends };
        });
    const holes = [0, thickness].map((z) => ({
        type: "arc",
        centre: [...hole.centre, z],
        normal: [0, 0, 1],
        radius: hole.radius,
    }));
    const upright = corners.map(([x, y]) => ({
        type: "line",
        start: [x, y, 0],
        end: [x, y, thickness],
    }));
    return [...at(0), ...at(thickness), ...holes, ...upright];
}

export const block = {
    version: 1,
    title: "A block with a hole",
    view: "iso",
    mesh: mesh(),
    edges: edges(),
    annotations: [],
};

/** The length of its front edge on top. */
export const length = {
    call: "PMICreateClipDim3D",
    type: 1,
    normal: [0, 0, 1],
    pointA: [0, 0, 20],
    pointB: [120, 0, 20],
    locate: [60, -10, 20],
    height: 4,
    finish: { arrow: "fit", gap: 1, readable: true },
};
