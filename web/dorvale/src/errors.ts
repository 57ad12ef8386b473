/** What is wrong with a recipe or a scene, and where: one line. */
export class RecipeError extends Error {
    override readonly name = "RecipeError";

    /**
     * @param path the member, such as `circle.radius` or `annotations[3].points`; empty for the whole
     * @param expected what is wrong with it
     */
    constructor(
        readonly path: string,
        readonly expected: string,
    ) {
        super(path === "" ? expected : `${path}: ${expected}`);
    }
}

/** The module's memory could not grow. What was asked for is not there; the next call works. */
export class OutOfMemoryError extends Error {
    override readonly name = "OutOfMemoryError";

    constructor() {
        super("out of memory");
    }
}
