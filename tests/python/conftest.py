"""What the suites share."""
import gc
import sys
import zipfile

import pytest

import quillet


@pytest.fixture
def session(tmp_path):
    with quillet.Session(directory=tmp_path) as made:
        yield made


@pytest.fixture
def csv(tmp_path):
    """Writes a csv file: csv("a,1\\nb,2\\n") is the file in.csv."""
    def write(text, name="in.csv"):
        (tmp_path / name).write_bytes(text if isinstance(text, bytes) else text.encode())
    return write


@pytest.fixture
def counts_stay():
    """counts_stay(round_, watched): a thousand rounds leave the reference counts of these, and the number of objects, as
    they were. What the interpreter shares with everybody, None and True, only about."""
    def check(round_, watched):
        for _ in range(20):
            round_()
        gc.collect()
        before, objects = [sys.getrefcount(thing) for thing in watched], len(gc.get_objects())
        for _ in range(1000):
            round_()
        gc.collect()
        after = [sys.getrefcount(thing) for thing in watched]
        ours = [thing is not None and thing is not True for thing in watched]
        assert all(b == a if own else abs(b - a) < 50 for own, a, b in zip(ours, before, after)), list(zip(before, after))
        assert abs(len(gc.get_objects()) - objects) < 200
    return check


_MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
_OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
_STRICT = "http://purl.oclc.org/ooxml/"
_PACKAGE = "http://schemas.openxmlformats.org/package/2006"
_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml"
_PARTS = {
    "[Content_Types].xml": f'''<Types xmlns="{_PACKAGE}/content-types">
        <Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
        <Override PartName="/xl/workbook.xml" ContentType="{_TYPE}.sheet.main+xml"/>
        <Override PartName="/xl/worksheets/sheet1.xml" ContentType="{_TYPE}.worksheet+xml"/></Types>''',
    "_rels/.rels": f'''<Relationships xmlns="{_PACKAGE}/relationships">
        <Relationship Id="rId1" Type="{_OFFICE}/officeDocument" Target="xl/workbook.xml"/></Relationships>''',
    "xl/workbook.xml": f'''<workbook xmlns="{_MAIN}" xmlns:r="{_OFFICE}">
        <sheets><sheet name="S" sheetId="1" r:id="rId1"/></sheets></workbook>''',
    "xl/_rels/workbook.xml.rels": f'''<Relationships xmlns="{_PACKAGE}/relationships">
        <Relationship Id="rId1" Type="{_OFFICE}/worksheet" Target="worksheets/sheet1.xml"/></Relationships>''',
}


@pytest.fixture
def workbook(tmp_path):
    """Writes a workbook with one sheet, S, made of these rows of XML; in the strict dialect on demand."""
    def write(name, rows, strict=False):
        sheet = f'<worksheet xmlns="{_MAIN}"><sheetData>{rows}</sheetData></worksheet>'
        with zipfile.ZipFile(tmp_path / name, "w") as package:
            for part, content in [*_PARTS.items(), ("xl/worksheets/sheet1.xml", sheet)]:
                if strict:
                    content = content.replace(_MAIN, _STRICT + "spreadsheetml/main")
                    content = content.replace(_OFFICE, _STRICT + "officeDocument/relationships")
                package.writestr(part, content)
    return write
