/** A state, what it was before, and what was undone. */
export interface History<T> {
    readonly past: readonly T[];
    readonly present: T;
    readonly future: readonly T[];
}

const most = 200;

export const begun = <T>(present: T): History<T> => ({ past: [], present, future: [] });

/** A change forgets what was undone before it. */
export const changed = <T>({ past, present }: History<T>, next: T): History<T> => ({
    past: [...past, present].slice(-most),
    present: next,
    future: [],
});

export const undone = <T>(history: History<T>): History<T> =>
    history.past.length === 0
        ? history
        : {
              past: history.past.slice(0, -1),
              present: history.past.at(-1)!,
              future: [history.present, ...history.future],
          };

export const redone = <T>(history: History<T>): History<T> =>
    history.future.length === 0
        ? history
        : {
              past: [...history.past, history.present],
              present: history.future[0]!,
              future: history.future.slice(1),
          };
