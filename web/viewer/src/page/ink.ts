// Draws annotations in one colour.
import {
    BufferAttribute,
    BufferGeometry,
    Color,
    DoubleSide,
    Group,
    InstancedInterleavedBuffer,
    InstancedMesh,
    InterleavedBufferAttribute,
    Mesh,
    MeshBasicMaterial,
    Sphere,
} from "three";
import { LineMaterial } from "three/addons/lines/LineMaterial.js";
import { LineSegments2 } from "three/addons/lines/LineSegments2.js";
import { LineSegmentsGeometry } from "three/addons/lines/LineSegmentsGeometry.js";
import type { Vec } from "../rules/vec.js";
import type { Drawing } from "./drawing.js";
import type { Glyphs } from "./glyphs.js";
import { faintText, setOpacity, writingGeometry, writingMaterial } from "./writing.js";

/** Its tip at the origin, along x, of length and radius 1. Flat colour needs no base. */
function cone(): BufferGeometry {
    const sides = 8;
    const rim = Array.from({ length: sides }, (_, i): Vec => {
        const angle = (2 * Math.PI * i) / sides;
        return [1, Math.cos(angle), Math.sin(angle)];
    });
    const positions = new Float32Array([0, 0, 0, ...rim.flat()]);
    return new BufferGeometry()
        .setAttribute("position", new BufferAttribute(positions, 3))
        .setIndex(rim.flatMap((_, i) => [0, 1 + ((i + 1) % sides), 1 + i]));
}

function joined(parts: readonly Float32Array[]): Float32Array {
    const all = new Float32Array(parts.reduce((sum, part) => sum + part.length, 0));
    let at = 0;
    for (const part of parts) {
        all.set(part, at);
        at += part.length;
    }
    return all;
}

function linesOf(segments: Float32Array): LineSegmentsGeometry {
    const lines = new LineSegmentsGeometry();
    const ends = new InstancedInterleavedBuffer(segments, 6, 1);
    lines.setAttribute("instanceStart", new InterleavedBufferAttribute(ends, 3, 0));
    lines.setAttribute("instanceEnd", new InterleavedBufferAttribute(ends, 3, 3));
    lines.instanceCount = segments.length / 6;
    return lines;
}

const bounds = new Sphere();

/** Of what the part hides. */
const faint = 0.22;

/** Draws annotations in one colour: six draw calls, however many there are. */
export class Ink {
    readonly group = new Group();
    private readonly color_: Color;
    private readonly lines_: LineMaterial;
    private readonly hiddenLines_: LineMaterial;
    private readonly heads_: MeshBasicMaterial;
    private readonly writing_;

    private drawn_: readonly Drawing[] = [];

    /** @param changed is called when something else is to be seen */
    constructor(
        color: number,
        width: number,
        private readonly glyphs_: Glyphs,
        private readonly changed_: () => void,
    ) {
        this.color_ = new Color(color);
        this.lines_ = new LineMaterial({ color, linewidth: width });
        this.hiddenLines_ = new LineMaterial({
            color,
            linewidth: width,
            transparent: true,
            opacity: faint,
            depthTest: false,
            depthWrite: false,
        });
        this.heads_ = new MeshBasicMaterial({ color, side: DoubleSide });
        this.writing_ = (["ghost", "rim", "ink"] as const).map((pass) =>
            writingMaterial(glyphs_, this.color_, pass),
        );
    }

    /** Whether the part hides nothing of it: a drawing stands in front of what it shows. */
    stand(inFront: boolean): void {
        this.hiddenLines_.opacity = inFront ? 1 : faint;
        this.heads_.depthTest = !inFront;
        setOpacity(this.writing_[0]!, inFront ? 1 : faintText);
        this.changed_();
    }

    /** In another colour, on a rim around the text. */
    paint(color: number, rim: number): void {
        this.color_.set(color);
        [this.lines_, this.hiddenLines_, this.heads_].forEach((material) => material.color.set(color));
        this.writing_.forEach(({ uniforms }) => (uniforms["rim"]!.value as Color).set(rim));
    }

    draw(drawings: readonly Drawing[]): void {
        const { drawn_: before } = this;
        if (drawings.length === before.length && drawings.every((d, i) => d === before[i])) {
            return;
        }
        this.drawn_ = drawings;
        this.changed_();
        this.dispose_();
        const segments = joined(drawings.map((drawing) => drawing.segments));
        if (segments.length > 0) {
            const lines = linesOf(segments);
            this.add_(new LineSegments2(lines, this.hiddenLines_), 1);
            this.add_(new LineSegments2(lines, this.lines_), 2);
        }
        const heads = joined(drawings.map((drawing) => drawing.heads));
        if (heads.length > 0) {
            const cones = new InstancedMesh(cone(), this.heads_, heads.length / 16);
            cones.instanceMatrix.array.set(heads);
            this.add_(cones, 2);
        }
        const labels = drawings.flatMap((drawing) => drawing.labels);
        if (labels.length > 0) {
            const geometry = writingGeometry(labels, this.glyphs_);
            this.writing_.forEach((material, i) => this.add_(new Mesh(geometry, material), 3 + i));
        }
    }

    clear(): void {
        this.draw([]);
    }

    private dispose_(): void {
        for (const child of this.group.children) {
            (child as Mesh).geometry.dispose();
            if (child instanceof InstancedMesh) {
                child.dispose();
            }
        }
        this.group.clear();
    }

    /** Nothing of it is culled, and its order is told: its bounds, which take long to find, are any. */
    private add_(object: Mesh, order: number): void {
        object.renderOrder = order;
        object.frustumCulled = false;
        object.geometry.boundingSphere = bounds;
        if (object instanceof InstancedMesh) {
            object.boundingSphere = bounds;
        }
        this.group.add(object);
    }
}
