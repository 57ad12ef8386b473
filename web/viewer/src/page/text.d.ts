/** What the build puts in. */
declare module "dorvale-wasm" {
    const bytes: Uint8Array;
    export default bytes;
}
declare module "drawing-wasm" {
    /** In base64, deflated. */
    const packed: string;
    export default packed;
}
declare module "samples" {
    /** Names, and the scenes in base64, deflated. */
    const samples: Readonly<Record<string, string>>;
    export default samples;
}
declare module "licences" {
    const text: string;
    export default text;
}
