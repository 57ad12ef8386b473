import { load } from "dorvale";
import wasm from "dorvale-wasm";
import licences from "licences";
import { type StandardView, standardViews, toScreen } from "../rules/view.js";
import { App, element } from "./app.js";
import { listenToFiles, sampleNames, sampleText, save } from "./files.js";
import { listen, listenToKeys } from "./mouse.js";
import { Stage } from "./stage.js";

function showViews(app: App): void {
    const buttons = Object.keys(standardViews).map((name) => {
        const button = document.createElement("button");
        button.textContent = name[0]!.toUpperCase() + name.slice(1);
        button.dataset["view"] = name;
        button.addEventListener("click", () => app.look(name as StandardView));
        return button;
    });
    element("views").replaceChildren(...buttons);
}

function showSamples(app: App): void {
    const select = element<HTMLSelectElement>("samples");
    const names = ["Samples", ...sampleNames];
    select.replaceChildren(
        ...names.map((name, i) => new Option(name.replaceAll("_", " "), i === 0 ? "" : name)),
    );
    select.addEventListener("change", () => {
        const name = select.value;
        select.value = "";
        select.blur();
        if (name !== "") {
            void sampleText(name).then((text) => app.open(text, name));
        }
    });
}

async function start(): Promise<void> {
    const asked = new URLSearchParams(location.search).get("scene");
    const isKnown = asked !== null && sampleNames.includes(asked);
    const canvas = element<HTMLCanvasElement>("canvas");
    const [library, text] = await Promise.all([
        load(wasm),
        sampleText(isKnown ? asked : sampleNames[0]!),
    ]);
    let app: App | undefined;
    const stage = new Stage(canvas, () => app?.viewStopped());
    app = new App(library, stage, text);
    if (asked !== null && !isKnown) {
        app.fail(`?scene=${asked}: there is no such sample; there are ${sampleNames.join(", ")}`);
    }
    const ask = () => element("file").click();
    const keep = () => save(app);
    const buttons: Readonly<Record<string, () => void>> = {
        open: ask,
        save: keep,
        fit: () => app.fit(),
        undo: () => app.undo(),
        redo: () => app.redo(),
        note: () => app.startNote(),
    };
    for (const [id, action] of Object.entries(buttons)) {
        element(id).addEventListener("click", () => {
            action();
            if (document.activeElement?.id === id) {
                canvas.focus();
            }
        });
    }
    showViews(app);
    showSamples(app);
    listen(canvas, app);
    listenToKeys(app, ask, keep);
    listenToFiles(app);
    element("licences").textContent = licences;
    stage.draw();
    performance.mark("first frame");
    // For scripts that drive the page, and for the console.
    Object.assign(window, { viewer: { app, toScreen } });
}

void start();
