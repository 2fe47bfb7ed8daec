#!/usr/bin/env python3
"""fuzz_seeds.py SHARED CORPUS: seeds for the fuzz targets, cut from real files.

Takes small pieces of the workbooks and csv files of SHARED/corpus - a few records of a stream, a few rows of a sheet, the
head of a part - and statements, labels and options of this project's own tests, and writes 24 of them for each target to
CORPUS/TARGET/cut-KEY, where KEY comes from the content. A piece holds no more than it takes to show a form: at most
8 KB, texts included.
"""
import hashlib
import io
import pathlib
import re
import struct
import sys
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
WANTED = 24
LARGEST = 4096
SHEET_BOF, BOF, EOF = 0x0010, 2057, 10


# ---- binary workbooks

def stream_of(data):
    """The workbook stream of a compound file, None when there is none."""
    if data[:8] != b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1":
        return None
    shift, mini_shift = struct.unpack_from("<HH", data, 30)
    fats, directory, cutoff, mini_fat_at = (struct.unpack_from("<I", data, at)[0] for at in (44, 48, 56, 60))
    size = 1 << shift
    sector = lambda n: data[(n + 1) * size:(n + 2) * size]
    words = lambda bytes_: struct.unpack(f"<{len(bytes_) // 4}I", bytes_[: len(bytes_) // 4 * 4])
    fat = [w for at in struct.unpack_from("<109I", data, 76)[: min(fats, 109)] for w in words(sector(at))]

    def chain(first, table, piece, limit=20000):
        out = []
        while first < len(table) and len(out) < limit:
            out.append(piece(first))
            first = table[first]
        return b"".join(out)
    entries = chain(directory, fat, sector)
    root = None
    for at in range(0, len(entries) - 127, 128):
        length = struct.unpack_from("<H", entries, at + 64)[0]
        name = entries[at:at + max(length - 2, 0)].decode("utf-16-le", "replace").lower()
        start, total = struct.unpack_from("<II", entries, at + 116)
        if at == 0:
            root = start
        if name in ("workbook", "book"):
            if total >= cutoff:
                return chain(start, fat, sector)[:total]
            mini = chain(root, fat, sector)
            table = words(chain(mini_fat_at, fat, sector))
            return chain(start, table, lambda n: mini[n << mini_shift:(n + 1) << mini_shift])[:total]
    return None


def records_of(stream):
    at = 0
    while at + 4 <= len(stream):
        kind, size = struct.unpack_from("<HH", stream, at)
        if kind == 0 or at + 4 + size > len(stream):
            return
        yield kind, stream[at:at + 4 + size]
        at += 4 + size


def parts_of(stream):
    """Lists of records, one for the globals and each sheet: from a Bof to the Eof that closes it."""
    part, depth, parts = [], 0, []
    for kind, record in records_of(stream):
        part.append((kind, record))
        depth += (kind == BOF) - (kind == EOF)
        if depth == 0:
            parts.append(part)
            part = []
    return parts


def few(part, each, longest, total):
    """The first records of each kind that are short, in their order, Bof and Eof left out."""
    seen, out, size = {}, [], 0
    for kind, record in part[1:-1]:
        seen[kind] = seen.get(kind, 0) + 1
        if seen[kind] <= each and len(record) <= longest and size + len(record) <= total and kind not in (BOF, EOF):
            out.append(record)
            size += len(record)
    return out


def workbook_stream(parts):
    globals_, sheets = parts[0], [p for p in parts[1:] if len(p[0][1]) >= 8 and struct.unpack_from("<H", p[0][1], 6)[0] == SHEET_BOF]
    if not sheets:
        return None
    head = [r for r in few(globals_, 3, 160, 1800) if struct.unpack_from("<H", r)[0] not in (133, 47)]
    bound = next((r for k, r in globals_ if k == 133), None)
    if bound is None:
        return None
    eof = struct.pack("<HH", EOF, 0)
    return b"".join([globals_[0][1], *head, bound, eof, sheets[0][0][1], *few(sheets[0], 2, 120, 1200), eof])


def compound(stream, name, small):
    """A compound file of one stream: in the mini stream when it is small, else in sectors of its own."""
    end, free, fat_mark = 0xFFFFFFFE, 0xFFFFFFFF, 0xFFFFFFFD
    padded = lambda data, unit: data + bytes(-len(data) % unit)

    def entry(title, kind, child, start, size):
        text = title.encode("utf-16-le") + b"\0\0"
        return (padded(text, 64) + struct.pack("<HBBIII", len(text), kind, 1, free, free, child) + bytes(36)
                + struct.pack("<III", start, size, 0))
    fat, body = [fat_mark, end], b""
    def put(data):
        nonlocal body
        first, count = len(fat), (len(data) + 511) // 512
        fat.extend([first + i + 1 for i in range(count - 1)] + [end])
        body += padded(data, 512)
        return first
    if small:
        count = (len(stream) + 63) // 64
        mini_fat = put(b"".join(struct.pack("<I", i + 1 if i + 1 < count else end) for i in range(count)).ljust(512, b"\xff"))
        mini = put(padded(stream, 64))
        entries = entry("Root Entry", 5, 1, mini, count * 64) + entry(name, 2, free, 0, len(stream))
    else:
        mini_fat = end
        stream = stream.ljust(4096, b"\0")
        entries = entry("Root Entry", 5, 1, end, 0) + entry(name, 2, free, put(stream), len(stream))
    header = (b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(16) + struct.pack("<HHHHH", 62, 3, 0xFFFE, 9, 6) + bytes(6)
              + struct.pack("<IIIIIIIIII", 0, 1, 1, 0, 4096, mini_fat, int(small), end, 0, 0)
              + struct.pack("<I", free) * 108)
    table = b"".join(struct.pack("<I", w) for w in fat).ljust(512, b"\xff")
    return header + table + padded(entries, 512) + body


# ---- packages

LISTS = [("row", 3), ("c", 4), ("si", 5), ("xf", 6), ("font", 3), ("fill", 3), ("border", 2), ("numFmt", 4), ("dxf", 2),
         ("cellStyle", 2), ("mergeCell", 3), ("hyperlink", 2), ("conditionalFormatting", 2), ("dataValidation", 2),
         ("definedName", 4), ("sheet", 2), ("Override", 12), ("rgbColor", 3), ("col", 3), ("brk", 2), ("comment", 2),
         ("ext", 1), ("mruColor", 2), ("tableStyle", 1), ("sheetView", 1), ("a:fontScheme", 0), ("a:effectStyle", 1)]


def cut_xml(text):
    """The same part with the first items of its lists only."""
    for name, keep in LISTS:
        seen = 0
        def drop(match):
            nonlocal seen
            seen += 1
            return match.group() if seen <= keep else ""
        text = re.sub(rf"<{name}(?:\s[^<>]*)?(?:/>|(?<!/)>.*?</{name}>)", drop, text, flags=re.S)
    return text


def package_parts(path):
    try:
        with zipfile.ZipFile(path) as archive:
            return {i.filename: archive.read(i) for i in archive.infolist() if i.file_size < 400000}
    except Exception:
        return {}


def as_text(data):
    try:
        return data.decode("utf-8-sig")
    except UnicodeDecodeError:
        return None


def small_package(parts):
    """The parts that a workbook cannot do without, and its first sheet, cut; None when that stays large."""
    out = {}
    for name, data in parts.items():
        plain = name.lower()
        if not (plain.endswith(".rels") or plain in ("[content_types].xml", "xl/workbook.xml", "xl/styles.xml",
                                                     "xl/sharedstrings.xml") or re.match(r"xl/worksheets/sheet1\.xml$", plain)):
            continue
        text = as_text(data)
        if text is None:
            return None
        text = cut_xml(text)
        if "styles" in plain and len(text) > 1500:
            continue
        out[name] = text
    total = sum(len(t) + len(n) for n, t in out.items())
    return out if out and total <= 2 * LARGEST and any("worksheets" in n for n in out) else None


def archive(parts, method):
    target = io.BytesIO()
    with zipfile.ZipFile(target, "w", method) as out:
        for name, text in parts.items():
            out.writestr(zipfile.ZipInfo(name), text, method)
    return target.getvalue()


# ---- the project's own texts

def literals(pattern, text):
    return [re.sub(r"\\(.)", lambda m: {"n": "\n", "t": "\t"}.get(m.group(1), m.group(1)), m) for m in re.findall(pattern, text)]


def own_texts():
    tests = ROOT / "tests"
    labels = literals(r'\{"((?:[^"\\]|\\.)+)"', (tests / "host/values/range_test.cpp").read_text())
    options = literals(r'\{"((?:[^"\\]|\\.)+)"', (tests / "host/sources/options_test.cpp").read_text())
    scripts = [block for path in sorted((tests / "statements").rglob("*_test.cpp"))
               for block in re.findall(r'R"s\(\n(.*?)\)s"', path.read_text(), re.S) if "declare" in block]
    scripts += literals(r'\{"(declare (?:[^"\\]|\\.)+)"', (tests / "refhost/script_errors_test.cpp").read_text())
    return labels, options, scripts


# ----

def spread(items, count=WANTED):
    """Items far apart in the list, so that they differ."""
    items = list(dict.fromkeys(items))
    return items if len(items) <= count else [items[i * len(items) // count] for i in range(count)]


def write(seeds, target):
    for name, all_ in sorted(seeds.items()):
        folder = target / name
        folder.mkdir(parents=True, exist_ok=True)
        for old in folder.glob("cut-*"):
            old.unlink()
        chosen = spread([s for s in all_ if 0 < len(s) <= 2 * LARGEST])
        for seed in chosen:
            (folder / f"cut-{hashlib.sha256(seed).hexdigest()[:10]}").write_bytes(seed)
        print(f"{name}: {len(chosen)} of {len(all_)}, {sum(map(len, chosen))} bytes")



def main():
    corpus, target = pathlib.Path(sys.argv[1]) / "corpus", pathlib.Path(sys.argv[2])
    seeds = {}
    add = lambda name, data: seeds.setdefault(name, []).append(data if isinstance(data, bytes) else data.encode())
    for path in sorted((corpus / "xls").iterdir()):
        try:
            stream = stream_of(path.read_bytes())
            parts = parts_of(stream) if stream else []
        except (struct.error, IndexError, ValueError):
            continue
        if len(parts) < 2:
            continue
        add("record_stream", b"".join(few(parts[0], 1, 200, 900)))
        for sheet in parts[1:2]:
            piece = b"".join(few(sheet, 2, 200, 1800))
            if len(piece) > 200:
                add("sheet_stream", piece)
        if whole := workbook_stream(parts):
            add("workbook_stream", whole)
            small = len(whole) % 3 != 0
            add("compound_file", compound(whole, "Workbook" if len(whole) % 5 else "Book", small))
            if small:
                add("book_load", compound(whole, "Workbook", True))
    for path in sorted((corpus / "xlsx").iterdir()):
        parts = package_parts(path)
        for name, data in parts.items():
            text = as_text(data)
            if text is None or not name.endswith((".xml", ".rels", ".vml")):
                continue
            cut = cut_xml(text)
            if "worksheets/sheet" in name and not name.endswith(".rels") and 300 < len(cut) <= LARGEST:
                add("worksheet_unmarshal", cut)
            elif name.endswith("styles.xml") and len(cut) <= LARGEST:
                add("styles_unmarshal", cut)
            elif 300 < len(cut) < 1500:
                add("xml_reader", cut)
        if package := small_package(parts):
            add("package_load", "".join(f"={n}\n{t}\n" for n, t in package.items()))
            add("book_load", archive(package, zipfile.ZIP_DEFLATED))
        if little := dict([(n, cut) for n, d in sorted(parts.items(), key=lambda p: len(p[1]))
                           if (cut := as_text(d)) and len(cut) < 900][:3]):
            method = (zipfile.ZIP_DEFLATED, zipfile.ZIP_STORED, zipfile.ZIP_BZIP2)[len(seeds.get("zip_reader", [])) % 3]
            add("zip_reader", archive(little, method))
    for path in sorted((corpus / "csv").iterdir()):
        data = path.read_bytes()
        for n, at in enumerate((0, len(data) // 3, len(data) * 2 // 3)):
            line = data.find(b"\n", at) + 1 if at else 0
            add("csv_load", bytes([(7 * n + len(data)) & 15]) + data[line:line + 300])
    for name, texts in zip(("label", "options", "script"), own_texts()):
        for text in texts:
            if len(text) <= LARGEST:
                add(name, text)
    write(seeds, target)


if __name__ == "__main__":
    main()
