#!/usr/bin/env python3
"""xls_moved.py [--libreoffice] [--corpus DIR] [--build DIR] [--count 12]: rows and columns moved, as other programs see them.

In binary workbooks with shared formulas, arrays, merged blocks, comments and names rows and columns are inserted and
removed by tools/sheet_features. xlrd must find every value, those of formulas too, and every comment at its new place, and
gnumeric, and with --libreoffice also LibreOffice, must open the file.
"""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.append(os.path.dirname(os.path.abspath(__file__)))
from corpus_files import loadable  # noqa: E402
from libreoffice import sheets_as_csv  # noqa: E402

SECONDS = 120
FEATURES = ("sharedformula", "array", "merges", "comments", "names")
MOVES = (("insertRows", 3, 4), ("removeRows", 3, 4), ("insertColumns", 1, 2), ("removeColumns", 1, 1))

# Cells have their kind and value, comments their text.
XLRD = """
import json, sys, xlrd
for number, sheet in enumerate(xlrd.open_workbook(sys.argv[1], formatting_info=True, logfile=sys.stderr).sheets()):
    for row in range(sheet.nrows):
        for col, (kind, value) in enumerate(zip(sheet.row_types(row), sheet.row_values(row))):
            if value != "":
                print(json.dumps(["cell", number, row, col, [kind, value]]))
    for (row, col), note in sheet.cell_note_map.items():
        print(json.dumps(["comment", number, row, col, note.text]))
"""


def seen(path):
    """{(what, sheet, row, column): content}; None when xlrd refuses the file."""
    done = subprocess.run(["/usr/bin/python3", "-c", XLRD, path], capture_output=True, timeout=SECONDS)
    if b"No module named 'xlrd'" in done.stderr:
        raise SystemExit("crosscheck: python3-xlrd is not installed")
    if done.returncode:
        return None
    return {tuple(line[:4]): line[4] for line in map(json.loads, done.stdout.splitlines())}


def opens(path, folder):
    out = os.path.join(folder, "converted.xlsx")
    done = subprocess.run(["ssconvert", "-T", "Gnumeric_Excel:xlsx", path, out], capture_output=True, timeout=SECONDS)
    return done.returncode == 0


def placed(place, move):
    """Where a cell is afterwards; None when it went."""
    operation, first, last = move
    line = 2 if operation.endswith("Rows") else 3
    at = place[line]
    if at >= first:
        if operation.startswith("remove") and at <= last:
            return None
        at += (last - first + 1) * (1 if operation.startswith("insert") else -1)
    return place[:line] + (at,) + place[line + 1:]


def check(path, move, before, args, folder):
    out = os.path.join(args.moved, "%d.xls" % len(os.listdir(args.moved)))
    done = subprocess.run([os.path.join(args.build, "tools", "sheet_features"), "move", path, out, *map(str, move)],
                          capture_output=True, text=True, timeout=SECONDS)
    if done.returncode:
        yield "does not save: " + done.stderr.strip()
        return
    if done.stderr:
        return  # a sheet that refuses, and stays
    after = seen(out)
    if after is None or not opens(out, folder):
        yield "%s does not take it any more" % ("xlrd" if after is None else "gnumeric")
        return
    wanted = {placed(place, move): content for place, content in before.items()}
    wanted.pop(None, None)
    args.compared += len(wanted)
    wrong = [place for place in wanted.keys() | after.keys() if wanted.get(place) != after.get(place)]
    for place in sorted(wrong)[:2]:
        yield "%s is %r, xlrd has %r" % (place, wanted.get(place), after.get(place))


def check_all(rows, args):
    moves = failed = 0
    for row in rows:
        path = os.path.join(args.corpus, "xls", row["file"])
        before = seen(path)
        for move in MOVES if before is not None else ():
            with tempfile.TemporaryDirectory(prefix="moved-") as folder:
                faults = list(check(path, move, before, args, folder))
            moves += 1
            failed += bool(faults)
            for fault in faults:
                print("%s %s: %s" % (row["file"], " ".join(map(str, move)), fault))
    return moves, failed


def not_taken(folder):
    """How many of the moved files LibreOffice does not take."""
    paths = [os.path.join(folder, name) for name in sorted(os.listdir(folder))]
    taken = sheets_as_csv(paths)
    left = [path for path in paths if path not in taken]
    print("LibreOffice takes %d of %d moved files" % (len(taken), len(paths)))
    return len(left)


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--libreoffice", action="store_true")
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--build", default=os.path.join(ROOT, "build", "release"))
    options.add_argument("--count", type=int, default=12)
    args = options.parse_args()
    if not shutil.which("ssconvert"):
        raise SystemExit("crosscheck: gnumeric's ssconvert is not installed")
    rows = loadable(args.corpus, "biff8")
    rows.sort(key=lambda r: (-sum(one in r["features"].split(",") for one in FEATURES), int(r["size"])))
    args.compared = 0
    with tempfile.TemporaryDirectory(prefix="moved-") as args.moved:
        moves, failed = check_all(rows[:args.count], args)
        if args.libreoffice:
            failed += not_taken(args.moved)
    print("crosscheck xls_moved: %d moves, %d cells and comments, %d with differences" % (moves, args.compared, failed))
    return 1 if failed or not args.compared else 0


if __name__ == "__main__":
    sys.exit(main())
