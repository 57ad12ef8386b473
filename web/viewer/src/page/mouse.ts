// The mouse and fingers on the canvas.
import type { App } from "./app.js";

/** A press that moves less than this many pixels is a click. */
const slack = 4;
const zoomPerNotch = 1.15;

export function listen(canvas: HTMLCanvasElement, app: App): void {
    const { camera } = app.stage;
    const pressed = new Map<number, { x: number; y: number }>();
    let mode: "press" | "orbit" | "pan" | "roll" | "hold" | undefined;
    let from = { x: 0, y: 0 };
    const at = (event: MouseEvent) => {
        const box = canvas.getBoundingClientRect();
        return { x: event.clientX - box.left, y: event.clientY - box.top };
    };

    canvas.addEventListener("pointerdown", (event) => {
        canvas.focus();
        canvas.setPointerCapture(event.pointerId);
        from = at(event);
        pressed.set(event.pointerId, from);
        if (pressed.size > 1 || event.button > 0 || event.shiftKey) {
            mode = "pan";
        } else if (event.altKey) {
            mode = "roll";
        } else {
            mode = app.grab(from.x, from.y) ? "hold" : "press";
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
        }
        if (mode === "press") {
            return;
        }
        pressed.set(event.pointerId, to);
        if (mode === "hold") {
            app.move(to.x, to.y);
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
        if (mode === "press" && event.type === "pointerup") {
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
