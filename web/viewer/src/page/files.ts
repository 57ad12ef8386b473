// Scenes that come in and go out: files, samples, and what is dropped on the page.
import samples from "samples";
import type { App } from "./app.js";
import type { Command } from "./commands.js";
import { isStep } from "../step/open.js";
import { StepOpening } from "../step/opening.js";
import { element } from "./dom.js";

export const sampleNames = Object.keys(samples);

/** The text of a sample. */
export async function sampleText(name: string): Promise<string> {
    const packed = Uint8Array.from(atob(samples[name]!), (c) => c.charCodeAt(0));
    const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("deflate"));
    return new Response(stream).text();
}

/** Hands the scene to the browser as a file. */
function save(app: App): void {
    const text = app.document.save(app.stage.camera.view);
    const link = document.createElement("a");
    link.href = URL.createObjectURL(new Blob([text], { type: "application/json" }));
    const name = app.document.title.replace(/[^\p{L}\p{N}]+/gu, "_").replace(/^_+|_+$/g, "");
    link.download = `${name === "" ? "scene" : name}.json`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href));
}

/** Scenes, and STEP files. */
function opener(app: App): (file: File | undefined) => Promise<void> {
    const step = new StepOpening(app);
    return async (file) => {
        if (file !== undefined && isStep(file)) {
            await step.open(file);
        } else if (file !== undefined) {
            app.open(await file.text(), file.name);
        }
    };
}

export const fileCommands = (app: App): Command[] => [
    {
        name: "open",
        label: "Open a scene or a STEP file",
        keys: ["Ctrl+O"],
        face: "Open",
        bar: "files",
        run: () => element("file").click(),
    },
    {
        name: "save",
        label: "Save the scene",
        keys: ["Ctrl+S"],
        face: "Save",
        bar: "files",
        run: () => save(app),
    },
];

/** The list of the samples. */
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

/** Opens files by the file dialogue, by drag and drop, and samples by their names. */
export function listenToFiles(app: App): void {
    showSamples(app);
    const openFile = opener(app);
    const input = element<HTMLInputElement>("file");
    input.addEventListener("change", () => {
        const [file] = input.files ?? [];
        input.value = "";
        void openFile(file);
    });
    const stage = element("stage");
    window.addEventListener("dragover", (event) => {
        event.preventDefault();
        stage.classList.add("dropping");
    });
    window.addEventListener("dragleave", (event) => {
        if (event.relatedTarget === null) {
            stage.classList.remove("dropping");
        }
    });
    window.addEventListener("drop", (event) => {
        event.preventDefault();
        stage.classList.remove("dropping");
        void openFile(event.dataTransfer?.files[0]);
    });
}
