#!/usr/bin/env python3
"""xlsx_drawings.py [--maker COMMAND] [--tool COMMAND] [--libreoffice] [--corpus DIR] [--count 12] [--keep DIR]: what
other programs see of our pictures.

tools/make_drawings writes a workbook with pictures of all kinds, 300 on one sheet, and three of one colour at places
that are known. openpyxl must find the pictures with our bytes, gnumeric and, on request, LibreOffice as many of them.
LibreOffice prints the places: the coloured areas must lie as far from each other as their anchors. Then a picture is
put on each sheet of the packages with the most objects: what the programs make of such a file holds one picture a sheet
more than what they make of the original, and as many comments and charts. Whoever is not installed is left out.
"""
import argparse
import collections
import hashlib
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

sys.dont_write_bytecode = True
from corpus_files import loadable  # noqa: E402
import libreoffice  # noqa: E402
from placed_pictures import printed_findings, python  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOLS = os.path.join(ROOT, "build", "release", "tools")
SECONDS = 300
# With /usr/bin/python3, where the distribution's modules are.
IMAGES = """
import struct, sys
from PIL import Image
folder = sys.argv[1] + "/"
for name, mode in (("a.png", "RGBA"), ("b.jpg", "RGB"), ("c.gif", "P"), ("d.bmp", "RGB"), ("e.tiff", "RGB")):
    Image.radial_gradient("L").resize((96, 64)).convert(mode).save(folder + name)
header = struct.pack("<IHhhhhHI", 0x9AC6CDD7, 0, 0, 0, 960, 640, 960, 0)
total = 0
for word in struct.unpack("<10H", header):
    total ^= word
box = struct.pack("<IHHHHH", 7, 0x041B, 640, 960, 0, 0)
wmf = struct.pack("<HHHIHIH", 1, 9, 0x300, 9 + 7 + 3, 0, 7, 0) + box + struct.pack("<IH", 3, 0)
open(folder + "f.wmf", "wb").write(header + struct.pack("<H", total) + wmf)
Image.new("RGB", (100, 60), (255, 0, 0)).save(folder + "g.png")
"""
OPENPYXL = """
import hashlib, json, sys, openpyxl
for sheet in openpyxl.load_workbook(sys.argv[1]).worksheets:
    for image in sheet._images:
        start = image.anchor._from
        print(json.dumps([sheet.title, start.row, start.col, hashlib.md5(image._data()).hexdigest()]))
"""


def counts(package):
    found = collections.Counter(pictures=0, comments=0, charts=0)
    with zipfile.ZipFile(package) as archive:
        for name in archive.namelist():
            if re.search(r"drawings/drawing\d+\.xml$", name):
                found["pictures"] += len(re.findall(rb"<(?:\w+:)?pic[ >]", archive.read(name)))
            elif re.search(r"comments[^/]*\.xml$", name):
                found["comments"] += len(re.findall(rb"<(?:\w+:)?comment ", archive.read(name)))
            found["charts"] += bool(re.search(r"charts/chart\d+\.xml$", name))
    return found


def converted(program, path, folder):
    out = os.path.join(folder, program, os.path.splitext(os.path.basename(path))[0] + ".xlsx")
    os.makedirs(os.path.dirname(out), exist_ok=True)
    if program == "gnumeric":
        subprocess.run(["ssconvert", path, out], capture_output=True, timeout=SECONDS)
    else:
        libreoffice.convert(os.path.dirname(out), "xlsx:Calc MS Excel 2007 XML", [path])
    return out if os.path.exists(out) else None


def check_new(maker, programs, folder):
    python(IMAGES, folder)
    names = sorted(n for n in os.listdir(folder) if n[1:2] == ".")
    book = os.path.join(folder, "new.xlsx")
    subprocess.run([maker, book, *(os.path.join(folder, n) for n in names)], check=True, timeout=SECONDS)
    digests = {n: hashlib.md5(open(os.path.join(folder, n), "rb").read()).hexdigest() for n in names}
    # It takes no metafiles, and gives bitmaps of other formats as PNG.
    expected = [["All", 12 * i, 1, digests[n]] for i, n in enumerate(names) if n[0] not in "def"]
    expected += [["Many", 3 * (i // 10), 2 * (i % 10), digests["a.png"]] for i in range(300)]
    expected += [["Placed", row, col, digests["g.png"]] for row, col in ((2, 1), (9, 2), (19, 4))]
    seen = [json.loads(line) for line in python(OPENPYXL, book).splitlines()]
    seen = [s for s in seen if s[0] != "All" or s[1] // 12 not in (3, 4)]
    faults = [] if seen == expected else ["openpyxl sees %d pictures, %d as expected" % (
        len(seen), sum(e in seen for e in expected))]
    for program in programs:
        made = converted(program, book, folder)
        found = counts(made)["pictures"] if made else None
        if found != counts(book)["pictures"]:
            faults.append("%s sees %s of %d pictures" % (program, found, counts(book)["pictures"]))
    if "libreoffice" in programs:
        faults += printed_findings(book, folder)
    return faults


def check_touched(tool, path, programs, folder):
    touched = os.path.join(folder, "touched-" + os.path.basename(path))
    subprocess.run([tool, "add", path, touched], check=True, timeout=SECONDS)
    ours = counts(touched)["pictures"] - counts(path)["pictures"]
    faults = []
    for program in programs:
        before, after = (converted(program, p, folder) for p in (path, touched))
        if before is None:
            continue
        expected = counts(before) + collections.Counter(pictures=ours)
        if after is None or +counts(after) != +expected:
            faults.append("%s sees %s, not %s" % (program, dict(counts(after)) if after else None, dict(expected)))
    return faults


def richest(corpus, count):
    names = sorted(r["file"] for r in loadable(corpus, "xlsx"))
    corpus, found = os.path.join(corpus, "xlsx"), []
    for name in names:
        try:
            seen = counts(os.path.join(corpus, name))
        except (zipfile.BadZipFile, OSError):
            continue
        if seen["pictures"] or seen["charts"]:
            found.append((-len(+seen), -sum(seen.values()), os.path.join(corpus, name)))
    return [path for _, _, path in sorted(found)[:count]]


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--maker", default=os.path.join(TOOLS, "make_drawings"))
    options.add_argument("--tool", default=os.path.join(TOOLS, "touch_drawings"))
    options.add_argument("--libreoffice", action="store_true")
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--count", type=int, default=12)
    options.add_argument("--keep", metavar="DIR")
    args = options.parse_args()
    programs = ["gnumeric"] if shutil.which("ssconvert") else []
    programs += ["libreoffice"] if args.libreoffice and shutil.which("soffice") else []
    failed = 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as temporary:
        folder = args.keep or temporary
        os.makedirs(folder, exist_ok=True)
        checks = [("new workbook", lambda: check_new(args.maker, programs, folder))]
        for path in richest(args.corpus, args.count) if os.path.isdir(args.corpus) else []:
            checks.append((os.path.basename(path), lambda p=path: check_touched(args.tool, p, programs, folder)))
        for name, check in checks:
            faults = check()
            for fault in faults:
                print("%s: %s" % (name, fault))
            failed += bool(faults)
    print("xlsx_drawings: %d files, %d with differences, seen by openpyxl%s" % (
        len(checks), failed, "".join(", " + p for p in programs)))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
