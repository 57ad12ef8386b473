// What is under the cursor.
import { above, crossings, type Section } from "./section.js";
import { type Edge, type Point, pointsOf, type Thing } from "./things.js";
import type { Vec } from "./vec.js";
import { type Frame, toScreen } from "./view.js";

/** Things within this many pixels of the cursor are under it. */
export const reach = 6;

/** A thing under the cursor. */
export interface Snap {
    readonly thing: Thing;
    /** The point of it that is nearest to the cursor, in the model. */
    readonly at: Vec;
    /** From the cursor, in pixels. */
    readonly pixels: number;
    readonly depth: number;
}

/** Everything that can be picked, with the points that edges are drawn through. */
export interface Pickable {
    readonly points: readonly Point[];
    readonly edges: readonly { readonly edge: Edge; readonly through: readonly Vec[] }[];
}

/** Ends of edges and centres of arcs, each once. */
export function pickable(edges: readonly Edge[]): Pickable {
    const points = new Map<string, Point>();
    const add = (kind: Point["kind"], at: Vec) => {
        const key = at.map((x) => Math.round(x * 1e4)).join();
        if (!points.has(key) || kind === "vertex") {
            points.set(key, { kind, at });
        }
    };
    for (const edge of edges) {
        if (edge.kind === "arc") {
            add("centre", edge.centre);
        }
        if (edge.start !== undefined && edge.end !== undefined) {
            add("vertex", edge.start);
            add("vertex", edge.end);
        }
    }
    return {
        points: [...points.values()],
        edges: edges.map((edge) => ({ edge, through: pointsOf(edge) })),
    };
}

/** What a section leaves, and the points in which it cuts edges. */
export function cut(things: Pickable, section: Section, tolerance: number): Pickable {
    const isLeft = (p: Vec) => above(p, section) <= tolerance;
    const isIn = (p: Vec) => Math.abs(above(p, section)) <= tolerance;
    const places = new Map<string, Point>();
    for (const { edge } of things.edges) {
        for (const at of crossings(edge, section)) {
            places.set(at.map((x) => Math.round(x * 1e4)).join(), { kind: "vertex", at, section: section.normal });
        }
    }
    return {
        points: [...places.values(), ...things.points.filter(({ at }) => isLeft(at))],
        edges: things.edges
            .filter(({ through }) => through.some(isLeft))
            .map(({ edge, through }) =>
                edge.kind === "arc" && through.every(isIn)
                    ? { edge: { ...edge, section: section.normal }, through }
                    : { edge, through },
            ),
    };
}

/** How far along a segment its point nearest to (x, y) is, from 0 to 1, as seen on the screen. */
function nearest(a: Vec, b: Vec, x: number, y: number): number {
    const dx = b[0] - a[0];
    const dy = b[1] - a[1];
    const square = dx * dx + dy * dy;
    const t = square > 0 ? ((x - a[0]) * dx + (y - a[1]) * dy) / square : 0;
    return Math.min(1, Math.max(0, t));
}

const between = (a: Vec, b: Vec, t: number): Vec =>
    [0, 1, 2].map((i) => a[i]! + t * (b[i]! - a[i]!)) as unknown as Vec;

function snapOfEdge(edge: Edge, through: readonly Vec[], x: number, y: number, frame: Frame): Snap[] {
    const snaps: Snap[] = [];
    let a = toScreen(through[0]!, frame);
    for (let i = 1; i < through.length; ++i) {
        const b = toScreen(through[i]!, frame);
        const t = nearest(a, b, x, y);
        const [u, v, depth] = between(a, b, t);
        const pixels = Math.hypot(u - x, v - y);
        if (pixels <= reach) {
            snaps.push({ thing: edge, at: between(through[i - 1]!, through[i]!, t), pixels, depth });
        }
        a = b;
    }
    return snaps;
}

/**
 * What is within reach of a pixel: points before edges, then by the distance in whole pixels, what
 * is nearer to the viewer first. The first one that can be seen is the one under the cursor.
 */
export function snapsAt(things: Pickable, x: number, y: number, frame: Frame): Snap[] {
    const points = things.points.flatMap((thing): Snap[] => {
        const [u, v, depth] = toScreen(thing.at, frame);
        const pixels = Math.hypot(u - x, v - y);
        return pixels <= reach ? [{ thing, at: thing.at, pixels, depth }] : [];
    });
    const edges = things.edges.flatMap(({ edge, through }) =>
        snapOfEdge(edge, through, x, y, frame),
    );
    const nearer = (a: Snap, b: Snap) =>
        Math.round(a.pixels) - Math.round(b.pixels) || b.depth - a.depth;
    return [...points.sort(nearer), ...edges.sort(nearer)];
}
