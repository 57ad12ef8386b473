// Points and edges: described on the spot, or those of a scene by their names.
import {
    dot,
    echoed,
    fail,
    isObject,
    type Members,
    memberOf,
    membersFrom,
    needed,
    numberFrom,
    refuseOthers,
    textFrom,
    type Triple,
    unit,
    vectorFrom,
    type Views,
    type Where,
} from "./values.js";

/** What may stand for an edge; the values are those of packed rows. */
export const shapes = { line: 1, arc: 2, point: 4 } as const;

/** A shape, and its numbers as packed rows have them. */
export interface Shape {
    readonly kind: number;
    readonly numbers: readonly number[];
}

/** What has a name. */
export interface Model {
    readonly points: ReadonlyMap<string, Triple>;
    readonly edges: ReadonlyMap<string, Shape>;
    readonly views: Views;
}

export const noModel: Model = { points: new Map(), edges: new Map(), views: new Map() };

export function pointFrom(value: unknown, model: Model, where: Where): Triple {
    if (typeof value !== "string") {
        return vectorFrom(value, where);
    }
    return model.points.get(value) ?? fail(where, `there is no point ${echoed(value)}`);
}

/** Any point on a circle: where it starts when nobody says. */
function pointOnCircle(centre: Triple, normal: Triple, radius: number): Triple {
    const n = unit(normal);
    const across: Triple = Math.abs(n[0]) < 0.9 ? [1, 0, 0] : [0, 1, 0];
    const along = dot(across, n);
    const u = unit([across[0] - along * n[0], across[1] - along * n[1], across[2] - along * n[2]]);
    return [centre[0] + radius * u[0], centre[1] + radius * u[1], centre[2] + radius * u[2]];
}

const lineMembers = new Set(["type", "start", "end"]);
const arcMembers = new Set(["type", "centre", "normal", "radius", "start", "end"]);

function lineFrom(members: Members, model: Model, where: Where): Shape {
    const a = pointFrom(needed(members, "start", where), model, memberOf(where, "start"));
    const b = pointFrom(needed(members, "end", where), model, memberOf(where, "end"));
    refuseOthers(members, lineMembers, where);
    return { kind: shapes.line, numbers: [a[0], a[1], a[2], b[0], b[1], b[2]] };
}

function arcFrom(members: Members, model: Model, where: Where): Shape {
    const centre = pointFrom(
        needed(members, "centre", where),
        model,
        memberOf(where, "centre"),
    );
    const normal = vectorFrom(needed(members, "normal", where), memberOf(where, "normal"));
    const radius = numberFrom(needed(members, "radius", where), memberOf(where, "radius"));
    const start =
        members["start"] === undefined
            ? pointOnCircle(centre, normal, radius)
            : pointFrom(members["start"], model, memberOf(where, "start"));
    const end =
        members["end"] === undefined
            ? start
            : pointFrom(members["end"], model, memberOf(where, "end"));
    refuseOthers(members, arcMembers, where);
    return { kind: shapes.arc, numbers: [...centre, ...normal, radius, ...start, ...end] };
}

/** The type of an edge that does not name it: the one that is asked for, or that has its members. */
function typeOf(members: Members, allowed: number): string | undefined {
    switch (allowed & (shapes.line | shapes.arc)) {
        case shapes.line:
            return "line";
        case shapes.arc:
            return "arc";
        default:
            if (members["centre"] !== undefined) {
                return "arc";
            }
            return members["start"] !== undefined ? "line" : undefined;
    }
}

/** @param allowed the shapes that fit, of which the type follows; 0 where it must be named */
export function edgeFrom(members: Members, allowed: number, model: Model, where: Where): Shape {
    const inferred =
        members["type"] === undefined && allowed !== 0 ? typeOf(members, allowed) : undefined;
    const type = inferred ?? textFrom(needed(members, "type", where), memberOf(where, "type"));
    switch (type) {
        case "line":
            return lineFrom(members, model, where);
        case "arc":
            return arcFrom(members, model, where);
        default:
            return fail(memberOf(where, "type"), 'expected "line" or "arc"');
    }
}

/** An edge by its id or on the spot, or a point, where one of these may stand. */
export function shapeFrom(value: unknown, allowed: number, model: Model, where: Where): Shape {
    const named = typeof value === "string" ? model.edges.get(value) : undefined;
    if ((allowed & shapes.point) !== 0 && named === undefined && !isObject(value)) {
        return { kind: shapes.point, numbers: pointFrom(value, model, where) };
    }
    if (typeof value === "string" && named === undefined) {
        return fail(where, `there is no edge ${echoed(value)}`);
    }
    if (named === undefined && !isObject(value)) {
        return fail(where, "expected the id of an edge or an edge");
    }
    const shape = named ?? edgeFrom(membersFrom(value, where), allowed, model, where);
    if ((shape.kind & allowed) === 0) {
        const isLine = shape.kind === shapes.line;
        fail(where, isLine ? "expected an arc, got a line" : "expected a line, got an arc");
    }
    return shape;
}
