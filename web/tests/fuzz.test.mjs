import assert from "node:assert/strict";
import test from "node:test";

import { fuzz } from "./fuzz.mjs";

test("10,000 random recipes are built or refused, and leave the module as it was", async () => {
    const { built, refused } = await fuzz(10000, 1);
    assert.ok(built > 2000 && refused > 2000, `${built} built, ${refused} refused`);
});
