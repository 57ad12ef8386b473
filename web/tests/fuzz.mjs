// Random recipes, right and wrong: `node web/tests/fuzz.mjs COUNT [SEED]`. Each is built or refused
// with an error of the package's own, and leaves the module as it was.
import assert from "node:assert/strict";
import { pathToFileURL } from "node:url";

import { load, RecipeError, radius, toModel, top } from "./package.mjs";

/** Numbers from 0 to 1, the same from the same seed. */
function randomFrom(seed) {
    let state = seed >>> 0;
    return () => {
        state = (state + 0x6d2b79f5) >>> 0;
        let t = Math.imul(state ^ (state >>> 15), state | 1);
        t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
        return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
    };
}

const hostile = [0, -0, NaN, Infinity, -Infinity, 1e-310, 1e300, -1e38, 2147483648, 0.5, 1, -1];
const strays = [null, true, "", "p", "line", "\ud800", [], {}, [1, 2], "#102030", 1.5, -7];

/** Makes recipes by what the calls say of themselves. */
class Maker {
    constructor(calls, random) {
        this.calls = calls;
        this.random = random;
    }
    pick(list) {
        return list[Math.floor(this.random() * list.length)];
    }
    chance(share) {
        return this.random() < share;
    }
    number() {
        return this.chance(0.1) ? this.pick(hostile) : Math.round(this.random() * 400 - 200) / 4;
    }
    vector() {
        const vector = [this.number(), this.number(), this.number()];
        return this.chance(0.1) ? new Float32Array(vector) : vector;
    }
    point() {
        return this.chance(0.1) ? this.pick(["p", "q", "nowhere"]) : this.vector();
    }
    line() {
        return { start: this.point(), end: this.point() };
    }
    arc() {
        const arc = { centre: this.point(), normal: this.vector(), radius: this.number() };
        const ends = this.chance(0.3) ? { start: this.point(), end: this.point() } : {};
        return { ...arc, ...ends };
    }
    edge(shapes) {
        const makers = [
            ...(shapes & 1 ? [() => this.line(), () => ({ type: "line", ...this.line() })] : []),
            ...(shapes & 2 ? [() => this.arc(), () => ({ type: "arc", ...this.arc() })] : []),
            ...(shapes & 4 ? [() => this.point()] : []),
            () => this.pick(["base", "hole", "nothing"]),
        ];
        return this.pick(makers)();
    }
    text() {
        const letters = ["a", "Ä", "⌀", "𝛼", "\udc00", "\\", "\n", "{", "}", "{}", "{.3}", "%"];
        return Array.from({ length: this.random() * 9 }, () => this.pick(letters)).join("");
    }
    view() {
        return this.pick(["top", "iso", null, "left", Array.from(top, () => this.number())]);
    }
    list(length, make) {
        return Array.from({ length }, make);
    }
    value({ kind, count }) {
        const makers = [
            () => this.number(),
            () => Math.round(this.number()),
            () => this.chance(0.5),
            () => this.pick(["#000000", "#fFcC00", "#12345"]),
            () => this.text(),
            () =>
                this.list(this.random() * 4, () =>
                    this.chance(0.5) ? this.text() : { kind: 1, text: this.text() },
                ),
            () => this.vector(),
            () => this.point(),
            () => this.list(this.chance(0.05) ? 5 : count, () => this.point()),
            () => this.edge(count),
            () => this.view(),
        ];
        return this.chance(0.02) ? this.pick(strays) : makers[kind]();
    }
    call() {
        const { call, members } = this.pick(this.calls);
        const given = members.filter((member) => member.isNeeded || this.chance(0.3));
        const made = Object.fromEntries(given.map((member) => [member.name, this.value(member)]));
        return { call: this.chance(0.01) ? this.pick(strays) : call, ...made };
    }
    finish() {
        return {
            ...(this.chance(0.5) ? { arrow: this.pick(["fit", this.number()]) } : {}),
            ...(this.chance(0.5) ? { gap: Math.abs(this.number()) } : {}),
            ...(this.chance(0.3) ? { label: this.chance(0.5) ? "{}" : this.text() } : {}),
            ...(this.chance(0.5) ? { readable: this.chance(0.5) } : {}),
            ...(this.chance(0.3) ? { spacing: Math.abs(this.number()) } : {}),
        };
    }
    recipe() {
        const calls = this.chance(0.2) ? { calls: this.list(this.random() * 5, () => this.call()) } : this.call();
        return {
            ...(this.chance(0.1) ? { display: this.chance(0.5), type: 3 } : {}),
            ...(this.chance(0.3) ? { finish: this.finish() } : {}),
            ...calls,
        };
    }
}

/** @returns how many were built and how many refused */
export async function fuzz(count, seed) {
    const dorvale = await load();
    const maker = new Maker(dorvale.calls, randomFrom(seed));
    const scene = {
        points: { p: [1, 2, 3], q: [0, 0, 0] },
        edges: [
            { id: "base", type: "line", start: "q", end: [60, 0, 0] },
            { id: "hole", type: "arc", centre: "p", normal: [0, 0, 1], radius: 8 },
        ],
    };
    const expected = dorvale.build(radius, top);
    const done = { built: 0, refused: 0 };
    for (let i = 0; i < count; ++i) {
        const recipe = maker.recipe();
        try {
            toModel(dorvale.build(recipe, maker.view(), scene));
            ++done.built;
        } catch (error) {
            assert.ok(error instanceof RecipeError, error.stack);
            ++done.refused;
        }
        if (i % 100 === 0) {
            assert.deepEqual(dorvale.build(radius, top), expected);
        }
    }
    assert.ok(dorvale.memorySize < 32 << 20);
    return done;
}

if (import.meta.url === pathToFileURL(process.argv[1] ?? "").href) {
    const [count = "10000", seed = String(Date.now() >>> 0)] = process.argv.slice(2);
    console.log(`seed ${seed}`, await fuzz(Number(count), Number(seed)));
}
