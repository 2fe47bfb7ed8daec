"""Cells and areas as people name them."""
from __future__ import annotations

from typing import Tuple, Union

from . import _quillet as native

#: A cell or an area: ``"B2"``, ``"A1:C9"``, ``"A:C"``, ``"2:5"``; (row, column) from 0; or (first row, last row, first
#: column, last column) from 0, all included.
Area = Union[str, Tuple[int, ...]]


def corners_of(area: Area) -> Tuple[int, ...]:
    """First row, last row, first column, last column, from 0."""
    if isinstance(area, str):
        return tuple(native.area_of(area.upper().replace("$", "")))
    if len(area) == 2:
        return area[0], area[0], area[1], area[1]
    if len(area) == 4:
        return tuple(area)
    raise TypeError("an area is a text, (row, column), or (first row, last row, first column, last column)")


def is_whole(corners: Tuple[int, ...]) -> bool:
    """Whether an area is one of whole rows or columns."""
    return corners[:2] == (0, 1048575) or corners[2:] == (0, 16383)


def cell_of(cell: Area) -> Tuple[int, int]:
    """Row and column from 0; ValueError for more than one cell."""
    corners = corners_of(cell)
    if corners[0] != corners[1] or corners[2] != corners[3]:
        raise ValueError("this is more than one cell")
    return corners[0], corners[2]
