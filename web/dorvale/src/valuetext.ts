import { fail, integerFrom, membersFrom, memberOf, refuseOthers } from "./values.js";

/**
 * How a value is written; docs/value-text.md has the forms. Metric values are in model units,
 * imperial ones in inches.
 */
export interface ValueFormat {
    /** `metric` unless said otherwise. */
    readonly units?: "metric" | "thousandths" | "inches" | "feet" | "feetAndInches";
    /** `decimal` unless said otherwise; a whole number is cut off. */
    readonly form?: "decimal" | "fraction" | "whole";
    /** Decimals, -9 to 9; 2 unless said otherwise. Negative drops trailing zeros. */
    readonly precision?: number;
    /** Of a fraction; 8 unless said otherwise. */
    readonly denominator?: number;
}

const lengthOrAngle: Readonly<Record<string, number>> = { length: 0, angle: 1 };
const formatted = 2;
/** Unit system, metric unit, imperial form. */
const unitCodes: Readonly<Record<string, readonly number[]>> = {
    metric: [1, 1, 1],
    thousandths: [1, 2, 1],
    inches: [2, 0, 1],
    feet: [2, 0, 2],
    feetAndInches: [2, 0, 3],
};
const formCodes: Readonly<Record<string, number>> = { decimal: 1, fraction: 2, whole: 3 };
const known = new Set(["units", "form", "precision", "denominator"]);
const at = () => "format";

function codeFrom<T>(name: string, value: unknown, codes: Readonly<Record<string, T>>): T {
    if (typeof value === "string" && Object.hasOwn(codes, value)) {
        return codes[value] as T;
    }
    return fail(memberOf(at, name), `expected ${Object.keys(codes).join(", ")}`);
}

/** The integers that ask the module for a text. */
export function packFormat(format: unknown): number[] {
    if (typeof format === "string") {
        if (!Object.hasOwn(lengthOrAngle, format)) {
            fail(at, "expected length, angle or an object");
        }
        return [lengthOrAngle[format]!];
    }
    const members = membersFrom(format, at);
    const { units = "metric", form = "decimal", precision = 2, denominator = 8 } = members;
    const places = integerFrom(precision, memberOf(at, "precision"));
    if (Math.abs(places) > 9) {
        fail(memberOf(at, "precision"), "expected a whole number from -9 to 9");
    }
    const packed = [
        formatted,
        ...codeFrom("units", units, unitCodes),
        codeFrom("form", form, formCodes),
        places,
        integerFrom(denominator, memberOf(at, "denominator")),
    ];
    refuseOthers(members, known, at);
    return packed;
}
