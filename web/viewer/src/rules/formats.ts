// How values are written: the label of an annotation's `finish`, told in units.
import type { Recipe } from "dorvale";
import { types } from "./fit.js";
import { kindOf } from "./kinds.js";

export type LengthUnit = "mm" | "in" | "in/" | "ft" | "ft/";
export type AngleUnit = "deg" | "dms" | "rad";

/** A unit and how finely it is written. */
export interface Measure {
    readonly unit: LengthUnit | AngleUnit;
    /** Decimals, or the denominator of a fraction; null as the library has it, or where there is no choice. */
    readonly places: number | null;
}

export interface Format extends Measure {
    /** What stands before and behind the value: `4X `, ` ±0.1`. */
    readonly prefix: string;
    readonly suffix: string;
}

/** What a unit can be written with, and what stands behind it. */
interface UnitRule {
    readonly places: readonly (number | null)[];
    readonly usual: number | null;
    readonly field: (places: number) => string;
    readonly mark: string;
}

const decimals = [0, 1, 2, 3, 4, 5, 6];
const denominators = [2, 4, 8, 16, 32, 64];

/** What a number without a field of its own says: `{}`. */
const asWritten = "";

export const units: Readonly<Record<LengthUnit | AngleUnit, UnitRule>> = {
    mm: { places: [null, ...decimals], usual: null, field: (n) => `.${n}`, mark: "" },
    in: { places: decimals, usual: 3, field: (n) => `.${n}in`, mark: '"' },
    "in/": { places: denominators, usual: 16, field: (n) => `//${n}in`, mark: '"' },
    ft: { places: [null], usual: null, field: () => "ft", mark: "" },
    "ft/": { places: denominators, usual: 16, field: (n) => `//${n}ft`, mark: "" },
    deg: { places: [null, ...decimals], usual: null, field: (n) => `.${n}`, mark: "°" },
    dms: { places: [null], usual: null, field: () => "dms", mark: "" },
    rad: { places: decimals, usual: 3, field: (n) => `.${n}rad`, mark: " rad" },
};

export const lengthUnits: readonly LengthUnit[] = ["mm", "in", "in/", "ft", "ft/"];
export const angleUnits: readonly AngleUnit[] = ["deg", "dms", "rad"];

/** A unit, as finely as it is usually written unless the other places fit it too. */
export function inUnit(unit: LengthUnit | AngleUnit, places: number | null): Measure {
    const rule = units[unit];
    return { unit, places: rule.places.includes(places) ? places : rule.usual };
}

/** What an annotation measures, and the sign that belongs to it. */
export interface Subject {
    readonly quantity: "length" | "angle";
    readonly symbol: string;
    /** Whether the call writes the sign itself. */
    readonly isWritten: boolean;
}

const signs: Readonly<Record<string, string>> = {
    PMICreateRadiusDim3D: "R",
    PMICreateDiameterDim3D: "⌀",
};

type Members = Readonly<Record<string, unknown>>;

const membersOf = (recipe: Recipe): Members => recipe as unknown as Members;
const callOf = (recipe: Recipe): string => {
    const { call, calls } = membersOf(recipe) as { call?: string; calls?: { call: string }[] };
    return call ?? calls?.[0]?.call ?? "";
};

/** Undefined for a note, which measures nothing. */
export function subjectOf(recipe: Recipe): Subject | undefined {
    const kind = kindOf(recipe);
    if (kind === "note") {
        return undefined;
    }
    const sign = signs[callOf(recipe)];
    const isWidth = sign === undefined && membersOf(recipe)["type"] === types.diameter;
    return {
        quantity: kind === "angle" ? "angle" : "length",
        symbol: isWidth ? "⌀" : (sign ?? ""),
        isWritten: !isWidth,
    };
}

const escaped = (text: string): string => text.replace(/[{}]/g, "$&$&");
const unescaped = (text: string): string => text.replace(/\{\{|\}\}/g, (brace) => brace[0]!);
const firstField = /^((?:[^{}]|\{\{|\}\})*)\{([^{}]*)\}(.*)$/;

/** The unit and places of a field; undefined for one that there is not. */
function measureOf(field: string, { quantity }: Subject): Measure | undefined {
    const names = quantity === "angle" ? angleUnits : lengthUnits;
    if (field === asWritten) {
        return { unit: names[0]!, places: null };
    }
    const number = /\d+/.exec(field)?.[0];
    const places = number === undefined ? null : Number(number);
    const unit = names.find((name) => units[name].field(places ?? 0) === field);
    return unit && { unit, places };
}

function linesOf(recipe: Recipe): readonly string[] {
    const finish = membersOf(recipe)["finish"] as { label?: string | readonly string[] } | null | undefined;
    const label = finish?.label;
    return label === undefined ? ["{}"] : typeof label === "string" ? [label] : label;
}

/** The line of a label that writes nothing but a value, in a unit. */
export function labelOf({ unit, places }: Measure): string {
    const { field, mark } = units[unit];
    return `{${field(places ?? 0)}}${mark}`;
}

/** How a line of a label writes the value; undefined where its field is none that there is. */
function readFormat(text: string, subject: Subject): Format | undefined {
    const [, before = "", field = "", behind = ""] = firstField.exec(text) ?? [];
    const measure = measureOf(field, subject);
    if (measure === undefined) {
        return undefined;
    }
    const { mark } = units[measure.unit];
    const symbol = field === asWritten && subject.isWritten ? "" : subject.symbol;
    const hasMark = field !== asWritten && behind.startsWith(mark);
    return {
        ...measure,
        prefix: unescaped(before.endsWith(symbol) ? before.slice(0, before.length - symbol.length) : before),
        suffix: unescaped(hasMark ? behind.slice(mark.length) : behind),
    };
}

/** What was read last: most annotations of a scene are written alike. */
let last: { readonly text: string; readonly subject: Subject; readonly format: Format | undefined } | undefined;

function formatIn(text: string, subject: Subject): Format | undefined {
    const isSame =
        last?.text === text &&
        last.subject.quantity === subject.quantity &&
        last.subject.symbol === subject.symbol &&
        last.subject.isWritten === subject.isWritten;
    last = isSame ? last! : { text, subject, format: readFormat(text, subject) };
    return last.format;
}

/** The line of a label that shows the value, and how; undefined where there is none. */
function partsOf(recipe: Recipe, subject: Subject) {
    const lines = linesOf(recipe);
    const line = lines.findIndex((text) => firstField.test(text));
    const format = line < 0 ? undefined : formatIn(lines[line]!, subject);
    return format && { lines, line, format };
}

/** How an annotation writes its value; undefined for one that shows none. */
export function formatOf(recipe: Recipe): Format | undefined {
    const subject = subjectOf(recipe);
    return subject && partsOf(recipe, subject)?.format;
}

/** The same annotation with its value in another form; other lines of its label stay. */
export function withFormat(recipe: Recipe, change: Partial<Format>): Recipe {
    const subject = subjectOf(recipe);
    const parts = subject && partsOf(recipe, subject);
    if (subject === undefined || parts === undefined) {
        return recipe;
    }
    const { unit, places, prefix, suffix } = { ...parts.format, ...change };
    const rule = units[unit];
    const isAsWritten = places === null && rule.places.length > 1;
    const symbol = isAsWritten && subject.isWritten ? "" : subject.symbol;
    const field = isAsWritten ? asWritten : rule.field(places ?? 0);
    const mark = isAsWritten ? "" : rule.mark;
    const text = `${escaped(prefix)}${symbol}{${field}}${mark}${escaped(suffix)}`;
    const label = parts.lines.length > 1 ? parts.lines.with(parts.line, text) : text;
    const { label: _, ...others } = (membersOf(recipe)["finish"] ?? {}) as Members;
    const finish = label === "{}" ? others : { ...others, label };
    return { ...membersOf(recipe), finish } as unknown as Recipe;
}

/** The same annotation in another unit, where it measures in such. */
export function withMeasure(recipe: Recipe, measure: Measure): Recipe {
    const isAngle = (angleUnits as readonly string[]).includes(measure.unit);
    return (subjectOf(recipe)?.quantity === "angle") === isAngle ? withFormat(recipe, measure) : recipe;
}

/** What all annotations that measure such a quantity have in common; undefined where they differ. */
export function commonMeasure(recipes: readonly Recipe[], quantity: Subject["quantity"]): Measure | undefined {
    const formats = recipes.flatMap((recipe) => {
        const format = subjectOf(recipe)?.quantity === quantity ? formatOf(recipe) : undefined;
        return format === undefined ? [] : [format];
    });
    const [first] = formats;
    return first !== undefined &&
        formats.every(({ unit, places }) => unit === first.unit && places === first.places)
        ? { unit: first.unit, places: first.places }
        : undefined;
}
