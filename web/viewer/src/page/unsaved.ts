// Work that is not saved survives the page, by the scene's name.
import type { Recipe } from "dorvale";
import { Drafts } from "../rules/drafts.js";
import type { App } from "./app.js";
import { hideNotice, notice } from "./notice.js";

/** How long the annotations rest before they are kept, in milliseconds. */
const rest = 250;

/** The page's own drafts; none where the browser keeps nothing. */
export function drafts(): Drafts {
    try {
        return new Drafts(localStorage, location.pathname);
    } catch {
        return new Drafts(undefined, "");
    }
}

export class Unsaved {
    /** As the scene was opened, or as it was saved. */
    private saved_: readonly Recipe[] = [];
    private hasTold_ = false;
    private timer_: ReturnType<typeof setTimeout> | undefined;
    private isWaiting_ = false;

    constructor(
        private readonly app_: App,
        private readonly drafts_: Drafts,
    ) {
        const { space } = app_;
        space.opening.listen(() => this.flush_());
        space.opened.listen(() => this.opened_());
        space.saved.listen(() => {
            this.saved_ = space.document.recipes;
            this.wait_();
        });
        space.changed.listen(() => this.wait_());
        window.addEventListener("pagehide", () => this.flush_());
    }

    /** Takes up what was left: in the scene that is open, or in the one that was open last. */
    resume(anyScene: boolean): void {
        const name = this.drafts_.last;
        const draft = anyScene && name !== undefined ? this.drafts_.of(name) : undefined;
        if (draft === undefined || !this.app_.open(draft.scene, name!)) {
            this.opened_();
        }
    }

    private opened_(): void {
        const { space } = this.app_;
        this.saved_ = space.document.recipes;
        this.hasTold_ = false;
        hideNotice();
        const draft = this.drafts_.of(space.name);
        if (draft?.scene !== space.text) {
            return;
        }
        const recipes = draft.annotations as readonly Recipe[];
        try {
            space.document.build(recipes, space.view);
        } catch {
            this.drafts_.drop(space.name);
            return;
        }
        space.change(recipes);
        notice("Unsaved work is back.", { label: "Discard it", run: () => this.discard_() });
    }

    private discard_(): void {
        const { space } = this.app_;
        this.isWaiting_ = false;
        this.drafts_.drop(space.name);
        space.open(space.text, space.name);
    }

    private wait_(): void {
        this.isWaiting_ = true;
        clearTimeout(this.timer_);
        this.timer_ = setTimeout(() => this.flush_(), rest);
    }

    private flush_(): void {
        const { name, text, document: scene } = this.app_.space;
        if (!this.isWaiting_) {
            return;
        }
        this.isWaiting_ = false;
        if (scene.recipes === this.saved_) {
            this.drafts_.drop(name);
            return;
        }
        const isKept = this.drafts_.keep(name, { scene: text, annotations: scene.recipes });
        if (!isKept && !this.hasTold_) {
            this.hasTold_ = true;
            const size = (text.length / 1e6).toFixed(1);
            notice(`This scene (${size} MB) is too large for the browser to keep unsaved work: save it.`);
        }
    }
}
