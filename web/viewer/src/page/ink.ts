import type { Annotation, ModelAnnotation } from "dorvale";
import { toModel } from "dorvale";
import { BufferAttribute, BufferGeometry, Color, Group, Mesh, MeshBasicMaterial, type Object3D } from "three";
import { LineMaterial } from "three/addons/lines/LineMaterial.js";
import { LineSegments2 } from "three/addons/lines/LineSegments2.js";
import { LineSegmentsGeometry } from "three/addons/lines/LineSegmentsGeometry.js";
import { pointsOfArc } from "../rules/things.js";
import { anySquare, cross, moved, type Vec } from "../rules/vec.js";
import type { View } from "../rules/view.js";
import type { Glyphs } from "./glyphs.js";
import { axesOf, type Label, labelsOf } from "./labels.js";
import { faintText, setOpacity, writingGeometry, writingMaterial } from "./writing.js";

/** An annotation as it is drawn: its lines and arrow heads as coordinates, and its text. */
export interface Drawing {
    readonly segments: readonly number[];
    readonly heads: readonly number[];
    readonly labels: readonly Label[];
    readonly text: string;
}

const empty: Drawing = { segments: [], heads: [], labels: [], text: "" };
/** Sides of an arrow head. */
const sides = 8;

function segmentsOf({ lines, arcs }: ModelAnnotation): number[] {
    const segments: number[] = [];
    for (const { points } of lines) {
        for (let i = 3; i < points.length; i += 3) {
            segments.push(...points.subarray(i - 3, i + 3));
        }
    }
    for (const { centre, normal, radius, from, to } of arcs) {
        const through = pointsOfArc({ kind: "arc", centre, normal, radius, start: from, end: to });
        through.slice(1).forEach((p, i) => segments.push(...through[i]!, ...p));
    }
    return segments;
}

function headsOf({ arrows }: ModelAnnotation): number[] {
    return arrows.flatMap(({ tip, direction, length, width }) => {
        const end = moved(tip, direction, length);
        const u = anySquare(direction);
        const v = cross(direction, u);
        const rim = Array.from({ length: sides + 1 }, (_, i): Vec => {
            const angle = (2 * Math.PI * i) / sides;
            const across = moved(end, u, (width / 2) * Math.cos(angle));
            return moved(across, v, (width / 2) * Math.sin(angle));
        });
        return rim.slice(1).flatMap((p, i) => [...tip, ...rim[i]!, ...p, ...end, ...p, ...rim[i]!]);
    });
}

export function drawingOf(annotation: Annotation, glyphs: Glyphs): Drawing {
    if (!annotation.flags.display) {
        return empty;
    }
    const model = toModel(annotation);
    const blocks = new Map<number, typeof model.texts[number][]>();
    annotation.texts.forEach(({ block }, i) => {
        blocks.set(block, [...(blocks.get(block) ?? []), model.texts[i]!]);
    });
    return {
        segments: segmentsOf(model),
        heads: headsOf(model),
        labels: [...blocks.values()].flatMap((texts) =>
            labelsOf(texts, annotation.flags.screenParallel, glyphs),
        ),
        text: model.texts.map(({ text }) => text).join(" "),
    };
}

/** The same, not drawn. */
export const unseen = ({ text }: Drawing): Drawing => ({ ...empty, text });

/** Points that reach as far as it does in a view. */
export function outlineOf({ segments, labels }: Drawing, view: View): Vec[] {
    const ends = Array.from(
        { length: segments.length / 3 },
        (_, i) => segments.slice(3 * i, 3 * i + 3) as unknown as Vec,
    );
    const corners = labels.flatMap((label) => {
        const { center, left, bottom, width, height } = label;
        const { x, y } = axesOf(label, view);
        return [left, left + width].flatMap((u) =>
            [bottom, bottom + height].map((v) => moved(moved(center, x, u), y, v)),
        );
    });
    return [...ends, ...corners];
}

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

    constructor(
        color: number,
        width: number,
        private readonly glyphs_: Glyphs,
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
        this.heads_ = new MeshBasicMaterial({ color });
        this.writing_ = (["ghost", "rim", "ink"] as const).map((pass) =>
            writingMaterial(glyphs_, this.color_, pass),
        );
    }

    /** Whether the part hides nothing of it: a drawing stands in front of what it shows. */
    stand(inFront: boolean): void {
        this.hiddenLines_.opacity = inFront ? 1 : faint;
        setOpacity(this.writing_[0]!, inFront ? 1 : faintText);
    }

    draw(drawings: readonly Drawing[]): void {
        this.clear();
        // Spreading would pass a million arguments.
        const joined = (parts: readonly (readonly number[])[]) => {
            const all = new Float32Array(parts.reduce((sum, part) => sum + part.length, 0));
            let at = 0;
            for (const part of parts) {
                all.set(part, at);
                at += part.length;
            }
            return all;
        };
        const segments = joined(drawings.map((drawing) => drawing.segments));
        if (segments.length > 0) {
            const lines = new LineSegmentsGeometry().setPositions(segments);
            this.add_(new LineSegments2(lines, this.hiddenLines_), 1);
            this.add_(new LineSegments2(lines, this.lines_), 2);
        }
        const heads = joined(drawings.map((drawing) => drawing.heads));
        if (heads.length > 0) {
            const geometry = new BufferGeometry();
            geometry.setAttribute("position", new BufferAttribute(heads, 3));
            this.add_(new Mesh(geometry, this.heads_), 2);
        }
        const labels = drawings.flatMap((drawing) => drawing.labels);
        if (labels.length > 0) {
            const geometry = writingGeometry(labels, this.glyphs_);
            this.writing_.forEach((material, i) => this.add_(new Mesh(geometry, material), 3 + i));
        }
    }

    clear(): void {
        this.group.children.forEach((child) => (child as Mesh).geometry.dispose());
        this.group.clear();
    }

    private add_(object: Object3D, order: number): void {
        object.renderOrder = order;
        object.frustumCulled = false;
        this.group.add(object);
    }
}
