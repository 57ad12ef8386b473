// Times the package beside the module's bare exports and beside the library compiled natively.
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import path from "node:path";

import { dist, load, radius, top } from "../tests/package.mjs";

const native = process.argv[2];
const dorvale = await load();
const exports = dorvale.module_;

const edge = (start, end) => ({ start, end });
const angle = {
    call: "PMICreateAngleDim3D",
    edge1: edge([0, 0, 0], [60, 0, 0]),
    pick1: [40, 0, 0],
    edge2: edge([0, 0, 0], [0, 60, 0]),
    pick2: [0, 40, 0],
    locate: [30, 25, 0],
    height: 5,
};
const distance = {
    call: "PMICreateLinDistDim3D",
    edge1: edge([0, 0, 0], [60, 0, 0]),
    edge2: edge([0, 40, 0], [60, 40, 0]),
    locate: [75, 20, 0],
    height: 5,
};
const mixed = Array.from({ length: 10000 }, (_, i) => [radius, angle, distance][i % 3]);
const cases = { radius: [radius], "3D angle": [angle], "distance": [distance], mixed };

/** The least nanoseconds of many short passes: a shared machine is slow for seconds at a time. */
function nanoseconds(calls, work) {
    for (let i = 0; i < 30 * calls; ++i) {
        work();
    }
    let least = Infinity;
    for (let pass = 0; pass < (calls > 1 ? 300 : 30); ++pass) {
        const start = performance.now();
        for (let i = 0; i < calls; ++i) {
            work();
        }
        least = Math.min(least, ((performance.now() - start) * 1e6) / calls);
    }
    return least;
}

/** The module's own call: on rows that stand in its memory, and with rows in and results out. */
function rawCalls(recipes, { numbers, integers, units }) {
    const { memory } = exports;
    const write = () => {
        const at = exports.reserve(16 + numbers.length, integers.length, units.length);
        const doubles = new Float64Array(memory.buffer, at, 16 + numbers.length);
        doubles.set(top);
        doubles.set(numbers, 16);
        new Int32Array(memory.buffer, at + doubles.byteLength, integers.length).set(integers);
    };
    const copy = () => {
        write();
        const at = exports.build(recipes.length);
        const words = new Int32Array(memory.buffer, at, 1)[0];
        return memory.buffer.slice(at, at + 4 * words);
    };
    write();
    return { bare: () => exports.build(recipes.length), copy };
}

const folder = mkdtempSync(path.join(tmpdir(), "dorvale-bench-"));
const rows = path.join(folder, "rows.txt");
const list = (values) => `${values.length} ${Array.from(values).join(" ")}\n`;
const kept = Object.fromEntries(Object.entries(cases).map(([name, recipes]) => [name, dorvale.keep(recipes)]));
writeFileSync(
    rows,
    Object.entries(kept)
        .map(([name, { length, rows }]) => {
            const numbers = list([...top, ...rows.numbers]);
            return `${name.replace(" ", "_")} ${length} ${numbers}${list(rows.integers)}`;
        })
        .join(""),
);
const natively = () =>
    new Map(
        execFileSync(native, [rows], { encoding: "utf8" })
            .trim()
            .split("\n")
            .map((line) => line.split(" "))
            .map(([name, time]) => [name.replace("_", " "), Number(time)]),
    );

// Native passes before and after: the machine's phases meet both.
const first = natively();
const times = new Map();
for (const [name, recipes] of Object.entries(cases)) {
    const calls = recipes.length > 1 ? 1 : 100;
    const { bare, copy } = rawCalls(recipes, kept[name].rows);
    const raw = nanoseconds(calls, bare) / recipes.length;
    const copied = nanoseconds(calls, copy) / recipes.length;
    const all = nanoseconds(calls, () => dorvale.buildAll(kept[name], top)) / recipes.length;
    const one = recipes.length > 1 ? NaN : nanoseconds(calls, () => dorvale.build(recipes[0], top));
    times.set(name, { raw, copied, all, one });
}
const second = natively();

const ratio = (value) => (Number.isNaN(value) ? "" : value.toFixed(2));
console.log("| | native ns | raw call / native | `build` / raw call and copy | `buildAll` / raw call |");
console.log("|---|---|---|---|---|");
for (const [name, { raw, copied, all, one }] of times) {
    const least = Math.min(first.get(name), second.get(name));
    const columns = [raw / least, one / copied, all / raw].map(ratio);
    console.log(`| ${name} | ${least.toFixed(0)} | ${columns.join(" | ")} |`);
}
console.log(`\n${(readFileSync(`${dist}dorvale.wasm`).length / 1000).toFixed(0)} KB`);
