// What annotations show, told straight from their buffer: for viewers that draw thousands at once.
import type { CallDescription } from "./calls.js";
import type { Annotations } from "./dorvale.js";
import type { ModelText } from "./model.js";
import type { Vector } from "./types.js";

/** A line of text; its `width` is as in `Text`. */
export interface DrawnText extends ModelText {
    readonly width: number;
}

/** Is told what an annotation shows, in model coordinates. */
export interface Pen {
    /** A straight segment. */
    line(from: Vector, to: Vector): void;
    /** Counter-clockwise about its normal from one point to the other. */
    arc(centre: Vector, normal: Vector, radius: number, from: Vector, to: Vector): void;
    /** A cone: its tip, and the direction from there along its body. */
    arrow(tip: Vector, direction: Vector, length: number, width: number): void;
    /** The lines of a block of text, and whether a frame is drawn around them. */
    block(texts: readonly DrawnText[], isFramed: boolean): void;
}

/** What an annotation is drawn in. */
export interface Ground {
    /** As in `Annotation`. */
    readonly plane: Float32Array;
    readonly display: boolean;
    readonly screenParallel: boolean;
}

/** Tells pens what annotations show, without an object for everything that these hold. */
export class Drawer {
    private readonly integers_: Int32Array;
    private readonly floats_: Float32Array;
    private readonly doubles_: Float64Array;
    private at_ = 0;
    /** Of the annotation that is being told. */
    private plane_ = new Float32Array(16);

    /** @param calls_ the library's */
    constructor(
        private readonly annotations_: Annotations,
        private readonly calls_: readonly CallDescription[],
    ) {
        const { buffer } = annotations_;
        this.integers_ = new Int32Array(buffer);
        this.floats_ = new Float32Array(buffer);
        this.doubles_ = new Float64Array(buffer, 0, buffer.byteLength >> 3);
    }

    /**
     * Tells a pen everything that `toModel` gives of an annotation.
     *
     * @throws RecipeError as `Annotations.at`
     */
    draw(index: number, pen: Pen): Ground {
        this.at_ = this.integers_[index + 1]!;
        if (this.integer_() >= 0) {
            // It throws what is wrong with the label.
            this.annotations_.at(index);
        }
        const plane = (this.plane_ = this.floats_.slice(this.at_, this.at_ + 16));
        // Behind the plane come its type and the number of dimensions.
        this.at_ += 18;
        const display = this.integer_() !== 0;
        const screenParallel = this.integer_() !== 0;
        this.each_(() => this.leader_(pen));
        this.each_(() => this.extensionLine_(pen));
        this.each_(() => this.specialLine_(pen));
        this.each_(() => this.block_(pen));
        this.each_(() => this.call_(pen));
        return { plane, display, screenParallel };
    }

    private integer_(): number {
        return this.integers_[this.at_++]!;
    }

    private each_(read: () => void): void {
        for (let left = this.integer_(); left > 0; --left) {
            read();
        }
    }

    /** The next three numbers, as a direction in the model. */
    private direction_(): [number, number, number] {
        const floats = this.floats_;
        const m = this.plane_;
        const at = (this.at_ += 3);
        const x = floats[at - 3]!;
        const y = floats[at - 2]!;
        const z = floats[at - 1]!;
        return [
            x * m[0]! + y * m[4]! + z * m[8]!,
            x * m[1]! + y * m[5]! + z * m[9]!,
            x * m[2]! + y * m[6]! + z * m[10]!,
        ];
    }

    private point_(): Vector {
        const d = this.direction_();
        const m = this.plane_;
        d[0] += m[12]!;
        d[1] += m[13]!;
        d[2] += m[14]!;
        return d;
    }

    private text_(): string {
        const length = this.integer_();
        const first = this.at_;
        this.at_ += (length + 1) >> 1;
        let text = "";
        for (let i = 0; i < length; ++i) {
            const two = this.integers_[first + (i >> 1)]!;
            text += String.fromCharCode(i % 2 === 0 ? two & 0xffff : two >>> 16);
        }
        return text;
    }

    private leader_(pen: Pen): void {
        // The leader's own type, and whether it is a stub.
        this.at_ += 2;
        const hasHead = this.integer_() !== 0;
        const length = this.floats_[this.at_++]!;
        const width = this.floats_[this.at_++]!;
        const tip = this.point_();
        const direction = this.direction_();
        this.curve_(pen);
        if (hasHead) {
            pen.arrow(tip, direction, length, width);
        }
    }

    private extensionLine_(pen: Pen): void {
        this.at_ += 2;
        this.curve_(pen);
    }

    private specialLine_(pen: Pen): void {
        this.at_ += 1;
        this.each_(() => this.curve_(pen));
    }

    private curve_(pen: Pen): void {
        const type = this.integer_();
        if (type === 0) {
            return;
        }
        // Its usage and how it is displayed.
        this.at_ += 3;
        if (type === 2) {
            this.arc_(pen);
            return;
        }
        const count = this.integer_();
        for (let i = 0, a: Vector | undefined; i < count; ++i) {
            const b = this.point_();
            if (a !== undefined) {
                pen.line(a, b);
            }
            a = b;
        }
        // The domain of a polyline.
        this.at_ += type === 1 ? 2 : 0;
    }

    private arc_(pen: Pen): void {
        const centre = this.point_();
        const normal = this.direction_();
        const from = this.point_();
        const to = this.point_();
        // Its own frame.
        this.at_ += 12;
        const radius = this.floats_[this.at_]!;
        this.at_ += 6;
        pen.arc(centre, normal, radius, from, to);
    }

    private block_(pen: Pen): void {
        // Two corners of its box.
        this.at_ += 6;
        const hasEnvelope = this.integer_() !== 0;
        const isFramed = hasEnvelope && this.integers_[this.at_] !== 0;
        this.at_ += hasEnvelope ? 13 : 0;
        const texts: DrawnText[] = [];
        this.each_(() => {
            const text = this.text_();
            const font = this.integer_();
            this.at_ += (font + 1) >> 1;
            const location = this.point_();
            const xAxis = this.direction_();
            const yAxis = this.direction_();
            const width = this.floats_[this.at_]!;
            const height = this.floats_[this.at_ + 1]!;
            // These, the spacing and the usage.
            this.at_ += 4;
            texts.push({ text, location, xAxis, yAxis, height, width });
        });
        pen.block(texts, isFramed);
    }

    private skipDoubles_(count: number): number {
        const first = (this.at_ + 1) >> 1;
        this.at_ = 2 * (first + count);
        return first;
    }

    /** The lines that a call leaves to its caller; over what it handed back. */
    private call_(pen: Pen): void {
        const { hasStatus, hasLocate, handedBack } = this.calls_[this.integer_()]!;
        this.at_ += hasStatus ? 1 : 0;
        if (hasLocate) {
            this.skipDoubles_(3 + 16);
        }
        for (const { type } of handedBack) {
            if (type < 2) {
                this.at_ += 1;
            } else if (type === 2) {
                this.skipDoubles_(3);
            } else if (type === 3) {
                this.each_(() => this.skipDoubles_(3));
            } else {
                this.at_ += 6;
            }
        }
        // What was measured.
        this.at_ += 1;
        this.skipDoubles_(1);
        this.each_(() => {
            const at = this.skipDoubles_(6);
            const point = (i: number): Vector => [
                this.doubles_[i]!,
                this.doubles_[i + 1]!,
                this.doubles_[i + 2]!,
            ];
            pen.line(point(at), point(at + 3));
        });
    }
}
