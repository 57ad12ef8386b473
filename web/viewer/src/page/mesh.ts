import { BufferAttribute, BufferGeometry } from "three";

/**
 * The `mesh` of a scene: positions and triangles in base64, and the triangles of each face; where
 * the part has free curves, their pieces, two vertices each.
 */
export interface SceneMesh {
    readonly positions: string;
    readonly triangles: string;
    readonly faces: readonly number[];
    readonly curves?: string;
}

export interface MeshGeometry {
    readonly faces: BufferGeometry;
    /** Lines that are drawn and not measured. */
    readonly curves?: BufferGeometry;
}

function bytesOf(value: unknown, member: string): ArrayBuffer {
    if (typeof value !== "string") {
        throw new Error(`mesh.${member}: expected base64`);
    }
    try {
        const text = atob(value);
        const bytes = new Uint8Array(text.length);
        for (let i = 0; i < text.length; ++i) {
            bytes[i] = text.charCodeAt(i);
        }
        return bytes.buffer;
    } catch {
        throw new Error(`mesh.${member}: expected base64`);
    }
}

/** Numbers of 32 bits that come in groups. */
function numbersOf<T>(
    value: unknown,
    member: string,
    group: { size: number; name: string },
    type: new (bytes: ArrayBuffer) => T,
): T {
    const bytes = bytesOf(value, member);
    if (bytes.byteLength % (4 * group.size) !== 0) {
        throw new Error(`mesh.${member}: expected ${group.name}`);
    }
    return new type(bytes);
}

/** @throws Error with one line that says where and what */
export function meshGeometry(mesh: SceneMesh): MeshGeometry {
    const vertices = numbersOf(
        mesh.positions,
        "positions",
        { size: 3, name: "three 32-bit numbers for each vertex" },
        Float32Array,
    );
    if (!vertices.every((x) => Math.abs(x) <= 1e9)) {
        throw new Error("mesh.positions: expected finite numbers of at most 1e9 in size");
    }
    const indices = (value: unknown, member: string, group: { size: number; name: string }) => {
        const list = numbersOf(value, member, group, Uint32Array);
        if (list.some((i) => i >= vertices.length / 3)) {
            throw new Error(`mesh.${member}: expected indices of vertices that are there`);
        }
        return new BufferAttribute(list, 1);
    };
    const position = new BufferAttribute(vertices, 3);
    const faces = new BufferGeometry().setAttribute("position", position);
    faces.setIndex(
        indices(mesh.triangles, "triangles", {
            size: 3,
            name: "three 32-bit indices for each triangle",
        }),
    );
    faces.computeVertexNormals();
    if (mesh.curves === undefined) {
        return { faces };
    }
    const curves = new BufferGeometry().setAttribute("position", position);
    curves.setIndex(
        indices(mesh.curves, "curves", { size: 2, name: "two 32-bit indices for each piece" }),
    );
    return { faces, curves };
}
