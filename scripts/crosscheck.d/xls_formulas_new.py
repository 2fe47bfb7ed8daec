#!/usr/bin/env python3
"""xls_formulas_new.py [--libreoffice] [--build DIR]: new formulas of ours, calculated by other programs.

tools/formula_texts writes the texts below into a new .xls file, over the cells that its `write` makes; the same texts go
into an .xlsx file by openpyxl. gnumeric, and with --libreoffice also LibreOffice, must calculate the same value for both.
"""
import argparse
import csv
import os
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
import zipfile

import openpyxl

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.append(os.path.dirname(os.path.abspath(__file__)))
from formula_text import MAIN, shortened  # noqa: E402
from libreoffice import convert  # noqa: E402

SECONDS = 120
FORMULA_COLUMN = 5
# A1:A10 1.5 to 10.5, B1:B10 squares less 7, C1:C10 texts, D1:D10 true and false; 'Other one'!A1:A10 100 to 91; the
# name Values is A1:A10.
TEXTS = r'''
1+2*3|(1+2)*3|2^3*2|-A1|+A1|-A1^2|A1*-2|10%|A1%*B3|7/2|A1-B1-1|A1<B1|A1<=1.5|A1=B1|A1<>B1|A5>=B4|A5>B4
"a"&"b"|C1&C2|A1&"x"|"say ""so"""|"a b, c; d"|"don't"|1.25|65535|65536|123456789012|0.000001|.5
A1=1.5|(A1=1.5)+(A2=2.5)|(((A1)))|A1+(B1+(A2+(B2+1)))|IF(A1>1,"yes","no")|IF(A1>9,1,IF(A1>1,2,3))|IF(D1,1,2)
SUM(A1:A10)|SUM(A1,A2,A3)|SUM(A1:A3,B1:B3)|SUM(Values)|SUM(A1:A3)+SUM(B1:B3)|SUM((A1:A3))|SUM($A$1:$A$10)|SUM(A$1:A2)
AVERAGE(A1:A10)|MIN(A1:B10)|MAX(A1:B10)|COUNT(A1:D10)|COUNTA(A1:D10)|COUNTBLANK(A1:A12)|COUNTIF(A1:A10,">5")
SUMIF(A1:A10,">5")|SUMIF(A1:A10,">5",B1:B10)|PRODUCT(A1:A3)|SUMPRODUCT(A1:A3,B1:B3)|SUMPRODUCT(A1:A3*B1:B3)
SUMPRODUCT((A1:A10>3)*(B1:B10>0))|SUMPRODUCT((C1:C10="kx")*A1:A10)|SUMSQ(A1:A3)|MEDIAN(A1:A10)|MODE(B1:B3,B1)
STDEV(A1:A10)|STDEVP(A1:A10)|VAR(A1:A10)|VARP(A1:A10)|LARGE(A1:A10,2)|SMALL(A1:A10,3)|RANK(A3,A1:A10)
QUARTILE(A1:A10,1)|PERCENTILE(A1:A10,0.3)|CORREL(A1:A10,B1:B10)|SLOPE(B1:B10,A1:A10)|INTERCEPT(B1:B10,A1:A10)
FORECAST(4,B1:B10,A1:A10)|DEVSQ(A1:A5)|GEOMEAN(A1:A5)|HARMEAN(A1:A5)|KURT(A1:A10)|SKEW(B1:B10)|TRIMMEAN(A1:A10,0.2)
ROUND(A1/3,2)|ROUNDUP(A1/3,1)|ROUNDDOWN(A1/3,1)|INT(-1.5)|TRUNC(-1.57,1)|MOD(7,3)|ABS(B1)|SIGN(B1)|SQRT(A1)|POWER(2,10)
EXP(1)|LN(A1)|LOG(100)|LOG(8,2)|LOG10(1000)|PI()|SIN(A1)|COS(A1)|TAN(A1)|ATAN2(1,2)|ASIN(0.5)|DEGREES(PI())|RADIANS(180)
FACT(5)|COMBIN(5,2)|PERMUT(5,2)|EVEN(3)|ODD(2)|CEILING(2.1,0.5)|FLOOR(2.9,0.5)|ROMAN(14)
LEN(C1)|LEFT(C1,1)|RIGHT(C1)|MID("abcdef",2,3)|UPPER(C1)|LOWER("ABC")|PROPER("ab cd")|TRIM("  a  b ")|REPT("ab",3)
FIND("x",C1)|SEARCH("X",C1)|SUBSTITUTE("aXbX","X","y")|REPLACE("abcdef",2,2,"--")|CONCATENATE(C1,"-",A1)|EXACT(C1,"kx")
CODE("A")|CHAR(66)|VALUE("12.5")|TEXT(A1,"0.00")|FIXED(A1,1)|T(C1)|N(A1)|ISNUMBER(A1)|ISTEXT(C1)|ISBLANK(A20)
ISERROR(1/0)|ISLOGICAL(D1)|ISREF(A1)|NOT(D1)|AND(D1,TRUE,A1>1)|OR(FALSE,D2)|TRUE()|FALSE()|IF(TRUE,1,2)|TYPE(A1)
ROWS(A1:B5)|COLUMNS(A1:B5)|ROW(A7)|COLUMN(C1)|ROWS(A1)|AREAS(A1:B2)|ADDRESS(2,3)|INDEX(A1:B10,3,2)|INDEX(A1:A10,4)
MATCH(4.5,A1:A10,0)|MATCH(5,A1:A10)|VLOOKUP(3.5,A1:C10,3)|VLOOKUP(4.5,A1:C10,2,FALSE)|HLOOKUP(1.5,A1:D2,2)
LOOKUP(6,A1:A10,B1:B10)|OFFSET(A1,2,1)|SUM(OFFSET(A1,0,0,3,1))|CHOOSE(2,A1,A2,A3)|INDIRECT("A"&3)
DATE(2020,2,29)|YEAR(43890)|MONTH(43890)|DAY(43890)|WEEKDAY(43890)|HOUR(0.75)|MINUTE(0.51)|TIME(1,2,3)|DAYS360(1,400)
PMT(0.01,12,1000)|FV(0.01,12,-100)|PV(0.01,12,-100)|NPER(0.01,-100,1000)|NPV(0.1,A1:A5)|IRR(B1:B10)|SLN(100,10,5)|DB(100,10,5,2)
'Other one'!A3|SUM('Other one'!A1:A3)|Data!A1|SUM(Data!A1:B2)|'Other one'!A1+Data!A1|SUM(Data!A1:Data!A3)|COUNT(Data!A1)
Values|SUM(Values)*2|MAX(Values)-MIN(Values)|#N/A|ISNA(VLOOKUP(99,A1:A2,1,FALSE))|1/0|ERROR.TYPE(1/0)|SUBTOTAL(9,A1:A5)
'''

# It takes truth values in cells of .xls files for numbers.
NOT_ASKED = {"by_libreoffice": {"ISLOGICAL(D1)"}}


def texts():
    return [text for line in TEXTS.strip().splitlines() for text in line.split("|")]


def run(*command, **options):
    done = subprocess.run(command, capture_output=True, timeout=SECONDS, **options)
    if done.returncode:
        raise RuntimeError("%s: %s" % (command[0], done.stderr.decode("utf-8", "replace").strip()[-300:]))
    return done


def make_xlsx(path, formulas):
    book = openpyxl.Workbook()
    sheet, other = book.active, book.create_sheet("Other one")
    sheet.title = "Data"
    for row in range(10):
        for col, value in enumerate((row + 1.5, row * row - 7, chr(ord("k") - row) + "x", row % 3 == 0)):
            sheet.cell(row + 1, col + 1, value)
        other.cell(row + 1, 1, 100 - row)
    name = openpyxl.workbook.defined_name.DefinedName("Values", attr_text="Data!$A$1:$A$10")
    if hasattr(book.defined_names, "append"):
        book.defined_names.append(name)
    else:
        book.defined_names["Values"] = name
    for row, text in enumerate(formulas):
        sheet.cell(row + 1, FORMULA_COLUMN + 1, "=" + text)
    book.save(path)


def column(path):
    with open(path, newline="", encoding="utf-8") as f:
        return [shortened(row[FORMULA_COLUMN]) if len(row) > FORMULA_COLUMN else "" for row in csv.reader(f)]


def by_gnumeric(path, folder):
    run("ssconvert", "--recalc", "-S", path, os.path.join(folder, os.path.basename(path) + ".%n.csv"))
    return column(os.path.join(folder, os.path.basename(path) + ".0.csv"))


def by_libreoffice(path, folder):
    """From an .xlsx that it makes, since its CSV shows values by formats that it guesses for one of the two."""
    out = os.path.join(folder, "lo-" + os.path.splitext(path)[1][1:])
    convert(out, "xlsx:Calc MS Excel 2007 XML", [path])
    found = {}
    with zipfile.ZipFile(os.path.join(out, "new.xlsx")) as package, package.open("xl/worksheets/sheet1.xml") as part:
        for _, cell in ElementTree.iterparse(part):
            if cell.tag == MAIN + "c" and cell.get("r").startswith("F"):
                found[int(cell.get("r")[1:])] = shortened(cell.findtext(MAIN + "v", ""))
    return [found.get(row + 1, "") for row in range(max(found, default=0))]


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--build", default=os.path.join(ROOT, "build", "release"))
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    formulas, faults = texts(), 0
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        xls, xlsx = os.path.join(folder, "new.xls"), os.path.join(folder, "new.xlsx")
        done = run(os.path.join(args.build, "tools", "formula_texts"), "write", xls,
                   input="\n".join(formulas).encode() + b"\n")
        for line in done.stderr.decode().splitlines():
            print("not written: " + line)
            faults += 1
        make_xlsx(xlsx, formulas)
        for program in (by_gnumeric, by_libreoffice) if args.libreoffice else (by_gnumeric,):
            ours, theirs = program(xls, folder), program(xlsx, folder)
            for i, text in enumerate(formulas):
                a, b = (column[i] if i < len(column) else "(none)" for column in (ours, theirs))
                if text in NOT_ASKED.get(program.__name__, ()):
                    continue
                if a != b or a == "(none)":
                    print("%s: %s is %s in .xls and %s in .xlsx" % (program.__name__, text, a, b))
                    faults += 1
    print("crosscheck new formulas: %d texts, %d faults" % (len(formulas), faults))
    return 1 if faults or len(formulas) < 150 else 0


if __name__ == "__main__":
    sys.exit(main())
