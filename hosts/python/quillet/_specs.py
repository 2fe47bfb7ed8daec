"""What a statement reads: descriptions of scalars, sets, lists and arrays, each with its label."""
from __future__ import annotations

from typing import Any, Iterable, List as ListOf, Mapping, Optional, Sequence, Tuple, Union

from ._types import ElementType


class Spec:
    """A description of something to read, with the place it is read from."""

    label: Optional[str]


class Scalar(Spec):
    """One value.

    ``type`` is ``int`` (32 bits), ``float``, ``str``, ``bool``, ``datetime.date`` (also for times and both),
    ``object`` for any of these, or a :class:`Record`. ``label`` is options, and a range or a defined name, as in
    ``"[Prices$B2]"`` or ``"Total"``.

    Reading gives the value itself: None for an empty text, date or ``object``.
    """

    def __init__(self, type: ElementType, label: Optional[str] = None) -> None:
        self.type, self.label = type, label

    def __repr__(self) -> str:
        return f"Scalar({self.type!r}, {self.label!r})"


class Set(Spec):
    """Different values in the order of their coming; every cell of the range gives one.

    Also an index of an array: arrays and sets of one statement that name the same ``Set``, or a ``Set`` read under the
    index's name, share it. A set with ``values`` and ``dynamic=False`` takes no others: reading another is an error.
    """

    def __init__(self, type: ElementType, label: Optional[str] = None, *, values: Iterable[Any] = (),
                 dynamic: bool = True) -> None:
        self.type, self.label, self.dynamic = type, label, dynamic
        self.values = list(values)

    def __repr__(self) -> str:
        return f"Set({self.type!r}, {self.label!r})"


class Range(Spec):
    """Consecutive integers from ``first`` to ``last``, as an index of an array; a dynamic one grows as far as needed.

    ``autondx;`` and the rows of ``dataframe;`` need a range.
    """

    label = None

    def __init__(self, first: int = 1, last: int = 0, *, dynamic: Optional[bool] = None) -> None:
        self.first, self.last = first, last
        self.dynamic = last < first if dynamic is None else dynamic

    def __repr__(self) -> str:
        return f"Range({self.first}, {self.last})"


class List(Spec):
    """Values in the order of rows, then columns; with a :class:`Record`, one for each row."""

    def __init__(self, type: ElementType, label: Optional[str] = None, *, dynamic: bool = True) -> None:
        self.type, self.label, self.dynamic = type, label, dynamic

    def __repr__(self) -> str:
        return f"List({self.type!r}, {self.label!r})"


#: One index of an array: a name, a type, a set or a range.
Index = Union[str, ElementType, Set, Range]


class Array(Spec):
    """Values by index tuples.

    ``indices`` names the indices in the order of the columns: ``("product", "year")``, or with their types
    ``{"product": str, "year": int}``. The type of an index that has a name only is found when it was read: integers
    when all its values are integers, numbers when all are numbers, otherwise text. An index may also be a
    :class:`Set`, a :class:`Range`, or a set that was read before.

    ``type`` is as for :class:`Scalar`. A dynamic array, the default, has the entries that were read; one with
    ``dynamic=False`` has one at every combination of its indices, zero where nothing stood.
    """

    def __init__(self, indices: "Union[str, Sequence[Index], Mapping[str, Index]]", type: ElementType,
                 label: Optional[str] = None, *, dynamic: bool = True) -> None:
        self.type, self.label, self.dynamic = type, label, dynamic
        self.indices = indices_of(indices)

    def __repr__(self) -> str:
        return f"Array({tuple(name for name, _ in self.indices)!r}, {self.type!r}, {self.label!r})"


class Arrays(Spec):
    """Several arrays over the same indices, whose columns stand side by side: ``columns`` maps names to types."""

    def __init__(self, indices: "Union[str, Sequence[Index], Mapping[str, Index]]",
                 columns: Mapping[str, ElementType], label: Optional[str] = None) -> None:
        self.columns, self.label = dict(columns), label
        self.indices = indices_of(indices)

    def __repr__(self) -> str:
        return f"Arrays({tuple(name for name, _ in self.indices)!r}, {self.columns!r}, {self.label!r})"


class Frame(Spec):
    """A table with a header, read as a DataFrame of pandas.

    Columns of numbers become ``float64`` with not-a-number for empty cells, all else objects; ``dates`` names the columns
    that become ``datetime64``.
    """

    def __init__(self, label: Optional[str] = None, *, dates: Iterable[str] = ()) -> None:
        self.label, self.dates = label, tuple(dates)

    def __repr__(self) -> str:
        return f"Frame({self.label!r})"


class Guessed:
    """The type of an index that is found when it was read."""


def indices_of(indices: Any) -> ListOf[Tuple[str, Any]]:
    """Names and kinds of an array's indices."""
    if isinstance(indices, str) or not isinstance(indices, (tuple, list, Mapping)):
        indices = (indices,)
    if isinstance(indices, Mapping):
        return [(str(name), kind) for name, kind in indices.items()]
    made: ListOf[Tuple[str, Any]] = []
    for place, index in enumerate(indices, 1):
        if isinstance(index, str):
            made.append((index, Guessed))
        elif isinstance(index, tuple) and len(index) == 2 and isinstance(index[0], str):
            made.append((index[0], index[1]))
        else:
            made.append((f"index{place}", index))
    if not made:
        raise ValueError("an array has at least one index")
    return made
