#!/usr/bin/env python3
"""xlsx_new.py [--maker COMMAND] [--libreoffice]: what other programs see in new Open XML workbooks of ours.

tools/make_xlsx_book writes workbooks with every kind of cell, format, font and colour, 200,000 strings, all rows and
all columns, and says what a reader must find. openpyxl looks for it in the file, values and formats, and in what gnumeric
and, on request, LibreOffice make of the smaller files when they convert them. tools/xlsxlint.py checks each file.
"""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
import libreoffice  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 300
KINDS = ("formats", "kinds", "columns", "strings", "rows")
SMALL = ("formats", "kinds")  # those that are converted too

OPENPYXL = """
import json, sys, openpyxl
big = sys.argv[2] == "big"
book = openpyxl.load_workbook(sys.argv[1], read_only=big)
HORIZONTAL = ["general", "left", "center", "right", "fill", "justify", "centerContinuous", "distributed"]
VERTICAL = ["top", "center", "bottom", "justify", "distributed"]
BORDER = [None, "thin", "medium", "dashed", "dotted", "thick", "double", "hair", "mediumDashed", "dashDot",
          "mediumDashDot", "dashDotDot", "mediumDashDotDot", "slantDashDot"]
PATTERN = [None, "solid", "mediumGray", "darkGray", "lightGray", "darkHorizontal", "darkVertical", "darkDown", "darkUp",
           "darkGrid", "darkTrellis", "lightHorizontal", "lightVertical", "lightDown", "lightUp", "lightGrid",
           "lightTrellis", "gray125", "gray0625"]

def colour(found):
    # An entry of the palette is an integer, another colour a text.
    return None if found is None else found.indexed if found.type == "indexed" else found.rgb

def line(side):
    return BORDER.index(side.style if side and side.style != "none" else None)

for index, sheet in enumerate(book.worksheets):
    for row in sheet.iter_rows():
        for cell in row:
            if cell.value is None:
                continue
            look = {}
            if not big:
                a, b, f, p, font = cell.alignment, cell.border, cell.fill, cell.protection, cell.font
                left, right = b.left or getattr(b, "start", None), b.right or getattr(b, "end", None)
                look = {
                    "horizontal": HORIZONTAL.index(a.horizontal or "general"),
                    "vertical": VERTICAL.index(a.vertical or "bottom"), "wrap": int(bool(a.wrapText)),
                    "rotation": a.textRotation, "indent": int(a.indent), "shrink": int(bool(a.shrinkToFit)),
                    "border": line(left), "left": line(left), "right": line(right), "top": line(b.top),
                    "bottom": line(b.bottom),
                    "border colour": colour(b.top.color if b.top else None),
                    "diagonal": int(bool(b.diagonalDown)) + 2 * int(bool(b.diagonalUp)),
                    "pattern": PATTERN.index(getattr(f, "patternType", None)
                                             if getattr(f, "patternType", None) != "none" else None),
                    "fore colour": colour(getattr(f, "fgColor", None)),
                    "back colour": colour(getattr(f, "bgColor", None)),
                    "locked": int(bool(p.locked)), "hidden": int(bool(p.hidden)),
                    "bold": bool(font.b), "italic": bool(font.i), "strike": bool(font.strike),
                    font.u or "none": True,
                    font.vertAlign or "baseline": True, "red": colour(font.color) in (10, "FFFF0000"),
                    "24": font.sz == 24,
                    "Times New Roman": font.name == "Times New Roman", "text": cell.number_format,
                }
            print(json.dumps([index, cell.row - 1, cell.column - 1, cell.data_type, cell.value, look]))
"""
PALETTE = "import json, openpyxl.styles.colors; print(json.dumps(openpyxl.styles.colors.COLOR_INDEX))"


def run(*command):
    done = subprocess.run(command, capture_output=True, timeout=SECONDS)
    if done.returncode:
        raise RuntimeError("%s: %s" % (command[0], done.stderr.decode("utf-8", "replace").strip()[-300:]))
    return done.stdout


def openpyxl_cells(path, kind):
    cells = {}
    for line in run("/usr/bin/python3", "-c", OPENPYXL, path, "small" if kind in SMALL else "big").splitlines():
        sheet, row, col, found, value, look = json.loads(line)
        cells[sheet, row, col] = (found, float(value) if found in "nb" else value, look)
    return cells


def by_gnumeric(path, folder):
    out = os.path.join(folder, "gnumeric.xlsx")
    run("ssconvert", path, out)
    return out


def by_libreoffice(path, folder):
    libreoffice.convert(os.path.join(folder, "lo"), "xlsx", [path])
    return os.path.join(folder, "lo", os.path.basename(path))


# What a program has no notion of: a property, or one value of it. LibreOffice has solid fills only, no more than
# 56 colours, and writes the text of number formats in its own way.
NOT_KEPT = {
    "gnumeric": set(),
    "LibreOffice": {("horizontal", 6), ("vertical", 3), "pattern", "doubleAccounting", "number format", "colour",
                    "border colour", "fore colour", "back colour", "singleAccounting"},
}


def expected_cells(lines):
    cells = {}
    for line in lines.decode("utf-8").splitlines():
        sheet, row, col, kind, value = line.split("\t")
        cells[int(sheet), int(row), int(col)] = (kind, float(value) if kind in "nb" else value)
    return cells


def same_cell(want, found, converted):
    """LibreOffice writes 15 digits, and booleans and errors as formulas."""
    if want == found:
        return True
    if not converted or None in found:
        return False
    if want[0] == found[0] == "n":
        return abs(want[1] - found[1]) <= 1e-14 * abs(want[1])
    names = {("b", 1.0): "=TRUE()", ("b", 0.0): "=FALSE()"}
    return found == ("f", names.get(want, "=%s" % want[1]))


def faults_of(expected, found, kind, program):
    wrong = [(place, want, found.get(place, (None, None))[:2]) for place, want in expected.items()
             if not same_cell(want, tuple(found.get(place, (None, None))[:2]), program in NOT_KEPT)]
    if wrong:
        yield "%d cells differ, first %s" % (len(wrong), str(wrong[0])[:150])
    extra = [place for place in found if place not in expected]
    if extra:
        yield "%d cells too many, first %s" % (len(extra), extra[0])
    if kind == "formats":
        yield from look_faults(expected, found, program)


def look_faults(expected, found, program):
    not_kept = NOT_KEPT.get(program, set())
    palette = json.loads(run("/usr/bin/python3", "-c", PALETTE))
    for (sheet, row, col), (_, want) in expected.items():
        look = found.get((sheet, row, col), (None, None, {}))[2]
        if sheet == 0 and col == 1:
            name = expected[sheet, row, 0][1]
            good = {want}
            if "colour" in name and program in NOT_KEPT:
                good.add("FF" + palette[int(want)][2:])
            if look.get(name) not in good and not {name, (name, want)} & not_kept:
                yield "%s %d is %s" % (name, want, look.get(name))
        elif sheet == 1 and not look.get(want) and want not in not_kept:
            yield "font: not %s" % want
        elif sheet == 2 and look.get("text") != want and "number format" not in not_kept:
            yield "number format %r is %r" % (want, look.get("text"))
        elif sheet == 3 and look.get("fore colour") != "FF%06X" % int(want) and "colour" not in not_kept:
            yield "colour %06X is %s" % (int(want), look.get("fore colour"))


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--maker", default=os.path.join(ROOT, "build", "release", "tools", "make_xlsx_book"))
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    programs = {"openpyxl": None}
    if shutil.which("ssconvert"):
        programs["gnumeric"] = by_gnumeric
    if args.libreoffice:
        if not shutil.which("soffice"):
            raise SystemExit("crosscheck: LibreOffice is not installed")
        programs["LibreOffice"] = by_libreoffice
    failed = 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for kind in KINDS:
            path = os.path.join(folder, kind + ".xlsx")
            expected = expected_cells(run(args.maker, kind, path))
            lint = [sys.executable, os.path.join(ROOT, "tools", "xlsxlint.py"), path]
            schemas = os.environ.get("OOXML_SCHEMAS") or os.path.join(ROOT, "..", "shared", "ooxml-schemas")
            if os.path.isdir(schemas) and shutil.which("xmllint"):
                lint += ["--schemas", schemas]
            faults = ["linter: " + line for line in subprocess.run(
                lint, capture_output=True, text=True).stdout.splitlines()]
            for name, convert in programs.items():
                if convert and kind not in SMALL:
                    continue
                try:
                    found = openpyxl_cells(convert(path, folder) if convert else path, kind)
                    faults += ["%s: %s" % (name, fault) for fault in faults_of(expected, found, kind, name)]
                except (RuntimeError, OSError, subprocess.TimeoutExpired) as e:
                    faults.append("%s: %s" % (name, e))
            for fault in faults[:20]:
                print("%s: %s" % (kind, fault), flush=True)
            failed += bool(faults)
    print("crosscheck xlsx_new: %d workbooks by %s, %d with differences" % (len(KINDS), ", ".join(programs), failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
