// What an annotation is called in a list.
import type { Recipe } from "dorvale";
import { types } from "./fit.js";

const kinds: Readonly<Record<string, string>> = {
    PMICreateNote3D: "note",
    PMICreateRadiusDim3D: "radius",
    PMICreateDiameterDim3D: "diameter",
    PMICreateAngleDim: "angle",
    PMICreateAngleDim3D: "angle",
    PMICreateParallelDim3D: "length",
    PMICreateArcDim3D: "arc length",
    PMICreateClipArcDim3D: "arc length",
};

export function kindOf(recipe: Recipe): string {
    const { calls, call, type } = recipe as unknown as {
        calls?: { call: string }[];
        call?: string;
        type?: number;
    };
    if (type === types.length || type === types.diameter) {
        return type === types.length ? "length" : "diameter";
    }
    return kinds[calls?.[0]?.call ?? call ?? ""] ?? "distance";
}
