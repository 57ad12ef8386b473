// The `finish` member of recipes and scenes. The module says what is wrong with a label.
import type { RowWriter } from "./rows.js";
import {
    booleanFrom,
    fail,
    isList,
    itemOf,
    memberOf,
    membersFrom,
    numberFrom,
    refuseOthers,
    textFrom,
    type Where,
} from "./values.js";

/** What a `finish` says, read. */
export interface FinishOptions {
    readonly arrow?: number | "fit";
    readonly gap?: number;
    readonly label?: readonly string[];
    readonly readable?: boolean;
    readonly spacing?: number;
}

// As web/binding/build.cpp has them.
const enum Bit {
    ArrowFits = 1,
    ArrowLength = 2,
    Gap = 4,
    Readable = 8,
    NotReadable = 16,
    OwnLabel = 32,
    Spacing = 64,
    Label = 128,
}
const known = new Set(["arrow", "gap", "label", "readable", "spacing"]);

function arrowFrom(value: unknown, where: Where): number | "fit" {
    if (value === "fit" || (typeof value === "number" && value > 0)) {
        return value;
    }
    return fail(where, 'expected "fit" or a length above 0');
}

function distanceFrom(value: unknown, where: Where): number {
    const distance = numberFrom(value, where);
    return distance < 0 ? fail(where, "expected a distance of at least 0") : distance;
}

function labelLineFrom(value: unknown, where: Where): string {
    const line = textFrom(value, where);
    return line === "" ? fail(where, "expected a text that is not empty") : line;
}

function labelFrom(value: unknown, where: Where): string[] {
    if (!isList(value)) {
        return [labelLineFrom(value, where)];
    }
    const lines = Array.from(value, (line, i) => labelLineFrom(line, itemOf(where, i)));
    return lines.length === 0 ? fail(where, "expected at least one line") : lines;
}

/** What it does not name is as inherited; null takes none of it. */
export function finishFrom(
    value: unknown,
    inherited: FinishOptions | undefined,
    where: Where,
): FinishOptions | undefined {
    if (value === undefined) {
        return inherited;
    }
    if (value === null) {
        return undefined;
    }
    const members = membersFrom(value, where);
    const options: Record<string, unknown> = { ...inherited };
    const read = (name: string, from: (value: unknown, where: Where) => unknown) => {
        if (members[name] !== undefined) {
            options[name] = from(members[name], memberOf(where, name));
        }
    };
    read("arrow", arrowFrom);
    read("gap", distanceFrom);
    read("label", labelFrom);
    read("readable", booleanFrom);
    read("spacing", distanceFrom);
    refuseOthers(members, known, where);
    return options as FinishOptions;
}

/** @param ownLabel whether the label is the annotation's own, and not inherited */
export function packFinish(
    options: FinishOptions | undefined,
    ownLabel: boolean,
    rows: RowWriter,
): void {
    if (options === undefined) {
        rows.integers.push(0);
        return;
    }
    const { arrow, gap, label = [], readable, spacing } = options;
    let given = ownLabel ? Bit.OwnLabel : 0;
    if (arrow !== undefined) {
        given |= arrow === "fit" ? Bit.ArrowFits : Bit.ArrowLength;
        if (arrow !== "fit") {
            rows.numbers.push(arrow);
        }
    }
    if (gap !== undefined) {
        given |= Bit.Gap;
        rows.numbers.push(gap);
    }
    if (readable !== undefined) {
        given |= readable ? Bit.Readable : Bit.NotReadable;
    }
    if (spacing !== undefined) {
        given |= Bit.Spacing;
        rows.numbers.push(spacing);
    }
    if (label.length > 0) {
        given |= Bit.Label;
    }
    rows.integers.push(given);
    if (given !== 0) {
        rows.integers.push(label.length);
        label.forEach((line) => rows.text(line));
    }
}
