// Going through the things that can be seen, one after the other, without a mouse.
import { type Pickable } from "./snap.js";
import { type Thing } from "./things.js";
import { type Frame, toScreen } from "./view.js";
import type { Vec } from "./vec.js";

/** A thing, and the points at which it may be pointed at. */
interface Stop {
    readonly thing: Thing;
    readonly at: readonly Vec[];
}

/** Of the way along an edge: not its ends, which are vertices. */
const along = [0.5, 0.3, 0.7, 0.15, 0.85];

/** Edges first: what is measured most. */
function stopsOf({ edges, points }: Pickable): Stop[] {
    const partOf = (through: readonly Vec[], part: number): Vec => {
        const place = part * (through.length - 1);
        const i = Math.min(through.length - 2, Math.floor(place));
        const t = place - i;
        return [0, 1, 2].map((k) => through[i]![k]! + t * (through[i + 1]![k]! - through[i]![k]!)) as unknown as Vec;
    };
    return [
        ...edges.map(({ edge, through }) => ({ thing: edge, at: along.map((part) => partOf(through, part)) })),
        ...points.map((thing) => ({ thing, at: [thing.at] })),
    ];
}

/** Where one stands in the round: a place in the list of all things. */
export interface Step {
    readonly index: number;
    /** The pixel at which the thing is pointed at. */
    readonly pixel: readonly [number, number];
}

/**
 * The next thing, or the one before it, that is on the screen and under the cursor where it is
 * pointed at; undefined where there is none.
 *
 * @param from the place in the list to start from; undefined before its beginning
 * @param under the thing under a pixel
 */
export function stepped(
    things: Pickable,
    from: number | undefined,
    direction: 1 | -1,
    frame: Frame,
    under: (x: number, y: number) => Thing | undefined,
): Step | undefined {
    const stops = stopsOf(things);
    const start = from ?? (direction > 0 ? -1 : stops.length);
    for (let k = 1; k <= stops.length; ++k) {
        const index = (start + k * direction + 2 * stops.length) % stops.length;
        const { thing, at } = stops[index]!;
        for (const point of at) {
            const [x, y] = toScreen(point, frame);
            const isOnScreen = x >= 0 && y >= 0 && x < frame.width && y < frame.height;
            if (isOnScreen && under(x, y) === thing) {
                return { index, pixel: [x, y] };
            }
        }
    }
    return undefined;
}
