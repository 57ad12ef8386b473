// Values as the status line says them: as the dimensions write theirs.
import type { Dorvale, Recipe } from "dorvale";
import { labelOf, type Measure } from "./formats.js";
import { exactly, type Spoken } from "./words.js";

function textOf(library: Dorvale, recipe: object, measure: Measure): string {
    const labelled = { ...recipe, height: 1, finish: { label: labelOf(measure) } };
    return library.build(labelled as unknown as Recipe, "top").texts[0]!.text;
}

/** Points at one place have no distance to write: they are put this far apart. */
const least = 1e-9;

const distance = (length: number) => ({
    call: "PMICreateClipDim3D",
    normal: [0, 0, 1],
    pointA: [0, 0, 0],
    pointB: [Math.max(length, least), 0, 0],
    locate: [0, 1, 0],
});

function angle(degrees: number) {
    const end = [Math.cos((Math.PI * degrees) / 180), Math.sin((Math.PI * degrees) / 180), 0];
    const [origin, start] = [[0, 0, 0], [1, 0, 0]];
    return {
        call: "PMICreateAngleDim3D",
        angleMode: 0,
        edge1: { start: origin, end: start },
        pick1: start,
        edge2: { start: origin, end },
        pick2: end,
        locate: start,
    };
}

/** The values of the library's own dimensions; exact ones where they are written as usual. */
export function spokenIn(library: Dorvale, length: Measure, ofAngles: Measure): Spoken {
    const size = (value: number) =>
        `${textOf(library, distance(value), length)}${length.unit === "mm" ? " mm" : ""}`;
    // A distance has no sign, and nothing has none.
    const signed = (value: number) =>
        value < 0 && size(-value) !== size(0) ? `-${size(-value)}` : size(Math.abs(value));
    const isUsual = (measure: Measure, unit: Measure["unit"]) =>
        measure.unit === unit && measure.places === null;
    return {
        length: isUsual(length, "mm") ? exactly.length : signed,
        coordinate: isUsual(length, "mm") ? exactly.coordinate : (value) => signed(value).replace(/ mm$/, ""),
        angle: isUsual(ofAngles, "deg")
            ? exactly.angle
            : (value) => textOf(library, angle(value), ofAngles),
    };
}
