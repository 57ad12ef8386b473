/** How high text is on the screen when it is written, in pixels. */
const pixels = 13;

/** A round text height (1, 1.2, 1.5, 2, ... times a power of ten) that reads well at this zoom. */
export function textHeight(unitsPerPixel: number, factor = 1): number {
    const wanted = pixels * factor * unitsPerPixel;
    const power = 10 ** Math.floor(Math.log10(wanted));
    const steps = [1, 1.2, 1.5, 2, 2.5, 3, 4, 5, 6, 8, 10];
    const step = steps.find((s) => s * power >= wanted * 0.999) ?? 10;
    return Number((step * power).toPrecision(6));
}
