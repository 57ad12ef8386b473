// What of a part can be picked.
import { anySquare, cross, distance, dot, moved, scale, size, sub, turned, unit, type Vec } from "./vec.js";

export interface Line {
    readonly kind: "line";
    readonly start: Vec;
    readonly end: Vec;
}

/** Counter-clockwise about its normal from the start to the end; without them all round. */
export interface Arc {
    readonly kind: "arc";
    readonly centre: Vec;
    readonly normal: Vec;
    readonly radius: number;
    readonly start?: Vec;
    readonly end?: Vec;
    /** The normal of the section that it lies in. */
    readonly section?: Vec;
}

export type Edge = Line | Arc;

/** A point to measure from: the end of an edge, or the centre of an arc. */
export interface Point {
    readonly kind: "vertex" | "centre";
    readonly at: Vec;
    /** The normal of the section that cuts an edge here. */
    readonly section?: Vec;
}

export type Thing = Edge | Point;

export const isPoint = (thing: Thing): thing is Point =>
    thing.kind === "vertex" || thing.kind === "centre";
export const isCircle = (thing: Thing): boolean =>
    thing.kind === "arc" && thing.start === undefined;

export const lengthOf = ({ start, end }: Line): number => distance(start, end);
export const directionOf = ({ start, end }: Line): Vec => unit(sub(end, start));

/** The angle that an arc runs through, in radians. */
export function sweepOf({ centre, normal, start, end }: Arc): number {
    if (start === undefined || end === undefined) {
        return 2 * Math.PI;
    }
    const a = sub(start, centre);
    const b = sub(end, centre);
    const angle = Math.atan2(dot(unit(normal), cross(a, b)), dot(a, b));
    return angle > 0 ? angle : angle + 2 * Math.PI;
}

/** Points along an arc, evenly spread, its ends among them. */
export function pointsOfArc(arc: Arc, most = 96): Vec[] {
    const normal = unit(arc.normal);
    const from = arc.start ? sub(arc.start, arc.centre) : scale(anySquare(normal), arc.radius);
    const sweep = sweepOf(arc);
    const chords = Math.max(6, Math.ceil((most * sweep) / (2 * Math.PI)));
    return Array.from({ length: chords + 1 }, (_, i) =>
        moved(arc.centre, turned(from, normal, (sweep * i) / chords), 1),
    );
}

export const pointsOf = (edge: Edge): Vec[] =>
    edge.kind === "line" ? [edge.start, edge.end] : pointsOfArc(edge);

/** The point that stands for a thing in a distance: a circle's centre. */
export function measuredPoint(thing: Thing): Vec | undefined {
    if (isPoint(thing)) {
        return thing.at;
    }
    return thing.kind === "arc" ? thing.centre : undefined;
}

/** Whether two edges run alike, either way round. */
export const areParallel = (a: Line, b: Line): boolean =>
    size(cross(directionOf(a), directionOf(b))) < 1e-4;

/** Whether two things are the same one. */
export function areSame(a: Thing | undefined, b: Thing | undefined): boolean {
    return a === b || (a !== undefined && b !== undefined && JSON.stringify(a) === JSON.stringify(b));
}
