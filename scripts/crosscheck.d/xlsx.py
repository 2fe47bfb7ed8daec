#!/usr/bin/env python3
"""xlsx.py [--corpus DIR] [--quillet COMMAND] [--count 40] [--libreoffice]: what other programs read in our saved
Open XML workbooks.

Takes `count` files of the corpus, chosen so that together they have every feature that its manifest names, loads and
saves each, and lets independent readers, openpyxl and ssconvert, on request LibreOffice too, read the original and the
saved file: the same sheets and the same values must come out. Files that a reader does not take as they are, are not
asked of it. Cells that change from one reading of the same file to the next are left out.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
from corpus_files import loadable  # noqa: E402
import libreoffice  # noqa: E402
import steady  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 120

OPENPYXL = """
import sys, openpyxl
for data_only in (False, True):
    book = openpyxl.load_workbook(sys.argv[1], data_only=data_only)
    for sheet in book.worksheets:
        print(ascii(sheet.title), sheet.sheet_state, sorted(str(m) for m in sheet.merged_cells.ranges))
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is not None:
                    value = getattr(cell.value, "text", cell.value)
                    print(cell.coordinate, cell.data_type, ascii(value), cell.number_format, cell.font.b)
"""


def openpyxl_lines(path):
    """None when the reader refuses the file."""
    done = subprocess.run(["/usr/bin/python3", "-c", OPENPYXL, path], capture_output=True, timeout=SECONDS)
    if b"No module named 'openpyxl'" in done.stderr:
        raise SystemExit("crosscheck: python3-openpyxl is not installed")
    # A text of one blank is written as a no-break space.
    return done.stdout.replace(b"\\xa0", b" ").splitlines() if done.returncode == 0 else None


def ssconvert_lines(path):
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(["ssconvert", "-S", path, os.path.join(folder, "%n.csv")], capture_output=True,
                              timeout=SECONDS)
        lines = []
        for name in sorted(os.listdir(folder), key=lambda n: int(n.split(".")[0])):
            lines.append(b"sheet " + name.encode())
            with open(os.path.join(folder, name), "rb") as f:
                lines += f.read().replace(b"\xc2\xa0", b" ").splitlines()
        return lines if done.returncode == 0 else None


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


# It does not take the prefix of a sheet's relationship, which is declared twice, and reads no cells; a save has one.
NOT_ASKED = {("ssconvert", "cal_issue221.xlsm")}


def each(lines_of):
    """A reader of one file as a reader of many."""
    def lines_of_all(paths):
        lines = {}
        for path in paths:
            try:
                lines[path] = lines_of(path)
            except subprocess.TimeoutExpired:
                pass
        return {path: found for path, found in lines.items() if found is not None}
    return lines_of_all


def compare(reader, pairs):
    """Gives (path, fault or None) for each pair that the reader has an opinion on."""
    lines = reader([path for pair in pairs for path in pair])
    for path, saved in pairs:
        if path not in lines:
            continue
        if saved not in lines:
            yield path, "does not take the saved file"
            continue
        before, after = lines[path], lines[saved]
        changed = steady.changes(before, after, lambda: reader([path]).get(path, []))
        if len(before) != len(after) or changed:
            first = changed[0] if changed else (len(before), len(after))
            yield path, "%s became %s" % (str(first[0])[:100], str(first[1])[:100])
        else:
            yield path, None


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    options.add_argument("--count", type=int, default=40)
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    if not shutil.which("ssconvert"):
        raise SystemExit("crosscheck: gnumeric's ssconvert is not installed")
    readers = {"openpyxl": each(openpyxl_lines), "ssconvert": each(ssconvert_lines)}
    if args.libreoffice:
        if not shutil.which("soffice"):
            raise SystemExit("crosscheck: LibreOffice is not installed")
        readers["LibreOffice"] = libreoffice.sheets_as_csv
    rows = [r for r in loadable(args.corpus) if os.path.exists(os.path.join(args.corpus, "xlsx", r["file"]))]
    faulty, total = set(), 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        pairs = []
        for row in choose(rows, args.count):
            path, saved = os.path.join(args.corpus, "xlsx", row["file"]), os.path.join(folder, row["file"])
            done = subprocess.run([args.quillet, "resave", path, saved], capture_output=True, timeout=SECONDS)
            if done.returncode == 0:
                pairs.append((path, saved))
                continue
            faulty.add(path)
            print("%s: does not save: %s" % (row["file"], done.stderr.decode("utf-8", "replace").strip()))
        for name, reader in readers.items():
            asked = [p for p in pairs if (name, os.path.basename(p[0])) not in NOT_ASKED]
            for path, fault in compare(reader, asked):
                total += 1
                if fault:
                    faulty.add(path)
                    print("%s: %s: %s" % (os.path.basename(path), name, fault), flush=True)
    print("crosscheck xlsx: %d comparisons by %s, %d of %d files with differences"
          % (total, ", ".join(readers), len(faulty), len(pairs)))
    return 1 if faulty or not total else 0


if __name__ == "__main__":
    sys.exit(main())
