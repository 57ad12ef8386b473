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
import { sectionCommand, Sectioning } from "./sectioning.js";
import { Stage } from "./stage.js";
import { themeCommand } from "./theme.js";
import { drafts, Unsaved } from "./unsaved.js";
import { Values, valuesCommand } from "./values.js";

async function start(): Promise<void> {
    const asked = new URLSearchParams(location.search).get("scene");
    const isKnown = asked !== null && sampleNames.includes(asked);
    const canvas = element<HTMLCanvasElement>("canvas");
    const name = isKnown ? asked : sampleNames[0]!;
    const [library, text] = await Promise.all([load(wasm), sampleText(name)]);
    const stage = new Stage(canvas);
    const app = new App(library, stage, text, name);
    if (asked !== null && !isKnown) {
        app.fail(`?scene=${asked}: there is no such sample; there are ${sampleNames.join(", ")}`);
    }
    app.commands.add(...fileCommands(), ...handingCommands(app));
    app.commands.add(sectionCommand(new Sectioning(app)), valuesCommand(), ...keyboardCommands(app), themeCommand(stage), helpCommand(app.commands));
    new Values(app);
    new Unsaved(app, drafts()).resume(asked === null);
    listen(canvas, app);
    listenToFiles(app);
    element("licences").textContent = licences;
    stage.draw();
    performance.mark("first frame");
    // For scripts that drive the page, and for the console.
    Object.assign(window, { viewer: { app, toScreen } });
}

void start();
