#!/usr/bin/env python3
"""The host's rooms include one way, as docs/architecture.md draws it: one line for each include that
goes back, and for each file without a room."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PAGE = "docs/architecture.md"
# Used by every room, and by the programs alone.
GROUND = ["system"]


def main():
    drawn = re.search(r"^ +(program ->.*)$", (ROOT / PAGE).read_text(encoding="utf-8"), re.M)
    rooms = [room.strip() for room in drawn[1].split("->")] + GROUND
    complaints = []
    for path in sorted((ROOT / "host").rglob("*.[ch]*")):
        room = path.relative_to(ROOT / "host").parts[0]
        name = path.relative_to(ROOT)
        if path.suffix not in (".h", ".cpp"):
            continue
        if room not in rooms:
            complaints.append(f"{name}: {room} is no room of {PAGE}")
            continue
        for included in re.findall(r'#include "host/(\w+)/', path.read_text(encoding="utf-8")):
            if included not in rooms[rooms.index(room):]:
                complaints.append(f"{name}: {room} may not include from {included}")
    print(*complaints, sep="\n", file=sys.stderr, end="\n" if complaints else "")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
