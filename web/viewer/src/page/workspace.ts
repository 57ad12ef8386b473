// The scene that is open, and what everything that works on it shares.
import type { Dorvale, Recipe } from "dorvale";
import type { Plane } from "../rules/planes.js";
import { placeOn } from "../rules/place.js";
import type { Vec } from "../rules/vec.js";
import { fitted, type Frame, fromScreen, type View } from "../rules/view.js";
import { exactly, type Spoken } from "../rules/words.js";
import { Document } from "./document.js";
import { type Drawing, outlineOf } from "./drawing.js";
import { Shown } from "./shown.js";
import { Signal } from "./signal.js";
import type { Stage } from "./stage.js";

function isSameButForSize(a: Frame, b: Frame): boolean {
    return a.view === b.view && a.target === b.target && a.unitsPerPixel === b.unitsPerPixel;
}

export class Workspace {
    /** Another scene is about to be opened. */
    readonly opening = new Signal();
    /** Another scene has been opened. */
    readonly opened = new Signal();
    /** The annotations are other ones than before. */
    readonly changed = new Signal();
    /** Which annotations are shown. */
    readonly shown = new Shown();
    /** The scene has been saved as it is now. */
    readonly saved = new Signal();
    /** The mouse, in pixels of the canvas. */
    mouse: readonly [number, number] = [0, 0];
    /** How new annotations are written. */
    dress: (recipe: Recipe) => Recipe = (recipe) => recipe;
    /** How values are said. */
    spoken: Spoken = exactly;
    /** Points that a fitted picture shows beside the part. */
    beside: () => Iterable<Vec> = () => [];
    /** The height at the top of the picture that a fitted part leaves to what lies there, in pixels. */
    strip: () => number = () => 0;
    private document_: Document;
    /** The picture that shows all, until it is moved. */
    private fitted_: Frame | undefined;

    /** A text and a name: the scene that is open first. `opened` does not tell of it. */
    constructor(
        readonly library: Dorvale,
        readonly stage: Stage,
        private text_: string,
        private name_: string,
    ) {
        this.document_ = new Document(text_, library, stage.glyphs);
        this.show_();
        stage.resized.listen(() => {
            if (this.fitted_ !== undefined && isSameButForSize(this.fitted_, this.frame)) {
                this.fit();
            }
        });
    }

    get document(): Document {
        return this.document_;
    }

    /** The scene's text as it was opened. */
    get text(): string {
        return this.text_;
    }

    /** The name of its file or sample. */
    get name(): string {
        return this.name_;
    }

    get frame(): Frame {
        return this.stage.camera.frame;
    }

    get view(): View {
        return this.stage.camera.view;
    }

    /**
     * Opens a scene.
     *
     * @throws Error with one line that says where and what; the scene that was open stays
     */
    open(text: string, name: string): void {
        const next = new Document(text, this.library, this.stage.glyphs);
        this.opening.emit();
        [this.text_, this.name_] = [text, name];
        this.document_.part.dispose();
        this.document_ = next;
        this.show_();
        this.opened.emit();
    }

    /** Shows the part whole, with its annotations. */
    fit(): void {
        this.lookAt_(this.beside());
        this.stage.settle();
    }

    change(recipes: readonly Recipe[]): void {
        this.document_.change(recipes);
        this.changed.emit();
    }

    undo(): void {
        this.document_.undo();
        this.changed.emit();
    }

    redo(): void {
        this.document_.redo();
        this.changed.emit();
    }

    /** An annotation as it is drawn in the view. */
    drawing(recipe: Recipe): Drawing {
        const [built] = this.document_.build([recipe], this.view);
        return built!.drawing;
    }

    /** Where the line of sight through the mouse meets a plane; undefined for one seen edge-on. */
    onPlane(plane: Plane): Vec | undefined {
        return placeOn(plane, fromScreen(...this.mouse, this.frame), this.view.to);
    }

    private show_(): void {
        const { part, view } = this.document_;
        const { camera } = this.stage;
        this.stage.show(part);
        this.shown.open(this.document_);
        camera.look({ view });
        this.fit_();
        this.stage.still();
    }

    /** A view whose annotations are shown alone is shown with them. */
    private fit_(): void {
        const { recipes } = this.document_;
        const { current } = this.shown;
        const drawn = current === undefined ? [] : recipes.filter((recipe) => this.shown.has(recipe));
        this.lookAt_(drawn.flatMap((recipe) => outlineOf(this.drawing(recipe), this.view)));
    }

    /** Shows the part whole, with what stands beside it. */
    private lookAt_(beside: Iterable<Vec>): void {
        this.stage.camera.look(fitted(this.frame, this.document_.part.outline(), beside, this.strip()));
        this.fitted_ = this.frame;
    }
}
