// Flat outlines, and the prisms on them.

import {
    add, circle, cross, isCircle, line, moved, times,
    type Curve, type Flat, type Point,
} from "./curves";
import type { Solid } from "./solid";

/** To a point: straight, or on an arc to the left (counter-clockwise) or the right. */
export type Step = Flat | { left: Flat; to: Flat } | { right: Flat; to: Flat };

export interface Axes {
    x: Point;
    y: Point;
}

const ground: Axes = { x: [1, 0, 0], y: [0, 1, 0] };

/** An open outline; arcs name their centre as `left` or `right`. */
export function path(start: Flat, steps: readonly Step[], axes: Axes = ground): Curve[] {
    const place = (p: Flat): Point => add(times(p[0], axes.x), times(p[1], axes.y));
    const normal = cross(axes.x, axes.y);
    let from = place(start);
    return steps.map((step) => {
        const isLine = !("to" in step);
        const curve: Curve = isLine
            ? line(from, place(step))
            : arcFrom(from, place(step.to), step, place, normal);
        from = curve.end;
        return curve;
    });
}

function arcFrom(
    start: Point,
    end: Point,
    step: { left: Flat } | { right: Flat },
    place: (p: Flat) => Point,
    normal: Point,
): Curve {
    const isLeft = "left" in step;
    const centre = place(isLeft ? step.left : step.right);
    const radius = Math.hypot(...add(start, times(-1, centre)));
    return { type: "arc", centre, normal: isLeft ? normal : times(-1, normal), radius, start, end };
}

/** The outline that comes back to its start. */
export const closed = (start: Flat, steps: readonly Step[], axes?: Axes): Curve[] =>
    path(start, [...steps, start], axes);

/** A hole's outline, with the material on its left. */
export const hole = (x: number, y: number, radius: number): Curve[] => [
    circle([x, y, 0], [0, 0, -1], radius),
];

/** What bounds a prism: its outline, counter-clockwise, or a hole in it, clockwise. */
export interface Loop {
    name: string;
    curves: readonly Curve[];
}

export const raised = (curves: readonly Curve[], by: Point): Curve[] =>
    curves.map((curve) => moved(curve, by));

/** The sides of a prism that rises from `from` by `by`. */
export function walls(solid: Solid, { name, curves }: Loop, from: Point, by: Point): void {
    raised(curves, from).forEach((curve, i) => {
        solid.wall(isCircle(curve) ? name : `${name} ${i + 1}`, curve, by);
    });
}

/** A whole prism; `normal` is the way it rises. */
export function prism(
    solid: Solid,
    loops: readonly Loop[],
    normal: Point,
    [low, high]: readonly [number, number],
    [lowName, highName]: readonly [string, string],
): void {
    const at = (height: number) => {
        return loops.map(({ curves }) => raised(curves, times(height, normal)));
    };
    const [lowOuter, ...lowHoles] = at(low);
    const [highOuter, ...highHoles] = at(high);
    solid.plane(lowName, times(-1, normal), lowOuter!, lowHoles);
    solid.plane(highName, normal, highOuter!, highHoles);
    for (const loop of loops) {
        walls(solid, loop, times(low, normal), times(high - low, normal));
    }
}
