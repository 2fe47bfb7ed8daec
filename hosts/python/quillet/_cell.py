"""Cells of a sheet."""
from __future__ import annotations

from typing import TYPE_CHECKING, Any, Optional, Tuple

from ._objects import CellError
from ._quillet import Format

if TYPE_CHECKING:
    from ._sheet import Sheet


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
