"""Element types: from Python's classes to the host's type numbers."""
from __future__ import annotations

import collections
import datetime
import typing
from typing import Any, Dict, Tuple, Union

import numpy as np

from . import _quillet as native


class Record:
    """A type of records: fields with their types, in order.

    >>> Line = Record(product=str, qty=int, price=float)
    >>> Line("bolt", 12, 0.5)
    Record(product='bolt', qty=12, price=0.5)

    Field types are those of :class:`Scalar`, or other records. A record takes a column of a sheet for each field.
    Calling the type makes a value, a named tuple; statements also take mappings, sequences and objects with attributes
    of the fields' names.
    """

    fields: Dict[str, Any]

    def __init__(self, **fields: Any) -> None:
        if not fields:
            raise ValueError("a record has at least one field")
        self.fields = dict(fields)
        # Names that Python keeps for itself (class, _x) are reached by their place.
        self.made = collections.namedtuple("Record", list(fields), rename=True)  # type: ignore[misc]

    def __call__(self, *values: Any, **named: Any) -> Any:
        return self.made(*values, **named)

    def _key(self) -> Tuple[Any, ...]:
        return tuple((name, type_._key() if isinstance(type_, Record) else type_)
                     for name, type_ in self.fields.items())

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Record) and self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())

    def __repr__(self) -> str:
        inside = ", ".join(f"{name}={_name(type_)}" for name, type_ in self.fields.items())
        return f"Record({inside})"


class Alias:
    """Another name for a type: the same values, but another type in the module's eyes."""

    def __init__(self, of: Any) -> None:
        self.of = of

    def __repr__(self) -> str:
        return f"Alias({_name(self.of)})"


#: What can stand for an element type.
ElementType = Union[type, Record, Alias, None, Any]

_DATES = (datetime.date, datetime.time, np.datetime64)


def _name(type_: Any) -> str:
    return getattr(type_, "__name__", repr(type_))


def base_number(type_: Any) -> "int | None":
    """The number of a type that every host has; None for records and aliases."""
    if type_ is None or type_ is object or type_ is typing.Any:
        return native.TYPE_ANY
    if isinstance(type_, np.dtype):
        type_ = type_.type
    if isinstance(type_, (Record, Alias)):
        return None
    if not isinstance(type_, type):
        raise TypeError(f"{type_!r} is no type of a sheet's values")
    if issubclass(type_, (bool, np.bool_)):
        return native.TYPE_BOOLEAN
    if issubclass(type_, (int, np.integer)):
        return native.TYPE_INTEGER
    if issubclass(type_, (float, np.floating)):
        return native.TYPE_REAL
    if issubclass(type_, str):
        return native.TYPE_TEXT
    if issubclass(type_, _DATES):
        return native.TYPE_DATE
    if type_ is np.object_:
        return native.TYPE_ANY
    raise TypeError(f"{_name(type_)} is no type of a sheet's values: take int, float, str, bool, datetime.date, object "
                    "or a Record")


class TypeTable:
    """The types that one session declared."""

    def __init__(self, core: Any) -> None:
        self._core = core
        self._records: Dict[Record, int] = {}
        self._aliases: Dict[int, Tuple[Alias, int]] = {}
        self._named: Dict[int, Record] = {}

    def number(self, type_: Any) -> int:
        """The type's number in this session."""
        if isinstance(type_, Record):
            return self._record(type_)
        if isinstance(type_, Alias):
            return self._alias(type_)
        number = base_number(type_)
        assert number is not None
        return number

    def index_number(self, type_: Any) -> int:
        """The same for what indexes an array or stands in a set, where objects go by an alias."""
        number = self.number(type_)
        return {native.TYPE_DATE: native.TYPE_DATE_INDEX, native.TYPE_ANY: native.TYPE_ANY_INDEX}.get(number, number)

    def record(self, number: int) -> "Record | None":
        """The record of a number, None when it is another type."""
        return self._named.get(number)

    def _alias(self, alias: Alias) -> int:
        if id(alias) not in self._aliases:
            number = self._core.add_alias("alias", self.number(alias.of))
            self._aliases[id(alias)] = alias, number
            if isinstance(alias.of, Record):
                self._named[number] = alias.of
        return self._aliases[id(alias)][1]

    def _record(self, record: Record) -> int:
        number = self._records.get(record)
        if number is None:
            fields = [(name, self.number(type_)) for name, type_ in record.fields.items()]
            number = self._core.add_record("record", fields, record.made)
            self._records[record] = number
            self._named[number] = record
        return number
