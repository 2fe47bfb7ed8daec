"""Texts of formulas as other programs write them into .xlsx files, brought to one form for comparing."""
import re
import xml.etree.ElementTree as ElementTree
import zipfile

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATIONS = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}"
IN_QUOTES = re.compile(r'("(?:[^"]|"")*")')
SHEET_QUOTES = re.compile(r"'((?:[^']|'')*)'")
NUMBER = re.compile(r"(?<![A-Za-z0-9_.$!])\d+(?:\.\d*)?(?:[Ee][+-]?\d+)?(?![A-Za-z0-9_.(!:])")
# Words that stand for what has no text, and references that are broken.
SUBSTITUTE = re.compile(r"\?|\bERR\b|\bNOMEM\b|#REF!")
CELL = r"\$?[A-Z]{1,3}\$?\d+"


def normal(text):
    """Outside of double quotes: separators, blanks, quotes of sheets, later names of functions, whole rows and columns,
    areas of one cell, digits."""
    pieces = IN_QUOTES.split(text)
    for i in range(0, len(pieces), 2):
        p = pieces[i].replace(";", ",").replace(" ", "")
        p = SHEET_QUOTES.sub(lambda m: m.group(1).replace("''", "'"), p)
        p = re.sub(r"\b(TRUE|FALSE)\(\)", r"\1", p).replace("NA()", "#N/A")
        p = re.sub(r"_xlfn(gnumeric)?\.", "", p, flags=re.I)
        p = re.sub(r"[A-Za-z_][A-Za-z0-9_.]*(?=\()", lambda m: m.group().upper(), p)
        p = p.replace("USDOLLAR(", "DOLLAR(").replace("DBCS(", "JIS(").replace("MISS", "")
        p = re.sub(r"(\$?[A-Z]{1,2})\$?1:(\$?[A-Z]{1,2})\$?(?:65536|1048576)\b", r"\1:\2", p)
        p = re.sub(r"\$?A(\$?\d+):\$?(?:IV|XFD)(\$?\d+)", r"\1:\2", p)
        p = re.sub(r"!(%s):\1(?!\d)" % CELL, r"!\1", p)
        p = re.sub(r"([^!,(]+)!(%s):\1!(%s)" % (CELL, CELL), r"\1!\2:\3", p)
        p = re.sub(r"(?<![A-Z$0-9.!])(%s):\1(?!\d)" % CELL, r"\1", p)
        pieces[i] = NUMBER.sub(lambda m: "%.12g" % float(m.group()), p)
    return "".join(pieces)


def has_substitute(text):
    return SUBSTITUTE.search(IN_QUOTES.sub("", text)) is not None


def shortened(field):
    """Numbers to 12 digits: programs calculate with more digits than a double has, and texts have 13 decimals."""
    try:
        return "%.12g" % float(field)
    except ValueError:
        return field


def letters(col):
    text, col = "", col + 1
    while col:
        col, rest = divmod(col - 1, 26)
        text = chr(65 + rest) + text
    return text


def of_package(path):
    """{sheet: {"A1": text}} of an .xlsx; a member of a shared formula that has no text of its own is missing."""
    package = zipfile.ZipFile(path)
    targets = {r.get("Id"): r.get("Target") for r in ElementTree.fromstring(package.read("xl/_rels/workbook.xml.rels"))}
    found = {}
    for sheet in ElementTree.fromstring(package.read("xl/workbook.xml")).find(MAIN + "sheets"):
        cells = found.setdefault(sheet.get("name"), {})
        target = targets[sheet.get(RELATIONS + "id")]
        if "worksheets" not in target:
            continue
        with package.open("xl/" + target.lstrip("/").replace("xl/", "")) as part:
            for _, element in ElementTree.iterparse(part):
                if element.tag == MAIN + "c":
                    formula = element.find(MAIN + "f")
                    if formula is not None and formula.text:
                        cells[element.get("r")] = formula.text
                    element.clear()
    return found
