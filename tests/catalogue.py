#!/usr/bin/env python3
"""The entry points as dorvale.h declares them, against every other list of them, and the members of
`finish` against their page: one line for each that a list lacks, and for each name in a list that
is not known."""

import fnmatch
import json
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def read(path):
    return (ROOT / path).read_text(encoding="utf-8")


def declared():
    """Free functions with their arguments, and the static members of the classes."""
    header = re.sub(r"//.*", "", read("include/dorvale/dorvale.h"))
    functions = dict(re.findall(r"DORVALE_API (?:void|int) (\w+)\(([^;]*)\);", header))
    members = set(re.findall(r"static [\w:*&<> ]+?(\w+)\(", header))
    return functions, members


def first_cells(path):
    """The names in the first column of a page's tables."""
    return set(re.findall(r"^\| `(PMI\w+)`", read(path), re.M))


def calls_in(text):
    return set(re.findall(r'"call":\s*"(\w+)"', text))


def table_rows(path):
    """The names that begin the rows of a table in C++. Overloads of one name have an ending."""
    return {name.split("_")[0] for name in re.findall(r'^ {4}\{"(\w+)",', read(path), re.M)}


def scenes():
    return set().union(*(calls_in(path.read_text(encoding="utf-8"))
                         for path in (ROOT / "host/scenes").glob("*.json")))


def exported(path, names):
    patterns = re.findall(r"^\s+([\w*]+);", read(path), re.M)
    return {name for name in names if any(fnmatch.fnmatch(name, p) for p in patterns)}


def finishing():
    """The members of `finish` that are read, and those that the page of scenes describes."""
    page = read("docs/scene.md").split("## Finishing")[1].split("```")[0]
    return (set(re.findall(r'members\.find\("(\w+)"\)', read("host/scene/finish.cpp"))),
            set(re.findall(r"^\| `(\w+)`", page, re.M)))


def main():
    functions, members = declared()
    makers = {name for name, arguments in functions.items() if "Ank_PMI*" in arguments}
    host = table_rows("host/calls/calls.cpp")
    record = read("tests/packaging/exports/Dorvale.txt")
    lists = [
        # The list, what it must have, what it has.
        ("src/frame/dorvale.map", functions, exported("src/frame/dorvale.map", functions)),
        ("tests/packaging/exports/Dorvale.txt (made by ./dev abi --approve)", set(functions) | members,
         set(re.findall(r"^(?:CDimSymUitity::|CArithmeticOfPMI::)?(\w+)\(", record, re.M))
         - {"CDimSymUitity", "CArithmeticOfPMI"}),
        ("the table in host/calls/calls.cpp", makers, host - members),
        ("the table in tests/support/calls.cpp", (set(functions) - makers) | (members - host),
         table_rows("tests/support/calls.cpp")),
        ("the examples of docs/scene.md", makers, calls_in(read("docs/scene.md")) - members),
        ("any scene of host/scenes", makers, scenes() - members),
        ("the table in README.md", makers, first_cells("README.md")),
        ("the table in docs/flags.md (made by host_tests)", makers, first_cells("docs/flags.md")),
        ("the table in examples/kinds.cpp", makers, table_rows("examples/kinds.cpp")),
    ]
    complaints = []
    for where, needed, there in lists:
        complaints += [f"{name} is missing in {where}" for name in sorted(set(needed) - there)]
        complaints += [f"{name} stands in {where} and is not declared in include/dorvale/dorvale.h"
                       for name in sorted(there - set(functions) - members)]
    finish, described = finishing()
    complaints += [f"the member {name} of finish stands in one of docs/scene.md and"
                   " host/scene/finish.cpp alone" for name in sorted(finish ^ described)]
    print(*complaints, sep="\n", file=sys.stderr, end="\n" if complaints else "")
    print(f"{len(functions)} entry points, {len(members)} names of members, {len(lists)} lists")
    return 1 if complaints or not makers or not members or not finish else 0


if __name__ == "__main__":
    sys.exit(main())
