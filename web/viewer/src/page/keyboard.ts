// Everything that the mouse does in the model, by keys: a cursor that they move.
import { stepped } from "../rules/steps.js";
import type { App } from "./app.js";
import type { Command } from "./commands.js";
import { element } from "./dom.js";

/** Pixels of a step of the cursor, and of a small one. */
const far = 12;
const near = 1;
/** Pixels that a drag of the mouse would have. */
const turn = 42;
const shift = 40;
const zoomStep = 1.25;

const arrows = [
    ["ArrowLeft", -1, 0],
    ["ArrowRight", 1, 0],
    ["ArrowUp", 0, -1],
    ["ArrowDown", 0, 1],
] as const;

/** The cursor of the keys: a cross that shows where the mouse would be. */
class Cursor {
    private readonly cross_ = element("cursor");

    constructor(private readonly app_: App) {
        window.addEventListener("pointermove", () => (this.cross_.hidden = true));
    }

    get place(): readonly [number, number] {
        const { frame, mouse } = this.app_.space;
        const isOutside = mouse[0] <= 0 || mouse[1] <= 0 || mouse[0] >= frame.width || mouse[1] >= frame.height;
        return isOutside ? [frame.width / 2, frame.height / 2] : mouse;
    }

    to(x: number, y: number): void {
        const { frame } = this.app_.space;
        const inside = (value: number, size: number) => Math.min(size - 1, Math.max(1, value));
        const [u, v] = [inside(x, frame.width), inside(y, frame.height)];
        this.cross_.style.left = `${u}px`;
        this.cross_.style.top = `${v}px`;
        this.cross_.hidden = false;
        this.app_.move(u, v);
    }

    by(dx: number, dy: number): void {
        const [x, y] = this.place;
        this.to(x + dx, y + dy);
    }
}

/** Keys that the part takes only while it has the keyboard. */
const isOnPart = (): boolean =>
    document.activeElement === document.body || document.activeElement?.id === "canvas";

export function keyboardCommands(app: App): Command[] {
    const cursor = new Cursor(app);
    const { space, placed, dragging } = app;
    const { camera } = app.stage;
    let stop: number | undefined;
    space.opened.listen(() => (stop = undefined));

    const step = (direction: 1 | -1) => {
        const { part } = space.document;
        const under = (x: number, y: number) => part.under(x, y, space.frame)?.thing;
        const next = stepped(part.things, stop, direction, space.frame, under);
        if (next !== undefined) {
            stop = next.index;
            cursor.to(...next.pixel);
        }
    };
    const enter = () => {
        if (dragging.isActive) {
            app.release();
        } else {
            const [x, y] = cursor.place;
            app.click(x, y);
        }
    };
    const take = () => {
        const index = placed.selected ?? placed.lit;
        const place = index === undefined ? undefined : placed.pixelOf(index);
        if (index !== undefined && place !== undefined) {
            element("canvas").focus();
            cursor.to(...place);
            dragging.grab(index);
            cursor.by(0, 0);
        }
    };

    const moves = arrows.flatMap(([key, dx, dy]): Command[] => [
        { name: `cursor-${key}`, label: "Move the cursor", keys: [key], run: () => cursor.by(far * dx, far * dy), isEnabled: isOnPart },
        { name: `fine-${key}`, label: "Move the cursor by a pixel", keys: [`Shift+${key}`], run: () => cursor.by(near * dx, near * dy), isEnabled: isOnPart },
        { name: `turn-${key}`, label: "Turn the part", keys: [`Ctrl+${key}`], run: () => camera.orbit(turn * dx, turn * dy), isEnabled: isOnPart },
        { name: `shift-${key}`, label: "Move the part", keys: [`Alt+${key}`], run: () => camera.pan(shift * dx, shift * dy), isEnabled: isOnPart },
    ]);
    const zoom = (factor: number) => camera.zoom(...cursor.place, factor);
    return [
        { name: "next-thing", label: "Point at the next thing that is seen", keys: ["."], run: () => step(1), isEnabled: isOnPart },
        { name: "previous-thing", label: "Point at the one before it", keys: [","], run: () => step(-1), isEnabled: isOnPart },
        { name: "click", label: "Click at the cursor", keys: ["Enter", " "], run: enter, isEnabled: isOnPart },
        { name: "take", label: "Take the selected annotation; Enter leaves it", keys: ["M"], run: take },
        ...moves,
        { name: "zoom-in", label: "Zoom in", keys: ["+"], run: () => zoom(1 / zoomStep) },
        { name: "zoom-out", label: "Zoom out", keys: ["-"], run: () => zoom(zoomStep) },
        { name: "roll-left", label: "Roll the part", keys: ["["], run: () => camera.roll(Math.PI / 12) },
        { name: "roll-right", label: "Roll the part", keys: ["]"], run: () => camera.roll(-Math.PI / 12) },
    ];
}
