import { element } from "./dom.js";

/** Says something in one line, with something to do about it. */
export function notice(text: string, action?: { readonly label: string; readonly run: () => void }): void {
    const line = element("notice");
    const button = (face: string, run: () => void) => {
        const made = document.createElement("button");
        made.textContent = face;
        made.addEventListener("click", () => {
            hideNotice();
            run();
            element("canvas").focus();
        });
        return made;
    };
    const close = button("✕", () => undefined);
    close.setAttribute("aria-label", "Close");
    line.replaceChildren(text, ...(action ? [button(action.label, action.run)] : []), close);
    line.hidden = false;
}

export function hideNotice(): void {
    element("notice").hidden = true;
}
