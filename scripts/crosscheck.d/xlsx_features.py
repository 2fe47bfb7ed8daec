#!/usr/bin/env python3
"""xlsx_features.py [--build DIR] [--libreoffice]: what other programs see of the sheet features that we write.

A new workbook gets every feature of layout, view and printing through build/DIR/tools/apply_operations; openpyxl,
ssconvert (its own XML) and on request LibreOffice (converted to .xlsx, then read by openpyxl) have to tell the same.
LibreOffice drops views and tab colours, ssconvert prints neither grid lines nor headings: that is not asked of them.
"""
import sys

sys.dont_write_bytecode = True
import written_sheet  # noqa: E402

OPERATIONS = [
    ("writeString", 0, 0, "head", None, 2), ("writeNumber", 5, 4, 1.5, None), ("writeNumber", 30, 9, 2, None),
    ("setColumn", 1, 2, 20, None, False), ("setColumn", 4, 4, 5, None, True), ("setRow", 2, 33, None, False),
    ("setRowHidden", 3, True), ("groupRowRange", 6, 8, True), ("groupColumnRange", 6, 7, False),
    ("addMerge", 10, 12, 1, 3), ("addMerge", 14, 14, 1, 2), ("insertRows", 13, 13, True), ("removeColumns", 8, 8, True),
    ("setRowBreak", 20, True), ("setColumnBreak", 5, True), ("splitAt", 1, 2), ("setZoomPercent", 85),
    ("setShowsGridlines", False), ("setTabRgbColor", 255, 128, 0), ("setPrintsGridlines", True),
    ("setPrintsRowColHeadings", True), ("setCentersHorizontally", True), ("setLandscape", True), ("setPaperCode", 9),
    ("setPrintFitPages", 2, 3), ("setHeaderText", "&LLeft&RRight", 0.4), ("setFooterText", "&CPage &P", 0.2),
    ("setMarginLeft", 1.25), ("setMarginTop", 1.5),
]
READER = """
import json, sys, openpyxl
sheet = openpyxl.load_workbook(sys.argv[1]).worksheets[0]
rows, columns = sheet.row_dimensions, sheet.column_dimensions
view, setup = sheet.sheet_view, sheet.page_setup
merges = sorted(str(m) for m in sheet.merged_cells.ranges)
print(json.dumps({
    "merges": merges, "height": rows[3].height, "hidden": [n for n in range(1, 15) if rows[n].hidden],
    "levels": [rows[n].outlineLevel or 0 for n in (7, 8, 9)], "collapsed": bool(rows[10].collapsed),
    "widths": [round(columns[c].width, 1) for c in "BE"], "hidden column": columns["E"].hidden,
    "column level": columns["G"].outlineLevel, "rowBreaks": [b.id for b in sheet.row_breaks.brk],
    "columnBreaks": [b.id for b in sheet.col_breaks.brk], "panes": sheet.freeze_panes, "zoom": view.zoomScale,
    "grid": view.showGridLines, "tab": sheet.sheet_properties.tabColor and sheet.sheet_properties.tabColor.rgb,
    "print": [bool(sheet.print_options.gridLines), bool(sheet.print_options.headings),
              bool(sheet.print_options.horizontalCentered), bool(sheet.print_options.verticalCentered)],
    "landscape": setup.orientation == "landscape", "paper": int(setup.paperSize), "fit": bool(sheet.sheet_properties.pageSetUpPr.fitToPage),
    "pages": [setup.fitToWidth, setup.fitToHeight],
    "header": [sheet.oddHeader.left.text, sheet.oddHeader.right.text], "footer": sheet.oddFooter.center.text,
    "margins": [round(m, 2) for m in (sheet.page_margins.left, sheet.page_margins.top, sheet.page_margins.header)]}))
"""
EXPECTED = {
    "merges": ["B11:D13", "B16:C16"], "height": 33.0, "hidden": [4, 7, 8, 9], "levels": [1, 1, 1], "collapsed": True,
    "widths": [20.7, 5.7], "hidden column": True, "column level": 1, "rowBreaks": [20], "columnBreaks": [5],
    "panes": "C2", "zoom": 85, "grid": False, "tab": "FFFF8000", "print": [True, True, True, False],
    "landscape": True, "paper": 9, "fit": True, "pages": [2, 3], "header": ["Left", "Right"], "footer": "Page &P",
    "margins": [1.25, 1.5, 0.4],
}
# LibreOffice without a window keeps no view and no tab colour, counts widths anew, and moves the header's margin.
LIBREOFFICE = set(EXPECTED) - {"panes", "zoom", "grid", "tab", "widths", "header", "footer", "margins", "collapsed"}
GNUMERIC = [
    "<gnm:Merge>B11:D13<", "<gnm:Merge>B16:C16<", "<gnm:Zoom>0.85<", 'HideGrid="1"', 'TabColor="FFFF:8080:0"',
    'FrozenTopLeft="A1" UnfrozenTopLeft="C2"', "<gnm:orientation>landscape<", '<gnm:break pos="20" type="manual"/>',
    '<gnm:break pos="5" type="manual"/>', '<gnm:left Points="90"', "<gnm:paper>iso_a4<",
]


if __name__ == "__main__":
    sys.exit(written_sheet.check("sheet features", OPERATIONS, READER, EXPECTED, LIBREOFFICE, GNUMERIC))
