"""pages.py [--screens FOLDER] [--quillet PROGRAM]: the pages of `explain --html` and `show --html` in a real browser.

For each page of the cookbook its scripts are explained and its sheets shown as pages, and Debian's chromium, headless,
opens them in light and in dark: nothing may stand in its console, the Tab key must reach each cell with a text, what it
reaches must show its details, every text must have a contrast of at least 4.5 with what is behind it, and nothing may be
asked of the network. With --screens a picture of each page is left in the folder."""
import argparse
import base64
import importlib.machinery
import importlib.util
import json
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import time
import urllib.request

import websocket

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
LOADER = importlib.machinery.SourceFileLoader("cookbook", str(ROOT / "scripts/cookbook"))
SPEC = importlib.util.spec_from_loader("cookbook", LOADER)
cookbook = importlib.util.module_from_spec(SPEC)
LOADER.exec_module(cookbook)

LEAST_CONTRAST = 4.5
# Run in the page: every text with its colour, the ground behind it, and their contrast.
CONTRASTS = """(() => {
  const parse = text => { const n = text.match(/[\\d.]+/g).map(Number); return n.length < 4 ? [...n, 1] : n; };
  const light = ([r, g, b]) => { const f = c => { c /= 255; return c <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4; };
    return 0.2126 * f(r) + 0.7152 * f(g) + 0.0722 * f(b); };
  const ground = element => { for (let e = element; e; e = e.parentElement) {
    const c = parse(getComputedStyle(e).backgroundColor); if (c[3] === 1) return c; if (c[3] !== 0) return null; }
    return null; };
  const found = {}; const walk = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walk.nextNode()) { const e = walk.currentNode.parentElement; if (!walk.currentNode.data.trim()) continue;
    const a = parse(getComputedStyle(e).color), b = ground(e); const key = a + ' on ' + b;
    if (found[key]) continue;
    if (!b || a[3] !== 1) { found[key] = {ratio: 0, tag: e.tagName}; continue; }
    const [x, y] = [light(a), light(b)].sort((p, q) => q - p);
    found[key] = {ratio: (x + 0.05) / (y + 0.05), tag: e.tagName + '.' + e.className}; }
  return found; })()"""
CELLS = """[...document.querySelectorAll('td')].map((td, i) => { td.dataset.at = i; return td; })
  .filter(td => [...td.childNodes].some(n => n.nodeType === 3 && n.data.trim()) && td.colSpan === 1).map(td => td.dataset.at)"""
FOCUSED = """(() => { const e = document.activeElement; const d = e && e.querySelector('.d');
  return e && e.tagName === 'TD' ? [e.dataset.at, !!d && getComputedStyle(d).display !== 'none'] : [null, e ? e.tagName : ''];
})()"""


class Browser:
    def __init__(self, folder):
        self.process = subprocess.Popen(  # in a sandbox where that is possible: not for root
            ["chromium", "--headless=new", *(["--no-sandbox"] if os.geteuid() == 0 else []), "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
             "--remote-debugging-port=0", "--remote-allow-origins=*", f"--user-data-dir={folder}/profile", "about:blank"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        told = pathlib.Path(folder, "profile/DevToolsActivePort")
        for _ in range(600):
            if told.exists() and len(told.read_text().split()) > 1:
                break
            if self.process.poll() is not None:
                sys.exit("chromium does not start")
            time.sleep(0.1)
        port = told.read_text().split()[0]
        tabs = json.load(urllib.request.urlopen(f"http://127.0.0.1:{port}/json/list"))
        tab = next(t for t in tabs if t["type"] == "page")
        self.socket = websocket.create_connection(tab["webSocketDebuggerUrl"], timeout=60)
        self.count, self.events = 0, []
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")

    def call(self, method, **parameters):
        self.count += 1
        self.socket.send(json.dumps({"id": self.count, "method": method, "params": parameters}))
        while True:
            answer = json.loads(self.socket.recv())
            if answer.get("id") == self.count:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
            self.events.append(answer)

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"])
        return result["result"]["value"]

    def open(self, path, scheme):
        self.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.events = []
        self.call("Page.navigate", url=path.as_uri())
        while not any(e.get("method") == "Page.loadEventFired" for e in self.events):
            self.events.append(json.loads(self.socket.recv()))

    def press_tab(self):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key="Tab", code="Tab", windowsVirtualKeyCode=9)

    def close(self):
        self.socket.close()
        self.process.terminate()
        self.process.wait(30)


def complaints(events, path):
    for event in events:
        method, about = event.get("method"), event.get("params", {})
        if method == "Runtime.exceptionThrown" or method == "Runtime.consoleAPICalled":
            yield f"console: {json.dumps(about)[:200]}"
        elif method == "Log.entryAdded" and about["entry"]["level"] in ("error", "warning"):
            yield f"console: {about['entry']['text']}"
        elif method == "Network.requestWillBeSent" and about["request"]["url"].split("#")[0] != path.as_uri():
            yield f"asks for {about['request']['url']}"


def check(browser, path, counts):
    wrong = []
    for scheme in ("light", "dark"):
        browser.open(path, scheme)
        cells = set(browser.evaluate(CELLS))
        if scheme == "light":
            reached, beside = set(), 0
            while beside < 500:
                browser.press_tab()
                at, shows = browser.evaluate(FOCUSED)
                if at in reached or (at is None and shows == "BODY"):
                    break  # once around
                if at is None:  # a link, or a grid that scrolls
                    beside += 1
                    continue
                reached.add(at)
                if not shows:
                    wrong.append(f"cell {at} shows no details when it is reached")
            if cells - reached:
                wrong.append(f"{len(cells - reached)} of {len(cells)} cells are not reached by keyboard")
            counts["cells"] += len(cells)
        for pair, each in browser.evaluate(CONTRASTS).items():
            counts["colours"] += 1
            counts["least"] = min(counts["least"], each["ratio"])
            if each["ratio"] < LEAST_CONTRAST:
                wrong.append(f"{scheme}: contrast {each['ratio']:.2f}, {pair} ({each['tag']})")
        wrong += complaints(browser.events, path)
    return wrong


def pages_of(path, quillet, folder):
    """Pages of the cookbook's page: (name, file)."""
    page = cookbook.Page(path, quillet, folder)
    number = 0
    for found in cookbook.BLOCK.finditer(path.read_text()):
        kind, arguments, body = found[3], found[4], found[5]
        number += 1
        out = folder / f"{path.stem}-{number}.html"
        if kind == "quillet":
            (folder / "script").write_text(body)
            page.run("explain", "script", "--html", str(out))
        page.block(found)
        if kind == "show":
            page.run("show", *shlex.split(arguments), "--html", str(out))
        if out.exists() and out.stat().st_size:
            yield out


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--screens", type=pathlib.Path)
    parser.add_argument("--quillet", default=str(ROOT / "build/release/cli/quillet"))
    parser.add_argument("pages", nargs="*")
    options = parser.parse_args()
    if options.screens:
        options.screens.mkdir(parents=True, exist_ok=True)
    quillet = str(pathlib.Path(options.quillet).resolve())
    sources = [pathlib.Path(p) for p in options.pages] or sorted((ROOT / "docs/cookbook").glob("*.md"))
    counts, wrong, opened = {"cells": 0, "colours": 0, "least": 21.0}, 0, 0
    with tempfile.TemporaryDirectory() as top:
        browser = Browser(top)
        try:
            for source in sources:
                folder = pathlib.Path(top, source.stem)
                folder.mkdir()
                for page in pages_of(source, quillet, folder):
                    opened += 1
                    found = check(browser, page, counts)
                    wrong += bool(found)
                    for text in found[:5]:
                        print(f"{page.name}: {text}")
                    if options.screens:
                        picture = browser.call("Page.captureScreenshot", captureBeyondViewport=True)
                        (options.screens / (page.stem + ".png")).write_bytes(base64.b64decode(picture["data"]))
        finally:
            browser.close()
    print(f"{opened} pages of {len(sources)}, {wrong} wrong: {counts['cells']} cells reached by keyboard, "
          f"{counts['colours']} pairs of colours, the least contrast {counts['least']:.2f}")
    return 1 if wrong or not opened or not counts["cells"] else 0


if __name__ == "__main__":
    sys.exit(main())
