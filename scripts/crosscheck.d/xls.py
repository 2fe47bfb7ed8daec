#!/usr/bin/env python3
"""xls.py --corpus DIR [--quillet COMMAND] [--count 30]: what other programs read in our saved binary workbooks.

Takes `count` files of the corpus, chosen so that together they have every feature that its manifest names, loads and
saves each, and lets two independent readers, xlrd and ssconvert, read the original and the saved file: the same sheets
and the same cells must come out. Files that a reader does not take as they are, are not asked of it. Cells that change
from one reading of the same file to another (the time of day, random numbers) are left out.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
from corpus_files import loadable  # noqa: E402
import steady  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 120

XLRD = """
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], logfile=sys.stderr, formatting_info=False)
for sheet in book.sheets():
    print(repr(sheet.name))
    for row in range(sheet.nrows):
        for col, (kind, value) in enumerate(zip(sheet.row_types(row), sheet.row_values(row))):
            if kind not in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                print(row, col, kind, repr(value))
"""


def xlrd_lines(path):
    """None when the reader refuses the file."""
    for python in (sys.executable, "/usr/bin/python3"):
        done = subprocess.run([python, "-c", XLRD, path], capture_output=True, timeout=SECONDS)
        if b"No module named 'xlrd'" not in done.stderr:
            return done.stdout.splitlines() if done.returncode == 0 else None
    raise SystemExit("crosscheck: python3-xlrd is not installed")


def ssconvert_lines(path):
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(["ssconvert", "-S", path, os.path.join(folder, "%n.csv")], capture_output=True,
                              timeout=SECONDS)
        if done.returncode:
            return None
        lines = []
        for name in sorted(os.listdir(folder), key=lambda n: int(n.split(".")[0])):
            lines.append(b"sheet " + name.encode())
            with open(os.path.join(folder, name), "rb") as f:
                lines += f.read().splitlines()
        return lines


# It cuts the text of a formula where the text's first record ends, which a save may move.
NOT_ASKED = {("ssconvert", "poi_StringContinueRecords.xls")}
READERS = {"xlrd": xlrd_lines, "ssconvert": ssconvert_lines}


def choose(rows, count):
    """Greedily the file with the most features not seen yet, small before large."""
    chosen, seen = [], set()
    rows = sorted(rows, key=lambda r: int(r["size"]))
    while rows and len(chosen) < count:
        best = max(rows, key=lambda r: len(set((r["features"] or "").split(",")) - seen))
        gained = set((best["features"] or "").split(",")) - seen
        if not gained:
            seen.clear()  # another round over all features
            if not best["features"]:
                chosen += rows[:count - len(chosen)]
                break
            continue
        seen |= gained
        chosen.append(best)
        rows.remove(best)
    return chosen


def check(path, saved, quillet):
    done = subprocess.run([quillet, "resave", path, saved], capture_output=True, timeout=SECONDS)
    if done.returncode:
        return ["does not save: %s" % done.stderr.decode("utf-8", "replace").strip()], 0
    faults, compared = [], 0
    for name, lines_of in READERS.items():
        if (name, os.path.basename(path)) in NOT_ASKED:
            continue
        before = lines_of(path)
        if before is None:
            continue
        after = lines_of(saved)
        if after is None:
            faults.append("%s does not take the saved file" % name)
            continue
        compared += 1
        if before != after:
            changed = steady.changes(before, after, lambda: lines_of(path) or [])
            if len(before) != len(after) or changed:
                first = changed[0] if changed else (len(before), len(after))
                faults.append("%s: %s became %s" % (name, str(first[0])[:100], str(first[1])[:100]))
    return faults, compared


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    options.add_argument("--count", type=int, default=30)
    args = options.parse_args()
    if not shutil.which("ssconvert"):
        raise SystemExit("crosscheck: gnumeric's ssconvert is not installed")
    rows = loadable(args.corpus, "biff8")
    failed, total = 0, 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for row in choose(rows, args.count):
            faults, compared = check(os.path.join(args.corpus, "xls", row["file"]),
                                     os.path.join(folder, row["file"]), args.quillet)
            total += compared
            failed += bool(faults)
            for fault in faults:
                print("%s: %s" % (row["file"], fault))
    print("crosscheck xls: %d comparisons, %d files with differences" % (total, failed))
    return 1 if failed or not total else 0


if __name__ == "__main__":
    sys.exit(main())
