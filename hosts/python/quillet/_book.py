"""Workbooks: their files, sheets, names, pictures and formats."""
from __future__ import annotations

import builtins
import os
from typing import Any, Iterator, List, Optional

import numpy as np

from . import _quillet as native
from ._objects import Name, Picture
from ._quillet import BookError, Format
from ._sheet import Sheet

_BINARY, _PACKAGE = (".xls", ".xlt"), (".xlsx", ".xlsm", ".xltx", ".xltm")
_PICTURE_KINDS = {0: "png", 1: "jpeg", 2: "gif", 3: "wmf", 4: "bmp", 5: "emf", 6: "pict", 7: "tiff"}


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
