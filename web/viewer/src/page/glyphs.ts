import { CanvasTexture, LinearFilter, LinearMipmapLinearFilter, Vector2 } from "three";

/** A character in the atlas: the pixel of its lower left corner, and how far the next one is, in em. */
export interface Glyph {
    readonly x: number;
    readonly y: number;
    readonly advance: number;
}

/** Of a character, in pixels. */
export const cell = 64;
const em = 40;
const columns = 32;
const rows = { first: 8, most: 128 };

/** The side of a character's quad, in em. */
export const side = cell / em;
/** Where the base line and the start of the character stand in its quad, in em from the bottom left. */
export const base = { x: (cell - em) / 2 / em, y: 20 / em };

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
        const [startX, baseY] = [x + base.x * em, y + cell - base.y * em];
        context.lineWidth = 7;
        context.strokeStyle = "#000";
        context.strokeText(character, startX, baseY);
        context.fillStyle = "#fff";
        context.fillText(character, startX, baseY);
        const advance = context.measureText(character).width / em;
        context.restore();
        this.texture.needsUpdate = true;
        const glyph = { x, y: y + cell, advance };
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
