// A plane that cuts the part: what lies on the side of its normal is taken away.
import { type Edge, pointsOf, sweepOf } from "./things.js";
import { anySquare, cross, dot, moved, scale, size, sub, turned, unit, type Vec } from "./vec.js";

export interface Section {
    /** Of unit length, towards what is taken away. */
    readonly normal: Vec;
    /** Of the plane from the model's origin, along its normal. */
    readonly distance: number;
}

/** Nearer to the plane than this is on it: a part of the model's size. */
const on = 1e-7;

/** How far a point stands out of the cut. */
export const above = (p: Vec, { normal, distance }: Section): number => dot(p, normal) - distance;

const axes: readonly Vec[] = [
    [1, 0, 0],
    [0, 1, 0],
    [0, 0, 1],
];

/** The principal direction, either way round, that is nearest to a direction. */
export function principal(to: Vec): Vec {
    const [nearest] = [...axes].sort((a, b) => Math.abs(dot(b, to)) - Math.abs(dot(a, to)));
    return scale(nearest!, dot(nearest!, to) < 0 ? -1 : 1);
}

/** A plane through a point. */
export const through = (p: Vec, normal: Vec): Section => ({ normal, distance: dot(p, normal) });

/** Turned by two angles about directions in it, at the point of it that is nearest to another. */
export function tilted(normal: Vec, first: number, second: number): Vec {
    const u = anySquare(normal);
    const v = cross(normal, u);
    return unit(turned(turned(normal, u, first), v, second));
}

/** Where a segment meets the plane; none where it lies in it. */
function ofLine(a: Vec, b: Vec, section: Section): Vec[] {
    const [from, to] = [above(a, section), above(b, section)];
    return from * to > 0 || from === to ? [] : [moved(a, sub(b, a), from / (from - to))];
}

/** The exact points in which an edge meets the plane; none of an edge that lies in it. */
export function crossings(edge: Edge, section: Section): Vec[] {
    if (edge.kind === "line") {
        return ofLine(edge.start, edge.end, section);
    }
    // centre + cos t * u + sin t * v, of which u and v stand out of the cut by a and b.
    const normal = unit(edge.normal);
    const u = edge.start ? sub(edge.start, edge.centre) : scale(anySquare(normal), edge.radius);
    const v = cross(normal, u);
    const [a, b, c] = [dot(u, section.normal), dot(v, section.normal), -above(edge.centre, section)];
    const reach = Math.hypot(a, b);
    if (reach <= on * edge.radius || Math.abs(c) > reach) {
        return [];
    }
    const [middle, half] = [Math.atan2(b, a), Math.acos(c / reach)];
    const sweep = sweepOf(edge);
    return [middle - half, middle + half].flatMap((t) => {
        const angle = ((t % (2 * Math.PI)) + 2 * Math.PI) % (2 * Math.PI);
        return angle <= sweep + 1e-9 || angle >= 2 * Math.PI - 1e-9
            ? [moved(moved(edge.centre, u, Math.cos(angle)), v, Math.sin(angle))]
            : [];
    });
}

/** Whether an edge lies in the plane. */
export const liesIn = (edge: Edge, section: Section): boolean => {
    const points = pointsOf(edge);
    const extent = points.reduce((most, p) => Math.max(most, size(sub(p, points[0]!))), 0);
    return points.every((p) => Math.abs(above(p, section)) <= 1e-6 * Math.max(extent, 1));
};
