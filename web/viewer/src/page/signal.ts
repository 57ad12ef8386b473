/** Tells those who listen, in the order in which they came. */
export class Signal {
    private readonly listeners_: (() => void)[] = [];

    listen(listener: () => void): void {
        this.listeners_.push(listener);
    }

    emit(): void {
        this.listeners_.forEach((listener) => listener());
    }
}
