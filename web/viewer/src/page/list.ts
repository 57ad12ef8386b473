/** What the list says of an annotation. */
export interface Row {
    readonly value: string;
    readonly kind: string;
}

export interface ListEvents {
    readonly hover: (index: number | undefined) => void;
    readonly select: (index: number) => void;
    readonly remove: (index: number) => void;
}

/** The list of the annotations with their values. */
export class List {
    constructor(
        private readonly root_: HTMLElement,
        private readonly count_: HTMLElement,
        events: ListEvents,
    ) {
        const indexOf = (event: Event): number | undefined => {
            const row = (event.target as Element).closest("li");
            return row === null ? undefined : Number(row.dataset["index"]);
        };
        root_.addEventListener("pointerover", (event) => events.hover(indexOf(event)));
        root_.addEventListener("pointerleave", () => events.hover(undefined));
        root_.addEventListener("click", (event) => {
            const index = indexOf(event);
            const removes = (event.target as Element).closest("button") !== null;
            if (index !== undefined) {
                (removes ? events.remove : events.select)(index);
            }
        });
    }

    show(rows: readonly Row[]): void {
        this.count_.textContent = `(${rows.length})`;
        const template = document.createElement("template");
        template.innerHTML = '<li><b></b><small></small><button title="Delete">✕</button></li>';
        const row = template.content.firstElementChild!;
        const items = rows.map(({ value, kind }, i) => {
            const item = row.cloneNode(true) as HTMLElement;
            item.dataset["index"] = String(i);
            item.children[0]!.textContent = value;
            item.children[1]!.textContent = kind;
            return item;
        });
        this.root_.replaceChildren(...items);
    }

    light(lit: number | undefined, selected: number | undefined): void {
        this.root_.querySelectorAll(".lit, .selected").forEach((item) => item.removeAttribute("class"));
        this.root_.children[lit ?? -1]?.classList.add("lit");
        this.root_.children[selected ?? -1]?.classList.add("selected");
    }

    reveal(index: number): void {
        this.root_.children[index]?.scrollIntoView({ block: "nearest" });
    }
}
