// An annotation of the package in the words of `pmi-host dump`.

const number = (value) => (Number.isFinite(value) ? value + 0 : null);
const numbers = (values) => Array.from(values, number);

function triples(points) {
    const list = [];
    for (let i = 0; i < points.length; i += 3) {
        list.push(numbers(points.subarray(i, i + 3)));
    }
    return list;
}

function curveOf(curve) {
    const common = {
        usageType: curve.usage,
        displayType: curve.displayType,
        display: curve.display,
    };
    switch (curve.kind) {
        case "line": {
            const [start, end] = triples(curve.points);
            return { curveType: 3, ...common, start, end };
        }
        case "polyline":
            return {
                curveType: 1,
                ...common,
                domain: numbers(curve.domain),
                points: triples(curve.points),
            };
        default:
            return {
                curveType: 2,
                ...common,
                centre: numbers(curve.centre),
                normal: numbers(curve.normal),
                originDirection: numbers(curve.originDirection),
                axes: curve.axes.map(numbers),
                radius: numbers(curve.radii),
                parameter: numbers(curve.parameter),
                domain: numbers(curve.domain),
                ends: [numbers(curve.from), numbers(curve.to)],
            };
    }
}

function leaderOf({ curve, terminator: head, type, stub }) {
    return {
        leaderType: type,
        stub,
        terminator: {
            type: head.type,
            size: numbers([head.length, head.width]),
            location: numbers(head.tip),
            direction: numbers(head.direction),
        },
        curves: curve === null ? [] : [curveOf(curve)],
    };
}

function blockOf({ box, envelope }, texts) {
    return {
        outerBox: box.map(numbers),
        envelope: envelope && {
            frame: envelope.frame,
            backgroundColour: numbers(envelope.backgroundColour),
            frameColour: numbers(envelope.frameColour),
            anchorType: envelope.anchorType,
            anchor: numbers(envelope.anchor),
        },
        texts: texts.map((text) => ({
            text: text.text,
            font: text.font,
            charWidthHeight: numbers([text.width, text.height]),
            charSpacing: number(text.spacing),
            location: numbers(text.location),
            axes: [numbers(text.xAxis), numbers(text.yAxis)],
            usageType: text.usage,
        })),
    };
}

function handedBackOf(value) {
    if (typeof value === "number") {
        return value;
    }
    if ("start" in value) {
        return { start: numbers(value.start), end: numbers(value.end) };
    }
    return typeof value[0] === "number" ? numbers(value) : value.map(numbers);
}

function callOf({ call, status, located, handedBack }) {
    const others = Object.entries(handedBack).map(([name, value]) => [name, handedBackOf(value)]);
    const place = located && {
        point: numbers(located.point),
        viewMatrix: numbers(located.viewMatrix),
    };
    return {
        call,
        handedBack: {
            ...(status === null ? {} : { status }),
            ...(place === null ? {} : { locate: place }),
            ...Object.fromEntries(others),
        },
    };
}

export function dumpOf(annotation, name) {
    const { plane, flags, measured, frames, texts } = annotation;
    return {
        ...(name === undefined ? {} : { name }),
        calls: annotation.calls.map(callOf),
        ...(measured === null
            ? {}
            : { measured: { value: number(measured.value), kind: measured.kind } }),
        annotation: {
            type: annotation.type,
            dim: flags.dim,
            display: flags.display,
            screenParallel: flags.screenParallel,
            definitionPlane: [0, 4, 8, 12].map((i) => numbers(plane.subarray(i, i + 4))),
            textBlocks: frames.map((frame, block) =>
                blockOf(
                    frame,
                    texts.filter((text) => text.block === block),
                ),
            ),
            leaders: annotation.leaders.map(leaderOf),
            extensionLines: annotation.extensionLines.map(({ curve, display, type }) => ({
                type,
                display,
                curve: curve && curveOf(curve),
            })),
            specialLines: annotation.specialLines.map(({ curves, usage }) => ({
                usage,
                curves: curves.map(curveOf),
            })),
        },
    };
}
