// Text as quads of one atlas, one draw call for all of it.
import { BufferAttribute, BufferGeometry, Color, ShaderMaterial, Vector3 } from "three";
import type { Vec } from "../rules/vec.js";
import { type Box, isUpright, type Label } from "./labels.js";
import { em, type Glyph, type Glyphs, solid } from "./glyphs.js";

/**
 * The axes of a label as `facing` has them, found for each corner: while the view turns no text is
 * ever mirrored or upside down, without a line of script.
 */
const vertexShader = `
attribute vec3 center;
attribute vec3 xAxis;
attribute vec3 yAxis;
attribute vec2 offset;
attribute float lift;
uniform vec2 size;
uniform vec3 right;
uniform vec3 up;
uniform vec3 to;
varying vec2 at;
void main() {
    vec3 x = xAxis;
    vec3 y = yAxis;
    if (dot(x, x) == 0.0) {
        x = right;
        y = up;
    } else {
        if (dot(cross(x, y), to) < 0.0) x = -x;
        float along = dot(x, right);
        if (along < -1e-4 || (along < 1e-4 && dot(x, up) < 0.0)) {
            x = -x;
            y = -y;
        }
    }
    at = vec2(uv.x / size.x, 1.0 - uv.y / size.y);
    gl_Position = projectionMatrix * viewMatrix * vec4(center + offset.x * x + offset.y * y + lift * to, 1.0);
}`;

const fragmentShader = `
uniform sampler2D map;
uniform vec3 color;
uniform vec3 rim;
uniform float opacity;
uniform bool isRim;
varying vec2 at;
void main() {
    vec4 texel = texture2D(map, at);
    float alpha = (isRim ? texel.a : texel.r * texel.a) * opacity;
    if (alpha < 0.02) discard;
    gl_FragColor = vec4(isRim ? rim : color, alpha);
    #include <colorspace_fragment>
}`;

/** The view's axes, which all writing shares. */
export const viewAxes = {
    right: { value: new Vector3(1, 0, 0) },
    up: { value: new Vector3(0, 1, 0) },
    to: { value: new Vector3(0, 0, 1) },
};

/** How much is seen of text that the part hides. */
export const faintText = 0.3;

export function setOpacity(material: ShaderMaterial, opacity: number): void {
    material.uniforms["opacity"]!.value = opacity;
}

export function writingMaterial(
    glyphs: Glyphs,
    color: Color,
    pass: "rim" | "ink" | "ghost",
): ShaderMaterial {
    return new ShaderMaterial({
        vertexShader,
        fragmentShader,
        uniforms: {
            ...viewAxes,
            map: { value: glyphs.texture },
            size: { value: glyphs.size },
            color: { value: color },
            rim: { value: new Color(0xf8fafc) },
            opacity: { value: pass === "ghost" ? faintText : pass === "rim" ? 0.85 : 1 },
            isRim: { value: pass === "rim" },
        },
        transparent: true,
        depthTest: pass !== "ghost",
        depthWrite: false,
    });
}

/** Of a quad, whose corners run from the lower left, counter-clockwise. */
const triangles = [0, 1, 2, 0, 2, 3] as const;

/** Of a frame, in em. */
const barWidth = 0.07;

/** One place of a glyph. */
const spot: Box = { left: 0, bottom: 0, width: 0, height: 0 };

/** The four sides of a frame. */
function barsOf({ left, bottom, width, height }: Box, thick: number): Box[] {
    return [
        { left, bottom, width, height: thick },
        { left, bottom: bottom + height - thick, width, height: thick },
        { left, bottom, width: thick, height },
        { left: left + width - thick, bottom, width: thick, height },
    ];
}

/** Faster than `set`, for three numbers. */
function put(to: Float32Array, at: number, v: Vec): void {
    to[at] = v[0];
    to[at + 1] = v[1];
    to[at + 2] = v[2];
}

export function writingGeometry(labels: readonly Label[], glyphs: Glyphs): BufferGeometry {
    const count = labels.reduce(
        (sum, { characters, frame }) => sum + characters.length + (frame ? 4 : 0),
        0,
    );
    const center = new Float32Array(12 * count);
    const xAxis = new Float32Array(12 * count);
    const yAxis = new Float32Array(12 * count);
    const offset = new Float32Array(8 * count);
    const lift = new Float32Array(4 * count);
    const uv = new Float32Array(8 * count);
    const index = new Uint32Array(6 * count);
    let quad = 0;
    let above = 0;
    /** A quad at a place in its label, of so large a part of a glyph: all of it, or its middle. */
    const add = (label: Label, { left, bottom, width, height }: Box, { x, y }: Glyph, ofGlyph: Box) => {
        for (let corner = 0; corner < 4; ++corner) {
            const right = corner === 1 || corner === 2 ? 1 : 0;
            const up = corner > 1 ? 1 : 0;
            const i = 4 * quad + corner;
            put(center, 3 * i, label.center);
            put(xAxis, 3 * i, label.x);
            put(yAxis, 3 * i, label.y);
            lift[i] = above;
            offset[2 * i] = left + right * width;
            offset[2 * i + 1] = bottom + up * height;
            uv[2 * i] = x + (ofGlyph.left + right * ofGlyph.width) * em;
            uv[2 * i + 1] = y - (ofGlyph.bottom + up * ofGlyph.height) * em;
        }
        for (let k = 0; k < 6; ++k) {
            index[6 * quad + k] = 4 * quad + triangles[k]!;
        }
        ++quad;
    };
    for (const label of labels) {
        const { height } = label;
        let start = label.left;
        // What stands upright on a face would else sink into it.
        above = isUpright(label) ? label.width + label.height : 0;
        for (const character of label.characters) {
            const glyph = glyphs.of(character);
            const { left, bottom, right, top } = glyph;
            const whole = { left, bottom, width: right - left, height: top - bottom };
            const place = {
                left: start + left * label.em,
                bottom: label.bottom + bottom * height,
                width: whole.width * label.em,
                height: whole.height * height,
            };
            add(label, place, glyph, whole);
            start += glyph.advance * label.em;
        }
        if (label.frame !== undefined) {
            const white = glyphs.of(solid);
            barsOf(label.frame, barWidth * height).forEach((bar) => add(label, bar, white, spot));
        }
    }
    return new BufferGeometry()
        .setAttribute("position", new BufferAttribute(center, 3))
        .setAttribute("center", new BufferAttribute(center, 3))
        .setAttribute("xAxis", new BufferAttribute(xAxis, 3))
        .setAttribute("yAxis", new BufferAttribute(yAxis, 3))
        .setAttribute("offset", new BufferAttribute(offset, 2))
        .setAttribute("lift", new BufferAttribute(lift, 1))
        .setAttribute("uv", new BufferAttribute(uv, 2))
        .setIndex(new BufferAttribute(index, 1));
}
