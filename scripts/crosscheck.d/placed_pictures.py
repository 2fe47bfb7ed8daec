"""The three pictures of one colour that tools/make_drawings puts at places that are known, as programs show them."""
import json
import os
import re
import shutil
import subprocess
import xml.etree.ElementTree as ET
import zipfile

import libreoffice

SECONDS = 300
COLUMN, ROW, EMU = 64, 20, 9525  # pixels, and what each is
# Areas of red on a page, as left, top, width, height.
AREAS = """
import json, sys
from PIL import Image
page = Image.open(sys.argv[1]).convert("RGB")
red = page.load()
areas = []
for y in range(page.height):
    x = 0
    while x < page.width:
        inside = next((a for a in areas if a[0] <= x < a[0] + a[2] and a[1] <= y < a[1] + a[3]), None)
        if inside:
            x = inside[0] + inside[2]
            continue
        r, g, b = red[x, y]
        if r > 200 and g < 60 and b < 60:
            width = height = 1
            while x + width < page.width and red[x + width, y][0] > 200 and red[x + width, y][1] < 60: width += 1
            while y + height < page.height and red[x, y + height][0] > 200 and red[x, y + height][1] < 60: height += 1
            areas.append((x, y, width, height))
        x += 1
print(json.dumps([a for a in areas if a[2] > 8 and a[3] > 8]))
"""
# Left, top, width and height of the pictures on the sheet Placed.
PLACED = [(64, 40, 100, 60), (138, 185, 64, 40), (259, 387, 200, 100)]


def python(code, *args):
    done = subprocess.run(["/usr/bin/python3", "-c", code, *args], capture_output=True, text=True, timeout=SECONDS)
    if done.returncode:
        raise RuntimeError(done.stderr.strip()[-300:])
    return done.stdout


def pixels_of(anchor):
    """Left, top, width and height of an anchor of any of the three forms."""
    def number(path):
        return int(anchor.find("/".join("{*}" + part for part in path.split("/"))).text)

    def corner(end):
        return (number(end + "/col") * COLUMN + number(end + "/colOff") / EMU,
                number(end + "/row") * ROW + number(end + "/rowOff") / EMU)

    pos, ext = anchor.find("{*}pos"), anchor.find("{*}ext")
    x, y = corner("from") if pos is None else (int(pos.get(k)) / EMU for k in "xy")
    if ext is not None:
        return x, y, int(ext.get("cx")) / EMU, int(ext.get("cy")) / EMU
    right, bottom = corner("to")
    return x, y, right - x, bottom - y


def anchors_findings(package):
    """Where a package has them, by its anchors: the drawing that holds just three pictures. Gnumeric counts offsets in
    columns a sixth too large."""
    with zipfile.ZipFile(package) as archive:
        drawings = [ET.fromstring(archive.read(n)) for n in archive.namelist() if re.search(r"drawings/drawing\d+\.xml$", n)]
    for drawing in drawings:
        found = sorted((pixels_of(a) for a in drawing if a.find("{*}pic") is not None), key=lambda place: place[1])
        if len(found) != len(PLACED):
            continue
        return ["stands at %s, not %s" % pair for pair in zip(found, PLACED)
                if any(abs(i - j) > slack for i, j, slack in zip(*pair, (8, 2, 8, 2)))]
    return ["no sheet has the three pictures of one colour"]


def printed_findings(book, folder):
    """Where LibreOffice prints them."""
    if not shutil.which("pdftoppm"):
        return []
    libreoffice.convert(folder, "pdf", [book])
    pdf = os.path.splitext(book)[0] + ".pdf"
    subprocess.run(["pdftoppm", "-r", "96", "-png", pdf, os.path.join(folder, "page")], check=True, timeout=SECONDS)
    for name in sorted(n for n in os.listdir(folder) if n.startswith("page") and n.endswith(".png")):
        areas = json.loads(python(AREAS, os.path.join(folder, name)))
        if len(areas) != len(PLACED):
            continue
        areas.sort(key=lambda a: a[1])
        wider = areas[0][2] / PLACED[0][2]  # its columns are as wide as its font makes them
        moved = [((x - areas[0][0]) / wider + PLACED[0][0], y - areas[0][1] + PLACED[0][1], w / wider, h)
                 for x, y, w, h in areas]
        far = [(a, b) for a, b in zip(moved, PLACED) if any(abs(i - j) > 3 for i, j in zip(a, b))]
        if not 0.9 < wider < 1.1:
            far.append(("%.2f of the width" % wider, "its width"))
        return ["printed at %s, not %s" % pair for pair in far]
    return ["no page shows the three pictures of one colour"]
