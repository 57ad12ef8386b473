// What the mouse, the keys and the buttons do.
import { type Annotation, type Dorvale, type Recipe, toModel } from "dorvale";
import { type Candidate, fitting, noteRecipe, type Pick, types } from "../rules/fit.js";
import type { Plane } from "../rules/planes.js";
import { placeOn } from "../rules/place.js";
import { another, chosen, clicked, idle, offered, type Picking } from "../rules/session.js";
import { areSame, isPoint } from "../rules/things.js";
import { textHeight } from "../rules/textheight.js";
import { add, sub, type Vec } from "../rules/vec.js";
import { fitted, fromScreen, type StandardView, standardViews, type View } from "../rules/view.js";
import { status } from "../rules/words.js";
import { Document, placementOf, replaced } from "./document.js";
import { type Drawing, drawingOf } from "./ink.js";
import { isOn } from "./labels.js";
import { List } from "./list.js";
import type { Stage } from "./stage.js";

/** The elements of the page by their ids. */
export function element<T extends HTMLElement>(id: string): T {
    return document.getElementById(id) as T;
}

const kinds: Readonly<Record<string, string>> = {
    PMICreateNote3D: "note",
    PMICreateRadiusDim3D: "radius",
    PMICreateDiameterDim3D: "diameter",
    PMICreateAngleDim: "angle",
    PMICreateAngleDim3D: "angle",
    PMICreateParallelDim3D: "length",
    PMICreateArcDim3D: "arc length",
    PMICreateClipArcDim3D: "arc length",
};

function kindOf(recipe: Recipe): string {
    const { calls, call, type } = recipe as unknown as {
        calls?: { call: string }[];
        call?: string;
        type?: number;
    };
    if (type === types.length || type === types.diameter) {
        return type === types.length ? "length" : "diameter";
    }
    return kinds[calls?.[0]?.call ?? call ?? ""] ?? "distance";
}

/** A placed annotation as it is held by the mouse. */
interface Held {
    readonly index: number;
    readonly plane: Plane;
    /** From the point that was grabbed to the place. */
    readonly offset: Vec;
    readonly recipes: readonly Recipe[];
}

export class App {
    document: Document;
    /** The annotations as they are built for the view. */
    annotations: Annotation[] = [];
    private drawings_: Drawing[] = [];
    private picking_: Picking = idle;
    private hovered_: Pick | undefined;
    private under_: number | undefined;
    private selected_: number | undefined;
    private held_: Held | undefined;
    /** The mouse, in pixels of the canvas. */
    private mouse_: readonly [number, number] = [0, 0];
    private editing_: { target: Vec; place: Vec; height: number } | undefined;
    private readonly list_: List;
    private readonly palette_ = element("palette");
    private readonly text_ = element<HTMLTextAreaElement>("text");
    private readonly status_ = element("status");

    constructor(
        readonly library: Dorvale,
        readonly stage: Stage,
        text: string,
    ) {
        this.document = new Document(text, library);
        this.list_ = new List(element("list"), element("count"), {
            hover: (index) => this.light_(index),
            select: (index) => this.select(index),
            remove: (index) => this.remove(index),
        });
        this.text_.addEventListener("keydown", (event) => this.noteKey_(event));
        this.text_.addEventListener("blur", () => this.writeNote_());
        this.open_();
    }

    /** Opens a scene. The one that was open stays where something is wrong with the new one. */
    open(text: string, name: string): boolean {
        try {
            const next = new Document(text, this.library);
            this.document.part.dispose();
            this.document = next;
        } catch (problem) {
            this.fail(`${name}: ${(problem as Error).message}`);
            return false;
        }
        element("error").hidden = true;
        this.open_();
        return true;
    }

    /** Says what is wrong, in one line. */
    fail(message: string): void {
        const error = element("error");
        error.textContent = message.replace(/\s+/g, " ");
        error.hidden = false;
    }

    /** The dimension that follows the mouse. */
    get chosen(): Candidate | undefined {
        return chosen(this.picking_, this.stage.camera.view);
    }

    get hasChoice(): boolean {
        return this.picking_.picks.length > 0 && !this.picking_.note;
    }

    private open_(): void {
        const { part, title, view } = this.document;
        element("title").textContent = title;
        document.title = `${title} - Dorvale viewer`;
        this.picking_ = idle;
        this.selected_ = this.hovered_ = this.under_ = undefined;
        const { camera } = this.stage;
        this.stage.show(part);
        camera.look({ view });
        camera.look(fitted(camera.frame, part.outline()));
        this.rebuild();
        this.stage.still();
        this.follow_();
    }

    /** Looks at the part from a side, and shows it whole. */
    look(view: View | StandardView): void {
        const chosenView = typeof view === "string" ? standardViews[view] : view;
        this.stage.camera.look({ view: chosenView });
        this.fit();
    }

    fit(): void {
        const { camera } = this.stage;
        camera.look(fitted(camera.frame, this.document.part.outline()));
        this.stage.settle();
    }

    /** Builds all annotations for the view that there is. */
    rebuild(): void {
        const { document: scene, stage } = this;
        this.annotations = scene.build(scene.recipes, stage.camera.view);
        this.drawings_ = this.annotations.map((a) => drawingOf(a, stage.glyphs));
        stage.placed.draw(this.drawings_);
        this.list_.show(
            this.drawings_.map(({ text }, i) => ({ value: text, kind: kindOf(scene.recipes[i]!) })),
        );
        element<HTMLButtonElement>("undo").disabled = !scene.canUndo;
        element<HTMLButtonElement>("redo").disabled = !scene.canRedo;
        this.light_(this.under_);
    }

    /** The view has stopped: what depends on it is built again. */
    viewStopped(): void {
        const { document: scene, stage } = this;
        this.annotations = scene.build(scene.recipes, stage.camera.view);
        this.drawings_ = this.annotations.map((a) => drawingOf(a, stage.glyphs));
        stage.placed.draw(this.drawings_);
        this.light_(this.under_);
        this.move(...this.mouse_);
    }

    /** The mouse stands at a pixel. */
    move(x: number, y: number): void {
        this.mouse_ = [x, y];
        if (this.held_ !== undefined) {
            this.drag_(this.held_);
            return;
        }
        const { frame } = this.stage.camera;
        const snap = this.picking_.note ? undefined : this.document.part.under(x, y, frame);
        const isPicking = this.picking_.picks.length > 0;
        const under = snap === undefined && !isPicking ? this.annotationAt(x, y) : undefined;
        this.hovered_ = snap && { thing: snap.thing, at: snap.at };
        if (under !== this.under_) {
            this.light_(under);
            if (under !== undefined) {
                this.list_.reveal(under);
            }
        }
        this.follow_();
    }

    /** The annotation whose text lies under a pixel, the last one drawn first. */
    annotationAt(x: number, y: number): number | undefined {
        const { frame } = this.stage.camera;
        const index = this.drawings_.findLastIndex(({ labels }) =>
            labels.some((label) => isOn(label, x, y, frame)),
        );
        return index < 0 ? undefined : index;
    }

    click(x: number, y: number): void {
        this.move(x, y);
        const { view } = this.stage.camera;
        if (this.under_ !== undefined && this.picking_.picks.length === 0) {
            this.select(this.under_);
            return;
        }
        const result = clicked(this.picking_, this.hovered_, view);
        if (result.does === "pick") {
            this.picking_ = result.picking;
            this.selected_ = undefined;
            this.light_(undefined);
        } else if (result.does === "place") {
            this.place_();
        } else if (this.picking_.picks.length === 0) {
            this.select(undefined);
        }
        this.follow_();
    }

    /** The text under a pixel is taken by the mouse; false where there is none to take. */
    grab(x: number, y: number): boolean {
        this.move(x, y);
        const index = this.under_;
        if (index === undefined || this.hovered_ !== undefined) {
            return false;
        }
        const place = this.placeOf_(index);
        const plane = place && this.planeOf_(index, place);
        const grabbed = plane && this.onPlane_(plane);
        if (place === undefined || plane === undefined || grabbed === undefined) {
            return false;
        }
        this.held_ = { index, plane, offset: sub(place, grabbed), recipes: this.document.recipes };
        return true;
    }

    release(): void {
        const held = this.held_;
        this.held_ = undefined;
        if (held !== undefined) {
            this.stage.following.clear();
            const moved = this.heldRecipe_(held);
            if (moved !== undefined) {
                this.change_(held.recipes.with(held.index, moved));
            }
            this.select(held.index);
        }
    }

    /** Esc: what is going on is given up, one step after the other. */
    cancel(): void {
        if (this.held_ !== undefined) {
            this.held_ = undefined;
            this.rebuild();
        }
        this.picking_ = idle;
        this.select(undefined);
        this.follow_();
    }

    choose(steps: number): void {
        const fits = fitting(this.picking_.picks, this.stage.camera.view);
        this.picking_ = another(this.picking_, steps, fits.length);
        this.follow_();
    }

    /** A note is to be placed, with a leader to what was picked. */
    startNote(): void {
        const target = this.picking_.picks[0] ?? this.hovered_;
        if (target !== undefined) {
            this.picking_ = { ...idle, picks: [target], note: true };
        }
        this.follow_(target === undefined ? "Note · first click the thing it is about, then N" : undefined);
    }

    select(index: number | undefined): void {
        this.selected_ = index;
        this.light_(this.under_);
        if (index !== undefined) {
            this.list_.reveal(index);
        }
    }

    remove(index = this.selected_): void {
        if (index !== undefined) {
            this.selected_ = this.under_ = undefined;
            this.change_(this.document.recipes.filter((_, i) => i !== index));
        }
    }

    undo(): void {
        this.document.undo();
        this.selected_ = this.under_ = undefined;
        this.rebuild();
        this.stage.invalidate();
    }

    redo(): void {
        this.document.redo();
        this.selected_ = this.under_ = undefined;
        this.rebuild();
        this.stage.invalidate();
    }

    private change_(recipes: readonly Recipe[]): void {
        this.document.change(recipes);
        this.rebuild();
        this.stage.invalidate();
    }

    /** The line of sight through the mouse. */
    private seen_(): Vec {
        return fromScreen(...this.mouse_, this.stage.camera.frame);
    }

    private onPlane_(plane: Plane): Vec | undefined {
        return placeOn(plane, this.seen_(), this.stage.camera.view.to);
    }

    private height_(): number {
        const factor = Number(element<HTMLSelectElement>("size").value);
        return textHeight(this.stage.camera.frame.unitsPerPixel, factor);
    }

    /** Where an annotation stands now, in the model. */
    private placeOf_(index: number): Vec | undefined {
        const recipe = this.document.recipes[index]!;
        const placement = placementOf(recipe);
        const annotation = this.annotations[index]!;
        if (placement === undefined) {
            return undefined;
        }
        if (placement.member === "locate" && annotation.located !== null) {
            const m = annotation.plane;
            const [u, v, w] = annotation.located.point;
            return [0, 1, 2].map(
                (i) => u * m[i]! + v * m[4 + i]! + w * m[8 + i]! + m[12 + i]!,
            ) as unknown as Vec;
        }
        return toModel(annotation).texts[0]?.location;
    }

    /** The plane that an annotation is moved in: its own, or the screen's for an upright note. */
    private planeOf_(index: number, place: Vec): Plane {
        const annotation = this.annotations[index]!;
        const isNote = placementOf(this.document.recipes[index]!)?.member === "text";
        const m = annotation.plane;
        return isNote
            ? { origin: place, normal: this.stage.camera.view.to }
            : { origin: place, normal: [m[8]!, m[9]!, m[10]!] };
    }

    private heldRecipe_({ index, plane, offset, recipes }: Held): Recipe | undefined {
        const at = this.onPlane_(plane);
        const placement = placementOf(recipes[index]!);
        return at && placement && replaced(recipes[index]!, placement, add(at, offset));
    }

    private drag_(held: Held): void {
        const recipe = this.heldRecipe_(held);
        if (recipe !== undefined) {
            const [annotation] = this.document.build([recipe], this.stage.camera.view);
            const drawing = drawingOf(annotation!, this.stage.glyphs);
            this.stage.placed.draw(this.drawings_.filter((_, i) => i !== held.index));
            this.stage.lit.clear();
            this.stage.following.draw([drawing]);
            this.say_(`${drawing.text} · release: leave it here · Esc: leave it where it was`);
            this.stage.invalidate();
        }
    }

    /** The plane on which what follows the mouse is placed. */
    private followed_(): { candidate?: Candidate; plane: Plane } | undefined {
        const { picks, note } = this.picking_;
        const { view } = this.stage.camera;
        if (note) {
            const { thing, at } = picks[0]!;
            return { plane: { origin: isPoint(thing) ? thing.at : at, normal: view.to } };
        }
        const candidate = chosen(this.picking_, view);
        return candidate && { candidate, plane: candidate.plane };
    }

    private recipeAt_(place: Vec): Recipe | undefined {
        const { picks, note } = this.picking_;
        const height = this.height_();
        if (note) {
            const { thing, at } = picks[0]!;
            return noteRecipe("Note", isPoint(thing) ? thing.at : at, place, height);
        }
        return chosen(this.picking_, this.stage.camera.view)?.recipe(place, height);
    }

    private place_(): void {
        const followed = this.followed_();
        const place = followed && this.onPlane_(followed.plane);
        const recipe = place && this.recipeAt_(place);
        if (recipe === undefined) {
            return;
        }
        if (this.picking_.note) {
            this.editNote_(place!);
            return;
        }
        this.picking_ = idle;
        this.change_([...this.document.recipes, recipe]);
    }

    private editNote_(place: Vec): void {
        const { thing, at } = this.picking_.picks[0]!;
        this.editing_ = { target: isPoint(thing) ? thing.at : at, place, height: this.height_() };
        const [x, y] = this.mouse_;
        this.text_.style.left = `${Math.min(x, this.stage.camera.frame.width - 200)}px`;
        this.text_.style.top = `${y}px`;
        this.text_.value = "";
        this.text_.hidden = false;
        this.text_.focus();
    }

    private noteKey_(event: KeyboardEvent): void {
        event.stopPropagation();
        if (event.key === "Escape") {
            this.text_.value = "";
        }
        if (event.key === "Escape" || (event.key === "Enter" && !event.shiftKey)) {
            event.preventDefault();
            this.writeNote_();
        }
    }

    private writeNote_(): void {
        const note = this.editing_;
        if (note === undefined) {
            return;
        }
        this.editing_ = undefined;
        const text = this.text_.value.trim();
        this.text_.hidden = true;
        this.picking_ = idle;
        if (text !== "") {
            const recipe = noteRecipe(text, note.target, note.place, note.height);
            this.change_([...this.document.recipes, recipe]);
        }
        element("canvas").focus();
        this.follow_();
    }

    /** Shows what follows the mouse, what is under it, and what a click would do. */
    private follow_(message?: string): void {
        const { stage } = this;
        const { view } = stage.camera;
        const followed = this.editing_ === undefined ? this.followed_() : undefined;
        const place = followed && this.onPlane_(followed.plane);
        const recipe = place && this.recipeAt_(place);
        const first = this.picking_.picks[0]?.thing;
        stage.picked.show(this.picking_.picks.length > 0 ? first : undefined);
        stage.hovered.show(areSame(this.hovered_?.thing, first) ? undefined : this.hovered_?.thing);
        if (recipe === undefined) {
            stage.following.clear();
        } else {
            const [annotation] = this.document.build([recipe], view);
            stage.following.draw([drawingOf(annotation!, stage.glyphs)]);
        }
        const candidates = this.picking_.note ? [] : fitting(this.picking_.picks, view);
        this.showPalette_(candidates);
        this.say_(
            message ??
                status({
                    hovered: this.hovered_?.thing,
                    first,
                    following: followed?.candidate,
                    next: offered(this.picking_, this.hovered_, view),
                    candidates: candidates.length,
                    writesNote: this.picking_.note,
                    annotation:
                        this.under_ === undefined ? undefined : this.drawings_[this.under_]?.text,
                }),
        );
        stage.invalidate();
    }

    private showPalette_(candidates: readonly Candidate[]): void {
        const names = candidates.map(({ name }) => name);
        const current = this.picking_.choice % Math.max(1, names.length);
        const key = JSON.stringify([names, current]);
        if (this.palette_.dataset["shows"] === key) {
            return;
        }
        this.palette_.dataset["shows"] = key;
        this.palette_.hidden = names.length === 0;
        this.palette_.replaceChildren(
            ...names.map((name, i) => {
                const button = document.createElement("button");
                button.textContent = name;
                button.setAttribute("role", "option");
                button.setAttribute("aria-selected", String(i === current));
                button.addEventListener("click", () => this.choose(i - current));
                return button;
            }),
        );
    }

    private say_(text: string): void {
        if (this.status_.textContent !== text) {
            this.status_.textContent = text;
        }
    }

    /** Lights an annotation in the model and in the list. */
    private light_(index: number | undefined): void {
        this.under_ = index;
        const lit = [index, this.selected_].flatMap((i) => {
            const drawing = i === undefined ? undefined : this.drawings_[i];
            return drawing === undefined ? [] : [drawing];
        });
        this.stage.lit.draw(lit);
        this.list_.light(index, this.selected_);
        this.stage.invalidate();
    }
}
