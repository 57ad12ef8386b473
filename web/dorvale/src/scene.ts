// Scenes: what recipes may refer to by name. docs/scene.md describes the format.
import { edgeFrom, type Model, noModel, type Shape } from "./edges.js";
import { RecipeError } from "./errors.js";
import { type FinishOptions, finishFrom } from "./finish.js";
import {
    booleanFrom,
    echoed,
    fail,
    integerFrom,
    isStandardView,
    itemOf,
    listFrom,
    matrixFrom,
    type Members,
    memberOf,
    membersFrom,
    needed,
    refuseOthers,
    textFrom,
    type Triple,
    vectorFrom,
    viewFrom,
    type Views,
    type Where,
} from "./values.js";

const top = "top";
const here = () => "";
const path = (name: string) => () => name;
const known = new Set([
    "version",
    "title",
    "kind",
    "licence",
    "view",
    "views",
    "mesh",
    "lines",
    "finish",
    "points",
    "edges",
    "annotations",
]);
const newestVersion = 1;
const mostAnnotations = 1000000;

/** A scene that has been read. It keeps what it was made from. */
export class Scene implements Model {
    /** 16 numbers. */
    readonly view: ArrayLike<number>;
    /** Views by their names, 16 numbers each. */
    readonly views: Views;
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
        checkVersion(members["version"] ?? newestVersion, path("version"));
        this.views = viewsFrom(members["views"]);
        this.view = viewFrom(members["view"] ?? top, this.views, path("view"));
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

function checkVersion(value: unknown, where: Where): void {
    const version = integerFrom(value, where);
    if (version < 1) {
        fail(where, `expected at least 1, got ${version}`);
    }
    if (version > newestVersion) {
        fail(where, `this program reads scenes up to version ${newestVersion}, got ${version}`);
    }
}

function viewsFrom(value: unknown): Views {
    if (value === undefined) {
        return noModel.views;
    }
    const views = new Map<string, ArrayLike<number>>();
    const at = path("views");
    const list = listFrom(value, at);
    for (let i = 0; i < list.length; ++i) {
        const where = itemOf(at, i);
        const view = membersFrom(list[i], where);
        const atName = memberOf(where, "name");
        const name = textFrom(needed(view, "name", where), atName);
        if (isStandardView(name)) {
            fail(atName, "a standard view has this name");
        }
        const matrix = needed(view, "matrix", where);
        const numbers = matrixFrom(matrix, "expected 16 numbers", memberOf(where, "matrix"));
        refuseOthers(view, new Set(["name", "matrix"]), where);
        if (views.has(name)) {
            fail(atName, "another view has the same name");
        }
        views.set(name, numbers);
    }
    return views;
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
        const shape = edgeFrom(edge, 0, { ...noModel, points }, where);
        if (name !== "") {
            if (edges.has(name)) {
                fail(where, `another edge has the id ${echoed(name)}`);
            }
            edges.set(name, shape);
        }
    }
    return edges;
}
