/** What the build has deflated and written in base64. */
export function inflated(packed: string): Response {
    const bytes = Uint8Array.from(atob(packed), (c) => c.charCodeAt(0));
    return new Response(new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate")));
}
