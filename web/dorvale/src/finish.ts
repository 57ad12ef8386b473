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
}

const bits = { fits: 1, length: 2, gap: 4, readable: 8, notReadable: 16, ownLabel: 32 } as const;
const labelOnly = 64;
const known = new Set(["arrow", "gap", "label", "readable"]);

function arrowFrom(value: unknown, where: Where): number | "fit" {
    if (value === "fit" || (typeof value === "number" && value > 0)) {
        return value;
    }
    return fail(where, 'expected "fit" or a length above 0');
}

function gapFrom(value: unknown, where: Where): number {
    const gap = numberFrom(value, where);
    return gap < 0 ? fail(where, "expected a distance of at least 0") : gap;
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
    const { arrow, gap, label, readable } = members;
    const options: FinishOptions = {
        ...inherited,
        ...(arrow === undefined ? {} : { arrow: arrowFrom(arrow, memberOf(where, "arrow")) }),
        ...(gap === undefined ? {} : { gap: gapFrom(gap, memberOf(where, "gap")) }),
        ...(label === undefined ? {} : { label: labelFrom(label, memberOf(where, "label")) }),
        ...(readable === undefined
            ? {}
            : { readable: booleanFrom(readable, memberOf(where, "readable")) }),
    };
    refuseOthers(members, known, where);
    return options;
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
    const { arrow, gap, label = [], readable } = options;
    let given = ownLabel ? bits.ownLabel : 0;
    if (arrow !== undefined) {
        given |= arrow === "fit" ? bits.fits : bits.length;
        if (arrow !== "fit") {
            rows.numbers.push(arrow);
        }
    }
    if (gap !== undefined) {
        given |= bits.gap;
        rows.numbers.push(gap);
    }
    if (readable !== undefined) {
        given |= readable ? bits.readable : bits.notReadable;
    }
    if (label.length > 0) {
        given |= labelOnly;
    }
    rows.integers.push(given);
    if (given !== 0) {
        rows.integers.push(label.length);
        label.forEach((line) => rows.text(line));
    }
}
