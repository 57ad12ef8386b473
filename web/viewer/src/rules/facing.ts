import { cross, dot, scale, type Vec } from "./vec.js";
import type { View } from "./view.js";

/** A writing direction and the up direction of its characters. */
export interface TextAxes {
    readonly x: Vec;
    readonly y: Vec;
}

/** Whether a line of writing runs to the left, or straight down. */
export function runsBackwards(x: Vec, view: View): boolean {
    const along = dot(x, view.right);
    return along < -1e-4 || (along < 1e-4 && dot(x, view.up) < 0);
}

/** Whether the plane of a line of writing is seen from behind. */
export const isMirrored = ({ x, y }: TextAxes, view: View): boolean =>
    dot(cross(x, y), view.to) < 0;

/** The axes that a reader of this view needs: not mirrored, then not upside down. */
export function facing(axes: TextAxes, view: View): TextAxes {
    const { x, y } = axes;
    const unmirrored = isMirrored(axes, view) ? scale(x, -1) : x;
    return runsBackwards(unmirrored, view)
        ? { x: scale(unmirrored, -1), y: scale(y, -1) }
        : { x: unmirrored, y };
}
