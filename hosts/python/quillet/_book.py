"""Workbooks themselves: sheets, cells, formulas, names, formats, pictures, comments."""
from __future__ import annotations

import builtins
import os
from typing import Any, Iterator, List, NamedTuple, Optional, Tuple, Union

import numpy as np

from . import _quillet as native
from ._quillet import BookError, Format
from ._writing import columns_of

_BINARY, _PACKAGE = (".xls", ".xlt"), (".xlsx", ".xlsm", ".xltx", ".xltm")
_PICTURE_KINDS = {0: "png", 1: "jpeg", 2: "gif", 3: "wmf", 4: "bmp", 5: "emf", 6: "pict", 7: "tiff"}
_VISIBILITIES = ("visible", "hidden", "very hidden")

#: A cell or an area: ``"B2"``, ``"A1:C9"``, ``"A:C"``, ``"2:5"``; (row, column) from 0; or (first row, last row, first
#: column, last column) from 0, all included.
Area = Union[str, Tuple[int, ...]]


class CellError(str):
    """An error that a cell holds, as the text that a spreadsheet shows: ``#DIV/0!``."""

    def __repr__(self) -> str:
        return f"CellError({str(self)!r})"


class Name(NamedTuple):
    """A defined name."""
    text: str
    #: The sheet that it belongs to, None for the workbook.
    scope: Optional[str]
    #: The sheet of its area, and the area from 0: first row, last row, first column, last column; None when it stands for
    #: something else.
    sheet: Optional[str]
    area: Optional[Tuple[int, int, int, int]]
    #: Its formula as text, None when there is no text for it.
    formula: Optional[str]
    hidden: bool
    #: Whether it is one of the format's own, such as a print area.
    built_in: bool


class Picture(NamedTuple):
    """A picture of a workbook."""
    #: ``png``, ``jpeg``, ``gif``, ``wmf``, ``bmp``, ``emf``, ``pict`` or ``tiff``
    kind: str
    data: bytes


class PlacedPicture(NamedTuple):
    """A picture on a sheet."""
    #: Its place among the workbook's pictures; -1 for a linked one.
    id: int
    #: The cells that it covers, from 0: first row, last row, first column, last column.
    area: Tuple[int, int, int, int]
    #: Pixels.
    width: int
    height: int
    offset: Tuple[int, int]
    #: The file of a linked picture.
    link: Optional[str]


class Hyperlink(NamedTuple):
    """A link on cells."""
    target: str
    area: Tuple[int, int, int, int]


class Table(NamedTuple):
    """A table on a sheet."""
    name: str
    area: Tuple[int, int, int, int]
    header_rows: int
    totals_rows: int


def open(source: "str | os.PathLike[str] | bytes") -> "Book":
    """Opens a workbook, .xls or .xlsx and their kin, from a file or from its bytes. The file is read at once; it is
    written by :meth:`Book.save` alone. Raises :class:`BookError` when it is no workbook.

    >>> with quillet.open("plan.xlsx") as book:                             # doctest: +SKIP
    ...     book["Demand"]["C2"] = 12.5
    ...     book.save()
    """
    if isinstance(source, (bytes, bytearray, memoryview)):
        data = bytes(source)
        return Book._of(native.BookHandle.load(data, not data.startswith(b"PK")), None)
    path = os.fspath(source)
    with builtins.open(path, "rb") as file:
        binary = not file.read(2) == b"PK"
    return Book._of(native.BookHandle.load(path, binary), path)


class Book:
    """A workbook: a mapping of its sheets by name, ``book["Demand"]`` or, from 0, ``book[0]``.

    ``Book("xlsx")`` and ``Book("xls")`` are new, without sheets. What is not understood of a file that was opened is
    kept and written back, charts and macros included.
    """

    _native: Any

    def __init__(self, kind: str = "xlsx") -> None:
        if kind not in ("xlsx", "xls"):
            raise ValueError("a workbook is of the kind xlsx or xls")
        self._native, self.path = native.BookHandle(kind == "xls"), None

    @classmethod
    def _of(cls, handle: Any, path: Optional[str]) -> "Book":
        made: Book = object.__new__(cls)
        made._native, made.path = handle, path
        return made

    #: The file that it was opened from or saved to last.
    path: Optional[str]

    @property
    def kind(self) -> str:
        """``"xls"`` or ``"xlsx"``."""
        return "xls" if self._native.is_binary else "xlsx"

    @property
    def sheet_names(self) -> List[str]:
        """The sheets' names, chart sheets included."""
        return self._native.sheet_names()

    def __len__(self) -> int:
        return len(self.sheet_names)

    def __iter__(self) -> "Iterator[Sheet]":
        """The worksheets; chart sheets are passed over."""
        for index in range(len(self)):
            if self._native.sheet_kind(index) == 0:
                yield Sheet(self, self._native.sheet(index))

    def __contains__(self, name: object) -> bool:
        return any(name == known for known in self.sheet_names)

    def __getitem__(self, key: "str | int") -> "Sheet":
        return Sheet(self, self._native.sheet(self._place(key)))

    def add_sheet(self, name: str, *, copy_of: "Optional[Sheet]" = None, before: "str | int | None" = None) -> "Sheet":
        """Adds a sheet, at the end or before another one, empty or as a copy of one, also of another workbook."""
        place = -1 if before is None else self._place(before)
        return Sheet(self, self._native.add_sheet(place, name, None if copy_of is None else copy_of._native))

    def remove_sheet(self, key: "str | int") -> None:
        """Removes a sheet."""
        self._native.remove_sheet(self._place(key))

    def move_sheet(self, key: "str | int", before: "str | int | None" = None) -> None:
        """Puts a sheet before another one, or at the end."""
        self._native.move_sheet(self._place(key), len(self) if before is None else self._place(before))

    @property
    def active_sheet(self) -> int:
        """Place of the sheet that is shown first, from 0."""
        return self._native.active_sheet()

    @active_sheet.setter
    def active_sheet(self, key: "str | int") -> None:
        self._native.set_active_sheet(self._place(key))

    @property
    def names(self) -> List[Name]:
        """The defined names in the file's order; :meth:`Sheet.define_name` makes one."""
        sheets = self.sheet_names
        return [Name(text, sheets[scope] if scope >= 0 else None, sheets[sheet] if sheet >= 0 else None,
                     area, formula, hidden, built_in)
                for text, scope, hidden, built_in, sheet, area, formula in self._native.names()]

    def values(self, name: str, *, dates: bool = True) -> np.ndarray:
        """What stands in the area of a defined name, as :meth:`Sheet.values`. Raises KeyError when there is none."""
        for known in self.names:
            if known.text == name and known.sheet is not None and known.area is not None:
                return self[known.sheet].values(known.area, dates=dates)
        raise KeyError(name)

    @property
    def pictures(self) -> List[Picture]:
        """The pictures; their places in this list are their ids."""
        found = [self._native.picture(index) for index in range(self._native.picture_count())]
        return [Picture(_PICTURE_KINDS.get(kind, "unknown"), data) for kind, data in found]

    def add_picture(self, source: "str | os.PathLike[str] | bytes") -> int:
        """Adds a picture from a file or from bytes; its id is for :meth:`Sheet.place_picture`."""
        return self._native.add_picture(bytes(source) if isinstance(source, (bytes, bytearray)) else os.fspath(source))

    def new_format(self, like: Optional[Format] = None, *, number_format: Optional[str] = None, **look: Any) -> Format:
        """A format of its own, as another one looks but for what is told: ``bold=True``, ``number_format="0.00%"`` and
        the other attributes of :class:`Format`."""
        made = self._native.new_format(like)
        if number_format is not None:
            made.number_format_id = self._native.number_format(number_format)
        for name, value in look.items():
            if name.startswith("_") or not hasattr(type(made), name):
                raise TypeError(f"a format has no {name}")
            setattr(made, name, value)
        return made

    def number_format_text(self, format: Format) -> Optional[str]:
        """The text of a format's number format; None for those that are the same in all workbooks."""
        number = format.number_format_id
        return self._native.number_format_text(number) if number >= 164 else None

    def color(self, red: int, green: int, blue: int) -> int:
        """The number that stands for a colour in formats: in .xls files the nearest one of the palette."""
        return self._native.pack_color(red, green, blue)

    @property
    def date1904(self) -> bool:
        """Whether days count from 1904."""
        return self._native.date1904

    def save(self, path: "str | os.PathLike[str] | None" = None) -> None:
        """Writes the workbook, to the file that it came from when no other is named. Raises :class:`BookError`; the old
        file stays as it was then."""
        target = self.path if path is None else os.fspath(path)
        if target is None:
            raise ValueError("this workbook has no file yet: name one")
        extension = os.path.splitext(target)[1].lower()
        if extension in (_PACKAGE if self._native.is_binary else _BINARY):
            raise ValueError(f"a workbook of the kind {self.kind} has no place in a file of the kind {extension}")
        self._native.save(os.path.abspath(target))
        self.path = target

    def to_bytes(self) -> bytes:
        """The workbook as the bytes of a file."""
        return self._native.save_bytes()

    def close(self) -> None:
        """Gives the memory back. What was not saved is lost."""
        self._native.close()

    @property
    def closed(self) -> bool:
        """Whether the workbook was closed."""
        return self._native.is_closed

    def __enter__(self) -> "Book":
        return self

    def __exit__(self, *raised: object) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<quillet workbook {self.path or 'without a file'}{', closed' if self.closed else ''}>"

    def _place(self, key: "str | int") -> int:
        names = self.sheet_names
        if isinstance(key, str):
            if key not in names:
                raise KeyError(key)
            return names.index(key)
        return range(len(names))[key]


class Sheet:
    """A worksheet: ``sheet["B2"]`` is a cell, ``sheet["B2"] = 5`` writes one."""

    def __init__(self, book: Book, handle: Any) -> None:
        self.book, self._native = book, handle

    @property
    def name(self) -> str:
        """The sheet's name. Formulas of .xlsx files keep the old one when it is changed."""
        return self._native.name

    @name.setter
    def name(self, name: str) -> None:
        self._native.name = name

    @property
    def used(self) -> Tuple[int, int, int, int]:
        """First row, last row, first column and last column that are used, from 0; the last ones are below the first
        in an empty sheet."""
        return tuple(self._native.used())  # type: ignore[return-value]

    def __getitem__(self, cell: Area) -> "Cell":
        return Cell(self, *_cell(cell))

    def __setitem__(self, cell: Area, value: Any) -> None:
        self._native.set_value(*_cell(cell), value)

    def values(self, area: Optional[Area] = None, *, dates: bool = True) -> np.ndarray:
        """What stands in an area, the used one when none is told, as an array of two dimensions.

        ``float64`` with not-a-number for empty cells when there are numbers alone, ``bool`` when there are booleans
        alone, otherwise objects as :attr:`Cell.value` gives them. ``dates=False`` leaves dates numbers, which is faster.
        Areas of whole rows or columns end with the last used cell.
        """
        return self._native.values(self._corners(area), dates, CellError)

    def formulas(self, area: Optional[Area] = None) -> np.ndarray:
        """The texts of the formulas in an area, None where there is none."""
        return self._native.formulas(self._corners(area))

    def set_values(self, cell: Area, values: Any) -> None:
        """Writes rows of values, an array of two dimensions or lists, from a cell on. None and not-a-number leave a
        cell blank; formats stay."""
        row, column = _cell(cell)
        if isinstance(values, np.ndarray) and values.ndim == 2 and values.dtype.kind in "fiu":
            self._native.set_numbers(row, column, np.asarray(values, dtype=np.float64))
            return
        for i, line in enumerate(values):
            for j, value in enumerate(line):
                self._native.set_value(row + i, column + j, None if value != value else value)

    def write_frame(self, cell: Area, frame: Any) -> None:
        """Writes a DataFrame of pandas with its header from a cell on: dates as dates in cells that show them, categories as
        their values, missing values as blank cells. An index that is more than the rows' numbers becomes columns."""
        row, column = _cell(cell)
        names, cells = columns_of(frame)
        self.set_values((row, column), [names])
        for place, values in enumerate(cells):
            if isinstance(values, np.ndarray):
                self._native.set_numbers(row + 1, column + place, values.reshape(-1, 1))
            else:
                self.set_values((row + 1, column + place), ([value] for value in values))

    def clear(self, area: Area) -> None:
        """Removes the cells of an area."""
        self._native.clear(_corners(area))

    def define_name(self, name: str, area: Area, *, local: bool = False) -> None:
        """Defines a name for an area of this sheet, in the whole workbook, or in this sheet alone."""
        self._native.set_name_area(name, _corners(area), self._native.index if local else -1)

    def remove_name(self, name: str, *, local: bool = False) -> None:
        """Removes a name of the workbook, or one of this sheet."""
        self._native.remove_name(name, self._native.index if local else -1)

    @property
    def pictures(self) -> List[PlacedPicture]:
        """The pictures on this sheet."""
        return [PlacedPicture(id, tuple(area), width, height, (x, y), link)  # type: ignore[arg-type]
                for id, area, width, height, x, y, link in self._native.pictures()]

    def place_picture(self, cell: Area, picture: int, *, scale: float = 1.0,
                      size: Optional[Tuple[int, int]] = None) -> None:
        """Places a picture of the workbook, by its id, with its corner in a cell. ``size``: width and height in
        pixels."""
        if size is None:
            self._native.place_picture(*_cell(cell), picture, scale)
        else:
            self._native.place_picture_sized(*_cell(cell), picture, *size)

    def remove_picture(self, place: int) -> None:
        """Removes the picture at a place of :attr:`pictures`."""
        self._native.remove_picture(place)

    @property
    def merges(self) -> List[Tuple[int, int, int, int]]:
        """The merged blocks."""
        return [tuple(area) for area in self._native.merges()]  # type: ignore[misc]

    def merge(self, area: Area) -> None:
        """Merges a block."""
        self._native.merge(_corners(area))

    def unmerge(self, cell: Area) -> None:
        """Takes the merged block that has a cell apart."""
        self._native.unmerge(*_cell(cell))

    def column_width(self, column: int) -> float:
        """Width of a column, from 0, in characters of the default font."""
        return self._native.column_width(column)

    def set_column_width(self, columns: "int | str", width: float) -> None:
        """Sets the width of a column, from 0, or of columns as in ``"B:D"``. Negative: fitted to the content."""
        corners = _corners(columns) if isinstance(columns, str) else (0, 0, columns, columns)
        self._native.set_column_width(corners[2], corners[3], width)

    def row_height(self, row: int) -> float:
        """Height of a row, from 0, in points."""
        return self._native.row_height(row)

    def set_row_height(self, row: int, height: float) -> None:
        """Sets the height of a row, from 0, in points."""
        self._native.set_row_height(row, height)

    def is_row_hidden(self, row: int) -> bool:
        """Whether a row, from 0, is hidden."""
        return self._native.row_hidden(row)

    def hide_row(self, row: int, hidden: bool = True) -> None:
        """Hides a row, from 0, or shows it."""
        self._native.set_row_hidden(row, hidden)

    def is_column_hidden(self, column: int) -> bool:
        """Whether a column, from 0, is hidden."""
        return self._native.column_hidden(column)

    def hide_column(self, column: int, hidden: bool = True) -> None:
        """Hides a column, from 0, or shows it."""
        self._native.set_column_hidden(column, hidden)

    def freeze(self, cell: Area) -> None:
        """Freezes what is above and left of a cell."""
        self._native.freeze(*_cell(cell))

    @property
    def visibility(self) -> str:
        """``"visible"``, ``"hidden"`` or ``"very hidden"``."""
        return _VISIBILITIES[self._native.visibility()]

    @visibility.setter
    def visibility(self, visibility: str) -> None:
        self._native.set_visibility(_VISIBILITIES.index(visibility))

    @property
    def tables(self) -> List[Table]:
        """The tables on this sheet."""
        return [Table(name, tuple(area), headers, totals)  # type: ignore[arg-type]
                for name, area, headers, totals in self._native.tables()]

    @property
    def hyperlinks(self) -> List[Hyperlink]:
        """The links on this sheet."""
        return [Hyperlink(target, tuple(area)) for target, area in self._native.hyperlinks()]  # type: ignore[arg-type]

    def add_hyperlink(self, area: Area, target: str) -> None:
        """Adds a link to an area."""
        self._native.add_hyperlink(target, _corners(area))

    def _corners(self, area: Optional[Area]) -> Tuple[int, ...]:
        if area is None:
            return self._native.used_of((0, 2**31 - 1, 0, 2**31 - 1))
        corners = _corners(area)
        if isinstance(area, str) and (corners[1] == 1048575 or corners[3] == 16383):
            return self._native.used_of(corners)
        return corners

    def __repr__(self) -> str:
        return f"<quillet sheet {self.name}>"


class Cell:
    """One cell."""

    __slots__ = ("sheet", "row", "column")

    def __init__(self, sheet: Sheet, row: int, column: int) -> None:
        self.sheet, self.row, self.column = sheet, row, column

    @property
    def value(self) -> Any:
        """What the cell holds: None, float, str, bool, a date where its format shows one, or a :class:`CellError`. Of a
        formula the value that was saved with it: nothing is calculated.

        Setting it leaves the format alone; a date gets a format of dates where the cell has none.
        """
        return self.sheet._native.value(self.row, self.column, True, CellError)

    @value.setter
    def value(self, value: Any) -> None:
        self.sheet._native.set_value(self.row, self.column, value)

    @property
    def number(self) -> Optional[float]:
        """The cell's number, also where a date is shown; None when it holds none."""
        found = self.sheet._native.value(self.row, self.column, False, CellError)
        return found if isinstance(found, float) else None

    @property
    def formula(self) -> Optional[str]:
        """The formula's text without "=", None when the cell has none."""
        return self.sheet._native.formula(self.row, self.column)

    @formula.setter
    def formula(self, text: str) -> None:
        self.set_formula(text)

    def set_formula(self, text: str, value: "float | str | bool | None" = None) -> None:
        """Writes a formula, with the value that readers show until they calculate."""
        self.sheet._native.set_formula(self.row, self.column, text[1:] if text.startswith("=") else text, value)

    @property
    def format(self) -> Optional[Format]:
        """The cell's format, which it may share with others; None when it has none."""
        return self.sheet._native.format(self.row, self.column)

    @format.setter
    def format(self, format: Format) -> None:
        self.sheet._native.set_format(self.row, self.column, format)

    @property
    def comment(self) -> Optional[str]:
        """The text of the comment, None when there is none; setting it to None removes it."""
        return self.sheet._native.comment(self.row, self.column)

    @comment.setter
    def comment(self, text: Optional[str]) -> None:
        if text is None:
            self.sheet._native.remove_comment(self.row, self.column)
        else:
            self.set_comment(text)

    def set_comment(self, text: str, author: str = "", size: Tuple[int, int] = (129, 75)) -> None:
        """Writes a comment; ``size`` is width and height in pixels. In .xls files alone."""
        self.sheet._native.set_comment(self.row, self.column, text, author, *size)

    def __repr__(self) -> str:
        return f"<quillet cell {self.sheet.name}[{self.row}, {self.column}]: {self.value!r}>"


def _corners(area: Area) -> Tuple[int, ...]:
    if isinstance(area, str):
        return tuple(native.area_of(area.upper().replace("$", "")))
    if len(area) == 2:
        return area[0], area[0], area[1], area[1]
    if len(area) == 4:
        return tuple(area)
    raise TypeError("an area is a text, (row, column), or (first row, last row, first column, last column)")


def _cell(cell: Area) -> Tuple[int, int]:
    corners = _corners(cell)
    if corners[0] != corners[1] or corners[2] != corners[3]:
        raise ValueError("this is more than one cell")
    return corners[0], corners[2]
