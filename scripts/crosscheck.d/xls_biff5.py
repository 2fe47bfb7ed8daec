#!/usr/bin/env python3
"""xls_biff5.py [--libreoffice] [--corpus DIR] [--quillet COMMAND]: what gnumeric, and with --libreoffice also LibreOffice,
sees of BIFF5 workbooks that we saved in the newer format.

Formulas and values of the saved file are those of the file, but for formulas that `quillet info` says become values.
"""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.append(os.path.dirname(os.path.abspath(__file__)))
from corpus_files import loadable  # noqa: E402
from libreoffice import convert  # noqa: E402

SECONDS = 120
CELL = re.compile(r'<c r="([A-Z]+[0-9]+)"([^>]*)>(.*?)</c>', re.S)
FORMULA, VALUE = re.compile(r"<f[^>]*>(.*?)</f>", re.S), re.compile(r"<v>(.*?)</v>", re.S)
# Of the macro functions of a file it takes the last letter of one name to the next. The older tokens for names tell a sheet
# too, which it shows; the name is the same.
MISREAD = {"sjs_biff5_number_format_vietnamese.xls": {"TNUMFM(": "NUMFMT(", "DOFM(": "DOFMT("},
           "sjs_biff5_defined_names_simple.xls": {"-Sheet1!SHEETjs": "-SHEETjs"},
           "sjs_biff5_named_ranges_2011.xls": {"'Cross-Sheet'!col": "col"}}
# Formulas that LibreOffice shows in another way: names of macro functions and of other sheets, for which the older format
# has tokens of its own, it shows as #NAME? in one of the two files. gnumeric shows the same name in both.
SHOWN_OTHERWISE = {"sjs_biff5_comments_stress_test.xls": 3, "sjs_biff5_defined_names_simple.xls": 1,
                   "sjs_biff5_named_ranges_2011.xls": 2}


def by_gnumeric(path, folder):
    """What it makes of the file; None when it does not open it."""
    out = os.path.join(folder, "converted.xlsx")
    done = subprocess.run(["ssconvert", "-T", "Gnumeric_Excel:xlsx", path, out], capture_output=True, timeout=SECONDS)
    return None if done.returncode else out


def by_libreoffice(path, folder):
    convert(folder, "xlsx:Calc MS Excel 2007 XML", [path])
    out = os.path.join(folder, os.path.splitext(os.path.basename(path))[0] + ".xlsx")
    return out if os.path.exists(out) else None


def cells_of(path, folder, program):
    """(formula, value) by sheet and address; None when the program does not open the file."""
    out = program(path, folder)
    if out is None:
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
    os.remove(out)
    return cells


def compare(files, args, name, program):
    total, equal, lost, failed = 0, 0, 0, 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for file in files:
            path, saved = os.path.join(args.corpus, "xls", file), os.path.join(folder, file)
            subprocess.run([args.quillet, "resave", path, saved], check=True, timeout=SECONDS)
            before = cells_of(path, folder, program)
            if before is None:
                continue
            after = cells_of(saved, folder, program) or {}
            differing = []
            for place, (formula, value) in before.items():
                for wrong, right in (MISREAD if program == by_gnumeric else {}).get(file, {}).items():
                    formula = formula.replace(wrong, right)
                wanted = (formula, value)
                total += 1
                if after.get(place) == wanted:
                    equal += 1
                elif place not in after:
                    lost += 1
                else:
                    differing.append((place, wanted, after[place]))
            if len(differing) == (SHOWN_OTHERWISE if program == by_libreoffice else {}).get(file, 0):
                continue
            for difference in differing[:3]:
                print("%s: %s" % (file, difference))
            failed += 1
    print("crosscheck xls_biff5, %s: %d of %d formulas equal, %d values instead, %d files with differences"
          % (name, equal, total, lost, failed))
    return 1 if failed or not total or equal < total * 0.99 else 0


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--libreoffice", action="store_true")
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    args = options.parse_args()
    if not shutil.which("ssconvert"):
        raise SystemExit("crosscheck: gnumeric's ssconvert is not installed")
    files = [r["file"] for r in loadable(args.corpus, "biff5")]
    programs = [("gnumeric", by_gnumeric)] + ([("LibreOffice", by_libreoffice)] if args.libreoffice else [])
    return max(compare(files, args, *program) for program in programs)


if __name__ == "__main__":
    sys.exit(main())
