import { CanvasTexture, LinearFilter, LinearMipmapLinearFilter, Vector2 } from "three";

/** A character in the atlas, measured in em from its start on the base line. */
export interface Glyph {
    /** Where its start stands in the atlas, in pixels from the top left. */
    readonly x: number;
    readonly y: number;
    /** How far the next one is. */
    readonly advance: number;
    /** What its ink and its rim cover: its lower left corner, and its sides. */
    readonly left: number;
    readonly bottom: number;
    readonly width: number;
    readonly height: number;
}

const cell = 64;
/** In pixels of the atlas. */
export const em = 40;
/** Of the rim, in pixels. */
const rim = 3.5;
const columns = 32;
const rows = { first: 8, most: 128 };
/** From a cell's corner to the start of its character, in pixels. */
const start = { x: 12, y: 44 };

/** Stands for a place that is white all over. */
export const solid = "\uE000";

/** Every character that was asked for, drawn once: white on a black rim. It grows when it is full. */
export class Glyphs {
    readonly texture: CanvasTexture;
    /** In pixels. */
    readonly size = new Vector2();
    private canvas_ = sheet(rows.first);
    private readonly glyphs_ = new Map<string, Glyph>();

    constructor() {
        this.texture = new CanvasTexture(this.canvas_);
        this.texture.minFilter = LinearMipmapLinearFilter;
        this.texture.magFilter = LinearFilter;
        this.texture.anisotropy = 4;
        this.size.set(this.canvas_.width, this.canvas_.height);
    }

    of(character: string): Glyph {
        const known = this.glyphs_.get(character);
        return known ?? this.draw_(character);
    }

    private draw_(character: string): Glyph {
        if (this.glyphs_.size === (columns * this.canvas_.height) / cell) {
            this.grow_();
        }
        // More characters than a script has: the last place is the last one's.
        const place = Math.min(this.glyphs_.size, columns * rows.most - 1);
        const [x, y] = [(place % columns) * cell, Math.floor(place / columns) * cell];
        const context = this.canvas_.getContext("2d")!;
        context.font = `${em}px "DejaVu Sans", Verdana, "Segoe UI", sans-serif`;
        context.textBaseline = "alphabetic";
        context.lineJoin = "round";
        context.save();
        context.beginPath();
        context.rect(x, y, cell, cell);
        context.clip();
        context.clearRect(x, y, cell, cell);
        const [startX, baseY] = [x + start.x, y + start.y];
        if (character === solid) {
            context.fillStyle = "#fff";
            context.fillRect(x, y, cell, cell);
        } else {
            context.lineWidth = 2 * rim;
            context.strokeStyle = "#000";
            context.strokeText(character, startX, baseY);
            context.fillStyle = "#fff";
            context.fillText(character, startX, baseY);
        }
        const size = context.measureText(character);
        context.restore();
        this.texture.needsUpdate = true;
        // A pixel more, for what is smoothed across the border.
        const reach = (ink: number, most: number) => Math.min(ink + rim + 1, most) / em;
        const left = -reach(size.actualBoundingBoxLeft, start.x);
        const bottom = -reach(size.actualBoundingBoxDescent, cell - start.y);
        const glyph = {
            x: startX,
            y: baseY,
            advance: size.width / em,
            left,
            bottom,
            width: reach(size.actualBoundingBoxRight, cell - start.x) - left,
            height: reach(size.actualBoundingBoxAscent, start.y) - bottom,
        };
        this.glyphs_.set(character, glyph);
        return glyph;
    }

    /** Twice as many places; those that are taken stay where they are. */
    private grow_(): void {
        const before = this.canvas_;
        if (before.height >= rows.most * cell) {
            return;
        }
        this.canvas_ = sheet((2 * before.height) / cell);
        this.canvas_.getContext("2d")!.drawImage(before, 0, 0);
        this.size.set(this.canvas_.width, this.canvas_.height);
        this.texture.image = this.canvas_;
        // The size of what is on the graphics card cannot change.
        this.texture.dispose();
    }
}

function sheet(count: number): HTMLCanvasElement {
    const canvas = document.createElement("canvas");
    canvas.width = columns * cell;
    canvas.height = count * cell;
    return canvas;
}
