#!/usr/bin/env python3
"""Compares the interface of a library, as its debug information has it, with the one on record:
symbols, signatures, and the classes and records behind them."""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

SKIPPED = 77

OPTIONS = """
    --exported-interfaces-only --drop-undefined-syms --no-elf-needed --no-corpus-path
    --no-comp-dir-path --no-show-locs --no-parameter-names --type-id-style hash
""".split()

# The standard library's types are named and not looked into: they are the compiler's. The label
# makes abidw keep such a type's name where it would drop the type.
OPAQUE = """
[suppress_type]
  label = Artificial private types suppression specification
  name_regexp = ^(std|__gnu_cxx)::
  drop = yes
"""


def put_in_order(scope):
    """Orders the types of a scope by their names; abidw does it by where they are declared."""
    for inner in scope.findall("namespace-decl"):
        put_in_order(inner)
    scope[:] = sorted(scope, key=ElementTree.tostring)


def dump(library, folder):
    """The interface as text: the same wherever the library was built."""
    opaque = folder / "opaque.ini"
    opaque.write_text(OPAQUE)
    command = ["abidw", *OPTIONS, "--suppressions", opaque, library]
    corpus = ElementTree.fromstring(
        subprocess.run(command, check=True, capture_output=True, text=True).stdout
    )
    units = corpus.findall("abi-instr")
    if not units:
        # abidiff would compare the symbols alone.
        sys.exit(f"{library} has no debug information")
    for unit in units:
        unit.set("path", re.sub("^.*/src/", "src/", unit.get("path")))
        put_in_order(unit)
    ElementTree.indent(corpus, " ")
    return ElementTree.tostring(corpus, encoding="unicode") + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--approve", action="store_true", help="take the interface over instead")
    parser.add_argument("library", type=pathlib.Path)
    parser.add_argument("record", type=pathlib.Path)
    arguments = parser.parse_args()
    if not (shutil.which("abidw") and shutil.which("abidiff")):
        print("skipped: abidw and abidiff are not installed (Debian: abigail-tools)")
        return SKIPPED

    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        interface = dump(arguments.library, folder)
        if arguments.approve:
            arguments.record.write_text(interface)
            return 0
        built = folder / "built.abi"
        built.write_text(interface)
        command = ["abidiff", "--harmless", "--leaf-changes-only", arguments.record, built]
        if subprocess.run(command, check=False).returncode == 0:
            print(f"{arguments.library.name}: as on record")
            return 0
    print("The interface is not the one on record. If that is meant: ./dev abi --approve")
    return 1


sys.exit(main())
