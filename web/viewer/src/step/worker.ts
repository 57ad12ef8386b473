// A worker that reads one STEP file with OCCT. It is ended when it has answered.
import init from "replicad-opencascadejs";
import { sceneText } from "./scene.js";
import { type Occt, partOf } from "./shape.js";

/** What the page sends: OCCT's module, compiled or in base64 and deflated, and then the file. */
export type Task = { readonly wasm: string | WebAssembly.Module } | { readonly file: File };

/** What it gets: the compiled module, what is being done, and at last a scene's text or what is wrong. */
export type Answer =
    | { module: WebAssembly.Module }
    | { doing: string }
    | { scene: string }
    | { wrong: string };

/** What is wrong with a file, in one line. */
class StepError extends Error {}

const notStep = "is not a STEP file that can be read";
const noPart = "holds no part that can be read";
const mostBytes = 256 * 2 ** 20;

const answer = (message: Answer) => (self.postMessage as (message: Answer) => void)(message);

/** The function that the module calls for more memory is known by the most there is: all pages but one. */
const mostMemory = "4294901760";

/**
 * Gives the module all addresses there are; those that are not written to cost nothing. A damaged
 * file may lead OCCT to any of them, and there are browsers that do not survive one that is not
 * there. Where there is not so much room, the memory grows as it is needed.
 */
class Room {
    private isWhole_ = false;

    constructor(private readonly imports_: WebAssembly.Imports) {}

    /** The imports, where what asks for memory that is there already is told so. */
    get imports(): WebAssembly.Imports {
        const asks = (value: unknown) =>
            typeof value === "function" && value.length === 1 && String(value).includes(mostMemory);
        const wrapped = (value: unknown) =>
            asks(value)
                ? (size: number) => this.isWhole_ || (value as (size: number) => boolean)(size)
                : value;
        return Object.fromEntries(
            Object.entries(this.imports_).map(([name, members]) => [
                name,
                Object.fromEntries(Object.entries(members).map(([key, v]) => [key, wrapped(v)])),
            ]),
        ) as WebAssembly.Imports;
    }

    take({ exports }: WebAssembly.Instance): void {
        const isMemory = (item: unknown) => item instanceof WebAssembly.Memory;
        const memory = Object.values(exports).find(isMemory) as WebAssembly.Memory;
        // As many pages as one has bytes.
        const page = 65536;
        try {
            memory.grow(page - memory.buffer.byteLength / page);
            this.isWhole_ = true;
        } catch {
            // A small machine.
        }
    }
}

/** Bytes of their text in base64. */
function bytesOf(text: string): Uint8Array<ArrayBuffer> {
    const { fromBase64 } = Uint8Array as { fromBase64?: (text: string) => Uint8Array<ArrayBuffer> };
    return fromBase64?.(text) ?? Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
}

/** The module is compiled while it is inflated. */
function compiled(packed: string): Promise<WebAssembly.Module> {
    const stream = new Response(bytesOf(packed)).body!.pipeThrough(new DecompressionStream("deflate"));
    const headers = { "Content-Type": "application/wasm" };
    return WebAssembly.compileStreaming(new Response(stream, { headers }));
}

async function started(wasm: string | WebAssembly.Module): Promise<Occt> {
    const module = typeof wasm === "string" ? await compiled(wasm) : wasm;
    answer({ module });
    const silent = () => {};
    return new Promise((resolve, reject) => {
        const instantiateWasm = (
            imports: WebAssembly.Imports,
            done: (instance: WebAssembly.Instance, module: WebAssembly.Module) => void,
        ) => {
            const room = new Room(imports);
            WebAssembly.instantiate(module, room.imports).then((instance) => {
                room.take(instance);
                done(instance, module);
            }, reject);
        };
        const locateFile = (name: string) => name;
        init({ print: silent, printErr: silent, locateFile, instantiateWasm }).then(resolve, reject);
    });
}

/** Makes a file's scene, and tells before each step what it does. */
function* reading(occt: Occt, bytes: Uint8Array, title: string): Generator<string, string, void> {
    yield "reading the file";
    const path = "/part.stp";
    occt.FS.writeFile(path, bytes);
    const reader = new occt.STEPControl_Reader();
    if (reader.ReadFile(path) !== occt.IFSelect_ReturnStatus.IFSelect_RetDone) {
        throw new StepError(notStep);
    }
    occt.FS.unlink(path);
    const roots = reader.NbRootsForTransfer();
    for (let root = 1; root <= roots; ++root) {
        yield roots === 1 ? "reading the part" : `reading part ${root} of ${roots}`;
        reader.TransferRoot(root);
    }
    const shape = reader.OneShape();
    if (shape.IsNull()) {
        throw new StepError(noPart);
    }
    yield "finding faces and edges";
    const part = partOf(occt, shape);
    if (part === undefined) {
        throw new StepError(noPart);
    }
    return sceneText(title, part);
}

function read(occt: Occt, bytes: Uint8Array, title: string): string {
    const steps = reading(occt, bytes, title);
    for (;;) {
        const { done, value } = steps.next();
        if (done) {
            return value;
        }
        answer({ doing: value });
    }
}

/** Whether the file has come. */
let isAsked = false;

/** Reads a small part meanwhile: code is compiled when it first runs. The file need not wait for it. */
async function rehearse(occt: Occt): Promise<void> {
    const path = "/rehearsal.stp";
    const pause = () => new Promise((resolve) => setTimeout(resolve));
    await pause();
    if (isAsked) {
        return;
    }
    const pin = new occt.BRepPrimAPI_MakeCylinder(1, 1).Shape();
    const asItIs = occt.STEPControl_StepModelType.STEPControl_AsIs;
    const writer = new occt.STEPControl_Writer();
    writer.Transfer(pin, asItIs, true, new occt.Message_ProgressRange());
    writer.Write(path);
    const steps = reading(occt, occt.FS.readFile(path) as Uint8Array, "");
    do {
        await pause();
    } while (!isAsked && !steps.next().done);
}

function wordsFor(problem: unknown): string {
    if (problem instanceof StepError) {
        return problem.message;
    }
    if (/memory|bad_alloc|allocation/i.test(String(problem))) {
        return "cannot be read: it needs more memory than there is";
    }
    // A part that holds itself is followed until the stack ends.
    return problem instanceof WebAssembly.RuntimeError || problem instanceof RangeError
        ? "cannot be read: it makes the reader crash"
        : "cannot be read: its geometry is damaged";
}

/** A file's scene, or what is wrong with it. */
async function work(file: File, starting: Promise<Occt>): Promise<Answer> {
    try {
        if (file.size > mostBytes) {
            throw new StepError("has more than 256 MiB");
        }
        const bytes = new Uint8Array(await file.arrayBuffer());
        const head = new TextDecoder("latin1").decode(bytes.subarray(0, 4096));
        if (!head.includes("ISO-10303-21")) {
            throw new StepError(notStep);
        }
        const occt = await starting;
        return { scene: read(occt, bytes, file.name.replace(/\.[^.]*$/, "")) };
    } catch (problem) {
        return { wrong: wordsFor(problem) };
    }
}

let starting: Promise<Occt>;

self.addEventListener("message", ({ data }: MessageEvent<Task>) => {
    if ("wasm" in data) {
        starting = started(data.wasm);
        // What is wrong is told with the file.
        starting.then(rehearse).catch(() => {});
    } else {
        isAsked = true;
        void work(data.file, starting).then(answer);
    }
});
