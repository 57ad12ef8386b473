import { cross, dot, moved, size, sub, turned, unit, type Vec } from "./vec.js";

/** How the model is looked at: unit vectors to the right, upwards and towards the viewer. */
export interface View {
    readonly right: Vec;
    readonly up: Vec;
    readonly to: Vec;
}

function viewOf(right: Vec, up: Vec): View {
    return { right: unit(right), up: unit(up), to: unit(cross(right, up)) };
}

/** The standard views by the names that scenes give them. */
export const standardViews = {
    top: viewOf([1, 0, 0], [0, 1, 0]),
    front: viewOf([1, 0, 0], [0, 0, 1]),
    right: viewOf([0, 1, 0], [0, 0, 1]),
    back: viewOf([-1, 0, 0], [0, 0, 1]),
    left: viewOf([0, -1, 0], [0, 0, 1]),
    bottom: viewOf([1, 0, 0], [0, -1, 0]),
    iso: viewOf([1, 1, 0], [-1, 1, 2]),
} as const;

export type StandardView = keyof typeof standardViews;

/** As scenes and the library have it: row by row for row vectors, without a translation. */
export function matrixOf({ right, up, to }: View): number[] {
    return [0, 1, 2].flatMap((i) => [right[i]!, up[i]!, to[i]!, 0]).concat([0, 0, 0, 1]);
}

/** The view of a matrix, of whatever scale and translation; that of a view is the same to the last bit. */
export function viewOfMatrix(m: ArrayLike<number>): View {
    const column = (i: number): Vec => [m[i]!, m[4 + i]!, m[8 + i]!];
    const given: View = { right: column(0), up: column(1), to: column(2) };
    const view = viewOf(given.right, given.up);
    const isView = (["right", "up", "to"] as const).every(
        (axis) => size(sub(given[axis], view[axis])) < 1e-12,
    );
    return isView ? given : view;
}

/** Turned by a drag: the model follows the mouse, over the poles and on. Angles in radians. */
export function orbited(view: View, toRight: number, downwards: number): View {
    const about = (v: Vec) => turned(turned(v, view.up, -toRight), view.right, -downwards);
    return viewOf(about(view.right), about(view.up));
}

/** Turned about the line of sight, counter-clockwise as the viewer sees the camera turn. */
export function rolled({ right, up, to }: View, angle: number): View {
    return viewOf(turned(right, to, angle), turned(up, to, angle));
}

/** An orthographic picture: what stands in its middle, and how large a pixel is in the model. */
export interface Frame {
    readonly view: View;
    readonly target: Vec;
    readonly unitsPerPixel: number;
    readonly width: number;
    readonly height: number;
}

/** Where a point stands on the screen: pixels from the top left, and its depth towards the viewer. */
export function toScreen(p: Vec, frame: Frame): Vec {
    const d = sub(p, frame.target);
    return [
        frame.width / 2 + dot(d, frame.view.right) / frame.unitsPerPixel,
        frame.height / 2 - dot(d, frame.view.up) / frame.unitsPerPixel,
        dot(d, frame.view.to),
    ];
}

/** The point in the plane of the target, parallel to the screen, that stands at a pixel. */
export function fromScreen(x: number, y: number, frame: Frame): Vec {
    const u = (x - frame.width / 2) * frame.unitsPerPixel;
    const v = (frame.height / 2 - y) * frame.unitsPerPixel;
    const { right, up } = frame.view;
    return [0, 1, 2].map((i) => frame.target[i]! + u * right[i]! + v * up[i]!) as unknown as Vec;
}

/** Zoomed about a pixel: what stands under it stays there. A factor above 1 shows more. */
export function zoomed(frame: Frame, x: number, y: number, factor: number): Frame {
    const under = fromScreen(x, y, frame);
    const target = frame.target.map(
        (t, i) => under[i]! + (t - under[i]!) * factor,
    ) as unknown as Vec;
    return { ...frame, target, unitsPerPixel: frame.unitsPerPixel * factor };
}

/** Moved with the mouse. */
export function panned(frame: Frame, dx: number, dy: number): Frame {
    return { ...frame, target: fromScreen(frame.width / 2 - dx, frame.height / 2 - dy, frame) };
}

/** The part of the picture that a part fills, and that it fills with all that stands beside it. */
const filled = { part: 0.72, all: 0.95 };

/**
 * Shows the points of a part with a margin around them, and what stands beside it.
 *
 * @param strip the height at the top of the picture that is left free, in pixels
 */
export function fitted(frame: Frame, part: Iterable<Vec>, beside: Iterable<Vec> = [], strip = 0): Frame {
    const free = frame.height - Math.min(strip, frame.height / 2);
    const axes = [frame.view.right, frame.view.up, frame.view.to];
    const low = [Infinity, Infinity, Infinity];
    const high = [-Infinity, -Infinity, -Infinity];
    const include = (points: Iterable<Vec>) => {
        for (const p of points) {
            axes.forEach((axis, i) => {
                low[i] = Math.min(low[i]!, dot(p, axis));
                high[i] = Math.max(high[i]!, dot(p, axis));
            });
        }
    };
    include(part);
    if (low[0] === Infinity) {
        return frame;
    }
    for (const i of [0, 1]) {
        const margin = ((high[i]! - low[i]!) / 2) * (filled.all / filled.part - 1);
        low[i]! -= margin;
        high[i]! += margin;
    }
    include(beside);
    const centre = axes.map((_, i) => (low[i]! + high[i]!) / 2);
    const target = [0, 1, 2].map((k) =>
        axes.reduce((sum, axis, i) => sum + centre[i]! * axis[k]!, 0),
    ) as unknown as Vec;
    const unitsPerPixel = Math.max(
        (high[0]! - low[0]!) / (frame.width * filled.all),
        (high[1]! - low[1]!) / (free * filled.all),
        1e-6,
    );
    const down = ((frame.height - free) / 2) * unitsPerPixel;
    return { ...frame, target: moved(target, frame.view.up, down), unitsPerPixel };
}
