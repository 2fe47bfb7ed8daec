#!/usr/bin/env python3
"""xlsx_rules.py [--build DIR] [--libreoffice]: what other programs see of names, links, rules, protection, a filter and
its hidden rows that we write, as xlsx_features.py does for layout and printing.

openpyxl must see all of it. ssconvert knows no print titles of rows and columns at once. LibreOffice writes rules and
links in its own order and form, and gives no hidden names: of them it is asked how many, and for the targets.
"""
import sys

sys.dont_write_bytecode = True
import written_sheet  # noqa: E402

TABLE = [("writeString", row, 0, "odd" if row % 2 else "even", None, 2) for row in range(1, 9)]
TABLE += [("writeNumber", row, 1, row, None) for row in range(1, 9)]
TABLE += [("writeString", row, 0, "text", None, 2) for row in range(10, 15)]
OPERATIONS = [
    ("setSheetName", "My sheet"), ("writeString", 0, 0, "kind", None, 2), ("writeString", 0, 1, "count", None, 2), *TABLE,
    ("addHyperlink", "https://example.org/a?b=1&c=2", 10, 10, 0, 0), ("addHyperlink", "'My sheet'!B2", 11, 12, 0, 1),
    ("addHyperlink", "mailto:someone@example.org", 13, 13, 0, 0),
    ("addHyperlink", "https://example.org/gone", 14, 14, 0, 0), ("removeHyperlinkAt", 3),
    ("addValidationRuleNumeric", 1, 0, 1, 8, 1, 1, 1, 99, True, False, True, True, "Count", "1 to 99", "No", "Not that", 1),
    ("addValidationRule", 3, 0, 1, 8, 0, 0, '"odd,even"', None, False, False, True, True, None, None, None, None, 0),
    ("addValidationRule", 7, 0, 9, 9, 3, 3, "=SUM($B$2:$B$9)<100", None, True, False, True, True, None, None, None, None, 2),
    ("setNamedRangeByName", "Counts", 1, 8, 1, 1, -1, False), ("setNamedRangeByName", "Kinds", 1, 8, 0, 0, 0, False),
    ("setNamedRangeByName", "Secret", 3, 3, 3, 3, -1, True), ("setNamedRangeByName", "Gone", 3, 3, 3, 3, -1, False),
    ("removeNamedRange", "Gone", -1),
    ("setPrintAreaRange", 0, 20, 0, 5), ("setRepeatRows", 0, 1), ("setRepeatColumns", 0, 0),
    ("setProtected", True, "secret", -1),
    ("setFilterRange", 0, 8, 0, 1), ("addValueFilter", 0, "odd"), ("setCustomFilter", 1, 1, "2", 3, "8", True),
    ("setSort", 1, True), ("applyFilter",),
]
READER = """
import json, sys, openpyxl
book = openpyxl.load_workbook(sys.argv[1])
sheet = book.worksheets[0]
rules = [r for r in sheet.data_validations.dataValidation]
links = {}
for row in sheet.iter_rows():
    for cell in row:
        if cell.hyperlink: links[cell.coordinate] = cell.hyperlink.target or cell.hyperlink.location
older = getattr(book.defined_names, "definedName", None)  # before 3.1 a list of all
here = [d for d in older if d.localSheetId == 0] if older is not None else list(sheet.defined_names.values())
everywhere = [d for d in older if d.localSheetId is None] if older is not None else list(book.defined_names.values())
print(json.dumps({
    "links": sorted(links.items()), "targets": sorted({(t or "").lstrip("#").replace("$", "") for t in links.values()}),
    "rules": sorted([r.type, r.operator or "between", str(r.sqref), r.formula1, r.formula2, bool(r.allow_blank),
                     r.errorStyle or "stop", r.promptTitle, r.prompt, r.errorTitle, r.error] for r in rules),
    "rule places": sorted(str(r.sqref) for r in rules), "list": [r.formula1 for r in rules if r.type == "list"],
    "names": {d.name: d.attr_text for d in everywhere}, "hidden names": [d.name for d in everywhere if d.hidden],
    "local": {d.name: d.attr_text for d in here if not d.name.startswith("_")},
    "area": str(sheet.print_area[0] if isinstance(sheet.print_area, list) else sheet.print_area).split("!")[-1], "rows": sheet.print_title_rows, "columns": sheet.print_title_cols,
    "protected": [sheet.protection.sheet, sheet.protection.password], "is protected": bool(sheet.protection.sheet),
    "filter": sheet.auto_filter.ref, "hidden rows": [r for r in range(1, 12) if sheet.row_dimensions[r].hidden],
    "cells": [[sheet.cell(r, 1).value, sheet.cell(r, 2).value] for r in range(1, 10)],
    "judged": [c.colId for c in sheet.auto_filter.filterColumn]}))
"""
EXPECTED = {
    "links": [["A11", "https://example.org/a?b=1&c=2"], ["A12", "'My sheet'!B2"], ["A13", "'My sheet'!B2"],
              ["A14", "mailto:someone@example.org"], ["B12", "'My sheet'!B2"], ["B13", "'My sheet'!B2"]],
    "targets": ["'My sheet'!B2", "https://example.org/a?b=1&c=2", "mailto:someone@example.org"],
    "rules": [
        ["custom", "between", "D10", "SUM($B$2:$B$9)<100", None, True, "information", None, None, None, None],
        ["list", "between", "A2:A9", '"odd,even"', None, False, "stop", None, None, None, None],
        ["whole", "between", "B2:B9", "1", "99", True, "warning", "Count", "1 to 99", "No", "Not that"]],
    "rule places": ["A2:A9", "B2:B9", "D10"], "list": ['"odd,even"'],
    "names": {"Counts": "'My sheet'!$B$2:$B$9", "Secret": "'My sheet'!$D$4"}, "hidden names": ["Secret"],
    "local": {"Kinds": "'My sheet'!$A$2:$A$9"}, "area": "$A$1:$F$21", "rows": "$1:$2", "columns": "$A:$A",
    "protected": [True, "DAA7"], "is protected": True, "filter": "A1:B9", "hidden rows": [2, 4, 6, 8, 9],
    "cells": [["kind", "count"], *[["even" if n % 2 == 0 else "odd", n] for n in range(8, 0, -1)]], "judged": [0, 1],
}
LIBREOFFICE = {"targets", "rule places", "list", "local", "area", "rows", "columns", "is protected", "filter",
               "hidden rows", "cells", "judged"}
GNUMERIC = [
    "<gnm:name>Counts</gnm:name>\n      <gnm:value>'My sheet'!$B$2:$B$9<",
    "<gnm:name>Kinds</gnm:name>\n          <gnm:value>'My sheet'!$A$2:$A$9<", "<gnm:value>'My sheet'!$A$1:$F$21<",
    'Protected="1"', 'target="https://example.org/a?b=1&amp;c=2"', 'target="mailto:someone@example.org"', "GnmHLinkCurWB",
    'Type="GNM_VALIDATION_TYPE_AS_INT" Operator="GNM_VALIDATION_OP_BETWEEN"', "<gnm:Expression1>99<",
    'Type="GNM_VALIDATION_TYPE_IN_LIST"', "<gnm:Expression0>&quot;odd,even&quot;<", 'Type="GNM_VALIDATION_TYPE_CUSTOM"',
    '<gnm:Filter Area="A1:B9">',
]

if __name__ == "__main__":
    sys.exit(written_sheet.check("names, links, rules", OPERATIONS, READER, EXPECTED, LIBREOFFICE, GNUMERIC))
