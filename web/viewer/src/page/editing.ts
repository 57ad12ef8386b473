// The commands that make, take away and take back.
import type { App } from "./app.js";
import type { Command } from "./commands.js";

/** Tab goes through the page, but through what fits while something is picked in the model. */
const isOnCanvas = (): boolean =>
    document.activeElement === document.body || document.activeElement?.id === "canvas";

export function editingCommands(app: App): Command[] {
    const { space, placed, measuring } = app;
    const hasChoice = () => isOnCanvas() && measuring.candidates.length > 0;
    const choose = (steps: number) => measuring.choose(measuring.picking.choice + steps);
    return [
        {
            name: "undo",
            label: "Undo",
            keys: ["Ctrl+Z"],
            face: "↶",
            bar: "history",
            run: () => space.undo(),
            isEnabled: () => space.document.canUndo,
        },
        {
            name: "redo",
            label: "Redo",
            keys: ["Ctrl+Y", "Ctrl+Shift+Z"],
            face: "↷",
            bar: "history",
            run: () => space.redo(),
            isEnabled: () => space.document.canRedo,
        },
        {
            name: "note",
            label: "Note with a leader",
            keys: ["N"],
            face: "Note",
            bar: "writing",
            run: () => app.startNote(),
        },
        {
            name: "delete",
            label: "Delete the selected annotation",
            keys: ["Delete", "Backspace"],
            run: () => placed.remove(),
            isEnabled: () => placed.selected !== undefined,
        },
        {
            name: "next",
            label: "The next kind or plane that fits",
            keys: ["Tab"],
            run: () => choose(1),
            isEnabled: hasChoice,
        },
        {
            name: "previous",
            label: "The kind or plane before it",
            keys: ["Shift+Tab"],
            run: () => choose(-1),
            isEnabled: hasChoice,
        },
        {
            name: "cancel",
            label: "Give up what is going on",
            keys: ["Escape"],
            run: () => app.cancel(),
        },
    ];
}
