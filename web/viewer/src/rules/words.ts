// What the status line says.
import type { Candidate } from "./fit.js";
import { isCircle, lengthOf, sweepOf, type Thing } from "./things.js";
import type { Vec } from "./vec.js";

/** A number as exactly as a reader can use it: at most six decimals, no trailing zeros. */
export function exact(value: number): string {
    const text = value.toFixed(6).replace(/\.?0+$/, "");
    return text === "-0" ? "0" : text;
}

/** How values are said: lengths and coordinates in millimetres, angles in degrees. */
export interface Spoken {
    readonly length: (value: number) => string;
    /** Without a unit that is a word. */
    readonly coordinate: (value: number) => string;
    readonly angle: (value: number) => string;
}

export const exactly: Spoken = {
    length: (value) => `${exact(value)} mm`,
    coordinate: exact,
    angle: (value) => `${exact(value)}°`,
};

/** A thing and its measure. */
export function described(thing: Thing, { length, coordinate, angle }: Spoken): string {
    const at = (p: Vec): string => `(${p.map(coordinate).join(", ")})`;
    switch (thing.kind) {
        case "vertex":
            return `${thing.section === undefined ? "Vertex" : "Cut edge"} ${at(thing.at)}`;
        case "centre":
            return `Centre ${at(thing.at)}`;
        case "line":
            return `Edge, length ${length(lengthOf(thing))}`;
        case "arc": {
            if (isCircle(thing)) {
                return `Circle, diameter ${length(2 * thing.radius)}, centre ${at(thing.centre)}`;
            }
            const sweep = sweepOf(thing);
            const round = angle((180 * sweep) / Math.PI);
            return `Arc, radius ${length(thing.radius)}, ${round}, length ${length(sweep * thing.radius)}`;
        }
    }
}

/** A dimension and its value. */
const valued = ({ name, value, unit }: Candidate, spoken: Spoken): string =>
    `${name}: ${spoken[unit](value)}`;

const lowered = (text: string): string => text.charAt(0).toLowerCase() + text.slice(1);

export interface Situation {
    readonly hovered?: Thing | undefined;
    /** What was picked first. */
    readonly first?: Thing | undefined;
    /** What follows the mouse. */
    readonly following?: Candidate | undefined;
    /** What the click on the hovered thing would give. */
    readonly next?: Candidate | undefined;
    readonly candidates: number;
    readonly writesNote: boolean;
    /** The text of the annotation under the cursor. */
    readonly annotation?: string | undefined;
}

/** What is under the cursor, and what a click does. */
export function status(now: Situation, spoken: Spoken): string {
    const { hovered, first, following, next } = now;
    const under = hovered === undefined ? "" : `${described(hovered, spoken)} · `;
    if (now.writesNote) {
        return "Note · click: place it · Esc: cancel";
    }
    if (now.annotation !== undefined && first === undefined) {
        return `Annotation ${now.annotation} · click: select it · drag: move it`;
    }
    if (next !== undefined) {
        const verb = first === undefined ? "measure" : "to it:";
        return `${under}click: ${verb} ${lowered(valued(next, spoken))}`;
    }
    if (first === undefined) {
        return hovered === undefined
            ? "Point at an edge, a circle, a vertex or a centre · drag: turn · right drag: move · wheel: zoom"
            : `${under}click: measure from it`;
    }
    if (following === undefined) {
        return `${under}From ${lowered(described(first, spoken))} · click a second thing · N: note · Esc: cancel`;
    }
    const others = now.candidates > 1 ? " · Tab: another kind" : "";
    return `${under}${valued(following, spoken)} · click: place it${others} · Esc: cancel`;
}
