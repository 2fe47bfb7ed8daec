#!/usr/bin/env python3
"""compare_parts.py PROGRAM CORPUS [FILE...]: binds every part of the good workbooks that has a class, writes it
anew with bound_roundtrip (PROGRAM), and compares the two as XML trees.

CORPUS has manifest.tsv and the folder xlsx. A part holds when nothing of it is missing, changed or added.
Ignored, because no reader can tell them apart: order of attributes, prefixes, unused declarations, comments and
instructions, white space between elements, the order of children where the schema's order differs, and other
spellings of one value (1 and true, 15 and 15.0, hexadecimal digits of either case). The exit code is 1 when a
part does not hold; `--list` also names those that hold.
"""

import argparse
import collections
import csv
import io
import os
import posixpath
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
import zipfile

MC = "http://schemas.openxmlformats.org/markup-compatibility/2006"
SPACE = "{http://www.w3.org/XML/1998/namespace}space"
# Attributes whose values are prefixes: they are compared by what these stand for.
PREFIX_LISTS = {f"{{{MC}}}{name}" for name in ("Ignorable", "ProcessContent", "MustUnderstand")} | {"Requires"}
# Parts of these content types or names are bound; the ends are enough.
BOUND = (
    "sheet.main+xml", "macroEnabled.main+xml", "template.main+xml", "worksheet+xml", "styles+xml",
    "sharedStrings+xml", "table+xml", "comments+xml", "drawing+xml", "theme+xml", "controlproperties+xml",
)  # fmt: skip
# Elements that hold elements only: white space in an empty one means nothing.
CONTAINERS = {"sheetData", "row", "sst", "si", "Relationships", "Types"}
# What a writer may add to a root.
ADDED = {f"{{{MC}}}Ignorable"}


def parse(data):
    """The root element, with prefix lists replaced by the namespaces that they name."""
    scopes, pending, root, stack = [{}], {}, None, []
    for event, item in ET.iterparse(io.BytesIO(data), events=("start-ns", "start", "end")):
        if event == "start-ns":
            pending[item[0]] = item[1]
        elif event == "start":
            scopes.append({**scopes[-1], **pending})
            pending = {}
            root = item if root is None else root
            for name in PREFIX_LISTS & item.attrib.keys():
                names = item.attrib[name].split()
                item.attrib[name] = " ".join(sorted(scopes[-1].get(n, "undeclared " + n) for n in names))
        else:
            scopes.pop()
    return root


def same_value(a, b):
    if a == b:
        return True
    a, b = " ".join(a.split()), " ".join(b.split())
    spell = {"1": "true", "0": "false", "on": "true", "off": "false"}
    if a == b or spell.get(a, a) == spell.get(b, b):
        return True
    if not set(a + b) - set("0123456789abcdefABCDEF") and ("0" * (len(a) % 2) + a).upper() == b.upper():
        return True
    try:
        return abs(float(a) - float(b)) <= 1e-13 * max(abs(float(a)), 1e-300) or float(a) == float(b)
    except ValueError:
        return False


def text_of(node, text):
    """Text that counts: white space between elements does not."""
    text = text or ""
    leaf = len(node) == 0 and node.tag.rpartition("}")[2] not in CONTAINERS
    return text if text.strip() or leaf else ""


def differences(a, b, path, is_root=False):
    """What differs between two elements, as short texts."""
    where = path + "/" + a.tag.rpartition("}")[2]
    if a.tag != b.tag:
        return [f"{where}: became {b.tag}"]
    found = []
    for name in sorted(a.attrib.keys() | b.attrib.keys()):
        short = name.rpartition("}")[2]
        if name not in b.attrib:
            found.append(f"{where}/@{short}: lost")
        elif name not in a.attrib:
            if not (is_root and name in ADDED):
                found.append(f"{where}/@{short}: added {b.attrib[name]!r}")
        elif not same_value(a.attrib[name], b.attrib[name]):
            found.append(f"{where}/@{short}: {a.attrib[name]!r} became {b.attrib[name]!r}")
    if not same_text(text_of(a, a.text), text_of(b, b.text)):
        found.append(f"{where}: text {a.text!r} became {b.text!r}")
    return found + child_differences(list(a), list(b), where)


def same_text(a, b):
    return a.replace("\r\n", "\n") == b.replace("\r\n", "\n")


def child_differences(a, b, where):
    if [c.tag for c in a] != [c.tag for c in b]:
        # Children of one name keep their order among themselves; the names stand in the schema's order.
        count_a, count_b = collections.Counter(c.tag for c in a), collections.Counter(c.tag for c in b)
        if count_a != count_b:
            gone, new = count_a - count_b, count_b - count_a
            short = lambda c: ", ".join(f"{n}x {t.rpartition('}')[2]}" for t, n in c.items())  # noqa: E731
            return [f"{where}: lost {short(gone)}" if gone else f"{where}: added {short(new)}"]
        a, b = sorted(a, key=lambda c: c.tag), sorted(b, key=lambda c: c.tag)
    found = []
    for one, other in zip(a, b):
        found += differences(one, other, where)
        if len(found) > 20:
            break
    return found


def bound_parts(package):
    """Names of the parts of a package that have a class."""
    try:
        types = parse(package.read("[Content_Types].xml"))
    except KeyError:
        return []
    defaults = {t.get("Extension", "").lower(): t.get("ContentType", "") for t in types if t.tag.endswith("Default")}
    overrides = {t.get("PartName", "").lower(): t.get("ContentType", "") for t in types if t.tag.endswith("Override")}
    names = []
    for name in package.namelist():
        path = "/" + name.replace("\\", "/").lstrip("/")
        kind = overrides.get(path.lower()) or defaults.get(posixpath.splitext(path)[1][1:].lower(), "")
        if path.lower() == "/[content_types].xml" or path.endswith(".rels") or kind.endswith(BOUND) and "threaded" not in kind:
            names.append(name)
    return names


def workbooks(corpus, wanted):
    with open(os.path.join(corpus, "manifest.tsv"), encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE):
            path = os.path.join(corpus, "xlsx", row["file"])
            if row["expect"] == "load" and os.path.exists(path) and (not wanted or row["file"] in wanted):
                yield row["file"], path


def check(program, corpus, wanted, show_all):
    """Gives (parts tried, parts equal) by root element, and prints each part that does not hold."""
    tried, equal = collections.Counter(), collections.Counter()
    for file, path in workbooks(corpus, wanted):
        with zipfile.ZipFile(path) as package, tempfile.TemporaryDirectory() as folder:
            before, after = os.path.join(folder, "in"), os.path.join(folder, "out")
            os.mkdir(before)
            os.mkdir(after)
            names = bound_parts(package)
            for number, name in enumerate(names):
                with open(os.path.join(before, str(number)), "wb") as out:
                    out.write(package.read(name))
            answer = subprocess.run([program, before, after], check=True, capture_output=True, text=True).stdout
            for line in answer.splitlines():
                number, root, *result = line.split("\t")
                where = f"{file}:{names[int(number)]}"
                if root == "-":
                    print(f"{where}: no class for its root")
                    continue
                tried[root] += 1
                if result[0] != "0":
                    print(f"{where}: {result[0]} {result[1]}")
                    continue
                one, other = (parse(open(os.path.join(d, number), "rb").read()) for d in (before, after))
                found = differences(one, other, "", True)
                equal[root] += not found
                for text in found[:6]:
                    print(f"{where}: {text}")
                if show_all and not found:
                    print(f"{where}: holds")
    return tried, equal


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--list", action="store_true")
    parser.add_argument("program")
    parser.add_argument("corpus")
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()
    tried, equal = check(options.program, options.corpus, set(options.files), options.list)
    for root in sorted(tried):
        print(f"{root}: {equal[root]} of {tried[root]} parts equal")
    print(f"all: {sum(equal.values())} of {sum(tried.values())} parts equal")
    sys.exit(0 if tried and tried == equal else 1)


if __name__ == "__main__":
    main()
