#!/usr/bin/env python3
"""xlsobjects FILE: prints the lines of `quillet dump --no-cells --objects` of a binary workbook, without the engine.

Used by scripts/compare-objects. Exit status 1 when the file cannot be read.
"""
import json
import math
import struct
import sys

from xlsdrawing import OBJECT_NAMES, PIB, DrawingGroup, SheetDrawing, image_format, md5
from xlsfile import CompoundFile, Fault, records, substreams

COLUMNS, DIGIT, PADDING, SCREEN = 256, 7, 8, 96 / 72


def half_up(value):
    return math.floor(value + 0.5)


class Cells:
    """Pixels of columns and rows."""

    def __init__(self, flat):
        self.columns, self.rows, self.height, dx, default = {}, {}, 255, None, 8
        for r in flat:
            if r.id == 125:
                first, last, width, _, flags = struct.unpack_from("<5H", r.body)
                for col in range(first, min(last, COLUMNS - 1) + 1):
                    self.columns.setdefault(col, 0 if flags & 1 else half_up(width * DIGIT / 256))
            elif r.id == 520:
                row, _, _, height, _, _, flags = struct.unpack_from("<7H", r.body)
                self.rows.setdefault(row, 0 if flags & 0x20 else self.pixels(height & 0x7FFF))
            elif r.id == 549:
                self.height = r.u16(2)
            elif r.id == 153:
                dx = r.u16(0)
            elif r.id == 85:
                default = r.u16(0)
        self.default = half_up(dx * DIGIT / 256) if dx is not None and dx < 65535 else PADDING + DIGIT * default

    @staticmethod
    def pixels(twips):
        return half_up(twips / 20 * SCREEN)

    def column(self, col):
        return self.columns.get(col, self.default)

    def row(self, row):
        return self.rows.get(row, self.pixels(self.height))


def rounded(value):
    return math.floor(value + 0.5)


def place(anchor, cells):
    _, left, dxl, top, dyt, right, dxr, bottom, dyb = anchor
    left, right = min(left, COLUMNS - 1), min(right, COLUMNS - 1)
    x = rounded(min(dxl, 1024) * cells.column(left) / 1024)
    y = rounded(min(dyt, 256) * cells.row(top) / 256)
    width = rounded(min(dxr, 1024) * cells.column(right) / 1024) - x + sum(cells.column(c) for c in range(left, right))
    height = rounded(min(dyb, 256) * cells.row(bottom) / 256) - y + sum(cells.row(r) for r in range(top, bottom))
    return {"row": top, "col": left, "rowBottom": bottom, "colRight": right, "x": x, "y": y, "width": max(width, 0),
            "height": max(height, 0), "link": None}


def sheet_lines(flat):
    drawing, cells = SheetDrawing(flat), Cells(flat)
    pictures = [s for s in drawing.shapes if s.properties.get(PIB)]
    for index, shape in enumerate(pictures):
        anchor = shape.anchor() or (0,) * 9
        yield {"picture": {"index": index, "id": shape.properties[PIB] - 1, **place(anchor, cells)}}
    texts = {s.obj.id: s.text for s in drawing.shapes if s.obj}
    notes, seen = sorted(drawing.notes, key=lambda n: (n.row, n.col)), set()
    for note in notes:
        if (note.row, note.col) not in seen:
            seen.add((note.row, note.col))
            yield {"comment": {"r": note.row, "c": note.col, "author": note.author, "text": texts.get(note.obj) or ""}}
    commented = {n.obj for n in drawing.notes}
    for shape in drawing.shapes:
        alone = len(shape.groups) == 1 if shape.is_group else not shape.groups
        if not alone or shape in pictures or (shape.obj and shape.obj.ot == 25 and shape.obj.id in commented):
            continue
        _, left, _, top, _, right, _, bottom, _ = shape.anchor() or (0,) * 9
        yield {"shape": {"type": OBJECT_NAMES.get(shape.obj.ot, "object") if shape.obj else "object", "row": top,
                         "col": min(left, COLUMNS - 1), "rowBottom": bottom, "colRight": min(right, COLUMNS - 1)}}


def name_of(bound):
    cch, flags = bound.body[6], bound.body[7]
    raw = bound.body[8:8 + cch * (1 + (flags & 1))]
    return raw.decode("utf-16le", "surrogatepass") if flags & 1 else raw.decode("latin-1")


def lines(data):
    file = CompoundFile(data)
    flat, _ = records(file.stream(file.main()))
    if flat[0].u16(0) < 1281:
        raise Fault("older than BIFF8")
    parts = substreams(flat)
    for number, picture in enumerate(DrawingGroup(parts[0]).pictures):
        yield {"image": {"id": number, "kind": picture.kind, "format": image_format(picture.data, picture.kind),
                         "size": len(picture.data or b""), "md5": md5(picture.data) if picture.data is not None else None}}
    bounds = [r for r in parts[0] if r.id == 133]
    for number, (bound, part) in enumerate(zip(bounds, parts[1:])):
        sheet = {"index": number, "name": name_of(bound)}
        kind = part[0].u16(2)
        if kind != 16:
            sheet["kind"] = "chart" if kind == 32 else "other"
        yield {"sheet": sheet}
        if kind == 16:
            yield from sheet_lines(part)


def main():
    try:
        with open(sys.argv[1], "rb") as file:
            for line in lines(file.read()):
                print(json.dumps(line, ensure_ascii=False, separators=(",", ":")))
    except (Fault, struct.error, OSError) as e:
        print("%s: %s" % (sys.argv[1], e), file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
