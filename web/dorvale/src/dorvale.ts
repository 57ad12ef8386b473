import { packRecipe } from "./annotation.js";
import { type CallDescription, CallTable } from "./calls.js";
import { OutOfMemoryError, RecipeError } from "./errors.js";
import { type LabelMistake, readAnnotation, readCalls, WordReader } from "./results.js";
import type { Recipe, View } from "./recipes.js";
import { type Rows, RowWriter } from "./rows.js";
import { Scene } from "./scene.js";
import type { Annotation } from "./types.js";
import { numberFrom, itemOf, viewFrom, type Where } from "./values.js";
import { packFormat, type ValueFormat } from "./valuetext.js";

/** What the module exports: plain calls over its memory. */
export interface Exports {
    readonly memory: WebAssembly.Memory;
    _initialize(): void;
    reserve(numbers: number, integers: number, units: number): number;
    describe(): number;
    build(count: number): number;
    valueText(): number;
    stackSave(): number;
    stackRestore(stack: number): void;
}

const whole: Where = () => "";
const annotations: Where = () => "annotations";
const viewLength = 16;

/** Recipes that are packed, ready to be built again and again, in any view. */
export class KeptRecipes {
    /** @internal */
    constructor(
        readonly length: number,
        /** @internal */
        readonly rows: Rows,
    ) {}
}

/** Annotations in one buffer; each is read when it is asked for. */
export class Annotations implements Iterable<Annotation> {
    /** @internal */
    constructor(
        readonly length: number,
        /** What the module packed; web/binding/results.h describes it. */
        readonly buffer: ArrayBuffer,
        private readonly read_: (index: number) => Annotation,
    ) {}

    /** @throws RecipeError where the label of its `finish` cannot be */
    at(index: number): Annotation {
        if (!(index >= 0 && index < this.length)) {
            throw new RangeError(`there is no annotation ${index} of ${this.length}`);
        }
        return this.read_(index);
    }

    *[Symbol.iterator](): Iterator<Annotation> {
        for (let i = 0; i < this.length; ++i) {
            yield this.at(i);
        }
    }
}

/** The library: `load` makes one. It keeps no state between calls. */
export class Dorvale {
    /** The calls that there are, as the library describes them. */
    readonly calls: readonly CallDescription[];
    private readonly table_: CallTable;
    private readonly writer_ = new RowWriter();
    private readonly stack_: number;
    /** The module's memory. */
    private words_ = new WordReader(new ArrayBuffer(0));
    private units_ = new Uint16Array();

    /** @internal */
    constructor(private readonly module_: Exports) {
        module_._initialize();
        this.stack_ = module_.stackSave();
        this.calls = readCalls(this.read_(this.run_(() => module_.describe()) + 1));
        this.table_ = new CallTable(this.calls);
    }

    /**
     * Builds one annotation.
     *
     * @param view how the model is looked at: a standard view's name or 16 numbers; the scene's
     * unless said otherwise, and `top` without a scene
     * @param scene what the recipe may name: points, edges by their ids, and an inherited `finish`
     * @throws RecipeError where something is wrong with the recipe
     * @throws OutOfMemoryError
     */
    build(recipe: Recipe, view?: View | null, scene?: Scene | object): Annotation {
        const model = sceneFrom(scene);
        this.pack_([recipe], model, () => whole);
        const at = this.build_(1, view, model);
        return this.readAnnotation_(this.words_, at, 0, whole);
    }

    /**
     * Builds many annotations into one buffer. A recipe's place stands in its errors:
     * `annotations[3].circle: ...`. Arguments and errors as of `build`.
     */
    buildAll(
        recipes: ArrayLike<Recipe> | KeptRecipes,
        view?: View | null,
        scene?: Scene | object,
    ): Annotations {
        const model = sceneFrom(scene);
        const kept = recipes instanceof KeptRecipes ? recipes : undefined;
        if (kept === undefined) {
            this.pack_(recipes as ArrayLike<Recipe>, model, (i) => itemOf(annotations, i));
        }
        const at = this.build_(recipes.length, view, model, kept?.rows);
        const end = at + this.words_.integers[at]!;
        const buffer = this.words_.buffer.slice(4 * at, 4 * end);
        const words = new WordReader(buffer);
        return new Annotations(recipes.length, buffer, (i) =>
            this.readAnnotation_(words, 0, i, itemOf(annotations, i)),
        );
    }

    /** Packs recipes once, for `buildAll`. What they name in the scene is taken now. */
    keep(recipes: ArrayLike<Recipe>, scene?: Scene | object): KeptRecipes {
        this.pack_(recipes, sceneFrom(scene), (i) => itemOf(annotations, i));
        return new KeptRecipes(recipes.length, this.writer_.toRows());
    }

    /** The size of the module's memory in bytes. It is used again from call to call. */
    get memorySize(): number {
        return this.module_.memory.buffer.byteLength;
    }

    /**
     * The text of a value.
     *
     * @param format `length` as dimensions show it, `angle` (degrees) likewise, or any other format
     * @throws RecipeError for a negative length, and for a format that there is not
     */
    valueText(value: number, format: "length" | "angle" | ValueFormat = "length"): string {
        const number = numberFrom(value, () => "value");
        const integers = packFormat(format);
        const at = this.reserve_(1, integers.length, 0);
        this.words_.doubles[at >> 1] = number;
        this.words_.integers.set(integers, at + 2);
        const words = this.run_(() => this.module_.valueText());
        if (this.words_.integers[words] === 1) {
            throw new RecipeError("value", "expected a number of at least 0");
        }
        return this.read_(words + 1).text();
    }

    private pack_(
        recipes: ArrayLike<Recipe>,
        scene: Scene,
        where: (index: number) => Where,
    ): void {
        this.writer_.clear();
        for (let i = 0; i < recipes.length; ++i) {
            packRecipe(recipes[i], this.table_, scene, this.writer_, where(i));
        }
    }

    /** Builds what has been written, or what was kept. @returns where the results are, in words */
    private build_(
        count: number,
        view: View | null | undefined,
        scene: Scene,
        kept?: Rows,
    ): number {
        const seen = viewFrom(view ?? scene.view, scene.views, () => "view");
        const writer = this.writer_;
        const numbers = viewLength + (kept?.numbers.length ?? writer.numbers.length);
        const integers = kept?.integers.length ?? writer.integerCount;
        const at = this.reserve_(numbers, integers, kept?.units.length ?? writer.unitCount);
        const { doubles, integers: all } = this.words_;
        const atNumber = at >> 1;
        const atInteger = 2 * (atNumber + numbers);
        const atUnit = 2 * (atInteger + integers);
        for (let i = 0; i < viewLength; ++i) {
            doubles[atNumber + i] = seen[i]!;
        }
        if (kept === undefined) {
            writer.writeTo(
                doubles,
                atNumber + viewLength,
                all,
                atInteger,
                this.units_,
                atUnit,
            );
        } else {
            doubles.set(kept.numbers, atNumber + viewLength);
            all.set(kept.integers, atInteger);
            this.units_.set(kept.units, atUnit);
        }
        return this.run_(() => this.module_.build(count));
    }

    private read_(at: number): WordReader {
        return this.words_.from(at);
    }

    /** @param at where the number of all words stands, and then where each annotation starts */
    private readAnnotation_(words: WordReader, at: number, index: number, where: Where): Annotation {
        const start = at + words.integers[at + index + 1]!;
        const read = readAnnotation(words.from(start), this.table_.calls);
        return "what" in read ? this.failLabel_(read, where) : read;
    }

    private failLabel_({ line, what }: LabelMistake, where: Where): never {
        const prefix = where();
        const member = `${prefix === "" ? "" : `${prefix}.`}finish.label`;
        throw new RecipeError(line > 0 ? `${member}[${line}]` : member, what);
    }

    private reserve_(numbers: number, integers: number, units: number): number {
        return this.run_(() => this.module_.reserve(numbers, integers, units));
    }

    /**
     * Calls the module, whose memory may grow meanwhile. What throws through the module leaves its
     * stack where it was.
     *
     * @returns an address, in words
     */
    private run_(call: () => number): number {
        try {
            const at = call() >>> 2;
            const { buffer } = this.module_.memory;
            if (this.words_.buffer !== buffer) {
                this.words_ = new WordReader(buffer);
                this.units_ = new Uint16Array(buffer);
            }
            return at;
        } catch (error) {
            this.module_.stackRestore(this.stack_);
            throw error instanceof WebAssembly.RuntimeError ? new OutOfMemoryError() : error;
        }
    }
}

const emptyScene = new Scene({});

function sceneFrom(scene: Scene | object | undefined): Scene {
    if (scene === undefined) {
        return emptyScene;
    }
    return scene instanceof Scene ? scene : new Scene(scene);
}

/** Makes the library of a compiled module. */
export async function instantiate(
    module: BufferSource | WebAssembly.Module,
): Promise<Dorvale> {
    const imports = {
        dorvale: {
            outOfMemory: () => {
                throw new OutOfMemoryError();
            },
        },
        env: { emscripten_notify_memory_growth: () => undefined },
        wasi_snapshot_preview1: { proc_exit: () => undefined },
    };
    const compiled =
        module instanceof WebAssembly.Module ? module : await WebAssembly.compile(module);
    const instance = await WebAssembly.instantiate(compiled, imports);
    return new Dorvale(instance.exports as unknown as Exports);
}
