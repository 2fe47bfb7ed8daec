#!/usr/bin/env python3
"""xlsxobjects.py FILE: the lines of `quillet dump --no-cells --objects` for an Open XML package.

Written apart from the engine, from the published format, so that the two do not share a mistake: pictures of the book,
and for each worksheet its pictures, comments, controls and other shapes, with their places in cells and pixels.
"""
import hashlib
import json
import math
import os
import re
import struct
import sys
import xml.etree.ElementTree as ET
import zipfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xlsxcompare import Package, local  # noqa: E402

ROWS, COLUMNS, EMU = 1048576, 16384, 9525
SHAPES = ("sp", "grpSp", "graphicFrame", "cxnSp", "pic", "contentPart")
KINDS = {"png": 0, "jpeg": 1, "gif": 2, "wmf": 3, "bmp": 4, "emf": 5, "tiff": 7}
SIGNATURES = (("png", b"\x89PNG"), ("jpeg", b"\xff\xd8\xff"), ("wmf", b"\xd7\xcd\xc6\x9a"), ("bmp", b"BM"),
              ("gif", b"GIF"), ("tiff", b"II*\0"), ("tiff", b"MM*\0"), ("bare", b"\1\0\x09\0"), ("emf", b"\1\0"))
UNITS = {"mm": 36000, "cm": 360000, "in": 914400, "pt": 12700, "pc": 152400, "pi": 152400}


def kids(node, *names):
    return [c for c in node if local(c.tag) in names] if node is not None else []


def kid(node, *names):
    return next(iter(kids(node, *names)), None)


def attribute(node, name):
    """Of a relationship's namespace."""
    return next((v for k, v in node.attrib.items() if local(k) == name and "relationships" in k), None)


def branch(node):
    """The content of an AlternateContent that counts: the first choice, else the fallback; None for other elements."""
    if local(node.tag) != "AlternateContent":
        return None
    chosen = kid(node, "Choice")
    return chosen if chosen is not None else kid(node, "Fallback")


def resolved(node):
    """Children, alternatives resolved."""
    for child in node:
        inner = branch(child)
        if local(child.tag) != "AlternateContent":
            yield child
        elif inner is not None:
            yield from resolved(inner)


def has_tiff_size(data):
    order = "<" if data[:2] == b"II" else ">"
    try:
        at, = struct.unpack_from(order + "I", data, 4)
        count, = struct.unpack_from(order + "H", data, at)
        tags = {struct.unpack_from(order + "H", data, at + 2 + 12 * i)[0] for i in range(count)}
    except struct.error:
        return False
    return {256, 257} <= tags


def image(number, data):
    found = next((f for f, start in SIGNATURES if data.startswith(start)), "other") if len(data) >= 5 else "other"
    kind = KINDS.get({"bare": "emf"}.get(found, found), 255)
    if found == "tiff" and not has_tiff_size(data):
        kind = 255
    name = {"bare": "wmf"}.get(found, found)
    if found == "other" and len(data) >= 5 and data[0] in (12, 40, 64, 108, 124):
        name = "dib"
    return {"image": {"id": number, "kind": kind, "format": name, "size": len(data),
                      "md5": hashlib.md5(data).hexdigest()}}


class Pixels:
    """Sizes of a worksheet's columns and rows."""

    def __init__(self, sheet):
        form = kid(sheet, "sheetFormatPr")
        form = form.attrib if form is not None else {}
        self.column_default = (self.stored(float(form["defaultColWidth"])) if "defaultColWidth" in form
                               else 8 + 7 * int(form.get("baseColWidth", 8)))
        self.row_default = int(96 * float(form["defaultRowHeight"]) / 72) if "defaultRowHeight" in form else 20
        self.cols = [(int(c.get("min")) - 1, int(c.get("max")) - 1, self.stored(float(c.get("width"))))
                     for cols in kids(sheet, "cols") for c in kids(cols, "col") if c.get("width")]
        self.rows, at = {}, 0
        for row in kids(kid(sheet, "sheetData"), "row"):
            at = int(row.get("r", at + 1))
            if row.get("ht"):
                self.rows[at - 1] = int(96 * float(row.get("ht")) / 72)

    @staticmethod
    def stored(width):
        return math.floor((256 * width + 18) / 256 * 7)

    def column(self, index):
        return next((size for first, last, size in reversed(self.cols) if first <= index <= last), self.column_default)

    def row(self, index):
        return self.rows.get(index, self.row_default)


def pixels(text):
    """Pixels of a length, in EMU or with a unit."""
    match = re.fullmatch(r"(-?[0-9]+)|(-?[0-9.]+)([a-z]{2})", (text or "").strip())
    if not match:
        return 0
    emu = int(match[1]) if match[1] else round(float(match[2]) * UNITS.get(match[3], 0))
    return int(math.copysign((abs(emu) + EMU // 2) // EMU, emu))


def walk(cell, offset, last, size):
    while cell < last and offset > 0 and offset >= size(cell):
        offset -= size(cell)
        cell += 1
    return cell, offset


def marker(node):
    number = lambda name, past: min(max(int(kid(node, name).text), 0), past - 1)  # noqa: E731
    return ((number("col", COLUMNS), pixels(kid(node, "colOff").text)),
            (number("row", ROWS), pixels(kid(node, "rowOff").text)))


def span(first, last, size):
    return max(0, last[1] - first[1] + sum(size(c) for c in range(first[0], last[0])))


def place(anchor, sizes):
    """Left, top, right, bottom as (cell, offset), width, height."""
    start, end, extent = kid(anchor, "from"), kid(anchor, "to"), kid(anchor, "ext")
    if local(anchor.tag) == "twoCellAnchor":
        (left, top), (right, bottom) = marker(start), marker(end)
        return left, top, right, bottom, span(left, right, sizes.column), span(top, bottom, sizes.row)
    width, height = max(0, pixels(extent.get("cx"))), max(0, pixels(extent.get("cy")))
    if start is not None:
        left, top = marker(start)
    else:
        corner = kid(anchor, "pos")
        left = walk(0, pixels(corner.get("x")), COLUMNS - 1, sizes.column)
        top = walk(0, pixels(corner.get("y")), ROWS - 1, sizes.row)
    return (left, top, walk(left[0], left[1] + width, COLUMNS - 1, sizes.column),
            walk(top[0], top[1] + height, ROWS - 1, sizes.row), width, height)


class Reader:
    def __init__(self, path):
        self.package = Package(path)
        self.images = [p for p in self.package.parts
                       if self.package.type_of(p).startswith("image") and len(self.package.type_of(p)) > 5]

    def root(self, path):
        return ET.fromstring(self.package.parts[path])

    def target(self, rows, rid):
        """Path, raw target and whether it is external."""
        return next(((r[2], r[3]) for r in rows if r[0] == rid), (None, False))

    def lines(self):
        for number, path in enumerate(self.images):
            yield image(number, self.package.parts[path])
        main = next(r[2] for r in self.package.relationships_of("/") if r[1].endswith("/officeDocument"))
        rows = self.package.relationships_of(main)
        for index, element in enumerate(kids(kid(self.root(main), "sheets"), "sheet")):
            path, _ = self.target(rows, attribute(element, "id"))
            sheet = {"index": index, "name": element.get("name")}
            kind = self.package.type_of(path) if path in self.package.parts else ""
            if kind.endswith("chartsheet+xml"):
                sheet["kind"] = "chart"
            elif not (kind.endswith("worksheet+xml") or kind == "application/xml"):
                sheet["kind"] = "other"
            yield {"sheet": sheet}
            if "kind" not in sheet:
                yield from self.objects(path)

    def objects(self, path):
        root, rows = self.root(path), self.package.relationships_of(path)
        sizes = Pixels(root)
        drawing = kid(root, "drawing")
        part = self.target(rows, attribute(drawing, "id"))[0] if drawing is not None else None
        anchors = self.root(part) if part in self.package.parts else []
        yield from self.pictures(anchors, part, sizes)
        yield from self.comments(rows)
        yield from self.controls(root, rows)
        yield from self.shapes(anchors, sizes)

    def pictures(self, anchors, part, sizes):
        rows = self.package.relationships_of(part) if part else []
        found = [a for a in anchors if local(a.tag).endswith("Anchor") and kid(a, "pic") is not None]
        for index, anchor in enumerate(found):
            left, top, right, bottom, width, height = place(anchor, sizes)
            blip = kid(kid(kid(anchor, "pic"), "blipFill"), "blip")
            number, link = -1, None
            if blip is not None and attribute(blip, "embed") is not None:
                target = self.target(rows, attribute(blip, "embed"))[0]
                number = self.images.index(target) if target in self.images else -1
            if blip is not None and attribute(blip, "link") is not None:
                link = self.target(rows, attribute(blip, "link"))[0]
            yield {"picture": {"index": index, "id": number, "row": top[0], "col": left[0], "rowBottom": bottom[0],
                               "colRight": right[0], "x": left[1], "y": top[1], "width": width, "height": height,
                               "link": link}}

    def comments(self, rows):
        part = next((r[2] for r in rows if r[1].endswith("/relationships/comments")), None)
        if part not in self.package.parts:
            return
        root, found = self.root(part), {}
        authors = [a.text or "" for a in kids(kid(root, "authors"), "author")]
        for comment in kids(kid(root, "commentList"), "comment"):
            match = re.fullmatch(r"\$?([A-Z]+)\$?([0-9]+)", comment.get("ref", ""))
            if not match:
                continue
            col = 0
            for letter in match[1]:
                col = col * 26 + ord(letter) - 64
            text = kid(comment, "text")
            parts = [t.text or "" for t in kids(text, "t")]
            parts += [t.text or "" for r in kids(text, "r") for t in kids(r, "t")]
            author = int(comment.get("authorId", 0))
            found.setdefault((int(match[2]) - 1, col - 1),
                             (authors[author] if author < len(authors) else None, "".join(parts)))
        for (row, col), (author, text) in sorted(found.items()):
            yield {"comment": {"r": row, "c": col, "author": author, "text": text}}

    def controls(self, root, rows):
        listed = [c for e in resolved(root) if local(e.tag) == "controls" for c in resolved(e)
                  if local(c.tag) == "control"]
        for index, control in enumerate(listed):
            part = self.target(rows, attribute(control, "id"))[0]
            line = {"index": index, "type": None, "checked": None, "link": None, "range": None}
            if part in self.package.parts and self.package.type_of(part).endswith("controlproperties+xml"):
                given = self.root(part).attrib
                line.update(type=given.get("objectType"), checked=given.get("checked", "Unchecked"),
                            link=given.get("fmlaLink"), range=given.get("fmlaRange"))
            yield {"control": line}

    def shapes(self, anchors, sizes):
        for anchor in anchors:
            inner = branch(anchor)
            for one in ([anchor] if inner is None else list(inner)):
                shape = next((s for s in resolved(one) if local(s.tag) in SHAPES), None)
                direct = inner is None and kid(one, "pic") is not None
                ours = inner is not None and shape is not None and any(local(e.tag) == "compatExt" for e in shape.iter())
                if shape is None or direct or ours or local(anchor.tag) not in (
                        "twoCellAnchor", "oneCellAnchor", "absoluteAnchor", "AlternateContent"):
                    continue
                left, top, right, bottom, _, _ = place(one, sizes)
                yield {"shape": {"type": local(shape.tag), "row": top[0], "col": left[0], "rowBottom": bottom[0],
                                 "colRight": right[0]}}


def main():
    try:
        for line in Reader(sys.argv[1]).lines():
            print(json.dumps(line, ensure_ascii=False, separators=(",", ":")))
    except (KeyError, ValueError, StopIteration, ET.ParseError, zipfile.BadZipFile, OSError) as e:
        print("%s: %s" % (sys.argv[1], repr(e)), file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
