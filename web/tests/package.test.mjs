// The package as its reader gets it: installed from its tarball into an empty project.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { copyFileSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import path from "node:path";
import test, { after, before } from "node:test";
import { gzipSync } from "node:zlib";

import { build } from "esbuild";
import { chromium } from "playwright-core";

import { dist, read, root } from "./package.mjs";

const types = { ".html": "text/html", ".js": "text/javascript", ".wasm": "application/wasm" };
const browsers = ["chromium-headless-shell", "chromium", "chromium-browser", "google-chrome"];
const page = read("docs/web.md");
const example = (language) => new RegExp(`\`\`\`${language}\n([^]*?)\`\`\``).exec(page)[1];

let project;
let files;

before(() => {
    project = mkdtempSync(path.join(tmpdir(), "dorvale-"));
    const options = { cwd: project, stdio: ["ignore", "pipe", "inherit"], encoding: "utf8" };
    const packed = execFileSync("npm", ["pack", "--json", `${root}web/dorvale`], options);
    const [{ filename, files: inside }] = JSON.parse(packed);
    files = inside.map((file) => file.path);
    writeFileSync(`${project}/package.json`, '{ "private": true, "type": "module" }');
    execFileSync("npm", ["install", "--offline", "--no-audit", "--no-fund", filename], options);
});
after(() => rmSync(project, { recursive: true, force: true }));

function run(program, ...args) {
    try {
        return execFileSync(program, args, { cwd: project, encoding: "utf8" });
    } catch (error) {
        throw new Error(`${error.message}\n${error.stdout}`);
    }
}

test("the package holds its module, types, readme and licences, within its sizes", () => {
    for (const file of ["dist/index.d.ts", "README.md", "LICENSES.txt"]) {
        assert.ok(files.includes(file), file);
    }
    const size = (file) => gzipSync(readFileSync(`${dist}${file}`), { level: 9 }).length;
    assert.ok(size("index.js") + size("node.js") <= 8192, `loader ${size("index.js")}`);
    assert.ok(size("dorvale.wasm") <= 50 * 1024, `module ${size("dorvale.wasm")}`);
    assert.match(readFileSync(`${project}/node_modules/dorvale/LICENSES.txt`, "utf8"), /musl/);
});

test("the first example compiles in strict TypeScript, and prints what it says", () => {
    const code = example("ts");
    writeFileSync(`${project}/first.ts`, code);
    const options = "--strict --target es2022 --module nodenext --lib es2022,dom";
    const tsc = `${root}web/node_modules/typescript/bin/tsc`;
    run("node", tsc, ...options.split(" "), "first.ts");
    const said = Array.from(code.matchAll(/; \/\/ (.*)/g), ([, text]) => text);
    assert.deepEqual(run("node", "first.js").trim().split("\n"), said);
});

/** A page with one script, looked at by `look`. */
async function inBrowser(code, look) {
    const site = `${project}/site`;
    mkdirSync(site, { recursive: true });
    writeFileSync(`${site}/index.html`, '<body><script type="module" src="page.js"></script>');
    await build({
        stdin: { contents: code, resolveDir: project },
        outfile: `${site}/page.js`,
        bundle: true,
        format: "esm",
        nodePaths: [`${root}web/node_modules`],
        logLevel: "error",
    });
    copyFileSync(`${project}/node_modules/dorvale/dist/dorvale.wasm`, `${site}/dorvale.wasm`);
    const server = createServer((request, response) => {
        const file = request.url === "/" ? "/index.html" : request.url;
        try {
            const content = readFileSync(`${site}${file}`);
            response.setHeader("Content-Type", types[path.extname(file)]).end(content);
        } catch {
            response.writeHead(404).end();
        }
    });
    await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
    const program = browsers
        .flatMap((name) => process.env.PATH.split(":").map((folder) => `${folder}/${name}`))
        .find((file) => isThere(file));
    const browser = await chromium.launch({ executablePath: program, args: ["--no-sandbox"] });
    try {
        const tab = await browser.newPage({ viewport: { width: 660, height: 420 } });
        const problems = [];
        tab.on("pageerror", (error) => problems.push(String(error)));
        await tab.goto(`http://127.0.0.1:${server.address().port}/`);
        await tab.waitForFunction("document.title !== ''", null, { timeout: 60000 }).catch(() => {
            throw new Error(`the page says nothing: ${problems.join()}`);
        });
        await look(tab);
        assert.deepEqual(problems, []);
    } finally {
        await browser.close();
        server.close();
    }
}

function isThere(file) {
    try {
        readFileSync(file);
        return true;
    } catch {
        return false;
    }
}

test("bundled, the package finds its module beside the page's script", async () => {
    const code = `import { load } from "dorvale";
        const dorvale = await load();
        const recipe = { call: "PMICreateNote3D", lines: ["a page"], text: [0, 0, 0], height: 5 };
        document.title = dorvale.build(recipe).texts[0].text;`;
    await inBrowser(code, async (tab) => assert.equal(await tab.title(), "a page"));
});

test("the example of three.js draws its circle and its leader", async () => {
    await inBrowser(example("js"), async (tab) => {
        assert.equal(await tab.title(), "R10.00");
        // The leader's end at (14, 9): 10 pixels a unit about the middle of 640 x 400.
        const picture = await tab.locator("canvas").screenshot();
        const lit = await tab.evaluate(async (bytes) => {
            const image = await createImageBitmap(new Blob([new Uint8Array(bytes)]));
            const context = new OffscreenCanvas(640, 400).getContext("2d");
            context.drawImage(image, 0, 0);
            const isLit = (x, y) => {
                const { data } = context.getImageData(x - 3, y - 3, 7, 7);
                return data.some((value, i) => i % 4 === 0 && value > 99);
            };
            return [isLit(220, 200), isLit(320, 100), isLit(432, 128), isLit(320, 200)];
        }, Array.from(picture));
        assert.deepEqual(lit, [true, true, true, false]);
    });
});
