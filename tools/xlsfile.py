"""Compound files and the record streams of binary workbooks, for the tools beside this file.

Written apart from the engine, so that the two do not share a mistake. A fault that keeps a file from being read raises
Fault; what is merely wrong is added to `faults` of the object.
"""
import struct

FREE, END, FAT, DIFAT = 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD, 0xFFFFFFFC
MAX_BODY = 8224

BOF, EOF, CONTINUE = 2057, 10, 60
CONTINUES = {60, 2066, 2165, 2175}
FOLLOWERS = {659: {2194}, 157: {158, 2174}, 440: {2048}, 2190: {2191, 2192}}

NAMES = {
    6: "Formula", 10: "Eof", 13: "CalcMode", 18: "Protect", 20: "Header", 21: "Footer", 23: "ExternSheet", 24: "Lbl",
    28: "Note", 29: "Selection", 35: "ExternName", 49: "Font", 60: "Continue", 61: "Window1", 65: "Pane", 77: "Pls",
    85: "DefColWidth", 89: "XCT", 90: "CRN", 92: "WriteAccess", 93: "Obj", 125: "ColInfo", 128: "Guts", 129: "WsBool",
    133: "BoundSheet8", 140: "Country", 146: "Palette", 157: "AutoFilterInfo", 158: "AutoFilter", 160: "Scl",
    161: "Setup", 189: "MulRk", 190: "MulBlank", 214: "RString", 215: "DBCell", 224: "XF", 229: "MergeCells",
    235: "MsoDrawingGroup", 236: "MsoDrawing", 252: "SST", 253: "LabelSst", 255: "ExtSST", 317: "RRTabId",
    430: "SupBook", 438: "TxO", 440: "HLink", 442: "CodeName", 449: "RecalcId", 512: "Dimensions", 513: "Blank",
    515: "Number", 516: "Label", 517: "BoolErr", 519: "String", 520: "Row", 523: "Index", 545: "Array", 566: "Table",
    574: "Window2", 638: "RK", 659: "Style", 1054: "Format", 1212: "ShrFmla", 2057: "Bof", 2146: "SheetExt",
}


class Fault(Exception):
    pass


def record_name(rid):
    return NAMES.get(rid, "record") + " (%d)" % rid


class Entry:
    def __init__(self, raw, number):
        size, self.type, self.color = struct.unpack_from("<HBB", raw, 64)
        self.number = number
        self.name = raw[:max(0, min(size, 64) - 2)].decode("utf-16le", "replace")
        self.name_size = size
        self.left, self.right, self.child = struct.unpack_from("<III", raw, 68)
        self.clsid, self.state = raw[80:96], raw[96:100]
        self.times = raw[100:116]
        self.start, self.size = struct.unpack_from("<II", raw, 116)
        self.path = None


class CompoundFile:
    """Header, tables, directory; `entries` are those in use, with their `path` in the tree of storages."""

    def __init__(self, data):
        self.data, self.faults, self.owner = data, [], {}
        if data[:8] != bytes.fromhex("D0CF11E0A1B11AE1"):
            raise Fault("not a compound file")
        self.minor, self.major, order, shift, mini_shift = struct.unpack_from("<HHHHH", data, 24)
        (self.dir_sectors, self.fat_sectors, self.first_dir, _, self.cutoff, self.first_mini_fat,
         self.mini_fat_sectors, self.first_difat, self.difat_sectors) = struct.unpack_from("<9I", data, 40)
        if order != 0xFFFE or not 7 <= shift <= 20 or mini_shift > shift:
            raise Fault("header: byte order %#x, shifts %d and %d" % (order, shift, mini_shift))
        self.sector_size, self.mini_size = 1 << shift, 1 << mini_shift
        self.sectors = (len(data) - 1) // self.sector_size
        if len(data) % self.sector_size:
            self.fault("size %d is no multiple of the sectors' %d" % (len(data), self.sector_size))
        self.read_fat()
        self.read_directory()
        self.read_mini()

    def fault(self, text):
        self.faults.append(text)

    def sector(self, number):
        at = (number + 1) * self.sector_size
        return self.data[at:at + self.sector_size]

    def claim(self, number, what):
        if number in self.owner:
            self.fault("sector %d belongs to %s and to %s" % (number, self.owner[number], what))
        self.owner[number] = what

    def read_fat(self):
        numbers = list(struct.unpack_from("<109I", self.data, 76))
        link, per = self.first_difat, self.sector_size // 4
        found = 0
        if self.difat_sectors == 0 and link != END:
            self.fault("header: first DIFAT sector is %#x although there is none" % link)
        while self.difat_sectors and link < FAT:
            if link >= self.sectors or found > self.difat_sectors:
                raise Fault("DIFAT chain leaves the file or does not end")
            self.claim(link, "DIFAT")
            entries = struct.unpack("<%dI" % per, self.sector(link))
            numbers += entries[:-1]
            link = entries[-1]
            found += 1
        if self.difat_sectors and link != END:
            self.fault("DIFAT chain ends with %#x" % link)
        if found != self.difat_sectors:
            self.fault("%d DIFAT sectors, the header says %d" % (found, self.difat_sectors))
        fat_at = [n for n in numbers if n != FREE]
        if len(fat_at) != self.fat_sectors:
            self.fault("%d FAT sectors, the header says %d" % (len(fat_at), self.fat_sectors))
        self.fat = []
        for number in fat_at:
            if number >= self.sectors:
                raise Fault("FAT sector %d is beyond the file" % number)
            self.claim(number, "FAT")
            self.fat += struct.unpack("<%dI" % per, self.sector(number))
        for number in fat_at:
            if number < len(self.fat) and self.fat[number] != FAT:
                self.fault("FAT sector %d is marked %#x" % (number, self.fat[number]))

    def chain(self, start, what, claim=True):
        sectors, number = [], start
        while number != END:
            if number >= len(self.fat) or number >= self.sectors:
                self.fault("%s: chain goes to sector %#x" % (what, number))
                break
            if len(sectors) > self.sectors:
                self.fault("%s: chain does not end" % what)
                break
            if claim:
                self.claim(number, what)
            sectors.append(number)
            number = self.fat[number]
        return sectors

    def read_directory(self):
        raw = b"".join(self.sector(n) for n in self.chain(self.first_dir, "directory"))
        self.all = [Entry(raw[i:i + 128], i // 128) for i in range(0, len(raw) - 127, 128)]
        if not self.all or self.all[0].type != 5:
            raise Fault("directory: the first entry is no root")
        self.all[0].path = ""
        seen = {0}
        for entry in self.walk(self.all[0].child, "", seen, 0):
            pass
        for entry in self.all:
            if entry.type != 0 and entry.number not in seen:
                self.fault("directory: entry %d (%s) is not in the tree" % (entry.number, entry.name))
        self.entries = [e for e in self.all if e.path is not None and e.type != 0]

    def walk(self, number, prefix, seen, depth):
        """The entries of one storage in the order of its tree; deep trees are walked without recursion."""
        stack, order = [], []
        while stack or number != FREE:
            while number != FREE:
                if number >= len(self.all) or number in seen:
                    self.fault("directory: link to entry %#x, which is none or linked twice" % number)
                    break
                seen.add(number)
                stack.append(self.all[number])
                number = self.all[number].left
            if not stack:
                break
            entry = stack.pop()
            entry.path = prefix + "/" + entry.name
            order.append(entry)
            number = entry.right
        for one, next_one in zip(order, order[1:]):
            if (len(one.name), one.name.upper()) >= (len(next_one.name), next_one.name.upper()):
                self.fault("directory: %r stands before %r" % (one.path, next_one.path))
        for entry in order:
            if entry.child != FREE and depth < 64:
                self.walk(entry.child, entry.path, seen, depth + 1)
        return order

    def read_mini(self):
        self.mini_fat, self.mini_stream = [], b""
        if self.first_mini_fat < DIFAT and self.mini_fat_sectors:
            chain = self.chain(self.first_mini_fat, "mini FAT")
            if len(chain) != self.mini_fat_sectors:
                self.fault("%d mini FAT sectors, the header says %d" % (len(chain), self.mini_fat_sectors))
            for number in chain:
                self.mini_fat += struct.unpack("<%dI" % (self.sector_size // 4), self.sector(number))
        root = self.all[0]
        if root.start < DIFAT and root.size:
            self.mini_stream = b"".join(self.sector(n) for n in self.chain(root.start, "mini stream"))
        self.mini_owner = {}

    def stream(self, entry, claim=False):
        """The entry's bytes. With `claim` its sectors must belong to nobody else."""
        if entry.size == 0:
            return b""
        if entry.number == 0:
            return self.mini_stream[:entry.size]
        if entry.size >= self.cutoff:
            chain = self.chain(entry.start, entry.path, claim)
            need = -(-entry.size // self.sector_size)
            if claim and len(chain) != need:
                self.fault("%s: %d bytes in %d sectors" % (entry.path, entry.size, len(chain)))
            return b"".join(self.sector(n) for n in chain)[:entry.size]
        parts, number = [], entry.start
        while number != END:
            if number >= len(self.mini_fat) or len(parts) > len(self.mini_fat):
                self.fault("%s: mini chain goes to %#x" % (entry.path, number))
                break
            if claim and number in self.mini_owner:
                self.fault("mini sector %d belongs to %s and to %s" % (number, self.mini_owner[number], entry.path))
            self.mini_owner[number] = entry.path
            parts.append(self.mini_stream[number * self.mini_size:(number + 1) * self.mini_size])
            number = self.mini_fat[number]
        data = b"".join(parts)
        if len(data) < entry.size:
            self.fault("%s: %d bytes in %d mini sectors" % (entry.path, entry.size, len(parts)))
        return data[:entry.size]

    def main(self):
        """The workbook's stream entry: under the root, "Workbook" before "Book"."""
        for name in ("workbook", "book"):
            for entry in self.entries:
                if entry.type == 2 and entry.path.lower() == "/" + name:
                    return entry
        raise Fault("no workbook stream")


class Record:
    __slots__ = ("id", "body", "at", "next")

    def __init__(self, rid, body, at):
        self.id, self.body, self.at = rid, body, at
        self.next = []  # what continues it

    def u16(self, offset):
        return struct.unpack_from("<H", self.body, offset)[0]

    def u32(self, offset):
        return struct.unpack_from("<I", self.body, offset)[0]

    def wire(self):
        """All bodies with their identifiers, for comparison."""
        return [(self.id, self.body)] + [pair for r in self.next for pair in r.wire()]


def records(stream):
    """All records up to the end of the last substream, and where that ends."""
    out, at, depth = [], 0, 0
    substreams = 0
    while at + 4 <= len(stream):
        rid, size = struct.unpack_from("<HH", stream, at)
        if depth == 0 and rid != BOF:
            break
        if at + 4 + size > len(stream):
            raise Fault("%s at %d runs past the end of the stream" % (record_name(rid), at))
        out.append(Record(rid, stream[at + 4:at + 4 + size], at))
        depth += (rid == BOF) - (rid == EOF)
        substreams += depth == 0
        at += 4 + size
    if depth:
        raise Fault("the last substream has no EOF")
    return out, at


def grouped(flat):
    """Records with what continues them inside."""
    out = []
    for record in flat:
        if out and (record.id in CONTINUES or record.id in FOLLOWERS.get(out[-1].id, ())):
            out[-1].next.append(record)
        else:
            out.append(record)
    return out


def substreams(flat):
    """Lists of records from Bof to EOF; embedded ones stay within theirs."""
    out, depth = [], 0
    for record in flat:
        if depth == 0:
            out.append([])
        out[-1].append(record)
        depth += (record.id == BOF) - (record.id == EOF)
    return out


class TextReader:
    """Bytes of a record and its CONTINUE records, with the flags byte where a text is cut."""

    def __init__(self, record):
        self.parts = [record.body] + [r.body for r in record.next if r.id == CONTINUE]
        self.part, self.at = 0, 0

    def left(self):
        return len(self.parts[self.part]) - self.at

    def bytes(self, n):
        out = b""
        while len(out) < n:
            if not self.left():
                if self.part + 1 == len(self.parts):
                    raise Fault("text ends early")
                self.part, self.at = self.part + 1, 0
                continue
            piece = self.parts[self.part][self.at:self.at + n - len(out)]
            self.at += len(piece)
            out += piece
        return out

    def u16(self):
        return struct.unpack("<H", self.bytes(2))[0]

    def text(self, cch, flags):
        out, wide = [], flags & 1
        while cch:
            if not self.left():
                wide = self.bytes(1)[0] & 1
            n = min(cch, self.left() // (2 if wide else 1))
            if n == 0:
                raise Fault("a character is cut by a record's end")
            raw = self.bytes(n * (2 if wide else 1))
            out.append(raw.decode("utf-16le", "surrogatepass") if wide else raw.decode("latin-1"))
            cch -= n
        return "".join(out)


def shared_strings(sst):
    """(text, runs, phonetic bytes) of every string, with the counts of the head."""
    reader = TextReader(sst)
    total, unique = struct.unpack("<II", reader.bytes(8))
    strings = []
    for _ in range(unique):
        cch, flags = reader.u16(), reader.bytes(1)[0]
        runs = reader.u16() if flags & 8 else 0
        phonetic = struct.unpack("<I", reader.bytes(4))[0] if flags & 4 else 0
        text = reader.text(cch, flags)
        pairs = [struct.unpack("<HH", reader.bytes(4)) for _ in range(runs)]
        strings.append((text, pairs, reader.bytes(phonetic)))
    rest = reader.left() + sum(len(p) for p in reader.parts[reader.part + 1:])
    return total, strings, rest


def cached_text(record):
    """The text of a String record and the bytes that are left behind it."""
    reader = TextReader(record)
    cch = reader.u16()
    text = reader.text(cch, reader.bytes(1)[0]) if cch else ""
    return [(519, text), (CONTINUE, b"".join(reader.parts[reader.part:])[reader.at:])]


def expand_cells(flat):
    """((row, col), kind, ixfe, value) of each cell of a sheet's records, in their order; embedded charts left out.

    kind is RK, Number, LabelSst, Blank, BoolErr, Label or Formula; a formula's value is all its records.
    """
    depth, i = 0, 0
    while i < len(flat):
        r = flat[i]
        i += 1
        depth += (r.id == BOF) - (r.id == EOF)
        if depth != 1:
            continue
        b = r.body
        if r.id in (189, 190):
            width = 6 if r.id == 189 else 2
            row, first = struct.unpack_from("<HH", b)
            for k in range((len(b) - 6) // width):
                ixfe = struct.unpack_from("<H", b, 4 + k * width)[0]
                value = b[6 + k * width:10 + k * width] if r.id == 189 else b""
                yield (row, first + k), "RK" if r.id == 189 else "Blank", ixfe, value
        elif r.id in (638, 515, 253, 513, 517, 516, 214):
            row, col, ixfe = struct.unpack_from("<HHH", b)
            kind = {638: "RK", 515: "Number", 253: "LabelSst", 513: "Blank", 517: "BoolErr"}.get(r.id, "Label")
            end = {638: 10, 515: 14, 253: 10, 513: 6, 517: 8}.get(r.id, len(b))
            value = b[6:end]
            if r.id == 516:
                whole = Record(r.id, b[6:], r.at)
                whole.next = list(r.next)
                while i < len(flat) and flat[i].id == CONTINUE:
                    whole.next.append(flat[i])
                    i += 1
                value = cached_text(whole)[0]  # bytes behind the text are no part of it
            yield (row, col), kind, ixfe, value
        elif r.id in (6, 1030):  # the latter in files of old writers
            parts = [(6, b)]
            if len(b) == 2 and i < len(flat):
                r, b = flat[i], flat[i].body
                parts.append((6, b))
                i += 1
            while i < len(flat) and flat[i].id in (545, 566, 1212, 519):
                r = Record(flat[i].id, flat[i].body, flat[i].at)
                r.next = list(flat[i].next)
                i += 1
                while i < len(flat) and flat[i].id == CONTINUE:
                    r.next.append(flat[i])
                    i += 1
                # A text may be cut elsewhere.
                parts += cached_text(r) if r.id == 519 else r.wire()
            row, col, ixfe = struct.unpack_from("<HHH", b)
            yield (row, col), "Formula", ixfe, parts
