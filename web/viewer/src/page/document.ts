// The scene that is open: its part, its annotations, and what was done to them.
import type { Annotation, Annotations, Dorvale, Recipe } from "dorvale";
import { Scene } from "dorvale";
import { wholeCircles } from "../rules/circles.js";
import { areAlike, sheetsOf } from "../rules/sheets.js";
import type { Edge } from "../rules/things.js";
import { begun, changed, type History, redone, undone } from "../rules/undo.js";
import type { Vec } from "../rules/vec.js";
import { matrixOf, standardViews, type View, viewOfMatrix } from "../rules/view.js";
import { type Drawing, drawingsOf, endsOf } from "./drawing.js";
import type { Glyphs } from "./glyphs.js";
import { meshGeometry, type SceneMesh } from "./mesh.js";
import { Part } from "./part.js";
import { settled } from "./placement.js";

type Members = Record<string, unknown>;

/** The format of scenes that is read and written. */
const version = 1;
/** What the package does not read. */
const viewersOwn = ["version", "mesh", "view", "annotations"];

export interface NamedView {
    readonly name: string;
    readonly view: View;
}

const isObject = (value: unknown): boolean => typeof value === "object" && value !== null;

/** An annotation as it is seen in a view. */
export class Built {
    /** @param annotations_ those that were built with it */
    constructor(
        readonly drawing: Drawing,
        private readonly annotations_: Annotations,
        private readonly index_: number,
    ) {}

    /** It is read each time that it is asked for. */
    get annotation(): Annotation {
        return this.annotations_.at(this.index_);
    }
}

/** Annotations are turned readable here, whatever is said. What is no finish is left for its reader. */
const withReadable = (finish: unknown): unknown =>
    isObject(finish) && !Array.isArray(finish)
        ? { ...(finish as Members), readable: true }
        : (finish ?? { readable: true });

const finishOf = (recipe: Recipe) => (recipe as unknown as Members | null)?.["finish"];

/** The annotation as it is built here: what it inherits, it has from the scene. */
function shown(recipe: Recipe): Recipe {
    const own = finishOf(recipe) as Members | null | undefined;
    if (own === null) {
        const { finish: _, ...others } = recipe as unknown as Members;
        return others as unknown as Recipe;
    }
    return own?.["readable"] === false
        ? ({ ...recipe, finish: withReadable(own) } as unknown as Recipe)
        : recipe;
}

function viewsOf(members: Members): NamedView[] {
    const list = (members["views"] ?? []) as unknown;
    if (!Array.isArray(list)) {
        throw new Error("views: expected a list");
    }
    return list.map((item: Members, i) => {
        const matrix = item["matrix"] as unknown;
        if (typeof item["name"] !== "string") {
            throw new Error(`views[${i}].name: expected a text`);
        }
        if (!Array.isArray(matrix) || matrix.length !== 16 || !matrix.every(Number.isFinite)) {
            throw new Error(`views[${i}].matrix: expected 16 numbers`);
        }
        return { name: item["name"], view: viewOfMatrix(matrix as number[]) };
    });
}

function viewOf(value: unknown, named: readonly NamedView[]): View {
    if (Array.isArray(value) && value.length === 16 && value.every(Number.isFinite)) {
        return viewOfMatrix(value as number[]);
    }
    const own = named.find(({ name }) => name === value);
    if (own !== undefined) {
        return own.view;
    }
    if (typeof value === "string" && Object.hasOwn(standardViews, value)) {
        return standardViews[value as keyof typeof standardViews];
    }
    throw new Error("view: expected the name of a view or 16 numbers");
}

/** What a member says that is a point, by its name or its coordinates. */
function pointOf(members: Members): (value: unknown) => Vec {
    const points = (members["points"] ?? {}) as Record<string, Vec>;
    return (value) => (typeof value === "string" ? points[value]! : (value as Vec));
}

/** The edges, which the package has found right. */
function edgesOf(members: Members): Edge[] {
    const point = pointOf(members);
    return ((members["edges"] ?? []) as Members[]).map((edge): Edge => {
        const ends =
            edge["start"] === undefined
                ? {}
                : { start: point(edge["start"]), end: point(edge["end"] ?? edge["start"]) };
        if (edge["type"] === "line") {
            return { kind: "line", ...(ends as { start: Vec; end: Vec }) };
        }
        const circle = {
            kind: "arc" as const,
            centre: point(edge["centre"]),
            normal: edge["normal"] as Vec,
            radius: edge["radius"] as number,
        };
        const isClosed =
            ends.start === undefined ||
            Math.hypot(...ends.start.map((x, i) => x - ends.end[i]!)) < 1e-6 * circle.radius;
        return isClosed ? circle : { ...circle, ...ends };
    });
}

export class Document {
    readonly part: Part;
    readonly title: string;
    /** How the scene is looked at first. */
    readonly view: View;
    readonly views: readonly NamedView[];
    private readonly members_: Members;
    private readonly scene_: Scene;
    /** The same, without its finish. */
    private readonly bare_: () => Scene;
    private history_: History<readonly Recipe[]>;
    private builtFor_: readonly number[] = [];
    private built_ = new WeakMap<Recipe, Built>();

    /**
     * @param text a scene's text
     * @throws Error or RecipeError where something is wrong with it: one line that says where and what
     */
    constructor(
        text: string,
        private readonly library_: Dorvale,
        private readonly glyphs_: Glyphs,
    ) {
        const members = parsed(text);
        const { version: written = version } = members;
        if (written !== version) {
            throw new Error(`version: expected ${version}, got ${JSON.stringify(written)}`);
        }
        const recipes = (members["annotations"] ?? []) as Recipe[];
        const read = Object.fromEntries(
            Object.entries(members).filter(([name]) => !viewersOwn.includes(name)),
        );
        this.members_ = members;
        const finished = (finish: unknown) => new Scene({ ...read, finish: withReadable(finish) });
        this.scene_ = finished(read["finish"]);
        let bare: Scene | undefined;
        this.bare_ = () => (bare ??= finished(undefined));
        if (!Array.isArray(recipes)) {
            throw new Error("annotations: expected a list");
        }
        this.title = (members["title"] as string | undefined) ?? "Untitled";
        this.views = viewsOf(members);
        this.view = viewOf(members["view"] ?? "top", this.views);
        const built = this.build(recipes, this.view);
        const edges = wholeCircles(edgesOf(members));
        // A scene without a model is as large as its annotations.
        const drawn = edges.length > 0 ? [] : built.flatMap(({ drawing }) => endsOf(drawing));
        const mesh = members["mesh"] as SceneMesh | undefined;
        this.part = new Part(edges, mesh && meshGeometry(mesh), drawn);
        const point = pointOf(members);
        this.history_ = begun(recipes.map((recipe, i) => settled(recipe, built[i]!.annotation, point)));
    }

    /** A view of the scene, or a standard one. */
    viewNamed(name: string): View {
        return viewOf(name, this.views);
    }

    get recipes(): readonly Recipe[] {
        return this.history_.present;
    }

    get canUndo(): boolean {
        return this.history_.past.length > 0;
    }

    get canRedo(): boolean {
        return this.history_.future.length > 0;
    }

    change(recipes: readonly Recipe[]): void {
        this.history_ = changed(this.history_, recipes);
    }

    undo(): void {
        this.history_ = undone(this.history_);
    }

    redo(): void {
        this.history_ = redone(this.history_);
    }

    /** Annotations as they are seen in a view; what was built for it already is the same. */
    build(recipes: readonly Recipe[], view: View): Built[] {
        const matrix = matrixOf(view);
        if (matrix.some((x, i) => x !== this.builtFor_[i])) {
            this.builtFor_ = matrix;
            this.built_ = new WeakMap();
        }
        const missing = recipes.filter((recipe) => !isObject(recipe) || !this.built_.has(recipe));
        this.add_(missing, matrix, this.scene_);
        const bare = missing.filter((recipe) => finishOf(recipe) === null);
        if (bare.length > 0) {
            this.add_(bare, matrix, this.bare_());
        }
        return recipes.map((recipe) => this.built_.get(recipe)!);
    }

    private add_(recipes: readonly Recipe[], matrix: readonly number[], scene: Scene): void {
        const readable = recipes.map((recipe) => (isObject(recipe) ? shown(recipe) : recipe));
        const annotations = this.library_.buildAll(readable, matrix, scene);
        const drawings = drawingsOf(annotations, this.library_.calls, this.glyphs_);
        recipes.forEach((recipe, i) =>
            this.built_.set(recipe, new Built(drawings[i]!, annotations, i)),
        );
    }

    /** The scene's text, with the annotations that it has now, looked at as it is now. */
    save(view: View): string {
        const sheets = sheetsOf(this.recipes, (name) => this.viewNamed(name));
        const sheet = sheets.find((one) => areAlike(one.view, view));
        const written = sheet?.name ?? matrixOf(view);
        const scene = { ...this.members_, view: written, annotations: this.recipes };
        return `${JSON.stringify(scene, undefined, 1)}\n`;
    }
}

function parsed(text: string): Members {
    let scene: unknown;
    try {
        scene = JSON.parse(text);
    } catch (error) {
        throw new Error(`not JSON: ${(error as Error).message}`);
    }
    if (typeof scene !== "object" || scene === null || Array.isArray(scene)) {
        throw new Error("expected an object");
    }
    return scene as Members;
}
