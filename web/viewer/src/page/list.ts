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

/** So many rows are made at once; the eye sees no more of them, and the others have time. */
const atOnce = 100;

/** The list of the annotations with their values. */
export class List {
    private rows_: readonly Row[] = [];
    private readonly items_: HTMLElement[] = [];
    private marked_: readonly HTMLElement[] = [];
    private selected_: number | undefined;
    private waiting_: ReturnType<typeof setTimeout> | undefined;

    constructor(
        private readonly root_: HTMLElement,
        private readonly count_: HTMLElement,
        events: ListEvents,
    ) {
        const indexOf = (event: Event): number | undefined => {
            const row = (event.target as Element).closest("li");
            return row === null ? undefined : Number(row.dataset["index"]);
        };
        root_.addEventListener("keydown", (event) => {
            const last = this.rows_.length - 1;
            const at = this.selected_;
            const to = new Map([
                ["ArrowDown", at === undefined ? 0 : Math.min(last, at + 1)],
                ["ArrowUp", at === undefined ? last : Math.max(0, at - 1)],
                ["Home", 0],
                ["End", last],
            ]).get(event.key);
            if (to !== undefined && last >= 0) {
                event.preventDefault();
                events.select(to);
            }
        });
        root_.addEventListener("pointerover", (event) => events.hover(indexOf(event)));
        root_.addEventListener("pointerleave", () => events.hover(undefined));
        root_.addEventListener("click", (event) => {
            const index = indexOf(event);
            const removes = (event.target as Element).closest("i") !== null;
            if (index !== undefined) {
                (removes ? events.remove : events.select)(index);
            }
        });
    }

    show(rows: readonly Row[]): void {
        this.rows_ = rows;
        this.count_.textContent = `(${rows.length})`;
        this.items_.splice(rows.length).forEach((item) => item.remove());
        this.items_.forEach((item, i) => write(item, rows[i]!));
        this.make_(atOnce);
        this.goOn_();
    }

    light(lit: number | undefined, selected: number | undefined): void {
        this.marked_.forEach((item) => item.classList.remove("lit", "selected"));
        const mark = (index: number | undefined, name: string) => {
            const item = index === undefined ? undefined : this.items_[index];
            item?.classList.add(name);
            return item === undefined ? [] : [item];
        };
        this.marked_.forEach((item) => item.removeAttribute("aria-selected"));
        this.marked_ = [...mark(lit, "lit"), ...mark(selected, "selected")];
        this.selected_ = selected;
        const row = selected === undefined ? undefined : this.items_[selected];
        row?.setAttribute("aria-selected", "true");
        this.root_.setAttribute("aria-activedescendant", row?.id ?? "");
    }

    /** Scrolls to a row, which is then there in any case. */
    reveal(index: number): void {
        this.make_(index + atOnce);
        this.items_[index]?.scrollIntoView({ block: "nearest" });
    }

    /** Makes rows until there are so many. */
    private make_(count: number): void {
        const made = this.rows_.slice(this.items_.length, count).map((row, i) => {
            const item = template().cloneNode(true) as HTMLElement;
            item.dataset["index"] = String(this.items_.length + i);
            item.id = `annotation-${this.items_.length + i}`;
            write(item, row);
            return item;
        });
        this.items_.push(...made);
        this.root_.append(...made);
    }

    private goOn_(): void {
        clearTimeout(this.waiting_);
        if (this.items_.length < this.rows_.length) {
            this.waiting_ = setTimeout(() => {
                this.make_(this.items_.length + atOnce);
                this.goOn_();
            }, 30);
        }
    }
}

/** What a row says, in text nodes that stay. */
function write(item: HTMLElement, { value, kind }: Row): void {
    const first = item.firstChild!;
    say(first.firstChild as Text, value);
    say(first.nextSibling!.firstChild as Text, kind);
}

function say(node: Text, text: string): void {
    if (node.data !== text) {
        node.data = text;
    }
}

let made: Element | undefined;

/** An empty row. */
function template(): Element {
    if (made === undefined) {
        const holder = document.createElement("template");
        holder.innerHTML = '<li role="option"><b> </b><small> </small><i title="Delete" aria-hidden="true">✕</i></li>';
        made = holder.content.firstElementChild!;
    }
    return made;
}
