#!/usr/bin/env python3
"""xlsx_sheets.py [--corpus DIR] [--changer COMMAND] [--count 12] [--libreoffice]: what other programs see of workbooks
whose list of sheets we changed.

Takes `count` files of the corpus as xlsx.py does, all of them with --count 0, and lets tools/change_sheets add a sheet
behind all, copy the first, move it behind all, and remove it. tools/xlsxlint.py must find nothing wrong in what comes
out that was not wrong before; openpyxl, ssconvert and on request LibreOffice must find the sheets in their new order
with the cells that they had. Where formulas may look at the sheet that is gone, only the number of sheets counts.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.append(os.path.join(ROOT, "tools"))
from corpus_files import loadable  # noqa: E402
import libreoffice  # noqa: E402
import xlsx  # noqa: E402
import xlsxcompare  # noqa: E402
import xlsxlint  # noqa: E402

SECONDS = 120
OPERATIONS = ("add", "copy", "move", "remove")
# It writes words of its own into cells of a pivot table, which the copy has as plain cells.
NOT_ASKED = {("LibreOffice", "copy", "cal_pivots.xlsx")}


def split(lines, is_head):
    """Lists of lines, one for each sheet, without their heads."""
    sheets = []
    for line in lines:
        if is_head(line):
            sheets.append([])
        else:
            sheets[-1].append(line)
    return sheets


def openpyxl_sheets(path):
    lines = xlsx.openpyxl_lines(path)
    if lines is None:
        return None
    sheets = split(lines, lambda line: line[:1] in b"'\"")  # the title; cells begin with an address
    return sheets[:len(sheets) // 2]  # formulas; their cached values come behind


def ssconvert_sheets(path):
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(["ssconvert", "-S", path, os.path.join(folder, "%n.csv")], capture_output=True,
                              timeout=SECONDS)
        sheets = []
        for name in sorted(os.listdir(folder), key=lambda n: int(n.split(".")[0])):
            with open(os.path.join(folder, name), "rb") as f:
                sheets.append(csv_values(f.read().replace(b"\xc2\xa0", b" ").splitlines()))
        return sheets if done.returncode == 0 else None


def libreoffice_sheets(lines, path):
    """Its files bear the names of the sheets; the order is told by the workbook."""
    if lines is None:
        return None
    package = xlsxcompare.Package(path)
    book = xlsxcompare.compare_parts.parse(package.parts[package.main_part()])
    names = [s.get("name") for s in xlsxcompare.child(book, "sheets")]
    heads = [line for line in lines if line.startswith(b"sheet -")]
    sheets = dict(zip(heads, split(lines, lambda line: line in heads)))
    found = [sheets.get(b"sheet -%s.csv" % name.encode()) for name in names]
    return None if None in found else [csv_values(sheet) for sheet in found]


def csv_values(lines):
    """What rows and columns a sheet takes in csv depends on its drawings, which a copy has not."""
    return [line.strip(b",") for line in lines if line.strip(b",")]


def changed(sheets, operation):
    """What becomes of the sheets; None for one that is not compared."""
    return {"add": sheets + [None], "copy": sheets[:1] + sheets, "move": sheets[1:] + sheets[:1],
            "remove": [None] * (len(sheets) - 1)}[operation]


def compare(before, after, operation, again):
    """A text for what is wrong, or None."""
    expected, volatile = changed(before, operation), changed(again, operation)
    if len(after) != len(expected):
        return "%d sheets and not %d" % (len(after), len(expected))
    for number, (want, found, third) in enumerate(zip(expected, after, volatile)):
        if want is None or want == found or want != third:
            continue
        pair = next(((a, b) for a, b in zip(want, found) if a != b), (len(want), len(found)))
        return "sheet %d: %s became %s" % (number, str(pair[0])[:100], str(pair[1])[:100])
    return None


def change(path, folder, changer, schemas):
    """({operation: file}, faults)"""
    made, faults = {}, []
    for operation in OPERATIONS:
        out = os.path.join(folder, operation + "-" + os.path.basename(path))
        done = subprocess.run([changer, operation, path, out], capture_output=True, timeout=SECONDS)
        if done.returncode == 3:
            continue  # refused, with a reason
        if done.returncode:
            faults.append("%s: %s" % (operation, done.stderr.decode("utf-8", "replace").strip()))
            continue
        made[operation] = out
        found = xlsxlint.new_findings(out, path, schemas)
        if found and operation == "copy":  # what was wrong in the sheet is wrong in its copy
            known = {line.partition(": ")[2] for line in xlsxlint.findings(path, schemas)}
            found = [line for line in found if line.partition(": ")[2] not in known]
        faults += ["%s: %s" % (operation, line) for line in found]
    return made, faults


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--changer", default=os.path.join(ROOT, "build", "release", "tools", "change_sheets"))
    options.add_argument("--count", type=int, default=12)
    options.add_argument("--libreoffice", action="store_true")
    options.add_argument("--lint-only", action="store_true")
    args = options.parse_args()
    readers = {} if args.lint_only else {"openpyxl": openpyxl_sheets, "ssconvert": ssconvert_sheets}
    schemas = os.path.join(args.corpus, "..", "ooxml-schemas")
    schemas = schemas if os.path.isdir(schemas) and shutil.which("xmllint") else None
    rows = [r for r in loadable(args.corpus) if os.path.exists(os.path.join(args.corpus, "xlsx", r["file"]))]
    failed = workbooks = comparisons = 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        work, faults_of = [], {}
        for row in xlsx.choose(rows, args.count) if args.count else rows:
            path = os.path.join(args.corpus, "xlsx", row["file"])
            made, faults_of[path] = change(path, folder, args.changer, schemas)
            work.append((path, made))
            workbooks += len(made)
        if args.libreoffice and not args.lint_only:
            found = libreoffice.sheets_as_csv([p for path, made in work for p in [path, *made.values()]])
            readers["LibreOffice"] = lambda path: libreoffice_sheets(found.get(path), path)
            later = libreoffice.sheets_as_csv([path for path, _ in work])
        for path, made in work:
            for name, reader in readers.items():
                before = reader(path)
                one_more = later.get(path) if name == "LibreOffice" else None
                again = before and (libreoffice_sheets(one_more, path) if one_more else reader(path))
                for operation, out in made.items() if before and again else ():
                    if (name, operation, os.path.basename(path)) in NOT_ASKED:
                        continue
                    after = reader(out)
                    comparisons += 1
                    fault = ("does not take the file" if after is None else compare(before, after, operation, again))
                    if fault:
                        faults_of[path].append("%s: %s: %s" % (operation, name, fault))
            for fault in faults_of[path]:
                print("%s: %s" % (os.path.basename(path), fault), flush=True)
            failed += bool(faults_of[path])
    print("crosscheck xlsx_sheets: %d workbooks of %d files, %d comparisons by %s, %d files with differences"
          % (workbooks, len(work), comparisons, ", ".join(readers) or "the linter", failed))
    return 1 if failed or not workbooks else 0


if __name__ == "__main__":
    sys.exit(main())
