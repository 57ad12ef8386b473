/** The kinds and planes that fit, as a row of buttons. */
export class Palette {
    private shown_ = "";

    constructor(
        private readonly root_: HTMLElement,
        private readonly choose_: (index: number) => void,
    ) {}

    show(names: readonly string[], current: number): void {
        const key = JSON.stringify([names, current]);
        if (this.shown_ === key) {
            return;
        }
        this.shown_ = key;
        this.root_.hidden = names.length === 0;
        this.root_.replaceChildren(
            ...names.map((name, i) => {
                const button = document.createElement("button");
                button.textContent = name;
                button.setAttribute("role", "option");
                button.setAttribute("aria-selected", String(i === current));
                button.addEventListener("click", () => this.choose_(i));
                return button;
            }),
        );
    }
}
