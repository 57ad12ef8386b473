#!/usr/bin/env python3
"""Draws the gallery and looks at its page in a browser without a window: everything is there and
loads, it fits a phone, and it follows the colour scheme."""

import argparse
import itertools
import json
import os
import pathlib
import select
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
BROWSERS = ("chromium-headless-shell", "chromium", "chromium-browser", "google-chrome")
SECONDS = 60
DESKTOP = (1280, 900)
PHONE = (390, 844)

# What the page holds, as the browser has laid it out with everything unfolded.
LOOK = """(async () => {
    const elements = (where, what) => [...where.querySelectorAll(what)];
    elements(document, "details").forEach(details => details.open = true);
    const images = elements(document, "img");
    await Promise.allSettled(images.map(image => image.decode()));
    const box = element => element.getBoundingClientRect();
    // What a box of its own scrolls does not widen the page.
    const scrolls = element => element && (getComputedStyle(element).overflowX == "auto" ||
                                           scrolls(element.parentElement));
    const width = document.documentElement.clientWidth;
    const body = getComputedStyle(document.body);
    return {
        articles: elements(document, "article").map(article => ({
            id: article.id,
            calls: elements(article, "p code").map(code => code.textContent),
            scene: elements(article, "pre code").map(code => code.textContent).join(),
            pictures: elements(article, "img").map(image => image.naturalWidth > 0 &&
                image.checkVisibility() && box(image).width > 99 && box(image).height > 9),
        })),
        width: Math.max(width, document.documentElement.scrollWidth),
        tooWide: elements(document, "body *")
            .filter(element => box(element).right > width + 0.5 && !scrolls(element.parentElement))
            .map(element => element.outerHTML.slice(0, 80)),
        background: body.backgroundColor,
        ink: body.color,
    };
})()"""


class Browser:
    """A browser that is told what to do through a pipe, and a page of it."""

    def __init__(self, program, profile):
        read_commands, self.commands = os.pipe()
        self.answers, write_answers = os.pipe()

        def connect():
            # Where the browser looks for them.
            os.dup2(read_commands, 3)
            os.dup2(write_answers, 4)

        options = "--headless --remote-debugging-pipe --no-sandbox --disable-gpu --no-first-run"
        self.process = subprocess.Popen(
            [program, *options.split(), "--disable-dev-shm-usage", f"--user-data-dir={profile}"],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
            pass_fds=(3, 4),
            preexec_fn=connect,
        )
        os.close(read_commands)
        os.close(write_answers)
        self.received = b""
        self.numbers = itertools.count(1)
        self.end = time.monotonic() + SECONDS
        self.page = {}
        self.complaints = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        # The answer names the page, and goes into every command to it.
        self.page = self.call("Target.attachToTarget", targetId=target, flatten=True)
        for domain in ("Page", "Runtime", "Log"):
            self.call(f"{domain}.enable")

    def close(self):
        self.process.terminate()
        self.process.wait()

    def next_message(self):
        while b"\0" not in self.received:
            if not select.select([self.answers], [], [], max(0, self.end - time.monotonic()))[0]:
                raise TimeoutError(f"no answer within {SECONDS} s")
            part = os.read(self.answers, 1 << 16)
            if not part:
                raise EOFError("the browser has ended")
            self.received += part
        message, self.received = self.received.split(b"\0", 1)
        return json.loads(message)

    def listen(self, is_last):
        """Reads up to a message, and notes down what the page has to complain about."""
        while True:
            message = self.next_message()
            method, said = message.get("method"), message.get("params")
            if method == "Log.entryAdded":
                self.complaints.append(f"{said['entry']['text']} {said['entry'].get('url', '')}")
            elif method == "Runtime.consoleAPICalled" and said["type"] in ("error", "warning"):
                self.complaints.append(str(said["args"]))
            elif method == "Runtime.exceptionThrown":
                self.complaints.append(said["exceptionDetails"]["exception"]["description"])
            if is_last(message):
                return message

    def call(self, method, **parameters):
        number = next(self.numbers)
        command = {"id": number, "method": method, "params": parameters, **self.page}
        os.write(self.commands, json.dumps(command).encode() + b"\0")
        answer = self.listen(lambda message: message.get("id") == number)
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer['error']}")
        return answer["result"]

    def open(self, address, size, scheme):
        self.call(
            "Emulation.setDeviceMetricsOverride",
            **dict(zip(("width", "height"), size)),
            deviceScaleFactor=1,
            mobile=size == PHONE,
        )
        preference = {"name": "prefers-color-scheme", "value": scheme}
        self.call("Emulation.setEmulatedMedia", features=[preference])
        self.call("Page.navigate", url=address)
        self.listen(lambda message: message.get("method") == "Page.loadEventFired")

    def evaluate(self, script):
        answer = self.call(
            "Runtime.evaluate", expression=script, awaitPromise=True, returnByValue=True
        )
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"]["exception"]["description"])
        return answer["result"]["value"]


def calls_of(scene):
    """The names of the calls anywhere in a scene."""
    if isinstance(scene, dict):
        found = {scene["call"]} if "call" in scene else set()
        return found.union(*map(calls_of, scene.values()))
    return set().union(*map(calls_of, scene)) if isinstance(scene, list) else set()


def missing(articles, scenes):
    """Yields what the page does not show of the scenes."""
    shown = {article["id"]: article for article in articles}
    for scene in scenes:
        article = shown.pop(f"scene-{scene.stem}", None)
        text = scene.read_text(encoding="utf-8")
        if not article:
            yield f"{scene.stem} is not there"
            continue
        if article["pictures"] != [True]:
            yield f"{scene.stem}: its picture does not show"
        if article["scene"].strip() != text.strip():
            yield f"{scene.stem}: its JSON is not that of the scene"
        if sorted(article["calls"]) != sorted(calls_of(json.loads(text))):
            yield f"{scene.stem}: its calls are given as {article['calls']}"
    yield from (f"{name} belongs to no scene" for name in shown)


def brightness(colour):
    """From 0 to 1, of a colour as the browser writes it: rgb(1, 2, 3)."""
    return sum(map(float, colour.strip("rgba()").split(",")[:3])) / (3 * 255)


def check(browser, page, scenes):
    """Yields what is wrong with the page."""
    for size, scheme in ((DESKTOP, "light"), (DESKTOP, "dark"), (PHONE, "light")):
        browser.open(page.as_uri(), size, scheme)
        seen = browser.evaluate(LOOK)
        where = f"{size[0]} pixels, {scheme}"
        yield from (f"{where}: {line}" for line in missing(seen["articles"], scenes))
        if seen["width"] > size[0] or seen["tooWide"]:
            yield f"{where}: the page is {seen['width']} pixels wide: {seen['tooWide']}"
        paper, ink = brightness(seen["background"]), brightness(seen["ink"])
        if not (paper > 0.8 and ink < 0.3 if scheme == "light" else paper < 0.2 and ink > 0.7):
            yield f"{where}: {seen['ink']} on {seen['background']}"
    yield from (f"console: {complaint}" for complaint in browser.complaints)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--scenes", type=pathlib.Path, required=True)
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    parser.add_argument("host", help="the pmi-host that draws")
    arguments = parser.parse_args()
    program = next(filter(None, map(shutil.which, BROWSERS)), None)
    if not program:
        print(f"skipped: no browser is installed; looked for {', '.join(BROWSERS)}")
        return SKIPPED

    shutil.rmtree(arguments.folder, ignore_errors=True)
    subprocess.run(
        [arguments.host, "gallery", arguments.folder, "--scenes", arguments.scenes], check=True
    )
    scenes = sorted(arguments.scenes.glob("*.json"))
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        browser = Browser(program, profile)
        try:
            faults = list(check(browser, arguments.folder.resolve() / "index.html", scenes))
        finally:
            browser.close()
    for fault in faults:
        print(fault)
    print(f"{len(scenes)} scenes, {len(faults)} faults")
    return 0 if scenes and not faults else 1


sys.exit(main())
