// Turning the view to a side, and to the views that a scene names.
import { type StandardView, standardViews, type View } from "../rules/view.js";
import type { Command } from "./commands.js";
import { element } from "./dom.js";
import type { Workspace } from "./workspace.js";

/**
 * Looks at the part from a side, and shows it whole with its annotations; where some belong to the
 * side, with them alone.
 */
export function look(space: Workspace, view: View | StandardView): void {
    const chosen = typeof view === "string" ? standardViews[view] : view;
    space.stage.camera.look({ view: chosen });
    space.shown.lookedFrom(chosen);
    space.fit();
}

export function lookingCommands(space: Workspace): Command[] {
    const names = Object.keys(standardViews) as StandardView[];
    const views = names.map((name, i) => ({
        name: `view-${name}`,
        label: `Look at the ${name === "iso" ? "part from a corner" : name}`,
        keys: [String(i + 1)],
        face: name[0]!.toUpperCase() + name.slice(1),
        bar: "views",
        run: () => look(space, name),
    }));
    const fit = { name: "fit", label: "Fit", keys: ["F"], face: "Fit", bar: "zoom", run: () => space.fit() };
    return [...views, fit];
}

/** Above the buttons, and below them, in pixels. */
const margin = 8;

/** The buttons of the views that the scene names, which do not cover the part. */
export function showNamedViews(space: Workspace): void {
    const root = element("named");
    space.strip = () => (root.hidden ? 0 : root.offsetHeight + 2 * margin);
    const show = () => {
        const { views } = space.document;
        root.hidden = views.length === 0;
        root.replaceChildren(
            ...views.map(({ name, view }) => {
                const button = document.createElement("button");
                button.textContent = name;
                button.addEventListener("click", () => look(space, view));
                return button;
            }),
        );
    };
    space.opened.listen(show);
    show();
}
