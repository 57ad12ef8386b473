// The buttons of the views that annotations belong to.
import type { App } from "./app.js";
import { element } from "./dom.js";
import { look } from "./looking.js";

function button(face: string, isPressed: boolean, click: () => void): HTMLButtonElement {
    const made = document.createElement("button");
    made.textContent = face;
    made.setAttribute("aria-pressed", String(isPressed));
    made.addEventListener("click", click);
    return made;
}

export function showSheets({ space }: App): void {
    const bar = element("sheets");
    const refresh = () => {
        const { shown } = space;
        bar.hidden = shown.sheets.length === 0;
        const sheets = shown.sheets.map((sheet) =>
            button(`${sheet.name} ${sheet.count}`, sheet === shown.current, () =>
                look(space, sheet.view),
            ),
        );
        const all = button("all", shown.current === undefined, () => shown.all());
        bar.replaceChildren(...sheets, all);
    };
    space.opened.listen(refresh);
    space.shown.changed.listen(refresh);
    refresh();
}
