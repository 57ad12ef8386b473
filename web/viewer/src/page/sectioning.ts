// The section: switched, moved and turned.
import { principal, type Section, through, tilted } from "../rules/section.js";
import { dot, moved, scale, type Vec } from "../rules/vec.js";
import type { App } from "./app.js";
import type { Command } from "./commands.js";
import { element } from "./dom.js";

const degree = Math.PI / 180;

export class Sectioning {
    private base_: Vec | undefined;
    private readonly bar_ = element("section");
    private readonly place_ = element<HTMLInputElement>("section-place");
    private readonly turn_ = element<HTMLInputElement>("section-turn");
    private readonly tilt_ = element<HTMLInputElement>("section-tilt");

    constructor(private readonly app_: App) {
        const { space } = app_;
        for (const input of [this.place_, this.turn_, this.tilt_]) {
            input.addEventListener("input", () => this.show_());
        }
        const axes: Readonly<Record<string, () => Vec>> = {
            "section-x": () => [1, 0, 0],
            "section-y": () => [0, 1, 0],
            "section-z": () => [0, 0, 1],
            "section-view": () => space.view.to,
        };
        for (const [id, normal] of Object.entries(axes)) {
            // What is taken away stands before the cut.
            element(id).addEventListener("click", () => {
                const axis = normal();
                this.start_(scale(axis, dot(axis, space.view.to) < 0 ? -1 : 1));
            });
        }
        element("section-flip").addEventListener("click", () => {
            this.base_ = this.base_ && scale(this.base_, -1);
            this.place_.value = String(-Number(this.place_.value));
            this.turn_.value = String(-Number(this.turn_.value));
            this.show_();
        });
        space.opened.listen(() => this.stop_());
    }

    /** Shows a section across the direction that the part is seen from, or the whole part again. */
    toggle(): void {
        if (this.base_ !== undefined) {
            this.stop_();
            element("canvas").focus();
        } else {
            this.start_(principal(this.app_.space.view.to));
            this.place_.focus();
        }
    }

    get isShown(): boolean {
        return this.base_ !== undefined;
    }

    private start_(normal: Vec): void {
        this.base_ = normal;
        this.place_.value = this.turn_.value = this.tilt_.value = "0";
        this.show_();
    }

    private stop_(): void {
        this.base_ = undefined;
        this.show_();
    }

    private show_(): void {
        const { space, stage } = this.app_;
        const { part } = space.document;
        this.bar_.hidden = this.base_ === undefined;
        const section = this.base_ && this.section_(this.base_);
        part.cut(section);
        stage.invalidate();
        this.app_.move(...space.mouse);
    }

    private section_(base: Vec): Section {
        const { part } = this.app_.space.document;
        const normal = tilted(base, Number(this.turn_.value) * degree, Number(this.tilt_.value) * degree);
        const at = moved(part.middle, normal, (Number(this.place_.value) / 100) * part.extentAlong(normal));
        // Round where it can be: a plane in the middle of a part is exactly there.
        const section = through(at, normal);
        const distance = Number(dot(at, normal).toPrecision(9));
        element("section-says").textContent = `${Number(distance.toPrecision(6))} mm`;
        return { ...section, distance };
    }
}

export function sectionCommand(sectioning: Sectioning): Command {
    return {
        name: "show-section",
        label: "Cut the part by a plane",
        keys: ["X"],
        face: "Section",
        bar: "zoom",
        run: () => sectioning.toggle(),
    };
}
