// Where an annotation can be taken and put.
import type { Annotation, Recipe } from "dorvale";
import { distance, size, type Vec } from "../rules/vec.js";

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

/** A place further than this from its plane, as a part of its coordinates, is not on it. */
const tolerance = 1e-5;

/** The place of an annotation, in the model: where it met the annotation's plane. */
export function placeIn({ located, plane: m }: Annotation): Vec | undefined {
    if (located === null) {
        return undefined;
    }
    const [u, v, w] = located.point;
    return [0, 1, 2].map(
        (i) => u * m[i]! + v * m[4 + i]! + w * m[8 + i]! + m[12 + i]!,
    ) as unknown as Vec;
}

/**
 * The annotation with its place on its plane. A place off it is one of the line of sight, and would
 * have the annotation slide away when the view turns.
 *
 * @param built as it is seen in the view that the place was picked in
 * @param point the coordinates of a member that is a point
 */
export function settled(recipe: Recipe, built: Annotation, point: (value: unknown) => Vec): Recipe {
    const placement = placementOf(recipe);
    const place = placeIn(built);
    if (placement?.member !== "locate" || place === undefined) {
        return recipe;
    }
    const members = recipe as unknown as Members;
    const call = (members["calls"] as Members[] | undefined)?.[placement.call!] ?? members;
    const off = distance(point(call["locate"]), place);
    // A call with a view of its own has its place met in that one.
    const stays = call["view"] !== undefined || off <= tolerance * (1 + size(place));
    return stays ? recipe : replaced(recipe, placement, place);
}
