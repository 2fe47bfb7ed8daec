#!/usr/bin/env python3
"""The linter and the comparer find what they are for: a sound workbook has no faults, each damage has its own."""
import os
import struct
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "tools"))
import xlscompare
import xlslint
from xlsfile import END, FAT, FREE, Fault


def record(rid, *fields, fmt="H", body=b""):
    body = struct.pack("<" + (fmt if len(fmt) > 1 else fmt * len(fields)), *fields) + body
    return rid, body


def art(ver, inst, kind, body, length=None):
    return struct.pack("<HHI", ver | inst << 4, kind, len(body) if length is None else length) + body


# A drawing of a picture and a comment, and its group with one picture.
GROUP = art(15, 0, 0xF000, art(0, 0, 0xF006, struct.pack("<6I", 1027, 2, 3, 1, 1, 3)) + art(15, 1, 0xF001, art(
    2, 6, 0xF007, struct.pack("<BB16sHIIIBBBB", 6, 6, bytes(16), 255, 33, 1, 0, 0, 0, 0, 0)
    + art(0, 1760, 0xF01E, bytes(16) + b"\xffpicture!"))))
ANCHOR = art(0, 0, 0xF010, bytes(18)) + art(0, 0, 0xF011, b"")
PICTURE = art(15, 0, 0xF004, art(2, 75, 0xF00A, struct.pack("<II", 1025, 2560))
              + art(3, 1, 0xF00B, struct.pack("<HI", 0x4104, 1)) + ANCHOR)
BOX = art(2, 202, 0xF00A, struct.pack("<II", 1026, 2560)) + ANCHOR
COMMENT = art(15, 0, 0xF004, BOX, len(BOX) + 8)
TOP = art(15, 0, 0xF004, art(1, 0, 0xF009, bytes(16)) + art(2, 0, 0xF00A, struct.pack("<II", 1024, 5)))
SHAPES = len(TOP) + len(PICTURE) + len(COMMENT) + 8
FRAME = (art(15, 0, 0xF002, art(0, 1, 0xF008, struct.pack("<II", 3, 1026)), 16 + 8 + SHAPES)
         + art(15, 0, 0xF003, TOP, SHAPES))
DRAWING = [
    (236, FRAME + PICTURE), (93, struct.pack("<5H", 21, 18, 8, 1, 0x6011) + bytes(16)),
    (236, COMMENT), (93, struct.pack("<5H", 21, 18, 25, 2, 0x4011) + bytes(16)),
    (236, art(0, 0, 0xF00D, b"")), (438, struct.pack("<HHIHHHIH", 530, 0, 0, 0, 1, 0, 0, 0)), (60, b"\0a"),
    (28, struct.pack("<4HHB", 0, 0, 0, 2, 1, 0) + b"A\0"),
]


class Book:
    """Records of a workbook with one sheet, to be damaged before they are laid out."""

    def __init__(self):
        self.globals = [
            record(2057, 1536, 5, 8346, 1997, body=bytes(8)), record(225, 1200), record(193, 0), record(226),
            record(92, body=b"\1\0\0A".ljust(112)), record(66, 1200), record(353, 0), record(448), record(317, 1), record(156, 14),
            record(61, *[0] * 9), record(49, 200, 0, 32767, 400, 0, 0, 0, body=b"\5\0Arial"),
            record(1054, 164, 1, body=b"\0" + b"0"),
        ]
        self.globals += [record(224, 0, 0, 0xFFF5, body=bytes(14)) for _ in range(15)]
        self.globals += [record(224, 0, 164, 1, body=bytes(14)), record(659, 0x8000, 0xFF00), record(2194, 2194),
                         record(659, 0x8000, 0xFF03), record(2194, 2194), record(133, body=bytes(6)
                         + b"\1\0S"), record(140, 1, 1), record(449, 449, 0, 0, 0),
                         (235, GROUP),
                         record(252, 2, 0, 2, 0, body=b"\2\0\0ab\1\0\1c\0"), record(255, 8), record(2000, 1), (10, b"")]
        self.sheet = [
            record(2057, 1536, 16, 8346, 1997, body=bytes(8)), record(523, *[0] * 8), record(13, 1), record(85, 8),
            record(125, 0, 1, 2000, 15, 0, 0), record(512, 0, 0, 2, 0, 0, 2, 0),
            record(520, 0, 0, 2, 255, 0, 0, 256, 15), record(520, 1, 0, 1, 255, 0, 0, 256, 15),
            record(638, 0, 0, 15, 2, 0), record(253, 0, 1, 15, 1, 0),
            record(6, 1, 0, 15, 0, 0, 0, 0xFFFF, 0, 0, 0, 3, body=b"\x1e\1\0"), record(519, 1, body=b"\0x"),
            *DRAWING, record(574, *[0] * 9), record(65, 1, 1, 1, 1, 0), record(229, 1, 3, 4, 0, 1),
            record(3000, 5), record(60, 6), (10, b""),
        ]

    def patch(self, where, rid, offset, fmt, value):
        part = getattr(self, where)
        i = next(i for i, (found, _) in enumerate(part) if found == rid)
        body = bytearray(part[i][1])
        struct.pack_into("<" + fmt, body, offset, value)
        part[i] = (rid, bytes(body))
        return self

    def drop(self, where, rid):
        part = getattr(self, where)
        part.pop(next(i for i, (found, _) in enumerate(part) if found == rid))
        return self

    def move(self, where, rid, to):
        part = getattr(self, where)
        part.insert(to, part.pop(next(i for i, (found, _) in enumerate(part) if found == rid)))
        return self

    def stream(self):
        def wire(part):
            return b"".join(struct.pack("<HH", rid, len(body)) + body for rid, body in part)
        if self.position is None:
            self.patch("globals", 133, 0, "I", len(wire(self.globals)))
        return (wire(self.globals) + wire(self.sheet)).ljust(4096, b"\0") + self.tail

    position = None
    tail = b""

    def file(self):
        """Stream, another stream, FAT, directory."""
        stream, other = self.stream(), bytes(range(256)) * 17
        sectors, fat = b"", []
        starts = []
        for data in (stream, other):
            starts.append(len(fat))
            data = data.ljust(-(-len(data) // 512) * 512, b"\0")
            fat += list(range(len(fat) + 1, len(fat) + len(data) // 512)) + [END]
            sectors += data
        at = len(fat)
        fat += [FAT, END]
        fat += [FREE] * (128 - len(fat))
        def entry(name, kind, left, right, child, start, size):
            raw = name.encode("utf-16le")
            return (raw.ljust(64, b"\0") + struct.pack("<HBBIII", len(raw) + 2, kind, 1, left, right, child) + bytes(36)
                    + struct.pack("<IQ", start, size))
        directory = (entry("Root Entry", 5, FREE, FREE, 1, END, 0)
                     + entry("Workbook", 2, 2, FREE, FREE, starts[0], len(stream))
                     + entry("Other", 2, FREE, FREE, FREE, starts[1], len(other)) + bytes(128))
        header = (bytes.fromhex("D0CF11E0A1B11AE1") + bytes(16) + struct.pack("<HHHHH", 62, 3, 0xFFFE, 9, 6) + bytes(6)
                  + struct.pack("<10I", 0, 1, at + 1, 0, 4096, END, 0, END, 0, at) + struct.pack("<I", FREE) * 108)
        return bytearray(header + sectors + struct.pack("<128I", *fat) + directory)


def lint(data):
    try:
        return xlslint.Lint(bytes(data)).faults
    except Fault as e:
        return [str(e)]


class LintTest(unittest.TestCase):
    def test_sound(self):
        self.assertEqual(lint(Book().file()), [])

    def test_records(self):
        cases = [
            ("XF 15 names number format 164", lambda b: b.patch("globals", 1054, 0, "H", 165)),
            ("globals: XF 0 names font 7 of 1", lambda b: b.patch("globals", 224, 0, "H", 7)),
            ("globals: Style (659) stands behind BoundSheet8 (133)", lambda b: b.move("globals", 133, 28)),
            ("globals: Style names XF 99 of 16", lambda b: b.patch("globals", 659, 0, "H", 0x8063)),
            ("globals: SST: text ends early", lambda b: b.patch("globals", 252, 8, "B", 1)),
            ("globals: 0 records RRTabId (317)", lambda b: b.drop("globals", 317)),
            ("globals: Window1 shows sheet 3 of 1", lambda b: b.patch("globals", 61, 10, "H", 3)),
            ("globals: no sheet is visible", lambda b: b.patch("globals", 133, 4, "B", 1)),
            ("globals: sheet 0 is of kind 32, BoundSheet8 says 0", lambda b: b.patch("sheet", 2057, 2, "H", 32)),
            ("sheet 0: Row (520) has 14 bytes", lambda b: b.sheet.__setitem__(6, record(520, *[0] * 7)) or b),
            ("sheet 0: cell 0,0 names XF 16 of 16", lambda b: b.patch("sheet", 638, 4, "H", 16)),
            ("sheet 0: cell 0,1 names string 2 of 2", lambda b: b.patch("sheet", 253, 6, "I", 2)),
            ("sheet 0: cell 1,0: a text is promised and missing", lambda b: b.drop("sheet", 519)),
            ("sheet 0: cell 1,0: tokens run past the formula", lambda b: b.patch("sheet", 6, 20, "H", 4)),
            ("sheet 0: ColInfo 2 to 1 behind -1", lambda b: b.patch("sheet", 125, 0, "H", 2)),
            ("sheet 0: rows with cells and without Row: [0]", lambda b: b.drop("sheet", 520)),
            ("sheet 0: Dimensions (0, 3, 0, 2), the cells are within (0, 2, 0, 2)",
             lambda b: b.patch("sheet", 512, 4, "I", 3)),
            ("sheet 0: Pane (65) stands behind MergeCells (229)", lambda b: b.move("sheet", 229, 20)),
            ("sheet 0: no Window2 (574)", lambda b: b.drop("sheet", 574)),
            ("the last substream has no EOF", lambda b: b.drop("sheet", 10)),
        ]
        for expected, damage in cases:
            with self.subTest(expected):
                book = Book()
                damage(book)
                faults = lint(book.file())
                self.assertTrue(any(expected in fault for fault in faults), faults)

    def test_expressions(self):
        def formula(*rgce):
            return lambda b: b.sheet.__setitem__(
                10, record(6, 1, 0, 15, 0, 0, 0, 0xFFFF, 0, 0, 0, len(bytes(rgce)), body=bytes(rgce)))
        one = (0x1E, 1, 0)
        cases = [
            ("leave 2 values", formula(*one, *one)),
            ("leave 0 values", formula()),
            ("token 03 needs 2 operands and has 1", formula(*one, 0x03)),
            ("token 15 needs 1 operands and has 0", formula(0x15)),
            ("token 21 needs 2 operands and has 1", formula(*one, 0x41, 27, 0)),
            ("token 22 needs 3 operands and has 2", formula(*one, *one, 0x42, 3, 4, 0)),
            ("token 19 needs 1 operands and has 0", formula(0x19, 0x10, 0, 0)),
            (None, formula(*one, 0x19, 0x10, 0, 0)),
            (None, formula(0x19, 0x40, 0, 1, *one, *one, 0x14, 0x05, 0x15, 0x22, 1, 4, 0)),
            (None, formula(0x29, 3, 0, *one, 0x41, 24, 0)),
        ]
        for expected, damage in cases:
            with self.subTest(expected):
                book = Book()
                damage(book)
                faults = lint(book.file())
                self.assertTrue(any(expected in fault for fault in faults) if expected else faults == [], faults)

    def test_drawings(self):
        fdg, top, picture = 16, 24, len(FRAME)
        cases = [
            ("runs past its container", lambda b: b.patch("sheet", 236, 4, "I", 9999)),
            ("bytes behind the last drawing record", lambda b: b.patch("sheet", 236, picture + 4, "I", 60)),
            ("shape 1025 has no Obj behind its ClientData", lambda b: b.move("sheet", 93, 0) and b.move("sheet", 2057, 0)),
            ("shape 1026 has no TxO behind its ClientTextbox", lambda b: b.drop("sheet", 438)),
            ("FDG counts 2 shapes of 3", lambda b: b.patch("sheet", 236, fdg, "I", 2)),
            ("FDG's last identifier is 1025, a shape has 1026", lambda b: b.patch("sheet", 236, fdg + 4, "I", 1025)),
            ("a shape identifier stands twice", lambda b: b.patch("sheet", 236, picture + 16, "I", 1024)),
            ("an object number stands twice", lambda b: b.patch("sheet", 93, 6, "H", 2)),
            ("the note of row 0, column 0 has no object", lambda b: b.patch("sheet", 28, 6, "H", 3)),
            ("shape 1025 shows picture 2 of 1", lambda b: b.patch("sheet", 236, picture + 34, "I", 2)),
            ("picture 0 has 1 uses, its entry says 0", lambda b: b.patch("globals", 235, 80, "I", 0)),
            ("picture 0 says 34 bytes, it has 33", lambda b: b.patch("globals", 235, 76, "I", 34)),
            ("the picture list says 2, it has 1", lambda b: b.patch("globals", 235, 40, "H", 0x2F)),
            ("shape 1026 is beyond what its cluster says", lambda b: b.patch("globals", 235, 36, "I", 2)),
            ("shape 1024 is in no cluster of drawing 2", lambda b: b.patch("sheet", 236, 8, "H", 0x20)),
            ("shape 1025: record 0xf010 out of order", lambda b: b.patch("sheet", 236, picture + 26, "H", 0xF00D)),
        ]
        self.assertEqual(top + 8, fdg + 16)
        for expected, damage in cases:
            with self.subTest(expected):
                book = Book()
                damage(book)
                faults = lint(book.file())
                self.assertTrue(any(expected in fault for fault in faults), faults)

    def test_positions_and_slack(self):
        book = Book()
        book.position = 1
        self.assertIn("BoundSheet8 says 0", " ".join(lint(book.file())))
        book = Book()
        book.tail = b"\1"
        self.assertIn("bytes behind the last EOF", " ".join(lint(book.file())))

    def test_container(self):
        sound = Book().file()
        fat = 512 * (1 + 8 + 9)
        directory = fat + 512
        cases = [
            ("first DIFAT sector is 0x11 although there is none", 68, 0x11),
            ("1 FAT sectors, the header says 2", 44, 2),
            ("belongs to directory and to", fat + 4 * 16, 18),
            ("chain does not end", fat + 4 * 7, 3),
            ("is in a chain of nobody's", fat + 4 * 5, END),
            ("FAT sector 17 is marked 0xffffffff", fat + 4 * 17, FREE),
            ("'/Workbook' stands before '/Other'", directory + 128 + 68, FREE),
            ("entry 2 (Other) is not in the tree", directory + 128 + 68, FREE),
            ("4352 bytes in 8 sectors", directory + 256 + 116, 0),
        ]
        for expected, at, value in cases:
            with self.subTest(expected):
                data = bytearray(sound)
                struct.pack_into("<I", data, at, value)
                if expected.startswith("'/Workbook'"):
                    struct.pack_into("<I", data, directory + 128 + 72, 2)
                faults = lint(data)
                self.assertTrue(any(expected in fault for fault in faults), faults)


class CompareTest(unittest.TestCase):
    def differences(self, change):
        new = Book()
        change(new)
        return xlscompare.Comparison(bytes(Book().file()), bytes(new.file())).differences

    def test_same_and_allowed(self):
        self.assertEqual(self.differences(lambda b: None), [])
        self.assertEqual(self.differences(lambda b: b.move("sheet", 3000, 3)), ["sheet 0: record (3000) #0 changed: "
                                                                                "0500 became 0500"])
        self.assertEqual(self.differences(lambda b: b.patch("sheet", 520, 4, "H", 9)), [])

    def test_lost_and_changed(self):
        cases = [
            ("globals: record (2000): 1 became 0", lambda b: b.drop("globals", 2000)),
            ("globals: Font (49) #0 changed", lambda b: b.patch("globals", 49, 0, "H", 300)),
            ("shared strings", lambda b: b.patch("globals", 252, 11, "B", 66)),
            ("references to sheets changed", lambda b: b.globals.insert(-1, record(23, 1, 0, 0, 0))),
            ("names, states or kinds", lambda b: b.patch("globals", 133, 4, "B", 1)),
            ("sheet 0: record (3000): 1 became 0", lambda b: b.drop("sheet", 3000)),
            ("sheet 0: record (3000) #0 changed", lambda b: b.sheet.remove(record(60, 6))),
            ("drawings, objects and charts changed", lambda b: b.patch("sheet", 93, 0, "H", 9)),
            ("merged ranges: 1 became 1", lambda b: b.patch("sheet", 229, 2, "H", 1)),
            ("Row 0 changed", lambda b: b.patch("sheet", 520, 6, "H", 300)),
            ("cell 0,0", lambda b: b.patch("sheet", 638, 6, "I", 6)),
            ("cell 1,0", lambda b: b.patch("sheet", 519, 3, "B", 66)),
        ]
        for expected, change in cases:
            with self.subTest(expected):
                found = self.differences(change)
                self.assertTrue(any(expected in difference for difference in found), found)

    def test_streams(self):
        old = Book().file()
        new = bytearray(old)
        new[512 * 9 + 5] ^= 1
        self.assertEqual(xlscompare.Comparison(bytes(old), bytes(new)).differences, ["/Other: its bytes changed"])


if __name__ == "__main__":
    unittest.main()
