/** x, y, z: a point or a direction in model coordinates. */
export type Vec = readonly [number, number, number];

export const add = (a: Vec, b: Vec): Vec => [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
export const sub = (a: Vec, b: Vec): Vec => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
export const scale = (a: Vec, s: number): Vec => [s * a[0], s * a[1], s * a[2]];
/** From a point along a direction. */
export const moved = (p: Vec, d: Vec, s: number): Vec => [p[0] + s * d[0], p[1] + s * d[1], p[2] + s * d[2]];
export const dot = (a: Vec, b: Vec): number => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
export const cross = (a: Vec, b: Vec): Vec => [
    a[1] * b[2] - a[2] * b[1],
    a[2] * b[0] - a[0] * b[2],
    a[0] * b[1] - a[1] * b[0],
];
export const size = (a: Vec): number => Math.hypot(a[0], a[1], a[2]);
export const distance = (a: Vec, b: Vec): number => size(sub(a, b));
export const middle = (a: Vec, b: Vec): Vec => scale(add(a, b), 0.5);

/** Zero stays zero. */
export function unit(a: Vec): Vec {
    const length = size(a);
    return length > 0 ? scale(a, 1 / length) : a;
}

/** The part of a direction that is square to a unit vector. */
export const squareTo = (a: Vec, n: Vec): Vec => moved(a, n, -dot(a, n));

/** The point of the line through `p` along `d` (of unit length) that is nearest to `q`. */
export const foot = (q: Vec, p: Vec, d: Vec): Vec => moved(p, d, dot(sub(q, p), d));

/** Turned about a unit axis, counter-clockwise as seen from its tip. */
export function turned(a: Vec, axis: Vec, angle: number): Vec {
    const along = scale(axis, dot(a, axis));
    const across = sub(a, along);
    return add(
        along,
        add(scale(across, Math.cos(angle)), scale(cross(axis, across), Math.sin(angle))),
    );
}

/** Any unit vector square to a unit vector. */
export function anySquare(n: Vec): Vec {
    return unit(squareTo(Math.abs(n[0]) < 0.9 ? [1, 0, 0] : [0, 1, 0], n));
}
