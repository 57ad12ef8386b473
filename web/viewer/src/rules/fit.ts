// Which dimensions fit what was picked.
import type { Recipe } from "dorvale";
import { isEdgeOn, normalsAlong, type Plane } from "./planes.js";
import { above, liesIn, through } from "./section.js";
import {
    type Arc,
    areParallel,
    areSame,
    directionOf,
    isCircle,
    isPoint,
    type Line,
    measuredPoint,
    sweepOf,
    type Thing,
} from "./things.js";
import { add, anySquare, cross, distance, dot, foot, middle, moved, scale, size, sub, unit, type Vec } from "./vec.js";
import type { View } from "./view.js";

/** A thing, and the point of it that was clicked. */
export interface Pick {
    readonly thing: Thing;
    readonly at: Vec;
}

/** A dimension that fits: its name, what it measures, and how it is built at a place of its plane. */
export interface Candidate {
    readonly name: string;
    readonly value: number;
    readonly unit: "length" | "angle";
    readonly plane: Plane;
    readonly recipe: (place: Vec, height: number) => Recipe;
}

/** Things nearer than this are at the same place. */
const nothing = 1e-6;

const list = (p: Vec): number[] => [...p];
const lineOf = (start: Vec, end: Vec) => ({ type: "line" as const, start: list(start), end: list(end) });
const arcOf = ({ centre, normal, radius, start, end }: Arc) => ({
    type: "arc" as const,
    centre: list(centre),
    normal: list(normal),
    radius,
    ...(start && end ? { start: list(start), end: list(end) } : {}),
});

/** Arrow heads and the text's gap go with the text's height. */
const finish = (height: number) => ({
    arrow: "fit" as const,
    gap: Number((0.35 * height).toPrecision(4)),
    readable: true,
});

/** Types of annotations, for the calls that set none. */
export const types = { length: 1, diameter: 4, linear: 10 } as const;
const axisNames = ["X", "Y", "Z"];

/** How a plane is called: by the principal directions in it. */
function planeName(normal: Vec): string {
    const across = normal.findIndex((x) => Math.abs(x) > 1 - 1e-6);
    return across < 0 ? "tilted" : axisNames.filter((_, i) => i !== across).join("");
}

/** The distance of two points in each plane that fits. */
function between(name: string, type: number, a: Vec, b: Vec, view: View, label?: string): Candidate[] {
    const value = distance(a, b);
    if (value < nothing) {
        return [];
    }
    return normalsAlong(unit(sub(b, a)), view).flatMap((normal) =>
        clipped(`${name} in ${planeName(normal)}`, type, a, b, normal, label),
    );
}

/** The distance of two points in a plane through both. */
function clipped(name: string, type: number, a: Vec, b: Vec, normal: Vec, label?: string): Candidate[] {
    const value = distance(a, b);
    return value < nothing
        ? []
        : [
              {
                  name,
                  value,
                  unit: "length",
                  plane: { origin: a, normal },
                  recipe: (place, height) => ({
                      call: "PMICreateClipDim3D",
                      type,
                      normal: list(normal),
                      pointA: list(a),
                      pointB: list(b),
                      locate: list(place),
                      height,
                      finish: { ...finish(height), ...(label === undefined ? {} : { label }) },
                  }),
              },
          ];
}

/** What is measured in the plane of a section: from a point in it to another, or to an edge in it. */
function inSection(a: Thing, b: Thing, view: View): Candidate[] {
    const [point, other] = isPoint(a) && a.section !== undefined ? [a, b] : [b, a];
    if (!isPoint(point) || point.section === undefined) {
        return [];
    }
    const normal = point.section;
    const plane = through(point.at, normal);
    const to = measuredPoint(other);
    if (isEdgeOn(normal, view)) {
        return [];
    }
    if (to !== undefined) {
        const isIn = Math.abs(above(to, plane)) <= 1e-6 * Math.max(1, distance(to, point.at));
        return isIn ? clipped("Distance in the section", types.linear, point.at, to, normal) : [];
    }
    if (other.kind !== "line" || !liesIn(other, plane)) {
        return [];
    }
    const value = distance(point.at, foot(point.at, other.start, directionOf(other)));
    return value < nothing
        ? []
        : [
              {
                  name: "Distance to edge in the section",
                  value,
                  unit: "length",
                  plane: { origin: other.start, normal },
                  recipe: (place, height) => ({
                      call: "PMICreateClipLinDotDim3D",
                      normal: list(normal),
                      origin: list(other.start),
                      xPoint: list(other.end),
                      edge: lineOf(other.start, other.end),
                      point: list(point.at),
                      locate: list(place),
                      height,
                      finish: finish(height),
                  }),
              },
          ];
}

/** The distance of two points along each principal direction that is not all of it. */
function alongAxes(a: Vec, b: Vec, view: View): Candidate[] {
    const whole = distance(a, b);
    return axisNames.flatMap((name, i): Candidate[] => {
        const value = Math.abs(b[i]! - a[i]!);
        const axis = [0, 1, 2].map((k) => (k === i ? 1 : 0)) as unknown as Vec;
        const normal = normalsAlong(axis, view)[0];
        if (value < nothing || whole - value < nothing || normal === undefined) {
            return [];
        }
        const across = scale(unit(cross(normal, axis)), 1e-3 * value);
        return [
            {
                name: `Distance along ${name}`,
                value,
                unit: "length",
                plane: { origin: a, normal },
                recipe: (place, height) => ({
                    call: "PMICreateClipLinDotDim3D",
                    normal: list(normal),
                    origin: list(a),
                    xPoint: list(add(a, axis)),
                    edge: lineOf(a, add(a, across)),
                    point: list(b),
                    locate: list(place),
                    height,
                    finish: finish(height),
                }),
            },
        ];
    });
}

const points = (a: Vec, b: Vec, view: View): Candidate[] => [
    ...between("Distance", types.linear, a, b, view),
    ...alongAxes(a, b, view),
];

/** A circle that is seen edge-on shows its diameter as the width that is seen. */
function diameterAcross({ centre, normal, radius }: Arc, view: View): Candidate[] {
    const n = unit(normal);
    const seen = cross(n, view.to);
    const across = scale(size(seen) > 1e-3 ? unit(seen) : anySquare(n), radius);
    const [a, b] = [sub(centre, across), add(centre, across)];
    return between("Diameter", types.diameter, a, b, view, "⌀{}").filter(
        ({ plane }) => Math.abs(dot(plane.normal, n)) < 0.9,
    );
}

function round(name: string, arc: Arc, call: "PMICreateDiameterDim3D" | "PMICreateRadiusDim3D"): Candidate {
    return {
        name,
        value: call === "PMICreateDiameterDim3D" ? 2 * arc.radius : arc.radius,
        unit: "length",
        plane: { origin: arc.centre, normal: unit(arc.normal) },
        recipe: (place, height) => ({
            call,
            circle: arcOf(arc),
            locate: list(place),
            height,
            finish: finish(height),
        }),
    };
}

/** The length of an arc; of one that lies in a section, first in that plane. */
function arcLengths(arc: Arc): Candidate[] {
    const { centre, section } = arc;
    const start = arc.start!;
    const normal = unit(arc.normal);
    const measured = { value: arc.radius * sweepOf(arc), unit: "length" } as const;
    const rest = (place: Vec, height: number) => ({
        curve: arcOf(arc),
        line1: lineOf(centre, start),
        line2: lineOf(centre, add(centre, cross(normal, sub(start, centre)))),
        locate: list(place),
        height,
        finish: finish(height),
    });
    const own: Candidate = {
        ...measured,
        name: "Arc length",
        plane: { origin: centre, normal },
        recipe: (place, height) => ({ call: "PMICreateArcDim3D", ...rest(place, height) }),
    };
    if (section === undefined) {
        return [own];
    }
    const inPlane: Candidate = {
        ...measured,
        name: "Arc length in the section",
        plane: { origin: centre, normal: section },
        recipe: (place, height) => ({
            call: "PMICreateClipArcDim3D",
            normal: list(section),
            origin: list(centre),
            xPoint: list(start),
            ...rest(place, height),
        }),
    };
    return [inPlane, own];
}

function ofArc(arc: Arc, view: View): Candidate[] {
    if (isEdgeOn(arc.normal, view)) {
        return isCircle(arc) ? diameterAcross(arc, view) : [];
    }
    const diameter = round("Diameter", arc, "PMICreateDiameterDim3D");
    const radius = round("Radius", arc, "PMICreateRadiusDim3D");
    return isCircle(arc) ? [diameter, radius] : [...arcLengths(arc), radius, diameter];
}

/** Two parallel edges: first in their own plane, where that can be seen. */
function parallel(a: Line, b: Line, view: View): Candidate[] {
    const from = middle(a.start, a.end);
    const to = foot(from, b.start, directionOf(b));
    const value = distance(from, to);
    if (value < nothing) {
        return [];
    }
    const normal = unit(cross(directionOf(a), sub(to, from)));
    const own: Candidate = {
        name: "Distance of edges",
        value,
        unit: "length",
        plane: { origin: a.start, normal },
        recipe: (place, height) => ({
            call: "PMICreateLinDistDim3D",
            edge1: lineOf(a.start, a.end),
            edge2: lineOf(b.start, b.end),
            locate: list(place),
            height,
            finish: finish(height),
        }),
    };
    const others = between("Distance of edges", types.linear, from, to, view).filter(
        ({ plane }) => Math.abs(dot(plane.normal, normal)) < 1 - 1e-6,
    );
    return isEdgeOn(normal, view) ? others : [own, ...others];
}

function pointToLine(point: Vec, line: Line, view: View): Candidate[] {
    const on = foot(point, line.start, directionOf(line));
    const value = distance(point, on);
    if (value < nothing) {
        return [];
    }
    const normal = unit(cross(directionOf(line), sub(point, on)));
    const own: Candidate = {
        name: "Distance to edge",
        value,
        unit: "length",
        plane: { origin: line.start, normal },
        recipe: (place, height) => ({
            call: "PMICreateLinDotDim3D",
            edge: lineOf(line.start, line.end),
            point: list(point),
            locate: list(place),
            height,
            finish: finish(height),
        }),
    };
    const others = between("Distance to edge", types.linear, on, point, view).filter(
        ({ plane }) => Math.abs(dot(plane.normal, normal)) < 1 - 1e-6,
    );
    return isEdgeOn(normal, view) ? others : [own, ...others];
}

/** The point of `a`'s line that is nearest to `b`'s line. */
function crossing(a: Line, b: Line): Vec {
    const [u, v] = [directionOf(a), directionOf(b)];
    const w = sub(b.start, a.start);
    const uv = dot(u, v);
    return moved(a.start, u, (dot(w, u) - uv * dot(w, v)) / (1 - uv * uv));
}

const degrees = (radians: number): number => (180 * radians) / Math.PI;

/** The angle between the sides on which two edges were picked, and the one beside it. */
function angle(a: Line, atA: Vec, b: Line, atB: Vec, view: View): Candidate[] {
    const normal = unit(cross(directionOf(a), directionOf(b)));
    if (isEdgeOn(normal, view)) {
        return [];
    }
    const apex = crossing(a, b);
    const side = (line: Line, at: Vec): Vec => {
        const along = directionOf(line);
        const picked = distance(at, apex) < nothing ? middle(line.start, line.end) : at;
        return scale(along, dot(along, sub(picked, apex)) < 0 ? -1 : 1);
    };
    const [u, v] = [side(a, atA), side(b, atB)];
    const reachOf = (line: Line) => Math.max(distance(apex, line.start), distance(apex, line.end));
    const [farA, farB] = [reachOf(a), reachOf(b)];
    const angleOf = (name: string, from: Vec, to: Vec): Candidate => ({
        name,
        value: degrees(Math.atan2(size(cross(from, to)), dot(from, to))),
        unit: "angle",
        plane: { origin: a.start, normal },
        recipe: (place, height) => ({
            call: "PMICreateAngleDim3D",
            // From behind, the angle from the first side to the second one is a reflex one.
            angleMode: 1,
            edge1: lineOf(a.start, a.end),
            pick1: list(moved(apex, from, farA)),
            edge2: lineOf(b.start, b.end),
            pick2: list(moved(apex, to, farB)),
            locate: list(place),
            height,
            finish: finish(height),
        }),
    });
    return [angleOf("Angle", u, v), angleOf("Angle beside", u, scale(v, -1))];
}

function ofTwo(first: Pick, second: Pick, view: View): Candidate[] {
    const [a, b] = [first.thing, second.thing];
    const [p, q] = [measuredPoint(a), measuredPoint(b)];
    if (areSame(a, b)) {
        return [];
    }
    const cut = inSection(a, b, view);
    if (p !== undefined && q !== undefined) {
        return [...cut, ...points(p, q, view)];
    }
    if (a.kind === "line" && b.kind === "line") {
        return areParallel(a, b)
            ? parallel(a, b, view)
            : angle(a, first.at, b, second.at, view);
    }
    if (a.kind === "line") {
        return [...cut, ...pointToLine(q!, a, view)];
    }
    return b.kind === "line" ? [...cut, ...pointToLine(p!, b, view)] : [];
}

/** What fits one or two picks, the likeliest first; nothing whose plane is seen edge-on. */
export function fitting(picks: readonly Pick[], view: View): Candidate[] {
    const [first, second] = picks;
    if (first === undefined) {
        return [];
    }
    if (second !== undefined) {
        return ofTwo(first, second, view);
    }
    const { thing } = first;
    if (thing.kind === "line") {
        return between("Length", types.length, thing.start, thing.end, view);
    }
    return thing.kind === "arc" ? ofArc(thing, view) : [];
}

/** A note with a leader to a point; it stands upright to the screen. */
export const noteRecipe = (text: string, target: Vec, place: Vec, height: number): Recipe => ({
    display: true,
    screenParallel: true,
    finish: finish(height),
    calls: [
        {
            call: "PMICreateNote3D",
            lines: text.split("\n"),
            leader: true,
            target: list(target),
            text: list(place),
            height,
        },
    ],
});
