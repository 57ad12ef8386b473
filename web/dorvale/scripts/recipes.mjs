// Makes src/recipes.ts: the types of recipes, from the module's description of its calls and from
// the comments of dorvale.h.
import { readFileSync, writeFileSync } from "node:fs";
import { pathToFileURL } from "node:url";

const kinds = [
    "Number",
    "Integer",
    "Boolean",
    "Color",
    "Text",
    "TextLines",
    "Direction",
    "Point",
    "Points",
    "EdgeShape",
    "View",
];
const line = 1;
const arc = 2;
const point = 4;

const preamble = `// Made by scripts/recipes.mjs from the module's own description.

/**
 * A point in model coordinates: x, y, z in model units, or the name of one of the scene's points.
 * Numbers that are not finite are taken as they are.
 */
export type Point = string | ArrayLike<number>;
/** x, y, z in model coordinates; of any length but 0. */
export type Direction = ArrayLike<number>;
/** A colour such as \`#ffcc00\`. */
export type Colour = string;
export type StandardView = "top" | "front" | "right" | "bottom" | "back" | "left" | "iso";
/**
 * How the model is looked at: a standard view, one of the scene's by its name, or 16 numbers, row by
 * row, for row vectors: elements 0, 4, 8 point to the right of the screen, 1, 5, 9 upwards and 2, 6,
 * 10 towards the viewer.
 */
export type View = StandardView | (string & {}) | ArrayLike<number>;
/** A straight edge. */
export interface LineEdge {
    type?: "line";
    start: Point;
    end: Point;
}
/** A circular edge: counter-clockwise about its normal from the start to the end, or all round. */
export interface ArcEdge {
    type?: "arc";
    centre: Point;
    normal: Direction;
    /** In model units. */
    radius: number;
    /** A point of the circle. */
    start?: Point;
    end?: Point;
}
/** The id of one of the scene's edges. */
export type EdgeId = string;
/** A line of a note; the kind 1 marks it. */
export type NoteLine = string | { kind: number; text: string };

/** What is done to an annotation for a drawing. */
export interface Finish {
    /** Length of arrow heads in model units, or what fits the annotation. */
    arrow?: number | "fit";
    /** How far text stands off its dimension line, in model units. */
    gap?: number;
    /** Lines in place of the value text; \`{}\` is the value text, \`{.3}\` the value with 3 decimals. */
    label?: string | ArrayLike<string>;
    /** Whether text is turned so that the view shows it neither mirrored nor upside down. */
    readable?: boolean;
    /** Between characters, in model units. */
    spacing?: number;
}

/** What an annotation says besides its calls. */
export interface AnnotationMembers {
    name?: string;
    /** The annotation's type, where no call sets it. */
    type?: number;
    /** Whether it is shown, where no call says so. */
    display?: boolean;
    /** Whether its text stands parallel to the screen, where no call says so. */
    screenParallel?: boolean;
    /** The names of the views that it belongs to; all of them without. */
    views?: readonly string[];
    /** Null takes nothing from the scene's. */
    finish?: Finish | null;
}
`;

/** What dorvale.h says about a function and its parameters. */
function commentOf(header, name) {
    const found = new RegExp(`((?: *///[^\\n]*\\n)+)[^\\n/;]*\\b${name}\\(`).exec(header);
    const text = (found?.[1] ?? "")
        .split("\n")
        .map((row) => row.replace(/^ *\/\/\/ ?/, ""))
        .filter((row) => !row.startsWith("@}"))
        .join("\n");
    const [about, ...rest] = text.split(/^@/m);
    const params = rest
        .filter((part) => part.startsWith("param "))
        .map((part) => part.slice(6).replace(/\s+/g, " ").trim())
        .map((part) => [part.slice(0, part.indexOf(" ")), part.slice(part.indexOf(" ") + 1)]);
    return { about: about.replace(/\s+/g, " ").trim(), params: new Map(params) };
}

function typeOf(member) {
    switch (kinds[member.kind]) {
        case "Number":
        case "Integer":
            return "number";
        case "Boolean":
            return "boolean";
        case "Color":
            return "Colour";
        case "Text":
            return "string";
        case "TextLines":
            return "ArrayLike<NoteLine>";
        case "Direction":
            return "Direction";
        case "Point":
            return "Point";
        case "Points":
            return "ArrayLike<Point>";
        case "View":
            return "View | null";
        default: {
            const shapes = [
                member.count & line ? "LineEdge" : "",
                member.count & arc ? "ArcEdge" : "",
                "EdgeId",
                member.count & point ? "Point" : "",
            ];
            return shapes.filter(Boolean).join(" | ");
        }
    }
}

const units = {
    Number: "In model units.",
    Direction: "In model coordinates.",
    Point: "In model coordinates.",
    Points: "In model coordinates.",
    View: "Null hands over no view.",
};

function docOf(member, comment) {
    const kind = kinds[member.kind];
    const parts = [
        comment.params.get(member.name),
        units[kind],
        kind === "Points" ? `${member.count} of them.` : "",
        kind === "Integer" ? `${member.otherwise} unless said otherwise.` : "",
        kind === "Boolean" ? `${member.otherwise !== 0} unless said otherwise.` : "",
        member.with === "" ? "" : `Hangs on \`${member.with}\`.`,
    ];
    return parts
        .filter(Boolean)
        .map((part) => part[0].toUpperCase() + part.slice(1).replace(/[^.]$/, "$&."))
        .join(" ");
}

function interfaceOf(call, header) {
    const comment = commentOf(header, call.call);
    const rows = call.members.map((member) => {
        const optional = !member.isNeeded || member.with !== "" ? "?" : "";
        const doc = docOf(member, comment);
        const above = doc === "" ? "" : `    /** ${doc} */\n`;
        return `${above}    ${member.name}${optional}: ${typeOf(member)};\n`;
    });
    const about = comment.about === "" ? "" : `/** ${comment.about} */\n`;
    return `${about}export interface ${call.call} {\n    call: "${call.call}";\n${rows.join("")}}\n`;
}

const [loader, wasm, headerFile, out] = process.argv.slice(2);
const { load } = await import(pathToFileURL(loader).href);
const header = readFileSync(headerFile, "utf8");
const { calls } = await load(readFileSync(wasm));
const union = calls.map((call) => `    | ${call.call}\n`).join("");
writeFileSync(
    out,
    `${preamble}
${calls.map((call) => interfaceOf(call, header)).join("\n")}
/** One call of the library. */
export type Call =
${union.slice(0, -1)};

/** An annotation: one call, or several that are made on it one after the other. */
export type Recipe = AnnotationMembers & (Call | { calls: ArrayLike<Call> });
`,
);
