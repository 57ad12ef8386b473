// Scenes that come in: files, samples, and what is dropped on the page.
import samples from "samples";
import type { App } from "./app.js";
import type { Command } from "./commands.js";
import { isStep } from "../step/open.js";
import { StepOpening } from "../step/opening.js";
import { element } from "./dom.js";
import { inflated } from "./packed.js";

export const sampleNames = Object.keys(samples);

/** The text of a sample. */
export async function sampleText(name: string): Promise<string> {
    return inflated(samples[name]!).text();
}

/** Whether what is dragged over the page may be a STEP file: its name is not told before it is dropped. */
const mayBeStep = ({ kind, type }: DataTransferItem) => kind === "file" && type !== "application/json";

/** Scenes, and STEP files. */
function opener(app: App, step: StepOpening): (file: File | undefined) => Promise<void> {
    return async (file) => {
        if (file !== undefined && isStep(file)) {
            await step.open(file);
        } else if (file !== undefined) {
            app.open(await file.text(), file.name);
        }
    };
}

export const fileCommands = (): Command[] => [
    {
        name: "open",
        label: "Open a scene or a STEP file",
        keys: ["Ctrl+O"],
        face: "Open",
        bar: "files",
        run: () => element("file").click(),
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
    const step = new StepOpening(app);
    const openFile = opener(app, step);
    const input = element<HTMLInputElement>("file");
    input.addEventListener("click", () => step.prepare());
    input.addEventListener("change", () => {
        const [file] = input.files ?? [];
        input.value = "";
        void openFile(file);
    });
    const stage = element("stage");
    window.addEventListener("dragover", (event) => {
        event.preventDefault();
        stage.classList.add("dropping");
        if ([...(event.dataTransfer?.items ?? [])].some(mayBeStep)) {
            step.prepare();
        }
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
