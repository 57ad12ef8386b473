// The module's table of calls, and how each call's members are packed. Nothing here knows a call.
import { type Model, pointFrom, shapeFrom } from "./edges.js";
import type { RowWriter } from "./rows.js";
import {
    booleanFrom,
    colorFrom,
    echoed,
    fail,
    integerFrom,
    isObject,
    itemOf,
    listFrom,
    type Members,
    memberOf,
    needed,
    numberFrom,
    refuseOthers,
    textFrom,
    vectorFrom,
    viewFrom,
    type Views,
    type Where,
} from "./values.js";

/** In the order of the module's own list. */
export const enum Kind {
    Number,
    Integer,
    Boolean,
    Color,
    Text,
    TextLines,
    Direction,
    Point,
    Points,
    EdgeShape,
    View,
}

export interface MemberDescription {
    readonly name: string;
    readonly kind: Kind;
    readonly isNeeded: boolean;
    /** The member on which that hangs: a boolean that is true, or an edge that is an arc, needs it. */
    readonly with: string;
    /** Of an integer or a boolean that may be missing. */
    readonly otherwise: number;
    /** How many points a list has, or the shapes that may stand for an edge. */
    readonly count: number;
}

/** What a call hands back; `type` is 0 an integer, 1 a colour, 2 a point, 3 points, 4 a line. */
export interface HandedBackDescription {
    readonly name: string;
    readonly type: number;
}

export interface CallDescription {
    readonly call: string;
    /** It works on an annotation that another call has made. */
    readonly changes: boolean;
    readonly hasStatus: boolean;
    readonly hasLocate: boolean;
    /** 0 nothing, 1 a length, 2 an angle. */
    readonly measures: number;
    readonly members: readonly MemberDescription[];
    readonly handedBack: readonly HandedBackDescription[];
}

type Packer = (members: Members, rows: RowWriter, model: Model, where: Where) => void;

const viewOf = { scene: 0, nobody: 1, itself: 2 } as const;

function packLines(value: unknown, rows: RowWriter, where: Where): void {
    const lines = listFrom(value, where);
    rows.integers.push(lines.length);
    for (let i = 0; i < lines.length; ++i) {
        const line = lines[i];
        const at = itemOf(where, i);
        if (isObject(line)) {
            rows.integers.push(integerFrom(needed(line, "kind", at), memberOf(at, "kind")));
            rows.text(textFrom(needed(line, "text", at), memberOf(at, "text")));
            refuseOthers(line, lineMembers, at);
        } else {
            rows.integers.push(0);
            rows.text(textFrom(line, at));
        }
    }
}

const lineMembers = new Set(["kind", "text"]);

function packPoints(
    value: unknown,
    count: number,
    rows: RowWriter,
    model: Model,
    where: Where,
): void {
    const points = listFrom(value, where);
    if (points.length !== count) {
        fail(where, `expected ${count} points of 3 numbers, got ${points.length}`);
    }
    for (let i = 0; i < count; ++i) {
        rows.vector(pointFrom(points[i], model, itemOf(where, i)));
    }
}

function packView(value: unknown, rows: RowWriter, own: Views, where: Where): void {
    if (value === undefined) {
        rows.integers.push(viewOf.scene);
    } else if (value === null) {
        rows.integers.push(viewOf.nobody);
    } else {
        rows.list(viewFrom(value, own, where));
        rows.integers.push(viewOf.itself);
    }
}

/** What makes a member needed: none, or whether another member is true or an arc. */
type Conditions = Readonly<Record<string, boolean>>;

function packerOf(member: MemberDescription, conditions: Record<string, boolean>): Packer {
    const { name, kind, count, otherwise } = member;
    const canMiss = !member.isNeeded || member.with !== "";
    const isMissing = (value: unknown, where: Where, met: Conditions): boolean => {
        if (value !== undefined) {
            return false;
        }
        const isNeeded = member.with === "" ? member.isNeeded : met[member.with] === true;
        return isNeeded ? fail(where, `"${name}" is missing`) : true;
    };
    switch (kind) {
        case Kind.Number:
            return (members, rows, _model, where) => {
                const value = members[name];
                if (typeof value === "number") {
                    rows.numbers.push(value);
                } else {
                    numberFrom(needed(members, name, where), memberOf(where, name));
                }
            };
        case Kind.Integer:
            return (members, rows, _model, where) => {
                const value = members[name];
                rows.integers.push(
                    value === undefined ? otherwise : integerFrom(value, memberOf(where, name)),
                );
            };
        case Kind.Boolean:
            return (members, rows, _model, where) => {
                const value = members[name];
                const is =
                    value === undefined
                        ? otherwise !== 0
                        : booleanFrom(value, memberOf(where, name));
                conditions[name] = is;
                rows.integers.push(is ? 1 : 0);
            };
        case Kind.Color:
            return (members, rows, _model, where) => {
                const value = needed(members, name, where);
                rows.integers.push(colorFrom(value, memberOf(where, name)));
            };
        case Kind.Text:
            return (members, rows, _model, where) => {
                const value = members[name];
                rows.text(value === undefined ? "" : textFrom(value, memberOf(where, name)));
            };
        case Kind.TextLines:
            return (members, rows, _model, where) =>
                packLines(needed(members, name, where), rows, memberOf(where, name));
        case Kind.Direction:
            return (members, rows, _model, where) =>
                rows.vector(vectorFrom(needed(members, name, where), memberOf(where, name)));
        case Kind.Point:
            return (members, rows, model, where) => {
                const value = members[name];
                const missing = isMissing(value, where, conditions);
                if (canMiss) {
                    rows.integers.push(missing ? 0 : 1);
                }
                rows.vector(
                    missing ? [0, 0, 0] : pointFrom(value, model, memberOf(where, name)),
                );
            };
        case Kind.Points:
            return (members, rows, model, where) =>
                packPoints(
                    needed(members, name, where),
                    count,
                    rows,
                    model,
                    memberOf(where, name),
                );
        case Kind.EdgeShape:
            return (members, rows, model, where) => {
                const value = members[name];
                if (isMissing(value, where, conditions)) {
                    rows.integers.push(0);
                    return;
                }
                const shape = shapeFrom(value, count, model, memberOf(where, name));
                conditions[name] = shape.kind === 2;
                rows.integers.push(shape.kind);
                rows.list(shape.numbers);
            };
        case Kind.View:
            return (members, rows, model, where) =>
                packView(members[name], rows, model.views, memberOf(where, name));
    }
}

/** What an annotation says besides its calls. */
export const annotationMembers = [
    "name",
    "type",
    "display",
    "screenParallel",
    "views",
    "finish",
] as const;

/** One call of the table. */
export class Call {
    readonly name: string;
    /** Its members and `call`, then also those of an annotation that is this one call. */
    private readonly known_: ReadonlySet<string>;
    private readonly knownAlone_: ReadonlySet<string>;
    private readonly packers_: readonly Packer[];

    constructor(
        readonly place: number,
        readonly description: CallDescription,
    ) {
        this.name = description.call;
        const names = ["call", ...description.members.map((member) => member.name)];
        this.known_ = new Set(names);
        this.knownAlone_ = new Set([...names, ...annotationMembers]);
        // Those that a member hangs on are packed before it, each time anew.
        const conditions: Record<string, boolean> = {};
        this.packers_ = description.members.map((member) => packerOf(member, conditions));
    }

    /** @param alone whether the members are those of an annotation, too */
    pack(members: Members, alone: boolean, rows: RowWriter, model: Model, where: Where): void {
        rows.integers.push(this.place);
        for (const pack of this.packers_) {
            pack(members, rows, model, where);
        }
        refuseOthers(members, alone ? this.knownAlone_ : this.known_, where);
    }
}

export class CallTable {
    readonly calls: readonly Call[];
    private readonly byName_: ReadonlyMap<string, Call>;

    constructor(descriptions: readonly CallDescription[]) {
        this.calls = descriptions.map((description, place) => new Call(place, description));
        this.byName_ = new Map(this.calls.map((call) => [call.name, call]));
    }

    find(members: Members, where: Where): Call {
        const at = memberOf(where, "call");
        const name = textFrom(needed(members, "call", where), at);
        return this.byName_.get(name) ?? fail(at, `there is no call ${echoed(name)}`);
    }
}
