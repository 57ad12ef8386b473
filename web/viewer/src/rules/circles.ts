// Circles that come in pieces.
import { type Arc, type Edge, isCircle, sweepOf } from "./things.js";
import { anySquare, cross, distance, dot, size, sub, unit, type Vec } from "./vec.js";

/** What counts as the same place, as a part of the radius, and in radians. */
const tolerance = 1e-6;

/** Whether two arcs are pieces of one circle, whichever way round they run. */
function areOfOneCircle(a: Arc, b: Arc): boolean {
    const near = tolerance * a.radius;
    return (
        Math.abs(a.radius - b.radius) <= near &&
        distance(a.centre, b.centre) <= near &&
        size(cross(unit(a.normal), unit(b.normal))) <= tolerance
    );
}

/** The angle that a piece starts at about the first one's normal, and how far it goes on. */
function spanOf(arc: Arc, normal: Vec, x: Vec): { from: number; sweep: number } {
    const isAlike = dot(arc.normal, normal) > 0;
    const first = sub((isAlike ? arc.start : arc.end)!, arc.centre);
    const angle = Math.atan2(dot(first, cross(normal, x)), dot(first, x));
    return { from: angle < 0 ? angle + 2 * Math.PI : angle, sweep: sweepOf(arc) };
}

/** Whether the pieces run all the way round together. */
function areAllRound(arcs: readonly Arc[]): boolean {
    if (arcs.some(isCircle)) {
        return true;
    }
    const normal = unit(arcs[0]!.normal);
    const spans = arcs
        .map((arc) => spanOf(arc, normal, anySquare(normal)))
        .sort((a, b) => a.from - b.from);
    const start = spans[0]!.from;
    let reached = start;
    for (const { from, sweep } of spans) {
        if (from > reached + tolerance) {
            return false;
        }
        reached = Math.max(reached, from + sweep);
    }
    return reached >= start + 2 * Math.PI - tolerance;
}

/** The same edges; a circle whose arcs are all there is one edge, at the place of the first. */
export function wholeCircles(edges: readonly Edge[]): Edge[] {
    const groups: Arc[][] = [];
    for (const edge of edges) {
        if (edge.kind === "arc") {
            const group = groups.find(([first]) => areOfOneCircle(first!, edge));
            if (group === undefined) {
                groups.push([edge]);
            } else {
                group.push(edge);
            }
        }
    }
    const whole = new Map<Edge, Arc | undefined>();
    for (const arcs of groups.filter((group) => group.length > 1 && areAllRound(group))) {
        const { centre, normal, radius } = arcs[0]!;
        arcs.forEach((arc) => whole.set(arc, undefined));
        whole.set(arcs[0]!, { kind: "arc", centre, normal, radius });
    }
    return edges.flatMap((edge) => (whole.has(edge) ? (whole.get(edge) ?? []) : [edge]));
}
