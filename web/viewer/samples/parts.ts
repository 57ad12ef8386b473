// The sample parts, as scenes that have no annotations yet.

import { circle, cross, dot, subtract, times, unit, type Point } from "./curves";
import { plate } from "./plate";
import { closed, hole, prism, type Loop } from "./profile";
import { Solid, type Edge, type Mesh } from "./solid";

export interface Part {
    title: string;
    licence?: string;
    mesh: Mesh;
    edges: Edge[];
    views: { name: string; matrix: number[] }[];
}

/** Views by name, each with its way to the right, and about what is up. */
type Views = Readonly<Record<string, readonly [Point, Point]>>;

const fromBelow = [[1, 1, 0], [1, -1, 2]] as const;

function partOf(title: string, solid: Solid, views: Views, marks: Edge[] = []): Part {
    return {
        title,
        mesh: solid.mesh(),
        edges: [...solid.edges(), ...marks],
        views: Object.entries(views).map(([name, axes]) => ({ name, matrix: viewOf(...axes) })),
    };
}

function viewOf(right: Point, up: Point): number[] {
    const x = unit(right);
    const y = unit(subtract(up, times(dot(up, x), x)));
    const toViewer = cross(x, y);
    return [0, 1, 2].flatMap((i) => [x[i]!, y[i]!, toViewer[i]!, 0]).concat(0, 0, 0, 1);
}

function mountingPlate(): Part {
    const { solid, marks } = plate();
    const views: Views = {
        "from below": fromBelow,
        "into the bores": [[1, 0, 0], [0, Math.sin(Math.PI / 9), Math.cos(Math.PI / 9)]],
    };
    return {
        ...partOf("Mounting plate", solid, views, marks),
        licence: "public domain: a work of the U.S. Government (NIST combined test case 01)",
    };
}

function flange(): Part {
    const solid = new Solid();
    const bolts = Array.from({ length: 6 }, (_, i): Loop => {
        const angle = (Math.PI / 180) * (30 + 60 * i);
        return {
            name: `hole ${i + 1}`,
            curves: hole(45 * Math.cos(angle), 45 * Math.sin(angle), 5),
        };
    });
    const rim = [circle([0, 0, 0], [0, 0, 1], 60)];
    const bore = { name: "bore", curves: hole(0, 0, 20) };
    const loops = [{ name: "rim", curves: rim }, bore, ...bolts];
    prism(solid, loops, [0, 0, 1], [-15, 0], ["bottom", "top"]);
    return partOf("Flange", solid, { "from below": fromBelow });
}

function bracket(): Part {
    const solid = new Solid();
    const curves = closed([40, -60], [
        [40, 0],
        { left: [0, 0], to: [0, 40] },
        [-60, 40],
        [-60, 25],
        [0, 25],
        { right: [0, 0], to: [25, 0] },
        [25, -60],
    ]);
    prism(solid, [{ name: "side", curves }], [0, 0, 1], [-12, 0], ["bottom", "top"]);
    return partOf("Bracket", solid, { "from below": fromBelow });
}

function housing(): Part {
    const solid = new Solid();
    const upright = { x: [1, 0, 0], y: [0, 0, 1] } as const;
    const curves = closed(
        [-50, 0],
        [[50, 0], [50, 60], [30, 60], [30, 20], [-30, 20], [-30, 60], [-50, 60]],
        upright,
    );
    prism(solid, [{ name: "side", curves }], [0, -1, 0], [-60, 0], ["rear", "cut"]);
    return partOf("Housing, cut open", solid, { "into the cut": [[1, 0.3, 0], [0, 0.3, 1]] });
}

/** The samples by the names of their files. */
export const parts: Readonly<Record<string, () => Part>> = {
    bracket,
    flange,
    housing,
    mounting_plate: mountingPlate,
};

const rounded = (value: unknown): unknown =>
    typeof value === "number" ? Math.round(value * 1e12) / 1e12 + 0 : value;
const json = (value: unknown): string => JSON.stringify(value, (_, member) => rounded(member));
const base64 = (numbers: Float32Array | Uint32Array): string =>
    btoa(Array.from(new Uint8Array(numbers.buffer), (b) => String.fromCharCode(b)).join(""));

const lines = (items: readonly unknown[]): string =>
    `[\n${items.map((item) => `    ${json(item)}`).join(",\n")}\n  ]`;

/** A circle's scene has no ends: it is a circle without. */
function written(edge: Edge): unknown {
    const isWhole = edge.type === "arc" && String(edge.start) === String(edge.end);
    const { start, end, ...circle } = edge;
    return isWhole ? circle : edge;
}

/** The scene's text, an edge to a line. */
export function sceneOf(part: Part): string {
    const { mesh } = part;
    const members = [
        `"version": 1`,
        `"title": ${json(part.title)}`,
        ...(part.licence === undefined ? [] : [`"licence": ${json(part.licence)}`]),
        `"view": "iso"`,
        `"views": ${lines(part.views)}`,
        `"mesh": ${json({
            positions: base64(mesh.positions),
            triangles: base64(mesh.triangles),
            faces: mesh.faces,
        })}`,
        `"edges": ${lines(part.edges.map(written))}`,
        `"annotations": []`,
    ];
    return `{\n  ${members.join(",\n  ")}\n}\n`;
}
