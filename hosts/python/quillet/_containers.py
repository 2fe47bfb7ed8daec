"""Sets, lists and arrays that were read or made: views of the host's containers."""
from __future__ import annotations

import collections.abc
from typing import Any, Iterable, Iterator, List, Optional, Tuple

import numpy as np

from . import _frames
from ._types import Record


class Held:
    """A container of a session."""

    _native: Any

    def __init__(self, native: Any) -> None:
        self._native = native


class SetData(Held, collections.abc.Set):  # type: ignore[type-arg]
    """The elements of a set in their order: ``in``, ``len``, iteration, ``[place]``, comparison and the operators of
    Python's sets."""

    @classmethod
    def _from_iterable(cls, elements: Iterable[Any]) -> Any:
        return set(elements)

    def __contains__(self, element: object) -> bool:
        return self._native.set_find(element) is not None

    def __iter__(self) -> Iterator[Any]:
        return iter(self._native.set_elements())

    def __len__(self) -> int:
        return self._native.set_size

    def __getitem__(self, place: int) -> Any:
        return self._native.set_element(range(len(self))[place])

    def index(self, element: Any) -> int:
        """The element's place from 0. Raises ValueError when it is absent."""
        place = self._native.set_find(element)
        if place is None:
            raise ValueError(f"{element!r} is not in the set")
        return place

    def add(self, element: Any) -> None:
        """Adds an element, also to a set that takes none from statements."""
        self._native.set_add(element)

    def to_numpy(self) -> np.ndarray:
        """The elements as an array."""
        return self._native.set_numpy()

    def __repr__(self) -> str:
        return f"<quillet set of {len(self)}: {_begin(self)}>"


class ListData(Held, collections.abc.Sequence):  # type: ignore[type-arg]
    """The values of a list."""

    def __init__(self, native: Any, record: Optional[Record] = None) -> None:
        super().__init__(native)
        self._record = record

    def __len__(self) -> int:
        return self._native.list_size

    def __getitem__(self, place: Any) -> Any:
        if isinstance(place, slice):
            return list(self)[place]
        return self._native.list_value(range(len(self))[place])

    def __iter__(self) -> Iterator[Any]:
        return iter(self._native.list_values())

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, collections.abc.Sequence) or isinstance(other, str):
            return NotImplemented
        return list(self) == list(other)

    __hash__ = None  # type: ignore[assignment]

    def append(self, value: Any) -> None:
        """Adds a value at the end."""
        self._native.list_append(value)

    def extend(self, values: Iterable[Any]) -> None:
        """Adds values at the end."""
        self._native.list_extend(values)

    def column(self, field: str) -> np.ndarray:
        """One field of a list of records as an array."""
        return self._native.list_field(_place(self._record, field))

    def to_numpy(self) -> np.ndarray:
        """The values as an array: ``float64``, ``int32``, ``bool``, ``datetime64[ms]`` or objects. Numbers are not
        copied: the array looks at the list's own, read-only. A list of records gives an array with fields."""
        if self._record is None:
            return self._native.list_numpy()
        return _structured(self._record, [self.column(name) for name in self._record.fields], len(self))

    def to_frame(self) -> Any:
        """A DataFrame of pandas: a column for each field of a record, or one called ``value``."""
        if self._record is None:
            return _frames.frame({"value": self.to_numpy()})
        return _frames.frame({name: self.column(name) for name in self._record.fields})

    def __repr__(self) -> str:
        return f"<quillet list of {len(self)}: {_begin(self)}>"


class _Items(collections.abc.ItemsView):  # type: ignore[type-arg]
    def __iter__(self) -> Iterator[Tuple[Any, Any]]:
        native = self._mapping._native  # type: ignore[attr-defined]
        return iter(zip(native.array_keys(), native.array_values()))


class _Values(collections.abc.ValuesView):  # type: ignore[type-arg]
    def __iter__(self) -> Iterator[Any]:
        return iter(self._mapping._native.array_values())  # type: ignore[attr-defined]


class ArrayData(Held, collections.abc.Mapping):  # type: ignore[type-arg]
    """The entries of an array: a mapping from index tuples, or from bare indices where there is one index.

    >>> demand["anvil", 2024]                                                   # doctest: +SKIP
    135.5
    """

    #: Names of the indices.
    names: Tuple[str, ...]

    def __init__(self, native: Any, names: Tuple[str, ...], record: Optional[Record] = None) -> None:
        super().__init__(native)
        self.names = tuple(names)
        self._record = record

    def __getitem__(self, key: Any) -> Any:
        return self._native.array_get(key)

    def __setitem__(self, key: Any, value: Any) -> None:
        self._native.array_put(key, value)

    def __contains__(self, key: object) -> bool:
        return self._native.array_contains(key)

    def __iter__(self) -> Iterator[Any]:
        return iter(self._native.array_keys())

    def __len__(self) -> int:
        return self._native.array_size

    def items(self) -> Any:
        """Pairs of index tuple and value, in the array's order."""
        return _Items(self)

    def values(self) -> Any:
        """The values in the array's order."""
        return _Values(self)

    def update(self, entries: Any) -> None:
        """Stores the entries of a mapping, or pairs of key and value."""
        self._native.array_fill(_pairs(entries))

    @property
    def sets(self) -> Tuple[SetData, ...]:
        """The index sets."""
        return tuple(SetData(native) for native in self._native.array_sets)

    def codes(self, index: "int | str") -> np.ndarray:
        """For each entry the place of its index in the index set, from 0."""
        return self._native.array_codes(self._dimension(index))

    def column(self, field: str) -> np.ndarray:
        """One field of an array of records, in the array's order."""
        return self._native.array_field(_place(self._record, field))

    def to_numpy(self) -> np.ndarray:
        """The values in the array's order, one dimension. Numbers are not copied where the entries lie in this order:
        the array looks at them, read-only."""
        if self._record is None:
            return self._native.array_numpy()
        return _structured(self._record, [self.column(name) for name in self._record.fields], len(self))

    def to_grid(self, fill: Any = np.nan) -> np.ndarray:
        """The values as an array with a dimension for each index, in the order of the index sets; ``fill`` where there
        is no entry."""
        values = self.to_numpy()
        shape = tuple(len(index_set) for index_set in self.sets)
        if values.size == int(np.prod(shape)):
            return values.reshape(shape)
        kind = values.dtype if values.dtype == object else np.result_type(values.dtype, np.asarray(fill).dtype)
        grid = np.full(shape, fill, dtype=kind)
        grid[tuple(self.codes(d) for d in range(len(shape)))] = values
        return grid

    def to_series(self) -> Any:
        """A Series of pandas over the index."""
        return _frames.series(self)

    def to_frame(self, wide: bool = False) -> Any:
        """A DataFrame of pandas with a column for each index and one called ``value``, or one for each field of a
        record. ``wide``: the last index runs along the columns."""
        return _frames.wide(self) if wide else _frames.long(self, self._record)

    def _dimension(self, index: "int | str") -> int:
        return self.names.index(index) if isinstance(index, str) else range(len(self.names))[index]

    def __repr__(self) -> str:
        return f"<quillet array({', '.join(self.names)}) of {len(self)}>"


class ScalarData(Held):
    """A scalar that statements read into: ``value`` is what it holds."""

    @property
    def value(self) -> Any:
        return self._native.scalar_value()

    @value.setter
    def value(self, value: Any) -> None:
        self._native.set_scalar(value)

    def __repr__(self) -> str:
        return f"<quillet scalar {self.value!r}>"


def _begin(values: Any) -> str:
    shown: List[str] = [repr(values[place]) for place in range(min(3, len(values)))]
    return ", ".join(shown) + (", ..." if len(values) > 3 else "")


def _place(record: Optional[Record], field: str) -> int:
    if record is None:
        raise TypeError("these are no records")
    try:
        return list(record.fields).index(field)
    except ValueError:
        raise KeyError(field) from None


def _structured(record: Record, columns: List[np.ndarray], size: int) -> np.ndarray:
    made = np.empty(size, dtype=[(name, column.dtype) for name, column in zip(record.fields, columns)])
    for name, column in zip(record.fields, columns):
        made[name] = column
    return made


def _pairs(entries: Any) -> Iterable[Any]:
    return entries.items() if isinstance(entries, collections.abc.Mapping) else entries
