// Light and dark: as the system has it, until the reader says otherwise.
import type { Command } from "./commands.js";
import { paintPart } from "./part.js";
import type { Stage } from "./stage.js";

/** Colours of what the page's style does not reach. */
const colors = {
    light: {
        placed: 0x123c8c,
        lit: 0xd9480f,
        following: 0x0b62c4,
        hovered: 0xe8590c,
        picked: 0x0b62c4,
        rim: 0xf8fafc,
        faces: 0xb9c6d3,
        edges: 0x2b3642,
    },
    dark: {
        placed: 0xa5c8ff,
        lit: 0xffa94d,
        following: 0x74c0fc,
        hovered: 0xff922b,
        picked: 0x4dabf7,
        rim: 0x14181d,
        faces: 0x566473,
        edges: 0xd5dee7,
    },
} as const;

type Theme = keyof typeof colors;

const place = "dorvale\ntheme";

/** What the reader has chosen, if anything; browsers may keep nothing. */
function chosen(): string | null {
    try {
        return localStorage.getItem(place);
    } catch {
        return null;
    }
}

export function themeCommand(stage: Stage): Command {
    const system = matchMedia("(prefers-color-scheme: dark)");
    let theme: Theme = "light";
    const show = (next: Theme) => {
        theme = next;
        document.documentElement.dataset["theme"] = theme;
        const { placed, lit, following, hovered, picked, rim, faces, edges } = colors[theme];
        stage.placed.paint(placed, rim);
        stage.lit.paint(lit, rim);
        stage.following.paint(following, rim);
        stage.hovered.paint(hovered);
        stage.picked.paint(picked);
        paintPart(faces, edges);
        stage.invalidate();
    };
    const follow = () => {
        const own = chosen();
        show(own === "dark" || own === "light" ? own : system.matches ? "dark" : "light");
    };
    system.addEventListener("change", follow);
    follow();
    return {
        name: "theme",
        label: "Light or dark",
        keys: ["D"],
        face: "◐",
        bar: "page",
        run: () => {
            show(theme === "dark" ? "light" : "dark");
            try {
                localStorage.setItem(place, theme);
            } catch {
                // It holds for this page then.
            }
        },
    };
}
