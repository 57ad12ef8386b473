// The STEP file that is being read: what is said of it, and how it is given up.
import type { App } from "../page/app.js";
import { element } from "../page/dom.js";
import { StepReader } from "./open.js";

export class StepOpening {
    private running_: AbortController | undefined;
    private readonly reader_ = new StepReader();
    private readonly box_ = element("progress");
    private readonly doing_ = element("doing");

    constructor(private readonly app_: App) {
        element("give-up").addEventListener("click", () => this.cancel());
        window.addEventListener(
            "keydown",
            (event) => {
                if (event.key === "Escape" && this.cancel()) {
                    event.stopPropagation();
                }
            },
            { capture: true },
        );
        app_.space.opened.listen(() => {
            this.cancel();
            void this.reader_.dismiss();
        });
    }

    /** A STEP file may be opened soon. */
    prepare(): void {
        this.reader_.prepare();
    }

    /** Reads a file, and opens its part. What is read already is given up. */
    async open(file: File): Promise<void> {
        this.cancel();
        const running = new AbortController();
        this.running_ = running;
        const started = performance.now();
        let what = "";
        const say = () => {
            const seconds = Math.floor((performance.now() - started) / 1000);
            this.doing_.textContent = `${file.name}: ${what}${seconds > 0 ? `, ${seconds} s` : ""}`;
        };
        const clock = setInterval(say, 1000);
        this.box_.hidden = false;
        try {
            const scene = await this.reader_.read(
                file,
                (doing) => {
                    what = doing;
                    say();
                },
                running.signal,
            );
            if (scene !== undefined) {
                this.ended_(running);
                this.app_.open(scene, file.name);
            }
        } catch (problem) {
            if (!running.signal.aborted) {
                this.app_.fail(`${file.name}: ${(problem as Error).message}`);
            }
        } finally {
            clearInterval(clock);
            this.ended_(running);
        }
    }

    /** Gives up what is being read; false where nothing is. */
    cancel(): boolean {
        const running = this.running_;
        if (running !== undefined) {
            running.abort();
            this.ended_(running);
        }
        return running !== undefined;
    }

    private ended_(running: AbortController): void {
        if (this.running_ === running) {
            this.running_ = undefined;
            this.box_.hidden = true;
        }
    }
}
