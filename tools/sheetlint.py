"""What schemas cannot say of a worksheet's elements beside its cells: containers are not empty, counts are true,
columns and breaks stand in order, panes that a selection names exist, ranges lie on the sheet, filters fit their
range. Used by xlsxlint.py."""
import collections
import re

CONTAINERS = ("mergeCells", "cols", "hyperlinks", "dataValidations", "ignoredErrors", "sheetViews", "customFilters")
COUNTED = ("mergeCells", "dataValidations", "tableParts", "rowBreaks", "colBreaks")
CORNER = re.compile(r"\$?([A-Z]{1,3})\$?([1-9][0-9]{0,6})$")


def local(tag):
    return tag.rpartition("}")[2]


def column(letters):
    number = 0
    for letter in letters:
        number = number * 26 + ord(letter) - 64
    return number


def block(text):
    """(first row, first column, last row, last column), from 1; None for what is no block of a sheet."""
    corners = [CORNER.match(corner) for corner in text.split(":")]
    if len(corners) > 2 or not all(corners):
        return None
    places = [(int(c[2]), column(c[1])) for c in corners]
    (row1, col1), (row2, col2) = places[0], places[-1]
    return (row1, col1, row2, col2) if 1 <= row1 <= row2 <= 1048576 and 1 <= col1 <= col2 <= 16384 else None


def is_true(text):
    return text in ("1", "true")


def whole(text, default=0):
    try:
        return int(text)
    except (TypeError, ValueError):
        return default


def count_findings(path, element, name, children):
    if name in COUNTED and element.get("count") is not None and whole(element.get("count")) != len(children):
        yield "%s: %s has the count %s and %d elements" % (path, name, element.get("count"), len(children))
    if name in CONTAINERS and not children:
        yield "%s: %s is empty" % (path, name)
    if name in ("rowBreaks", "colBreaks"):
        ids = [whole(c.get("id")) for c in children]
        if ids != sorted(set(ids)):
            yield "%s: %s are not in order" % (path, name)
        manual = sum(is_true(c.get("man")) for c in children)
        if whole(element.get("manualBreakCount"), manual) != manual:
            yield "%s: %s has manualBreakCount %s of %d" % (path, name, element.get("manualBreakCount"), manual)


def column_findings(path, element):
    last = 0
    for col in element:
        low, high = whole(col.get("min")), whole(col.get("max"))
        if not last < low <= high <= 16384:
            yield "%s: columns %s to %s are out of order" % (path, col.get("min"), col.get("max"))
        last = max(last, high)


def view_findings(path, view):
    pane = next((c for c in view if local(c.tag) == "pane"), None)
    rows = pane is not None and float(pane.get("ySplit", 0)) > 0
    cols = pane is not None and float(pane.get("xSplit", 0)) > 0
    exists = {"topLeft": True, "topRight": cols, "bottomLeft": rows, "bottomRight": rows and cols}
    names = [c.get("pane", "topLeft") for c in view if local(c.tag) == "selection"]
    if pane is not None:
        names.append(pane.get("activePane", "topLeft"))
    for name in names:
        if not exists.get(name, False):
            yield "%s: there is no pane %s" % (path, name)


def filter_findings(path, element):
    area = block(element.get("ref", ""))
    if area is None:
        return
    width = area[3] - area[1] + 1
    seen = collections.Counter()
    for found in element:
        if local(found.tag) != "filterColumn":
            continue
        seen[found.get("colId")] += 1
        if whole(found.get("colId"), -1) not in range(width):
            yield "%s: a filter column has the colId %s of %d" % (path, found.get("colId"), width)
        for choice in found:
            if local(choice.tag) == "customFilters" and len(choice) > 2:
                yield "%s: %d custom filters on one column" % (path, len(choice))
    for id_, times in seen.items():
        if times > 1:
            yield "%s: colId %s stands there %d times" % (path, id_, times)


def sheet_findings(path, root):
    for element in root:
        name = local(element.tag)
        children = [c for c in element if local(c.tag) != "extLst"]
        yield from count_findings(path, element, name, children)
        if name == "cols":
            yield from column_findings(path, element)
        elif name == "sheetViews":
            for view in children:
                yield from view_findings(path, view)
        elif name == "autoFilter":
            yield from filter_findings(path, element)
    for element in root.iter():
        if local(element.tag) in ("mergeCell", "hyperlink", "autoFilter", "sortState", "sortCondition", "f"):
            ref = element.get("ref")
            if ref is not None and block(ref) is None:
                yield "%s: %s has the range %s" % (path, local(element.tag), ref)
