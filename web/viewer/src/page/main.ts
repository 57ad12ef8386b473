import { load } from "dorvale";
import wasm from "dorvale-wasm";
import licences from "licences";
import { toScreen } from "../rules/view.js";
import { App } from "./app.js";
import { element } from "./dom.js";
import { fileCommands, listenToFiles, sampleNames, sampleText } from "./files.js";
import { handingCommands } from "./handing.js";
import { helpCommand } from "./help.js";
import { keyboardCommands } from "./keyboard.js";
import { listen } from "./mouse.js";
import { type Report, ReportPanel } from "./report.js";
import { sectionCommand, Sectioning } from "./sectioning.js";
import { showSheets } from "./sheetbar.js";
import { Stage } from "./stage.js";
import { themeCommand } from "./theme.js";
import { drafts, Unsaved } from "./unsaved.js";
import { Values, valuesCommand } from "./values.js";

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
    const name = own !== undefined && !isKnown ? "part" : isKnown ? asked : sampleNames[0]!;
    const [library, text] = await Promise.all([
        load(wasm),
        own !== undefined && !isKnown ? JSON.stringify(own.scene) : sampleText(name),
    ]);
    const stage = new Stage(canvas);
    const app = new App(library, stage, text, name);
    if (asked !== null && !isKnown) {
        app.fail(`?scene=${asked}: there is no such sample; there are ${sampleNames.join(", ")}`);
    }
    app.commands.add(...fileCommands(), ...handingCommands(app));
    app.commands.add(
        sectionCommand(new Sectioning(app)),
        valuesCommand(),
        ...keyboardCommands(app),
        themeCommand(stage),
        helpCommand(app.commands),
    );
    new Values(app);
    if (own !== undefined && !isKnown) {
        new ReportPanel(app, own.report);
    }
    showSheets(app);
    // A page with a part of its own opens that.
    new Unsaved(app, drafts()).resume(asked === null && own === undefined);
    listen(canvas, app);
    listenToFiles(app);
    element("licences").textContent = licences;
    stage.draw();
    performance.mark("first frame");
    // For scripts that drive the page, and for the console.
    Object.assign(window, { viewer: { app, toScreen } });
}

void start();
