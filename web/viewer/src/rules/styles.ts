// The size of an annotation's text and arrow heads, and its frame.
import type { Recipe } from "dorvale";

type Members = Readonly<Record<string, unknown>>;

/** Members of an annotation that its calls do not have. */
const own = ["name", "type", "display", "screenParallel", "finish"];
const frameCall = "PMISetEnvelope";

const membersOf = (recipe: Recipe): Members => recipe as unknown as Members;
const recipeOf = (members: Members): Recipe => members as unknown as Recipe;

const callsOf = (recipe: Recipe): readonly Members[] | undefined =>
    membersOf(recipe)["calls"] as readonly Members[] | undefined;

const finishOf = (recipe: Recipe): Members => (membersOf(recipe)["finish"] ?? {}) as Members;

/** The height of its text. */
export function heightOf(recipe: Recipe): number | undefined {
    const calls = callsOf(recipe) ?? [membersOf(recipe)];
    return calls.find(({ height }) => height !== undefined)?.["height"] as number | undefined;
}

/** With text of another height; the gap to its line grows alike. */
export function withHeight(recipe: Recipe, height: number): Recipe {
    const old = heightOf(recipe);
    if (old === undefined) {
        return recipe;
    }
    const taller = (call: Members): Members => (call["height"] === undefined ? call : { ...call, height });
    const calls = callsOf(recipe);
    const members = calls ? { ...membersOf(recipe), calls: calls.map(taller) } : taller(membersOf(recipe));
    const { gap } = finishOf(recipe);
    const finish =
        typeof gap === "number" && old > 0
            ? { finish: { ...finishOf(recipe), gap: Number(((gap * height) / old).toPrecision(4)) } }
            : {};
    return recipeOf({ ...members, ...finish });
}

/** The length of its arrow heads; undefined where it does not say. */
export const arrowOf = (recipe: Recipe): number | "fit" | undefined =>
    finishOf(recipe)["arrow"] as number | "fit" | undefined;

export const withArrow = (recipe: Recipe, arrow: number | "fit"): Recipe =>
    recipeOf({ ...membersOf(recipe), finish: { ...finishOf(recipe), arrow } });

const frames = (call: Members): boolean => call["call"] === frameCall;

export const isFramed = (recipe: Recipe): boolean => callsOf(recipe)?.some(frames) ?? false;

/** With a frame around its text, or without. */
export function withFrame(recipe: Recipe, framed: boolean): Recipe {
    if (framed === isFramed(recipe)) {
        return recipe;
    }
    const members = membersOf(recipe);
    if (!framed) {
        return recipeOf({ ...members, calls: callsOf(recipe)!.filter((call) => !frames(call)) });
    }
    const frame = { call: frameCall, backgroundColour: "#ffffff", frameColour: "#123c8c" };
    const calls = callsOf(recipe);
    if (calls !== undefined) {
        return recipeOf({ ...members, calls: [...calls, frame] });
    }
    const pick = (isOwn: boolean) =>
        Object.fromEntries(Object.entries(members).filter(([name]) => own.includes(name) === isOwn));
    return recipeOf({ ...pick(true), calls: [pick(false), frame] });
}
