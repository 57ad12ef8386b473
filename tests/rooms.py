#!/usr/bin/env python3
"""The rooms of src/, host/ and host/step/ include one way, as docs/architecture.md draws them: one
line for each include that goes back, and for each file without a room."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PAGE = "docs/architecture.md"


def drawings():
    """Each drawing of the page, in its order: the rooms, each with those that it may include."""
    page = (ROOT / PAGE).read_text(encoding="utf-8")
    for lines in re.findall(r"(?:^ {4}[\w, ]+ -> .*\n)+", page, re.M):
        rooms = {}
        for line in lines.splitlines():
            levels = [[room.strip() for room in level.split(",")] for level in line.split("->")]
            for i, level in enumerate(levels):
                below = {room for lower in levels[i + 1:] for room in lower}
                for room in level:
                    rooms.setdefault(room, {room}).update(below)
        yield rooms


def sources(folder):
    """The sources under a folder, each with its path from there and the files that it includes."""
    for path in sorted((ROOT / folder).rglob("*.[ch]*")):
        if path.suffix in (".h", ".cpp"):
            included = re.findall(r'^#include "(.*)"', path.read_text(encoding="utf-8"), re.M)
            yield path.relative_to(ROOT), path.relative_to(ROOT / folder).parts, included


def walk(folder, prefix, rooms):
    """Every file stands in a room, and includes files of its room and those below alone."""
    for name, (room, *inside), included in sources(folder):
        if not inside or room not in rooms:
            yield f"{name}: stands in no room of {PAGE}"
            continue
        for file in included:
            if not file.startswith(prefix) or file[len(prefix):].split("/")[0] not in rooms[room]:
                yield f"{name}: {room} may not include {file}"


def walk_step(folder, rooms):
    """The files beside the rooms are `records`, but for those that put rooms together: these may
    include anything, and no room includes them."""
    prefix = folder + "/"
    above = {str(name.with_suffix("")) for name, inside, included in sources(folder)
             if len(inside) == 1 and any(f.startswith(prefix) and f.count("/") > 2 for f in included)}
    for name, inside, included in sources(folder):
        room = inside[0] if len(inside) > 1 else "records"
        if room not in rooms:
            yield f"{name}: stands in no room of {PAGE}"
        elif str(name.with_suffix("")) not in above:
            for file in included:
                if not file.startswith(prefix):
                    continue
                parts = file[len(prefix):].split("/")
                other = parts[0] if len(parts) > 1 else "records"
                if other not in rooms[room] or file.removesuffix(".h") in above:
                    yield f"{name}: {room} may not include {file}"


def main():
    library, host, step = drawings()
    # What exports the library, and what every room of the host may use.
    library["frame"] = set()
    host = {room: below | {"system"} for room, below in (host | {"system": set()}).items()}
    complaints = [*walk("src", "", library), *walk("host", "host/", host),
                  *walk_step("host/step", step)]
    print(*complaints, sep="\n", file=sys.stderr, end="\n" if complaints else "")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
