// The report on a file's dimensions, beside the part: a row for each, whatever became of it.
import type { App } from "./app.js";
import { element } from "./dom.js";
import { nameOf } from "./shown.js";

/** What `pmi-step report --json` says of a dimension, as far as it is shown. */
interface Dimension {
    readonly entity: number;
    readonly name: string;
    readonly unit: string;
    readonly text: string;
    readonly fate: "drawn" | "noted" | "refused";
    readonly reason: string;
    readonly views: readonly string[];
}

export interface Report {
    readonly dimensions: readonly Dimension[];
    readonly counts: { readonly drawn: number; readonly noted: number; readonly refused: number };
}

/** As annotations are named. */
const nameFor = ({ entity }: Dimension) => `#${entity}`;

const template = document.createElement("template");
template.innerHTML =
    '<li tabindex="0"><b></b><small></small><button class="eye"></button><p></p></li>';

function rowOf(dimension: Dimension): HTMLElement {
    const row = template.content.firstElementChild!.cloneNode(true) as HTMLElement;
    const { text, unit, fate, name, reason, views } = dimension;
    row.dataset["name"] = nameFor(dimension);
    row.dataset["fate"] = fate;
    row.title = [name, unit].filter((word) => word !== "").join(", ");
    row.children[0]!.textContent = text === "" ? name : text;
    row.children[1]!.textContent = [nameFor(dimension), fate, ...views].join(" · ");
    row.children[3]!.textContent = reason;
    (row.children[2] as HTMLElement).hidden = views.length === 0;
    return row;
}

/** Whether a text or the number of an entity has what was typed in it. */
const matches = (dimension: Dimension, typed: string): boolean =>
    `${dimension.text} ${dimension.name}`.toLowerCase().includes(typed) ||
    nameFor(dimension).includes(typed);

export class ReportPanel {
    private readonly rows_: ReadonlyMap<string, HTMLElement>;

    constructor(
        private readonly app_: App,
        private readonly report_: Report,
    ) {
        const { drawn, noted, refused } = report_.counts;
        const rows = report_.dimensions.map(rowOf);
        this.rows_ = new Map(rows.map((row) => [row.dataset["name"]!, row]));
        element("fates").textContent = `(${drawn} drawn, ${noted} noted, ${refused} refused)`;
        element("dimensions").replaceChildren(...rows);
        const panel = element("report");
        panel.hidden = false;
        this.listen_();
        const { space, placed } = app_;
        // Another part has no report.
        const { text } = space;
        space.opened.listen(() => (panel.hidden = space.text !== text));
        space.shown.changed.listen(() => this.refresh_());
        placed.pointed.listen(() => this.light_());
        this.refresh_();
    }

    private listen_(): void {
        const list = element("dimensions");
        const filter = element<HTMLInputElement>("filter");
        const rowAt = (event: Event) => (event.target as Element).closest<HTMLElement>("li");
        const light = (event: Event) => this.app_.placed.light(this.indexOf_(rowAt(event)));
        for (const kind of ["pointerover", "focusin"]) {
            list.addEventListener(kind, light);
        }
        list.addEventListener("pointerleave", () => this.app_.placed.light(undefined));
        list.addEventListener("click", (event) => {
            const row = rowAt(event);
            if ((event.target as Element).closest("button") !== null) {
                const name = row!.dataset["name"]!;
                const { shown } = this.app_.space;
                shown.hide(name, !shown.isHidden(name));
            } else {
                this.choose_(row);
            }
        });
        list.addEventListener("keydown", (event) => {
            if (event.key === "Enter" && event.target instanceof HTMLLIElement) {
                this.choose_(event.target);
            }
        });
        filter.addEventListener("input", () => this.filter_(filter.value.trim().toLowerCase()));
    }

    private filter_(typed: string): void {
        const wanted = new Set(
            this.report_.dimensions.filter((one) => matches(one, typed)).map(nameFor),
        );
        this.rows_.forEach((row, name) => (row.hidden = !wanted.has(name)));
        this.app_.space.shown.only(typed === "" ? undefined : wanted);
    }

    /** Turns to the annotation's view, and selects it. */
    private choose_(row: HTMLElement | null): void {
        const index = this.indexOf_(row);
        if (index !== undefined) {
            this.app_.placed.reveal(index);
        }
    }

    private indexOf_(row: HTMLElement | null): number | undefined {
        const name = row?.dataset["name"];
        const index = this.app_.document.recipes.findIndex((recipe) => nameOf(recipe) === name);
        return row === null || index < 0 ? undefined : index;
    }

    private refresh_(): void {
        const { shown } = this.app_.space;
        this.rows_.forEach((row, name) => {
            const isHidden = shown.isHidden(name);
            const eye = row.children[2]!;
            eye.textContent = isHidden ? "Show" : "Hide";
            eye.setAttribute("aria-label", `${isHidden ? "Show" : "Hide"} ${name}`);
            row.classList.toggle("unseen", isHidden);
        });
    }

    private light_(): void {
        const { placed, document: scene } = this.app_;
        const nameAt = (index: number | undefined) =>
            index === undefined ? undefined : nameOf(scene.recipes[index]!);
        const [lit, selected] = [nameAt(placed.lit), nameAt(placed.selected)];
        this.rows_.forEach((row, name) => {
            row.classList.toggle("lit", name === lit);
            row.classList.toggle("selected", name === selected);
        });
    }
}
