/** An element of the page by its id. */
export function element<T extends HTMLElement>(id: string): T {
    return document.getElementById(id) as T;
}
