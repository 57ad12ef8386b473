// The real page in a real browser, without a server: what the stories do with it.
import { readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

export const file = fileURLToPath(new URL("../../../build/viewer/index.html", import.meta.url));
const executablePath = process.env.CHROMIUM ?? "/usr/bin/chromium-headless-shell";

/** One browser for all stories. */
export const browser = await chromium.launch({ executablePath, args: ["--no-sandbox"] });

const textOf = (scene) => (typeof scene === "string" ? scene : JSON.stringify(scene));

/** The page as its user has it: things are pointed at by where they are in the model. */
export class Viewer {
    /** What the page asked for, and what went wrong in it. */
    requests = [];
    errors = [];

    static async open({
        path = file,
        query = "",
        scene,
        width = 640,
        height = 400,
        // Waiting for a condition evaluates text, which the page's own policy forbids.
        bypassCSP = true,
    } = {}) {
        const viewer = new Viewer();
        const context = await browser.newContext({ viewport: { width, height }, bypassCSP });
        viewer.page = await context.newPage();
        viewer.page.on("request", (request) => viewer.requests.push(request.url()));
        viewer.page.on("pageerror", (error) => viewer.errors.push(error.message));
        await viewer.page.goto(`file://${path}${query}`);
        await viewer.until(() => window.viewer !== undefined);
        if (scene !== undefined) {
            await viewer.choose(scene);
        }
        return viewer;
    }

    /** Waits for a condition, also where the page's own policy holds. */
    async until(does, seconds = 60) {
        for (const end = Date.now() + 1000 * seconds; Date.now() < end; ) {
            if (await this.page.evaluate(does)) {
                return;
            }
            await new Promise((resolve) => setTimeout(resolve, 50));
        }
        throw new Error(`it did not happen within ${seconds} s: ${does}`);
    }

    /** Chooses a file of the disk; waits until it is open, or refused. */
    async chooseFile(files) {
        await this.page.evaluate(() => {
            document.getElementById("error").hidden = true;
            window.before = window.viewer.app.document;
        });
        await this.page.setInputFiles("#file", files);
        await this.until(
            () =>
                window.before !== window.viewer.app.document ||
                !document.getElementById("error").hidden,
        );
    }

    close() {
        return this.page.context().close();
    }

    /** Opens a scene by the file dialogue's own input. */
    async choose(scene, name = "scene.json") {
        const buffer = Buffer.from(textOf(scene));
        await this.opens_(() =>
            this.page.setInputFiles("#file", { name, mimeType: "application/json", buffer }),
        );
    }

    /** Drops a file on the page, and waits until it is open or refused. */
    async drop(scene, name = "scene.json") {
        const transfer = await this.page.evaluateHandle(
            ([text, file]) => {
                const data = new DataTransfer();
                data.items.add(new File([text], file));
                return data;
            },
            [textOf(scene), name],
        );
        await this.page.dispatchEvent("#canvas", "dragover", { dataTransfer: transfer });
        await this.page.waitForSelector("#stage.dropping");
        await this.opens_(() =>
            this.page.dispatchEvent("#canvas", "drop", { dataTransfer: transfer }),
        );
        await this.page.waitForSelector("#stage:not(.dropping)");
    }

    async opens_(act) {
        await this.page.evaluate(() => {
            document.getElementById("error").hidden = true;
            window.before = window.viewer.app.document;
        });
        await act();
        await this.page.waitForFunction(
            () =>
                window.before !== window.viewer.app.document ||
                !document.getElementById("error").hidden,
        );
    }

    /** What a function makes of the viewer's parts. */
    app(does, argument = null) {
        return this.page.evaluate(`(${does})(window.viewer.app, ${JSON.stringify(argument)})`);
    }

    /** Looks from a side, and waits until it is drawn. */
    async look(view) {
        await this.app((app, given) => app.look(given), view);
        await this.rest();
    }

    rest() {
        return this.page.waitForFunction(() => window.viewer.app.stage.isAtRest);
    }

    /** Where a model point stands on the page. */
    at(point) {
        return this.page.evaluate((p) => {
            const box = document.getElementById("canvas").getBoundingClientRect();
            const [x, y] = window.viewer.toScreen(p, window.viewer.app.stage.camera.frame);
            return [x + box.left, y + box.top];
        }, point);
    }

    async hover(point, dx = 0, dy = 0) {
        const [x, y] = await this.at(point);
        await this.page.mouse.move(x + dx, y + dy);
    }

    async click(point) {
        await this.hover(point);
        await this.page.mouse.down();
        await this.page.mouse.up();
    }

    /** Clicks on a pixel of the canvas. */
    async clickPixel([x, y]) {
        const { left, top } = await this.page.evaluate(() => {
            const box = document.getElementById("canvas").getBoundingClientRect();
            return { left: box.left, top: box.top };
        });
        await this.page.mouse.click(x + left, y + top);
    }

    async drag(from, to, options = {}) {
        await this.page.mouse.move(...from);
        await this.page.mouse.down(options);
        await this.page.mouse.move((from[0] + to[0]) / 2, (from[1] + to[1]) / 2);
        await this.page.mouse.move(...to);
        await this.page.mouse.up(options);
        await this.rest();
    }

    status() {
        return this.page.textContent("#status");
    }

    /** Waits until the status line says it. */
    async says(expected) {
        const source = typeof expected === "string" ? expected : expected.source;
        const isText = typeof expected === "string";
        await this.page
            .waitForFunction(
                ([text, plain]) => {
                    const said = document.getElementById("status").textContent;
                    return plain ? said.includes(text) : new RegExp(text).test(said);
                },
                [source, isText],
                { timeout: 5000 },
            )
            .catch(async () => {
                throw new Error(`the status line says "${await this.status()}", not "${source}"`);
            });
    }

    press(key) {
        return this.page.keyboard.press(key);
    }

    recipes() {
        return this.app((app) => app.document.recipes);
    }

    /** The values in the list. */
    values() {
        return this.page.$$eval("#list b", (items) => items.map((item) => item.textContent));
    }

    async waitForCount(count) {
        await this.page.waitForFunction(
            (n) => window.viewer.app.document.recipes.length === n,
            count,
            { timeout: 5000 },
        );
    }

    /** The middle of an annotation's text on the page. */
    textAt(index) {
        return this.page.evaluate((i) => {
            const { app, toScreen } = window.viewer;
            const { frame } = app.stage.camera;
            const [label] = app.placed.drawings[i].labels;
            const box = document.getElementById("canvas").getBoundingClientRect();
            const isUpright = Math.hypot(...label.x) === 0;
            const right = isUpright ? label.width / 2 : 0;
            const p = label.center.map((c, k) => c + right * frame.view.right[k]);
            const [x, y] = toScreen(p, frame);
            const up = isUpright ? (label.bottom + 0.35 * label.height) / frame.unitsPerPixel : 0;
            return [x + box.left, y + box.top - up];
        }, index);
    }

    /** Saves by the button. */
    async save() {
        const waiting = this.page.waitForEvent("download");
        await this.page.click("#save");
        const download = await waiting;
        return { name: download.suggestedFilename(), text: readFileSync(await download.path(), "utf8") };
    }
}
