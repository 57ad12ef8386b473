import type { Annotation, Curve, Vector } from "./types.js";

/** A chain of straight segments in model coordinates. */
export interface ModelLine {
    readonly kind: "line";
    readonly of: "leader" | "extensionLine" | "specialLine" | "callerLine";
    /** x, y, z of each point. */
    readonly points: Float64Array;
}

/** An arc in model coordinates: counter-clockwise about its normal from one point to the other. */
export interface ModelArc {
    readonly kind: "arc";
    readonly of: "leader" | "extensionLine" | "specialLine" | "callerLine";
    readonly centre: Vector;
    readonly normal: Vector;
    readonly radius: number;
    readonly from: Vector;
    readonly to: Vector;
}

/** A cone: its tip, the direction from there along its body, its length and width. */
export interface ModelArrow {
    readonly tip: Vector;
    readonly direction: Vector;
    readonly length: number;
    readonly width: number;
}

/** A line of text: where it starts on its base line, its writing direction, and up. */
export interface ModelText {
    readonly text: string;
    readonly location: Vector;
    readonly xAxis: Vector;
    readonly yAxis: Vector;
    readonly height: number;
}

/** An annotation in model coordinates. */
export interface ModelAnnotation {
    readonly lines: readonly ModelLine[];
    readonly arcs: readonly ModelArc[];
    readonly arrows: readonly ModelArrow[];
    readonly texts: readonly ModelText[];
}

type Kind = ModelLine["of"];

/** What an annotation's lines, arcs, arrow heads and texts are in the model: what a viewer draws. */
export function toModel(annotation: Annotation): ModelAnnotation {
    const m = annotation.plane;
    const direction = ([x, y, z]: Vector): Vector => [
        x * m[0]! + y * m[4]! + z * m[8]!,
        x * m[1]! + y * m[5]! + z * m[9]!,
        x * m[2]! + y * m[6]! + z * m[10]!,
    ];
    const point = (p: Vector): Vector => {
        const d = direction(p);
        return [d[0] + m[12]!, d[1] + m[13]!, d[2] + m[14]!];
    };
    const lines: ModelLine[] = [];
    const arcs: ModelArc[] = [];
    const add = (curve: Curve | null, of: Kind): void => {
        if (curve === null) {
            return;
        }
        if (curve.kind === "arc") {
            arcs.push({
                kind: "arc",
                of,
                centre: point(curve.centre),
                normal: direction(curve.normal),
                radius: curve.radius,
                from: point(curve.from),
                to: point(curve.to),
            });
            return;
        }
        const points = new Float64Array(curve.points.length);
        for (let i = 0; i < points.length; i += 3) {
            const [x, y, z] = [curve.points[i]!, curve.points[i + 1]!, curve.points[i + 2]!];
            points.set(point([x, y, z]), i);
        }
        lines.push({ kind: "line", of, points });
    };
    annotation.leaders.forEach((leader) => add(leader.curve, "leader"));
    annotation.extensionLines.forEach((line) => add(line.curve, "extensionLine"));
    annotation.specialLines.forEach((line) =>
        line.curves.forEach((curve) => add(curve, "specialLine")),
    );
    annotation.callerLines.forEach((points) =>
        lines.push({ kind: "line", of: "callerLine", points }),
    );
    const arrows = annotation.leaders.flatMap(({ arrow }) =>
        arrow === null
            ? []
            : [{ ...arrow, tip: point(arrow.tip), direction: direction(arrow.direction) }],
    );
    const texts = annotation.texts.map(({ text, location, xAxis, yAxis, height }) => ({
        text,
        location: point(location),
        xAxis: direction(xAxis),
        yAxis: direction(yAxis),
        height,
    }));
    return { lines, arcs, arrows, texts };
}
