// What stands under a finger, enlarged beside it.
import { element } from "./dom.js";
import type { Stage } from "./stage.js";

/** The side of the lens, in pixels, and how much larger it shows things. */
const side = 128;
const enlarged = 2.5;
/** Between the finger and the middle of the lens. */
const away = 104;

export class Lens {
    private readonly canvas_ = element<HTMLCanvasElement>("lens");
    private place_: readonly [number, number] | undefined;

    constructor(
        private readonly source_: HTMLCanvasElement,
        stage: Stage,
    ) {
        this.canvas_.width = this.canvas_.height = 2 * side;
        // The picture is there until the browser has shown it.
        stage.drawn.listen(() => this.draw_());
    }

    get isShown(): boolean {
        return this.place_ !== undefined;
    }

    /** Shows what stands at a pixel, with the next picture. */
    show(x: number, y: number): void {
        this.place_ = [x, y];
        const { clientWidth } = this.source_;
        const left = Math.min(clientWidth - side, Math.max(0, x - side / 2));
        const isAbove = y > away + side / 2;
        this.canvas_.style.left = `${left}px`;
        this.canvas_.style.top = `${(isAbove ? y - away : y + away) - side / 2}px`;
        this.canvas_.hidden = false;
    }

    hide(): void {
        this.place_ = undefined;
        this.canvas_.hidden = true;
    }

    private draw_(): void {
        if (this.place_ === undefined) {
            return;
        }
        const [x, y] = this.place_;
        const source = this.source_;
        const ratio = source.width / source.clientWidth;
        const shown = (side / enlarged) * ratio;
        const context = this.canvas_.getContext("2d")!;
        const { width } = this.canvas_;
        context.clearRect(0, 0, width, width);
        context.drawImage(source, x * ratio - shown / 2, y * ratio - shown / 2, shown, shown, 0, 0, width, width);
        context.strokeStyle = "#e8590c";
        context.lineWidth = 2;
        context.beginPath();
        for (const [dx, dy] of [[1, 0], [-1, 0], [0, 1], [0, -1]] as const) {
            context.moveTo(width / 2 + 8 * dx, width / 2 + 8 * dy);
            context.lineTo(width / 2 + 28 * dx, width / 2 + 28 * dy);
        }
        context.stroke();
    }
}
