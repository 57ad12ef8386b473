// Edges as scenes have them, from curves that can be evaluated anywhere.
import { cross, distance, dot, moved, scale, size, sub, unit, type Vec } from "./vec.js";

/** An edge of a scene (docs/scene.md). */
export type SceneEdge =
    | { type: "line"; start: Vec; end: Vec }
    | { type: "arc"; centre: Vec; normal: Vec; radius: number; start?: Vec; end?: Vec };

/** A curve by a parameter that runs from 0 to 1. */
export type Curve = (at: number) => Vec;

/** What counts as the same point, as a part of the curve's size. */
const precision = 1e-7;
/** How many places are looked at before a curve counts as straight or round. */
const places = 16;

/** Without what is left over of a number that was counted in binary. */
const rounded = (x: number): number => Math.round(x * 1e9) / 1e9 + 0;
const roundedPoint = (p: Vec): Vec => p.map(rounded) as unknown as Vec;

export function lineOf(curve: Curve): SceneEdge {
    return { type: "line", start: roundedPoint(curve(0)), end: roundedPoint(curve(1)) };
}

/** Of a circle that the curve runs along counter-clockwise about the axis. */
export function arcOf(curve: Curve, centre: Vec, axis: Vec, radius: number): SceneEdge {
    const [start, end] = [roundedPoint(curve(0)), roundedPoint(curve(1))];
    const circle = {
        type: "arc",
        centre: roundedPoint(centre),
        normal: axis,
        radius: rounded(radius),
    } as const;
    return distance(start, end) < precision * radius ? circle : { ...circle, start, end };
}

/**
 * Some programs write every curve as a spline. One that is straight or round to within the
 * precision is the line or the arc that was meant.
 */
export function recognised(curve: Curve): SceneEdge | undefined {
    const at = Array.from({ length: places + 1 }, (_, i) => curve(i / places));
    // A third of the way is never opposite to the start, nor back at it.
    const [a, b, c] = [curve(0), curve(0.29), curve(0.63)];
    const reach = Math.max(...at.map((p) => distance(p, a)));
    const isOn = (off: number) => off <= precision * reach;
    const across = cross(sub(b, a), sub(c, a));
    if (size(across) <= precision * reach * reach) {
        const direction = unit(sub(curve(1), a));
        const isStraight = at.every((p) => isOn(size(cross(sub(p, a), direction))));
        return isStraight && distance(a, curve(1)) > precision ? lineOf(curve) : undefined;
    }
    const axis = unit(across);
    const centre = centreOf(a, b, c);
    const radius = distance(a, centre);
    const isRound = at.every(
        (p) => isOn(Math.abs(distance(p, centre) - radius)) && isOn(Math.abs(dot(sub(p, a), axis))),
    );
    return isRound ? arcOf(curve, centre, axis, Math.round(radius * 1e7) / 1e7) : undefined;
}

/** Of the circle through three points. */
function centreOf(a: Vec, b: Vec, c: Vec): Vec {
    const [u, v] = [sub(b, a), sub(c, a)];
    const normal = cross(u, v);
    const square = 2 * dot(normal, normal);
    const towards = moved(
        scale(cross(normal, u), dot(v, v)),
        cross(v, normal),
        dot(u, u),
    );
    return moved(a, towards, 1 / square);
}
