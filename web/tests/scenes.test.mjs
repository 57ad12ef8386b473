// The package beside `pmi-host`: the same annotations, and the same complaints.
import assert from "node:assert/strict";
import test from "node:test";

import { dumpOf } from "./dump.mjs";
import { complaint, dump, load, radius as untyped, read, RecipeError, Scene, scenes } from "./package.mjs";

const dorvale = await load();

/** Numbers of an annotation and of lines that a call has moved are single precision. */
const isDouble = (path) => /handedBack|measured/.test(path) && !/\.(start|end)\./.test(path);

/** The largest number of an annotation. */
const reachOf = (value) =>
    typeof value === "number"
        ? Math.abs(value)
        : Math.max(0, ...Object.values(value ?? {}).filter((v) => typeof v !== "string").map(reachOf));

/**
 * What two systems' arc tangents in single precision may make of an annotation with an arc: the last
 * bit of its angles, and of what stands where they say.
 */
const slackOf = (annotation) =>
    JSON.stringify(annotation).includes('"curveType":2') ? 2 ** -23 * reachOf(annotation) : 0;

/** What the two have in place of each other. */
function compare(ours, theirs, path, differences, slack) {
    if (typeof ours === "number" && typeof theirs === "number") {
        const same = isDouble(path)
            ? Math.abs(ours - theirs) <= 1e-12 * Math.max(1, Math.abs(theirs))
            : Math.abs(Math.fround(ours) - Math.fround(theirs)) <= slack;
        if (!same) {
            differences.push(`${path}: ${ours} is not ${theirs}`);
        }
    } else if (ours === null || theirs === null || typeof ours !== "object") {
        if (ours !== theirs) {
            differences.push(`${path}: ${ours} is not ${theirs}`);
        }
    } else {
        assert.deepEqual(Object.keys(ours), Object.keys(theirs), path);
        Object.keys(ours).forEach((key) =>
            compare(ours[key], theirs[key], `${path}.${key}`, differences, slack),
        );
    }
}

function differencesOf(scene) {
    const built = dorvale.buildAll(scene.annotations, undefined, new Scene(scene));
    const ours = Array.from(built, (annotation, i) =>
        dumpOf(annotation, scene.annotations[i].name),
    );
    const differences = [];
    const theirs = dump(scene).annotations;
    assert.equal(ours.length, theirs.length);
    theirs.forEach((annotation, i) => {
        compare(ours[i], annotation, `annotations.${i}`, differences, slackOf(annotation));
    });
    return differences;
}

for (const [name, scene] of scenes) {
    test(`${name} has the annotations that pmi-host dumps`, () => {
        assert.ok(scene.annotations.length > 0);
        assert.deepEqual(differencesOf(scene), []);
    });
}

/** The page's examples that make annotations, as scenes; those without one refer to the first. */
function examples() {
    const blocks = read("docs/scene.md").matchAll(/```json\n([^]*?)```/g);
    const [page, ...others] = Array.from(blocks, ([, json]) => JSON.parse(json));
    const recipes = others.filter((example) => "call" in example || "calls" in example);
    page.annotations = [...page.annotations, ...recipes];
    return [page, ...others.filter((example) => "annotations" in example)];
}

test("every example of docs/scene.md is a recipe, and gives what it gives in a scene", () => {
    const called = new Set();
    for (const scene of examples()) {
        for (const recipe of scene.annotations) {
            assert.ok(dorvale.build(recipe, "top", scene).plane);
            (recipe.calls ?? [recipe]).forEach(({ call }) => called.add(call));
        }
        assert.deepEqual(differencesOf(scene), []);
    }
    assert.deepEqual(called, new Set(dorvale.calls.map(({ call }) => call)));
});

const circle = { centre: [0, 0, 0], normal: [0, 0, 1], radius: 10, type: "arc" };
// Scenes name the type of every edge.
const radius = { ...untyped, circle };
const edge = { type: "line", start: [0, 0, 0], end: [60, 0, 0] };
const length = { call: "PMICreateLinDotDim3D", edge, point: "p", locate: [0, 0, 0], height: 5 };
const note = { call: "PMICreateNote3D", lines: ["A"], text: [0, 0, 0], height: 5 };
const distance = { call: "PMICreateAxToAx", points: [], text: [0, 0, 0], height: 5 };
const frame = { call: "FillEnvelope", backgroundColour: "#fff", frameColour: "#ffffff" };
const model = { points: { p: [1, 2, 3] }, edges: [{ id: "e", ...edge }, { id: "h", ...circle }] };

const mistakes = [
    [{}],
    [7],
    [null],
    [{ call: 1 }],
    [{ call: "PMICreate" }],
    [{ calls: {} }],
    [{ calls: [radius], call: "x" }],
    [{ calls: [radius, { ...radius, height: "5" }] }],
    [{ ...radius, height: undefined }],
    [{ ...radius, height: null }],
    [{ ...radius, heigth: 3 }],
    [{ ...radius, type: 1.5 }],
    [{ ...radius, type: 3e9 }],
    [{ ...radius, name: [] }],
    [{ ...radius, display: "yes" }],
    [{ ...radius, locate: [1, 2] }],
    [{ ...radius, locate: [1] }],
    [{ ...radius, locate: [1, 2, true] }],
    [{ ...radius, locate: "nowhere" }],
    [{ ...radius, circle: "nothing" }],
    [{ ...radius, circle: "e" }],
    [{ ...radius, circle: 5 }],
    [{ ...radius, circle: edge }],
    [{ ...radius, circle: { ...circle, type: "ring" } }],
    [{ ...radius, circle: { ...circle, radius: [] } }],
    [{ ...radius, circle: { ...circle, centre: "h" } }],
    [{ ...radius, circle: { ...circle, bogus: 1 } }],
    [{ ...radius, view: "rear" }],
    [{ ...radius, view: [1, 2] }],
    [{ ...radius, view: Array(16).fill("a") }],
    [{ ...radius, views: "top" }],
    [{ ...radius, views: ["top", "rear"] }],
    [{ ...length, edge: "h" }],
    [{ ...length, edge: undefined }],
    [{ ...length, point: "q" }],
    [{ ...length, point: [0, 0] }],
    [{ ...note, leader: true }],
    [{ ...note, leader: 1 }],
    [{ ...note, lines: "A" }],
    [{ ...note, lines: ["A", 5] }],
    [{ ...note, lines: [{ kind: 1 }] }],
    [{ ...note, lines: [{ kind: 1, text: "A", size: 2 }] }],
    [{ ...note, extraLine: {} }],
    [{ ...distance }],
    [{ ...distance, points: [1, 2, 3, 4, 5, 6] }],
    [{ ...distance, points: {} }],
    [{ calls: [note, frame] }],
    [{ ...radius, finish: { arrow: -1 } }],
    [{ ...radius, finish: { arrow: "big" } }],
    [{ ...radius, finish: { gap: -2 } }],
    [{ ...radius, finish: { label: [] } }],
    [{ ...radius, finish: { label: ["{}", "{.99}"] } }],
    [{ ...radius, finish: { label: "" } }],
    [{ ...radius, finish: { readable: 1 } }],
    [{ ...radius, finish: { spacing: -1 } }],
    [{ ...radius, finish: { colour: 1 } }],
    [{ ...radius, finish: 3 }],
    [{ ...note, finish: { label: "{}" } }],
    [radius, { title: 5 }],
    [radius, { view: 5 }],
    [radius, { lines: "din" }],
    [radius, { points: [1] }],
    [radius, { points: { p: [1, 2] } }],
    [radius, { edges: {} }],
    [radius, { edges: [{ start: [0, 0, 0], end: [1, 0, 0] }] }],
    [radius, { edges: [{ id: "e", ...edge }, { id: "e", ...edge }] }],
    [radius, { edges: [{ id: 4, ...edge }] }],
    [radius, { edges: [{ ...edge, hidden: 2 }] }],
    [radius, { finish: { gap: "wide" } }],
    [radius, { extra: 1 }],
];

test("mistakes are told in the words of pmi-host", () => {
    for (const [recipe, members = {}] of mistakes) {
        const scene = { ...model, ...members, annotations: [recipe] };
        // What may have been meant is more than the package says.
        const expected = complaint(scene).replace(/; "[^"]*" may be meant.*/, "");
        assert.notEqual(expected, "", `pmi-host accepts ${JSON.stringify(scene)}`);
        assert.throws(
            () => [...dorvale.buildAll([recipe], undefined, scene)],
            (error) => {
                assert.ok(error instanceof RecipeError, error);
                assert.equal(error.message, expected);
                assert.equal(
                    error.message,
                    error.path === "" ? error.expected : `${error.path}: ${error.expected}`,
                );
                return true;
            },
        );
    }
});
