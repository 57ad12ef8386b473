// A part as a scene's text (docs/scene.md).
import type { Part } from "./shape.js";

function base64(numbers: Float32Array | Uint32Array): string {
    const bytes = new Uint8Array(numbers.buffer, numbers.byteOffset, numbers.byteLength);
    // A call takes some thousand arguments; pieces of three bytes need no padding between them.
    const piece = 3 * 2 ** 12;
    let text = "";
    for (let at = 0; at < bytes.length; at += piece) {
        text += btoa(String.fromCharCode(...bytes.subarray(at, at + piece)));
    }
    return text;
}

export function sceneText(title: string, { mesh, edges }: Part): string {
    const curves = mesh.curves.length === 0 ? {} : { curves: base64(mesh.curves) };
    return JSON.stringify({
        version: 1,
        title,
        kind: "STEP",
        view: "iso",
        mesh: {
            positions: base64(mesh.positions),
            triangles: base64(mesh.triangles),
            faces: mesh.faces,
            ...curves,
        },
        edges: edges.map((edge, i) => ({ id: `edge ${i + 1}`, ...edge })),
        annotations: [],
    });
}
