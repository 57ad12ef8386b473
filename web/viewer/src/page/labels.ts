import type { DrawnText } from "dorvale/draw";
import { facing, type TextAxes } from "../rules/facing.js";
import { dot, moved, sub, type Vec } from "../rules/vec.js";
import { type Frame, toScreen, type View } from "../rules/view.js";
import type { Glyph, Glyphs } from "./glyphs.js";

/** A line of text, laid out about a point that stays where it is when the text turns. */
export interface Label {
    readonly glyphs: readonly Glyph[];
    readonly center: Vec;
    /** Zero for text that stands parallel to the screen. */
    readonly x: Vec;
    readonly y: Vec;
    /** From the centre to the start and to the base line. */
    readonly left: number;
    readonly bottom: number;
    readonly width: number;
    readonly height: number;
    /** How wide a character is that is as wide as high. */
    readonly em: number;
    /** The frame around all lines of the text, on its first one. */
    readonly frame?: Box;
}

/** From the centre of a label to the lower left corner, and the sides. */
export interface Box {
    readonly left: number;
    readonly bottom: number;
    readonly width: number;
    readonly height: number;
}

const none: Vec = [0, 0, 0];

/** Whether it stands parallel to the screen. */
export const isUpright = ({ x }: Label): boolean => x === none;

/** The middle of capital letters above the base line, in em. */
const middle = 0.36;

/** The lines of a block of text. */
export function labelsOf(texts: readonly DrawnText[], toScreen: boolean, atlas: Glyphs): Label[] {
    return texts.map(({ text, location, xAxis, yAxis, width: ofCharacters, height }) => {
        const em = ofCharacters > 0 ? ofCharacters : height;
        const glyphs: Glyph[] = [];
        let width = 0;
        for (const character of text) {
            const glyph = atlas.of(character);
            glyphs.push(glyph);
            width += em * glyph.advance;
        }
        if (toScreen) {
            const first = texts[0]!.location;
            // Lines run downwards, whichever way the plane's axes lie.
            const bottom = -Math.hypot(...sub(location, first));
            return { glyphs, center: first, x: none, y: none, left: 0, bottom, width, height, em };
        }
        const center = moved(moved(location, xAxis, width / 2), yAxis, middle * height);
        return {
            glyphs,
            center,
            x: xAxis,
            y: yAxis,
            left: -width / 2,
            bottom: -middle * height,
            width,
            height,
            em,
        };
    });
}

/** The axes that a label is read along in a view. */
export const axesOf = (label: Label, view: View): TextAxes =>
    isUpright(label) ? { x: view.right, y: view.up } : facing(label, view);

/** Of characters below and above the base line, and between them and a frame, in em. */
const reach = { below: 0.24, above: 0.76, frame: 0.25 } as const;

/** The same lines with a frame around them. */
export function framed(labels: readonly Label[]): Label[] {
    const [first, ...others] = labels;
    if (first === undefined) {
        return [];
    }
    const corners = labels.flatMap(({ center, left, bottom, width, height }) => {
        const offset = sub(center, first.center);
        const [u, v] = [dot(offset, first.x) + left, dot(offset, first.y) + bottom];
        return [[u, v - reach.below * height], [u + width, v + reach.above * height]] as const;
    });
    const gap = reach.frame * first.height;
    const [us, vs] = [corners.map(([u]) => u), corners.map(([, v]) => v)];
    const [left, bottom] = [Math.min(...us) - gap, Math.min(...vs) - gap];
    const frame = { left, bottom, width: Math.max(...us) + gap - left, height: Math.max(...vs) + gap - bottom };
    return [{ ...first, frame }, ...others];
}

/** The pixel in the middle of a label. */
export function middleOf(label: Label, frame: Frame): readonly [number, number] {
    const { view } = frame;
    const axes = axesOf(label, view);
    const u = label.left + label.width / 2;
    const v = label.bottom + middle * label.height;
    const [x, y] = toScreen(moved(moved(label.center, axes.x, u), axes.y, v), frame);
    return [x, y];
}

/** How many pixels around a text belong to it. */
const margin = 3;

/** Whether a pixel lies on a label. */
export function isOn(label: Label, x: number, y: number, frame: Frame): boolean {
    const { view } = frame;
    const axes = axesOf(label, view);
    const corner = (u: number, v: number) =>
        toScreen(moved(moved(label.center, axes.x, u), axes.y, v), frame);
    const border = margin * frame.unitsPerPixel;
    const [left, low] = [label.left - border, label.bottom - 0.2 * label.height - border];
    const [right, high] = [label.left + label.width + border, label.bottom + 0.8 * label.height + border];
    const o = corner(left, low);
    const a = corner(right, low);
    const b = corner(left, high);
    const [ax, ay, bx, by] = [a[0] - o[0], a[1] - o[1], b[0] - o[0], b[1] - o[1]];
    const area = ax * by - ay * bx;
    if (Math.abs(area) < 1) {
        return false;
    }
    const s = ((x - o[0]) * by - (y - o[1]) * bx) / area;
    const t = (ax * (y - o[1]) - ay * (x - o[0])) / area;
    return s >= 0 && s <= 1 && t >= 0 && t <= 1;
}
