#!/usr/bin/env python3
"""xlscompare OLD NEW: what a load and save of OLD lost or changed in NEW.

Streams beside the workbook are compared byte for byte, with their directory entries. In the workbook's stream records
are compared within their substream by identifier, in their order there, since a save writes them in an order of its
own; a record goes with what continues it. Drawings, objects and embedded charts are one sequence, as are the records
of a chart sheet. Left out is only what a save makes anew, listed in the tables below. Cells are compared by place.

A book of the older generation (BIFF5) is saved as BIFF8 and not compared here. Exit status 1 when something differs.
"""
import struct
import sys

from xlsfile import (BOF, EOF, CompoundFile, Fault, expand_cells, grouped, record_name, records, shared_strings,
                     substreams)

# Made anew from the contents of the book, compared elsewhere or not at all.
GLOBALS_REMADE = {
    252, 133, 23, EOF,
}
SHEET_REMADE = {
    512,                               # from the cells
    520,                               # colMic and colMac from the cells, rows added: compared by row
    215,                               # never written
    6, 1030, 189, 190, 638, 515, 253, 513, 517, 516, 214, 545, 566, 1212, 519,  # compared by cell
    229,                               # as few as hold all ranges: compared by range
    EOF,
}
# Written with defaults where a file lacks them.
GLOBALS_DEFAULTS = {225, 193, 226, 92, 66, 353, 317, 156, 25, 18, 19, 431, 444, 61, 64, 141, 34, 14, 439, 218, 352, 140,
                    449, 255}
SHEET_DEFAULTS = {523, 12, 13, 15, 16, 17, 95, 42, 43, 130, 128, 549, 129, 85, 574}
# One member each: of several the last counts. Window1 and the views of a sheet: the first.
SINGLE = {2057, 225, 193, 226, 92, 66, 353, 317, 156, 25, 18, 19, 431, 444, 64, 141, 34, 14, 439, 218, 352, 140, 449,
          255, 146, 12, 13, 15, 16, 17, 95, 42, 43, 130, 128, 549, 129, 85, 20, 21, 38, 39, 40, 41, 77, 131, 132, 161, 99,
          221, 523, 153, 450, 144, 2164, 157, 80, 2187, 2204, 239, 442, 2146, 211, 445, 2172, 2188, 2190, 2198, 2202,
          2203, 2211, 4188, 2147}
FIRST = {61, 574}
DRAWING = {236, 93, 438, 237}


class Comparison:
    """`change` is what was done to the workbook besides: `change.strings` by their places in the table, of which
    `change.added` are new uses, and `change.cells` by (number of the sheet, row, column)."""

    def __init__(self, old, new, change=None):
        self.differences = []
        self.change = change
        self.old, self.new = CompoundFile(old), CompoundFile(new)
        self.streams()
        old_flat, _ = records(self.old.stream(self.old.main()))
        new_flat, _ = records(self.new.stream(self.new.main()))
        if not old_flat or old_flat[0].u16(0) < 1281:
            self.older = True
            return
        self.older = False
        old_parts, new_parts = substreams(old_flat), substreams(new_flat)
        sheets = sum(r.id == 133 for r in old_parts[0])
        old_parts = old_parts[:sheets + 1]
        if len(old_parts) != len(new_parts):
            self.differ("", "%d substreams became %d" % (len(old_parts), len(new_parts)))
        self.globals(old_parts[0], new_parts[0])
        for number, (one, other) in enumerate(zip(old_parts[1:], new_parts[1:])):
            self.number = number
            self.sheet("sheet %d: " % number, one, other)

    def differ(self, where, text):
        self.differences.append(where + text)

    def streams(self):
        new = {e.path: e for e in self.new.entries}
        main = self.old.main()
        for entry in self.old.entries:
            other = new.pop(entry.path, None)
            if other is None:
                self.differ("", "%s is missing" % entry.path)
                continue
            if (entry.type, entry.clsid, entry.state, entry.times, entry.color) != (
                    other.type, other.clsid, other.state, other.times, other.color):
                self.differ("", "%s: its directory entry changed" % entry.path)
            if entry.path != main.path and entry.type == 2 and self.old.stream(entry) != self.new.stream(other):
                self.differ("", "%s: its bytes changed" % entry.path)
        for path in new:
            self.differ("", "%s is new" % path)

    def globals(self, old, new):
        where = "globals: "
        self.by_id(where, old, new, GLOBALS_REMADE, GLOBALS_DEFAULTS)
        sheets = [[r.body[4:] for r in part if r.id == 133] for part in (old, new)]
        if sheets[0] != sheets[1]:
            self.differ(where, "names, states or kinds of sheets changed")
        if references(old) != references(new):
            self.differ(where, "references to sheets changed")
        tables = []
        for part in (old, new):
            sst = [r for r in grouped(part) if r.id == 252]
            tables.append(shared_strings(sst[-1])[:2] if sst else (0, []))
        if self.change:
            total, strings = tables[0]
            strings = dict(enumerate(strings)) | self.change.strings
            tables[0] = total + self.change.added, [strings[i] for i in range(len(strings))]
        if tables[0] != tables[1]:
            count = sum(a != b for a, b in zip(tables[0][1], tables[1][1]))
            self.differ(where, "shared strings: %d and %d, total %d and %d, %d of them different"
                        % (len(tables[0][1]), len(tables[1][1]), tables[0][0], tables[1][0], count))

    def sheet(self, where, old, new):
        if old[0].u16(2) != 16:
            if [r.wire() for r in grouped(old)] != [r.wire() for r in grouped(new)]:
                self.differ(where, "kept whole, but changed")
            return
        old, new = self.without_views(old), self.without_views(new)
        self.by_id(where, old[0], new[0], SHEET_REMADE, SHEET_DEFAULTS)
        for what, a, b in zip(("drawings, objects and charts", "custom views"), old[1:], new[1:]):
            if a != b:
                self.differ(where, "%s changed: %d and %d records" % (what, len(a), len(b)))
        self.merges(where, old[0], new[0])
        self.rows(where, old[0], new[0])
        self.cells(where, old[0], new[0])

    @staticmethod
    def without_views(flat):
        """(own records, wire form of drawings with embedded charts, wire form of custom views)"""
        own, drawings, views = [], [], []
        depth = view = 0
        windows = 0
        for record in grouped(flat):
            depth += record.id == BOF
            view += record.id == 426
            if depth > 1 or (record.id in DRAWING and not view):
                drawings += record.wire()
            elif view:
                views += record.wire()
            else:
                windows += record.id == 574
                # Views of further windows are dropped; a zoom of 100 and a list of no breaks are written as none.
                dropped = windows > 1 and record.id in (574, 65, 29, 160)
                dropped |= record.id in (26, 27) and record.body == b"\0\0"
                if not dropped and not (record.id == 160 and record.u16(0) == record.u16(2)):
                    own.append(record)
            view -= record.id == 427
            depth -= record.id == EOF
        return own, drawings, views

    def by_id(self, where, old, new, remade, defaults):
        lists = []
        for part in (old, new):
            of = {}
            for record in grouped(part):
                if record.id in remade:
                    continue
                units = of.setdefault(record.id, [])
                if record.id in FIRST and units:
                    continue
                if record.id in SINGLE:
                    units.clear()
                units.append(record.wire())
            lists.append(of)
        for rid in sorted(set(lists[0]) | set(lists[1])):
            a, b = lists[0].get(rid, []), lists[1].get(rid, [])
            if a == b or (not a and rid in defaults):
                continue
            if rid == 430 and [own_book(unit) for unit in a] == [own_book(unit) for unit in b]:
                continue  # its count of sheets is set right; the linter checks it
            if len(a) != len(b):
                self.differ(where, "%s: %d became %d" % (record_name(rid), len(a), len(b)))
            for number, (one, other) in enumerate(zip(a, b)):
                if one != other and not same_but_known(rid, one[0][1], other[0][1]):
                    self.differ(where, "%s #%d changed: %s became %s"
                                % (record_name(rid), number, one[0][1][:24].hex(), other[0][1][:24].hex()))
                    break

    def merges(self, where, old, new):
        def of(part):
            return [r.body[2 + 8 * i:10 + 8 * i] for r in part if r.id == 229 for i in range(r.u16(0))]
        if of(old) != of(new):
            self.differ(where, "merged ranges: %d became %d" % (len(of(old)), len(of(new))))

    def rows(self, where, old, new):
        def of(part):
            rows = {}
            for r in part:
                if r.id == 520:
                    rows.setdefault(r.u16(0), (r.u16(6) & 0x7FFF, r.u16(8), r.body[12:16]))
            return rows
        old, new = of(old), of(new)
        for row, value in old.items():
            if new.get(row) != value:
                self.differ(where, "Row %d changed" % row)
                break

    def cells(self, where, old, new):
        def of(part):
            return {place: cell for place, *cell in expand_cells(part)}
        old, new = of(old), of(new)
        for (number, *place), cell in (self.change.cells if self.change else {}).items():
            if number == self.number:
                old[tuple(place)] = cell
        for place in sorted(set(old) | set(new)):
            if old.get(place) != new.get(place):
                self.differ(where, "cell %d,%d: %s became %s"
                            % (place + (shown(old.get(place)), shown(new.get(place)))))
                break


def references(part):
    """The entries of all ExternSheet records, which a save puts into one."""
    out = b""
    for r in grouped(part):
        if r.id == 23:
            body = r.body + b"".join(more.body for more in r.next)
            out += body[2:] if len(body) == 2 + 6 * struct.unpack_from("<H", body)[0] else body
    return out


def own_book(unit):
    """A SupBook's bodies, without the count of sheets where it is the one for this book."""
    return unit[0][1][2:] if unit[0][1][2:] == b"\x01\x04" else unit


def shown(cell):
    return "none" if cell is None else str(cell)[:160]


def same_but_known(rid, old, new):
    """Changes that a save makes by its rules."""
    if rid == 2057:  # the later fields are written where a file stops early
        return new[:len(old)] == old
    if rid == 92:  # cut at 112 bytes; a shorter one is filled
        return new[:len(old)] == old[:len(new)]
    if rid == 146:  # entries that are not there keep the default colours
        return old[2:] == new[2:len(old)]
    if rid == 449 and len(old) == len(new) == 8:  # readers are asked to calculate: never newer than this engine
        build = min(int.from_bytes(old[4:], "little"), 114210)
        return old[:4] == new[:4] and int.from_bytes(new[4:], "little") == build
    if rid in (125, 449, 512, 574, 549, 13, 23):  # longer or shorter forms of the same fields
        n = min(len(old), len(new))
        return len(old) != len(new) and old[:n] == new[:n]
    if rid in (225, 193, 226):  # empty in some files
        return not old
    if rid == 49 and len(new) == 14:  # a font without a name has none, not an empty one
        return old == new + b"\0" + old[15:16]
    if rid == 1054 and len(old) <= 4:  # an empty text without its flags
        return new[:4] == old.ljust(4, b"\0")
    return False


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    data = []
    for path in sys.argv[1:]:
        with open(path, "rb") as f:
            data.append(f.read())
    try:
        comparison = Comparison(*data)
    except (Fault, struct.error) as e:
        print("%s: %s" % (sys.argv[2], e))
        return 1
    for difference in comparison.differences:
        print("%s: %s" % (sys.argv[2], difference))
    return 1 if comparison.differences else 0


if __name__ == "__main__":
    sys.exit(main())
