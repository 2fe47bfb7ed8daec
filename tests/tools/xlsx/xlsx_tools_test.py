#!/usr/bin/env python3
"""The linter and the comparer find what they are for: a sound package has no faults, each damage has its own."""
import os
import shutil
import sys
import tempfile
import unittest
import zipfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "tools"))
import xlsxcompare
import xlsxlint

SML = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006/"
TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml."

TYPES, BOOK, BOOK_RELS = "[Content_Types].xml", "xl/workbook.xml", "xl/_rels/workbook.xml.rels"
SHEET, SHEET_RELS, STYLES, STRINGS = ("xl/worksheets/sheet1.xml", "xl/worksheets/_rels/sheet1.xml.rels", "xl/styles.xml",
                                      "xl/sharedStrings.xml")
TABLE, OPAQUE = "xl/tables/table1.xml", "xl/media/image1.bin"

SOUND = {
    TYPES: f'''<Types xmlns="{PACKAGE}content-types">
        <Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
        <Default Extension="bin" ContentType="image/x-unknown"/>
        <Override PartName="/xl/workbook.xml" ContentType="{TYPE}sheet.main+xml"/>
        <Override PartName="/xl/worksheets/sheet1.xml" ContentType="{TYPE}worksheet+xml"/>
        <Override PartName="/xl/worksheets/sheet2.xml" ContentType="{TYPE}worksheet+xml"/>
        <Override PartName="/xl/styles.xml" ContentType="{TYPE}styles+xml"/>
        <Override PartName="/xl/sharedStrings.xml" ContentType="{TYPE}sharedStrings+xml"/>
        <Override PartName="/xl/tables/table1.xml" ContentType="{TYPE}table+xml"/>
        <Override PartName="/xl/tables/table2.xml" ContentType="{TYPE}table+xml"/></Types>''',
    "_rels/.rels": f'''<Relationships xmlns="{PACKAGE}relationships">
        <Relationship Id="rId1" Type="{OFFICE}/officeDocument" Target="xl/workbook.xml"/></Relationships>''',
    BOOK: f'''<workbook xmlns="{SML}" xmlns:r="{OFFICE}"><bookViews><workbookView activeTab="1"/></bookViews>
        <sheets><sheet name="One" sheetId="1" r:id="rId1"/><sheet name="Two" sheetId="2" r:id="rId2"/></sheets>
        <definedNames><definedName name="Here">One!$A$1</definedName><definedName name="Here" localSheetId="1">Two!$A$1
        </definedName></definedNames><calcPr calcId="1" fullCalcOnLoad="1"/></workbook>''',
    BOOK_RELS: f'''<Relationships xmlns="{PACKAGE}relationships">
        <Relationship Id="rId1" Type="{OFFICE}/worksheet" Target="worksheets/sheet1.xml"/>
        <Relationship Id="rId2" Type="{OFFICE}/worksheet" Target="/xl/worksheets/sheet2.xml"/>
        <Relationship Id="rId3" Type="{OFFICE}/styles" Target="styles.xml"/>
        <Relationship Id="rId4" Type="{OFFICE}/sharedStrings" Target="sharedStrings.xml"/></Relationships>''',
    SHEET: f'''<worksheet xmlns="{SML}" xmlns:r="{OFFICE}"><sheetViews><sheetView workbookViewId="0"/></sheetViews>
        <cols><col min="1" max="1" style="1"/></cols><sheetData>
        <row r="1" s="1"><c r="A1" s="1"><v>1</v></c><c r="C1" t="s"><v>1</v></c></row>
        <row r="3"><c r="A3"><f t="shared" ref="A3:A4" si="0">A1</f><v>1</v></c></row>
        <row r="4"><c r="A4"><f t="shared" si="0"/><v>1</v></c></row></sheetData>
        <conditionalFormatting sqref="A1"><cfRule type="expression" dxfId="0" priority="1"/></conditionalFormatting>
        <tableParts count="1"><tablePart r:id="rId1"/></tableParts></worksheet>''',
    SHEET_RELS: f'''<Relationships xmlns="{PACKAGE}relationships">
        <Relationship Id="rId1" Type="{OFFICE}/table" Target="../tables/table1.xml"/>
        <Relationship Id="rId2" Type="{OFFICE}/image" Target="../media/image1.bin"/></Relationships>''',
    "xl/worksheets/sheet2.xml": f'<worksheet xmlns="{SML}"><sheetData/></worksheet>',
    STYLES: f'''<styleSheet xmlns="{SML}"><numFmts count="1"><numFmt numFmtId="164" formatCode="0.0"/></numFmts>
        <fonts count="1"><font/></fonts><fills count="1"><fill/></fills><borders count="1"><border/></borders>
        <cellStyleXfs count="1"><xf numFmtId="0" fontId="0"/></cellStyleXfs>
        <cellXfs count="2"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/><xf numFmtId="164"/></cellXfs>
        <dxfs count="1"><dxf/></dxfs></styleSheet>''',
    STRINGS: f'<sst xmlns="{SML}" count="1" uniqueCount="2"><si><t>a</t></si><si><t>b</t></si></sst>',
    TABLE: f'<table xmlns="{SML}" id="1" name="T" displayName="T" ref="A1:A3"/>',
    "xl/tables/table2.xml": f'<table xmlns="{SML}" id="2" name="U" displayName="U" ref="C1:C3"/>',
    OPAQUE: "opaque",
}
CHAIN_TYPE = f'<Override PartName="/xl/other.xml" ContentType="{TYPE}calcChain+xml"/></Types>'

# Part, what is there, what takes its place, and how the finding begins or what it holds.
DAMAGES = [
    (TYPES, "/xl/sharedStrings.xml", "/xl/none.xml", "/xl/none.xml is no part"),
    (TYPES, 'Extension="bin"', 'Extension="png"', "image1.bin: has no content type"),
    (TYPES, "</Types>", '<Override PartName="/XL/styles.xml" ContentType="x"/></Types>', "/xl/styles.xml stands there twice"),
    (TYPES, "table1.xml\" ContentType=\"" + TYPE + "table", "table1.xml\" ContentType=\"" + TYPE + "comments",
     "table1.xml: is not of its content type"),
    (TYPES, "sharedStrings+xml", "styles+xml", "rId4 leads to a part of type"),
    (BOOK_RELS, '"worksheets/sheet1.xml"', '"worksheets/sheet9.xml"', "sheet9.xml, which is no part"),
    (SHEET_RELS, "image1.bin", "image2.bin", "image2.bin, which is no part"),
    (BOOK_RELS, 'Id="rId3"', 'Id="rId4"', "Id rId4 twice"),
    (BOOK_RELS, "</Relationships>", f'<Relationship Id="rId9" Type="{OFFICE}/calcChain" Target="other.xml"/></Relationships>',
     "a chain of calculation is left"),
    (SHEET, '<tablePart r:id="rId1"/>', '<tablePart r:id="rId7"/>', "rId7 is no relationship"),
    (BOOK, 'fullCalcOnLoad="1"', "", "fullCalcOnLoad is not set"),
    (BOOK, 'name="Two"', 'name="ONE"', "two sheets are named 'one'"),
    (BOOK, 'sheetId="2"', 'sheetId="1"', "two sheets have the sheetId 1"),
    (BOOK, 'r:id="rId2"', 'r:id="rId1"', "two sheets have the relationship rId1"),
    (BOOK, ' localSheetId="1"', "", "name ('here', None) twice"),
    (BOOK, 'localSheetId="1"', 'localSheetId="2"', "belongs to sheet 2"),
    (BOOK, 'activeTab="1"', 'activeTab="2"', "activeTab is beyond"),
    (STRINGS, 'uniqueCount="2"', 'uniqueCount="3"', "uniqueCount is 3, there are 2"),
    (STYLES, '<cellXfs count="2"', '<cellXfs count="1"', "cellXfs has the count 1 and 2 elements"),
    (STYLES, '</numFmts>', '<numFmt numFmtId="164" formatCode="0"/></numFmts>', "numFmtId 164 twice"),
    (STYLES, '<xf numFmtId="164"/>', '<xf numFmtId="165"/>', "numFmtId 165, which is not there"),
    (STYLES, 'fillId="0"', 'fillId="1"', "fillId 1 of 1"),
    (STYLES, 'xfId="0"', 'xfId="1"', "xfId 1 of 1"),
    (SHEET, '<sheetView workbookViewId="0"/>', '<sheetView workbookViewId="1"/>', "workbookViewId 1"),
    (SHEET, 'style="1"', 'style="2"', "a column has the style 2"),
    (SHEET, '<row r="1" s="1">', '<row r="1" s="2">', "row 1 has the style 2"),
    (SHEET, '<c r="A1" s="1">', '<c r="A1" s="2">', "styles of 1 cells are out of range"),
    (SHEET, 't="s"><v>1</v>', 't="s"><v>2</v>', "strings of 1 cells are out of range"),
    (SHEET, 'dxfId="0"', 'dxfId="1"', "a rule has the dxfId 1"),
    (SHEET, '<row r="4">', '<row r="3">', "row 3 comes behind row 3"),
    (SHEET, 'r="A4"', 'r="A5"', "cell A5 in row 4"),
    (SHEET, 'r="A4"', 'r="XFE4"', "cell XFE4 in row 4"),
    (SHEET, '<c r="C1"', '<c r="A1"', "cell A1 is out of order"),
    (SHEET, '<f t="shared" si="0"/>', '<f t="shared" ref="A4" si="0">A2</f>', "shared formula 0 has two masters"),
    ("xl/tables/table2.xml", 'id="2"', 'id="1"', "two tables have the id 1"),
    ("xl/tables/table2.xml", 'displayName="U"', 'displayName="t"', "two tables have the displayName t"),
]
SCHEMA = f'''<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" targetNamespace="{SML}"><xs:element name="sst">
    <xs:complexType><xs:sequence><xs:any maxOccurs="unbounded" processContents="skip"/></xs:sequence>
    <xs:attribute name="count"/><xs:attribute name="uniqueCount"/></xs:complexType></xs:element></xs:schema>'''


class Packages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, parts, name="book.xlsx", names=None):
        with zipfile.ZipFile(self.path(name), "w") as package:
            for part in names or parts:
                package.writestr(part, parts[part])
        return self.path(name)

    def damaged(self, part, old, new):
        self.assertIn(old, SOUND[part])
        return {**SOUND, part: SOUND[part].replace(old, new, 1)}


class Linter(Packages):
    def test_a_sound_package(self):
        self.assertEqual(xlsxlint.findings(self.write(SOUND), None), [])

    def test_each_damage(self):
        for part, old, new, expected in DAMAGES:
            with self.subTest(part=part, new=new):
                path = self.write(self.damaged(part, old, new))
                found = xlsxlint.findings(path, None)
                self.assertTrue(any(expected in line for line in found), found)
                self.assertEqual(xlsxlint.new_findings(path, path, None), [])  # it was there before

    def test_a_chain_that_nothing_names(self):
        parts = {**SOUND, TYPES: SOUND[TYPES].replace("</Types>", CHAIN_TYPE.replace("other", "calcChain"))}
        parts["xl/calcChain.xml"] = "<calcChain/>"
        self.assertIn("/xl/calcChain.xml: is left", xlsxlint.findings(self.write(parts), None))

    def test_archives(self):
        late = self.write(SOUND, names=list(SOUND)[1:] + [TYPES])
        self.assertEqual(xlsxlint.findings(late, None), ["the content types do not come first"])
        path = self.write(SOUND)
        with open(path, "rb") as file:
            data = file.read()
        with open(path, "wb") as file:
            file.write(data.replace(b"opaque", b"OPAQUE"))
        self.assertTrue(any("Bad CRC" in line for line in xlsxlint.findings(path, None)))

    @unittest.skipUnless(shutil.which("xmllint"), "no xmllint")
    def test_schemas(self):
        os.mkdir(self.path("transitional"))
        with open(self.path("transitional/sml.xsd"), "w") as file:
            file.write(SCHEMA)
        for new, expected in (("count", ""), ("cuont", "The attribute 'cuont' is not allowed"),
                              ('xmlns:x="urn:x" x:y', "The attribute '{urn:x}y' is not allowed"),
                              ('xmlns:mc="http://schemas.openxmlformats.org/markup-compatibility/2006" xmlns:x="urn:x"'
                               ' mc:Ignorable="x" x:y', "")):
            parts = self.damaged(STRINGS, "count", new)
            package = xlsxcompare.Package(self.write(parts))
            found = list(xlsxlint.schema_findings(package, ["/" + STRINGS], self.folder))
            self.assertEqual(len(found), bool(expected), found)
            self.assertIn(expected, "".join(found))


class Comparer(Packages):
    def compare(self, parts):
        return xlsxcompare.compare(self.write(SOUND, "before.xlsx"), self.write(parts))

    def test_what_is_no_difference(self):
        for part, old, new in ((SHEET, '<c r="A1" s="1">', '<c s="1"   r="A1" >'), (STYLES, 'fontId="0"', 'fontId="00"'),
                               (BOOK, 'fullCalcOnLoad="1"', 'fullCalcOnLoad="true"')):
            self.assertEqual(self.compare(self.damaged(part, old, new)), [])

    def test_differences(self):
        cases = [
            (self.damaged(OPAQUE, "q", "Q"), "/xl/media/image1.bin: bytes differ"),
            (self.damaged(SHEET, "<v>1</v>", "<v>2</v>"), "text '1' became '2'"),
            (self.damaged(SHEET, ' s="1"', ""), "/@s: lost"),
            (self.damaged(SHEET, '<c r="A1"', '<c t="n" r="A1"'), "/@t: added"),
            (self.damaged(STYLES, "<dxf/>", ""), "lost 1x dxf"),
            (self.damaged(BOOK_RELS, 'Target="styles.xml"', 'Target="Styles.xml"'), "became 'Styles.xml'"),
            ({n: d for n, d in SOUND.items() if n != OPAQUE}, "/xl/media/image1.bin: lost"),
            ({**SOUND, "xl/media/image2.bin": "x"}, "/xl/media/image2.bin: added"),
        ]
        for parts, expected in cases:
            with self.subTest(expected=expected):
                found = self.compare(parts)
                self.assertEqual(len(found), 1, found)
                self.assertIn(expected, found[0])


if __name__ == "__main__":
    unittest.main()
