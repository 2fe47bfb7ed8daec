#!/usr/bin/env python3
"""xls_names.py [--corpus DIR] [--quillet COMMAND] [--changer COMMAND] [--count 12] [--libreoffice]: the defined names of binary
workbooks as xlrd and gnumeric see them.

In every file of the corpus each name that is one area of a sheet has the text, the scope, the hidden mark and the corners
that xlrd gives. Then tools/change_sheets sets, changes and removes names, copies, moves and removes sheets in `count` files
that have names: xlrd must find in the result what `quillet dump --names` tells of it, gnumeric must open it and show the
names that were added, and tools/xlslint.py must find nothing wrong that was not wrong before. LibreOffice, on request, must
show each name over cells as we do.
"""
import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.append(os.path.join(ROOT, "tools"))
from corpus_files import loadable  # noqa: E402
import libreoffice  # noqa: E402
import xlslint  # noqa: E402

SECONDS = 120
LEAST_NAMES = 1289  # of the corpus
OPERATIONS = ("names", "copy", "move", "remove")

# A name of xlrd: its scope is -1 for the workbook; coordinates end one past the last.
XLRD = """
import json, sys, xlrd
book = xlrd.open_workbook(sys.argv[1], logfile=sys.stderr)
for name in book.name_obj_list:
    try:
        (value,) = name.result.value
        sheet, end, *cells = value.coords
    except Exception:
        continue
    if sheet >= 0 and end == sheet + 1:
        print(json.dumps([name.name, name.scope, bool(name.hidden), sheet,
                          [cells[0], cells[2], cells[1] - 1, cells[3] - 1]]))
"""


def xlrd_names(path):
    """None when the reader refuses the file."""
    done = subprocess.run(["/usr/bin/python3", "-c", XLRD, path], capture_output=True, timeout=SECONDS)
    if b"No module named 'xlrd'" in done.stderr:
        raise SystemExit("crosscheck: python3-xlrd is not installed")
    return [json.loads(line) for line in done.stdout.splitlines()] if done.returncode == 0 else None


def our_names(path, quillet):
    done = subprocess.run([quillet, "dump", "--names", "--no-cells", path], capture_output=True, timeout=SECONDS)
    if done.returncode:
        raise SystemExit("crosscheck: %s: %s" % (path, done.stderr.decode("utf-8", "replace")))
    names = [json.loads(line).get("name") for line in done.stdout.splitlines()]
    return [[n["text"], -1 if n["scope"] is None else n["scope"], n["hidden"], n["area"]["sheet"], n["area"]["cells"]]
            for n in names if n and n["area"]]


def gnumeric_names(path, folder):
    """Names of the whole workbook and of sheets; None when it does not open the file."""
    out = os.path.join(folder, "converted.xlsx")
    done = subprocess.run(["ssconvert", "-T", "Gnumeric_Excel:xlsx", path, out], capture_output=True, timeout=SECONDS)
    if done.returncode or not os.path.exists(out):
        return None
    with zipfile.ZipFile(out) as package:
        return package.read("xl/workbook.xml").decode("utf-8")


LO_NAME = re.compile(r'<definedName ([^>]*)>([^<]*)</definedName>')
LO_AREA = re.compile(r"^.*!\$?([A-Z]+)\$?([0-9]+)(?::\$?([A-Z]+)\$?([0-9]+))?$")


def column(letters):
    number = 0
    for letter in letters:
        number = number * 26 + ord(letter) - 64
    return number - 1


def libreoffice_names(path):
    """{(text, scope, cells)} of what it made of a file."""
    with zipfile.ZipFile(path) as package:
        book = package.read("xl/workbook.xml").decode("utf-8")
    names = set()
    for attributes, text in LO_NAME.findall(book):
        area = LO_AREA.match(text)
        if not area:
            continue
        name = re.search(r'name="([^"]*)"', attributes)[1]
        scope = re.search(r'localSheetId="([0-9]+)"', attributes)
        left, top, right, bottom = area.groups()
        cells = (int(top) - 1, column(left), int(bottom or top) - 1, column(right or left))
        names.add((name.lower(), int(scope[1]) if scope else -1, cells))
    return names


def check_libreoffice(files, args):
    """Built-in names and whole columns are left out, which it writes in its own way."""
    failed, compared = 0, 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        libreoffice.convert(folder, "xlsx:Calc MS Excel 2007 XML", files)
        for path in files:
            made = os.path.join(folder, os.path.splitext(os.path.basename(path))[0] + ".xlsx")
            if not os.path.exists(made):
                continue
            theirs = libreoffice_names(made)
            ours = [(n[0].lower(), n[1], tuple(n[4])) for n in our_names(path, args.quillet)
                    if n[0] not in ("Print_Area", "_FilterDatabase", "Criteria", "Extract", "Print_Titles")
                    and n[4][2] < 65535 and n[4][3] < 255]
            compared += len(ours)
            missing = [n for n in ours if n not in theirs]
            failed += bool(missing)
            if missing:
                print("LibreOffice %s: %s not there" % (os.path.basename(path), missing[:3]))
    print("crosscheck xls_names: %d names compared with LibreOffice, %d files with differences" % (compared, failed))
    return failed or not compared


def differences(theirs, ours):
    # A name over a range of sheets, or of a sheet past the last, has no area of one sheet on one of the two sides.
    missing = [n for n in theirs if n not in ours]
    more = [n for n in ours if n not in theirs]
    return missing, more


def check_corpus(rows, args):
    equal, failed = 0, 0
    for row in rows:
        path = os.path.join(args.corpus, "xls", row["file"])
        theirs = xlrd_names(path)
        if theirs is None:
            continue
        missing, more = differences(theirs, our_names(path, args.quillet))
        equal += len(theirs) - len(missing)
        if missing or more:
            failed += 1
            print("%s: only xlrd: %s, only quillet: %s" % (row["file"], missing[:2], more[:2]))
    print("crosscheck xls_names: %d names equal, %d files with differences" % (equal, failed))
    return failed or equal < LEAST_NAMES


def check_changes(rows, args):
    failed, compared, made = 0, 0, []
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for row in rows:
            path = os.path.join(args.corpus, "xls", row["file"])
            for operation in OPERATIONS:
                out = os.path.join(folder, "%s-%s" % (operation, row["file"]))
                done = subprocess.run([args.changer, operation, path, out], capture_output=True, timeout=SECONDS)
                if done.returncode == 3:
                    continue  # one sheet only
                faults = ["does not save: %s" % done.stderr.decode("utf-8", "replace")] if done.returncode else []
                if not faults:
                    compared += 1
                    faults = check_changed(path, out, operation, folder, args)
                for fault in faults:
                    print("%s %s: %s" % (operation, row["file"], fault))
                failed += bool(faults)
                if not faults:
                    made.append(out)
        print("crosscheck xls_names: %d changed files, %d with differences" % (compared, failed))
        if args.libreoffice and check_libreoffice(made, args):
            return True
    return failed or not compared


def check_changed(path, out, operation, folder, args):
    faults = xlslint.new_faults(out, path)
    theirs, ours = xlrd_names(out), our_names(out, args.quillet)
    if theirs is not None:
        missing, more = differences(theirs, ours)
        faults += ["only xlrd: %s" % n for n in missing[:2]] + ["only quillet: %s" % n for n in more[:2]]
    if operation == "names" and not {"Quillet_Book", "Quillet_Own"} <= {n[0] for n in ours}:
        faults.append("the new names are not there")
    shown = gnumeric_names(out, folder)
    if shown is None and gnumeric_names(path, folder) is not None:
        faults.append("gnumeric does not open it")
    if shown and operation == "names" and ("Quillet_Book" not in shown or "Quillet_Own" not in shown):
        faults.append("gnumeric does not see the new names")
    return faults


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    options.add_argument("--changer", default=os.path.join(ROOT, "build", "release", "tools", "change_sheets"))
    options.add_argument("--count", type=int, default=12)
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    if not shutil.which("ssconvert"):
        raise SystemExit("crosscheck: gnumeric's ssconvert is not installed")
    rows = loadable(args.corpus, "biff8", "biff5")
    failed = check_corpus(rows, args)
    named = [r for r in rows if r["format"] == "biff8" and "names" in (r["features"] or "").split(",")]
    named.sort(key=lambda r: int(r["size"]))
    return 1 if check_changes(named[:args.count], args) or failed else 0


if __name__ == "__main__":
    sys.exit(main())
