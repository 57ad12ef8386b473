// Values of recipes and scenes. A value that is not what is asked for throws a `RecipeError`; where
// it stands is told by a function, which is called then and not before.
import { RecipeError } from "./errors.js";

export type Where = () => string;

export type Members = Readonly<Record<string, unknown>>;

/** What a path says before a member. */
export const memberOf = (where: Where, name: string): Where => () => {
    const path = where();
    return path === "" ? name : `${path}.${name}`;
};
export const itemOf = (where: Where, index: number): Where => () => `${where()}[${index}]`;

export function fail(where: Where, expected: string): never {
    throw new RecipeError(where(), expected);
}

export function isList(value: unknown): value is ArrayLike<unknown> {
    return Array.isArray(value) || (ArrayBuffer.isView(value) && "length" in value);
}

function kindOf(value: unknown): string {
    if (value === null || value === undefined) {
        return "null";
    }
    switch (typeof value) {
        case "boolean":
            return value ? "true" : "false";
        case "string":
            return "a text";
        case "number":
        case "bigint":
            return "a number";
        default:
            return isList(value) ? "a list" : "an object";
    }
}

export function numberFrom(value: unknown, where: Where): number {
    return typeof value === "number" ? value : fail(where, `expected a number, got ${kindOf(value)}`);
}

export function integerFrom(value: unknown, where: Where): number {
    if (typeof value !== "number") {
        return fail(where, `expected a whole number, got ${kindOf(value)}`);
    }
    if (value !== Math.trunc(value)) {
        return fail(where, "expected a whole number, got one with decimals");
    }
    return value === (value | 0) ? value : fail(where, "expected a whole number of 32 bits");
}

export function booleanFrom(value: unknown, where: Where): boolean {
    return typeof value === "boolean"
        ? value
        : fail(where, `expected true or false, got ${kindOf(value)}`);
}

export function textFrom(value: unknown, where: Where): string {
    return typeof value === "string" ? value : fail(where, `expected a text, got ${kindOf(value)}`);
}

export function listFrom(value: unknown, where: Where): ArrayLike<unknown> {
    return isList(value) ? value : fail(where, `expected a list, got ${kindOf(value)}`);
}

export function isObject(value: unknown): value is Members {
    return typeof value === "object" && value !== null && !isList(value);
}

export function membersFrom(value: unknown, where: Where): Members {
    return isObject(value) ? value : fail(where, `expected an object, got ${kindOf(value)}`);
}

/** A member that must be there. */
export function needed(members: Members, name: string, where: Where): unknown {
    const value = members[name];
    return value === undefined ? fail(where, `"${name}" is missing`) : value;
}

/** Refuses the members that nobody reads. */
export function refuseOthers(members: Members, known: ReadonlySet<string>, where: Where): void {
    for (const name in members) {
        if (!known.has(name) && members[name] !== undefined) {
            fail(where, `${echoed(name)} is not known here`);
        }
    }
}

/** A name in quotes as a message may show it: a name of a scene can hold anything. */
export function echoed(name: string): string {
    const longest = 40;
    // eslint-disable-next-line no-control-regex
    const shown = name.slice(0, longest).replace(/[\u0000-\u001f\u007f]/g, "?");
    return name.length > longest ? `"${shown}..."` : `"${shown}"`;
}

/** `#rrggbb`, as red in the lowest byte, then green, then blue. */
export function colorFrom(value: unknown, where: Where): number {
    const name = textFrom(value, where);
    if (!/^#[0-9a-f]{6}$/i.test(name)) {
        fail(where, 'expected a colour such as "#ffcc00"');
    }
    const rgb = parseInt(name.slice(1), 16);
    return ((rgb & 0xff) << 16) | (rgb & 0xff00) | (rgb >> 16);
}

export type Triple = [number, number, number];

/** Exactly 3 numbers. */
export function vectorFrom(value: unknown, where: Where): Triple {
    if (!isList(value)) {
        return fail(where, `expected 3 numbers, got ${kindOf(value)}`);
    }
    if (value.length !== 3) {
        const count = value.length === 1 ? "1 value" : `${value.length} values`;
        return fail(where, `expected 3 numbers, got ${count}`);
    }
    const [x, y, z] = [value[0], value[1], value[2]];
    if (typeof x === "number" && typeof y === "number" && typeof z === "number") {
        return [x, y, z];
    }
    const item = (index: number) => numberFrom(value[index], itemOf(where, index));
    return [item(0), item(1), item(2)];
}

function viewWith(right: Triple, up: Triple): readonly number[] {
    const to = cross(right, up);
    return [0, 1, 2].flatMap((i) => [right[i]!, up[i]!, to[i]!, 0]).concat([0, 0, 0, 1]);
}

export function cross(a: Triple, b: Triple): Triple {
    return [
        a[1] * b[2] - a[2] * b[1],
        a[2] * b[0] - a[0] * b[2],
        a[0] * b[1] - a[1] * b[0],
    ];
}

export const dot = (a: Triple, b: Triple): number => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];

/** Zero stays zero. */
export function unit(a: Triple): Triple {
    const size = Math.sqrt(dot(a, a));
    const s = size > 0 ? 1 / size : 1;
    return [s * a[0], s * a[1], s * a[2]];
}

const standardViews: Readonly<Record<string, readonly number[]>> = {
    top: viewWith([1, 0, 0], [0, 1, 0]),
    front: viewWith([1, 0, 0], [0, 0, 1]),
    right: viewWith([0, 1, 0], [0, 0, 1]),
    bottom: viewWith([1, 0, 0], [0, -1, 0]),
    back: viewWith([-1, 0, 0], [0, 0, 1]),
    left: viewWith([0, -1, 0], [0, 0, 1]),
    iso: viewWith(unit([1, 1, 0]), unit([-1, 1, 2])),
};

/** Views by the names that a scene gives them. */
export type Views = ReadonlyMap<string, ArrayLike<number>>;

export const isStandardView = (name: string): boolean => Object.hasOwn(standardViews, name);

const viewExpected =
    "expected top, front, right, bottom, back, left, iso, the name of one of the scene's views";

const viewOf = (name: string, own: Views): ArrayLike<number> | undefined =>
    isStandardView(name) ? standardViews[name] : own.get(name);

/** The name of a standard view or of one of the scene's own, or 16 numbers. */
export function viewFrom(value: unknown, own: Views, where: Where): ArrayLike<number> {
    const expected = `${viewExpected}, or 16 numbers`;
    if (typeof value === "string") {
        return viewOf(value, own) ?? fail(where, expected);
    }
    return matrixFrom(value, expected, where);
}

/** The name of a standard view or of one of the scene's own. */
export function viewNameFrom(value: unknown, own: Views, where: Where): string {
    const name = textFrom(value, where);
    return viewOf(name, own) === undefined ? fail(where, viewExpected) : name;
}

export function matrixFrom(value: unknown, expected: string, where: Where): ArrayLike<number> {
    if (!isList(value) || value.length !== 16) {
        return fail(where, expected);
    }
    for (let i = 0; i < 16; ++i) {
        numberFrom(value[i], itemOf(where, i));
    }
    return value as ArrayLike<number>;
}
