#!/usr/bin/env python3
"""fuzz_seeds_features.py SHARED CORPUS: more seeds cut from real files, for formulas, names, features and drawings.

Writes CORPUS/TARGET/cut-KEY as fuzz_seeds.py does, 24 for each of the targets whose bytes are no records or parts.
"""
import gzip
import json
import pathlib
import re
import struct
import sys

from fuzz_seeds import LARGEST, as_text, cut_xml, package_parts, parts_of, stream_of, write

FORMULA, DRAWING_GROUP, CONTINUE = 6, 235, 60
IMAGES = (".png", ".jpeg", ".jpg", ".gif", ".bmp", ".wmf", ".emf", ".tiff", ".tif")
# Parts that a package of features needs beside its sheets.
NEEDED = ("[content_types].xml", "_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels")


def token_streams(parts):
    """Token streams of cells: 22 bytes of cell and value, their length, and they."""
    for part in parts[1:]:
        for kind, record in part:
            if kind == FORMULA and len(record) > 26:
                size = struct.unpack_from("<H", record, 24)[0]
                if 6 <= size <= 200 and len(record) >= 26 + size:
                    yield record[26:26 + size]


def kinds_of(items, key):
    """One item for each value of the key: forms that differ, not the first of one form."""
    return list({key(item): item for item in items}.values())


def drawing_group(parts):
    body, taking = b"", False
    for kind, record in parts[0]:
        taking = kind == DRAWING_GROUP or (taking and kind == CONTINUE)
        if taking:
            body += record[4:]
    return body if len(body) <= LARGEST else body[:LARGEST]


def package(parts, wanted):
    """The parts that `wanted` names and what they need, cut, as the text of an archive; None when that stays large."""
    out = {}
    for name, data in sorted(parts.items()):
        plain = name.lower()
        if plain not in NEEDED and not re.search(r"xl/worksheets/(_rels/)?sheet\d\.xml", plain) and not wanted(plain):
            continue
        text = as_text(data)
        if text is None or "\n=" in text:
            return None
        out[name] = cut_xml(text)
    total = sum(len(t) + len(n) + 3 for n, t in out.items())
    return "".join(f"={n}\n{t}\n" for n, t in out.items()) if total <= 2 * LARGEST else None


def of_binary(path, add):
    try:
        stream = stream_of(path.read_bytes())
        parts = parts_of(stream) if stream else []
    except (struct.error, IndexError, ValueError):
        return
    if len(parts) < 2:
        return
    for tokens in kinds_of(token_streams(parts), lambda t: (t[0], t[-1], len(t) // 16)):
        add("formula_tokens", tokens)
    if group := drawing_group(parts):
        add("drawing_group", group)


def of_package(path, add):
    parts = package_parts(path)
    texts = {name: text for name, data in parts.items() if (text := as_text(data)) is not None}
    sheets = "".join(text for name, text in texts.items() if "worksheets/sheet" in name.lower())
    for name, data in parts.items():
        if name.lower().endswith(IMAGES):
            add("image_header", data[:700])
    for code in set(re.findall(r'formatCode="([^"]*)"', texts.get("xl/styles.xml", ""))):
        add("number_sample", code.replace("&quot;", '"').replace("&amp;", "&"))
    for sheet, text in re.findall(r"<definedName [^>]*>('?([^<>!]+?)'?![^<>]*)<", texts.get("xl/workbook.xml", "")) or ():
        add("name_text", bytes([len(sheet) % 32, len(text) % 8]) + (text.strip("'") + "\n" + sheet).encode())
    if any("drawing" in n.lower() or "comments" in n.lower() or "ctrlprops" in n.lower() for n in parts):
        if found := package(parts, lambda n: re.search(r"drawing|comment|ctrlprop", n) and not n.endswith(".vml")):
            add("package_objects", found)
    if re.search(r"<(mergeCell|rowBreaks|colBreaks|hyperlink|pageSetup|headerFooter|pane)\b", sheets):
        if found := package(parts, lambda n: False):
            add("sheet_features", found)
    if "<autoFilter" in sheets or any("tables/" in n for n in parts):
        if found := package(parts, lambda n: "tables/" in n):
            add("sheet_filter", found)


def texts_of_formulas(folder, add):
    for path in sorted(folder.glob("*.json.gz")):
        found = re.findall(r'"((?:[^"\\]|\\.){12,160})"', gzip.decompress(path.read_bytes()).decode("utf-8", "replace"))
        texts = [json.loads(f'"{t}"') for t in found if re.search(r"[(+*/&]|!", t)]
        for text in kinds_of(texts, lambda t: tuple(sorted(set(re.findall(r"[A-Z]{2,}(?=\()", t)))))[:4]:
            add("formula_text", b"0" + text.lstrip("=").encode("latin-1", "replace"))


def main():
    corpus, target = pathlib.Path(sys.argv[1]) / "corpus", pathlib.Path(sys.argv[2])
    seeds = {}
    add = lambda name, data: seeds.setdefault(name, []).append(data if isinstance(data, bytes) else data.encode())
    for path in sorted((corpus / "xls").iterdir()):
        of_binary(path, add)
    for path in sorted((corpus / "xlsx").iterdir()):
        of_package(path, add)
    texts_of_formulas(corpus / "formulas", add)
    write(seeds, target)


if __name__ == "__main__":
    main()
