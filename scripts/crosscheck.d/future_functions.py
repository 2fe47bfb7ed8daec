#!/usr/bin/env python3
"""future_functions.py [--build DIR]: LibreOffice knows the functions to which we give a prefix.

A formula is written for each name in xlsx/features/future_functions.cpp, without a value, so that LibreOffice
calculates it on loading and shows #NAME? for a name that it does not know. UNKNOWN lists those that it knows without
the prefix only, or not at all.
"""
import argparse
import json
import os
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
import libreoffice  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
UNKNOWN = {"IMCOSH", "IMCOT", "IMCSC", "IMCSCH", "IMSEC", "IMSECH", "IMSINH", "IMTAN", "BINOM.DIST.RANGE", "QUERYSTRING"}
SECONDS = 120


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--build", default=os.path.join(ROOT, "build", "release"))
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    if not args.libreoffice:
        return 0
    with open(os.path.join(ROOT, "xlsx", "features", "future_functions.cpp"), encoding="utf-8") as f:
        names = re.findall(r'L"([A-Z0-9.]+)\("', f.read())
    with tempfile.TemporaryDirectory(prefix="functions-") as folder:
        book = os.path.join(folder, "functions.xlsx")
        lines = [{"op": "writeString", "args": [row, 0, name, None, 2]} for row, name in enumerate(names)]
        lines += [{"op": "writeFormula", "args": [row, 1, "%s(C1)" % name, None]} for row, name in enumerate(names)]
        subprocess.run([os.path.join(args.build, "tools", "apply_operations"), "--save", book], check=True, timeout=SECONDS,
                       input="".join(json.dumps(line) + "\n" for line in lines), stdout=subprocess.DEVNULL, text=True)
        shown = [line.decode().split(",", 1) for line in libreoffice.sheets_as_csv([book]).get(book, []) if b"," in line]
    unknown = {name.strip('"') for name, value in shown if "#NAME?" in value}
    for name in sorted(unknown ^ UNKNOWN):
        print("%s: %s" % (name, "not known" if name in unknown else "known now"))
    print("future_functions: LibreOffice knows %d of %d names" % (len(shown) - len(unknown), len(names)))
    return 1 if unknown != UNKNOWN or len(shown) != len(names) else 0


if __name__ == "__main__":
    sys.exit(main())
