// The annotations of the scene as they are seen: in the model, and as a list beside it.
import { type Annotation, type Recipe, toModel } from "dorvale";
import { isMirrored, runsBackwards } from "../rules/facing.js";
import { kindOf } from "../rules/kinds.js";
import type { Plane } from "../rules/planes.js";
import { areAlike, viewsOf } from "../rules/sheets.js";
import type { Vec } from "../rules/vec.js";
import type { View } from "../rules/view.js";
import type { Built } from "./document.js";
import { element } from "./dom.js";
import { type Drawing, outlineOf, unseen } from "./drawing.js";
import { isOn, middleOf } from "./labels.js";
import { List } from "./list.js";
import { look } from "./looking.js";
import { placeIn, placementOf } from "./placement.js";
import { Signal } from "./signal.js";
import type { Workspace } from "./workspace.js";

/** From which side an annotation is seen, and whether its text would be upside down there. */
const facingOf = ({ axes }: Drawing, view: View): number =>
    (isMirrored(axes, view) ? 1 : 0) + (runsBackwards(axes.x, view) ? 2 : 0);

export class Placed {
    /** As they are built for the view. */
    drawings: readonly Drawing[] = [];
    /** Another one is lit or selected. */
    readonly pointed = new Signal();
    /** Another one is selected than before, or none. */
    readonly selectedOther = new Signal();
    private built_: readonly Built[] = [];
    /** From which side each is read, in the view that was looked at last. */
    private facings_: number[] = [];
    private seenIn_: View | undefined;
    private lit_: number | undefined;
    private selected_: number | undefined;
    private readonly list_: List;

    constructor(private readonly space_: Workspace) {
        this.list_ = new List(element("list"), element("count"), {
            hover: (index) => this.light(index),
            select: (index) => this.reveal(index),
            remove: (index) => this.remove(index),
        });
        space_.stage.drawing.listen(() => this.turn_());
        space_.beside = () => this.outline_();
    }

    /** As they are built for the view, each read now. */
    get annotations(): Annotation[] {
        return this.built_.map(({ annotation }) => annotation);
    }

    /** The one under the cursor. */
    get lit(): number | undefined {
        return this.lit_;
    }

    get selected(): number | undefined {
        return this.selected_;
    }

    /** Shows the annotations that the scene has now; none of them is lit or selected. */
    show(): void {
        this.lit_ = this.selected_ = undefined;
        this.build();
        const { recipes } = this.space_.document;
        this.list_.show(
            this.drawings.map(({ text }, i) => ({ value: text, kind: kindOf(recipes[i]!) })),
        );
        this.light(undefined);
    }

    /** Builds them for the view that there is. */
    build(): void {
        const { document: scene, stage, view, shown } = this.space_;
        this.built_ = scene.build(scene.recipes, view);
        this.drawings = this.built_.map((built, i) => this.drawing_(built, scene.recipes[i]!));
        this.facings_ = this.drawings.map((drawing) => facingOf(drawing, view));
        this.seenIn_ = view;
        stage.placed.stand(shown.current !== undefined && areAlike(shown.current.view, view));
        stage.placed.draw(this.drawings);
        this.light(this.lit_);
    }

    /** While the view turns, those that come to be read from another side are built again. */
    private turn_(): void {
        const { document: scene, stage, view } = this.space_;
        if (view === this.seenIn_) {
            return;
        }
        this.seenIn_ = view;
        const flipped = this.drawings.flatMap((drawing, i) =>
            facingOf(drawing, view) === this.facings_[i] ? [] : [i],
        );
        if (flipped.length === 0) {
            return;
        }
        const all = [...this.built_];
        const drawings = [...this.drawings];
        const recipes = flipped.map((i) => scene.recipes[i]!);
        scene.build(recipes, view).forEach((built, k) => {
            const i = flipped[k]!;
            all[i] = built;
            drawings[i] = this.drawing_(built, recipes[k]!);
            this.facings_[i] = facingOf(drawings[i], view);
        });
        this.built_ = all;
        this.drawings = drawings;
        stage.placed.draw(drawings);
        this.light(this.lit_);
    }

    private drawing_({ drawing }: Built, recipe: Recipe): Drawing {
        return this.space_.shown.has(recipe) ? drawing : unseen(drawing);
    }

    /** Leaves one out, which is drawn elsewhere. */
    hide(index: number): void {
        const { stage } = this.space_;
        stage.placed.draw(this.drawings.filter((_, i) => i !== index));
        stage.lit.clear();
    }

    /** The one whose text lies under a pixel, the last one drawn first. */
    at(x: number, y: number): number | undefined {
        const { frame } = this.space_;
        const index = this.drawings.findLastIndex(({ labels }) =>
            labels.some((label) => isOn(label, x, y, frame)),
        );
        return index < 0 ? undefined : index;
    }

    /** Whether the part leaves the text of one to be seen. */
    isSeen(index: number): boolean {
        const { document: scene, frame } = this.space_;
        return this.drawings[index]!.labels.some(({ center }) => scene.part.sees(center, frame));
    }

    /** Lights one in the model and in the list. */
    light(index: number | undefined): void {
        this.lit_ = index;
        const { stage } = this.space_;
        const lit = [index, this.selected_].flatMap((i) => {
            const drawing = i === undefined ? undefined : this.drawings[i];
            return drawing === undefined ? [] : [drawing];
        });
        stage.lit.draw(lit);
        this.list_.light(index, this.selected_);
        this.pointed.emit();
    }

    /** Lights the one under the cursor, and has the list show it. */
    point(index: number | undefined): void {
        if (index !== this.lit_) {
            this.light(index);
            this.reveal_(index);
        }
    }

    select(index: number | undefined): void {
        this.selected_ = index;
        this.light(this.lit_);
        this.selectedOther.emit();
        this.reveal_(index);
    }

    /** Selects one, and turns to its view where another one's annotations are shown. */
    reveal(index: number): void {
        const { space_: space } = this;
        const recipe = space.document.recipes[index]!;
        const [name] = viewsOf(recipe) ?? [];
        if (name !== undefined && !space.shown.isHere(recipe)) {
            look(space, space.document.viewNamed(name));
        }
        this.select(index);
    }

    remove(index = this.selected_): void {
        if (index !== undefined) {
            this.space_.change(this.space_.document.recipes.filter((_, i) => i !== index));
        }
    }

    /** The pixel in the middle of one's text; undefined where it shows none. */
    pixelOf(index: number): readonly [number, number] | undefined {
        const label = this.drawings[index]?.labels[0];
        return label && middleOf(label, this.space_.frame);
    }

    /** Where one stands now, in the model; undefined for one that cannot be moved. */
    placeOf(index: number): Vec | undefined {
        const placement = placementOf(this.space_.document.recipes[index]!);
        const { annotation } = this.built_[index]!;
        if (placement === undefined) {
            return undefined;
        }
        const place = placement.member === "locate" ? placeIn(annotation) : undefined;
        return place ?? toModel(annotation).texts[0]?.location;
    }

    /** The plane that one is moved in: its own, or the screen's for an upright note. */
    planeOf(index: number, origin: Vec): Plane {
        const isNote = placementOf(this.space_.document.recipes[index]!)?.member === "text";
        const m = this.built_[index]!.annotation.plane;
        return { origin, normal: isNote ? this.space_.view.to : [m[8]!, m[9]!, m[10]!] };
    }

    /** The ends of lines, and the middles of texts with some room around them. */
    private *outline_(): Iterable<Vec> {
        for (const drawing of this.drawings) {
            yield* outlineOf(drawing, this.space_.view);
        }
    }

    private reveal_(index: number | undefined): void {
        if (index !== undefined) {
            this.list_.reveal(index);
        }
    }
}
