// Scenes as drawings: the drawing code of `pmi-host`, so that its pictures are the same to the byte.

interface Exports {
    readonly memory: WebAssembly.Memory;
    _initialize(): void;
    reserve(bytes: number): number;
    draw(sceneBytes: number, viewBytes: number): number;
}

const outcomes = ["drawn", "refused"] as const;
const outOfMemory = "needs more memory than there is";

/** A compiled module. Each drawing has a memory of its own, which goes with it. */
export class Drawing {
    private constructor(private readonly module_: WebAssembly.Module) {}

    static async of(bytes: BufferSource): Promise<Drawing> {
        return new Drawing(await WebAssembly.compile(bytes));
    }

    /**
     * The picture of a scene as SVG.
     *
     * @param view the name of the view instead of the scene's own
     * @throws Error with one line on what is wrong with the scene
     */
    async svg(scene: string, view = ""): Promise<string> {
        const { exports } = await WebAssembly.instantiate(this.module_, {
            env: { emscripten_notify_memory_growth: () => undefined },
            wasi_snapshot_preview1: { proc_exit: () => undefined },
        });
        const module = exports as unknown as Exports;
        module._initialize();
        const encoder = new TextEncoder();
        const [sceneBytes, viewBytes] = [encoder.encode(scene), encoder.encode(view)];
        const room = module.reserve(sceneBytes.length + viewBytes.length);
        if (room === 0) {
            throw new Error(outOfMemory);
        }
        const input = new Uint8Array(module.memory.buffer, room);
        input.set(sceneBytes);
        input.set(viewBytes, sceneBytes.length);
        const at = draw(module, sceneBytes.length, viewBytes.length);
        const [outcome, start, size] = new Uint32Array(module.memory.buffer, at, 3);
        const text = new TextDecoder().decode(new Uint8Array(module.memory.buffer, start, size));
        switch (outcomes[outcome!]) {
            case "drawn":
                return text;
            case "refused":
                throw new Error(text);
            default:
                throw new Error(outOfMemory);
        }
    }
}

/** Memory may also run out where the module cannot say so. */
function draw(module: Exports, sceneBytes: number, viewBytes: number): number {
    try {
        return module.draw(sceneBytes, viewBytes);
    } catch (error) {
        throw error instanceof WebAssembly.RuntimeError ? new Error(outOfMemory) : error;
    }
}
