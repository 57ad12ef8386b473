// STEP files in the page: a worker reads one of them and is gone again.
import type { Answer, Task } from "./worker.js";

/** What the file beside the page defines: the worker's script, and OCCT's module, packed. */
interface Beside {
    readonly script: string;
    readonly wasm: string;
}

declare global {
    var stepReader: Beside | undefined;
}

const readerFile = "occt.js";

export const isStep = ({ name }: File): boolean => /\.(stp|step|p21)$/i.test(name);

/** A classic script, which a page may load from the disk, too. */
function readerBeside(): Promise<Beside> {
    return new Promise((resolve, reject) => {
        const script = document.createElement("script");
        script.src = readerFile;
        script.addEventListener("load", () => {
            const reader = globalThis.stepReader;
            globalThis.stepReader = undefined;
            script.remove();
            if (reader === undefined) {
                reject(new Error(`${readerFile}, which reads STEP files, is another file`));
            } else {
                resolve(reader);
            }
        });
        script.addEventListener("error", () => {
            script.remove();
            reject(new Error(`${readerFile}, which reads STEP files, is not beside this page`));
        });
        document.head.append(script);
    });
}

/** How long a worker waits for a file, in milliseconds. */
const patience = 60_000;

/** Reads STEP files, each in a worker of its own. */
export class StepReader {
    private script_: string | undefined;
    /** OCCT's module, once a worker has compiled it. */
    private module_: WebAssembly.Module | undefined;
    /** A worker that has begun to start, and has no file yet. */
    private waiting_: Promise<Worker> | undefined;
    private leave_: ReturnType<typeof setTimeout> | undefined;

    /** A file may come: starting the reader takes about as long as reading a part. */
    prepare(): void {
        clearTimeout(this.leave_);
        this.leave_ = setTimeout(() => void this.dismiss(), patience);
        if (this.waiting_ === undefined) {
            this.waiting_ = this.begin_();
            // What is wrong is told to whom a file is given.
            this.waiting_.catch(() => {});
        }
    }

    /** No file comes. */
    async dismiss(): Promise<void> {
        const waiting = this.taken_();
        (await waiting?.catch(() => undefined))?.terminate();
    }

    /**
     * A STEP file as a scene's text. Nothing where it was given up: `signal` ends the worker at once.
     * @throws Error with one line that says what is wrong with the file
     */
    async read(
        file: File,
        doing: (what: string) => void,
        signal: AbortSignal,
    ): Promise<string | undefined> {
        doing("loading the reader");
        const worker = await (this.taken_() ?? this.begin_());
        doing("starting the reader");
        try {
            return await new Promise((resolve, reject) => {
                signal.addEventListener("abort", () => resolve(undefined));
                if (signal.aborted) {
                    resolve(undefined);
                }
                worker.addEventListener("error", () => reject(new Error("cannot be read")));
                worker.addEventListener("message", ({ data }: MessageEvent<Answer>) => {
                    if ("doing" in data) {
                        doing(data.doing);
                    } else if ("scene" in data) {
                        resolve(data.scene);
                    } else if ("wrong" in data) {
                        reject(new Error(data.wrong));
                    }
                });
                worker.postMessage({ file } satisfies Task);
            });
        } finally {
            worker.terminate();
        }
    }

    private taken_(): Promise<Worker> | undefined {
        clearTimeout(this.leave_);
        const waiting = this.waiting_;
        this.waiting_ = undefined;
        return waiting;
    }

    /** A worker that starts. */
    private async begin_(): Promise<Worker> {
        let wasm: string | WebAssembly.Module;
        if (this.script_ === undefined || this.module_ === undefined) {
            ({ script: this.script_, wasm } = await readerBeside());
        } else {
            wasm = this.module_;
        }
        const address = URL.createObjectURL(new Blob([this.script_], { type: "text/javascript" }));
        const worker = new Worker(address);
        worker.addEventListener("message", ({ data }: MessageEvent<Answer>) => {
            URL.revokeObjectURL(address);
            if ("module" in data) {
                this.module_ = data.module;
            }
        });
        // One that cannot start is not kept for the file that may come.
        worker.addEventListener("error", () => void this.dismiss());
        worker.postMessage({ wasm } satisfies Task);
        return worker;
    }
}
