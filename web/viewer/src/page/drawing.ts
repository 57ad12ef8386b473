// An annotation as it is drawn, before it becomes objects of the graphics card.
import type { Annotation, ModelAnnotation } from "dorvale";
import { toModel } from "dorvale";
import { pointsOfArc } from "../rules/things.js";
import { anySquare, cross, moved, scale, type Vec } from "../rules/vec.js";
import type { View } from "../rules/view.js";
import type { Glyphs } from "./glyphs.js";
import { axesOf, framed, type Label, labelsOf, type Line } from "./labels.js";

export interface Drawing {
    readonly segments: Float32Array;
    /** The arrow heads, each as the matrix that makes it of a cone. */
    readonly heads: Float32Array;
    readonly labels: readonly Label[];
    readonly text: string;
}

const nothing = new Float32Array();
const empty: Drawing = { segments: nothing, heads: nothing, labels: [], text: "" };

function segmentsOf({ lines, arcs }: ModelAnnotation): Float32Array {
    const rounds = arcs.map(({ centre, normal, radius, from, to }) =>
        pointsOfArc({ kind: "arc", centre, normal, radius, start: from, end: to }),
    );
    const straight = lines.reduce((sum, { points }) => sum + Math.max(0, points.length / 3 - 1), 0);
    const chords = rounds.reduce((sum, through) => sum + through.length - 1, 0);
    const segments = new Float32Array(6 * (straight + chords));
    let at = 0;
    for (const { points } of lines) {
        for (let i = 3; i < points.length; i += 3) {
            for (let k = i - 3; k < i + 3; ++k) {
                segments[at++] = points[k]!;
            }
        }
    }
    for (const through of rounds) {
        for (let i = 1; i < through.length; ++i, at += 6) {
            segments.set(through[i - 1]!, at);
            segments.set(through[i]!, at + 3);
        }
    }
    return segments;
}

function headsOf({ arrows }: ModelAnnotation): Float32Array {
    const heads = new Float32Array(16 * arrows.length);
    arrows.forEach(({ tip, direction, length, width }, i) => {
        const u = anySquare(direction);
        const columns = [
            scale(direction, length),
            scale(u, width / 2),
            scale(cross(direction, u), width / 2),
            tip,
        ];
        columns.forEach((column, k) => heads.set(column, 16 * i + 4 * k));
        heads[16 * i + 15] = 1;
    });
    return heads;
}

/** An annotation in model coordinates. */
export function drawingOf(annotation: Annotation, glyphs: Glyphs): Drawing {
    if (!annotation.flags.display) {
        return empty;
    }
    const model = toModel(annotation);
    const blocks = new Map<number, Line[]>();
    annotation.texts.forEach(({ block, width, height }, i) => {
        const line = { ...model.texts[i]!, em: width > 0 ? width : height };
        blocks.set(block, [...(blocks.get(block) ?? []), line]);
    });
    return {
        segments: segmentsOf(model),
        heads: headsOf(model),
        labels: [...blocks].flatMap(([block, texts]) => {
            const labels = labelsOf(texts, annotation.flags.screenParallel, glyphs);
            return annotation.frames[block]?.envelope?.frame ? framed(labels) : labels;
        }),
        text: model.texts.map(({ text }) => text).join(" "),
    };
}

/** The same, not drawn. */
export const unseen = ({ text }: Drawing): Drawing => ({ ...empty, text });

/** Points that reach as far as it does in a view. */
export function outlineOf({ segments, labels }: Drawing, view: View): Vec[] {
    const ends = Array.from(
        { length: segments.length / 3 },
        (_, i) => [...segments.subarray(3 * i, 3 * i + 3)] as unknown as Vec,
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
