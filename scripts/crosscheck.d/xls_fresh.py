#!/usr/bin/env python3
"""xls_fresh.py [--quillet COMMAND] [--operations COMMAND] [--corpus DIR] [--files N]
[--libreoffice]: results are fresh where our files go.

The engine calculates nothing: who opens a workbook that it changed must. In real files with a formula of numbers of its
own sheet one of these numbers is changed, by a statement, and a formula of it is added. Then
  - the record that says which program calculated last is of none later than ours, so that every later one calculates,
  - LibreOffice, on request, shows for each the value that `ssconvert --recalc` gives, and no longer the old one,
  - ssconvert without --recalc, which takes the stored results of loaded formulas whatever the file says, calculates the
    added one.
Exit status 1 when a file fails.
"""
import argparse
import glob
import json
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import warnings

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tools"))
sys.dont_write_bytecode = True
from xlsfile import CompoundFile, Fault, records, substreams  # noqa: E402

SECONDS = 300
OUR_BUILD = 114210
ADDED_ROW, ADDED_COL = 400, 40  # where the new formula stands
CHANGED_BY = 1000.5


def run(*command, text=None):
    done = subprocess.run(command, capture_output=True, timeout=SECONDS, input=text)
    if done.returncode:
        raise RuntimeError("%s: %s" % (command[0], done.stderr.decode("utf-8", "replace").strip()[-300:]))
    return done.stdout


def build_of(path):
    """Which program calculated the file last; None when it does not say."""
    with open(path, "rb") as f:
        book = CompoundFile(f.read())
    flat, _ = records(book.stream(book.main()))
    for record in substreams(flat)[0]:
        if record.id == 449 and len(record.body) >= 8:
            return struct.unpack_from("<I", record.body, 4)[0]
    return None


def candidate(quillet, path):
    """(sheet, (row, column) of a number, its value, (row, column) and value of a formula that begins with it)"""
    cells, sheet = {}, 0
    for line in run(quillet, "dump", "--formulas", path).splitlines():
        cell = json.loads(line)
        if "sheet" in cell:
            cells, sheet = {}, cell["sheet"]["index"]
        if "r" not in cell:
            continue
        cells[cell["r"], cell["c"]] = cell
        found = re.fullmatch(r"(?:SUM\()?([A-Z])\$?(\d+)(?:[+*-][A-Z0-9]+|:[A-Z]\$?\d+\))", cell.get("t") or "")
        if not found or cell["k"] != "n":
            continue
        at = int(found[2]) - 1, ord(found[1]) - 65
        number = cells.get(at, {})
        if number.get("k") == "n" and not number.get("f") and at != (cell["r"], cell["c"]):
            return sheet, at, number["v"], (cell["r"], cell["c"]), cell["v"]
    return None


def values(path, sheet, places):
    """Numbers of a sheet of an Open XML workbook."""
    import openpyxl
    warnings.simplefilter("ignore")  # of styles and pictures, which are not looked at
    book = openpyxl.load_workbook(path, data_only=True)
    return [book.worksheets[sheet].cell(row + 1, col + 1).value for row, col in places]


def close(a, b):
    return isinstance(a, (int, float)) and isinstance(b, (int, float)) and abs(a - b) <= 1e-9 * max(1, abs(a), abs(b))


class Case:
    def __init__(self, path, found, args, folder):
        self.name = os.path.basename(path)
        self.sheet, at, value, self.formula, self.old = found
        self.new = value + CHANGED_BY
        self.changed = os.path.join(folder, self.name)
        shutil.copyfile(path, self.changed)
        label = "%s%d" % (chr(65 + at[1]), at[0] + 1)
        script = os.path.join(folder, "script")
        with open(script, "w", encoding="utf-8") as f:
            f.write('declare x : real = %r\nwrite "xls:%s" { x to "[%d$%s]" }\n'
                    % (self.new, self.changed, self.sheet + 1, label))
        run(args.quillet, "run", script)
        line = json.dumps({"op": "writeFormula", "sheet": self.sheet, "args": [ADDED_ROW, ADDED_COL, label + "*2", None]})
        run(args.operations, "--load", self.changed, "--save", self.changed, text=line.encode())
        self.places = [self.formula, (ADDED_ROW, ADDED_COL)]
        self.folder = folder

    def by_gnumeric(self, *options):
        out = os.path.join(self.folder, "gnumeric.xlsx")
        run("ssconvert", *options, "-T", "Gnumeric_Excel:xlsx", self.changed, out)
        return values(out, self.sheet, self.places)

    def faults(self):
        build = build_of(self.changed)
        if build is None or build > OUR_BUILD:
            yield "says that program %s calculated it" % build
        self.fresh = self.by_gnumeric("--recalc")
        if not close(self.fresh[1], 2 * self.new):
            yield "the new formula is %s, not %s" % (self.fresh[1], 2 * self.new)
        stored = self.by_gnumeric()
        if not close(stored[1], self.fresh[1]):
            yield "without --recalc the new formula is %s" % stored[1]

    def libreoffice_faults(self, folder):
        shown = values(os.path.join(folder, os.path.splitext(self.name)[0] + ".xlsx"), self.sheet, self.places)
        for what, have, want in zip(("formula", "new formula"), shown, self.fresh):
            if not close(have, want):
                yield "LibreOffice shows %s for the %s, not %s" % (have, what, want)


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    options.add_argument("--operations", default=os.path.join(ROOT, "build", "release", "tools", "apply_operations"))
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--files", type=int, default=10)
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    cases, failed, changed = [], 0, 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for path in sorted(glob.glob(os.path.join(args.corpus, "xls", "*.xls"))):
            if len(cases) == args.files:
                break
            try:
                if (build_of(path) or 0) <= OUR_BUILD:
                    continue
                found = candidate(args.quillet, path)
            except (Fault, RuntimeError, struct.error, IndexError):
                continue
            if found:
                cases.append(Case(path, found, args, folder))
        faults = [(case, fault) for case in cases for fault in case.faults()]
        if args.libreoffice:
            run("soffice", "-env:UserInstallation=file://%s/profile" % folder, "--headless", "--convert-to",
                "xlsx:Calc MS Excel 2007 XML", "--outdir", os.path.join(folder, "lo"), *[c.changed for c in cases])
            faults += [(c, fault) for c in cases for fault in c.libreoffice_faults(os.path.join(folder, "lo"))]
        changed = sum(not close(case.fresh[0], case.old) for case in cases)
        for case, fault in faults:
            print("%s: %s" % (case.name, fault))
        failed = len({case.name for case, _ in faults})
    if changed < len(cases) // 2 or not cases:
        print("too few results change: %d of %d" % (changed, len(cases)))
        failed += 1
    print("crosscheck xls_fresh: %d changed workbooks, %d results differ from the old ones, %d failed%s"
          % (len(cases), changed, failed, "" if args.libreoffice else "; without LibreOffice"))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
