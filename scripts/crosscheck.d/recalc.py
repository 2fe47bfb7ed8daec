#!/usr/bin/env python3
"""recalc.py QUILLET: results that LibreOffice calculates are put into .xls and .xlsx files, and nothing else changes.

Without soffice nothing is done.
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile

SCRIPT = """
declare A : array(1..3) of real = {1: 10, 2: 20, 3: 30}
write "%s:%s" { A to "noindex;[A1:A3]" }
"""


def dump(quillet, path):
    out = subprocess.run([quillet, "dump", "--all", path], check=True, capture_output=True, text=True).stdout
    return [json.loads(line) for line in out.splitlines()]


def without_results(lines):
    return [{k: v for k, v in line.items() if not (line.get("f") and k in ("k", "v"))} for line in lines]


def make(path):
    import openpyxl
    book = openpyxl.Workbook()
    sheet = book.active
    for row in range(3):
        sheet.cell(row + 1, 1, row + 1)
    for cell, text in (("B1", "=SUM(A1:A3)"), ("B2", "=B1*2"), ("B3", '=IF(A1>5,"many","few")'), ("B4", "=1/0"), ("B5", "=A1>5")):
        sheet[cell] = text
    book.save(path)


def run_fresh(quillet, path):
    """A statement behind a write with --recalc reads the results of what was written."""
    copy = path.replace("book.", "fresh.")
    shutil.copyfile(path, copy)
    kind = copy.rpartition(".")[2]
    script = SCRIPT % (kind, copy) + 'declare B : real\nread "%s:%s" { B from "[B2]" }\nprint B\n' % (kind, copy)
    done = subprocess.run([quillet, "run", "--recalc", "--json", "-"], input=script, text=True, capture_output=True)
    lines = [json.loads(line) for line in done.stdout.splitlines()]
    if done.returncode == 0 and lines[0]["recalc"]["formulas"] == 5 and lines[-1]["value"] == 120:
        return 0
    print("recalc %s: %s\n%s" % (kind, lines, done.stderr))
    return 1


def main():
    quillet = sys.argv[1]
    if not shutil.which("soffice"):
        print("recalc: no soffice")
        return 0
    try:
        import openpyxl  # noqa: F401
    except ImportError:
        print("recalc: no python3-openpyxl")
        return 0
    wanted = {"B1": 60, "B2": 120, "B3": "many", "B4": "#DIV/0!", "B5": True}
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        first = os.path.join(folder, "book.xlsx")
        make(first)
        subprocess.run(["soffice", "--headless", "-env:UserInstallation=file://%s/p" % folder, "--convert-to", "xls", "--outdir",
                        folder, first], check=True, capture_output=True)
        for kind in ("xlsx", "xls"):
            path = os.path.join(folder, "book." + kind)
            subprocess.run([quillet, "run", "-"], input=SCRIPT % (kind, path), text=True, check=True, capture_output=True)
            faults += run_fresh(quillet, path)
            before = dump(quillet, path)
            told = subprocess.run([quillet, "recalc", path], text=True, check=True, capture_output=True).stdout
            after = dump(quillet, path)
            if without_results(before) != without_results(after):
                print("recalc %s: more than results changed" % kind)
                faults += 1
            found = {"%s%d" % (chr(65 + l["c"]), l["r"] + 1): l.get("v") for l in after if l.get("f")}
            if found != wanted or "5 formulas" not in told:
                print("recalc %s: %s\n%s" % (kind, found, told))
                faults += 1
    print("recalc: %d faults" % faults)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
