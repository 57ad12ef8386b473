// Picking and placing, one click after the other.
import { type Candidate, fitting, type Pick } from "./fit.js";
import { areSame } from "./things.js";
import type { View } from "./view.js";

/** What has been picked, and which of the dimensions that fit was chosen. */
export interface Picking {
    readonly picks: readonly Pick[];
    readonly choice: number;
    /** Whether a note is to be placed. */
    readonly note: boolean;
}

export const idle: Picking = { picks: [], choice: 0, note: false };

/** The dimension that follows the mouse. */
export function chosen({ picks, choice }: Picking, view: View): Candidate | undefined {
    const fits = fitting(picks, view);
    return fits[choice % Math.max(1, fits.length)];
}

/** What a click on a thing would have follow the mouse; undefined where it would not be picked. */
export function offered(picking: Picking, hovered: Pick | undefined, view: View): Candidate | undefined {
    if (hovered === undefined || picking.note || picking.picks.length > 1) {
        return undefined;
    }
    return fitting([...picking.picks, hovered], view)[0];
}

export type Clicked =
    | { readonly does: "pick"; readonly picking: Picking }
    | { readonly does: "place" }
    | { readonly does: "nothing" };

/** A click picks what fits beside the first pick, and otherwise places what follows the mouse. */
export function clicked(picking: Picking, hovered: Pick | undefined, view: View): Clicked {
    const isFirst = picking.picks.length === 0;
    if (hovered !== undefined && (isFirst || offered(picking, hovered, view) !== undefined)) {
        return { does: "pick", picking: { ...idle, picks: [...picking.picks, hovered] } };
    }
    if (picking.note || chosen(picking, view) !== undefined) {
        return { does: "place" };
    }
    // From a point there is nothing to place: another thing takes its turn.
    return hovered !== undefined && !areSame(hovered.thing, picking.picks[0]?.thing)
        ? { does: "pick", picking: { ...idle, picks: [hovered] } }
        : { does: "nothing" };
}

/** The next of the kinds and planes that fit, round and round. */
export const another = (picking: Picking, steps = 1, count: number): Picking => ({
    ...picking,
    choice: count > 0 ? (picking.choice + steps + count) % count : 0,
});
