#!/usr/bin/env python3
"""xls_features.py [--libreoffice]: what other programs see of every setting of a new binary workbook of ours.

tools/sheet_features writes it. xlrd reads it; gnumeric, and with --libreoffice LibreOffice too, convert it to .xlsx, which
openpyxl reads. What they see is compared with the lines of `quillet dump --features`. DIFFERENT lists what a program is
known to show in another way, and why.
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.path.join(ROOT, "build", "release")
SECONDS = 300

XLRD = """
import json, sys, xlrd
for sheet in xlrd.open_workbook(sys.argv[1], formatting_info=True).sheets():
    frozen = sheet.panes_are_frozen
    print(json.dumps({
        "state": sheet.visibility, "gridlines": bool(sheet.show_grid_lines),
        "rightToLeft": bool(sheet.columns_from_right_to_left), "zoom": sheet.scl_mag_factor or 100,
        "split": [sheet.horz_split_pos, sheet.vert_split_pos] if frozen else None,
        "rowBreaks": [b[0] for b in sheet.horizontal_page_breaks],
        "columnBreaks": [b[0] for b in sheet.vertical_page_breaks],
        "merges": [[a, c, b - 1, d - 1] for a, b, c, d in sheet.merged_cells],
        "links": [[h.frowx, h.fcolx, h.lrowx, h.lcolx,
                   "#".join(x.decode("latin-1") if isinstance(x, bytes) else x
                            for x in (h.url_or_path, h.textmark) if x)] for h in sheet.hyperlink_list],
        "rowLevels": {r: i.outline_level for r, i in sheet.rowinfo_map.items() if i.outline_level},
        "columnLevels": {c: i.outline_level for c, i in sheet.colinfo_map.items() if i.outline_level},
    }))
"""
OPENPYXL = """
import json, sys, openpyxl
from openpyxl.utils import range_boundaries
states = {"visible": 0, "hidden": 1, "veryHidden": 2}
def area(text):
    if not text:
        return None
    text = (text[0] if isinstance(text, list) else text).split("!")[-1].replace("$", "")
    c, r, d, s = range_boundaries(text)
    return [r - 1, c - 1, s - 1, d - 1]
def lines(text, letters):
    if not text:
        return None
    parts = text.split("!")[-1].replace("$", "").split(":")
    return [openpyxl.utils.column_index_from_string(p) - 1 for p in parts] if letters else [int(p) - 1 for p in parts]
def part(p):
    return "".join("&" + k + t for k, t in (("L", p.left.text), ("C", p.center.text), ("R", p.right.text)) if t)
for ws in openpyxl.load_workbook(sys.argv[1]):
    view, setup, margins = ws.sheet_view, ws.page_setup, ws.page_margins
    pane = view.pane if view.pane is not None and view.pane.state != "split" else None
    fit = ws.sheet_properties.pageSetUpPr is not None and ws.sheet_properties.pageSetUpPr.fitToPage
    print(json.dumps({
        "state": states[ws.sheet_state], "gridlines": view.showGridLines is not False and view.showGridLines != 0,
        "rightToLeft": bool(view.rightToLeft), "zoom": view.zoomScale or 100,
        "split": [int(pane.ySplit or 0), int(pane.xSplit or 0)] if pane else None,
        "rowBreaks": sorted(b.id for b in ws.row_breaks.brk), "columnBreaks": sorted(b.id for b in ws.col_breaks.brk),
        "merges": sorted(area(str(m)) for m in ws.merged_cells.ranges),
        "landscape": setup.orientation == "landscape", "paper": setup.paperSize and int(setup.paperSize),
        "printZoom": int(setup.scale or 100) if not fit else None,
        "fit": [int(setup.fitToWidth or 1), int(setup.fitToHeight or 1)] if fit else None,
        "margins": [round(getattr(margins, m), 3) for m in ("left", "right", "top", "bottom", "header", "footer")],
        "header": part(ws.oddHeader), "footer": part(ws.oddFooter),
        "centered": [bool(ws.print_options.horizontalCentered), bool(ws.print_options.verticalCentered)],
        "printsGridlines": bool(ws.print_options.gridLines), "printsHeadings": bool(ws.print_options.headings),
        "printArea": area(ws.print_area), "repeatRows": lines(ws.print_title_rows, False),
        "repeatColumns": lines(ws.print_title_cols, True), "protected": bool(ws.protection.sheet),
        "links": sorted(area(c.hyperlink.ref) + [(c.hyperlink.target or "") + ("#" + c.hyperlink.location
                        if c.hyperlink.location else "")] for row in ws.iter_rows() for c in row if c.hyperlink),
        "rowLevels": {r - 1: int(d.outlineLevel) for r, d in ws.row_dimensions.items() if d.outlineLevel},
    }))
"""
# (program, key): why its answer is another. None as program: any of them.
DIFFERENT = {
    (None, "paper"): "0, the printer's own paper, is shown as 9",
    ("gnumeric", "rowBreaks"): "its .xlsx has the two lists of breaks exchanged",
    ("gnumeric", "columnBreaks"): "its .xlsx has the two lists of breaks exchanged",
    ("gnumeric", "header"): "a sheet without one gets the sheet's name",
    ("gnumeric", "footer"): "a sheet without one gets the page's number",
    ("gnumeric", "state"): "its .xlsx shows every sheet",
    ("LibreOffice", "state"): "it knows one kind of hidden sheets",
    **{("gnumeric", key): "not in its .xlsx" for key in
       ("centered", "printsGridlines", "printsHeadings", "repeatRows", "repeatColumns")},
}


def run(*command):
    done = subprocess.run(command, capture_output=True, timeout=SECONDS)
    if done.returncode:
        raise RuntimeError("%s: %s" % (command[0], done.stderr.decode("utf-8", "replace").strip()[-300:]))
    return done.stdout


def seen(script, path):
    return [json.loads(line) for line in run("/usr/bin/python3", "-c", script, path).splitlines()]


def ours(path):
    """Name, and the line of features with what the others call by other words."""
    sheets, name = [], None
    for line in run(os.path.join(BUILD, "cli", "quillet"), "dump", "--no-cells", "--features", path).splitlines():
        read = json.loads(line)
        if "sheet" in read:
            name = read["sheet"]["name"]
        elif "features" in read:
            of = read["features"]
            of["links"] = sorted(link["area"] + [link["target"]] for link in of["links"])
            of["merges"] = sorted(of["merges"])
            of["rowLevels"] = {"2": 1, "3": 1, "4": 2, "5": 2, "6": 2, "7": 1, "8": 1} if name == "Groups" else {}
            of["columnLevels"] = {"1": 1, "2": 2, "3": 2, "4": 1} if name == "Groups" else {}
            if of["fit"]:
                of["printZoom"] = None
            sheets.append((name, of))
    return sheets


def bare(target):
    """A link without what a program adds to a path, and with one form of a place."""
    target = target.replace("\\", "/").lstrip("#").replace("'", "")
    return target.rsplit("/", 1)[-1] if "://" not in target else target


def same(key, mine, other):
    if key == "links":
        return sorted(m[:4] + [bare(m[4])] for m in mine) == sorted(o[:4] + [bare(o[4])] for o in other)
    if key == "margins":
        return all(abs(a - b) < 0.02 for a, b in zip(mine, other))
    if key in ("header", "footer"):
        return (mine or "").replace(" ", "") == (other or "").replace(" ", "")
    return (sorted(mine) == sorted(other)) if key in ("merges", "rowBreaks", "columnBreaks") else mine == other


def compare(program, mine, theirs):
    if len(mine) != len(theirs):
        yield "%d sheets, %s sees %d" % (len(mine), program, len(theirs))
    for (name, of), other in zip(mine, theirs):
        for key, value in other.items():
            if not same(key, of.get(key), value) and (program, key) not in DIFFERENT and (None, key) not in DIFFERENT:
                yield "%s: %s is %s, %s sees %s" % (name, key, of.get(key), program, value)


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    faults = []
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        path = os.path.join(folder, "features.xls")
        run(os.path.join(BUILD, "tools", "sheet_features"), "make", path)
        lint = subprocess.run([sys.executable, os.path.join(ROOT, "tools", "xlslint.py"), path], capture_output=True,
                              text=True)
        faults += ["linter: " + line for line in lint.stdout.splitlines()]
        mine = ours(path)
        faults += compare("xlrd", mine, seen(XLRD, path))
        converted = os.path.join(folder, "gnumeric.xlsx")
        run("ssconvert", "-T", "Gnumeric_Excel:xlsx", path, converted)
        faults += compare("gnumeric", mine, seen(OPENPYXL, converted))
        if args.libreoffice:
            run("soffice", "-env:UserInstallation=file://%s/profile" % folder, "--headless", "--convert-to",
                "xlsx:Calc MS Excel 2007 XML", "--outdir", folder, path)
            faults += compare("LibreOffice", mine, seen(OPENPYXL, os.path.join(folder, "features.xlsx")))
    for fault in faults:
        print(fault)
    print("crosscheck xls_features: %d differences" % len(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
