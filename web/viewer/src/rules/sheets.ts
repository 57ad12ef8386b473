// Annotations that belong to a view, as on a drawing.
import type { Recipe } from "dorvale";
import { dot } from "./vec.js";
import type { View } from "./view.js";

/** A view with the annotations that belong to it. */
export interface Sheet {
    readonly name: string;
    readonly view: View;
    readonly count: number;
}

/** The names of the views that an annotation belongs to; undefined for one of all views. */
export const viewsOf = (recipe: Recipe): readonly string[] | undefined =>
    (recipe as unknown as { views?: readonly string[] }).views;

/** The views that annotations belong to, in the order in which they come. */
export function sheetsOf(recipes: readonly Recipe[], viewOf: (name: string) => View): Sheet[] {
    const counts = new Map<string, number>();
    for (const name of recipes.flatMap((recipe) => viewsOf(recipe) ?? [])) {
        counts.set(name, (counts.get(name) ?? 0) + 1);
    }
    return [...counts].map(([name, count]) => ({ name, view: viewOf(name), count }));
}

/** Whether both look from the same side, the same way up. */
export const areAlike = (a: View, b: View): boolean =>
    dot(a.right, b.right) > 1 - 1e-9 && dot(a.up, b.up) > 1 - 1e-9;
