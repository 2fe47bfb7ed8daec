"""From Python's values to containers that statements write."""
from __future__ import annotations

import collections.abc
import dataclasses
import datetime
import decimal
import fractions
import operator
import re
from typing import Any, Iterable, List, Optional, Sequence, Tuple

import numpy as np

from . import _frames, _quillet as native
from ._containers import Held
from ._types import Record, base_number

_DATES = (datetime.date, datetime.time, np.datetime64)
_MISSING_NAMES = ("NaTType", "NAType")


class To:
    """A value and the place that it goes to; made by :func:`to`."""

    def __init__(self, label: Optional[str], value: Any, type: Any) -> None:
        self.label, self.value, self.type = label, value, type


def to(label: Optional[str], value: Any, *, type: Any = None) -> To:
    """A value for ``write``, with the range or name that it goes to.

    ==========================================  ===========================================================
    value                                       what is written
    ==========================================  ===========================================================
    a number, text, boolean, date, None         one cell
    a record, dataclass or named tuple          a row
    a list, tuple or other iterable             a column; of records, rows
    a set                                       a column
    a mapping                                   rows of index and value, from tuples or single keys
    an array of NumPy                           one dimension: a column; more: the cells as they stand
    a Series, a DataFrame of pandas             as a mapping; a table with its header
    anything that was read                      the same again
    ==========================================  ===========================================================

    ``type`` is the element type when it is not to be found from the values. With a record as type, a tuple or a mapping
    of the fields' names is one row.
    """
    return To(label, value, type)


def container_of(session: Any, item: To) -> Tuple[Optional[str], Any]:
    """The label and the native container of an item. Raises what does not fit as a Python exception."""
    value = item.value
    if isinstance(value, Held):
        held = value._native
        if held.core is session._core or held.is_portable:
            return item.label, held
        value = dict(value.items()) if isinstance(value, collections.abc.Mapping) else _again(value)  # type: ignore
    if _frames.is_frame(value):
        return _frame(session, item.label, value)
    if _frames.is_series(value):
        if not value.index.is_unique:
            raise ValueError("an index of a Series that is written has no label twice")
        return item.label, _mapping(session, value.to_dict(), item.type)
    if isinstance(value, np.ma.MaskedArray) and value.dtype.names is None:
        plain = np.empty(value.size, dtype=object)
        plain[:] = _elements(value.ravel())
        return _numpy(session, item, plain.reshape(value.shape))
    if isinstance(value, np.ndarray):
        return _numpy(session, item, value)
    if isinstance(item.type, Record) and _is_row(item.type, value):
        return item.label, _scalar(session, value, item.type)
    if isinstance(value, collections.abc.Mapping):
        return item.label, _mapping(session, value, item.type)
    if isinstance(value, collections.abc.Set):
        return item.label, _set(session, value, item.type)
    if is_single(value):
        return item.label, _scalar(session, value, item.type)
    return item.label, _list(session, value, item.type)


def _again(value: Any) -> Any:
    return value.value if hasattr(value, "value") else list(value)


def _is_row(record: Record, value: Any) -> bool:
    """Whether a value is one record, when records are told as the type: lists are rows, tuples one row."""
    if isinstance(value, collections.abc.Mapping):
        return set(value) <= set(record.fields)
    return isinstance(value, tuple)


def is_record(value: Any) -> bool:
    return (isinstance(value, tuple) and hasattr(value, "_fields")) or \
        (dataclasses.is_dataclass(value) and not isinstance(value, type))


def is_single(value: Any) -> bool:
    """Whether a value goes into one cell, or one row."""
    return isinstance(value, (str, bytes)) or is_record(value) or not isinstance(value, collections.abc.Iterable)


def _scalar(session: Any, value: Any, type_: Any) -> Any:
    type_ = infer([value]) if type_ is None else type_
    made = native.Container.scalar(session._core, session._types.number(type_))
    made.set_scalar(value)
    return made


def _list(session: Any, values: Iterable[Any], type_: Any) -> Any:
    taken = list(values)
    type_ = infer(taken) if type_ is None else type_
    made = new_list(session, type_, True)
    made.list_extend(taken)
    return made


def new_list(session: Any, type_: Any, dynamic: bool) -> Any:
    number = session._types.number(type_)
    return native.Container.list(session._core, number or native.WORD_UNION, dynamic)


def _set(session: Any, values: Iterable[Any], type_: Any) -> Any:
    taken = list(values)
    type_ = infer(taken) if type_ is None else type_
    made = native.Container.set(session._core, session._types.index_number(type_), True)
    made.set_extend(taken)
    return made


def _mapping(session: Any, entries: Any, type_: Any) -> Any:
    taken = list(entries.items())
    keys = [key for key, _ in taken]
    dims = {len(key) if isinstance(key, tuple) else 1 for key in keys}
    if len(dims) > 1:
        raise ValueError("the keys of a mapping have the same number of parts")
    several = bool(keys) and isinstance(keys[0], tuple)
    columns = list(zip(*keys)) if several else [keys]
    sets = [native.Container.set(session._core, session._types.index_number(infer(column)), True)
            for column in columns]
    type_ = infer([value for _, value in taken]) if type_ is None else type_
    made = native.Container.array(session._core, sets, session._types.number(type_), True)
    made.array_fill(taken)
    return made


def _numpy(session: Any, item: To, value: np.ndarray) -> Tuple[Optional[str], Any]:
    if value.ndim == 0:
        return item.label, _scalar(session, value[()], item.type)
    if value.dtype.names is not None:
        return item.label, _structured(session, value)
    if value.ndim == 1:
        return item.label, _column(session, value, item.type)
    sets = [native.Container.range(session._core, 1, size, False) for size in value.shape]
    label = "noindex;" + (item.label or "")
    if item.type is None and value.ndim == 2 and value.dtype.kind in "fiu":
        made = native.Container.array(session._core, sets, native.TYPE_REAL, False)
        made.array_fill_matrix(exact(value), False)
        return label, made
    cells = value.tolist()
    flat = [(place, value[place] if value.dtype.kind == "M" else _cell(cells, place))
            for place in np.ndindex(*value.shape)]
    type_ = item.type if item.type is not None else infer([cell for _, cell in flat])
    made = native.Container.array(session._core, sets, session._types.number(type_), False)
    made.array_fill((tuple(i + 1 for i in place), cell) for place, cell in flat)
    return label, made


def _cell(cells: Any, place: Sequence[int]) -> Any:
    for i in place:
        cells = cells[i]
    return cells


def _column(session: Any, value: np.ndarray, type_: Any) -> Any:
    wanted = None if type_ is None else base_number(type_)
    if value.dtype.kind == "f" and wanted in (None, native.TYPE_REAL):
        made = new_list(session, float, True)
        made.list_extend_reals(np.asarray(value, dtype=np.float64))
        return made
    if value.dtype.kind in "iu" and wanted in (None, native.TYPE_INTEGER):
        if fits_integers(value):
            made = new_list(session, int, True)
            made.list_extend_integers(np.asarray(value, dtype=np.int32))
            return made
        if wanted is None:
            made = new_list(session, float, True)
            made.list_extend_reals(exact(value))
            return made
    return _list(session, _elements(value), type_)


def _elements(value: np.ndarray) -> List[Any]:
    """An array of one dimension as Python's values: moments as NumPy's, which are exact, and None for what is masked."""
    cells = list(np.asarray(value)) if value.dtype.kind == "M" else np.asarray(value).tolist()
    if isinstance(value, np.ma.MaskedArray):
        return [None if hidden else cell for cell, hidden in zip(cells, np.ma.getmaskarray(value))]
    return cells


def fits_integers(value: np.ndarray) -> bool:
    """Whether all integers of an array have 32 bits."""
    return value.size == 0 or (int(value.min()) >= -2**31 and int(value.max()) < 2**31)


def exact(value: np.ndarray) -> np.ndarray:
    """Numbers as doubles; OverflowError for integers that are not exact."""
    if value.dtype.kind in "iu" and value.size and max(abs(int(value.min())), abs(int(value.max()))) > 2**53:
        raise OverflowError("an integer beyond 2**53 is not exact as a number of a sheet")
    return np.asarray(value, dtype=np.float64)


def _structured(session: Any, value: np.ndarray) -> Any:
    if value.ndim != 1:
        raise ValueError("an array of records has one dimension")
    assert value.dtype.names is not None
    columns = [_elements(value[name]) for name in value.dtype.names]
    record = Record(**{name: infer(column) for name, column in zip(value.dtype.names, columns)})
    made = new_list(session, record, True)
    made.list_extend(list(zip(*columns)))
    return made


def infer(values: Sequence[Any]) -> Any:
    """The element type for some values. Raises TypeError for what no sheet can hold."""
    kinds = {kind_of(value_type) for value_type in set(map(type, values))}
    empty = None in kinds
    kinds.discard(None)
    if Record in kinds:
        if len(kinds) > 1:
            raise TypeError("records and other values have no type in common")
        return _record_type(values)
    if not kinds:
        return object if empty else str
    if kinds == {int}:
        return object if empty else _integers(values)
    if kinds <= {int, float}:
        return object if empty else float
    if len(kinds) == 1 and (not empty or kinds <= {str, datetime.date}):
        return kinds.pop()
    return object


def _integers(values: Sequence[Any]) -> Any:
    return int if all(-2**31 <= operator.index(value) < 2**31 for value in values) else float


def kind_of(value_type: type) -> Any:
    """The element type that values of a class need; None for those that stand for an empty cell."""
    if value_type is type(None) or value_type.__name__ in _MISSING_NAMES:
        return None
    if issubclass(value_type, (bool, np.bool_)):
        return bool
    if issubclass(value_type, (int, np.integer)):
        return int
    if issubclass(value_type, (float, np.floating, decimal.Decimal, fractions.Fraction)):
        return float
    if issubclass(value_type, str):
        return str
    if issubclass(value_type, _DATES):
        return datetime.date
    if issubclass(value_type, collections.abc.Mapping) or hasattr(value_type, "_fields") or \
            dataclasses.is_dataclass(value_type):
        return Record
    if hasattr(value_type, "__index__"):
        return int
    if hasattr(value_type, "__float__"):
        return float
    raise TypeError(f"a sheet has no place for '{value_type.__name__}'")


def _record_type(values: Sequence[Any]) -> Record:
    first = values[0]
    if isinstance(first, collections.abc.Mapping):
        return Record(**{str(name): infer([value[name] for value in values]) for name in first})
    names = first._fields if hasattr(first, "_fields") else [field.name for field in dataclasses.fields(first)]
    return Record(**{name: infer([getattr(value, name) for value in values]) for name in names})


_ONE_CELL = re.compile(r"^(?P<before>.*\[(?:[^\]]*\$)?)(?P<column>[A-Za-z]{1,3})(?P<row>[0-9]+)\]$")


def columns_of(frame: Any) -> Tuple[List[str], List[Any]]:
    """Names and columns of a DataFrame: an array of numbers, or a list with None for missing values. ValueError when two
    have the same name."""
    pd = _frames.pandas()
    if not (isinstance(frame.index, pd.RangeIndex) and frame.index.name is None):
        frame = frame.reset_index()
    names = [_column_name(name) for name in frame.columns]
    if len(set(names)) < len(names):
        raise ValueError("columns of a table have different names")
    return names, [_cells(frame.iloc[:, place]) for place in range(len(names))]


def _frame(session: Any, label: Optional[str], frame: Any) -> Tuple[str, Any]:
    names, cells = columns_of(frame)
    rows = native.Container.range(session._core, 1, len(frame), False)
    columns = native.Container.set(session._core, native.TYPE_TEXT, True)
    columns.set_extend(names)
    if cells and all(isinstance(column, np.ndarray) for column in cells):
        made = native.Container.array(session._core, [rows, columns], native.TYPE_REAL, True)
        made.array_fill_matrix(np.column_stack(cells), True)
    else:
        made = native.Container.array(session._core, [rows, columns], native.TYPE_ANY, False)
        for place, column in enumerate(cells):
            if isinstance(column, list):
                made.array_fill_objects(place, column)
            else:
                made.array_fill_reals(place, column)
    return "dataframe;skiph+;grow;" + widened(label or "[]", len(names)), made


def widened(label: str, columns: int) -> str:
    """A label of one cell as the row of cells that a header takes; any other label as it is."""
    found = _ONE_CELL.match(label)
    if found is None or columns == 0:
        return label
    last = 0
    for letter in found["column"].upper():
        last = last * 26 + ord(letter) - ord("A") + 1
    last += columns - 1
    letters = ""
    while last > 0:
        last, letter_number = divmod(last - 1, 26)
        letters = chr(ord("A") + letter_number) + letters
    return f"{found['before']}{found['column']}{found['row']}:{letters}{found['row']}]"


def _column_name(name: Any) -> str:
    return " ".join(str(part) for part in name if part != "") if isinstance(name, tuple) else str(name)


def _cells(column: Any) -> Any:
    """A column of a DataFrame as an array of numbers, or as a list with None for missing values."""
    pd = _frames.pandas()
    if isinstance(column.dtype, np.dtype):
        kind = column.dtype.kind
        if kind == "b":
            return column.tolist()
        if kind in "fiu":
            return exact(column.to_numpy())
        if kind in "mc":
            raise TypeError(f"a sheet has no place for '{column.dtype}'")
    values: List[Any] = column.astype(object).tolist()
    missing = pd.isna(column).tolist()
    values = [None if empty else value for value, empty in zip(values, missing)]
    if column.dtype.kind == "M" and all(value is None or _is_midnight(value) for value in values):
        return [None if value is None else value.date() for value in values]
    return values


def _is_midnight(value: Any) -> bool:
    return value.tzinfo is None and value.time() == datetime.time()
