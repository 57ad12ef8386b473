// A placed annotation that is held by the mouse.
import type { Recipe } from "dorvale";
import type { Plane } from "../rules/planes.js";
import { add, sub, type Vec } from "../rules/vec.js";
import { placementOf, replaced } from "./placement.js";
import type { Placed } from "./placed.js";
import type { Workspace } from "./workspace.js";

interface Held {
    readonly index: number;
    readonly plane: Plane;
    /** From the point that was grabbed to the place. */
    readonly offset: Vec;
}

export class Dragging {
    private held_: Held | undefined;

    constructor(
        private readonly space_: Workspace,
        private readonly placed_: Placed,
    ) {}

    get isActive(): boolean {
        return this.held_ !== undefined;
    }

    /** Takes an annotation under the mouse; false where it cannot be moved. */
    grab(index: number): boolean {
        const place = this.placed_.placeOf(index);
        const plane = place && this.placed_.planeOf(index, place);
        const grabbed = plane && this.space_.onPlane(plane);
        if (place === undefined || plane === undefined || grabbed === undefined) {
            return false;
        }
        this.held_ = { index, plane, offset: sub(place, grabbed) };
        return true;
    }

    /** Draws it where the mouse is, and says what it reads. */
    follow(): string | undefined {
        const recipe = this.moved_();
        if (recipe === undefined) {
            return undefined;
        }
        const { stage } = this.space_;
        const drawing = this.space_.drawing(recipe);
        this.placed_.hide(this.held_!.index);
        stage.following.draw([drawing]);
        return `${drawing.text} · release: leave it here · Esc: leave it where it was`;
    }

    /** Leaves it where the mouse is. */
    release(): void {
        const held = this.held_;
        const moved = this.moved_();
        this.held_ = undefined;
        this.space_.stage.following.clear();
        if (held !== undefined && moved !== undefined) {
            this.space_.change(this.space_.document.recipes.with(held.index, moved));
        }
        this.placed_.select(held?.index);
    }

    /** Leaves it where it was. */
    cancel(): void {
        if (this.held_ !== undefined) {
            this.held_ = undefined;
            this.space_.stage.following.clear();
            this.placed_.build();
        }
    }

    private moved_(): Recipe | undefined {
        if (this.held_ === undefined) {
            return undefined;
        }
        const { index, plane, offset } = this.held_;
        const recipe = this.space_.document.recipes[index]!;
        const at = this.space_.onPlane(plane);
        const placement = placementOf(recipe);
        return at && placement && replaced(recipe, placement, add(at, offset));
    }
}
