// What a scene has of a part, out of OCCT's shapes.
import type { OpenCascadeInstance, TopoDS_Edge, TopoDS_Shape } from "replicad-opencascadejs";
import type { Vec } from "../rules/vec.js";
import { arcOf, type Curve, lineOf, recognised, type SceneEdge } from "../rules/curves.js";

export type Occt = OpenCascadeInstance;

/** The faces as triangles, and lines through vertices that are drawn and not measured. */
export interface Mesh {
    readonly positions: Float32Array;
    readonly triangles: Uint32Array;
    /** Triangles of each face. */
    readonly faces: readonly number[];
    /** Pieces of free curves, two vertices each. */
    readonly curves: Uint32Array;
}

export interface Part {
    readonly mesh: Mesh;
    readonly edges: readonly SceneEdge[];
}

/** How far chords may be off, as a part of the part's size, and how far they may turn (radians). */
const deviation = 5e-4;
const turn = 0.25;
const mostShapes = 2 ** 31 - 1;

type Point = { X(): number; Y(): number; Z(): number };
const vector = (p: Point): Vec => [p.X(), p.Y(), p.Z()];

/** Calls back for every shape of a kind, as often as it is met. */
function visit(
    occt: Occt,
    shape: TopoDS_Shape,
    kind: "TopAbs_FACE" | "TopAbs_EDGE",
    call: (found: TopoDS_Shape) => void,
): void {
    const explorer = new occt.TopExp_Explorer(shape, occt.TopAbs_ShapeEnum[kind]);
    for (; explorer.More(); explorer.Next()) {
        call(explorer.Current());
    }
    explorer.delete();
}

/** Shapes that are the same one, whichever way round, have one entry. */
class ShapeMap<T> {
    private readonly buckets_ = new Map<number, { shape: TopoDS_Shape; value: T }[]>();

    constructor(private readonly occt_: Occt) {}

    /** The value of a shape, which is made where there is none. */
    of(shape: TopoDS_Shape, make: () => T): T {
        const hash = this.occt_.ReplicadShapeHasher.HashCode(shape, mostShapes);
        const bucket = this.buckets_.get(hash) ?? [];
        const known = bucket.find((entry) => entry.shape.IsSame(shape));
        if (known !== undefined) {
            shape.delete();
            return known.value;
        }
        const value = make();
        this.buckets_.set(hash, [...bucket, { shape, value }]);
        return value;
    }

    *[Symbol.iterator](): Iterator<readonly [TopoDS_Shape, T]> {
        for (const bucket of this.buckets_.values()) {
            for (const { shape, value } of bucket) {
                yield [shape, value];
            }
        }
    }
}

/** The edges of a part, without seams, which run along both sides of one face. */
function edgesOf(occt: Occt, shape: TopoDS_Shape): TopoDS_Edge[] {
    const faces = new ShapeMap<{ last: number; isSeam: boolean }>(occt);
    let face = 0;
    visit(occt, shape, "TopAbs_FACE", (found) => {
        ++face;
        visit(occt, found, "TopAbs_EDGE", (edge) => {
            const of = faces.of(edge, () => ({ last: 0, isSeam: false }));
            of.isSeam ||= of.last === face;
            of.last = face;
        });
        found.delete();
    });
    return [...faces]
        .filter(([, { isSeam }]) => !isSeam)
        .map(([edge]) => occt.TopoDS.Edge(edge))
        .filter((edge) => !occt.BRep_Tool.Degenerated(edge));
}

/** An edge of the scene, or the points of a free curve. */
function measured(occt: Occt, edge: TopoDS_Edge, chord: number): SceneEdge | Vec[] {
    const adaptor = new occt.BRepAdaptor_Curve(edge);
    const [first, last] = [adaptor.FirstParameter(), adaptor.LastParameter()];
    const curve: Curve = (at) => vector(adaptor.EvalD0(first + at * (last - first)));
    const { GeomAbs_Line, GeomAbs_Circle } = occt.GeomAbs_CurveType;
    const kind = adaptor.GetType();
    if (kind === GeomAbs_Line) {
        return lineOf(curve);
    }
    if (kind === GeomAbs_Circle) {
        const circle = adaptor.Circle();
        const axis = vector(circle.Axis().Direction());
        return arcOf(curve, vector(circle.Location()), axis, circle.Radius());
    }
    const known = recognised(curve);
    if (known !== undefined) {
        return known;
    }
    const points = new occt.GCPnts_TangentialDeflection(adaptor, turn, chord);
    return Array.from({ length: points.NbPoints() }, (_, i) => vector(points.Value(i + 1)));
}

/** How far from the origin a scene's points may lie. */
const farthest = 1e8;
const isNear = (x: number) => Math.abs(x) <= farthest;
const isFinitePoint = (p: Vec) => p.every(isNear);

/** What a scene takes: the rest of a damaged part does without. */
function isSound(edge: SceneEdge): boolean {
    if (edge.type === "line") {
        return isFinitePoint(edge.start) && isFinitePoint(edge.end);
    }
    const ends = edge.start === undefined ? [] : [edge.start, edge.end!];
    return edge.radius > 0 && isNear(edge.radius) && [edge.centre, ...ends].every(isFinitePoint);
}

/**
 * @returns nothing where the shape has no faces and no edges
 * @throws Error where a face reaches further than a scene does
 */
export function partOf(occt: Occt, shape: TopoDS_Shape): Part | undefined {
    const box = new occt.Bnd_Box();
    occt.BRepBndLib.Add(shape, box, false);
    if (box.IsVoid()) {
        return undefined;
    }
    const chord = Math.min(deviation * Math.sqrt(box.SquareExtent()), 1e6);
    const data = occt.ReplicadMeshExtractor.extract(shape, chord, turn, true);
    const edges: SceneEdge[] = [];
    const free: Vec[][] = [];
    for (const edge of edgesOf(occt, shape)) {
        const found = measured(occt, edge, chord);
        if (!("type" in found)) {
            free.push(found.filter(isFinitePoint));
        } else if (isSound(found)) {
            edges.push(found);
        }
    }
    // What has been computed since may have moved the memory.
    const { buffer } = occt.wasmMemory;
    const vertices = new Float32Array(buffer, data.getVerticesPtr(), data.getVerticesSize());
    if (!vertices.every(isNear)) {
        throw new Error("a face without end");
    }
    const triangles = new Uint32Array(buffer, data.getTrianglesPtr(), data.getTrianglesSize());
    const groups = new Int32Array(buffer, data.getFaceGroupsPtr(), data.getFaceGroupsSize());
    // Start, count and hash of each face, counted in indices.
    const counts = Array.from({ length: groups.length / 3 }, (_, i) => groups[3 * i + 1]! / 3);
    const through = free.flat();
    const positions = new Float32Array(vertices.length + 3 * through.length);
    positions.set(vertices);
    through.forEach((p, i) => positions.set(p, vertices.length + 3 * i));
    const curves: number[] = [];
    let at = vertices.length / 3;
    for (const points of free) {
        for (let i = 1; i < points.length; ++i) {
            curves.push(at + i - 1, at + i);
        }
        at += points.length;
    }
    const mesh = {
        positions,
        triangles: triangles.slice(),
        faces: counts.filter((count) => count > 0),
        curves: new Uint32Array(curves),
    };
    return mesh.faces.length + edges.length + free.length === 0 ? undefined : { mesh, edges };
}
