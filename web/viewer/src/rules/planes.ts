// The planes that a dimension may lie in.
import { cross, dot, size, squareTo, unit, type Vec } from "./vec.js";
import type { View } from "./view.js";

export interface Plane {
    readonly origin: Vec;
    /** Of unit length. */
    readonly normal: Vec;
}

/** A plane is seen edge-on when its normal is this near to the screen, as a cosine: 11.5 degrees. */
const edgeOn = 0.2;

export const isEdgeOn = (normal: Vec, view: View): boolean =>
    Math.abs(dot(unit(normal), view.to)) < edgeOn;

const axes: readonly Vec[] = [
    [0, 0, 1],
    [0, 1, 0],
    [1, 0, 0],
];

/**
 * Normals of the planes through a line that a drawing would use: the principal ones, those through
 * a principal direction, and the one that faces the viewer most. The ones seen best come first, and
 * none that is seen edge-on comes before one that is not.
 *
 * @param along the line's direction, of unit length
 */
export function normalsAlong(along: Vec, view: View): Vec[] {
    const principal = axes.filter((axis) => Math.abs(dot(axis, along)) < 1e-6);
    const leaning = axes.map((axis) => cross(along, axis)).filter((n) => size(n) > 1e-6);
    const facing = squareTo(view.to, along);
    const found: Vec[] = [];
    for (const normal of [...principal, ...leaning.map(unit), ...(size(facing) > 1e-3 ? [unit(facing)] : [])]) {
        if (!found.some((other) => Math.abs(dot(other, normal)) > 1 - 1e-6)) {
            found.push(normal);
        }
    }
    const drawn = found.filter((normal) => !isEdgeOn(normal, view));
    const seen = (normal: Vec) => {
        const isPrincipal = principal.some((axis) => Math.abs(dot(axis, normal)) > 1 - 1e-6);
        return Math.abs(dot(normal, view.to)) + (isPrincipal ? 0.5 : 0);
    };
    return drawn.sort((a, b) => seen(b) - seen(a));
}
