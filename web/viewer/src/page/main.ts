import { load } from "dorvale";
import wasm from "dorvale-wasm";
import licences from "licences";
import { toScreen } from "../rules/view.js";
import { App } from "./app.js";
import { element } from "./dom.js";
import { fileCommands, listenToFiles, sampleNames, sampleText } from "./files.js";
import { listen } from "./mouse.js";
import { type Report, ReportPanel } from "./report.js";
import { showSheets } from "./sheetbar.js";
import { Stage } from "./stage.js";

/** A part that stands in the page itself, with the report on its dimensions. */
interface Own {
    readonly scene: unknown;
    readonly report: Report;
}

async function start(): Promise<void> {
    const written = element("part").textContent ?? "";
    const own = written === "" ? undefined : (JSON.parse(written) as Own);
    const asked = new URLSearchParams(location.search).get("scene");
    const isKnown = asked !== null && sampleNames.includes(asked);
    const canvas = element<HTMLCanvasElement>("canvas");
    const [library, text] = await Promise.all([
        load(wasm),
        own !== undefined && !isKnown
            ? JSON.stringify(own.scene)
            : sampleText(isKnown ? asked : sampleNames[0]!),
    ]);
    const stage = new Stage(canvas);
    const app = new App(library, stage, text);
    if (asked !== null && !isKnown) {
        app.fail(`?scene=${asked}: there is no such sample; there are ${sampleNames.join(", ")}`);
    }
    app.commands.add(...fileCommands(app));
    listen(canvas, app);
    listenToFiles(app);
    showSheets(app);
    if (own !== undefined && !isKnown) {
        new ReportPanel(app, own.report);
    }
    element("licences").textContent = licences;
    stage.draw();
    performance.mark("first frame");
    // For scripts that drive the page, and for the console.
    Object.assign(window, { viewer: { app, toScreen } });
}

void start();
