// Scenes: what recipes may refer to by name. docs/scene.md describes the format.
import { edgeFrom, type Model, noModel, type Shape } from "./edges.js";
import { RecipeError } from "./errors.js";
import { type FinishOptions, finishFrom } from "./finish.js";
import {
    booleanFrom,
    echoed,
    fail,
    itemOf,
    listFrom,
    type Members,
    memberOf,
    membersFrom,
    needed,
    refuseOthers,
    textFrom,
    type Triple,
    vectorFrom,
    viewFrom,
} from "./values.js";

const top = "top";
const here = () => "";
const path = (name: string) => () => name;
const known = new Set([
    "title",
    "kind",
    "licence",
    "view",
    "lines",
    "finish",
    "points",
    "edges",
    "annotations",
]);
const mostAnnotations = 1000000;

/** A scene that has been read. It keeps what it was made from. */
export class Scene implements Model {
    /** 16 numbers. */
    readonly view: ArrayLike<number>;
    /** Points by their names, in model coordinates. */
    readonly points: ReadonlyMap<string, Triple>;
    /** Edges by their ids. */
    readonly edges: ReadonlyMap<string, Shape>;
    /** What its annotations inherit. */
    readonly finish: FinishOptions | undefined;
    /** Its recipes, as they were written. */
    readonly annotations: ArrayLike<unknown>;

    /**
     * @param data a scene's text, or what `JSON.parse` makes of it; `annotations` may be missing
     * @throws RecipeError where something but the annotations is wrong; they are read as they are
     * built
     */
    constructor(data: unknown) {
        const members = membersFrom(typeof data === "string" ? parse(data) : data, here);
        for (const name of ["title", "kind", "licence"]) {
            if (members[name] !== undefined) {
                textFrom(members[name], path(name));
            }
        }
        this.view = viewFrom(members["view"] ?? top, path("view"));
        const lines = members["lines"];
        if (lines !== undefined && textFrom(lines, path("lines")) !== "iso") {
            fail(path("lines"), 'expected "iso"');
        }
        this.finish = finishFrom(members["finish"], undefined, path("finish"));
        this.points = pointsFrom(members["points"]);
        this.edges = edgesFrom(members["edges"], this.points);
        this.annotations = listFrom(members["annotations"] ?? [], path("annotations"));
        if (this.annotations.length > mostAnnotations) {
            fail(
                path("annotations"),
                `expected at most ${mostAnnotations}, got ${this.annotations.length}`,
            );
        }
        refuseOthers(members, known, here);
    }
}

function parse(text: string): unknown {
    try {
        return JSON.parse(text);
    } catch (error) {
        throw new RecipeError("", `not JSON: ${(error as Error).message}`);
    }
}

function pointsFrom(value: unknown): ReadonlyMap<string, Triple> {
    if (value === undefined) {
        return noModel.points;
    }
    const at = path("points");
    const members = membersFrom(value, at);
    return new Map(
        Object.keys(members).map((name) => [name, vectorFrom(members[name], memberOf(at, name))]),
    );
}

function edgesFrom(value: unknown, points: ReadonlyMap<string, Triple>): Map<string, Shape> {
    const edges = new Map<string, Shape>();
    if (value === undefined) {
        return edges;
    }
    const at = path("edges");
    const list = listFrom(value, at);
    for (let i = 0; i < list.length; ++i) {
        const where = itemOf(at, i);
        const { id, hidden, ...edge }: Members = membersFrom(list[i], where);
        const name = id === undefined ? "" : textFrom(id, memberOf(where, "id"));
        if (hidden !== undefined) {
            booleanFrom(hidden, memberOf(where, "hidden"));
        }
        needed(edge, "type", where);
        const shape = edgeFrom(edge, 0, { points, edges: noModel.edges }, where);
        if (name !== "") {
            if (edges.has(name)) {
                fail(where, `another edge has the id ${echoed(name)}`);
            }
            edges.set(name, shape);
        }
    }
    return edges;
}
