// STEP files in the page: a worker reads one of them and is gone again.
import type { Answer, Task } from "./worker.js";

/** What the file beside the page defines: the worker's script, and OCCT's module, packed. */
interface Reader {
    readonly script: string;
    readonly wasm: string;
}

declare global {
    var stepReader: Reader | undefined;
}

const readerFile = "occt.js";

export const isStep = ({ name }: File): boolean => /\.(stp|step|p21)$/i.test(name);

/** A classic script, which a page may load from the disk, too. */
function readerBeside(): Promise<Reader> {
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

/**
 * A STEP file as a scene's text. Nothing where it was given up: `signal` ends the worker at once.
 * @throws Error with one line that says what is wrong with the file
 */
export async function readStep(
    file: File,
    doing: (what: string) => void,
    signal: AbortSignal,
): Promise<string | undefined> {
    doing("loading the reader");
    const { script, wasm } = await readerBeside();
    if (signal.aborted) {
        return undefined;
    }
    const address = URL.createObjectURL(new Blob([script], { type: "text/javascript" }));
    const worker = new Worker(address);
    try {
        return await new Promise((resolve, reject) => {
            signal.addEventListener("abort", () => resolve(undefined));
            worker.addEventListener("error", () => reject(new Error("cannot be read")));
            worker.addEventListener("message", ({ data }: MessageEvent<Answer>) => {
                if ("doing" in data) {
                    doing(data.doing);
                } else if ("scene" in data) {
                    resolve(data.scene);
                } else {
                    reject(new Error(data.wrong));
                }
            });
            worker.postMessage({ file, wasm } satisfies Task);
        });
    } finally {
        worker.terminate();
        URL.revokeObjectURL(address);
    }
}
