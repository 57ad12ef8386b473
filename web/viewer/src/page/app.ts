// Who is told what the mouse does, and what the status line then says.
import type { Dorvale } from "dorvale";
import type { StandardView, View } from "../rules/view.js";
import { status } from "../rules/words.js";
import { Commands } from "./commands.js";
import type { Document } from "./document.js";
import { element } from "./dom.js";
import { Dragging } from "./dragging.js";
import { editingCommands } from "./editing.js";
import { look, lookingCommands, showNamedViews } from "./looking.js";
import { Measuring } from "./measuring.js";
import { Placed } from "./placed.js";
import type { Stage } from "./stage.js";
import { Workspace } from "./workspace.js";

export class App {
    readonly space: Workspace;
    readonly placed: Placed;
    readonly measuring: Measuring;
    readonly dragging: Dragging;
    readonly commands: Commands;
    private readonly status_ = element("status");

    constructor(library: Dorvale, stage: Stage, text: string, name: string) {
        this.space = new Workspace(library, stage, text, name);
        this.placed = new Placed(this.space);
        this.measuring = new Measuring(this.space);
        this.dragging = new Dragging(this.space, this.placed);
        this.commands = new Commands(element("canvas"));
        this.commands.add(...lookingCommands(this.space), ...editingCommands(this));
        showNamedViews(this.space);
        this.space.opened.listen(() => this.opened_());
        this.space.changed.listen(() => this.showAll_());
        this.space.shown.changed.listen(() => this.placed.build());
        this.measuring.changed.listen(() => this.tell());
        stage.stopped.listen(() => this.viewStopped_());
        this.opened_();
    }

    get document(): Document {
        return this.space.document;
    }

    get stage(): Stage {
        return this.space.stage;
    }

    /** Opens a scene. The one that was open stays where something is wrong with the new one. */
    open(text: string, name: string): boolean {
        try {
            this.space.open(text, name);
        } catch (problem) {
            this.fail(`${name}: ${(problem as Error).message}`);
            return false;
        }
        element("error").hidden = true;
        return true;
    }

    /** Says what is wrong, in one line. */
    fail(message: string): void {
        const error = element("error");
        error.textContent = message.replace(/\s+/g, " ");
        error.hidden = false;
    }

    look(view: View | StandardView): void {
        look(this.space, view);
    }

    /** The mouse stands at a pixel. */
    move(x: number, y: number): void {
        this.space.mouse = [x, y];
        if (this.dragging.isActive) {
            this.say_(this.dragging.follow());
            return;
        }
        const text = this.measuring.isIdle ? this.placed.at(x, y) : undefined;
        this.measuring.hover(text !== undefined && this.placed.isSeen(text));
        this.placed.point(this.measuring.hovered === undefined ? text : undefined);
        this.tell();
    }

    click(x: number, y: number): void {
        this.move(x, y);
        if (this.placed.lit !== undefined || (this.measuring.isIdle && !this.measuring.hovered)) {
            this.placed.select(this.placed.lit);
        } else {
            this.placed.select(undefined);
            this.measuring.click();
        }
        this.tell();
    }

    /** The text under a pixel is taken by the mouse; false where there is none to take. */
    grab(x: number, y: number): boolean {
        this.move(x, y);
        return this.placed.lit !== undefined && this.dragging.grab(this.placed.lit);
    }

    release(): void {
        this.dragging.release();
        this.tell();
    }

    /** Esc: what is going on is given up. */
    cancel(): void {
        this.dragging.cancel();
        this.placed.select(undefined);
        this.measuring.reset();
    }

    startNote(): void {
        if (!this.measuring.startNote()) {
            this.say_("Note · first click the thing it is about, then N");
        }
    }

    /** Shows what follows the mouse, and says what is under it and what a click would do. */
    tell(): void {
        const { placed } = this;
        const annotation = placed.lit === undefined ? undefined : placed.drawings[placed.lit]?.text;
        this.say_(status({ ...this.measuring.show(), annotation }, this.space.spoken));
        this.commands.refresh();
    }

    private opened_(): void {
        const { title } = this.document;
        element("title").textContent = title;
        document.title = `${title} - Dorvale viewer`;
        this.dragging.cancel();
        this.measuring.reset();
        this.showAll_();
        this.space.fit();
    }

    private showAll_(): void {
        this.placed.show();
        this.tell();
    }

    /** What depends on the view is built again. */
    private viewStopped_(): void {
        this.placed.build();
        this.move(...this.space.mouse);
    }

    private say_(text: string | undefined): void {
        if (text !== undefined && this.status_.textContent !== text) {
            this.status_.textContent = text;
        }
    }
}
