"""What a workbook holds beside values: names, pictures, links, tables; and errors of cells."""
from __future__ import annotations

from typing import NamedTuple, Optional, Tuple


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
