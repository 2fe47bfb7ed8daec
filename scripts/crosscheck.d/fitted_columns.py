#!/usr/bin/env python3
"""fitted_columns.py [--build DIR] [--every N] [CORPUS]: fitted columns of real packages hold their widest text.

Every Nth package of the corpus has all columns of all sheets fitted through build/DIR/tools/apply_operations. The texts
that openpyxl reads are measured by the typefaces themselves: Carlito and Liberation Sans, which have the advance widths
of Calibri and Arial, each character rounded to whole pixels at 96 dpi. Texts in other faces, with characters that these
do not draw, and of merged cells are left out; of several lines the one with most characters counts.
"""
import argparse
import json
import logging
import os
import subprocess
import sys
import warnings
from concurrent.futures import ProcessPoolExecutor

sys.dont_write_bytecode = True
from corpus_files import loadable  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FONTS = "/usr/share/fonts/truetype/"
FACES = {("calibri", False): "crosextra/Carlito-Regular.ttf", ("calibri", True): "crosextra/Carlito-Bold.ttf",
         ("arial", False): "liberation/LiberationSans-Regular.ttf", ("arial", True): "liberation/LiberationSans-Bold.ttf"}
SECONDS, LARGEST = 120, 300_000
faces = {}


def advances(name, bold):
    """{character: width} and the units of a size."""
    from fontTools.ttLib import TTFont
    logging.getLogger("fontTools").setLevel(logging.ERROR)
    if (name, bold) not in faces:
        font = TTFont(FONTS + FACES[name, bold])
        metrics = font["hmtx"]
        faces[name, bold] = {c: metrics[g][0] for c, g in font.getBestCmap().items()}, font["head"].unitsPerEm
    return faces[name, bold]


def pixels(text, font):
    """None when nobody can tell."""
    name, size = (font.name or "").lower(), font.sz or 0
    if (name, bool(font.b)) not in FACES or size != int(size) or not 8 <= size <= 20:
        return None
    widths, units = advances(name, bool(font.b))
    line = max(text.split("\n"), key=len)
    if any(ord(c) not in widths or ord(c) >= 592 for c in line):
        return None
    return sum(int(widths[ord(c)] * size * 96 / 72 / units + 0.5) for c in line)


def texts(path):
    """{(sheet, column): (widest in pixels, its text)} for the worksheets in tab order."""
    import openpyxl
    warnings.simplefilter("ignore")
    found = {}
    for number, sheet in enumerate(openpyxl.load_workbook(path, data_only=True)._sheets):
        if not hasattr(sheet, "merged_cells"):
            continue
        merged = {cell for area in sheet.merged_cells.ranges for row in area.rows for cell in row}
        for place, cell in sheet._cells.items():
            if not isinstance(cell.value, str) or cell.data_type == "e" or place in merged:
                continue
            width = pixels(cell.value, cell.font)
            key = (number, cell.column - 1)
            if width is not None and width > found.get(key, (-1,))[0]:
                found[key] = (width, cell.value)
    return found


def check(path, tool):
    try:
        widest = texts(path)
    except Exception:
        return 0, []  # a package that openpyxl does not take
    sheets = sorted({sheet for sheet, _ in widest})
    lines = [{"op": "autoFitColumns", "sheet": s, "args": [0, 0, 16383, 1048575]} for s in sheets]
    lines += [{"op": "columnWidthPixels", "sheet": s, "args": [c]} for s, c in widest]
    done = subprocess.run([tool, "--load", path], input="".join(json.dumps(line) + "\n" for line in lines),
                          capture_output=True, text=True, timeout=SECONDS)
    answers = [json.loads(line) for line in done.stdout.splitlines()]
    if done.returncode or len(answers) != len(lines):
        return 0, ["%s" % done.stderr.strip()]
    wide = [answer["result"] for answer in answers[len(sheets):]]
    return len(widest), ["sheet %d, column %d: %d pixels for %d of %s" % (*key, have, *need)
                         for (key, need), have in zip(widest.items(), wide) if have < min(need[0], 255 * 7)]


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("corpus", nargs="?", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--build", default=os.path.join(ROOT, "build", "release"))
    options.add_argument("--every", type=int, default=1)
    args = options.parse_args()
    try:
        import fontTools  # noqa: F401
        import openpyxl  # noqa: F401
    except ImportError as e:
        print("fitted_columns: %s, nothing done" % e)
        return 0
    if not all(os.path.exists(FONTS + file) for file in FACES.values()):
        print("fitted_columns: no typefaces, nothing done")
        return 0
    names = [r["file"] for r in loadable(args.corpus, "xlsx")]
    paths = [os.path.join(args.corpus, "xlsx", name) for name in sorted(names)[::args.every]]
    paths = [path for path in paths if os.path.getsize(path) <= LARGEST]
    columns, failed = 0, 0
    with ProcessPoolExecutor(os.cpu_count()) as pool:
        tool = os.path.join(args.build, "tools", "apply_operations")
        for path, (count, faults) in zip(paths, pool.map(check, paths, [tool] * len(paths))):
            columns += count
            failed += bool(faults)
            for fault in faults[:5]:
                print("%s: %s" % (os.path.basename(path), fault))
    print("fitted_columns: %d columns of %d packages, %d packages with columns too narrow" % (columns, len(paths), failed))
    return 1 if failed or not columns else 0


if __name__ == "__main__":
    sys.exit(main())
