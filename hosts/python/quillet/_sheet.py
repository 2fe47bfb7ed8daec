"""Worksheets."""
from __future__ import annotations

import decimal
from typing import TYPE_CHECKING, Any, List, Optional, Tuple

import numpy as np

from ._areas import Area, cell_of, corners_of, is_whole
from ._cell import Cell
from ._objects import CellError, Hyperlink, PlacedPicture, Table
from ._writing import columns_of, exact

if TYPE_CHECKING:
    from ._book import Book

_VISIBILITIES = ("visible", "hidden", "very hidden")


def _is_nan(value: Any) -> bool:
    return isinstance(value, (float, np.floating, decimal.Decimal)) and value != value


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
        return Cell(self, *cell_of(cell))

    def __setitem__(self, cell: Area, value: Any) -> None:
        self._native.set_value(*cell_of(cell), value)

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
        row, column = cell_of(cell)
        if isinstance(values, np.ndarray) and values.ndim == 2 and values.dtype.kind in "fiu":
            self._native.set_numbers(row, column, exact(values))
            return
        for i, line in enumerate(values):
            for j, value in enumerate(line):
                self._native.set_value(row + i, column + j, None if _is_nan(value) else value)

    def write_frame(self, cell: Area, frame: Any) -> None:
        """Writes a DataFrame of pandas with its header from a cell on: dates as dates in cells that show them, categories as
        their values, missing values as blank cells. An index that is more than the rows' numbers becomes columns."""
        row, column = cell_of(cell)
        names, cells = columns_of(frame)
        self.set_values((row, column), [names])
        for place, values in enumerate(cells):
            if isinstance(values, np.ndarray):
                self._native.set_numbers(row + 1, column + place, values.reshape(-1, 1))
            else:
                self.set_values((row + 1, column + place), ([value] for value in values))

    def clear(self, area: Area) -> None:
        """Removes the cells of an area."""
        self._native.clear(corners_of(area))

    def define_name(self, name: str, area: Area, *, local: bool = False) -> None:
        """Defines a name for an area of this sheet, in the whole workbook, or in this sheet alone."""
        self._native.set_name_area(name, corners_of(area), self._native.index if local else -1)

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
            self._native.place_picture(*cell_of(cell), picture, scale)
        else:
            self._native.place_picture_sized(*cell_of(cell), picture, *size)

    def remove_picture(self, place: int) -> None:
        """Removes the picture at a place of :attr:`pictures`."""
        self._native.remove_picture(place)

    @property
    def merges(self) -> List[Tuple[int, int, int, int]]:
        """The merged blocks."""
        return [tuple(area) for area in self._native.merges()]  # type: ignore[misc]

    def merge(self, area: Area) -> None:
        """Merges a block."""
        self._native.merge(corners_of(area))

    def unmerge(self, cell: Area) -> None:
        """Takes the merged block that has a cell apart."""
        self._native.unmerge(*cell_of(cell))

    def column_width(self, column: int) -> float:
        """Width of a column, from 0, in characters of the default font."""
        return self._native.column_width(column)

    def set_column_width(self, columns: "int | str", width: float) -> None:
        """Sets the width of a column, from 0, or of columns as in ``"B:D"``. Negative: fitted to the content."""
        corners = corners_of(columns) if isinstance(columns, str) else (0, 0, columns, columns)
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
        self._native.freeze(*cell_of(cell))

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
        self._native.add_hyperlink(target, corners_of(area))

    def _corners(self, area: Optional[Area]) -> Tuple[int, ...]:
        if area is None:
            return self._native.used_of((0, 2**31 - 1, 0, 2**31 - 1))
        corners = corners_of(area)
        return self._native.used_of(corners) if isinstance(area, str) and is_whole(corners) else corners

    def __repr__(self) -> str:
        return f"<quillet sheet {self.name}>"
