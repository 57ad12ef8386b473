import { CanvasTexture, LinearFilter, LinearMipmapLinearFilter } from "three";

/** A character in the atlas: where it stands there, and how far the next one is, in em. */
export interface Glyph {
    readonly u: number;
    readonly v: number;
    readonly advance: number;
}

const cell = 64;
const em = 40;
const columns = 16;
const rows = 16;

/** The side of a character's quad, in em. */
export const side = cell / em;
/** Where the base line and the start of the character stand in its quad, in em from the bottom left. */
export const base = { x: (cell - em) / 2 / em, y: 20 / em };
export const cellSize = { u: 1 / columns, v: 1 / rows };

/** Every character that was asked for, drawn once: white on a black rim. */
export class Glyphs {
    readonly texture: CanvasTexture;
    private readonly context_: CanvasRenderingContext2D;
    private readonly glyphs_ = new Map<string, Glyph>();

    constructor() {
        const canvas = document.createElement("canvas");
        canvas.width = columns * cell;
        canvas.height = rows * cell;
        this.context_ = canvas.getContext("2d")!;
        this.context_.font = `${em}px "DejaVu Sans", Verdana, "Segoe UI", sans-serif`;
        this.context_.textBaseline = "alphabetic";
        this.context_.lineJoin = "round";
        this.texture = new CanvasTexture(canvas);
        this.texture.minFilter = LinearMipmapLinearFilter;
        this.texture.magFilter = LinearFilter;
        this.texture.anisotropy = 4;
    }

    /** A character; the last place stands for all that no longer have room. */
    of(character: string): Glyph {
        const known = this.glyphs_.get(character);
        return known ?? this.draw_(character);
    }

    private draw_(character: string): Glyph {
        const place = Math.min(this.glyphs_.size, columns * rows - 1);
        const [x, y] = [(place % columns) * cell, Math.floor(place / columns) * cell];
        const context = this.context_;
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
        const glyph = { u: x / (columns * cell), v: 1 - (y + cell) / (rows * cell), advance };
        this.glyphs_.set(character, glyph);
        return glyph;
    }
}
