// Makes build/viewer/index.html: the page, the module, the samples and the licences in one file.
// Beside it occt.js, which reads STEP files: a worker and OCCT's module, loaded when one is opened.
import { mkdir, readdir, readFile, writeFile } from "node:fs/promises";
import { fileURLToPath } from "node:url";
import { deflateSync } from "node:zlib";
import { build } from "esbuild";

const here = fileURLToPath(new URL(".", import.meta.url));
const web = `${here}../`;
const root = `${web}../`;
const out = `${root}build/viewer`;

/** The sample that is open at the start. */
const first = "mounting_plate";

const deflated = (bytes) => deflateSync(bytes, { level: 9 }).toString("base64");

/** The samples by their names, deflated. */
async function samples() {
    const files = (await readdir(`${here}samples`)).filter((file) => /^(?!tsconfig).*\.json$/.test(file));
    const names = files.map((file) => file.slice(0, -".json".length)).sort();
    const others = names.filter((name) => name !== first);
    const packed = [first, ...others].map(async (name) => {
        const text = await readFile(`${here}samples/${name}.json`);
        return [name, deflated(text)];
    });
    return Object.fromEntries(await Promise.all(packed));
}

async function licences() {
    const packages = ["three", "three-mesh-bvh"];
    const texts = packages.map(async (name) => {
        const text = await readFile(`${web}node_modules/${name}/LICENSE`, "utf8");
        return `${name}\n\n${text.trim()}`;
    });
    const json = await readFile("/usr/share/doc/nlohmann-json3-dev/copyright", "utf8");
    const own = await readFile(`${web}dorvale/LICENSES.txt`, "utf8");
    return [...(await Promise.all(texts)), `nlohmann-json\n\n${json.trim()}`, own].join(`\n\n${"-".repeat(40)}\n\n`);
}

/** Modules that the build makes. */
const made = {
    name: "made",
    setup({ onResolve, onLoad }) {
        onResolve({ filter: /^(dorvale-wasm|drawing-wasm|samples|licences)$/ }, ({ path }) => ({
            path,
            namespace: "made",
        }));
        onLoad({ filter: /.*/, namespace: "made" }, async ({ path }) => {
            switch (path) {
                case "dorvale-wasm":
                    return {
                        contents: await readFile(`${web}dorvale/dist/dorvale.wasm`),
                        loader: "binary",
                    };
                case "drawing-wasm": {
                    const module = await readFile(`${root}build/web/drawing/drawing.wasm`);
                    return { contents: deflated(module), loader: "text" };
                }
                case "samples":
                    return { contents: JSON.stringify(await samples()), loader: "json" };
                default:
                    return { contents: await licences(), loader: "text" };
            }
        });
    },
};

const bundled = await build({
    entryPoints: [`${here}src/page/main.ts`],
    bundle: true,
    minify: true,
    format: "esm",
    target: "es2022",
    charset: "utf8",
    legalComments: "none",
    conditions: ["browser"],
    define: { "import.meta.url": '"file:///"' },
    plugins: [made],
    logLevel: "warning",
    write: false,
});
const style = await build({
    entryPoints: [`${here}src/style.css`],
    minify: true,
    write: false,
});
const template = await readFile(`${here}src/index.html`, "utf8");
// A script ends at the first end tag, wherever it stands.
const script = bundled.outputFiles[0].text.replaceAll("</script", "<\\/script");
const page = template
    .replace("/*style*/", () => style.outputFiles[0].text.trim())
    .replace("/*script*/", () => script);
await mkdir(out, { recursive: true });
await writeFile(`${out}/index.html`, page);

const occt = `${web}node_modules/replicad-opencascadejs`;
const worker = await build({
    entryPoints: [`${here}src/step/worker.ts`],
    bundle: true,
    minify: true,
    format: "iife",
    target: "es2022",
    define: { "import.meta.url": '"file:///"' },
    external: ["node:module"],
    logLevel: "warning",
    write: false,
});
const wasm = await readFile(`${occt}/dist/replicad_single.wasm`);
const reader = {
    script: worker.outputFiles[0].text,
    wasm: deflateSync(wasm).toString("base64"),
};
const licence = (await readFile(`${occt}/LICENSE`, "utf8")).replaceAll("*/", "* /").trim();
await writeFile(
    `${out}/occt.js`,
    `/* replicad-opencascadejs, OCCT compiled for the web\n\n${licence}\n*/\n` +
        `stepReader=${JSON.stringify(reader)};\n`,
);
