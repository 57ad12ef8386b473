// Text as quads of one atlas, one draw call for all of it.
import {
    BufferAttribute,
    type BufferGeometry,
    Color,
    InstancedBufferGeometry,
    InstancedInterleavedBuffer,
    InterleavedBufferAttribute,
    ShaderMaterial,
    Vector3,
} from "three";
import type { Vec } from "../rules/vec.js";
import { type Box, isUpright, type Label } from "./labels.js";
import { em, type Glyphs, solid } from "./glyphs.js";

/**
 * The axes of a label as `facing` has them, found for each corner: while the view turns no text is
 * ever mirrored or upside down, without a line of script.
 */
const vertexShader = `
attribute vec3 center;
attribute vec3 xAxis;
attribute vec3 yAxis;
attribute vec4 place;
attribute vec4 spot;
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
    vec2 inAtlas = spot.xy + position.xy * spot.zw;
    at = vec2(inAtlas.x / size.x, 1.0 - inAtlas.y / size.y);
    vec2 offset = place.xy + position.xy * place.zw;
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

/** Of a frame, in em. */
const barWidth = 0.07;

/** The four sides of a frame. */
function barsOf({ left, bottom, width, height }: Box, thick: number): Box[] {
    return [
        { left, bottom, width, height: thick },
        { left, bottom: bottom + height - thick, width, height: thick },
        { left, bottom, width: thick, height },
        { left: left + width - thick, bottom, width: thick, height },
    ];
}

/** From the lower left, counter-clockwise. */
const corners = new BufferAttribute(new Float32Array([0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0]), 3);
const triangles = new BufferAttribute(new Uint16Array([0, 1, 2, 0, 2, 3]), 1);

/** What is said of a quad, and in how many numbers. */
const parts = { center: 3, xAxis: 3, yAxis: 3, lift: 1, place: 4, spot: 4 } as const;
const numbersOfQuad = Object.values(parts).reduce((sum, count) => sum + count, 0);

/** A quad for every character, and for every side of a frame. */
export function writingGeometry(labels: readonly Label[], atlas: Glyphs): BufferGeometry {
    const count = labels.reduce((sum, { glyphs, frame }) => sum + glyphs.length + (frame ? 4 : 0), 0);
    const quads = new Float32Array(numbersOfQuad * count);
    let at = 0;
    const put = (v: Vec) => {
        quads[at++] = v[0];
        quads[at++] = v[1];
        quads[at++] = v[2];
    };
    /** What the quads of a label have in common. */
    const begin = (label: Label) => {
        put(label.center);
        put(label.x);
        put(label.y);
        // What stands upright on a face would else sink into it.
        quads[at++] = isUpright(label) ? label.width + label.height : 0;
    };
    for (const label of labels) {
        const { height, em: wide } = label;
        let start = label.left;
        for (const { x, y, advance, left, bottom, width, height: high } of label.glyphs) {
            begin(label);
            quads[at++] = start + left * wide;
            quads[at++] = label.bottom + bottom * height;
            quads[at++] = width * wide;
            quads[at++] = high * height;
            quads[at++] = x + left * em;
            quads[at++] = y - bottom * em;
            quads[at++] = width * em;
            quads[at++] = -high * em;
            start += advance * wide;
        }
        if (label.frame !== undefined) {
            const white = atlas.of(solid);
            for (const { left, bottom, width, height: high } of barsOf(label.frame, barWidth * height)) {
                begin(label);
                quads.set([left, bottom, width, high, white.x, white.y, 0, 0], at);
                at += 8;
            }
        }
    }
    const geometry = new InstancedBufferGeometry();
    geometry.setAttribute("position", corners).setIndex(triangles);
    const all = new InstancedInterleavedBuffer(quads, numbersOfQuad, 1);
    let offset = 0;
    for (const [name, size] of Object.entries(parts)) {
        geometry.setAttribute(name, new InterleavedBufferAttribute(all, size, offset));
        offset += size;
    }
    geometry.instanceCount = count;
    return geometry;
}
