import {
    BufferAttribute,
    BufferGeometry,
    DoubleSide,
    Group,
    LineBasicMaterial,
    LineSegments,
    Mesh,
    MeshLambertMaterial,
    Ray,
    Vector3,
} from "three";
import { MeshBVH } from "three-mesh-bvh";
import { type Pickable, pickable, type Snap, snapsAt } from "../rules/snap.js";
import type { Edge } from "../rules/things.js";
import { moved, type Vec } from "../rules/vec.js";
import type { Frame } from "../rules/view.js";
import type { MeshGeometry } from "./mesh.js";

/** What stands this much nearer to the viewer hides what is behind it: a part of its size. */
const tolerance = 2e-3;

/** The part: its shaded faces, its edges, and what of it can be seen and picked. */
export class Part {
    readonly group = new Group();
    readonly middle: Vec;
    /** Half the diagonal of its box. */
    readonly reach: number;
    readonly things: Pickable;
    private readonly faces_: MeshBVH | undefined;
    /** x, y and z of the mesh's vertices. */
    private readonly bulge_: ArrayLike<number> = [];

    constructor(edges: readonly Edge[], mesh: MeshGeometry | undefined, others: readonly Vec[]) {
        const faces = mesh?.faces;
        this.things = pickable(edges);
        const drawn = this.things.edges.flatMap(({ through }) => through);
        const low = new Vector3(Infinity, Infinity, Infinity);
        const high = new Vector3(-Infinity, -Infinity, -Infinity);
        for (const p of [...drawn, ...(drawn.length > 0 ? [] : others)]) {
            low.min(new Vector3(...p));
            high.max(new Vector3(...p));
        }
        if (faces !== undefined) {
            faces.computeBoundingBox();
            low.min(faces.boundingBox!.min);
            high.max(faces.boundingBox!.max);
        }
        const isEmpty = low.x > high.x;
        const middle = isEmpty ? new Vector3() : low.clone().add(high).multiplyScalar(0.5);
        this.middle = middle.toArray();
        this.reach = isEmpty ? 50 : Math.max(high.distanceTo(low) / 2, 1e-3);
        if (faces !== undefined) {
            this.bulge_ = faces.getAttribute("position").array;
            this.faces_ = new MeshBVH(faces);
            this.group.add(new Mesh(faces, faceMaterial));
        }
        this.group.add(new LineSegments(segmentsOf(this.things), edgeMaterial));
        if (mesh?.curves !== undefined) {
            this.group.add(new LineSegments(mesh.curves, edgeMaterial));
        }
    }

    /** Frees what the graphics card holds of it. */
    dispose(): void {
        this.group.children.forEach((child) => (child as Mesh).geometry.dispose());
    }

    /** Corners and ends, and what bulges between them, for fitting the view. */
    *outline(): Iterable<Vec> {
        for (const { through } of this.things.edges) {
            yield* through;
        }
        const bulge = this.bulge_;
        for (let i = 0; i < bulge.length; i += 3) {
            yield [bulge[i]!, bulge[i + 1]!, bulge[i + 2]!];
        }
        if (this.things.edges.length === 0 && bulge.length === 0) {
            for (const s of [-1, 1]) {
                yield [0, 1, 2].map((i) => this.middle[i]! + (s * this.reach) / 2) as unknown as Vec;
            }
        }
    }

    /** The one thing under a pixel that can be seen. */
    under(x: number, y: number, frame: Frame): Snap | undefined {
        return snapsAt(this.things, x, y, frame).find(({ at }) => this.sees_(at, frame));
    }

    /** A point on an edge is seen where a line of sight beside it reaches as deep. */
    private sees_(at: Vec, { view, unitsPerPixel }: Frame): boolean {
        const faces = this.faces_;
        if (faces === undefined) {
            return true;
        }
        const far = 4 * this.reach;
        const deep = far - tolerance * this.reach - 2 * unitsPerPixel;
        const direction = new Vector3(...view.to).negate();
        const side = 1.2 * unitsPerPixel;
        const besides = [
            [0, 0],
            [side, 0],
            [-side, 0],
            [0, side],
            [0, -side],
        ] as const;
        return besides.some(([u, v]) => {
            const beside = moved(moved(at, view.right, u), view.up, v);
            const origin = new Vector3(...moved(beside, view.to, far));
            const hit = faces.raycastFirst(new Ray(origin, direction), DoubleSide);
            return hit === null || hit.distance > deep;
        });
    }
}

const faceMaterial = new MeshLambertMaterial({
    color: 0xb9c6d3,
    side: DoubleSide,
    polygonOffset: true,
    polygonOffsetFactor: 1.5,
    polygonOffsetUnits: 6,
});
const edgeMaterial = new LineBasicMaterial({ color: 0x2b3642 });

function segmentsOf({ edges }: Pickable): BufferGeometry {
    const points = edges.flatMap(({ through }) =>
        through.slice(1).flatMap((p, i) => [...through[i]!, ...p]),
    );
    return new BufferGeometry().setAttribute(
        "position",
        new BufferAttribute(new Float32Array(points), 3),
    );
}
