// What the package gives back. Lengths are model units, angles radians unless said otherwise.
// Unless said otherwise, points and directions are single precision and in the annotation's plane:
// `toModel` brings them into the model. Types and usages are the numbers of the annotation model.

/** x, y, z. */
export type Vector = readonly [number, number, number];
/** Red, green, blue and opacity, each from 0 to 1. */
export type Rgba = readonly [number, number, number, number];

interface CurveState {
    /** 1 of a leader, 3 of an extension line, 5 of a special line, 0 unset. */
    readonly usage: number;
    readonly displayType: number;
    readonly display: boolean;
}

/** One straight segment. */
export interface LineCurve extends CurveState {
    readonly kind: "line";
    /** x, y, z of the start, then of the end. */
    readonly points: Float32Array;
}

/** A chain of straight segments. */
export interface PolylineCurve extends CurveState {
    readonly kind: "polyline";
    /** x, y, z of each point. */
    readonly points: Float32Array;
    readonly domain: readonly [number, number];
}

/** A circular arc: counter-clockwise about its normal from one point to the other. */
export interface ArcCurve extends CurveState {
    readonly kind: "arc";
    readonly centre: Vector;
    readonly normal: Vector;
    readonly radius: number;
    readonly from: Vector;
    readonly to: Vector;
    readonly originDirection: Vector;
    /** X, Y and Z of the arc's own frame. */
    readonly axes: readonly [Vector, Vector, Vector];
    /** Both radii; they are the same. */
    readonly radii: readonly [number, number];
    /** Angles of the start and the end about the centre; falling where the normal's z is negative. */
    readonly parameter: readonly [number, number];
    readonly domain: readonly [number, number];
}

export type Curve = LineCurve | PolylineCurve | ArcCurve;

/** An arrow head: a cone with its tip on the leader's end. */
export interface Arrow {
    /** 4 is an arrow, 0 is none. */
    readonly type: number;
    readonly tip: Vector;
    /** From the tip along the body, of unit length. */
    readonly direction: Vector;
    readonly length: number;
    readonly width: number;
}

/** A dimension line or a half of it, or the line from a note to its target. */
export interface Leader {
    readonly curve: Curve | null;
    /** Null where there is no head. */
    readonly arrow: Arrow | null;
    /** The head, or where it would stand. */
    readonly terminator: Arrow;
    /** 1 straight, 2 an arc. */
    readonly type: number;
    readonly stub: boolean;
}

/** From the measured geometry to the dimension line. */
export interface ExtensionLine {
    readonly curve: Curve | null;
    readonly display: boolean;
    readonly type: number;
}

/** A line that is neither leader nor extension line. */
export interface SpecialLine {
    readonly curves: readonly Curve[];
    readonly usage: number;
}

/** One line of text. */
export interface Text {
    readonly text: string;
    /** Where it starts, on its base line. */
    readonly location: Vector;
    /** The writing direction, of unit length. */
    readonly xAxis: Vector;
    /** The up direction of its characters, of unit length. */
    readonly yAxis: Vector;
    /** Of its characters. */
    readonly height: number;
    /** Of its characters; 0 is the font's own proportion. */
    readonly width: number;
    readonly spacing: number;
    /** Empty for the viewer's own font. */
    readonly font: string;
    /** 7 the extra line of a note, 26 a marked one, 0 any other. */
    readonly usage: number;
    /** The block it stands in: a place in `frames`. */
    readonly block: number;
}

/** A block of text: its outer box, and the frame around it where it has one. */
export interface Frame {
    /** Two opposite corners. */
    readonly box: readonly [Vector, Vector];
    readonly envelope: {
        /** Whether the frame is drawn. */
        readonly frame: boolean;
        readonly backgroundColour: Rgba;
        readonly frameColour: Rgba;
        readonly anchorType: number;
        readonly anchor: Vector;
    } | null;
}

/** The placement as its call leaves it, in double precision. */
export interface Located {
    /** In plane coordinates. */
    readonly point: Vector;
    /** 16 numbers, as in recipes. */
    readonly viewMatrix: Float64Array;
}

/** What was measured, in double precision: the number that the value text shows. */
export interface Measured {
    /** Lengths in model units, angles in degrees; not a number where there is nothing to measure. */
    readonly value: number;
    readonly kind: "length" | "angle";
}

/** A number, a colour with red in its lowest byte, a point or points in double precision, or a line. */
export type HandedBackValue =
    | number
    | Vector
    | readonly Vector[]
    | { readonly start: Vector; readonly end: Vector };

/** What one call gave back beside the annotation. */
export interface CallResult {
    readonly call: string;
    /** 0 once the annotation is filled, -1 where the call leaves it alone; null where it has none. */
    readonly status: number | null;
    readonly located: Located | null;
    readonly handedBack: Readonly<Record<string, HandedBackValue>>;
    readonly measured: Measured | null;
}

/** A finished annotation. It holds plain data: it can be cloned and sent to workers. */
export interface Annotation {
    /** 4 rows of 4 numbers: X axis, Y axis, normal and origin of its plane in model coordinates. */
    readonly plane: Float32Array;
    readonly leaders: readonly Leader[];
    readonly extensionLines: readonly ExtensionLine[];
    readonly specialLines: readonly SpecialLine[];
    /** Lines that calls leave to their caller to draw: 6 doubles each, in model coordinates. */
    readonly callerLines: readonly Float64Array[];
    readonly texts: readonly Text[];
    readonly frames: readonly Frame[];
    /** 1 length of an edge, 2 angle, 4 diameter, 6 radius, 10 linear, 28 clipped arc, 0 unset. */
    readonly type: number;
    readonly flags: {
        /** The number of dimensions of its space. */
        readonly dim: number;
        readonly display: boolean;
        /** Whether its text stands parallel to the screen. */
        readonly screenParallel: boolean;
    };
    /** Of the last call that has one, as the two below. */
    readonly status: number | null;
    readonly located: Located | null;
    readonly measured: Measured | null;
    /** By all calls together. */
    readonly handedBack: Readonly<Record<string, HandedBackValue>>;
    /** What each call gave back. */
    readonly calls: readonly CallResult[];
}
