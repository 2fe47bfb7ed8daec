#!/usr/bin/env python3
"""xlslint FILE...: checks binary workbooks that this engine wrote, without its reader.

Container: every sector in one chain or none, tables marked, the directory a tree in order. Records: the order in which
the engine writes them, sizes of fixed ones, nothing over 8224 bytes, nothing behind the last EOF but zeros. Indices:
fonts, formats, cell formats, strings, sheets, sheet references and names that exist; BoundSheet8 positions that lead to a
Bof of the right kind. Names that are one of a kind in their scope; shared, array and table formulas whose tokens are there;
tokens that are an expression of one value.
Drawings: one exact tree a sheet, its pieces under the right identifiers and before their objects, counts in step.

A directory order, or references to formats that were wrong in the loaded file, come back unchanged in the saved one:
with --loaded ORIGINAL what the original has wrong too is not told. Exit status 1 when there is a fault.
"""
import argparse
import functools
import re
import struct
import sys

from xlsdrawing import DrawingGroup, SheetDrawing
from xlsfile import (BOF, CONTINUE, CONTINUES, EOF, MAX_BODY, CompoundFile, Fault, expand_cells, grouped, record_name,
                     records, shared_strings, substreams)
from xlstokens import PTG_EXP, PTG_NAME, PTG_TBL, WITH_XTI, counted, stack_fault, tokens

# The order of the globals; one line a step, any order within a line's set only as given by `repeat`.
GLOBALS = [2057, 134, 96, 225, 193, 226, 92, 66, 353, 448, 317, 211, 445, 442, 156, 25, 18, 19, 431, 444, 61, 64, 141,
           34, 14, 439, 218, 49, 1054, 224, 2172, 2173, 659, 2190, 146, 4188, 352, 133, 2202, 2211, 140, 430, 24, 449, 2150, 235,
           252, 255, 2147, 2198, 2203, 2188]
# A SupBook's own records go with it, between 430 and 24.
SUPBOOK = {23, 35, 60, 89, 90}
SHEET = [2057, 94, 523, 13, 12, 15, 17, 16, 95, 42, 43, 130, 128, 549, 129, 27, 26]
PAGE_SETUP = {20, 21, 131, 132, 38, 39, 40, 41, 77, 161}
PROTECTION = {18, 19, 99, 221}
SHEET_REST = [85, 125, 144, 2164, 157, 512, 520]
CELLS = {6, 638, 515, 253, 513, 517, 516, 545, 566, 1212, 519}
SHEET_END = [450, 236, 28, 80, 574, 2187, 160, 65, 29, 153, 229, 239, 440, 442, 2146]
FEATURES = {2151, 2161, 2152, 2162, 2167, 2168}

SIZES = {  # of fixed records, as the engine writes them
    2057: 16, 61: 18, 92: 112, 66: 2, 353: 2, 156: 2, 64: 2, 141: 2, 34: 2, 14: 2, 439: 2, 218: 2, 352: 2, 140: 4,
    449: 8, 25: 2, 18: 2, 19: 2, 431: 2, 444: 2, 224: 20, 146: 226, 12: 2, 13: 2, 15: 2, 17: 2, 16: 8, 95: 2, 42: 2,
    43: 2, 130: 2, 128: 8, 549: 4, 129: 2, 85: 2, 125: 12, 512: 14, 520: 16, 638: 10, 515: 14, 253: 10, 513: 6, 517: 8,
    160: 4, 65: 10, 161: 34, 131: 2, 132: 2, 38: 8, 39: 8, 40: 8, 41: 8, 10: 0,
}
BUILT_IN_FORMATS = set(range(0, 164))


class Lint:
    def __init__(self, data):
        self.faults = []
        file = CompoundFile(data)
        main = file.main()
        stream = file.stream(main, claim=True)
        for entry in file.entries:
            if entry.type == 2 and entry is not main:
                file.stream(entry, claim=True)
        for number, mark in enumerate(file.fat[:file.sectors]):
            if number not in file.owner and mark < DIFAT_OR_FAT:
                file.fault("sector %d is in a chain of nobody's" % number)
        self.faults += file.faults
        flat, end = records(stream)
        if stream[end:].strip(b"\0"):
            self.fault("bytes behind the last EOF at %d" % end)
        parts = substreams(flat)
        if not parts:
            raise Fault("no records")
        self.globals(parts[0])
        self.bound_sheets(parts[1:])
        for number, part in enumerate(parts[1:]):
            self.where = "sheet %d: " % number
            self.sheet(part)
        self.drawings(parts)

    where = "globals: "

    def fault(self, text):
        self.faults.append(self.where + text)

    def drawings(self, parts):
        """One tree a sheet, cut and counted as it must be; identifiers and pictures that exist."""
        found = []
        for number, part in enumerate(parts[1:]):
            drawing = SheetDrawing(part)
            if part[0].u16(2) == 16:
                self.where = "sheet %d: " % number
                for text in drawing.check():
                    self.fault(text)
            found += [drawing, *drawing.of_charts()]
        self.where = "globals: "
        for text in DrawingGroup(parts[0]).check(found):
            self.fault(text)

    def sizes(self, flat):
        depth = 0
        for record in flat:
            depth += (record.id == BOF) - (record.id == EOF)
            if len(record.body) > MAX_BODY:
                self.fault("%s of %d bytes" % (record_name(record.id), len(record.body)))
            expected = SIZES.get(record.id)
            if depth <= 1 and expected is not None and len(record.body) != expected:
                self.fault("%s has %d bytes" % (record_name(record.id), len(record.body)))

    def order(self, found, ranks, behind):
        """Ranks of the identifiers never fall; those without a rank have `behind`."""
        highest, holder = -1, None
        for record in found:
            rank = ranks.get(record.id, behind)
            if rank is None:
                continue
            if rank < highest:
                self.fault("%s stands behind %s" % (record_name(record.id), record_name(holder)))
            else:
                highest, holder = rank, record.id

    def globals(self, flat):
        self.sizes(flat)
        ranks = {rid: rank for rank, rid in enumerate(GLOBALS)}
        supbook = ranks[430]
        ranks.update({rid: supbook for rid in SUPBOOK})
        units = [r for r in grouped(flat) if r.id not in CONTINUES]
        # Other records come behind all of these and before the EOF.
        self.order(units, {**ranks, EOF: 1000}, 900)
        of = {}
        for record in units:
            of.setdefault(record.id, []).append(record)
        for rid in (2057, 225, 193, 226, 92, 66, 353, 317, 61, 252, 255, 449):
            if len(of.get(rid, ())) != 1:
                self.fault("%d records %s" % (len(of.get(rid, ())), record_name(rid)))
        self.fonts = len(of.get(49, ()))
        self.xfs = of.get(224, [])
        self.check_formats(of)
        self.strings = []
        try:
            total, self.strings, rest = shared_strings(of[252][0])
            if rest:
                self.fault("SST: %d bytes behind its last string" % rest)
            for number, (_, runs, _) in enumerate(self.strings):
                for _, font in runs:
                    self.check_font(font, "string %d" % number)
        except (KeyError, Fault, struct.error) as e:
            self.fault("SST: %s" % e)
        self.bounds = of.get(133, [])
        sheets = len(self.bounds)
        if 61 in of and of[61][0].u16(10) >= max(sheets, 1):
            self.fault("Window1 shows sheet %d of %d" % (of[61][0].u16(10), sheets))
        if 317 in of and sheets and len(of[317][0].body) != 2 * sheets:
            self.fault("RRTabId has %d entries for %d sheets" % (len(of[317][0].body) // 2, sheets))
        self.check_references(of, sheets)

    def check_font(self, wire, what):
        position = wire - 1 if wire > 4 else wire
        if wire == 4 or position >= self.fonts:
            self.fault("%s names font %d of %d" % (what, wire, self.fonts))

    def check_formats(self, of):
        formats = {r.u16(0) for r in of.get(1054, ())}
        for number, xf in enumerate(self.xfs):
            if len(xf.body) != 20:
                continue
            font, fmt, prot = struct.unpack_from("<HHH", xf.body)
            self.check_font(font, "XF %d" % number)
            if fmt not in formats and fmt not in BUILT_IN_FORMATS:
                self.fault("XF %d names number format %d" % (number, fmt))
            parent = prot >> 4
            if not prot & 4 and parent >= len(self.xfs):
                self.fault("XF %d has parent %d of %d" % (number, parent, len(self.xfs)))
        for style in of.get(659, ()):
            ixfe = style.u16(0) & 0xFFF
            if ixfe >= len(self.xfs):
                self.fault("Style names XF %d of %d" % (ixfe, len(self.xfs)))
            elif style.u16(0) & 0x8000 and not self.xfs[ixfe].u16(4) & 4:
                self.fault("Style names XF %d, which is no style" % ixfe)
        if len(self.xfs) < 16:
            self.fault("%d XF records" % len(self.xfs))

    def check_references(self, of, sheets):
        books = len(of.get(430, ()))
        for record in of.get(23, ()):
            body = b"".join([record.body] + [r.body for r in record.next])
            count = struct.unpack_from("<H", body)[0]
            if len(body) != 2 + 6 * count:
                self.fault("ExternSheet has %d bytes for %d entries" % (len(body), count))
            for i in range(min(count, (len(body) - 2) // 6)):
                book, first, last = struct.unpack_from("<Hhh", body, 2 + 6 * i)
                if book >= books:
                    self.fault("ExternSheet entry %d names SupBook %d of %d" % (i, book, books))
                elif of[430][book].body[2:4] == b"\x01\x04" and max(first, last) >= sheets:
                    self.fault("ExternSheet entry %d names sheet %d of %d" % (i, max(first, last), sheets))
        for record in of.get(430, ()):
            if record.body[2:4] == b"\x01\x04" and record.u16(0) != sheets:
                self.fault("SupBook of this book has %d sheets, not %d" % (record.u16(0), sheets))
        self.references = sum(struct.unpack_from("<H", r.body)[0] for r in of.get(23, ()) if len(r.body) >= 2)
        self.names = len(of.get(24, ()))
        known = set()
        for number, record in enumerate(of.get(24, ())):
            if len(record.body) >= 10 and record.u16(8) > sheets:
                self.fault("name %d belongs to sheet %d of %d" % (number, record.u16(8), sheets))
            if len(record.body) >= 15:
                self.check_name(number, record, known)

    def check_name(self, number, record, known):
        body, size = record.body, record.body[3]
        wide = body[14] & 1
        end = 15 + size * (2 if wide else 1)
        text = body[15:end].decode("utf-16le" if wide else "latin-1", "replace").lower()
        if (record.u16(8), record.u16(0) & 0x20, text) in known:
            self.fault("name %d: %r twice in its scope" % (number, text))
        known.add((record.u16(8), record.u16(0) & 0x20, text))
        rgce = body[end:end + record.u16(4)]
        if rgce:  # a macro's name has none
            self.check_tokens("name %d" % number, rgce)

    def check_tokens(self, what, rgce):
        """Indices that tokens hold; the tokens as a list, None where the bytes are none."""
        try:
            found = list(tokens(rgce))
        except ValueError as e:
            self.fault("%s: %s" % (what, e))
            return None
        for base, operands in found:
            index = struct.unpack_from("<H", operands)[0] if len(operands) >= 2 else 0
            if base in WITH_XTI and index >= self.references:
                self.fault("%s names sheet reference %d of %d" % (what, index, self.references))
            if base == PTG_NAME and not 1 <= index <= self.names:
                self.fault("%s names name %d of %d" % (what, index, self.names))
        wrong = stack_fault(found)
        if wrong:
            self.fault("%s: %s" % (what, wrong))
        return found

    def bound_sheets(self, parts):
        self.where = "globals: "
        if len(parts) != len(self.bounds):
            self.fault("%d BoundSheet8 records for %d substreams" % (len(self.bounds), len(parts)))
        names = set()
        for number, (bound, part) in enumerate(zip(self.bounds, parts)):
            position, state, kind, cch, flags = struct.unpack_from("<IBBBB", bound.body)
            if position != part[0].at:
                self.fault("sheet %d begins at %d, BoundSheet8 says %d" % (number, part[0].at, position))
            expected = {0: (16,), 1: (64, 16), 2: (32,), 6: (6,)}.get(kind, ())
            if part[0].u16(2) not in expected:
                self.fault("sheet %d is of kind %d, BoundSheet8 says %d" % (number, part[0].u16(2), kind))
            raw = bound.body[8:]
            name = raw.decode("utf-16le", "replace") if flags & 1 else raw.decode("latin-1")
            if len(raw) != cch * (2 if flags & 1 else 1) or not 1 <= cch <= 31:
                self.fault("sheet %d: name of %d characters in %d bytes" % (number, cch, len(raw)))
            if name.lower() in names:
                self.fault("sheet %d: name %r twice" % (number, name))
            names.add(name.lower())
        if self.bounds and not any(b.body[4] & 3 == 0 for b in self.bounds):
            self.fault("no sheet is visible")

    def sheet(self, flat):
        if flat[0].u16(2) != 16:
            return  # kept as it came
        self.sizes(flat)
        own, depth = [], 0
        for record in flat:  # what lies in embedded charts and custom views has an order of its own
            if record.id in (BOF, 426):
                depth += 1
            if depth == 1 or record is flat[0]:
                own.append(record)
            if record.id in (EOF, 427):
                depth -= 1
        ranks, rank = {}, 0
        for step in SHEET + [PAGE_SETUP, 2204, PROTECTION] + SHEET_REST + [CELLS] + SHEET_END:
            for rid in step if isinstance(step, set) else {step}:
                ranks[rid] = rank
            rank += 1
        features = {rid: rank + 10 for rid in FEATURES}
        ignored = {rid: None for rid in CONTINUES | {93, 237, 438, BOF}}
        units = [r for r in grouped(own) if r.id != BOF or r is flat[0]]
        self.order(units, {**ranks, **features, **ignored, EOF: rank + 20}, rank)
        for rid in (574, 512):
            if sum(r.id == rid for r in own) == 0:
                self.fault("no %s" % record_name(rid))
        self.check_columns(units)
        self.check_features(units)
        self.check_cells(flat, units)

    def check_columns(self, units):
        end = -1
        for record in units:
            if record.id != 125 or len(record.body) < 8:
                continue
            first, last, _, ixfe = struct.unpack_from("<HHHH", record.body)
            if first > last or last > 256 or first <= end:
                self.fault("ColInfo %d to %d behind %d" % (first, last, end))
            end = last
            if ixfe >= len(self.xfs):
                self.fault("ColInfo %d names XF %d of %d" % (first, ixfe, len(self.xfs)))

    def check_features(self, units):
        """Page breaks, panes, groups and common features, as other programs want them."""
        of = {}
        for record in units:
            of.setdefault(record.id, []).append(record)
        for rid in (27, 26):
            for record in of.get(rid, ()):
                count = record.u16(0)
                if len(record.body) != 2 + 6 * count or count == 0:
                    self.fault("%s has %d bytes for %d breaks" % (record_name(rid), len(record.body), count))
                    continue
                at = [record.u16(2 + 6 * i) for i in range(count)]
                if at != sorted(set(at)):
                    self.fault("%s is not in order" % record_name(rid))
        for record in of.get(160, ()):
            if 0 in (record.u16(0), record.u16(2)):
                self.fault("Scl %d/%d" % (record.u16(0), record.u16(2)))
        for record in of.get(65, ()):
            x, y, _, _, active = struct.unpack_from("<HHHHB", record.body)
            exist = {3} | ({1} if x else set()) | ({2} if y else set()) | ({0} if x and y else set())
            selected = {r.body[0] for r in of.get(29, ())}
            if active not in exist:  # a pane of 0 by 0, as some files have it, is the lower right one
                self.fault("Pane %d,%d has pane %d active" % (x, y, active))
            if of.get(29) and (active not in selected or not selected <= exist):
                self.fault("panes %s exist, %s have selections" % (sorted(exist), sorted(selected)))
        for record in of.get(29, ()):
            if record.u16(5) >= record.u16(7):
                self.fault("Selection has range %d of %d active" % (record.u16(5), record.u16(7)))
        for rid in (20, 21):
            for record in of.get(rid, ()):
                if record.body and record.u16(0) > 255:
                    self.fault("%s of %d characters" % (record_name(rid), record.u16(0)))
        levels = [max([r.u16(12) & 7 for r in of.get(520, ()) if len(r.body) >= 16], default=0),
                  max([r.u16(8) >> 8 & 7 for r in of.get(125, ()) if len(r.body) >= 10], default=0)]
        for record in of.get(128, ()):
            for what, level, count in zip(("rows", "columns"), levels, (record.u16(4), record.u16(6))):
                if level and count < level + 1:
                    self.fault("Guts shows %d levels of %s, there are %d" % (count, what, level + 1))
        opened = set()
        for record in units:
            if record.id in (2151, 2152) and len(record.body) >= 14:
                if record.id == 2151:
                    opened.add(record.u16(12))
                elif record.u16(12) not in opened:
                    self.fault("Feat of type %d without its FeatHdr" % record.u16(12))
        for record in of.get(2146, ()):
            if struct.unpack_from("<I", record.body, 12)[0] != len(record.body):
                self.fault("SheetExt of %d bytes says another size" % len(record.body))

    def check_cells(self, flat, units):
        seen, before = set(), (-1, -1)
        self.anchors, self.users = {}, []
        rows = [record.u16(0) for record in units if record.id == 520 and len(record.body) >= 16]
        for record in units:
            if record.id == 520 and len(record.body) >= 16 and record.u16(12) & 0x80:
                if record.u16(14) & 0xFFF >= len(self.xfs):
                    self.fault("Row %d names XF %d of %d" % (record.u16(0), record.u16(14) & 0xFFF, len(self.xfs)))
        low = [65536, 256]
        high = [-1, -1]
        for place, kind, ixfe, value in expand_cells(flat):
            if place in seen:
                self.fault("cell %d,%d twice" % place)
            if place <= before:
                self.fault("cell %d,%d behind %d,%d" % (place + before))
            seen.add(place)
            before = place
            if place[1] > 255:
                self.fault("cell %d,%d" % place)
            if ixfe >= len(self.xfs):
                self.fault("cell %d,%d names XF %d of %d" % (place + (ixfe, len(self.xfs))))
            if kind == "LabelSst" and struct.unpack("<I", value)[0] >= len(self.strings):
                self.fault("cell %d,%d names string %d of %d" % (place + (*struct.unpack("<I", value), len(self.strings))))
            if kind == "Formula":
                self.check_formula(place, value)
            for k in (0, 1):
                low[k], high[k] = min(low[k], place[k]), max(high[k], place[k])
        self.check_users()
        missing = {place[0] for place in seen} - set(rows)
        if missing:
            self.fault("rows with cells and without Row: %s" % sorted(missing)[:5])
        for record in units:
            if record.id == 512 and len(record.body) == 14:
                expected = (low[0], high[0] + 1, low[1], high[1] + 1) if seen else (0, 0, 0, 0)
                if struct.unpack_from("<IIHH", record.body) != expected:
                    self.fault("Dimensions %s, the cells are within %s"
                               % (struct.unpack_from("<IIHH", record.body), expected))

    def check_formula(self, place, parts):
        ids = [rid for rid, _ in parts]
        body = next(b for rid, b in parts if rid == 6 and len(b) > 2)
        if len(body) < 22 or 22 + struct.unpack_from("<H", body, 20)[0] > len(body):
            self.fault("cell %d,%d: tokens run past the formula" % place)
            return
        found = self.check_tokens("cell %d,%d" % place, counted(body, 20))
        for rid, record in parts:
            if rid in (545, 1212, 566) and len(record) >= 6:
                self.anchors[place] = (rid, struct.unpack_from("<HHBB", record))
                if rid != 566:
                    self.check_tokens("cell %d,%d" % place, counted(record, 12 if rid == 545 else 8))
        if found and len(found) == 1 and found[0][0] in (PTG_EXP, PTG_TBL):
            self.users.append((place, found[0][0], struct.unpack("<HH", found[0][1])))
        has_text = body[12:14] == b"\xff\xff" and body[6] == 0
        if has_text != (519 in ids):
            self.fault("cell %d,%d: %s" % (place + ("a text is promised and missing" if has_text else "a text too many",)))

    def check_users(self):
        for place, code, target in self.users:
            rid, (top, bottom, left, right) = self.anchors.get(target, (0, (0, 0, 0, 0)))
            if (rid != 566) if code == PTG_TBL else (rid not in (545, 1212)):
                self.fault("cell %d,%d: no tokens behind cell %d,%d" % (place + target))
            elif not (top <= place[0] <= bottom and left <= place[1] <= right):
                self.fault("cell %d,%d is outside of the range of its tokens" % place)


DIFAT_OR_FAT = 0xFFFFFFFC


def faults_of(path):
    with open(path, "rb") as f:
        return faults_in(f.read())


@functools.lru_cache(maxsize=2)  # the file that others are made from is asked for again and again
def faults_in(data):
    try:
        return Lint(data).faults
    except (Fault, struct.error) as e:
        return [str(e)]


def pattern(fault):
    """Positions and counts change by a save; what is wrong stays the same without its figures."""
    return re.sub(r"\d+", "#", fault)


def new_faults(path, source):
    """What is wrong with the file, but not with the one that it was made from."""
    known = {pattern(fault) for fault in faults_of(source)} if source else set()
    return [fault for fault in faults_of(path) if pattern(fault) not in known]


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("files", nargs="+", metavar="FILE")
    options.add_argument("--loaded", metavar="ORIGINAL", help="the file that FILE was loaded from")
    args = options.parse_args()
    failed = False
    for path in args.files:
        for fault in new_faults(path, args.loaded):
            print("%s: %s" % (path, fault))
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
