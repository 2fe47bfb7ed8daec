#!/usr/bin/env python3
"""xls_biff5.py [--corpus DIR] [--quillet COMMAND]: what gnumeric sees of BIFF5 workbooks that we saved in the newer format.

Formulas and values of the saved file are those of the file, but for formulas that `quillet info` says become values.
"""
import argparse
import csv
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 120
CELL = re.compile(r'<c r="([A-Z]+[0-9]+)"([^>]*)>(.*?)</c>', re.S)
FORMULA, VALUE = re.compile(r"<f[^>]*>(.*?)</f>", re.S), re.compile(r"<v>(.*?)</v>", re.S)
# Of the macro functions of a file it takes the last letter of one name to the next. The older tokens for names tell a sheet
# too, which it shows; the name is the same.
MISREAD = {"sjs_biff5_number_format_vietnamese.xls": {"TNUMFM(": "NUMFMT(", "DOFM(": "DOFMT("},
           "sjs_biff5_defined_names_simple.xls": {"-Sheet1!SHEETjs": "-SHEETjs"},
           "sjs_biff5_named_ranges_2011.xls": {"'Cross-Sheet'!col": "col"}}


def cells_of(path, folder):
    """(formula, value) by sheet and address; None when it does not open the file."""
    out = os.path.join(folder, "converted.xlsx")
    done = subprocess.run(["ssconvert", "-T", "Gnumeric_Excel:xlsx", path, out], capture_output=True, timeout=SECONDS)
    if done.returncode:
        return None
    cells = {}
    with zipfile.ZipFile(out) as package:
        for part in package.namelist():
            if not part.startswith("xl/worksheets/sheet"):
                continue
            for address, _, content in CELL.findall(package.read(part).decode("utf-8")):
                formula, value = FORMULA.search(content), VALUE.search(content)
                if formula:
                    cells[part, address] = (formula[1], value[1] if value else None)
    return cells


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    args = options.parse_args()
    if not shutil.which("ssconvert"):
        raise SystemExit("crosscheck: gnumeric's ssconvert is not installed")
    with open(os.path.join(args.corpus, "manifest.tsv"), newline="", encoding="utf-8") as f:
        files = [r["file"] for r in csv.DictReader(f, delimiter="\t", quoting=csv.QUOTE_NONE)
                 if r["expect"] == "load" and r["format"] == "biff5"]
    total, equal, lost, failed = 0, 0, 0, 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for file in files:
            path, saved = os.path.join(args.corpus, "xls", file), os.path.join(folder, file)
            subprocess.run([args.quillet, "resave", path, saved], check=True, timeout=SECONDS)
            before = cells_of(path, folder)
            if before is None:
                continue
            after = cells_of(saved, folder) or {}
            differing = []
            for place, (formula, value) in before.items():
                for wrong, right in MISREAD.get(file, {}).items():
                    formula = formula.replace(wrong, right)
                wanted = (formula, value)
                total += 1
                if after.get(place) == wanted:
                    equal += 1
                elif place not in after:
                    lost += 1
                else:
                    differing.append((place, wanted, after[place]))
            for difference in differing[:3]:
                print("%s: %s" % (file, difference))
            failed += bool(differing)
    print("crosscheck xls_biff5: %d of %d formulas equal, %d values instead, %d files with differences"
          % (equal, total, lost, failed))
    return 1 if failed or not total or equal < total * 0.99 else 0


if __name__ == "__main__":
    sys.exit(main())
