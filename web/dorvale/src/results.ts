// Finished annotations, as the module packs them: words of 4 bytes, doubles at even ones.
import type { Call, CallDescription, HandedBackDescription, MemberDescription } from "./calls.js";
import type {
    Annotation,
    ArcCurve,
    Arrow,
    CallResult,
    Curve,
    ExtensionLine,
    Frame,
    HandedBackValue,
    Leader,
    Located,
    Measured,
    Rgba,
    SpecialLine,
    Text,
    Vector,
} from "./types.js";

const curveType = { none: 0, polyline: 1, arc: 2, line: 3 } as const;
const noArrow = 0;

/** Reads words one behind the other. What it gives is a copy. */
export class WordReader {
    readonly integers: Int32Array;
    readonly doubles: Float64Array;
    private readonly floats_: Float32Array;
    private at_ = 0;

    constructor(readonly buffer: ArrayBuffer) {
        this.integers = new Int32Array(buffer);
        this.floats_ = new Float32Array(buffer);
        this.doubles = new Float64Array(buffer, 0, buffer.byteLength >> 3);
    }

    from(at: number): this {
        this.at_ = at;
        return this;
    }

    integer(): number {
        return this.integers[this.at_++]!;
    }

    boolean(): boolean {
        return this.integers[this.at_++] !== 0;
    }

    float(): number {
        return this.floats_[this.at_++]!;
    }

    pair(): [number, number] {
        const at = (this.at_ += 2);
        return [this.floats_[at - 2]!, this.floats_[at - 1]!];
    }

    vector(): Vector {
        const at = (this.at_ += 3);
        return [this.floats_[at - 3]!, this.floats_[at - 2]!, this.floats_[at - 1]!];
    }

    rgba(): Rgba {
        const [r, g] = this.pair();
        const [b, a] = this.pair();
        return [r, g, b, a];
    }

    floats(count: number): Float32Array {
        const floats = new Float32Array(count);
        for (let i = 0; i < count; ++i) {
            floats[i] = this.floats_[this.at_++]!;
        }
        return floats;
    }

    double(): number {
        const at = (this.at_ + 1) >> 1;
        this.at_ = 2 * at + 2;
        return this.doubles[at]!;
    }

    point(): Vector {
        return [this.double(), this.double(), this.double()];
    }

    doubleList(count: number): Float64Array {
        const at = (this.at_ + 1) >> 1;
        this.at_ = 2 * (at + count);
        return this.doubles.slice(at, at + count);
    }

    text(): string {
        const length = this.integer();
        const first = 4 * this.at_;
        this.at_ += (length + 1) >> 1;
        // Longer ones would not fit among a function's arguments.
        if (length > 64) {
            return decoder.decode(new Uint16Array(this.buffer, first, length));
        }
        let text = "";
        for (let i = 0; i < length; i += 2) {
            const two = this.integers[(first >> 2) + (i >> 1)]!;
            text += String.fromCharCode(two & 0xffff);
            if (i + 1 < length) {
                text += String.fromCharCode(two >>> 16);
            }
        }
        return text;
    }

    list<T>(read: (words: WordReader) => T): T[] {
        const items: T[] = [];
        for (let left = this.integer(); left > 0; --left) {
            items.push(read(this));
        }
        return items;
    }
}

const decoder = { decode: (units: Uint16Array): string => {
    let text = "";
    for (let i = 0; i < units.length; i += 4096) {
        text += String.fromCharCode(...units.subarray(i, i + 4096));
    }
    return text;
} };

function readArc(words: WordReader, usage: number, displayType: number, display: boolean): ArcCurve {
    const centre = words.vector();
    const normal = words.vector();
    const from = words.vector();
    const to = words.vector();
    const originDirection = words.vector();
    const axes: [Vector, Vector, Vector] = [words.vector(), words.vector(), words.vector()];
    const radii = words.pair();
    return {
        kind: "arc",
        centre,
        normal,
        radius: radii[0],
        from,
        to,
        originDirection,
        axes,
        radii,
        parameter: words.pair(),
        domain: words.pair(),
        usage,
        displayType,
        display,
    };
}

function readCurve(words: WordReader): Curve | null {
    const type = words.integer();
    if (type === curveType.none) {
        return null;
    }
    const usage = words.integer();
    const displayType = words.integer();
    const display = words.boolean();
    switch (type) {
        case curveType.arc:
            return readArc(words, usage, displayType, display);
        case curveType.line: {
            const points = words.floats(3 * words.integer());
            return { kind: "line", points, usage, displayType, display };
        }
        default: {
            const points = words.floats(3 * words.integer());
            const domain = words.pair();
            return { kind: "polyline", points, domain, usage, displayType, display };
        }
    }
}

function readLeader(words: WordReader): Leader {
    const type = words.integer();
    const stub = words.boolean();
    const terminator = words.integer();
    const [length, width] = words.pair();
    const tip = words.vector();
    const direction = words.vector();
    const head: Arrow = { type: terminator, tip, direction, length, width };
    const arrow = terminator === noArrow ? null : head;
    return { curve: readCurve(words), arrow, terminator: head, type, stub };
}

function readExtensionLine(words: WordReader): ExtensionLine {
    const type = words.integer();
    const display = words.boolean();
    return { curve: readCurve(words), display, type };
}

function readSpecialLine(words: WordReader): SpecialLine {
    const usage = words.integer();
    return { curves: words.list(readCurve) as Curve[], usage };
}

function readText(words: WordReader, block: number): Text {
    const text = words.text();
    const font = words.text();
    const location = words.vector();
    const xAxis = words.vector();
    const yAxis = words.vector();
    const [width, height] = words.pair();
    const spacing = words.float();
    const usage = words.integer();
    return { text, location, xAxis, yAxis, height, width, spacing, font, usage, block };
}

function readEnvelope(words: WordReader): Frame["envelope"] {
    return {
        frame: words.boolean(),
        backgroundColour: words.rgba(),
        frameColour: words.rgba(),
        anchorType: words.integer(),
        anchor: words.vector(),
    };
}

function readHandedBack(words: WordReader, type: number): HandedBackValue {
    switch (type) {
        case 0:
            return words.integer();
        case 1:
            return words.integer() >>> 0;
        case 2:
            return words.point();
        case 3:
            return words.list((list) => list.point());
        default:
            return { start: words.vector(), end: words.vector() };
    }
}

const quantities = [null, "length", "angle"] as const;

function readCall(words: WordReader, calls: readonly Call[]): [CallResult, Float64Array[]] {
    const { description, name } = calls[words.integer()]!;
    const status = description.hasStatus ? words.integer() : null;
    const located: Located | null =
        description.hasLocate
            ? { point: words.point(), viewMatrix: words.doubleList(16) }
            : null;
    const handedBack: Record<string, HandedBackValue> = {};
    for (const member of description.handedBack) {
        handedBack[member.name] = readHandedBack(words, member.type);
    }
    const kind = quantities[words.integer() as 0 | 1 | 2];
    const value = words.double();
    const measured: Measured | null = kind === null ? null : { value, kind };
    const lines = words.list((list) => list.doubleList(6));
    return [{ call: name, status, located, handedBack, measured }, lines];
}

/** What is wrong with a label, and in which of its lines. */
export interface LabelMistake {
    readonly line: number;
    readonly what: string;
}

export function readAnnotation(
    words: WordReader,
    calls: readonly Call[],
): Annotation | LabelMistake {
    const line = words.integer();
    if (line >= 0) {
        return { line, what: words.text() };
    }
    const plane = words.floats(16);
    const type = words.integer();
    const flags = {
        dim: words.integer(),
        display: words.boolean(),
        screenParallel: words.boolean(),
    };
    const leaders = words.list(readLeader);
    const extensionLines = words.list(readExtensionLine);
    const specialLines = words.list(readSpecialLine);
    const texts: Text[] = [];
    const frames: Frame[] = [];
    for (let blocks = words.integer(), block = 0; block < blocks; ++block) {
        const box: [Vector, Vector] = [words.vector(), words.vector()];
        frames.push({ box, envelope: words.boolean() ? readEnvelope(words) : null });
        for (let left = words.integer(); left > 0; --left) {
            texts.push(readText(words, block));
        }
    }
    const results: CallResult[] = [];
    const callerLines: Float64Array[] = [];
    let status: number | null = null;
    let located: Located | null = null;
    let measured: Measured | null = null;
    const handedBack: Record<string, HandedBackValue> = {};
    for (let left = words.integer(); left > 0; --left) {
        const [result, lines] = readCall(words, calls);
        results.push(result);
        callerLines.push(...lines);
        status = result.status ?? status;
        located = result.located ?? located;
        measured = result.measured ?? measured;
        Object.assign(handedBack, result.handedBack);
    }
    return {
        plane,
        leaders,
        extensionLines,
        specialLines,
        callerLines,
        texts,
        frames,
        type,
        flags,
        status,
        located,
        handedBack,
        measured,
        calls: results,
    };
}

const readMember = (words: WordReader): MemberDescription => ({
    name: words.text(),
    kind: words.integer(),
    isNeeded: words.boolean(),
    with: words.text(),
    otherwise: words.integer(),
    count: words.integer(),
});

const readHandedBackMember = (words: WordReader): HandedBackDescription => ({
    name: words.text(),
    type: words.integer(),
});

/** The module's table of calls. */
export const readCalls = (words: WordReader): CallDescription[] =>
    words.list(() => ({
        call: words.text(),
        changes: words.boolean(),
        hasStatus: words.boolean(),
        hasLocate: words.boolean(),
        measures: words.integer(),
        members: words.list(readMember),
        handedBack: words.list(readHandedBackMember),
    }));
