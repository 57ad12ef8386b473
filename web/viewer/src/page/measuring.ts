// Picking and placing: what is under the mouse, what was picked, and the dimension that follows.
import type { Recipe } from "dorvale";
import { type Candidate, fitting, noteRecipe, type Pick } from "../rules/fit.js";
import { another, chosen, clicked, idle, offered, type Picking } from "../rules/session.js";
import { areSame, isPoint } from "../rules/things.js";
import { textHeight } from "../rules/textheight.js";
import type { Vec } from "../rules/vec.js";
import type { Situation } from "../rules/words.js";
import { element } from "./dom.js";
import { NoteEditor } from "./noteeditor.js";
import { Palette } from "./palette.js";
import { Signal } from "./signal.js";
import type { Workspace } from "./workspace.js";

const pointOf = ({ thing, at }: Pick): Vec => (isPoint(thing) ? thing.at : at);

export class Measuring {
    /** Something else is picked, chosen or written than before. */
    readonly changed = new Signal();
    private picking_: Picking = idle;
    private hovered_: Pick | undefined;
    private readonly palette_ = new Palette(element("palette"), (index) => this.choose(index));
    private readonly editor_ = new NoteEditor(element("text"), element("canvas"));

    constructor(private readonly space_: Workspace) {}

    /** Nothing is picked. */
    get isIdle(): boolean {
        return this.picking_.picks.length === 0;
    }

    get picking(): Picking {
        return this.picking_;
    }

    get hovered(): Pick | undefined {
        return this.hovered_;
    }

    /** What fits what was picked. */
    get candidates(): readonly Candidate[] {
        return this.picking_.note ? [] : fitting(this.picking_.picks, this.space_.view);
    }

    /**
     * The mouse stands elsewhere, or something else stands under it.
     *
     * @param isCovered the part is behind a text there
     */
    hover(isCovered = false): void {
        const { document: scene, frame, mouse } = this.space_;
        const isFree = !isCovered && !this.picking_.note;
        const snap = isFree ? scene.part.under(...mouse, frame) : undefined;
        this.hovered_ = snap && { thing: snap.thing, at: snap.at };
    }

    click(): void {
        const result = clicked(this.picking_, this.hovered_, this.space_.view);
        if (result.does === "pick") {
            this.picking_ = result.picking;
            this.changed.emit();
        } else if (result.does === "place") {
            this.place_();
        }
    }

    /** Takes one of the candidates, counted round and round. */
    choose(index: number): void {
        const { length } = this.candidates;
        this.picking_ = another(this.picking_, index - this.picking_.choice, length);
        this.changed.emit();
    }

    /** A note is to be placed, with a leader to what was picked; false where nothing is. */
    startNote(): boolean {
        const target = this.picking_.picks[0] ?? this.hovered_;
        if (target === undefined) {
            return false;
        }
        this.picking_ = { ...idle, picks: [target], note: true };
        this.changed.emit();
        return true;
    }

    /** Nothing is picked any more. */
    reset(): void {
        this.picking_ = idle;
        this.hover();
        this.changed.emit();
    }

    /** Shows what is lit, what is picked, what follows the mouse, and what else would fit. */
    show(): Situation {
        const { stage, view } = this.space_;
        const { picks, choice, note } = this.picking_;
        const first = picks[0]?.thing;
        const hovered = this.hovered_?.thing;
        stage.picked.show(first);
        stage.hovered.show(areSame(hovered, first) ? undefined : hovered);
        const { candidates } = this;
        const following = chosen(this.picking_, view);
        const build = this.editor_.isOpen ? undefined : this.follower_();
        stage.following.draw(build === undefined ? [] : [this.space_.drawing(build("Note"))]);
        this.palette_.show(
            candidates.map(({ name }) => name),
            choice % Math.max(1, candidates.length),
        );
        return {
            hovered,
            first,
            following: note ? undefined : following,
            next: offered(this.picking_, this.hovered_, view),
            candidates: candidates.length,
            writesNote: note,
        };
    }

    private height_(): number {
        const factor = Number(element<HTMLSelectElement>("size").value);
        return textHeight(this.space_.frame.unitsPerPixel, factor);
    }

    /** How what follows the mouse is built where it is now, a note with its text. */
    private follower_(): ((text: string) => Recipe) | undefined {
        const { picks, note } = this.picking_;
        const { view } = this.space_;
        const target = picks[0] && pointOf(picks[0]);
        const candidate = chosen(this.picking_, view);
        // A note stands in the plane through its target that faces the reader.
        const plane = note ? { origin: target!, normal: view.to } : candidate?.plane;
        const place = plane && this.space_.onPlane(plane);
        if (place === undefined) {
            return undefined;
        }
        const height = this.height_();
        return (text) =>
            this.space_.dress(
                note ? noteRecipe(text, target!, place, height) : candidate!.recipe(place, height),
            );
    }

    private place_(): void {
        const build = this.follower_();
        if (build === undefined) {
            return;
        }
        if (!this.picking_.note) {
            this.finish_(build(""));
            return;
        }
        this.editor_.ask(...this.space_.mouse, (text) => {
            this.finish_(text === "" ? undefined : build(text));
        });
        this.changed.emit();
    }

    private finish_(recipe: Recipe | undefined): void {
        this.reset();
        if (recipe !== undefined) {
            this.space_.change([...this.space_.document.recipes, recipe]);
        }
    }
}
