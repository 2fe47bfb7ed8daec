"""Drawings of binary workbooks: the picture list, and the shapes, objects, texts and notes of a sheet.

Written apart from the engine. What a drawing must keep to is checked on the way; faults go into the `faults` of the
objects. Used by xlsobjects.py, xlslint.py and xlstouched.py.
"""
import hashlib
import struct
import zlib

from xlsfile import BOF, CONTINUE, EOF, MAX_BODY, record_name

OBJ, TXO, NOTE = 93, 438, 28
DRAWING, SELECTION, GROUP = 236, 237, 235
DG, SPGR, SP, SOLVER, FDG = 0xF002, 0xF003, 0xF004, 0xF005, 0xF008
DGG, FDGG, BSTORE, FBSE = 0xF000, 0xF006, 0xF001, 0xF007
FSP, FOPT, CHILD_ANCHOR, ANCHOR, CLIENT_DATA, TEXTBOX = 0xF00A, 0xF00B, 0xF00F, 0xF010, 0xF011, 0xF00D
SP_ORDER = [0xF009, FSP, 0xF11D, FOPT, 0xF121, 0xF122, CHILD_ANCHOR, ANCHOR, CLIENT_DATA, TEXTBOX, 0xF121, 0xF122]
METAFILES = {0xF01A: 5, 0xF01B: 3, 0xF01C: 6}
BITMAPS = {0xF01D: 1, 0xF02A: 1, 0xF01E: 0, 0xF01F: 4, 0xF020: 7, 0xF029: 7}
OBJECT_NAMES = {0: "group", 1: "line", 2: "rectangle", 3: "oval", 4: "arc", 5: "chart", 6: "text", 7: "button",
                8: "picture", 9: "polygon", 11: "check box", 12: "option button", 13: "edit box", 14: "label",
                15: "dialog box", 16: "spinner", 17: "scroll bar", 18: "list box", 19: "group box", 20: "drop-down",
                25: "note", 30: "office art"}
PIB, FILL_BLIP, LINE_BLIP = 260, 390, 453


class Art:
    """A record of the tree with its place in the bytes of the whole drawing."""

    def __init__(self, data, at, end, faults, depth=0):
        first, self.type, self.len = struct.unpack_from("<HHI", data, at)
        self.ver, self.inst, self.at, self.end = first & 15, first >> 4, at, at + 8 + self.len
        self.children, self.body = [], data[at + 8:self.end]
        if self.end > end:
            faults.append("drawing record %#x at %d runs past its container" % (self.type, at))
            self.end = end
        if (self.ver == 15 or self.type == DG) and depth < 100:
            self.children = parse(data, at + 8, self.end, faults, depth + 1)

    def find(self, kind):
        return next((c for c in self.children if c.type == kind), None)

    def all(self, kind):
        return [c for c in self.children if c.type == kind]


def parse(data, at, end, faults, depth=0):
    found = []
    while at + 8 <= end:
        found.append(Art(data, at, end, faults, depth))
        at = found[-1].end
    if at != end:
        faults.append("%d bytes behind the last drawing record of a container" % (end - at))
    return found


def properties(shape):
    """(number, value) of the entries of a shape's first table."""
    table = shape.find(FOPT)
    if table is None:
        return {}
    count = min(table.inst, len(table.body) // 6)
    return {opid & 0x3FFF: value for opid, value in struct.iter_unpack("<HI", table.body[:6 * count])}


class Shape:
    def __init__(self, record, groups, is_group):
        self.record, self.groups, self.is_group = record, groups, is_group
        fsp = record.find(FSP)
        self.type = fsp.inst if fsp else None
        self.spid, self.flags = struct.unpack_from("<II", fsp.body) if fsp and len(fsp.body) >= 8 else (None, 0)
        self.properties = properties(record)
        self.obj = self.text = None

    def anchor(self):
        """flags, colL, dxL, rwT, dyT, colR, dxR, rwB, dyB of the shape or of the outermost group around it."""
        holders = [g.find(SP) for g in self.groups[:1]] + [self.record]
        for holder in holders:
            anchor = holder.find(ANCHOR) if holder else None
            if anchor is not None and len(anchor.body) == 18:
                return struct.unpack("<9H", anchor.body)
        return None


class Piece:
    def __init__(self, rid, body):
        self.id, self.parts, self.objects = rid, [body], []

    def size(self):
        return sum(map(len, self.parts))


class SheetDrawing:
    """From the records of a sheet. `shapes` in file order without the one of the drawing itself; `notes` as they come;
    `between` are the records in order as (id, body), embedded charts as one."""

    def __init__(self, flat):
        self.faults, self.pieces, self.notes, self.selection = [], [], [], None
        self.read_blocks(flat)
        self.data = b"".join(part for piece in self.pieces for part in piece.parts)
        self.roots = parse(self.data, 0, len(self.data), self.faults) if self.data else []
        self.dg = self.roots[0] if self.roots and self.roots[0].type == DG else None
        self.shapes, self.solver = [], None
        if self.data and (self.dg is None or len(self.roots) != 1):
            self.faults.append("the drawing is %d trees" % len(self.roots))
        if self.dg is not None:
            self.fdg = self.dg.find(FDG)
            self.top = self.dg.find(SPGR)
            self.solver = self.dg.find(SOLVER)
            if self.top is not None:
                self.walk(self.top, [])
            self.attach()

    def read_blocks(self, flat):
        depth, i, last = 0, 0, None
        while i < len(flat):
            record = flat[i]
            i += 1
            depth += (record.id == BOF) - (record.id == EOF)
            if depth != 1 or (record.id == BOF and depth == 1 and i == 1):
                if record.id == BOF and depth == 2 and last is not None:
                    chart = [record]
                    while i < len(flat) and depth > 1:
                        depth += (flat[i].id == BOF) - (flat[i].id == EOF)
                        chart.append(flat[i])
                        i += 1
                    last.objects.append((BOF, chart))
                continue
            if record.id == DRAWING:
                last = Piece(DRAWING, record.body)
                self.pieces.append(last)
            elif record.id == CONTINUE and last is not None and flat[i - 2].id in (DRAWING, CONTINUE, OBJ, TXO, EOF):
                if last.objects or not self.pieces:
                    last = Piece(CONTINUE, record.body)
                    self.pieces.append(last)
                else:
                    last.parts.append(record.body)
            elif record.id == OBJ:
                if last is None:
                    last = Piece(None, b"")
                    self.pieces.append(last)
                last.objects.append((OBJ, [record]))
            elif record.id == TXO:
                group = [record]
                if len(record.body) >= 14:
                    cch, runs = struct.unpack_from("<HH", record.body, 10)
                    while cch > 0 and i < len(flat) and flat[i].id == CONTINUE:
                        body = flat[i].body
                        cch -= (len(body) - 1) // (2 if body[:1] and body[0] & 1 else 1) if body else 0
                        group.append(flat[i])
                        i += 1
                    runs = runs if len(group) > 1 else 0
                    while runs > 0 and i < len(flat) and flat[i].id == CONTINUE:
                        runs -= len(flat[i].body)
                        group.append(flat[i])
                        i += 1
                if last is not None:
                    last.objects.append((TXO, group))
            elif record.id == SELECTION:
                self.selection = record.body
            elif record.id == NOTE:
                self.notes.append(Note(record.body))

    def of_charts(self):
        """The drawings of the charts in this one, and of those in them."""
        for piece in self.pieces:
            for kind, chart in piece.objects:
                if kind == BOF:
                    inner = SheetDrawing(chart)
                    yield inner
                    yield from inner.of_charts()

    def walk(self, group, groups):
        for number, child in enumerate(group.children):
            if child.type == SP:
                own = number == 0
                if not (own and not groups):
                    self.shapes.append(Shape(child, groups, own))
                else:
                    self.top_shape = Shape(child, groups, True)
            elif child.type == SPGR:
                self.walk(child, groups + [child])

    def attach(self):
        """Objects to shapes by where the pieces end: behind a shape's ClientData, and behind its ClientTextbox."""
        ends, at = {}, 0
        for piece in self.pieces:
            at += piece.size()
            if piece.objects:
                ends[at] = piece.objects
        for shape in self.shapes:
            data, box = shape.record.find(CLIENT_DATA), shape.record.find(TEXTBOX)
            if data is not None:
                objects = ends.get(data.end, [])
                if not objects or objects[0][0] != OBJ:
                    self.faults.append("shape %s has no Obj behind its ClientData" % shape.spid)
                else:
                    shape.obj = Obj(objects[0][1][0].body)
            if box is not None:
                objects = ends.get(box.end, [])
                if not objects or objects[0][0] != TXO:
                    self.faults.append("shape %s has no TxO behind its ClientTextbox" % shape.spid)
                else:
                    shape.text = txo_text(objects[0][1])

    def check(self):
        """What must hold of a drawing as a whole; the faults of reading are there too."""
        faults = self.faults
        if self.dg is None:
            return faults
        at = 0
        for number, piece in enumerate(self.pieces):
            at += piece.size()
            first_is_long = number == 0 and len(piece.parts[0]) == MAX_BODY
            expected = DRAWING if at <= MAX_BODY or first_is_long else CONTINUE
            if piece.size() and piece.id != expected:
                faults.append("a piece that ends at byte %d of the drawing lies in %s" % (at, record_name(piece.id)))
        for shape in self.shapes:
            kinds = [c.type for c in shape.record.children]
            place = 0
            for kind in kinds:
                try:
                    place = SP_ORDER.index(kind, place) + 1
                except ValueError:
                    faults.append("shape %s: record %#x out of order" % (shape.spid, kind))
        spids = [s.spid for s in self.shapes] + ([self.top_shape.spid] if self.top else [])
        if len(set(spids)) != len(spids):
            faults.append("a shape identifier stands twice")
        if self.fdg is not None:
            csp, last = struct.unpack_from("<II", self.fdg.body)
            if csp < len(spids):
                faults.append("FDG counts %d shapes of %d" % (csp, len(spids)))
            if last < max(spids, default=0):
                faults.append("FDG's last identifier is %d, a shape has %d" % (last, max(spids)))
        ids = [s.obj.id for s in self.shapes if s.obj]
        if len(set(ids)) != len(ids):
            faults.append("an object number stands twice")
        notes = {s.obj.id for s in self.shapes if s.obj and s.obj.ot == 25}
        for note in self.notes:
            if note.obj not in notes:
                faults.append("the note of row %d, column %d has no object" % (note.row, note.col))
        return faults


class Obj:
    def __init__(self, body):
        self.ot, self.id, self.flags = struct.unpack_from("<HHH", body, 4) if len(body) >= 10 else (None, None, 0)


class Note:
    def __init__(self, body):
        self.row, self.col, self.flags, self.obj = struct.unpack_from("<4H", body)
        cch, flags = struct.unpack_from("<HB", body, 8) if len(body) >= 11 else (0, 0)
        raw = body[11:11 + cch * (1 + (flags & 1))]
        self.author = raw.decode("utf-16le", "surrogatepass") if flags & 1 else raw.decode("latin-1")


def txo_text(group):
    cch = struct.unpack_from("<H", group[0].body, 10)[0]
    text = ""
    for record in group[1:]:
        if len(text) >= cch:
            break
        wide = record.body[:1] and record.body[0] & 1
        text += record.body[1:].decode("utf-16le", "surrogatepass") if wide else record.body[1:].decode("latin-1")
    return text[:cch]


class Picture:
    """An entry of the picture list: `kind` and `data` as the engine gives them, kind 255 where it gives none."""

    def __init__(self, record):
        self.record, self.kind, self.data, self.blip = record, 255, None, None
        self.uses = struct.unpack_from("<I", record.body, 24)[0]
        self.claimed_size = struct.unpack_from("<I", record.body, 20)[0]
        at = 36 + record.body[33]
        if at + 8 > len(record.body):
            return
        first, kind, size = struct.unpack_from("<HHI", record.body, at)
        self.blip, self.blip_size = kind, 8 + size
        body = record.body[at + 8:at + 8 + size]
        body = body[32 if first >> 4 & 1 else 16:]
        if kind in BITMAPS:
            self.kind, self.data = BITMAPS[kind], body[1:]
        elif kind in METAFILES:
            cb, compression, self.data = struct.unpack_from("<I", body)[0], body[32], body[34:]
            if compression == 0:
                try:
                    self.data = zlib.decompressobj().decompress(self.data)
                except zlib.error:
                    self.data = None
                if self.data is None or len(self.data) > cb:
                    self.data = None
                    return
            self.kind = METAFILES[kind]


class DrawingGroup:
    def __init__(self, flat):
        self.faults, self.pictures, data, inside = [], [], b"", False
        for record in flat:
            inside = record.id == GROUP or (inside and record.id == CONTINUE)
            if inside:
                data += record.body
        self.present = bool(data)
        roots = parse(data, 0, len(data), self.faults) if data else []
        self.dgg = roots[0] if roots and roots[0].type == DGG else None
        if data and len(roots) != 1:
            self.faults.append("the drawing group is %d trees" % len(roots))
        self.clusters = []
        if self.dgg is None:
            return
        fdgg = self.dgg.find(FDGG)
        if fdgg is not None:
            self.spid_max, cidcl, self.csp_saved, self.cdg_saved = struct.unpack_from("<4I", fdgg.body)
            self.clusters = list(struct.iter_unpack("<II", fdgg.body[16:16 + 8 * max(cidcl - 1, 0)]))
        store = self.dgg.find(BSTORE)
        if store is not None:
            self.pictures = [Picture(c) for c in store.all(FBSE)]
            if store.inst != min(len(store.children), 0xFFF):
                self.faults.append("the picture list says %d, it has %d" % (store.inst, len(store.children)))

    def check(self, drawings):
        faults, uses = self.faults, {}
        spids = {}
        for number, picture in enumerate(self.pictures):
            if picture.blip is not None and picture.claimed_size != picture.blip_size:
                faults.append("picture %d says %d bytes, it has %d" % (number, picture.claimed_size, picture.blip_size))
        for drawing in drawings:
            if drawing.dg is None:
                continue
            for shape in drawing.shapes + ([drawing.top_shape] if drawing.top else []):
                if shape.spid in spids:
                    faults.append("shape identifier %d is on two sheets" % shape.spid)
                spids[shape.spid] = True
                cluster = (shape.spid or 0) // 1024 - 1
                if drawing.fdg is not None and not (0 <= cluster < len(self.clusters)
                                                    and self.clusters[cluster][0] == drawing.fdg.inst):
                    faults.append("shape %s is in no cluster of drawing %d" % (shape.spid, drawing.fdg.inst))
                elif drawing.fdg is not None and shape.spid % 1024 >= self.clusters[cluster][1]:
                    faults.append("shape %s is beyond what its cluster says" % shape.spid)
                for key in (PIB, FILL_BLIP, LINE_BLIP):
                    value = shape.properties.get(key, 0)
                    if value > len(self.pictures):
                        faults.append("shape %s shows picture %d of %d" % (shape.spid, value, len(self.pictures)))
                    elif value:
                        uses[value] = uses.get(value, 0) + 1
        for value, count in uses.items():
            if self.pictures[value - 1].uses < count:
                faults.append("picture %d has %d uses, its entry says %d" % (value - 1, count,
                                                                             self.pictures[value - 1].uses))
        if spids and self.clusters and max(spids) >= self.spid_max > 1024 * (len(self.clusters) + 1) + 1:
            faults.append("spidMax %d is below shape %d" % (self.spid_max, max(spids)))
        return faults


def image_format(data, kind):
    """By the bytes, as far as the kind leaves it open."""
    if data is None:
        return "other"
    if data[:4] == b"\x89PNG":
        return "png"
    if data[:3] == b"\xff\xd8\xff":
        return "jpeg"
    if data[:3] == b"GIF":
        return "gif"
    if data[:4] == b"\xd7\xcd\xc6\x9a":
        return "wmf"
    if data[:2] == b"BM":
        return "bmp"
    if data[:2] in (b"II", b"MM") and data[2:3] == b"*" or data[:4] == b"MM\0*":
        return "tiff"
    if kind == 6:
        return "pict"
    if kind in (3, 5):
        return "emf" if data[40:44] == b" EMF" else "wmf"
    if data[:1] and data[0] in (12, 40, 64, 108, 124):
        return "dib"
    return "other"


def md5(data):
    return hashlib.md5(data).hexdigest()
