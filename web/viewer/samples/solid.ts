// A part that is put together face by face: its closed mesh, and the edges where it has a crease.

import earcut from "earcut";

import {
    add, cross, dot, isCircle, keyOf, line, moved, pointOn, pointsOf, reversedLoop, snapped,
    subtract, tangentOn, times, unit,
    type Arc, type Curve, type Point,
} from "./curves";

type Triangle = readonly [Point, Point, Point];

/** A curve that a face ends at, and the face's normal in its middle. */
interface Border {
    face: string;
    curve: Curve;
    normal: Point;
}

export interface Mesh {
    /** x, y, z of each vertex; faces share none. */
    positions: Float32Array;
    triangles: Uint32Array;
    faces: number[];
}

export type Edge = { id: string } & Curve;

/** Two faces that meet at less than this are smooth there. */
const smoothest = Math.cos(Math.PI / 180);

export class Solid {
    readonly #positions: number[] = [];
    readonly #triangles: number[] = [];
    readonly #faces: number[] = [];
    readonly #borders = new Map<string, Border[]>();

    /** A plane face; its loops may run either way. */
    plane(name: string, normal: Point, outer: readonly Curve[], holes: Curve[][] = []): void {
        const loops = [outer, ...holes].map((loop, i) => {
            const isLeft = areaOf(loop, normal) > 0;
            return isLeft === (i === 0) ? loop : reversedLoop(loop);
        });
        this.#addFace(triangulated(loops, normal));
        for (const curve of loops.flat()) {
            this.#addBorder({ face: name, curve, normal });
        }
    }

    /** What a curve passes over on its way along `by`; outside is to the right of the curve. */
    wall(name: string, curve: Curve, by: Point): void {
        const low = pointsOf(curve);
        const high = low.map((p) => snapped(add(p, by)));
        this.#addFace(
            low.slice(1).flatMap((b, i): Triangle[] => [
                [low[i]!, b, high[i + 1]!],
                [low[i]!, high[i + 1]!, high[i]!],
            ]),
        );
        const normalAt = (part: number) => unit(cross(tangentOn(curve, part), by));
        this.#addBorder({ face: name, curve, normal: normalAt(0.5) });
        this.#addBorder({ face: name, curve: moved(curve, by), normal: normalAt(0.5) });
        if (!isCircle(curve)) {
            for (const [part, end] of [[0, curve.start], [1, curve.end]] as const) {
                const side = line(end, add(end, by));
                this.#addBorder({ face: name, curve: side, normal: normalAt(part) });
            }
        }
    }

    /** From a circle to an apex; its outside lies to the right of the circle. */
    cone(name: string, rim: Arc, apex: Point): void {
        const points = pointsOf(rim);
        const triangles = points.slice(1).map((b, i): Triangle => [points[i]!, b, snapped(apex)]);
        this.#addFace(triangles, apex);
        const toApex = subtract(apex, pointOn(rim, 0.5));
        const normal = unit(cross(tangentOn(rim, 0.5), toApex));
        this.#addBorder({ face: name, curve: rim, normal });
    }

    mesh(): Mesh {
        return {
            positions: new Float32Array(this.#positions),
            triangles: new Uint32Array(this.#triangles),
            faces: [...this.#faces],
        };
    }

    /** The edges with a crease, named by the two faces that meet there. */
    edges(): Edge[] {
        const edges: Edge[] = [];
        const used = new Map<string, number>();
        for (const borders of this.#borders.values()) {
            const [first, second] = borders;
            if (first === undefined || second === undefined || borders.length !== 2) {
                throw new Error(`${borders.map((b) => b.face).join(", ")}: not two faces`);
            }
            if (dot(first.normal, second.normal) > smoothest) {
                continue;
            }
            const name = `${first.face} / ${second.face}`;
            const count = (used.get(name) ?? 0) + 1;
            used.set(name, count);
            edges.push({ id: count === 1 ? name : `${name} ${count}`, ...first.curve });
        }
        return edges;
    }

    /** Triangles share their vertices but at a `tip`, where no normal is common to them. */
    #addFace(triangles: readonly Triangle[], tip?: Point): void {
        const vertices = new Map<string, number>();
        const tipKey = tip && keyOf(tip);
        for (const p of triangles.flat()) {
            const key = keyOf(p);
            let vertex = key === tipKey ? undefined : vertices.get(key);
            if (vertex === undefined) {
                vertex = this.#positions.length / 3;
                vertices.set(key, vertex);
                this.#positions.push(...p);
            }
            this.#triangles.push(vertex);
        }
        this.#faces.push(triangles.length);
    }

    #addBorder(border: Border): void {
        const { curve } = border;
        const ends = [keyOf(curve.start), keyOf(curve.end)].sort();
        // A circle's middle depends on the way it runs; all that start at one point are the same.
        const middle = isCircle(curve) ? "circle" : keyOf(pointOn(curve, 0.5));
        const key = [...ends, middle].join(" | ");
        this.#borders.set(key, [...(this.#borders.get(key) ?? []), border]);
    }
}

const polygonOf = (loop: readonly Curve[]): Point[] =>
    loop.flatMap((curve) => pointsOf(curve).slice(0, -1));

/** Above 0 where the loop runs counter-clockwise about the normal. */
function areaOf(loop: readonly Curve[], normal: Point): number {
    const points = polygonOf(loop);
    const sum = points.reduce<Point>(
        (total, p, i) => add(total, cross(p, points[(i + 1) % points.length]!)),
        [0, 0, 0],
    );
    return dot(sum, normal) / 2;
}

function triangulated(loops: ReadonlyArray<readonly Curve[]>, normal: Point): Triangle[] {
    const across: Point = Math.abs(normal[0]) < 0.9 ? [1, 0, 0] : [0, 1, 0];
    const x = unit(subtract(across, times(dot(across, normal), normal)));
    const y = cross(normal, x);
    const polygons = loops.map(polygonOf);
    const starts = polygons.slice(0, -1).reduce<number[]>(
        (list, polygon) => [...list, (list.at(-1) ?? 0) + polygon.length],
        [],
    );
    const points = polygons.flat();
    const corners = earcut(points.flatMap((p) => [dot(p, x), dot(p, y)]), starts);
    return Array.from({ length: corners.length / 3 }, (_, i): Triangle => {
        const [a, b, c] = [0, 1, 2].map((k) => points[corners[3 * i + k]!]!) as [...Triangle];
        const isLeft = dot(cross(subtract(b, a), subtract(c, a)), normal) > 0;
        return isLeft ? [a, b, c] : [a, c, b];
    });
}
