// How a story is told: with a page of its own, in which nothing may go wrong.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { block } from "./block.mjs";
import { browser, Viewer } from "./page.mjs";

after(() => browser.close());

/** A story of the block, or of what the options open; nothing is asked for from elsewhere. */
export function story(name, tell, options = {}) {
    test(name, async () => {
        const viewer = await Viewer.open({ scene: block, ...options });
        try {
            await tell(viewer);
            assert.deepEqual(viewer.errors, []);
            assert.deepEqual(viewer.requests.filter((url) => !/^(file|data|blob):/.test(url)), []);
        } finally {
            await viewer.close();
        }
    });
}
