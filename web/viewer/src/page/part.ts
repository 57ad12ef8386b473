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
import { above, type Section } from "../rules/section.js";
import { cut, type Pickable, pickable, type Snap, snapsAt } from "../rules/snap.js";
import type { Edge } from "../rules/things.js";
import { dot, moved, type Vec } from "../rules/vec.js";
import type { Frame } from "../rules/view.js";
import { Cap, cutBy, placeCut } from "./cut.js";
import type { MeshGeometry } from "./mesh.js";

/** What stands this much nearer to the viewer hides what is behind it: a part of its size. */
const tolerance = 2e-3;

/** The part: its shaded faces, its edges, and what of it can be seen and picked. */
export class Part {
    readonly group = new Group();
    readonly middle: Vec;
    /** Half the diagonal of its box. */
    readonly reach: number;
    private readonly all_: Pickable;
    private left_: Pickable;
    private section_: Section | undefined;
    private readonly faces_: MeshBVH | undefined;
    /** x, y and z of the mesh's vertices. */
    private readonly bulge_: ArrayLike<number> = [];
    private readonly cap_: Cap | undefined;

    constructor(edges: readonly Edge[], mesh: MeshGeometry | undefined, others: readonly Vec[]) {
        const faces = mesh?.faces;
        this.left_ = this.all_ = pickable(edges);
        const drawn = this.all_.edges.flatMap(({ through }) => through);
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
            this.cap_ = new Cap(faces, this.middle, this.reach);
            this.group.add(new Mesh(faces, faceMaterial), this.cap_.group);
        }
        this.group.add(new LineSegments(segmentsOf(this.all_), edgeMaterial));
        if (mesh?.curves !== undefined) {
            this.group.add(new LineSegments(mesh.curves, edgeMaterial));
        }
        this.cut(undefined);
    }

    /** What can be picked, seen or not. */
    get things(): Pickable {
        return this.left_;
    }

    /** Takes away what lies beyond a plane; without one the part is whole. */
    cut(section: Section | undefined): void {
        this.section_ = section;
        this.left_ = section === undefined ? this.all_ : cut(this.all_, section, 1e-6 * this.reach);
        placeCut(section);
        this.cap_?.show(section);
    }

    /** How far it reaches from its middle in a direction of unit length. */
    extentAlong(direction: Vec): number {
        const middle = dot(this.middle, direction);
        let most = 0;
        for (const { through } of this.all_.edges) {
            for (const p of through) {
                most = Math.max(most, Math.abs(dot(p, direction) - middle));
            }
        }
        return most === 0 ? this.reach : most;
    }

    /** Frees what the graphics card holds of it. */
    dispose(): void {
        this.group.children.forEach((child) => (child as Partial<Mesh>).geometry?.dispose());
        this.cap_?.dispose();
    }

    /** Corners and ends, and what bulges between them, for fitting the view. */
    *outline(): Iterable<Vec> {
        for (const { through } of this.all_.edges) {
            yield* through;
        }
        const bulge = this.bulge_;
        for (let i = 0; i < bulge.length; i += 3) {
            yield [bulge[i]!, bulge[i + 1]!, bulge[i + 2]!];
        }
        if (this.all_.edges.length === 0 && bulge.length === 0) {
            for (const s of [-1, 1]) {
                yield [0, 1, 2].map((i) => this.middle[i]! + (s * this.reach) / 2) as unknown as Vec;
            }
        }
    }

    /** The one thing under a pixel that can be seen. */
    under(x: number, y: number, frame: Frame): Snap | undefined {
        return snapsAt(this.things, x, y, frame).find(({ at }) => this.sees(at, frame));
    }

    /** A point on an edge or a face is seen where a line of sight beside it reaches as deep. */
    sees(at: Vec, { view, unitsPerPixel }: Frame): boolean {
        const faces = this.faces_;
        const section = this.section_;
        if (section !== undefined && above(at, section) > 1e-6 * this.reach) {
            return false;
        }
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
            const ray = new Ray(origin, direction);
            return section === undefined
                ? (faces.raycastFirst(ray, DoubleSide)?.distance ?? Infinity) > deep
                : this.depthInCut_(faces, ray, section) > deep;
        });
    }

    /** How deep a line of sight reaches into what a section has left. */
    private depthInCut_(faces: MeshBVH, ray: Ray, section: Section): number {
        const hits = faces.raycast(ray, DoubleSide).sort((a, b) => a.distance - b.distance);
        const left = hits.find(({ point }) => above(point.toArray(), section) <= 1e-6 * this.reach);
        if (left === undefined) {
            return Infinity;
        }
        // A surface that is seen from its back: the line came in through the cut.
        const isFromInside = left.face!.normal.dot(ray.direction) > 0;
        const start = above(ray.origin.toArray(), section);
        const slope = dot(ray.direction.toArray(), section.normal);
        return isFromInside && start > 0 && slope < 0 ? -start / slope : left.distance;
    }
}

const faceMaterial = new MeshLambertMaterial({
    color: 0xb9c6d3,
    side: DoubleSide,
    polygonOffset: true,
    polygonOffsetFactor: 1.5,
    polygonOffsetUnits: 6,
    clippingPlanes: [...cutBy],
});
const edgeMaterial = new LineBasicMaterial({ color: 0x2b3642, clippingPlanes: [...cutBy] });

/** The colours of faces and edges, of every part. */
export function paintPart(faces: number, edges: number): void {
    faceMaterial.color.set(faces);
    edgeMaterial.color.set(edges);
}

function segmentsOf({ edges }: Pickable): BufferGeometry {
    const points = edges.flatMap(({ through }) =>
        through.slice(1).flatMap((p, i) => [...through[i]!, ...p]),
    );
    return new BufferGeometry().setAttribute(
        "position",
        new BufferAttribute(new Float32Array(points), 3),
    );
}
