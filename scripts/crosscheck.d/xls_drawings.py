#!/usr/bin/env python3
"""xls_drawings.py --corpus DIR [--tool COMMAND] [--maker COMMAND] [--count 12] [--libreoffice]: what other programs see of our pictures
and comments in binary workbooks.

Takes the `count` files of the corpus with the most different objects. tools/touch_drawings adds a picture and a comment
to each sheet with a drawing. Then xlrd must read text and author of every comment as tools/xlsdrawing.py does, and what
gnumeric (on request LibreOffice too) makes of the file as .xlsx must hold as many pictures, comments and charts as what
it makes of the original, and ours. A new workbook has three pictures of one colour: gnumeric must give them anchors, and
LibreOffice print them, where ours are. Whoever is not installed is left out.
"""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tools"))
sys.dont_write_bytecode = True
from corpus_files import loadable  # noqa: E402
from xlsdrawing import SheetDrawing  # noqa: E402
from xlsfile import CompoundFile, Fault, records, substreams  # noqa: E402
import placed_pictures  # noqa: E402

SECONDS = 180
XLRD = """
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], logfile=sys.stderr, formatting_info=True)
for number, sheet in enumerate(book.sheets()):
    for (row, col), note in sorted(sheet.cell_note_map.items()):
        print(ascii((number, row, col, note.author, note.text)))
"""


def drawings(path):
    with open(path, "rb") as f:
        file = CompoundFile(f.read())
    flat, _ = records(file.stream(file.main()))
    return [SheetDrawing(part) for part in substreams(flat)[1:] if part[0].u16(2) == 16]


def xlrd_notes(path):
    """None when xlrd is not there, or refuses the file."""
    for python in (sys.executable, "/usr/bin/python3"):
        done = subprocess.run([python, "-c", XLRD, path], capture_output=True, text=True, timeout=SECONDS)
        if "No module named 'xlrd'" not in done.stderr:
            return done.stdout.splitlines() if done.returncode == 0 else None
    return None


def own_notes(path):
    lines = []
    for number, drawing in enumerate(drawings(path)):
        texts = {s.obj.id: s.text for s in drawing.shapes if s.obj}
        for note in sorted(drawing.notes, key=lambda n: (n.row, n.col)):
            lines.append(ascii((number, note.row, note.col, note.author, texts.get(note.obj) or "")))
    return lines


def convert(program, path, folder):
    out = os.path.join(folder, os.path.basename(path) + ".xlsx")
    if program == "gnumeric":
        done = subprocess.run(["ssconvert", path, out], capture_output=True, timeout=SECONDS)
    else:
        done = subprocess.run(["soffice", "-env:UserInstallation=file://" + folder + "/profile", "--headless",
                               "--convert-to", "xlsx:Calc MS Excel 2007 XML", "--outdir", folder + "/lo", path],
                              capture_output=True, timeout=SECONDS)
        out = os.path.join(folder, "lo", os.path.splitext(os.path.basename(path))[0] + ".xlsx")
    return out if done.returncode == 0 and os.path.exists(out) else None


def counts(package):
    """Pictures, comments and charts."""
    found = {"pictures": 0, "comments": 0, "charts": 0}
    with zipfile.ZipFile(package) as archive:
        for name in archive.namelist():
            if re.search(r"drawings/drawing\d+\.xml$", name):
                found["pictures"] += len(re.findall(rb"<(?:\w+:)?pic[ >]", archive.read(name)))
            elif re.search(r"comments\d+\.xml$", name):
                found["comments"] += len(re.findall(rb"<(?:\w+:)?comment ", archive.read(name)))
            found["charts"] += bool(re.search(r"charts/chart\d+\.xml$", name))
    return found


def check(path, args, programs, folder):
    touched = os.path.join(folder, os.path.basename(path))
    done = subprocess.run([args.tool, "add", path, touched], capture_output=True, text=True)
    if done.returncode:
        return ["is not touched: %s" % done.stderr.strip()]
    faults, sheets = [], sum(bool(d.shapes or d.notes) for d in drawings(path))
    theirs = xlrd_notes(touched)
    if theirs is not None and theirs != own_notes(touched):
        faults.append("xlrd reads other comments: %s" % sorted(set(theirs) ^ set(own_notes(touched)))[:2])
    for program in programs:
        before, after = convert(program, path, folder), None
        if before is not None:
            before = counts(before)
            after = convert(program, touched, folder)
        if before is None:
            continue
        expected = {**before, "pictures": before["pictures"] + sheets, "comments": before["comments"] + sheets}
        found = counts(after) if after else None
        if found != expected:
            faults.append("%s sees %s, not %s" % (program, found, expected))
    return faults


def check_places(maker, programs, folder):
    book, images = os.path.join(folder, "places.xls"), [os.path.join(folder, name) for name in ("first.png", "red.png")]
    placed_pictures.python("""
import sys
from PIL import Image
Image.new("RGB", (40, 30), (0, 0, 255)).save(sys.argv[1])
Image.new("RGB", (100, 60), (255, 0, 0)).save(sys.argv[2])
""", *images)
    subprocess.run([maker, book, *images], check=True, timeout=SECONDS)
    faults = []
    if "gnumeric" in programs:
        made = convert("gnumeric", book, folder)
        faults += placed_pictures.anchors_findings(made) if made else ["gnumeric does not read it"]
    if "libreoffice" in programs:
        faults += placed_pictures.printed_findings(book, folder)
    return faults


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", required=True)
    options.add_argument("--tool", default=os.path.join(ROOT, "build", "release", "tools", "touch_drawings"))
    options.add_argument("--maker", default=os.path.join(ROOT, "build", "release", "tools", "make_drawings"))
    options.add_argument("--count", type=int, default=12)
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    rows = [r["file"] for r in loadable(args.corpus, "biff8")]
    programs = [p for p, command in (("gnumeric", "ssconvert"), ("libreoffice", "soffice"))
                if shutil.which(command) and (p == "gnumeric" or args.libreoffice)]
    variety = {}
    for name in rows:
        try:
            found = drawings(os.path.join(args.corpus, "xls", name))
        except (Fault, IndexError, ValueError):
            continue
        kinds = {s.obj.ot for d in found for s in d.shapes if s.obj}
        if kinds:
            variety[name] = (len(kinds), -os.path.getsize(os.path.join(args.corpus, "xls", name)))
    chosen = sorted(variety, key=lambda n: variety[n], reverse=True)[:args.count]
    failed = 0
    with tempfile.TemporaryDirectory(prefix="drawings-") as folder:
        for name in ["places of new pictures", *chosen]:
            if name in variety:
                faults = check(os.path.join(args.corpus, "xls", name), args, programs, folder)
            else:
                faults = check_places(args.maker, programs, folder)
            failed += bool(faults)
            for fault in faults:
                print("%s: %s" % (name, fault))
    print("xls_drawings: %d files with %s, %d with differences" % (len(chosen), ", ".join(programs + ["xlrd"]), failed))
    return 1 if failed or not chosen else 0


if __name__ == "__main__":
    sys.exit(main())
