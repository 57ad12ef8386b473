// A sheet with all keys, made from the commands, and what mouse and fingers do.
import type { Command, Commands } from "./commands.js";
import { element } from "./dom.js";

const gestures = [
    ["drag", "turn; with Alt roll, with Shift or the right button move"],
    ["wheel", "zoom to the cursor"],
    ["click", "pick a thing, then place the dimension"],
    ["drag a text", "move it"],
    ["one finger", "turn; on a text: move it"],
    ["two fingers", "move and zoom"],
    ["hold", "a lens, to point exactly; let go to pick"],
] as const;

/** Keys as they are written on keyboards. */
const keyName = (key: string): string =>
    key.replace(/Arrow(\w+)/, (_, way: string) => ({ Left: "←", Right: "→", Up: "↑", Down: "↓" })[way] ?? way)
        .replace(/ $/, "Space");

function row(key: string, label: string): HTMLElement[] {
    const term = document.createElement("dt");
    const told = document.createElement("dd");
    term.textContent = key;
    told.textContent = label;
    return [term, told];
}

export function helpCommand(commands: Commands): Command {
    const sheet = element<HTMLDialogElement>("help");
    element("close-help").addEventListener("click", () => sheet.close());
    sheet.addEventListener("click", (event) => {
        if (event.target === sheet) {
            sheet.close();
        }
    });
    return {
        name: "show-help",
        label: "All keys",
        keys: ["?", "F1"],
        face: "Keys",
        bar: "page",
        run: () => {
            // Commands that differ in a direction have one line.
            const byLabel = new Map<string, string[]>();
            for (const { keys = [], label } of commands.table) {
                if (keys.length > 0) {
                    byLabel.set(label, [...(byLabel.get(label) ?? []), keys.map(keyName).join(" or ")]);
                }
            }
            const rows = [...byLabel].flatMap(([label, keys]) => row(keys.join(", "), label));
            element("help-keys").replaceChildren(...rows);
            element("help-gestures").replaceChildren(...gestures.flatMap(([how, what]) => row(how, what)));
            sheet.showModal();
        },
    };
}
