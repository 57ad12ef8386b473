// The mouse and fingers on the canvas.
import { besides } from "../rules/touch.js";
import type { App } from "./app.js";
import { Lens } from "./lens.js";

/** A press that moves less than this many pixels is a click. */
const slack = 4;
const zoomPerNotch = 1.15;
/** How long a finger rests until it is a hold, in milliseconds. */
const hold = 350;

export function listen(canvas: HTMLCanvasElement, app: App): void {
    const { camera } = app.stage;
    const pressed = new Map<number, { x: number; y: number }>();
    let mode: "press" | "orbit" | "pan" | "roll" | "hold" | "lens" | undefined;
    let from = { x: 0, y: 0 };
    let waiting: ReturnType<typeof setTimeout> | undefined;
    const lens = new Lens(canvas, app.stage);
    const look = (x: number, y: number) => {
        lens.show(x, y);
        app.move(x, y);
        app.stage.invalidate();
    };
    const leaveLens = () => {
        clearTimeout(waiting);
        lens.hide();
    };
    const at = (event: MouseEvent) => {
        const box = canvas.getBoundingClientRect();
        return { x: event.clientX - box.left, y: event.clientY - box.top };
    };

    /** A finger is broad: it may lie beside the text that it means. */
    const grab = (x: number, y: number, isTouch: boolean): boolean =>
        isTouch && app.measuring.isIdle
            ? besides(x, y).some(([u, v]) => app.placed.at(u, v) !== undefined && app.grab(u, v))
            : app.grab(x, y);
    /** Likewise beside a thing; but where a dimension follows, it goes exactly there. */
    const tapped = (x: number, y: number): readonly [number, number] => {
        const { document: scene, frame } = app.space;
        const isFree = app.measuring.candidates.length === 0 && !app.measuring.picking.note;
        return (
            (isFree ? besides(x, y).find(([u, v]) => scene.part.under(u, v, frame) !== undefined) : undefined) ?? [x, y]
        );
    };

    canvas.addEventListener("pointerdown", (event) => {
        canvas.focus();
        canvas.setPointerCapture(event.pointerId);
        from = at(event);
        pressed.set(event.pointerId, from);
        leaveLens();
        if (pressed.size > 1 || event.button > 0 || event.shiftKey) {
            if (mode === "hold") {
                app.dragging.cancel();
            }
            mode = "pan";
        } else if (event.altKey) {
            mode = "roll";
        } else {
            const isTouch = event.pointerType === "touch";
            mode = grab(from.x, from.y, isTouch) ? "hold" : "press";
            if (isTouch && mode === "press") {
                waiting = setTimeout(() => {
                    mode = "lens";
                    look(from.x, from.y);
                }, hold);
            }
        }
    });

    canvas.addEventListener("pointermove", (event) => {
        const to = at(event);
        const last = pressed.get(event.pointerId);
        if (last === undefined) {
            app.move(to.x, to.y);
            return;
        }
        const [dx, dy] = [to.x - last.x, to.y - last.y];
        const other = [...pressed].find(([id]) => id !== event.pointerId)?.[1];
        if (mode === "press" && Math.hypot(to.x - from.x, to.y - from.y) > slack) {
            mode = "orbit";
            leaveLens();
        }
        if (mode === "press") {
            return;
        }
        pressed.set(event.pointerId, to);
        if (mode === "hold") {
            app.move(to.x, to.y);
        } else if (mode === "lens") {
            look(to.x, to.y);
        } else if (mode === "orbit") {
            camera.orbit(dx, dy);
        } else if (mode === "roll") {
            camera.roll(dx / 200);
        } else if (other !== undefined) {
            const spread = (p: { x: number; y: number }) => Math.hypot(p.x - other.x, p.y - other.y);
            camera.pan(dx / 2, dy / 2);
            camera.zoom((to.x + other.x) / 2, (to.y + other.y) / 2, spread(last) / spread(to));
        } else {
            camera.pan(dx, dy);
        }
    });

    const released = (event: PointerEvent) => {
        const { x, y } = at(event);
        const wasPressed = pressed.delete(event.pointerId);
        if (!wasPressed || pressed.size > 0) {
            return;
        }
        leaveLens();
        if (mode === "press" && event.type === "pointerup") {
            const [u, v] = event.pointerType === "touch" ? tapped(x, y) : [x, y];
            app.click(u, v);
        } else if (mode === "lens" && event.type === "pointerup") {
            app.click(x, y);
        } else if (mode === "hold" && Math.hypot(x - from.x, y - from.y) > slack) {
            app.release();
        } else if (mode === "hold") {
            app.cancel();
            app.click(from.x, from.y);
        }
        mode = undefined;
    };
    canvas.addEventListener("pointerup", released);
    canvas.addEventListener("pointercancel", released);
    canvas.addEventListener("contextmenu", (event) => event.preventDefault());
    canvas.addEventListener(
        "wheel",
        (event) => {
            event.preventDefault();
            const notches = event.deltaY / (event.deltaMode === 0 ? 100 : 3);
            const { x, y } = at(event);
            camera.zoom(x, y, zoomPerNotch ** notches);
        },
        { passive: false },
    );
}
