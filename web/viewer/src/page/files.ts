import samples from "samples";
import type { App } from "./app.js";
import { element } from "./app.js";

export const sampleNames = Object.keys(samples);

/** The text of a sample. */
export async function sampleText(name: string): Promise<string> {
    const packed = Uint8Array.from(atob(samples[name]!), (c) => c.charCodeAt(0));
    const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("deflate"));
    return new Response(stream).text();
}

/** Hands the scene to the browser as a file. */
export function save(app: App): void {
    const text = app.document.save(app.stage.camera.view);
    const link = document.createElement("a");
    link.href = URL.createObjectURL(new Blob([text], { type: "application/json" }));
    const name = app.document.title.replace(/[^\p{L}\p{N}]+/gu, "_").replace(/^_+|_+$/g, "");
    link.download = `${name === "" ? "scene" : name}.json`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href));
}

async function openFile(app: App, file: File | undefined): Promise<void> {
    if (file !== undefined) {
        app.open(await file.text(), file.name);
    }
}

/** Opens files by the button and by drag and drop. */
export function listenToFiles(app: App): void {
    const input = element<HTMLInputElement>("file");
    input.addEventListener("change", () => {
        void openFile(app, input.files?.[0]).then(() => (input.value = ""));
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
        void openFile(app, event.dataTransfer?.files[0]);
    });
}
