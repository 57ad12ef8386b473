/** The field in which the text of a note is written. */
export class NoteEditor {
    private written_: ((text: string) => void) | undefined;

    constructor(
        private readonly field_: HTMLTextAreaElement,
        private readonly canvas_: HTMLCanvasElement,
    ) {
        field_.addEventListener("keydown", (event) => this.key_(event));
        field_.addEventListener("blur", () => this.close_());
    }

    get isOpen(): boolean {
        return this.written_ !== undefined;
    }

    /**
     * Asks for a text at a pixel of the canvas.
     *
     * @param written is given the text, which is empty where it was given up
     */
    ask(x: number, y: number, written: (text: string) => void): void {
        const field = this.field_;
        this.written_ = written;
        field.style.left = `${Math.max(0, Math.min(x, this.canvas_.clientWidth - 200))}px`;
        field.style.top = `${Math.max(0, Math.min(y, this.canvas_.clientHeight - 30))}px`;
        field.value = "";
        field.hidden = false;
        field.focus();
    }

    private key_(event: KeyboardEvent): void {
        if (event.key === "Escape") {
            this.field_.value = "";
        }
        if (event.key === "Escape" || (event.key === "Enter" && !event.shiftKey)) {
            event.preventDefault();
            this.close_();
        }
    }

    private close_(): void {
        const written = this.written_;
        if (written !== undefined) {
            this.written_ = undefined;
            this.field_.hidden = true;
            this.canvas_.focus();
            written(this.field_.value.trim());
        }
    }
}
