// Points, and the lines and arcs that bound a part's faces.

export type Point = readonly [number, number, number];
export type Flat = readonly [number, number];

export interface Line {
    type: "line";
    start: Point;
    end: Point;
}

/** Counter-clockwise about its normal; a circle where it starts and ends at the same point. */
export interface Arc {
    type: "arc";
    centre: Point;
    normal: Point;
    radius: number;
    start: Point;
    end: Point;
}

export type Curve = Line | Arc;

/** Of a whole turn: a chord is then off its arc by at most 0.22 % of the radius. */
export const chordsOfTurn = 48;

export const add = (a: Point, b: Point): Point => [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
export const times = (s: number, a: Point): Point => [s * a[0], s * a[1], s * a[2]];
export const subtract = (a: Point, b: Point): Point => add(a, times(-1, b));
export const dot = (a: Point, b: Point): number => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
export const cross = (a: Point, b: Point): Point => [
    a[1] * b[2] - a[2] * b[1],
    a[2] * b[0] - a[0] * b[2],
    a[0] * b[1] - a[1] * b[0],
];
export const unit = (a: Point): Point => times(1 / Math.hypot(...a), a);

/** To a millionth of a millimetre, so that what is computed in two ways meets in one point. */
export const snapped = (p: Point): Point => p.map((x) => Math.round(x * 1e6) / 1e6 + 0) as never;
export const keyOf = (p: Point): string => snapped(p).join(" ");

export const line = (start: Point, end: Point): Line => ({ type: "line", start, end });

/** A circle that starts in the direction of +x, or of +y where it is square to x. */
export function circle(centre: Point, normal: Point, radius: number): Arc {
    const across: Point = Math.abs(normal[0]) < 0.9 ? [1, 0, 0] : [0, 1, 0];
    const start = add(centre, times(radius, across));
    return { type: "arc", centre, normal, radius, start, end: start };
}

export const isCircle = (curve: Curve): boolean =>
    curve.type === "arc" && keyOf(curve.start) === keyOf(curve.end);

export function moved<C extends Curve>(curve: C, by: Point): C {
    const ends = { start: add(curve.start, by), end: add(curve.end, by) };
    return { ...curve, ...ends, ...(curve.type === "arc" && { centre: add(curve.centre, by) }) };
}

export function reversed(curve: Curve): Curve {
    const ends = { start: curve.end, end: curve.start };
    return curve.type === "line"
        ? { ...curve, ...ends }
        : { ...curve, ...ends, normal: times(-1, curve.normal) };
}

/** The other way round. */
export const reversedLoop = (loop: readonly Curve[]): Curve[] => loop.map(reversed).reverse();

/** How far an arc turns, above 0 and at most a whole turn. */
export function sweepOf(arc: Arc): number {
    const x = subtract(arc.start, arc.centre);
    const y = cross(arc.normal, x);
    const toEnd = subtract(arc.end, arc.centre);
    const angle = Math.atan2(dot(toEnd, y), dot(toEnd, x));
    return angle > 1e-9 ? angle : angle + 2 * Math.PI;
}

/** The point after a part of the curve, from 0 at its start to 1 at its end. */
export function pointOn(curve: Curve, part: number): Point {
    if (curve.type === "line") {
        return add(times(1 - part, curve.start), times(part, curve.end));
    }
    const x = subtract(curve.start, curve.centre);
    const angle = part * sweepOf(curve);
    const turned = add(times(Math.cos(angle), x), times(Math.sin(angle), cross(curve.normal, x)));
    return add(curve.centre, turned);
}

/** Not of unit length. */
export function tangentOn(curve: Curve, part: number): Point {
    return curve.type === "line"
        ? subtract(curve.end, curve.start)
        : cross(curve.normal, subtract(pointOn(curve, part), curve.centre));
}

/** The ends of its chords. */
export function pointsOf(curve: Curve): Point[] {
    const turns = curve.type === "line" ? 0 : sweepOf(curve) / (2 * Math.PI);
    const count = Math.max(1, Math.round(turns * chordsOfTurn));
    return Array.from({ length: count + 1 }, (_, i) => snapped(pointOn(curve, i / count)));
}
