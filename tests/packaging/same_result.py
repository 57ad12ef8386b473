#!/usr/bin/env python3
"""Compares what two builds of pmi-host make of every scene: structure, texts and flags exactly,
numbers within 1e-5 of the scene's size, and pictures within 0.01."""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree

NUMBER = re.compile(r"-?\d+(?:\.\d+)?(?:[eE][-+]?\d+)?")
PICTURE_TOLERANCE = 0.01


def differences(a, b, tolerance, where=""):
    """Yields a line for each place in which two dumps differ."""
    if type(a) is not type(b):
        yield f"{where}: {a} and {b}"
    elif isinstance(a, dict):
        if list(a) != list(b):
            yield f"{where}: {list(a)} and {list(b)}"
        else:
            for key in a:
                yield from differences(a[key], b[key], tolerance, f"{where}.{key}")
    elif isinstance(a, list):
        if len(a) != len(b):
            yield f"{where}: {len(a)} and {len(b)} items"
        else:
            for i, (item_a, item_b) in enumerate(zip(a, b)):
                yield from differences(item_a, item_b, tolerance, f"{where}[{i}]")
    elif isinstance(a, float):
        if not abs(a - b) <= tolerance:
            yield f"{where}: {a} and {b}"
    elif a != b:
        yield f"{where}: {a!r} and {b!r}"


def picture(path):
    """A picture as nested lists, the numbers in its attributes apart from what is between them."""

    def attribute(value):
        return [NUMBER.split(value), [float(number) for number in NUMBER.findall(value)]]

    def element(node):
        attributes = {name: attribute(value) for name, value in node.attrib.items()}
        return [node.tag, node.text, attributes, [element(child) for child in node]]

    return element(xml.etree.ElementTree.parse(path).getroot())


def size_of(scene):
    """The longest side of the box around the points of a scene."""
    points = []

    def collect(value):
        if isinstance(value, dict):
            for item in value.values():
                collect(item)
        elif isinstance(value, list):
            if len(value) == 3 and all(isinstance(item, (int, float)) for item in value):
                points.append(value)
            for item in value:
                collect(item)

    collect(scene)
    return max(max(axis) - min(axis) for axis in zip(*points))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--scenes", type=pathlib.Path, required=True)
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    parser.add_argument("--native", type=pathlib.Path, required=True)
    parser.add_argument("other", nargs="+")
    arguments = parser.parse_args()
    hosts = {"native": [str(arguments.native)], "other": arguments.other}

    # Everything relative to the folder: a name that starts with a slash is an option on Windows.
    folder = arguments.folder
    folder.mkdir(exist_ok=True)
    scenes = sorted(arguments.scenes.glob("*.json"))
    for name, host in hosts.items():
        subprocess.run([*host, "gallery", name], cwd=folder, check=True)
    found = 0
    for scene in scenes:
        dumps = []
        for host in hosts.values():
            command = [*host, "dump", os.path.relpath(scene, folder)]
            output = subprocess.run(command, cwd=folder, check=True, capture_output=True)
            dumps.append(json.loads(output.stdout))
        tolerance = 1e-5 * size_of(json.loads(scene.read_text(encoding="utf-8")))
        pictures = [picture(folder / name / f"{scene.stem}.svg") for name in hosts]
        for line in (*differences(*dumps, tolerance), *differences(*pictures, PICTURE_TOLERANCE)):
            print(f"{scene.name}{line}")
            found += 1
    print(f"{len(scenes)} scenes, {found} differences")
    return 0 if scenes and not found else 1


sys.exit(main())
