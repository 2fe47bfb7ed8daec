#!/usr/bin/env python3
"""xlsxlint.py [--schemas DIR] [--loaded SOURCE] FILE: whether a saved Open XML package holds together.

Bound parts are checked against the published schemas in DIR (folders `transitional`, `strict` and `opc`) with xmllint,
and what schemas cannot say is checked here: relationships lead to parts, content types agree with parts, ids are
unique, counts are true, rows and cells stand in order, indices of styles and strings are in range, no chain of
calculation is left, the checksums of the archive are right. What is wrong with SOURCE in the same way already is not
reported. Prints a line for each finding; exit status 1 when there is one.
"""
import argparse
import collections
import os
import posixpath
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
import zipfile
import zlib

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import drawinglint  # noqa: E402
import sheetlint  # noqa: E402
import xlsxcompare  # noqa: E402
from xlsxcompare import child, local  # noqa: E402

XML = "http://www.w3.org/XML/1998/namespace"
MC = "http://schemas.openxmlformats.org/markup-compatibility/2006"
SCHEMAS = {
    "http://schemas.openxmlformats.org/spreadsheetml/2006/main": "transitional/sml.xsd",
    "http://purl.oclc.org/ooxml/spreadsheetml/main": "strict/sml.xsd",
    "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing": "transitional/dml-spreadsheetDrawing.xsd",
    "http://purl.oclc.org/ooxml/drawingml/spreadsheetDrawing": "strict/dml-spreadsheetDrawing.xsd",
    "http://schemas.openxmlformats.org/drawingml/2006/main": "transitional/dml-main.xsd",
    "http://purl.oclc.org/ooxml/drawingml/main": "strict/dml-main.xsd",
    "http://schemas.microsoft.com/office/spreadsheetml/2009/9/main": "extensions/ctrlProps.xsd",
    "http://schemas.openxmlformats.org/package/2006/content-types": "opc/opc-contentTypes.xsd",
    "http://schemas.openxmlformats.org/package/2006/relationships": "opc/opc-relationships.xsd",
}
# What the root of a part is called by the end of its content type.
ROOTS = {
    "sheet.main+xml": "workbook", "template.main+xml": "workbook", "macroEnabled.main+xml": "workbook",
    "spreadsheetml.worksheet+xml": "worksheet", "spreadsheetml.chartsheet+xml": "chartsheet",
    "spreadsheetml.styles+xml": "styleSheet", "spreadsheetml.sharedStrings+xml": "sst",
    "spreadsheetml.table+xml": "table", "spreadsheetml.comments+xml": "comments",
    "officedocument.drawing+xml": "wsDr", "officedocument.theme+xml": "theme",
    "package.relationships+xml": "Relationships",
}
# The content type of what a relationship of the workbook leads to, by the end of the relationship's type.
TARGETS = {
    "/worksheet": ("spreadsheetml.worksheet+xml", "application/xml"), "/chartsheet": ("spreadsheetml.chartsheet+xml",),
    "/styles": ("spreadsheetml.styles+xml",), "/sharedStrings": ("spreadsheetml.sharedStrings+xml",),
    "/theme": ("officedocument.theme+xml",), "/table": ("spreadsheetml.table+xml",),
    "/drawing": ("officedocument.drawing+xml",), "/comments": ("spreadsheetml.comments+xml",),
}
ADDRESS = re.compile(r"([A-Z]{1,3})([1-9][0-9]*)$")


def column(letters):
    number = 0
    for letter in letters:
        number = number * 26 + ord(letter) - 64
    return number


def number(text, default=0):
    try:
        return int(text)
    except (TypeError, ValueError):
        return default


def repeated(values):
    return sorted(v for v, n in collections.Counter(values).items() if n > 1)


def schema_tree(data):
    """The part as the schemas see it: only what every reader must understand. Elements and attributes of namespaces
    that are ignorable go, an AlternateContent gives place to its fallback."""
    root = xlsxcompare.compare_parts.parse(data)
    ignorable = set(root.attrib.get("{%s}Ignorable" % MC, "").split())

    def is_ignored(name):
        space = name[1:].partition("}")[0] if name.startswith("{") else ""
        return space in (MC, XML) or space in ignorable  # the schemas forget xml:space, which all readers know

    def clean(element):
        for name in [n for n in element.attrib if is_ignored(n)]:
            del element.attrib[name]
        kept = []
        for item in list(element):
            if item.tag == "{%s}AlternateContent" % MC:
                fallback = item.find("{%s}Fallback" % MC)
                kept += list(fallback) if fallback is not None else []
            elif not is_ignored(item.tag):
                kept.append(item)
        element[:] = kept
        for item in kept:
            clean(item)

    clean(root)
    return root


def schema_findings(package, paths, schemas):
    """Messages of xmllint, without line numbers."""
    by_schema = collections.defaultdict(list)
    with tempfile.TemporaryDirectory(prefix="xlsxlint-") as folder:
        for index, path in enumerate(paths):
            try:
                root = schema_tree(package.parts[path])
            except ET.ParseError:
                yield "%s: is no well-formed XML" % path
                continue
            schema = SCHEMAS.get(root.tag[1:].partition("}")[0])
            if schema is None:
                continue
            name = os.path.join(folder, "%d.xml" % index)
            ET.ElementTree(root).write(name, encoding="utf-8", xml_declaration=True)
            by_schema[schema].append((name, path))
        for schema, files in by_schema.items():
            done = subprocess.run(["xmllint", "--noout", "--schema", os.path.join(schemas, schema)] +
                                  [name for name, _ in files], capture_output=True, text=True)
            names = dict(files)
            for line in done.stderr.splitlines():
                found = re.match(r"(.*?\.xml):\d+: element (\S+): (Schemas validity error .*)", line)
                if found:
                    yield "%s: %s" % (names.get(found[1], found[1]),
                                      found[3].replace("Schemas validity error : ", ""))
            if done.returncode not in (0, 3):
                yield "xmllint: status %d: %s" % (done.returncode, done.stderr.splitlines()[-1:])


def archive_findings(path):
    with zipfile.ZipFile(path) as package:
        for info in package.infolist():
            try:
                package.read(info)
            except (zipfile.BadZipFile, zlib.error) as e:
                yield "%s: %s" % (info.filename, e)
        for name in repeated(package.namelist()):
            yield "%s: stands in the archive twice" % name
        if package.namelist()[:1] != ["[Content_Types].xml"]:
            yield "the content types do not come first"


def package_findings(package):
    parts = {p.lower() for p in package.parts}
    for element in package.types:
        name = element.get("PartName")
        if name is not None and ("/" + name.replace("\\", "/").lstrip("/")).lower() not in parts:
            yield "content types: %s is no part" % name
    for path in repeated(t.get("PartName", "").lower() for t in package.types if t.get("PartName")):
        yield "content types: %s stands there twice" % path
    for path in package.parts:
        if path != xlsxcompare.TYPES_NAME and not package.type_of(path):
            yield "%s: has no content type" % path
        if not path.endswith(".rels"):
            continue
        folder, name = posixpath.split(path)
        source = posixpath.dirname(folder).rstrip("/") + "/" + name[:-len(".rels")]
        rows = package.relationships_of(source)
        for id_ in repeated(r[0] for r in rows):
            yield "%s: Id %s twice" % (path, id_)
        for id_, kind, target, external in rows:
            if not external and target.lower().replace("%20", " ") not in parts and target.lower() not in parts:
                yield "%s: %s leads to %s, which is no part" % (path, id_, target)
            ends = next((t for end, t in TARGETS.items() if kind.endswith("relationships" + end)), None)
            if ends and not external and target in package.parts and not package.type_of(target).endswith(ends):
                yield "%s: %s leads to a part of type %s" % (path, id_, package.type_of(target))
            if kind.endswith("relationships/calcChain"):
                yield "%s: a chain of calculation is left" % path
    for path in package.parts:
        kind = package.type_of(path)
        expected = next((root for end, root in ROOTS.items() if kind.endswith(end) and "threaded" not in kind), None)
        if expected and local(ET.fromstring(package.parts[path]).tag) != expected:
            yield "%s: is not of its content type %s" % (path, kind)
    main = package.main_part()
    for path in package.calc_chain() & package.parts.keys():
        yield "%s: is left" % path
    yield from id_findings(package)
    yield from drawinglint.findings(package)
    yield from workbook_findings(package, main)


def id_findings(package):
    """Relationship Ids that a part uses are there."""
    for path in package.parts:
        if not package.is_bound(path) or path.endswith(".rels") or path == xlsxcompare.TYPES_NAME:
            continue
        ids = {r[0] for r in package.relationships_of(path)}
        for element in ET.fromstring(package.parts[path]).iter():
            for name, value in element.attrib.items():
                space = name[1:].partition("}")[0]
                if space.endswith("officeDocument/2006/relationships") or space.endswith("officeDocument/relationships"):
                    if value and value not in ids:
                        yield "%s: %s %s is no relationship" % (path, local(element.tag), value)


def workbook_findings(package, main):
    root = ET.fromstring(package.parts[main])
    settings = child(root, "calcPr")
    if settings is None or settings.get("fullCalcOnLoad") not in ("1", "true"):
        yield "%s: fullCalcOnLoad is not set" % main
    sheets = list(child(root, "sheets") if child(root, "sheets") is not None else [])
    for name in repeated(s.get("name", "").lower() for s in sheets):
        yield "%s: two sheets are named %r" % (main, name)
    for id_ in repeated(s.get("sheetId", "") for s in sheets):
        yield "%s: two sheets have the sheetId %s" % (main, id_)
    for id_ in repeated(v for s in sheets for n, v in s.attrib.items() if n.endswith("relationships}id")):
        yield "%s: two sheets have the relationship %s" % (main, id_)
    names = child(root, "definedNames")
    seen = [(n.get("name", "").lower(), n.get("localSheetId")) for n in (names if names is not None else [])]
    for name in repeated(str(s) for s in seen):
        yield "%s: name %s twice" % (main, name)
    for name, sheet in seen:
        if sheet is not None and number(sheet) >= len(sheets):
            yield "%s: name %s belongs to sheet %s, which is not there" % (main, name, sheet)
    views = child(root, "bookViews")
    view_count = len(views) if views is not None else 0
    for view in views if views is not None else []:
        if number(view.get("activeTab")) >= len(sheets):
            yield "%s: activeTab is beyond the last sheet" % main

    limits = {"views": view_count}
    for path in package.parts:
        kind = package.type_of(path)
        if kind.endswith("spreadsheetml.styles+xml"):
            limits.update(style_limits(ET.fromstring(package.parts[path])))
            yield from style_findings(path, ET.fromstring(package.parts[path]))
        elif kind.endswith("spreadsheetml.sharedStrings+xml"):
            strings = ET.fromstring(package.parts[path])
            limits["strings"] = len([s for s in strings if local(s.tag) == "si"])
            if number(strings.get("uniqueCount"), limits["strings"]) != limits["strings"]:
                yield "%s: uniqueCount is %s, there are %d" % (path, strings.get("uniqueCount"), limits["strings"])
    tables = [ET.fromstring(data) for path, data in package.parts.items()
              if package.type_of(path).endswith("spreadsheetml.table+xml")]
    for name in ("id", "displayName"):
        for value in repeated(t.get(name, "").lower() for t in tables):
            yield "two tables have the %s %s" % (name, value)
    for path in sorted(package.parts):
        if package.type_of(path).endswith("spreadsheetml.worksheet+xml"):
            root = ET.fromstring(package.parts[path])
            yield from sheet_findings(path, root, limits)
            yield from sheetlint.sheet_findings(path, root)


def style_limits(root):
    return {name: len(child(root, name)) if child(root, name) is not None else 0
            for name in ("cellXfs", "fonts", "fills", "borders", "cellStyleXfs", "dxfs")}


def style_findings(path, root):
    limits = style_limits(root)
    for name in list(limits) + ["numFmts", "cellStyles"]:
        element = child(root, name)
        if element is not None and number(element.get("count"), len(element)) != len(element):
            yield "%s: %s has the count %s and %d elements" % (path, name, element.get("count"), len(element))
    formats = child(root, "numFmts")
    for id_ in repeated(f.get("numFmtId") for f in (formats if formats is not None else [])):
        yield "%s: numFmtId %s twice" % (path, id_)
    known = {f.get("numFmtId") for f in (formats if formats is not None else [])}
    for group in ("cellXfs", "cellStyleXfs"):
        for xf in child(root, group) if child(root, group) is not None else []:
            if number(xf.get("numFmtId")) >= 164 and xf.get("numFmtId") not in known:
                yield "%s: %s has numFmtId %s, which is not there" % (path, group, xf.get("numFmtId"))
            for name, limit in (("fontId", "fonts"), ("fillId", "fills"), ("borderId", "borders"),
                                ("xfId", "cellStyleXfs")):
                if xf.get(name) is not None and number(xf.get(name)) >= max(limits[limit], 1):
                    yield "%s: %s has %s %s of %d" % (path, group, name, xf.get(name), limits[limit])


def sheet_findings(path, root, limits):
    data = child(root, "sheetData")
    formats = max(limits.get("cellXfs", 0), 1)
    views = child(root, "sheetViews")
    for view in views if views is not None else []:
        if number(view.get("workbookViewId")) >= limits["views"]:
            yield "%s: workbookViewId %s is not there" % (path, view.get("workbookViewId"))
    for rule in root.iter(root.tag.rpartition("}")[0] + "}cfRule"):
        if number(rule.get("dxfId")) >= max(limits.get("dxfs", 0), 1):
            yield "%s: a rule has the dxfId %s" % (path, rule.get("dxfId"))
    columns = child(root, "cols")
    for element in columns if columns is not None else []:
        if number(element.get("style")) >= formats:
            yield "%s: a column has the style %s" % (path, element.get("style"))
    last_row, masters, wrong = 0, set(), collections.Counter()
    for row in data if data is not None else []:
        at = number(row.get("r"), last_row + 1)
        if at <= last_row:
            yield "%s: row %d comes behind row %d" % (path, at, last_row)
        last_row = at
        if number(row.get("s")) >= formats:
            yield "%s: row %d has the style %s" % (path, at, row.get("s"))
        last_col = 0
        for cell in row:
            if local(cell.tag) != "c":
                continue
            place = ADDRESS.match(cell.get("r", ""))
            col = column(place[1]) if place else last_col + 1
            if cell.get("r") is not None and (not place or int(place[2]) != at or col > 16384 or at > 1048576):
                yield "%s: cell %s in row %d" % (path, cell.get("r"), at)
            if col <= last_col:
                yield "%s: cell %s is out of order" % (path, cell.get("r"))
            last_col = col
            wrong["styles"] += number(cell.get("s")) >= formats
            value, formula = child(cell, "v"), child(cell, "f")
            if cell.get("t") == "s":
                wrong["strings"] += value is None or number(value.text, -1) not in range(limits.get("strings", 0))
            if formula is not None and formula.get("t") == "shared" and formula.get("ref"):
                if formula.get("si") in masters:
                    yield "%s: the shared formula %s has two masters" % (path, formula.get("si"))
                masters.add(formula.get("si"))
    for what, count in wrong.items():
        if count:
            yield "%s: %s of %d cells are out of range" % (path, what, count)


def findings(path, schemas):
    found = list(archive_findings(path))
    if any("Bad CRC" in line for line in found):
        return found
    package = xlsxcompare.Package(path)
    if package.main_part() is None:
        return found + ["no workbook part"]
    found += package_findings(package)
    if schemas:
        found += schema_findings(package, sorted(p for p in package.parts if package.is_bound(p)), schemas)
    return found


def new_findings(path, source, schemas):
    """Lines for what is wrong with the package, but not with the one that it was made from."""
    found = collections.Counter(findings(path, schemas))
    if found and source:
        found -= collections.Counter(findings(source, schemas))
    return [line[:400] for line in sorted(found)]


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--schemas", metavar="DIR")
    options.add_argument("--loaded", metavar="SOURCE")
    options.add_argument("file")
    args = options.parse_args()
    found = new_findings(args.file, args.loaded, args.schemas)
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
