"""What must hold of the drawings in an Open XML package, beyond what the schemas say; for tools/xlsxlint.py."""
import collections
import re
import xml.etree.ElementTree as ET

LAST_ROW, LAST_COLUMN = 1048575, 16383
DRAWING = re.compile(rb'<(?:\w+:)?drawing\s[^>]*:id="([^"]*)"')
SIGNATURES = {"image/png": b"\x89PNG", "image/jpeg": b"\xff\xd8\xff", "image/gif": b"GIF", "image/bmp": b"BM",
              "image/x-emf": b"\1\0", "image/x-wmf": (b"\xd7\xcd\xc6\x9a", b"\1\0"),
              "image/tiff": (b"II*\0", b"MM\0*", b"MM*\0")}


def local(tag):
    return tag.rpartition("}")[2]


def marker_findings(path, marker):
    for name, last in (("col", LAST_COLUMN), ("row", LAST_ROW)):
        value = next((c.text for c in marker if local(c.tag) == name), None)
        if value is None or not value.strip().isdigit() or int(value) > last:
            yield "%s: %s has the %s %s" % (path, local(marker.tag), name, value)


def drawing_findings(package, path):
    """Anchors lie within the sheet, pictures lead to images."""
    rows = {r[0]: r for r in package.relationships_of(path)}
    for element in ET.fromstring(package.parts[path]).iter():
        if local(element.tag) in ("from", "to"):
            yield from marker_findings(path, element)
        if local(element.tag) != "blip":
            continue
        for name, value in element.attrib.items():
            if local(name) not in ("embed", "link") or value not in rows:
                continue
            _, kind, target, external = rows[value]
            if not kind.endswith("/image"):
                yield "%s: %s %s is no image" % (path, local(name), value)
            if local(name) == "embed" and not external and not package.type_of(target).startswith("image"):
                yield "%s: %s leads to %s of type %s" % (path, value, target, package.type_of(target))


def image_findings(package, path):
    start = SIGNATURES.get(package.type_of(path))
    if start and not package.parts[path].startswith(start):
        yield "%s: its bytes are not of the type %s" % (path, package.type_of(path))


def drawing_of(package, path):
    """The part that a worksheet's `drawing` leads to, with the type of the relationship; None without one."""
    wanted = DRAWING.search(package.parts[path])
    rows = package.relationships_of(path) if wanted else []
    return next(((r[2], r[1]) for r in rows if r[0].encode() == wanted[1]), None)


def findings(package):
    owners = collections.Counter()
    for path in sorted(package.parts):
        kind = package.type_of(path)
        if kind.endswith("officedocument.drawing+xml"):
            yield from drawing_findings(package, path)
        elif kind.endswith("spreadsheetml.worksheet+xml"):
            target, how = drawing_of(package, path) or (None, None)
            if target and not how.endswith("/drawing"):
                yield "%s: its drawing is a relationship of type %s" % (path, how)
            owners.update([target] if target else [])
        elif kind.startswith("image"):
            yield from image_findings(package, path)
    for path, count in owners.items():
        if count > 1:
            yield "%s: is the drawing of %d sheets" % (path, count)
