// An annotation as it is packed: what the viewer sets, how it is finished, and its calls.
import { annotationMembers, type CallTable } from "./calls.js";
import type { Model } from "./edges.js";
import { type FinishOptions, finishFrom, packFinish } from "./finish.js";
import type { RowWriter } from "./rows.js";
import {
    booleanFrom,
    integerFrom,
    itemOf,
    listFrom,
    type Members,
    memberOf,
    membersFrom,
    refuseOthers,
    textFrom,
    viewNameFrom,
    type Views,
    type Where,
} from "./values.js";

const bits = { type: 1, display: 2, screenParallel: 4 } as const;
const knownWithCalls = new Set([...annotationMembers, "calls"]);

function packPreset(members: Members, rows: RowWriter, where: Where): void {
    const { name, type, display, screenParallel } = members;
    if (name !== undefined) {
        textFrom(name, memberOf(where, "name"));
    }
    const at = rows.integers.length;
    rows.integers.push(0);
    let given = 0;
    if (type !== undefined) {
        given |= bits.type;
        rows.integers.push(integerFrom(type, memberOf(where, "type")));
    }
    if (display !== undefined) {
        given |= bits.display;
        rows.integers.push(booleanFrom(display, memberOf(where, "display")) ? 1 : 0);
    }
    if (screenParallel !== undefined) {
        given |= bits.screenParallel;
        rows.integers.push(
            booleanFrom(screenParallel, memberOf(where, "screenParallel")) ? 1 : 0,
        );
    }
    rows.integers[at] = given;
}

/** An annotation may belong to some views alone, which is for those who show it. */
function checkViews(value: unknown, own: Views, where: Where): void {
    const names = listFrom(value, where);
    for (let i = 0; i < names.length; ++i) {
        viewNameFrom(names[i], own, itemOf(where, i));
    }
}

/** Appends a recipe to the rows. */
export function packRecipe(
    recipe: unknown,
    calls: CallTable,
    model: Model & { readonly finish?: FinishOptions | undefined },
    rows: RowWriter,
    where: Where,
): void {
    const members = membersFrom(recipe, where);
    packPreset(members, rows, where);
    if (members["views"] !== undefined) {
        checkViews(members["views"], model.views, memberOf(where, "views"));
    }
    const own = members["finish"];
    const finish = finishFrom(own, model.finish, memberOf(where, "finish"));
    const ownLabel = (own as Members | null | undefined)?.["label"] !== undefined;
    packFinish(finish, ownLabel, rows);
    if (members["calls"] === undefined) {
        rows.integers.push(1);
        calls.find(members, where).pack(members, true, rows, model, where);
        return;
    }
    const at = memberOf(where, "calls");
    const list = listFrom(members["calls"], at);
    refuseOthers(members, knownWithCalls, where);
    rows.integers.push(list.length);
    for (let i = 0; i < list.length; ++i) {
        const call = membersFrom(list[i], itemOf(at, i));
        calls.find(call, itemOf(at, i)).pack(call, false, rows, model, itemOf(at, i));
    }
}
