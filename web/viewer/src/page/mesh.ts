import { BufferAttribute, BufferGeometry } from "three";

/** The `mesh` of a scene: positions and triangles in base64, and the triangles of each face. */
export interface SceneMesh {
    readonly positions: string;
    readonly triangles: string;
    readonly faces: readonly number[];
}

function bytesOf(value: unknown, member: string): ArrayBuffer {
    if (typeof value !== "string") {
        throw new Error(`mesh.${member}: expected base64`);
    }
    try {
        return Uint8Array.from(atob(value), (c) => c.charCodeAt(0)).buffer;
    } catch {
        throw new Error(`mesh.${member}: expected base64`);
    }
}

/** @throws Error with one line that says where and what */
export function meshGeometry(mesh: SceneMesh): BufferGeometry {
    const positions = bytesOf(mesh.positions, "positions");
    const triangles = bytesOf(mesh.triangles, "triangles");
    if (positions.byteLength % 12 !== 0) {
        throw new Error("mesh.positions: expected three 32-bit numbers for each vertex");
    }
    if (triangles.byteLength % 12 !== 0) {
        throw new Error("mesh.triangles: expected three 32-bit indices for each triangle");
    }
    const vertices = new Float32Array(positions);
    const indices = new Uint32Array(triangles);
    if (!vertices.every((x) => Math.abs(x) <= 1e9)) {
        throw new Error("mesh.positions: expected finite numbers of at most 1e9 in size");
    }
    if (indices.some((i) => i >= vertices.length / 3)) {
        throw new Error("mesh.triangles: expected indices of vertices that are there");
    }
    const geometry = new BufferGeometry();
    geometry.setAttribute("position", new BufferAttribute(vertices, 3));
    geometry.setIndex(new BufferAttribute(indices, 1));
    geometry.computeVertexNormals();
    return geometry;
}
