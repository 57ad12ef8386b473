// A plane that cuts the part in two, and the cut itself as a coloured face.
import {
    AlwaysStencilFunc,
    BackSide,
    type BufferGeometry,
    DecrementWrapStencilOp,
    DoubleSide,
    FrontSide,
    Group,
    IncrementWrapStencilOp,
    Mesh,
    MeshBasicMaterial,
    NotEqualStencilFunc,
    Plane,
    PlaneGeometry,
    ReplaceStencilOp,
    Vector3,
} from "three";
import type { Section } from "../rules/section.js";
import { moved, scale, type Vec } from "../rules/vec.js";

const plane = new Plane();
/** For the materials of everything that is cut. */
export const cutBy: readonly Plane[] = [plane];

/** Counts how often a line of sight enters the part behind the plane, less how often it leaves. */
const counting = ([side, counts]: readonly [typeof FrontSide | typeof BackSide, typeof IncrementWrapStencilOp | typeof DecrementWrapStencilOp]) =>
    new MeshBasicMaterial({
        side,
        depthTest: false,
        depthWrite: false,
        colorWrite: false,
        stencilWrite: true,
        stencilFunc: AlwaysStencilFunc,
        stencilFail: counts,
        stencilZFail: counts,
        stencilZPass: counts,
        clippingPlanes: [plane],
    });
const counters = (
    [
        [BackSide, IncrementWrapStencilOp],
        [FrontSide, DecrementWrapStencilOp],
    ] as const
).map(counting);

/** Where the count is not 0, the plane runs inside the part. */
const capMaterial = new MeshBasicMaterial({
    color: 0xd9a066,
    side: DoubleSide,
    stencilWrite: true,
    stencilRef: 0,
    stencilFunc: NotEqualStencilFunc,
    stencilFail: ReplaceStencilOp,
    stencilZFail: ReplaceStencilOp,
    stencilZPass: ReplaceStencilOp,
    polygonOffset: true,
    polygonOffsetFactor: 1,
    polygonOffsetUnits: 4,
});

/** The face that a section lays open. */
export class Cap {
    readonly group = new Group();
    private readonly face_: Mesh;

    /** @param reach how far the part reaches from its middle */
    constructor(
        faces: BufferGeometry,
        private readonly middle_: Vec,
        reach: number,
    ) {
        counters.forEach((material, i) => {
            const mesh = new Mesh(faces, material);
            mesh.renderOrder = 0.1 + 0.1 * i;
            this.group.add(mesh);
        });
        this.face_ = new Mesh(new PlaneGeometry(4 * reach, 4 * reach), capMaterial);
        this.face_.renderOrder = 0.3;
        this.group.add(this.face_);
        this.group.visible = false;
    }

    show(section: Section | undefined): void {
        this.group.visible = section !== undefined;
        if (section === undefined) {
            return;
        }
        const { normal, distance } = section;
        const above = this.middle_[0] * normal[0] + this.middle_[1] * normal[1] + this.middle_[2] * normal[2] - distance;
        this.face_.position.set(...moved(this.middle_, normal, -above));
        this.face_.quaternion.setFromUnitVectors(new Vector3(0, 0, 1), new Vector3(...normal));
    }

    dispose(): void {
        this.face_.geometry.dispose();
    }
}

/** Takes away what lies beyond a section, of everything that is cut; nothing without one. */
export function placeCut(section: Section | undefined): void {
    if (section === undefined) {
        plane.normal.set(0, 0, 1);
        plane.constant = 1e30;
        return;
    }
    plane.normal.set(...scale(section.normal, -1));
    plane.constant = section.distance;
}
placeCut(undefined);
