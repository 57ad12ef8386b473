// Which annotations are shown: those of one view or of all, but for those that are left out.
import type { Recipe } from "dorvale";
import { areAlike, type Sheet, sheetsOf, viewsOf } from "../rules/sheets.js";
import type { View } from "../rules/view.js";
import type { Document } from "./document.js";
import { Signal } from "./signal.js";

export const nameOf = (recipe: Recipe): string | undefined =>
    (recipe as unknown as { name?: string }).name;

export class Shown {
    /** Other ones are shown than before. */
    readonly changed = new Signal();
    /** The views that annotations belong to; none in most scenes. */
    sheets: readonly Sheet[] = [];
    private current_: Sheet | undefined;
    private readonly hidden_ = new Set<string>();
    private wanted_: ReadonlySet<string> | undefined;

    /** The view whose annotations are shown alone. */
    get current(): Sheet | undefined {
        return this.current_;
    }

    /** Begins with the annotations of the view that a scene is looked at in; does not tell of it. */
    open(scene: Document): void {
        this.sheets = sheetsOf(scene.recipes, (name) => scene.viewNamed(name));
        this.hidden_.clear();
        this.wanted_ = undefined;
        this.current_ = this.sheets.find(({ view }) => areAlike(view, scene.view));
    }

    has(recipe: Recipe): boolean {
        const name = nameOf(recipe);
        const isWanted = name === undefined || (this.wanted_?.has(name) ?? true);
        return this.isHere(recipe) && isWanted && !this.isHidden(name);
    }

    /** Whether it belongs to the view whose annotations are shown. */
    isHere(recipe: Recipe): boolean {
        return this.current_ === undefined || (viewsOf(recipe)?.includes(this.current_.name) ?? true);
    }

    /** The annotations of a view alone; where none belong to it, the same ones as before. */
    lookedFrom(view: View): void {
        const sheet = this.sheets.find((one) => areAlike(one.view, view));
        if (sheet !== undefined && sheet !== this.current_) {
            this.current_ = sheet;
            this.changed.emit();
        }
    }

    all(): void {
        this.current_ = undefined;
        this.changed.emit();
    }

    isHidden(name: string | undefined): boolean {
        return name !== undefined && this.hidden_.has(name);
    }

    hide(name: string, isHidden: boolean): void {
        if (isHidden) {
            this.hidden_.add(name);
        } else {
            this.hidden_.delete(name);
        }
        this.changed.emit();
    }

    /** Of those that have a name, only these; all where it is undefined. */
    only(names: ReadonlySet<string> | undefined): void {
        this.wanted_ = names;
        this.changed.emit();
    }
}
