// Recipes as rows of numbers, integers and UTF-16 units: what the module reads.

/** Rows as they are kept, and as the module is handed them. */
export interface Rows {
    readonly numbers: Float64Array;
    readonly integers: Int32Array;
    readonly units: Uint16Array;
}

/** Rows that are being written. Their memory is used again. */
export class RowWriter {
    readonly numbers: number[] = [];
    readonly integers: number[] = [];
    readonly texts: string[] = [];
    private units_ = 0;

    clear(): void {
        this.numbers.length = this.integers.length = this.texts.length = this.units_ = 0;
    }

    vector(v: ArrayLike<number>): void {
        this.numbers.push(v[0]!, v[1]!, v[2]!);
    }

    list(list: ArrayLike<number>): void {
        for (let i = 0; i < list.length; ++i) {
            this.numbers.push(list[i]!);
        }
    }

    text(text: string): void {
        this.texts.push(text);
        this.units_ += text.length;
    }

    get integerCount(): number {
        return 1 + this.texts.length + this.integers.length;
    }

    get unitCount(): number {
        return this.units_;
    }

    /** Writes the rows where there is room for them. */
    writeTo(
        numbers: Float64Array,
        atNumber: number,
        integers: Int32Array,
        atInteger: number,
        units: Uint16Array,
        atUnit: number,
    ): void {
        for (let i = 0; i < this.numbers.length; ++i) {
            numbers[atNumber + i] = this.numbers[i]!;
        }
        integers[atInteger++] = this.texts.length;
        for (const text of this.texts) {
            integers[atInteger++] = text.length;
            for (let i = 0; i < text.length; ++i) {
                units[atUnit++] = text.charCodeAt(i);
            }
        }
        for (let i = 0; i < this.integers.length; ++i) {
            integers[atInteger + i] = this.integers[i]!;
        }
    }

    toRows(): Rows {
        const rows = {
            numbers: new Float64Array(this.numbers.length),
            integers: new Int32Array(this.integerCount),
            units: new Uint16Array(this.unitCount),
        };
        this.writeTo(rows.numbers, 0, rows.integers, 0, rows.units, 0);
        return rows;
    }
}
