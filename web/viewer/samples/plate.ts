// The mounting plate: 800 x 450 on four legs. Its dimensions are those of NIST's combined test case
// 01 (public domain), without the fillets under the plate and about the hexagon, and without the
// lettering.

import {
    add, circle, line, moved, reversed, reversedLoop, unit,
    type Curve, type Flat, type Point,
} from "./curves";
import { hole, path, raised, walls, type Loop, type Step } from "./profile";
import { Solid, type Edge } from "./solid";

const top = 0;
const underside = -50;
const soles = -100;
const signs = [-1, 1] as const;
const down: Point = [0, 0, -1];
const up: Point = [0, 0, 1];

/** From the front left leg's inside to the right one's; the flanks of the notches lean by 30. */
const front = path([-250, -150], [
    { right: [-225, -150], to: [-225, -125] },
    ...notch(-110),
    ...notch(110),
    [225, -125],
    { right: [225, -150], to: [250, -150] },
]);

function notch(x: number): Step[] {
    const throat = 5 * Math.sqrt(3);
    const mouth = throat + 35 / Math.sqrt(3);
    return [
        [x - mouth, -125],
        [x - throat, -90],
        { right: [x, -95], to: [x + throat, -90] },
        [x + mouth, -125],
    ];
}

/** From the rear right leg's inside to the left one's. */
const rear = path([250, 150], [
    { right: [225, 150], to: [225, 125] },
    ...recess(150),
    ...recess(-150),
    [-225, 125],
    { right: [-225, 150], to: [-250, 150] },
]);

function recess(x: number): Step[] {
    return [
        [x + 42.5, 125],
        [x + 42.5, 110],
        { right: [x + 32.5, 110], to: [x + 32.5, 100] },
        [x - 32.5, 100],
        { right: [x - 32.5, 110], to: [x - 42.5, 110] },
        [x - 42.5, 125],
    ];
}

/** The outer sides of the legs, counter-clockwise about the plate. */
const legs = {
    "front left": path([-400, -175], [
        { left: [-350, -175], to: [-350, -225] },
        [-300, -225],
        { left: [-300, -175], to: [-250, -175] },
    ]),
    "front right": path([250, -175], [
        { left: [300, -175], to: [300, -225] },
        [350, -225],
        { left: [350, -175], to: [400, -175] },
    ]),
    "rear right": path([400, 175], [
        [350, 225],
        [300, 225],
        { left: [300, 175], to: [250, 175] },
    ]),
    "rear left": path([-250, 175], [
        { left: [-300, 175], to: [-300, 225] },
        [-350, 225],
        { left: [-350, 175], to: [-400, 175] },
    ]),
} as const;

const through: Loop[] = [
    ...signs.flatMap((sx) =>
        signs.map((sy): Loop => ({
            name: `hole ${corner(sx, sy)}`,
            curves: hole(160 * sx, 45 * sy, 12.5),
        })),
    ),
    {
        name: "slot",
        curves: reversedLoop(
            path([-325, -20], [
                [-245, -20],
                { left: [-245, 0], to: [-245, 20] },
                [-325, 20],
                { left: [-325, 0], to: [-325, -20] },
            ]),
        ),
    },
    { name: "window", curves: reversedLoop(roundedWindow(285, 50, 25, 10)) },
];

function roundedWindow(x: number, halfX: number, halfY: number, r: number): Curve[] {
    const [left, right] = [x - halfX, x + halfX];
    const corners: Step[] = [
        [right - r, -halfY],
        { left: [right - r, r - halfY], to: [right, r - halfY] },
        [right, halfY - r],
        { left: [right - r, halfY - r], to: [right - r, halfY] },
        [left + r, halfY],
        { left: [left + r, halfY - r], to: [left, halfY - r] },
        [left, r - halfY],
        { left: [left + r, r - halfY], to: [left + r, -halfY] },
    ];
    return path([left + r, -halfY], corners);
}

function corner(sx: number, sy: number): keyof typeof legs {
    return `${sy < 0 ? "front" : "rear"} ${sx < 0 ? "left" : "right"}`;
}

const polygon = (points: readonly Point[]): Curve[] =>
    points.map((p, i) => line(p, points[(i + 1) % points.length]!));

const hexagon = (inradius: number, z: number): Point[] =>
    Array.from({ length: 6 }, (_, i) => {
        const angle = (Math.PI / 180) * (90 + 60 * i);
        const radius = (2 * inradius) / Math.sqrt(3);
        return [radius * Math.cos(angle), radius * Math.sin(angle), z];
    });

export function plate(): { solid: Solid; marks: Edge[] } {
    const solid = new Solid();
    const legHoles = addLegs(solid);
    addPlate(solid, legHoles);
    addSides(solid);
    addBores(solid);
    addBoss(solid);
    return { solid, marks: marks() };
}

/** The legs below the plate, and their outer sides all the way up. Returns their holes. */
function addLegs(solid: Solid): Loop[] {
    const height: Point = [0, 0, top - soles];
    const floor: Point = [0, 0, soles];
    for (const [name, curves] of Object.entries(legs)) {
        walls(solid, { name, curves }, floor, height);
    }
    return signs.flatMap((sx) =>
        signs.map((sy): Loop => {
            const name = corner(sx, sy);
            const inside = line([250 * sx, 125 * sy, 0], [400 * sx, 125 * sy, 0]);
            const ends = polygonThrough(legs[name], [
                [sx * 250, sy * 125, 0],
                [sx * 400, sy * 125, 0],
            ]);
            const drilled: Loop = {
                name: `hole in ${name} leg`,
                curves: hole(325 * sx, 175 * sy, 17.5),
            };
            solid.plane(`${name} sole`, down, raised(ends, floor), [raised(drilled.curves, floor)]);
            const wall = sx * sy > 0 ? inside : reversed(inside);
            solid.wall(`${name} leg inside`, moved(wall, floor), [0, 0, underside - soles]);
            walls(solid, drilled, floor, height);
            return drilled;
        }),
    );
}

/** An open outline closed by two more corners, in the order that does not cross itself. */
function polygonThrough(outline: readonly Curve[], [a, b]: readonly [Point, Point]): Curve[] {
    const end = outline.at(-1)!.end;
    const [first, second] = end[0] === a[0] ? [a, b] : [b, a];
    return [...outline, line(end, first), line(first, second), line(second, outline[0]!.start)];
}

function addPlate(solid: Solid, legHoles: readonly Loop[]): void {
    const outline = [
        ...legs["front left"], line([-250, -175, 0], [-250, -150, 0]),
        ...front, line([250, -150, 0], [250, -175, 0]),
        ...legs["front right"], line([400, -175, 0], [400, 175, 0]),
        ...legs["rear right"], line([250, 175, 0], [250, 150, 0]),
        ...rear, line([-250, 150, 0], [-250, 175, 0]),
        ...legs["rear left"], line([-400, 175, 0], [-400, -175, 0]),
    ];
    const holes = [...through, ...legHoles].map(({ curves }) => [...curves]);
    solid.plane("top", up, outline, [...holes, polygon(hexagon(50, top))]);

    const between = [
        ...front,
        ...steps([250, -150], [250, -125], [400, -125], [400, 125], [250, 125], [250, 150]),
        ...rear,
        ...steps([-250, 150], [-250, 125], [-400, 125], [-400, -125], [-250, -125], [-250, -150]),
    ];
    const low: Point = [0, 0, underside];
    const lowHoles = through.map(({ curves }) => raised(curves, low));
    solid.plane("underside", down, raised(between, low), lowHoles);
    for (const loop of through) {
        walls(solid, loop, low, [0, 0, top - underside]);
    }
    const isBored = (curve: Curve) => curve.start[0] < 0 && curve.end[0] > 0;
    for (const [name, curves] of Object.entries({ front, rear })) {
        curves.forEach((curve, i) => {
            if (name !== "front" || !isBored(curve)) {
                solid.wall(`${name} ${i + 1}`, moved(curve, low), [0, 0, top - underside]);
            }
        });
    }
}

const steps = (start: Flat, ...points: Flat[]): Curve[] => path(start, points);

/** The sides that reach from the plate down to the legs' soles at places. */
function addSides(solid: Solid): void {
    for (const sx of signs) {
        const outside: Flat[] = [
            [-175, soles], [-125, soles], [-125, underside], [125, underside], [125, soles],
            [175, soles], [175, top], [-175, top],
        ];
        const side = sx < 0 ? "left" : "right";
        solid.plane(side, [sx, 0, 0], polygon(outside.map(([y, z]): Point => [400 * sx, y, z])));
        for (const sy of signs) {
            const flank: Flat[] = [
                [175, soles], [125, soles], [125, underside],
                [150, underside], [150, top], [175, top],
            ];
            const points = flank.map(([y, z]): Point => [250 * sx, sy * y, z]);
            solid.plane(`${corner(sx, sy)} leg flank`, [-sx, 0, 0], polygon(points));
        }
    }
}

/** Two blind bores in the front, with the drill's tip of 118 degrees. */
function addBores(solid: Solid): void {
    const depth = 45;
    const radius = 10;
    const tip = radius / Math.tan((59 * Math.PI) / 180);
    const face = front.find((curve) => curve.start[0] < 0 && curve.end[0] > 0)!;
    const [a, b] = [face.start, face.end];
    const low: Point = [0, 0, underside];
    const wall = polygon([add(a, low), add(b, low), b, a]);
    const rims = signs.map((sx) => circle([30 * sx, -125, -25], [0, -1, 0], radius));
    solid.plane("front middle", [0, -1, 0], wall, rims.map((rim) => [rim]));
    rims.forEach((rim, i) => {
        const name = i === 0 ? "left bore" : "right bore";
        const bottom = moved(rim, [0, depth, 0]);
        solid.wall(name, rim, [0, depth, 0]);
        solid.cone(`${name} tip`, bottom, add(bottom.centre, [0, tip, 0]));
    });
}

/** The hexagon, 100 across its flats and 50 high, with its chamfer. */
function addBoss(solid: Solid): void {
    const [foot, rim, head] = [hexagon(50, top), hexagon(50, 45), hexagon(45, 50)];
    solid.plane("hexagon", up, polygon(head));
    foot.forEach((p, i) => {
        const next = (i + 1) % 6;
        const [a, b, c, d] = [rim[i]!, rim[next]!, head[next]!, head[i]!];
        solid.wall(`hexagon ${i + 1}`, line(p, foot[next]!), [0, 0, 45]);
        const angle = (Math.PI / 180) * (120 + 60 * i);
        const out = unit([Math.cos(angle), Math.sin(angle), 1]);
        solid.plane(`hexagon chamfer ${i + 1}`, out, polygon([a, b, c, d]));
    });
}

/** Lines that belong to no face: the plate is dimensioned from them. */
function marks(): Edge[] {
    const frame = polygon([
        [-500, -125, soles], [500, -125, soles], [500, 125, soles], [-500, 125, soles],
    ]);
    const sides = ["front", "right", "rear", "left"];
    return [
        { id: "mark in the hexagon", ...circle([0, 0, top], up, 50) },
        ...frame.map((curve, i): Edge => ({ id: `mark at the ${sides[i]}`, ...curve })),
    ];
}
