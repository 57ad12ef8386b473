// The commands of the page: one table, from which its buttons, keys and their names follow.
import { element } from "./dom.js";

export interface Command {
    /** The id of its button. */
    readonly name: string;
    /** What it does, in words: for the button's title, and for those who hear the page. */
    readonly label: string;
    /** Any of them: `F`, `Delete`, `Ctrl+Z`, `Ctrl+Shift+Z`. Ctrl is also the Mac's Command key. */
    readonly keys?: readonly string[];
    /** What is written on its button, and the id of the group that it stands in; none without. */
    readonly face?: string;
    readonly bar?: string;
    readonly run: () => void;
    /** Whether there is something to do; the key is left to the page where there is not. */
    readonly isEnabled?: () => boolean;
}

/** A key with what is held beside it, as the table writes it. */
function keyOf(event: KeyboardEvent): string {
    const isCharacter = event.key.length === 1;
    const isLetter = /^\p{L}$/u.test(event.key);
    return [
        ...(event.ctrlKey || event.metaKey ? ["Ctrl"] : []),
        ...(event.altKey ? ["Alt"] : []),
        // Other characters have it in them.
        ...(event.shiftKey && (isLetter || !isCharacter) ? ["Shift"] : []),
        isCharacter ? event.key.toUpperCase() : event.key,
    ].join("+");
}

const isTextField = (target: EventTarget | null): boolean =>
    target instanceof HTMLElement && /^(INPUT|TEXTAREA|SELECT)$/.test(target.tagName);

export class Commands {
    private readonly table_: Command[] = [];
    private readonly buttons_ = new Map<Command, HTMLButtonElement>();

    /** @param canvas has the keyboard after a click on a button */
    constructor(private readonly canvas_: HTMLElement) {
        window.addEventListener("keydown", (event) => this.key_(event));
    }

    /** All of them, in the order in which they were added. */
    get table(): readonly Command[] {
        return this.table_;
    }

    add(...commands: readonly Command[]): void {
        for (const command of commands) {
            this.table_.push(command);
            if (command.bar !== undefined) {
                const button = this.button_(command);
                element(command.bar).append(button);
                this.buttons_.set(command, button);
            }
        }
    }

    /** Enables the buttons that have something to do. */
    refresh(): void {
        for (const [{ isEnabled }, button] of this.buttons_) {
            button.disabled = isEnabled?.() === false;
        }
    }

    private button_({ name, label, keys, face, run }: Command): HTMLButtonElement {
        const button = document.createElement("button");
        const text = face ?? label;
        button.id = name;
        button.textContent = text;
        button.title = keys === undefined ? label : `${label} (${keys[0]})`;
        if (!/^\p{L}/u.test(text)) {
            button.setAttribute("aria-label", label);
        }
        button.addEventListener("click", ({ detail }) => {
            run();
            // A click of the mouse; the keyboard stays where it is.
            if (detail > 0 && document.activeElement === button) {
                this.canvas_.focus();
            }
        });
        return button;
    }

    /** Keys are left to a text field that has them, and to a sheet that lies over the page. */
    private key_(event: KeyboardEvent): void {
        if (isTextField(event.target) || document.querySelector("dialog[open]") !== null) {
            return;
        }
        const key = keyOf(event);
        const command = this.table_.find(
            ({ keys, isEnabled }) => keys?.includes(key) && isEnabled?.() !== false,
        );
        if (command !== undefined) {
            event.preventDefault();
            command.run();
        }
    }
}
