/** A finger covers things within this many pixels. */
const broad = [0, 7, 14] as const;

/** The pixels that a finger may mean, the nearest first. */
export function besides(x: number, y: number): (readonly [number, number])[] {
    return broad.flatMap((radius) => {
        const count = radius === 0 ? 1 : 8;
        return Array.from({ length: count }, (_, i) => {
            const angle = (2 * Math.PI * i) / count;
            return [x + radius * Math.cos(angle), y + radius * Math.sin(angle)] as const;
        });
    });
}
