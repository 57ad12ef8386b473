// The panel that says how values are written, for all annotations or for the selected one.
import type { Recipe } from "dorvale";
import {
    angleUnits,
    commonMeasure,
    formatOf,
    inUnit,
    lengthUnits,
    type Measure,
    subjectOf,
    units,
    withFormat,
    withMeasure,
} from "../rules/formats.js";
import { spokenIn } from "../rules/spoken.js";
import { arrowOf, heightOf, isFramed, withArrow, withFrame, withHeight } from "../rules/styles.js";
import type { App } from "./app.js";
import type { Command } from "./commands.js";
import { element } from "./dom.js";

const names: Readonly<Record<Measure["unit"], string>> = {
    mm: "Millimetres",
    in: "Inches",
    "in/": "Inches, fractions",
    ft: "Feet and inches",
    "ft/": "Feet, fractions",
    deg: "Degrees",
    dms: "Degrees, minutes",
    rad: "Radians",
};

/** What new annotations are written with, and what the panel shows while none is selected. */
interface Style {
    readonly length: Measure;
    readonly angle: Measure;
    /** Undefined: by the zoom at which it is placed. */
    readonly height?: number | undefined;
    readonly arrow: number | "fit";
    readonly frame: boolean;
}

const usual: Style = {
    length: inUnit("mm", null),
    angle: inUnit("deg", null),
    height: undefined,
    arrow: "fit",
    frame: false,
};

function dressed(recipe: Recipe, { length, angle, height, arrow, frame }: Style): Recipe {
    const written = withMeasure(withMeasure(recipe, length), angle);
    const sized = height === undefined ? written : withHeight(written, height);
    const headed = arrow === "fit" ? sized : withArrow(sized, arrow);
    return frame ? withFrame(headed, true) : headed;
}

const placesName = (unit: Measure["unit"], places: number | null): string =>
    places === null ? "as usual" : unit.endsWith("/") ? `1/${places}` : `${places} decimals`;

function fill(select: HTMLSelectElement, options: readonly [value: string, name: string][], value: string): void {
    const key = JSON.stringify(options);
    if (select.dataset["shows"] !== key) {
        select.dataset["shows"] = key;
        select.replaceChildren(...options.map(([v, name]) => new Option(name, v)));
    }
    select.value = value;
}

const valueOf = (places: number | null): string => String(places ?? "");
const placesOf = (value: string): number | null => (value === "" ? null : Number(value));

export class Values {
    private style_ = usual;
    /** Whether the annotations are being changed from here. */
    private isChanging_ = false;
    private readonly unit_ = element<HTMLSelectElement>("unit");
    private readonly places_ = element<HTMLSelectElement>("places");
    private readonly angle_ = element<HTMLSelectElement>("angle");
    private readonly anglePlaces_ = element<HTMLSelectElement>("angle-places");
    private readonly prefix_ = element<HTMLInputElement>("prefix");
    private readonly suffix_ = element<HTMLInputElement>("suffix");
    private readonly height_ = element<HTMLInputElement>("text-height");
    private readonly arrow_ = element<HTMLInputElement>("arrow");
    private readonly frame_ = element<HTMLInputElement>("frame");

    constructor(private readonly app_: App) {
        const { space, placed } = app_;
        space.dress = (recipe) => dressed(recipe, this.style_);
        const onChange = (input: HTMLElement, run: () => void) => input.addEventListener("change", run);
        onChange(this.unit_, () => this.measure_(inUnit(this.unit_.value as Measure["unit"], placesOf(this.places_.value))));
        onChange(this.places_, () => this.measure_(inUnit(this.unit_.value as Measure["unit"], placesOf(this.places_.value))));
        onChange(this.angle_, () => this.measure_(inUnit(this.angle_.value as Measure["unit"], placesOf(this.anglePlaces_.value))));
        onChange(this.anglePlaces_, () => this.measure_(inUnit(this.angle_.value as Measure["unit"], placesOf(this.anglePlaces_.value))));
        onChange(this.prefix_, () => this.change_((recipe) => withFormat(recipe, { prefix: this.prefix_.value })));
        onChange(this.suffix_, () => this.change_((recipe) => withFormat(recipe, { suffix: this.suffix_.value })));
        onChange(this.height_, () => this.size_());
        onChange(this.arrow_, () => this.head_());
        onChange(this.frame_, () => {
            const frame = this.frame_.checked;
            this.change_((recipe) => withFrame(recipe, frame), { frame });
        });
        placed.selectedOther.listen(() => this.show());
        space.opened.listen(() => this.setStyle_(usual));
        space.opened.listen(() => this.take_());
        space.changed.listen(() => this.take_());
        this.take_();
    }

    /** Shows the values of the selected annotation, or of all. */
    show(): void {
        const { placed, space } = this.app_;
        const recipe = placed.selected === undefined ? undefined : space.document.recipes[placed.selected];
        const subject = recipe && subjectOf(recipe);
        const format = recipe && formatOf(recipe);
        const isFixed = recipe !== undefined && format === undefined;
        const length = subject?.quantity === "length" && format ? format : this.style_.length;
        const angle = subject?.quantity === "angle" && format ? format : this.style_.angle;
        element("values-of").textContent =
            placed.selected === undefined ? "All" : placed.drawings[placed.selected]!.text;
        this.showMeasure_(this.unit_, this.places_, lengthUnits, length, isFixed || subject?.quantity === "angle");
        this.showMeasure_(this.angle_, this.anglePlaces_, angleUnits, angle, isFixed || subject?.quantity === "length");
        this.prefix_.value = format?.prefix ?? "";
        this.suffix_.value = format?.suffix ?? "";
        this.prefix_.disabled = this.suffix_.disabled = isFixed;
        this.height_.value = String((recipe ? heightOf(recipe) : this.style_.height) ?? "");
        const arrow = recipe ? arrowOf(recipe) : this.style_.arrow;
        this.arrow_.value = typeof arrow === "number" ? String(arrow) : "";
        this.frame_.checked = recipe ? isFramed(recipe) : this.style_.frame;
    }

    private showMeasure_(
        unit: HTMLSelectElement,
        places: HTMLSelectElement,
        list: readonly Measure["unit"][],
        shown: Measure,
        isDisabled: boolean,
    ): void {
        const { places: choices } = units[shown.unit];
        fill(unit, list.map((name) => [name, names[name]]), shown.unit);
        fill(places, choices.map((n) => [valueOf(n), placesName(shown.unit, n)]), valueOf(shown.places));
        unit.disabled = isDisabled;
        places.disabled = isDisabled || choices.length < 2;
    }

    /** What all annotations have in common is what new ones get. */
    private take_(): void {
        if (this.isChanging_) {
            return;
        }
        const { recipes } = this.app_.space.document;
        this.setStyle_({
            length: commonMeasure(recipes, "length") ?? this.style_.length,
            angle: commonMeasure(recipes, "angle") ?? this.style_.angle,
        });
        this.show();
        this.app_.tell();
    }

    private setStyle_(change: Partial<Style>): void {
        const { space } = this.app_;
        this.style_ = { ...this.style_, ...change };
        space.spoken = spokenIn(space.library, this.style_.length, this.style_.angle);
    }

    private measure_(measure: Measure): void {
        const isAngle = (angleUnits as readonly string[]).includes(measure.unit);
        this.change_((recipe) => withMeasure(recipe, measure), isAngle ? { angle: measure } : { length: measure });
    }

    private size_(): void {
        const height = Number(this.height_.value.replace(",", "."));
        if (this.height_.value.trim() === "") {
            this.change_((recipe) => recipe, { height: undefined });
        } else if (height > 0 && height <= 1e6) {
            this.change_((recipe) => withHeight(recipe, height), { height });
        } else {
            this.show();
        }
    }

    private head_(): void {
        const length = Number(this.arrow_.value.replace(",", "."));
        const arrow = this.arrow_.value.trim() === "" ? "fit" : length;
        if (arrow === "fit" || (arrow > 0 && arrow <= 1e6)) {
            this.change_((recipe) => withArrow(recipe, arrow), { arrow });
        } else {
            this.show();
        }
    }

    /** Changes the selected annotation, or all of them and those to come. */
    private change_(change: (recipe: Recipe) => Recipe, style: Partial<Style> = {}): void {
        const { space, placed } = this.app_;
        const { recipes } = space.document;
        const { selected } = placed;
        if (selected === undefined) {
            this.setStyle_(style);
        }
        const next = recipes.map((recipe, i) => (selected === undefined || i === selected ? change(recipe) : recipe));
        if (next.some((recipe, i) => recipe !== recipes[i])) {
            this.isChanging_ = true;
            space.change(next);
            this.isChanging_ = false;
        }
        if (selected !== undefined) {
            placed.select(selected);
        }
        this.show();
        this.app_.tell();
    }
}

export function valuesCommand(): Command {
    return {
        name: "show-values",
        label: "How values are written",
        keys: ["V"],
        face: "Values",
        bar: "writing",
        run: () => {
            const panel = element<HTMLDetailsElement>("values");
            panel.open = !panel.open;
            if (panel.open) {
                element("unit").focus();
            }
        },
    };
}
