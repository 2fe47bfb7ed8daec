"""Cells of formulas in a flat OpenDocument file, as LibreOffice shows them."""
import datetime
import re
import xml.etree.ElementTree as ET

OFFICE = "{urn:oasis:names:tc:opendocument:xmlns:office:1.0}"
TABLE = "{urn:oasis:names:tc:opendocument:xmlns:table:1.0}"
TEXT = "{urn:oasis:names:tc:opendocument:xmlns:text:1.0}"
CALC = "{urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0}"


def day_number(text, first_day):
    date, _, time = text.partition("T")
    sign = -1 if date.startswith("-") else 1
    year, month, day = (int(part) for part in date.lstrip("-").split("-"))
    if sign < 0 or year < 1:
        return None
    days = (datetime.date(year, month, day) - first_day).days
    if time:
        hours, minutes, seconds = time.split(":")
        days += int(hours) / 24 + int(minutes) / 1440 + float(seconds) / 86400
    return days


def day_part(text):
    found = re.fullmatch(r"(-?)PT(\d+)H(\d+)M([\d.]+)S", text)
    sign, hours, minutes, seconds = found.groups()
    days = int(hours) / 24 + int(minutes) / 1440 + float(seconds) / 86400
    return -days if sign else days


def plain(element):
    if element.tag == TEXT + "s":
        return " " * int(element.get(TEXT + "c", 1))
    if element.tag == TEXT + "tab":
        return "\t"
    if element.tag == TEXT + "line-break":
        return "\n"
    if element.tag == OFFICE + "annotation":
        return ""
    return (element.text or "") + "".join(plain(child) + (child.tail or "") for child in element)


def value(cell, first_day):
    """(kind, value): kinds as in dumps, and "d" for dates and times, which carry less digits than numbers."""
    kind = cell.get(OFFICE + "value-type")
    shown = "\n".join(plain(p) for p in cell.findall(TEXT + "p"))
    if cell.get(CALC + "value-type") == "error":
        return "e", shown
    if kind in ("float", "percentage", "currency"):
        return "n", float(cell.get(OFFICE + "value"))
    if kind == "boolean":
        return "b", cell.get(OFFICE + "boolean-value") == "true"
    if kind == "date":
        return "d", day_number(cell.get(OFFICE + "date-value"), first_day)
    if kind == "time":
        return "d", day_part(cell.get(OFFICE + "time-value"))
    return "s", cell.get(OFFICE + "string-value", shown)


def formulas(path):
    """{(sheet, row, column): (kind, value)}, counted from 0."""
    cells, first_day = {}, datetime.date(1899, 12, 30)
    sheet = row = None
    repeated = column = 0
    around = []  # of a table within a cell, which is a chart's
    for event, element in ET.iterparse(path, events=("start", "end")):
        if event == "start":
            if element.tag == TABLE + "table":
                around.append((sheet, row, repeated, column))
                sheet, row = element.get(TABLE + "name"), 0
            elif element.tag == TABLE + "table-row":
                column, repeated = 0, int(element.get(TABLE + "number-rows-repeated", 1))
        elif element.tag == TABLE + "table":
            sheet, row, repeated, column = around.pop()
        elif element.tag == TABLE + "null-date":
            first_day = datetime.date.fromisoformat(element.get(TABLE + "date-value", "1899-12-30"))
        elif element.tag in (TABLE + "table-cell", TABLE + "covered-table-cell"):
            if len(around) == 1 and element.get(TABLE + "formula") is not None:
                cells[sheet, row, column] = value(element, first_day)
            column += int(element.get(TABLE + "number-columns-repeated", 1))
            element.clear()
        elif element.tag == TABLE + "table-row":
            row += repeated
            element.clear()
    return cells
