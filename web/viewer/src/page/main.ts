import { load } from "dorvale";
import wasm from "dorvale-wasm";
import licences from "licences";
import { toScreen } from "../rules/view.js";
import { App } from "./app.js";
import { element } from "./dom.js";
import { fileCommands, listenToFiles, sampleNames, sampleText } from "./files.js";
import { listen } from "./mouse.js";
import { Stage } from "./stage.js";

async function start(): Promise<void> {
    const asked = new URLSearchParams(location.search).get("scene");
    const isKnown = asked !== null && sampleNames.includes(asked);
    const canvas = element<HTMLCanvasElement>("canvas");
    const [library, text] = await Promise.all([
        load(wasm),
        sampleText(isKnown ? asked : sampleNames[0]!),
    ]);
    const stage = new Stage(canvas);
    const app = new App(library, stage, text);
    if (asked !== null && !isKnown) {
        app.fail(`?scene=${asked}: there is no such sample; there are ${sampleNames.join(", ")}`);
    }
    app.commands.add(...fileCommands(app));
    listen(canvas, app);
    listenToFiles(app);
    element("licences").textContent = licences;
    stage.draw();
    performance.mark("first frame");
    // For scripts that drive the page, and for the console.
    Object.assign(window, { viewer: { app, toScreen } });
}

void start();
