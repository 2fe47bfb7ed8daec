#!/usr/bin/env python3
"""xls_new.py [--maker COMMAND]: what other programs see in new binary workbooks of ours.

tools/make_xls_book writes workbooks with every kind of cell, format, font and colour, 70,000 strings and the last row
and column, and says what a reader must find. It is looked for by xlrd, and in what gnumeric and LibreOffice make of the
files: they convert them to .xls of their own, which xlrd reads again. Whoever of the two is not installed is left out.
"""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 300
KINDS = ("formats", "strings", "edges", "rich")

# Prints one JSON line for each cell, and for each sheet; a format as far as the check needs it.
XLRD = """
import json, sys, xlrd
book = xlrd.open_workbook(sys.argv[1], logfile=sys.stderr, formatting_info=True)
kinds = {1: "s", 2: "n", 3: "n", 4: "b", 5: "e"}
for index, sheet in enumerate(book.sheets()):
    for row in range(sheet.nrows):
        for col, (kind, value, ixfe) in enumerate(zip(
                sheet.row_types(row), sheet.row_values(row),
                (sheet.cell_xf_index(row, c) for c in range(sheet.ncols)))):
            if kind not in kinds:
                continue
            xf = book.xf_list[ixfe]
            font = book.font_list[xf.font_index]
            look = {}
            if sheet.name in ("Formats", "Fonts", "Colours", "Number formats"):
                a, b, f, p = xf.alignment, xf.border, xf.background, xf.protection
                look = {
                    "horizontal": a.hor_align, "vertical": a.vert_align, "wrap": a.text_wrapped,
                    "rotation": a.rotation, "indent": a.indent_level, "shrink": a.shrink_to_fit,
                    "border": [b.left_line_style, b.right_line_style, b.top_line_style, b.bottom_line_style],
                    "border colour": [b.left_colour_index, b.right_colour_index, b.top_colour_index,
                                      b.bottom_colour_index],
                    "diagonal": b.diag_down + 2 * b.diag_up, "pattern": f.fill_pattern,
                    "fore colour": f.pattern_colour_index, "back colour": f.background_colour_index,
                    "locked": p.cell_locked, "hidden": p.formula_hidden,
                    "fore rgb": book.colour_map.get(f.pattern_colour_index),
                    "bold": font.bold or font.weight >= 700, "italic": font.italic, "strike-out": font.struck_out,
                    "underlined": font.underline_type == 1, "doubly underlined": font.underline_type == 2,
                    "superscript": font.escapement == 1, "subscript": font.escapement == 2,
                    "24 points": font.height == 480, "Times New Roman": font.name == "Times New Roman",
                    "red": font.colour_index == 10,
                    "text": book.format_map[xf.format_key].format_str,
                }
            if kind == 5:
                value = xlrd.error_text_from_code.get(value, value)
            print(json.dumps([index, row, col, kinds[kind], value, look]))
"""
# What a conversion keeps of a format, up to which value; the rest it expresses in its own way.
CONVERTED = {"horizontal": 5, "wrap": 1, "border": 12, "locked": 1}


def run(*command):
    done = subprocess.run(command, capture_output=True, timeout=SECONDS)
    if done.returncode:
        raise RuntimeError("%s: %s" % (command[0], done.stderr.decode("utf-8", "replace").strip()[-300:]))
    return done.stdout


def xlrd_cells(path):
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import xlrd"], capture_output=True).returncode == 0:
            cells = {}
            for line in run(python, "-c", XLRD, path).splitlines():
                sheet, row, col, kind, value, look = json.loads(line)
                cells[sheet, row, col] = (kind, value, look)
            return cells
    raise SystemExit("crosscheck: python3-xlrd is not installed")


def by_gnumeric(path, folder):
    out = os.path.join(folder, "gnumeric.xls")
    run("ssconvert", "-T", "Gnumeric_Excel:excel_biff8", path, out)
    return out


def by_libreoffice(path, folder):
    run("soffice", "-env:UserInstallation=file://%s/profile" % folder, "--headless", "--convert-to", "xls:MS Excel 97",
        "--outdir", os.path.join(folder, "lo"), path)
    return os.path.join(folder, "lo", os.path.basename(path))


def expected_cells(lines):
    cells = {}
    for line in lines.decode("utf-8").splitlines():
        sheet, row, col, kind, value = line.split("\t")
        value = value if kind in "se" else float(value)
        if value != "":
            cells[int(sheet), int(row), int(col)] = (kind, value)
    return cells


def value_faults(expected, found):
    wrong = [(place, want, found.get(place, (None, None))[:2]) for place, want in expected.items()
             if tuple(found.get(place, (None, None))[:2]) != want]
    extra = [place for place in found if place not in expected and found[place][1] != ""]
    if wrong:
        yield "%d cells differ, first %s: %s, found %s" % (len(wrong), wrong[0][0], str(wrong[0][1])[:60],
                                                          str(wrong[0][2])[:60])
    if extra:
        yield "%d cells too many, first %s" % (len(extra), extra[0])


def format_faults(expected, found, converted):
    for (sheet, row, col), (_, want) in expected.items():
        look = found.get((sheet, row, col), (None, None, {}))[2]
        name = expected.get((sheet, row, 0), (None, ""))[1]
        if sheet == 0 and col == 1:
            if converted and want > CONVERTED.get(name, -1):
                continue
            have = look.get(name)
            sides = have if isinstance(have, list) else [have]
            # Converted, the borders above and below are those of the neighbours too.
            if any(side != want for side in (sides[:2] if converted else sides)):
                yield "%s %d is %s" % (name, want, have)
        elif sheet == 1 and col == 1 and isinstance(name, str) and not converted:
            if look["text"] != name:
                yield "number format %r is %r" % (name, look["text"])
        elif sheet == 2 and not look.get(want) and not (converted and want == "red"):
            yield "font: not %s" % want
        elif sheet == 3:
            rgb = [row * 4, 255 - row * 4, 99]
            if look.get("fore rgb") != rgb and not converted:
                yield "colour %s is %s" % (rgb, look.get("fore rgb"))


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--maker", default=os.path.join(ROOT, "build", "release", "tools", "make_xls_book"))
    args = options.parse_args()
    programs = {"xlrd": None}
    if shutil.which("ssconvert"):
        programs["gnumeric"] = by_gnumeric
    if shutil.which("soffice"):
        programs["LibreOffice"] = by_libreoffice
    failed = 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        for kind in KINDS:
            path = os.path.join(folder, kind + ".xls")
            expected = expected_cells(run(args.maker, kind, path))
            faults = ["linter: " + line for line in subprocess.run(
                [sys.executable, os.path.join(ROOT, "tools", "xlslint.py"), path], capture_output=True,
                text=True).stdout.splitlines()]
            for name, convert in programs.items():
                try:
                    found = xlrd_cells(convert(path, folder) if convert else path)
                except (RuntimeError, OSError) as e:
                    faults.append("%s: %s" % (name, e))
                    continue
                faults += ["%s: %s" % (name, fault) for fault in value_faults(expected, found)]
                if kind == "formats":
                    faults += ["%s: %s" % (name, fault) for fault in format_faults(expected, found, convert)]
            for fault in faults:
                print("%s: %s" % (kind, fault))
            failed += bool(faults)
    print("crosscheck xls_new: %d workbooks by %s, %d with differences"
          % (len(KINDS), ", ".join(programs), failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
