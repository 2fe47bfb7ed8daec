#!/usr/bin/env python3
"""xls_formulas.py [--libreoffice] [--corpus DIR] [--build DIR]: texts of the formulas of binary workbooks, and what
becomes of formulas that are written back.

The texts that `quillet dump --formulas` gives for the files of the corpus are compared with those in the .xlsx files
that gnumeric, and with --libreoffice also LibreOffice, make of them. Then tools/formula_texts writes every formula that
it can compile back into its cell: gnumeric, and with --libreoffice also LibreOffice, must show the texts that it did before,
gnumeric must calculate the same values, and nothing else in the file may differ.
"""
import argparse
import collections
import csv
import json
import os
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path += [os.path.join(ROOT, "tools"), os.path.dirname(os.path.abspath(__file__))]
from corpus_files import loadable  # noqa: E402
from formula_text import has_substitute, letters, normal, of_package, shortened  # noqa: E402
from libreoffice import convert  # noqa: E402
import steady  # noqa: E402
import xlscompare  # noqa: E402

SECONDS = 120
# Cells that a program shows in another way, by program and file.
KNOWN = {
    # functions under their later names
    ("gnumeric", "sjs_formula_stress_test.xls"): 32,
    ("gnumeric, rewritten", "sjs_formula_stress_test.xls"): 32,
    # -10% is a constant there, and a minus before 10% when it is written: shown as -(10%)
    ("gnumeric, rewritten", "poi_IrrNpvTestCaseData.xls"): 2,
    # names that it shows as #NAME?
    ("LibreOffice", "poi_BooleanFunctionsTestCaseData.xls"): 1,
    ("LibreOffice", "poi_testNames.xls"): 1,
    # an error constant that it drops, functions under later names or none
    ("LibreOffice", "sjs_formula_stress_test.xls"): 5,
}
KNOWN.update({("LibreOffice, rewritten", file): n for (program, file), n in KNOWN.items() if program == "LibreOffice"})
# How many texts must be equal over the whole corpus.
FLOORS = {"gnumeric: equal": 33664, "LibreOffice: equal": 33689}


def run(*command):
    return subprocess.run(command, capture_output=True, timeout=SECONDS)


def our_texts(path, quillet):
    """{sheet: {"A1": text or None}}"""
    done = run(quillet, "dump", "--formulas", path)
    if done.returncode:
        raise SystemExit("crosscheck: %s: %s" % (path, done.stderr.decode("utf-8", "replace")))
    found, cells = {}, {}
    for line in done.stdout.splitlines():
        if line.startswith(b'{"sheet"'):
            cells = found.setdefault(json.loads(line)["sheet"]["name"], {})
        elif b'"f":true' in line:
            cell = json.loads(line)
            cells[letters(cell["c"]) + str(cell["r"] + 1)] = cell["t"]
    return found


def by_gnumeric(path, folder, *options):
    out = os.path.join(folder, os.path.basename(path) + ".xlsx")
    done = run("ssconvert", *options, "-T", "Gnumeric_Excel:xlsx", path, out)
    return of_package(out) if done.returncode == 0 and os.path.exists(out) else None


def values(path, folder):
    """Of a recalculation, as CSV of every sheet; None when the file is not taken."""
    pattern = os.path.join(folder, os.path.basename(path) + ".%n.csv")
    if run("ssconvert", "--recalc", "-S", path, pattern).returncode:
        return None
    lines = []
    for name in sorted(os.listdir(folder)):
        if name.startswith(os.path.basename(path) + ".") and name.endswith(".csv"):
            with open(os.path.join(folder, name), newline="", encoding="utf-8") as f:
                lines += [[shortened(field) for field in row] for row in csv.reader(f)]
    return lines


class Count(collections.Counter):
    def __init__(self):
        super().__init__()
        self.faults = []


def compare(ours, theirs, what, count, program):
    differing = []
    for sheet, cells in ours.items():
        for at, text in cells.items():
            other = theirs.get(sheet, {}).get(at)
            if text is None or other is None or has_substitute(text):
                count["%s: not compared" % program] += 1
            elif normal(text) == normal(other):
                count["%s: equal" % program] += 1
            else:
                differing.append("%s!%s: %s, and %s has %s" % (sheet, at, normal(text)[:100], program, normal(other)[:100]))
    count["%s: differing" % program] += len(differing)
    if len(differing) != KNOWN.get((program, what), 0):
        count.faults += ["%s: %s" % (what, line) for line in differing[:5]]


class WithoutFormulas(xlscompare.Comparison):
    """Formula cells are those that were written, and new references to sheets stand behind the old."""

    def cells(self, where, old, new):
        def others(part):
            return {tuple(place): cell for place, *cell in xlscompare.expand_cells(part) if cell[0] != "Formula"}
        if others(old) != others(new):
            self.differ(where, "cells beside the formulas changed")


def rewritten(path, folder, args, ours, count):
    out = os.path.join(args.rewritten, os.path.basename(path))
    done = run(args.tool, "rewrite", path, out)
    if done.returncode:
        return count.faults.append("%s: not written: %s" % (path, done.stderr.decode().strip()))
    name = os.path.basename(path)
    count["formulas written back"] += int(done.stdout)
    with open(path, "rb") as a, open(out, "rb") as b:
        found = WithoutFormulas(a.read(), b.read()).differences
    count.faults += ["%s: %s" % (name, line) for line in found if "references to sheets" not in line]
    before, after = by_gnumeric(path, folder), by_gnumeric(out, folder)
    if before is None:
        return
    if after is None:
        return count.faults.append("%s: gnumeric does not take it any more" % name)
    compare(ours, after, name, count, "gnumeric, rewritten")
    old, new = values(path, folder), values(out, folder)
    changed = steady.changes(old, new, lambda: values(path, folder))
    if len(old) != len(new) or changed:
        count.faults.append("%s: other values: %s" % (name, changed[:1] or (len(old), len(new))))
    count["files of the same values"] += not changed


def check(path, args):
    count = Count()
    ours = our_texts(path, args.quillet)
    if not any(ours.values()):
        return count
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        theirs = by_gnumeric(path, folder)
        if theirs is not None:
            compare(ours, theirs, os.path.basename(path), count, "gnumeric")
        rewritten(path, folder, args, ours, count)
    count["files"] += 1
    return count


def by_libreoffice(paths, quillet, program, texts_of):
    """Texts of the files compared with those that `texts_of` gives a file's path for."""
    count = Count()
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for first in range(0, len(paths), 12):
            convert(folder, "xlsx:Calc MS Excel 2007 XML", paths[first:first + 12])
        for path in paths:
            made = os.path.join(folder, os.path.splitext(os.path.basename(path))[0] + ".xlsx")
            if os.path.exists(made):
                compare(our_texts(texts_of(path), quillet), of_package(made), os.path.basename(path), count, program)
    return count


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--build", default=os.path.join(ROOT, "build", "release"))
    options.add_argument("--libreoffice", action="store_true")
    options.add_argument("names", nargs="*")
    args = options.parse_args()
    args.quillet = os.path.join(args.build, "cli", "quillet")
    args.tool = os.path.join(args.build, "tools", "formula_texts")
    names = [r["file"] for r in loadable(args.corpus, "biff8")]
    paths = [os.path.join(args.corpus, "xls", name) for name in names if not args.names or name in args.names]
    total = Count()
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as args.rewritten:
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            counts = list(pool.map(lambda path: check(path, args), paths))
        if args.libreoffice:
            with_formulas = [p for p, c in zip(paths, counts) if c]
            counts.append(by_libreoffice(with_formulas, args.quillet, "LibreOffice", lambda path: path))
            before = {os.path.basename(path): path for path in with_formulas}
            written = [os.path.join(args.rewritten, name) for name in sorted(os.listdir(args.rewritten))]
            counts.append(by_libreoffice(written, args.quillet, "LibreOffice, rewritten",
                                         lambda path: before[os.path.basename(path)]))
    for count in counts:
        total.update(count)
        for fault in count.faults:
            print(fault)
    faults = sum(len(count.faults) for count in counts)
    print("crosscheck formulas: %s, %d faults" % (", ".join("%s %d" % item for item in sorted(total.items())), faults))
    few = not args.names and any(total[what] < floor for what, floor in FLOORS.items() if args.libreoffice or "Libre" not in what)
    return 1 if faults or few or not total["gnumeric: equal"] else 0


if __name__ == "__main__":
    sys.exit(main())
