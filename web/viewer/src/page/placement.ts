// Where an annotation can be taken and put.
import type { Recipe } from "dorvale";
import type { Vec } from "../rules/vec.js";

type Members = Record<string, unknown>;

export interface Placement {
    readonly member: "locate" | "text";
    /** The call that has it; none where the annotation is a call itself. */
    readonly call?: number;
}

const isPlacedBy = (call: Members): Placement["member"] | undefined =>
    call["locate"] !== undefined ? "locate" : call["text"] !== undefined ? "text" : undefined;

/** Which member says where an annotation stands. */
export function placementOf(recipe: Recipe): Placement | undefined {
    const members = recipe as unknown as Members;
    const calls = members["calls"] as Members[] | undefined;
    if (calls === undefined) {
        const member = isPlacedBy(members);
        return member && { member };
    }
    const call = calls.findIndex((c) => isPlacedBy(c) !== undefined);
    return call < 0 ? undefined : { member: isPlacedBy(calls[call]!)!, call };
}

/** The same annotation at another place. */
export function replaced(recipe: Recipe, { member, call }: Placement, place: Vec): Recipe {
    const members = recipe as unknown as Members;
    if (call === undefined) {
        return { ...members, [member]: [...place] } as unknown as Recipe;
    }
    const calls = (members["calls"] as Members[]).map((c, i) =>
        i === call ? { ...c, [member]: [...place] } : c,
    );
    return { ...members, calls } as unknown as Recipe;
}
