"""Workbooks themselves, of both kinds: what is written comes back after a save, and what is wrong is an exception."""
import datetime
import gc
import math
import struct
import threading
import zipfile
import zlib

import numpy as np
import pytest

import quillet
from quillet import Book, BookError, CellError

KINDS = ["xlsx", "xls"]


def png():
    """A picture of 2 by 3 pixels."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 2, 3, 8, 2, 0, 0, 0)) + \
        chunk(b"IDAT", zlib.compress((b"\0" + b"\xff\0\0" * 2) * 3)) + chunk(b"IEND", b"")


@pytest.fixture(params=KINDS)
def kind(request):
    return request.param


def again(book, tmp_path):
    path = tmp_path / f"t.{book.kind}"
    book.save(path)
    return quillet.open(path)


def test_cells(kind, tmp_path):
    book = Book(kind)
    sheet = book.add_sheet("Ärger & Co")
    values = {"A1": 1.5, "B1": "text", "C1": True, "D1": datetime.date(2024, 3, 1), "A2": datetime.time(8, 30),
              "B2": datetime.datetime(2024, 3, 1, 8, 30, 5), "C2": 7, "D2": None, "A3": np.float32(0.5), "B3": "数"}
    for cell, value in values.items():
        sheet[cell] = value
    sheet["E1"].set_formula("=A1*2", 3.0)
    sheet["E2"].formula = "SUM(A1:A1)"
    sheet = again(book, tmp_path)["Ärger & Co"]
    assert {cell: sheet[cell].value for cell in values} == values
    assert (sheet["E1"].formula, sheet["E1"].value) == ("A1*2", 3.0) and sheet["E2"].formula == "SUM(A1:A1)"
    assert sheet["A1"].formula is None and sheet["D1"].number == 45352 and sheet["B1"].number is None
    assert sheet.used == (0, 2, 0, 4) and sheet["Z99"].value is None
    assert sheet.formulas("E1:E2").tolist() == [["A1*2"], ["SUM(A1:A1)"]] and sheet.formulas("A1")[0, 0] is None


def test_areas_as_arrays(kind, tmp_path):
    book = Book(kind)
    sheet = book.add_sheet("S")
    sheet.set_values("B2", np.arange(6).reshape(2, 3))
    sheet.set_values((4, 1), [["a", None, 1.5], [True, np.nan, datetime.date(2024, 3, 1)]])
    sheet.set_values("B8", [[True, False]])
    sheet = again(book, tmp_path)["S"]
    numbers = sheet.values("B2:D3")
    assert numbers.dtype == np.float64 and numbers.tolist() == [[0, 1, 2], [3, 4, 5]]
    edge = sheet.values("A1:B2")
    assert edge.dtype == np.float64 and edge[1, 1] == 0 and np.isnan(edge[0]).all() and np.isnan(edge[1, 0])
    mixed = sheet.values("B5:D6")
    assert mixed.tolist() == [["a", None, 1.5], [True, None, datetime.date(2024, 3, 1)]]
    assert sheet.values("D6").dtype == object and sheet.values("D6", dates=False)[0, 0] == 45352
    assert sheet.values("B8:C8").dtype == bool and sheet.values("B8:D8").dtype == object
    assert sheet.values().shape == (8, 4) and sheet.values("C:C").shape == (8, 1) and sheet.values("3:3").shape == (1, 4)
    assert sheet.values("J20:K21").shape == (2, 2) and sheet.values("J:K").shape[0] * sheet.values("J:K").shape[1] == 0


def test_errors_of_cells(workbook, tmp_path):
    workbook("e.xlsx", '<row r="1"><c r="A1" t="e"><v>#DIV/0!</v></c><c r="B1"><v>2</v></c></row>')
    sheet = quillet.open(tmp_path / "e.xlsx")[0]
    assert isinstance(sheet["A1"].value, CellError) and sheet["A1"].value == "#DIV/0!"
    assert sheet.values().tolist() == [["#DIV/0!", 2.0]]


def test_dates_as_texts_that_python_has_or_has_not(workbook, tmp_path):
    cells = zip("AB", ("2024-03-01", "0000-01-01"))
    workbook("d.xlsx", '<row r="1">' + "".join(f'<c r="{c}1" t="d"><v>{text}</v></c>' for c, text in cells) + "</row>",
             strict=True)
    sheet = quillet.open(tmp_path / "d.xlsx")[0]
    assert sheet.values().tolist() == [[datetime.date(2024, 3, 1), "0000-01-01"]]


def test_a_look_that_changes_is_not_that_of_later_dates(kind):
    book = Book(kind)
    sheet = book.add_sheet("S")
    sheet["A1"] = datetime.date(2024, 3, 1)
    sheet["A1"].format.bold = True
    sheet["A2"] = datetime.date(2024, 3, 2)
    assert sheet["A1"].format.bold and not sheet["A2"].format.bold


def test_sheets(kind, tmp_path):
    book = Book(kind)
    first, second = book.add_sheet("first"), book.add_sheet("second")
    first["A1"] = 5
    book.add_sheet("copy", copy_of=first, before="second")
    book.add_sheet("zero", before=0)
    assert book.sheet_names == ["zero", "first", "copy", "second"] and book["copy"]["A1"].value == 5
    book.move_sheet("second", before="first")
    book.remove_sheet("zero")
    book["copy"].name, book["copy" if "copy" in book else "renamed"].visibility = "renamed", "hidden"
    book.active_sheet = "first"
    book = again(book, tmp_path)
    assert [sheet.name for sheet in book] == ["second", "first", "renamed"] and len(book) == 3
    assert book["renamed"].visibility == "hidden" and book.active_sheet == 1 and "zero" not in book
    assert book[-1].name == "renamed"


def test_names(kind, tmp_path):
    book = Book(kind)
    sheet, other = book.add_sheet("S"), book.add_sheet("T")
    sheet.set_values("A1", [[1, 2], [3, 4]])
    sheet.define_name("Block", "A1:B2")
    other.define_name("Own", (2, 1), local=True)
    sheet.define_name("Gone", "A1")
    sheet.remove_name("Gone")
    book = again(book, tmp_path)
    names = {name.text: name for name in book.names if not name.hidden}
    assert set(names) == {"Block", "Own"} and names["Own"].scope == "T" and names["Own"].area == (2, 2, 1, 1)
    assert names["Block"].sheet == "S" and names["Block"].scope is None and names["Block"].area == (0, 1, 0, 1)
    assert book.values("Block").tolist() == [[1, 2], [3, 4]]
    with pytest.raises(KeyError):
        book.values("Gone")
    session = quillet.Session()
    back = session.new(quillet.Array((quillet.Range(1, 2), quillet.Range(1, 2)), float, dynamic=False))
    session.read(f"{kind}:noindex;{tmp_path}/t.{kind}", x=quillet.into(back, "Block"))
    assert back.to_grid().tolist() == [[1, 2], [3, 4]]


def test_formats(kind, tmp_path):
    book = Book(kind)
    sheet = book.add_sheet("S")
    sheet["A1"] = 0.25
    sheet["B1"] = "plain"
    look = book.new_format(sheet["A1"].format, number_format="0.00%", bold=True, font_size=14, font_name="Arial",
                           fill_pattern=1, fill_color=book.color(255, 255, 0), wraps_text=True, align_horizontal=2)
    sheet["A1"].format = look
    sheet["A1"] = 0.5
    book = again(book, tmp_path)
    if kind == "xlsx":
        with zipfile.ZipFile(book.path) as package:
            assert b'<fgColor rgb="FFFFFF00"/>' in package.read("xl/styles.xml")
    look, plain = book["S"]["A1"].format, book["S"]["B1"].format
    assert look.bold and look.font_size == 14 and look.font_name == "Arial" and look.wraps_text
    assert look.fill_pattern == 1 and look.fill_color == book.color(255, 255, 0) and look.align_horizontal == 2
    assert book.number_format_text(look) == "0.00%" and book.number_format_text(plain) is None
    assert not plain.bold and not plain.wraps_text and look != plain and book["S"]["A1"].value == 0.5
    with pytest.raises(TypeError, match="no boldness"):
        book.new_format(boldness=1)
    with pytest.raises(ValueError, match="own workbook"):
        book["S"]["A1"].format = Book(kind).new_format()


def test_pictures(kind, tmp_path):
    book = Book(kind)
    sheet = book.add_sheet("S")
    (tmp_path / "p.png").write_bytes(png())
    sheet.place_picture("B2", book.add_picture(png()), size=(20, 30))
    sheet.place_picture("E5", book.add_picture(tmp_path / "p.png"))
    book = again(book, tmp_path)
    assert {(picture.kind, picture.data) for picture in book.pictures} == {("png", png())}
    first = book["S"].pictures[0]
    assert first.area[0] == 1 and first.area[2] == 1 and (first.width, first.height) == (20, 30)
    book["S"].remove_picture(0)
    assert len(again(book, tmp_path)["S"].pictures) == 1
    with pytest.raises(BookError):
        book.add_picture(b"no picture")


def test_comments(tmp_path):
    book = Book("xls")
    sheet = book.add_sheet("S")
    sheet["A1"].comment = "why?"
    sheet["B1"].set_comment("because", "me", (200, 100))
    sheet["C1"].comment = "gone"
    sheet["C1"].comment = None
    sheet = again(book, tmp_path)["S"]
    assert sheet["A1"].comment == "why?" and sheet["B1"].comment == "because" and sheet["C1"].comment is None


def test_layout_and_links(kind, tmp_path):
    book = Book(kind)
    sheet = book.add_sheet("S")
    sheet["A1"] = 1
    sheet.merge("B2:C3")
    sheet.merge("E1:F1")
    sheet.unmerge("F1")
    sheet.set_column_width("B:C", 20)
    sheet.set_row_height(3, 33)
    sheet.hide_row(5)
    sheet.hide_column(6)
    sheet.freeze("A2")
    sheet.add_hyperlink("A1", "https://example.com/")
    sheet = again(book, tmp_path)["S"]
    assert sheet.merges == [(1, 2, 1, 2)] and sheet.tables == []
    assert abs(sheet.column_width(2) - 20) < 1 and sheet.row_height(3) == 33
    assert sheet.is_row_hidden(5) and sheet.is_column_hidden(6) and not sheet.is_row_hidden(4)
    assert [link.target for link in sheet.hyperlinks] == ["https://example.com/"]
    sheet.clear("A1")
    assert sheet["A1"].value is None


def test_bytes_and_paths(kind, tmp_path):
    book = Book(kind)
    book.add_sheet("S")["A1"] = 5
    data = book.to_bytes()
    assert quillet.open(data)["S"]["A1"].value == 5 and quillet.open(bytearray(data)).kind == kind
    with pytest.raises(ValueError, match="no file yet"):
        book.save()
    with pytest.raises(ValueError, match="no place"):
        book.save(tmp_path / ("t.xls" if kind == "xlsx" else "t.xlsx"))
    (tmp_path / "other.bin").write_bytes(data)  # the content counts, not the name
    with quillet.open(tmp_path / "other.bin") as opened:
        assert opened.kind == kind
    assert opened.closed
    with pytest.raises(FileNotFoundError):
        quillet.open(tmp_path / "none.xlsx")
    for junk in (b"", b"PK", b"PK\3\4junk", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + b"\0" * 600, b"x" * 5000):
        with pytest.raises(BookError):
            quillet.open(junk)
    with pytest.raises(BookError):
        book.save(tmp_path / "no folder" / f"t.{kind}")


def test_what_does_not_fit(kind):
    book = Book(kind)
    sheet = book.add_sheet("S")
    for bad, error in ((float("nan"), ValueError), (float("inf"), ValueError), ("\ud800", UnicodeEncodeError),
                       ("a\0b", ValueError), (b"x", TypeError), ([1], TypeError), (2**63 + 1, OverflowError),
                       (datetime.datetime(2024, 1, 1, tzinfo=datetime.timezone.utc), ValueError),
                       (datetime.date(1066, 1, 1), ValueError)):
        with pytest.raises(error):
            sheet["A1"] = bad
    for cells in (np.array([[1, np.inf]]), np.array([[2**53 + 1]]), [[1, math.inf]]):
        with pytest.raises((ValueError, OverflowError)):
            sheet.set_values("B1", cells)
    for bad in (math.inf, b"x", datetime.date(2024, 3, 1), [1], 2**63 + 1, "\ud800"):
        with pytest.raises((ValueError, TypeError, OverflowError)):
            sheet["A1"].set_formula("1+1", bad)
    sheet["Z1"].set_formula("1+1", np.float32(2))
    assert sheet["A1"].value is None and sheet["A1"].formula is None and sheet["Z1"].value == 2
    for area in ((5, 2, 0, 0), (0, 0, -1, 0), (-3, 5, 0, 0)):
        for use in (sheet.values, sheet.formulas, sheet.clear):
            with pytest.raises(ValueError):
                use(area)
    for bad in ("", "A", "1", "A0", "AAAA1", "A1:", "A1:B2", "A1:C3:D4", "🙂1"):
        with pytest.raises(ValueError):
            sheet[bad]
    for bad in ((1,), (1, 2, 3)):
        with pytest.raises(TypeError):
            sheet[bad]
    for row, column in ((-1, 0), (0, -1), (2**20, 0), (0, 2**14)):
        with pytest.raises((BookError, ValueError)):
            sheet[row, column] = 1
        assert sheet[row, column].value is None
    for bad in ("no such sheet", 5, -2):
        with pytest.raises((KeyError, IndexError)):
            book[bad]
    for bad in ("SUM(", "=", "A1:::"):
        if kind == "xls":
            with pytest.raises(BookError):
                sheet["A1"].formula = bad
    with pytest.raises(MemoryError):
        sheet.values((0, 2**30, 0, 2**30))
    with pytest.raises(ValueError):
        Book("ods")
    with pytest.raises((BookError, ValueError)):
        sheet.define_name("1 bad name", "A1")


def test_columns_of_more_different_values_than_are_kept(tmp_path):
    """Texts and dates that come again are one object, but not without end."""
    count = 70_000
    texts = [f"text {i // 2 if i < 1000 else i}é" for i in range(count)] + ["text 0é"]
    session = quillet.Session(directory=tmp_path)
    session.write("xlsx:many.xlsx", quillet.to("grow;[S$A1]", texts))
    with quillet.open(tmp_path / "many.xlsx") as book:
        sheet = book["S"]
        found = sheet.values("A:A")[:, 0]
        assert all(one == other for one, other in zip(found, texts)) and len(found) == len(texts)
        sheet.set_values("B1", 30000 + np.arange(count).reshape(-1, 1) / 4)
        look = book.new_format(number_format="yyyy-mm-dd hh:mm")
        for row in range(count):
            sheet[row, 1].format = look
        moments = sheet.values(f"B1:B{count}")[:, 0]
        assert moments[3] == datetime.datetime(1982, 2, 18, 18) and len(set(moments)) == count
    read = session.read("xlsx:many.xlsx", x=quillet.List(str, f"[S$A1:A{count + 1}]")).x
    assert read.to_numpy().tolist() == texts
    assert found[0] is found[1], "made once"


def test_reference_counts_stay_over_a_thousand_rounds(kind, counts_stay):
    book = Book(kind)
    sheet = book.add_sheet("S")
    moment, text, known = datetime.datetime(2024, 3, 1, 8, 30), "a text of its own", np.arange(4.0).reshape(2, 2)
    sheet.set_values("A1", [[text, 1.5, moment], [True, text, None]])
    saved = book.to_bytes()

    def round_():
        sheet.set_values("A5", known)
        sheet["B3"], sheet["C3"] = moment, text
        sheet["A3"].set_formula("1+1", 2)
        sheet["A3"].format = sheet["B3"].format
        sheet.values(), sheet.values("A5:B6"), sheet.formulas(), list(book), book.names, repr(sheet["A1"])
        for bad in (object(), "\ud800", math.inf):
            with pytest.raises((TypeError, ValueError)):
                sheet["A9"] = bad
        with quillet.open(saved) as other:
            assert other["S"].values()[0, 0] == text
        with pytest.raises(BookError):
            quillet.open(b"PK\3\4junk")

    counts_stay(round_, (moment, text, known, saved, sheet, book, book._native, CellError))


def test_things_of_a_closed_workbook(kind):
    book = Book(kind)
    sheet, other = book.add_sheet("S"), book.add_sheet("T")
    cell, look = sheet["A1"], book.new_format()
    book.remove_sheet("T")
    with pytest.raises(ValueError, match="removed"):
        other["A1"].value
    with pytest.raises(ValueError, match="removed"):
        book.add_sheet("U", copy_of=other)
    book.close()
    book.close()
    for use in (lambda: sheet.name, lambda: cell.value, lambda: look.bold, lambda: book.sheet_names, book.to_bytes,
                lambda: book.add_sheet("X"), lambda: book.pictures, lambda: sheet.values(), lambda: list(book)):
        with pytest.raises(ValueError, match="closed"):
            use()


def test_objects_keep_their_workbook(kind):
    sheet = Book(kind).add_sheet("S")
    cell = sheet["A1"]
    del sheet
    gc.collect()
    cell.value = 5
    look = cell.format
    assert cell.value == 5
    del cell
    gc.collect()
    look.wraps_text = True
    assert look.wraps_text


def test_a_workbook_that_is_saved_on_another_thread(kind, tmp_path):
    book = Book(kind)
    sheet = book.add_sheet("S")
    sheet.set_values("A1", np.arange(60_000.0).reshape(3_000, 20))
    failures, done = set(), threading.Event()

    def save():
        try:
            for _ in range(3):
                book.to_bytes()
        finally:
            done.set()

    thread = threading.Thread(target=save)
    thread.start()
    while not done.is_set():
        try:
            sheet["A1"].value, sheet.values("A1:B9")
        except RuntimeError as error:
            failures.add(str(error))
    thread.join()
    assert failures <= {"another thread loads or saves this workbook", "another thread reads cells of this workbook"}
