#!/usr/bin/env python3
"""xlsxcompare.py BEFORE AFTER: what a load and a save changed in an Open XML package.

Parts that the engine passes through are compared byte for byte, parts that it binds as XML trees (see
compare_parts.py for what two trees may differ in). What each save does is no difference: the chain of calculation is
dropped with its relationship and its content type, `fullCalcOnLoad` is set, the workbook's content type follows the
extension, a workbook without a view gets one, a wrong `uniqueCount` is put right, parts without a content type and
overrides without a part are gone.
Prints a line for each finding; exit status 1 when there is one.
"""
import os
import posixpath
import sys
import xml.etree.ElementTree as ET
import zipfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import compare_parts  # noqa: E402

MAIN_TYPES = {
    ".xlsx": "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml",
    ".xltx": "application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml",
    ".xlsm": "application/vnd.ms-excel.sheet.macroEnabled.main+xml",
    ".xltm": "application/vnd.ms-excel.template.macroEnabled.main+xml",
}
TYPES_NAME = "/[content_types].xml"


def local(tag):
    return tag.rpartition("}")[2]


class Package:
    """The parts of a package by their paths, and what its content types say of them."""

    def __init__(self, path):
        self.parts = {}
        with zipfile.ZipFile(path) as package:
            for info in package.infolist():
                name = "/" + info.orig_filename.replace("\\", "/").lstrip("/")
                if not name.endswith("/"):
                    key = name if name.lower() != TYPES_NAME else TYPES_NAME
                    self.parts[key] = package.read(info)
        self.types = compare_parts.parse(self.parts[TYPES_NAME])
        self.defaults = {t.get("Extension", "").lower(): t.get("ContentType", "")
                         for t in self.types if local(t.tag) == "Default"}
        self.overrides = {"/" + t.get("PartName", "").replace("\\", "/").lstrip("/").lower(): t.get("ContentType", "")
                          for t in self.types if local(t.tag) == "Override"}

    def type_of(self, path):
        extension = posixpath.basename(path).rpartition(".")[2] if "." in posixpath.basename(path) else ""
        return self.overrides.get(path.lower()) or self.defaults.get(extension.lower(), "")

    def relationships_of(self, path):
        """Rows of (Id, type, target, external), the part's path resolved; empty without such a part."""
        folder, name = posixpath.split(path)
        bytes_ = self.parts.get("%s/_rels/%s.rels" % (folder.rstrip("/"), name))
        if bytes_ is None:
            return []
        rows = []
        for element in compare_parts.parse(bytes_):
            external = element.get("TargetMode") == "External"
            target = element.get("Target", "")
            if not external:
                target = posixpath.normpath(posixpath.join(folder or "/", target.split("#")[0].replace("\\", "/")))
            rows.append((element.get("Id", ""), element.get("Type", ""), target, external))
        return rows

    def main_part(self):
        mains = [p for p in self.parts if self.type_of(p) in MAIN_TYPES.values()]
        named = [r[2] for r in self.relationships_of("/") if r[1].endswith("/officeDocument")]
        return next((p for p in mains if p in named or p.lower() in self.overrides), mains[0] if mains else None)

    def calc_chain(self):
        main = self.main_part()
        return {r[2] for r in self.relationships_of(main) if r[1].endswith("relationships/calcChain")} | {
            posixpath.dirname(main) + "/calcChain.xml"}

    def is_bound(self, path):
        kind = self.type_of(path)
        plain = kind == "application/xml" and b"<worksheet xmlns=" in self.parts[path][:100]
        known = kind.endswith(compare_parts.BOUND) and "threaded" not in kind and kind not in MAIN_TYPES.values()
        return path == TYPES_NAME or path == self.main_part() or kind.endswith(
            "package.relationships+xml") or known or plain


def child(root, name):
    return next((c for c in root if local(c.tag) == name), None)


def expect_workbook(root):
    """What saving does to the workbook, done to the older one."""
    space = root.tag.rpartition("}")[0] + "}" if "}" in root.tag else ""
    settings = child(root, "calcPr")
    if settings is None:
        root.append(ET.Element(space + "calcPr", {"calcId": "125725"}))
        settings = root[-1]
    settings.set("fullCalcOnLoad", "1")
    views = child(root, "bookViews")
    if views is None:
        views = ET.SubElement(root, space + "bookViews")
    if len(views) == 0:
        ET.SubElement(views, space + "workbookView")


def expect_types(root, before, main, extension, added):
    gone = {p.lower() for p in before.calc_chain()}
    parts = {p.lower() for p in list(before.parts) + list(added)}
    kept = None
    for element in list(root):
        if local(element.tag) != "Override":
            continue
        path = "/" + element.get("PartName", "").replace("\\", "/").lstrip("/").lower()
        if path in gone or path not in parts:
            root.remove(element)
        elif path == main.lower():
            kept = element
    if extension in MAIN_TYPES:
        if kept is None:
            space = root.tag.rpartition("}")[0] + "}"
            kept = ET.SubElement(root, space + "Override", {"PartName": main})
        kept.set("ContentType", MAIN_TYPES[extension])


def expect_main_relationships(root, before, main):
    folder = posixpath.dirname(main)
    for element in list(root):
        kind, target = element.get("Type", ""), element.get("Target", "")
        path = posixpath.normpath(posixpath.join(folder, target))
        dangling = kind.endswith("relationships/worksheet") and path not in before.parts
        if kind.endswith("relationships/calcChain") or target == "calcChain.xml" or dangling:
            root.remove(element)


def compare(before_path, after_path, change=None):
    """`change` is what was done to the workbook besides: it has a dictionary `added` of new parts by path, and is
    called with a part's path and its older tree, to do the same to that."""
    before, after = Package(before_path), Package(after_path)
    main = before.main_part()
    if main is None:
        return ["no workbook part"]
    extension = posixpath.splitext(after_path)[1].lower()
    gone = before.calc_chain()
    expected = {p for p in before.parts if p == TYPES_NAME or (before.type_of(p) and p not in gone)}
    found = ["%s: lost" % p for p in sorted(expected - after.parts.keys())]
    new = change.added if change else {}
    found += ["%s: lost" % p for p in sorted(new.keys() - after.parts.keys())]
    found += ["%s: added" % p for p in sorted(after.parts.keys() - expected - new.keys())]
    for path in sorted(new.keys() & after.parts.keys()):
        found += [path + text for text in compare_parts.differences(
            compare_parts.parse(new[path]), compare_parts.parse(after.parts[path]), "", True)[:10]]
    main_rels = "%s/_rels/%s.rels" % (posixpath.dirname(main), posixpath.basename(main))
    for path in sorted(expected & after.parts.keys()):
        one, other = before.parts[path], after.parts[path]
        if one == other and not change:
            continue
        if not before.is_bound(path):
            found += ["%s: bytes differ" % path] if one != other else []
            continue
        a, b = compare_parts.parse(one), compare_parts.parse(other)
        if change:
            change(path, a)
        if path == TYPES_NAME:
            expect_types(a, before, main, extension, new)
            for root in (a, b):  # a map: the order means nothing
                root[:] = sorted(root, key=lambda t: (t.tag, t.get("PartName", t.get("Extension", "")).lower()))
        elif path == main:
            expect_workbook(a)
        elif path == main_rels:
            expect_main_relationships(a, before, main)
        elif before.type_of(path).endswith("sharedStrings+xml") and a.get("uniqueCount"):
            a.set("uniqueCount", str(sum(local(s.tag) == "si" for s in a)))
        found += [path + text for text in compare_parts.differences(a, b, "", True)[:10]]
    return found


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: xlsxcompare.py BEFORE AFTER")
    found = compare(sys.argv[1], sys.argv[2])
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
