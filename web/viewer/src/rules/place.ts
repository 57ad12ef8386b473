import type { Plane } from "./planes.js";
import { dot, moved, sub, type Vec } from "./vec.js";

/** Where a plane seen flatter than this keeps what it had: a cosine. */
const flattest = 1e-3;

/**
 * The model point of a plane that is seen at a point of the screen; undefined where the plane is
 * seen edge-on. What is stored is this point: on its plane it stays where it is in every view.
 *
 * @param seen any point of the line of sight
 * @param to towards the viewer, of unit length
 */
export function placeOn(plane: Plane, seen: Vec, to: Vec): Vec | undefined {
    const slope = dot(to, plane.normal);
    return Math.abs(slope) < flattest
        ? undefined
        : moved(seen, to, dot(sub(plane.origin, seen), plane.normal) / slope);
}
