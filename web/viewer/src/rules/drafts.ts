// Unsaved work, kept where it survives the page: the scene as it was opened, and the annotations
// that it has now.

/** What browsers keep texts in. */
export type Shelf = Pick<Storage, "getItem" | "setItem" | "removeItem">;

export interface Draft {
    /** The scene's text as it was opened. */
    readonly scene: string;
    readonly annotations: readonly unknown[];
}

export class Drafts {
    /**
     * @param shelf undefined where the browser has none
     * @param page whose drafts these are: pages on a disk share one shelf
     */
    constructor(
        private readonly shelf_: Shelf | undefined,
        private readonly page_: string,
    ) {}

    /** The scene that was worked on last, if there is a draft of it. */
    get last(): string | undefined {
        return this.shelf_?.getItem(this.key_("last")) ?? undefined;
    }

    of(name: string): Draft | undefined {
        const scene = this.shelf_?.getItem(this.key_("scene", name));
        const written = this.shelf_?.getItem(this.key_("annotations", name));
        if (typeof scene !== "string" || typeof written !== "string") {
            return undefined;
        }
        try {
            const annotations = JSON.parse(written) as unknown;
            return Array.isArray(annotations) ? { scene, annotations } : undefined;
        } catch {
            return undefined;
        }
    }

    /** Whether there was room for it; where there was not, no draft of the scene is left. */
    keep(name: string, { scene, annotations }: Draft): boolean {
        if (this.shelf_ === undefined) {
            return true;
        }
        try {
            if (this.shelf_.getItem(this.key_("scene", name)) !== scene) {
                this.shelf_.setItem(this.key_("scene", name), scene);
            }
            this.shelf_.setItem(this.key_("annotations", name), JSON.stringify(annotations));
            this.shelf_.setItem(this.key_("last"), name);
            return true;
        } catch {
            this.drop(name);
            return false;
        }
    }

    drop(name: string): void {
        this.shelf_?.removeItem(this.key_("scene", name));
        this.shelf_?.removeItem(this.key_("annotations", name));
        if (this.last === name) {
            this.shelf_?.removeItem(this.key_("last"));
        }
    }

    private key_(what: string, name = ""): string {
        return ["dorvale", this.page_, what, name].join("\n");
    }
}
