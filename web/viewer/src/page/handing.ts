// What leaves the page: scenes, drawings and pictures, as files.
import packed from "drawing-wasm";
import { Drawing } from "../export/drawing.js";
import type { App } from "./app.js";
import type { Command } from "./commands.js";
import { inflated } from "./packed.js";

/** Hands something to the browser as a file, under the scene's title. */
function deliver({ document: scene }: App, extension: string, data: Blob): void {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(data);
    const name = scene.title.replace(/[^\p{L}\p{N}]+/gu, "_").replace(/^_+|_+$/g, "");
    link.download = `${name === "" ? "scene" : name}.${extension}`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href));
}

function save(app: App): void {
    const text = app.document.save(app.stage.camera.view);
    deliver(app, "json", new Blob([text], { type: "application/json" }));
    app.space.saved.emit();
}

let drawing: Promise<Drawing> | undefined;

/** The saved scene, drawn. */
async function exportSvg(app: App): Promise<void> {
    const text = app.document.save(app.stage.camera.view);
    try {
        drawing ??= inflated(packed).arrayBuffer().then((bytes) => Drawing.of(bytes));
        const svg = await (await drawing).svg(text);
        deliver(app, "svg", new Blob([svg], { type: "image/svg+xml" }));
    } catch (problem) {
        app.fail(`SVG: ${(problem as Error).message}`);
    }
}

/** Pixels of the picture for one of the screen. */
const enlarged = 2;

function exportPng(app: App): void {
    app.stage.picture(enlarged).toBlob((data) => {
        if (data === null) {
            app.fail("PNG: the picture is too large");
        } else {
            deliver(app, "png", data);
        }
    });
}

export const handingCommands = (app: App): Command[] => [
    {
        name: "save",
        label: "Save the scene",
        keys: ["Ctrl+S"],
        face: "Save",
        bar: "files",
        run: () => save(app),
    },
    {
        name: "svg",
        label: "Save this view as a drawing (SVG, to scale)",
        keys: ["E"],
        face: "SVG",
        bar: "files",
        run: () => void exportSvg(app),
    },
    {
        name: "png",
        label: "Save this view as a picture (PNG)",
        keys: ["P"],
        face: "PNG",
        bar: "files",
        run: () => exportPng(app),
    },
];
