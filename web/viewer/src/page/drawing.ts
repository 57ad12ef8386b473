// An annotation as it is drawn, before it becomes objects of the graphics card.
import type { Annotations, CallDescription } from "dorvale";
import { type DrawnText, Drawer, type Pen } from "dorvale/draw";
import type { TextAxes } from "../rules/facing.js";
import { pointsOfArc } from "../rules/things.js";
import { anySquare, cross, moved, type Vec } from "../rules/vec.js";
import type { View } from "../rules/view.js";
import type { Glyphs } from "./glyphs.js";
import { axesOf, framed, isUpright, type Label, labelsOf } from "./labels.js";

export interface Drawing {
    readonly segments: Float32Array;
    /** The arrow heads, each as the matrix that makes it of a cone. */
    readonly heads: Float32Array;
    readonly labels: readonly Label[];
    readonly text: string;
    /** From where these are seen rightly tells how it is to be built: its text's, or its plane's. */
    readonly axes: TextAxes;
}

const nothing = new Float32Array();

/** The same, not drawn. */
export const unseen = ({ text, axes }: Drawing): Drawing => ({
    segments: nothing,
    heads: nothing,
    labels: [],
    text,
    axes,
});

/** Numbers that are written one behind the other. What is taken of them shares their memory. */
class Run {
    private numbers_: Float32Array;
    private start_ = 0;
    private end_ = 0;

    constructor(expected: number) {
        this.numbers_ = new Float32Array(expected);
    }

    add(v: Vec): void {
        this.addOne_(v[0]);
        this.addOne_(v[1]);
        this.addOne_(v[2]);
    }

    /** A column of a matrix. */
    addColumn(v: Vec, factor: number, last: number): void {
        this.addOne_(factor * v[0]);
        this.addOne_(factor * v[1]);
        this.addOne_(factor * v[2]);
        this.addOne_(last);
    }

    /** What was written since the last time. */
    take(): Float32Array {
        const taken = this.numbers_.subarray(this.start_, this.end_);
        this.start_ = this.end_;
        return taken;
    }

    private addOne_(x: number): void {
        if (this.end_ === this.numbers_.length) {
            this.move_();
        }
        this.numbers_[this.end_++] = x;
    }

    /** Goes on elsewhere, with what was not taken. */
    private move_(): void {
        const rest = this.take();
        this.numbers_ = new Float32Array(2 * this.numbers_.length);
        this.numbers_.set(rest);
        this.start_ = 0;
        this.end_ = rest.length;
    }
}

/** How many numbers most annotations have of segments, and of heads. */
const usual = { segments: 40, heads: 32 } as const;

/** Draws one annotation after the other. */
class Draughtsman implements Pen {
    private readonly segments_: Run;
    private readonly heads_: Run;
    private blocks_: { readonly texts: readonly DrawnText[]; readonly isFramed: boolean }[] = [];

    constructor(
        private readonly drawer_: Drawer,
        count: number,
        private readonly glyphs_: Glyphs,
    ) {
        this.segments_ = new Run(usual.segments * Math.max(1, count));
        this.heads_ = new Run(usual.heads * Math.max(1, count));
    }

    line(from: Vec, to: Vec): void {
        this.segments_.add(from);
        this.segments_.add(to);
    }

    arc(centre: Vec, normal: Vec, radius: number, start: Vec, end: Vec): void {
        const through = pointsOfArc({ kind: "arc", centre, normal, radius, start, end });
        for (let i = 1; i < through.length; ++i) {
            this.line(through[i - 1]!, through[i]!);
        }
    }

    arrow(tip: Vec, direction: Vec, length: number, width: number): void {
        const u = anySquare(direction);
        this.heads_.addColumn(direction, length, 0);
        this.heads_.addColumn(u, width / 2, 0);
        this.heads_.addColumn(cross(direction, u), width / 2, 0);
        this.heads_.addColumn(tip, 1, 1);
    }

    block(texts: readonly DrawnText[], isFramed: boolean): void {
        this.blocks_.push({ texts, isFramed });
    }

    draw(index: number): Drawing {
        this.blocks_ = [];
        const { plane: m, display, screenParallel } = this.drawer_.draw(index, this);
        const [segments, heads] = [this.segments_.take(), this.heads_.take()];
        const labels = display ? this.labels_(screenParallel) : [];
        const [label] = labels;
        const axes: TextAxes =
            label === undefined || isUpright(label)
                ? { x: [m[0]!, m[1]!, m[2]!], y: [m[4]!, m[5]!, m[6]!] }
                : label;
        const text = display ? this.text_() : "";
        const drawing = { segments, heads, labels, text, axes };
        return display ? drawing : unseen(drawing);
    }

    private labels_(toScreen: boolean): Label[] {
        return this.blocks_.flatMap(({ texts, isFramed }) => {
            const labels = labelsOf(texts, toScreen, this.glyphs_);
            return isFramed ? framed(labels) : labels;
        });
    }

    private text_(): string {
        return this.blocks_.flatMap(({ texts }) => texts.map(({ text }) => text)).join(" ");
    }
}

/** Annotations in model coordinates. */
export function drawingsOf(
    annotations: Annotations,
    calls: readonly CallDescription[],
    glyphs: Glyphs,
): Drawing[] {
    const { length } = annotations;
    const draughtsman = new Draughtsman(new Drawer(annotations, calls), length, glyphs);
    return Array.from({ length }, (_, i) => draughtsman.draw(i));
}

/** The ends of its segments. */
export const endsOf = ({ segments }: Drawing): Vec[] =>
    Array.from({ length: segments.length / 3 }, (_, i) => [
        segments[3 * i]!,
        segments[3 * i + 1]!,
        segments[3 * i + 2]!,
    ]);

/** Points that reach as far as it does in a view. */
export function outlineOf(drawing: Drawing, view: View): Vec[] {
    const corners = drawing.labels.flatMap((label) => {
        const { center, left, bottom, width, height } = label;
        const { x, y } = axesOf(label, view);
        return [left, left + width].flatMap((u) =>
            [bottom, bottom + height].map((v) => moved(moved(center, x, u), y, v)),
        );
    });
    return [...endsOf(drawing), ...corners];
}
