"""Sessions: reading and writing files by statements."""
from __future__ import annotations

import contextlib
import os
import sys
import types
import warnings
from typing import Any, Dict, Iterable, Iterator, List as ListOf, Optional, Tuple

from . import _frames, _quillet as native, _specs as specs
from ._containers import ArrayData, Held, ListData, ScalarData, SetData
from ._errors import StatementError, StatementWarning
from ._locate import find_module
from ._types import Record, TypeTable
from ._writing import To, container_of, new_list


class Into:
    """A container and the place that it is filled from; made by :func:`into`."""

    def __init__(self, container: Held, label: Optional[str]) -> None:
        self.container, self.label = container, label


def into(container: Held, label: Optional[str] = None) -> Into:
    """For ``read``: what stands at ``label`` goes into a container that is there already, beside what it has."""
    return Into(container, label)


class Data:
    """What a statement read: an attribute, and an item, for each name."""

    __slots__ = ("__dict__", "_counts")

    def __init__(self, values: Dict[str, Any]) -> None:
        self.__dict__.update(values)

    def __getitem__(self, name: str) -> Any:
        return self.__dict__[name]

    def __getattr__(self, name: str) -> Any:
        raise AttributeError(f"the statement read nothing called {name!r}")

    def __iter__(self) -> Iterator[str]:
        return iter(self.__dict__)

    def __len__(self) -> int:
        return len(self.__dict__)

    def __repr__(self) -> str:
        return f"Data({', '.join(f'{name}={value!r}' for name, value in self.__dict__.items())})"


class Session:
    """Reads and writes workbooks and csv files by statements.

    A source is a driver, options and a file name, as in ``"xlsx:skiph;plan.xlsx"``; the drivers are ``xls``, ``xlsx``
    and ``csv``. Relative names start at ``directory``, the current one when none is given.

    ``realformat`` is how numbers become text, a printf format for one double. ``finish``: sets that were read take no
    more elements. ``deny``: files, and folders with all that they hold, to which access is refused. ``contexts``: how
    many statements may run at once on different threads, see :meth:`context`. ``catalogue``: a file with translations
    of the messages. ``module``: the native module where it is not found by itself.

    Statements release the interpreter's lock. A session runs one at a time in each of its contexts; sessions on
    different threads run side by side. Texts that were read live as long as the session.
    """

    def __init__(self, *, directory: "str | os.PathLike[str] | None" = None, contexts: int = 1,
                 realformat: Optional[str] = None, finish: Optional[bool] = None,
                 deny: "Iterable[str | os.PathLike[str]]" = (), catalogue: str = "",
                 module: Optional[str] = None) -> None:
        if contexts < 1:
            raise ValueError("a session has at least one context")
        self._core = native.SessionCore(module or find_module(), os.fspath(directory or ""), catalogue)
        self._types = TypeTable(self._core)
        self._contexts, self._number = contexts, 1
        self._shared = types.SimpleNamespace(closed=False, sources=[])
        self.set_parameters(realformat=realformat, finish=finish, deny=deny)

    def context(self, number: int) -> "Session":
        """The same session in another of its contexts, counted from 1: with sources and parameters of its own, which
        begin as those of the first."""
        if not 1 <= number <= self._contexts:
            raise ValueError(f"this session has the contexts 1 to {self._contexts}")
        other: Session = object.__new__(type(self))
        other.__dict__.update(self.__dict__)
        other._number = number
        return other

    def set_parameters(self, *, realformat: Optional[str] = None, finish: Optional[bool] = None,
                       deny: "Iterable[str | os.PathLike[str]]" = ()) -> None:
        """Changes the context's parameters, as told for the class. Rules of ``deny`` add up."""
        self._check_open()
        if isinstance(deny, (str, os.PathLike)):
            deny = [deny]
        self._core.set_parameters(self._number, realformat, finish, [os.fspath(rule) for rule in deny])

    def read(self, source: str, /, **items: Any) -> Data:
        """Reads items, each described by a :class:`Scalar`, :class:`Set`, :class:`List`, :class:`Array`,
        :class:`Arrays` or :class:`Frame`, or told by :func:`into`.

        The result has an attribute for each. Messages become warnings of class :class:`StatementWarning`. Raises
        :class:`StatementError` when the statement failed.
        """
        self._check_open()
        reading = _Reading(self, items)
        told = self._transfer(source, False, reading.items)
        counts = reading.counts(told.counts)
        if told.status != 0 or told.close != 0:
            error = self._error(source, told)
            error.counts = counts
            try:
                error.data = reading.finished()
            except Exception:  # what was read in half need not make sense
                error.data = None
            raise error
        self._warn(told)
        data = reading.finished()
        data._counts = counts
        return data

    def write(self, source: str, /, *items: To) -> None:
        """Writes items, each made by :func:`to`. A file that exists is changed in place: what no item touches stays.

        Raises :class:`StatementError` when the statement failed; what could be written is in the file then.
        """
        self._check_open()
        for item in items:
            if not isinstance(item, To):
                raise TypeError(f"an item to write is made by quillet.to(label, value), not {type(item).__name__}")
        containers = [container_of(self, item) for item in items]
        told = self._transfer(source, True, containers)
        if told.status != 0 or told.close != 0:
            raise self._error(source, told)
        self._warn(told)

    def open(self, source: str, *, update: bool = False) -> "Source":
        """Holds a file open over several statements, which then work on the same cells in memory. ``update``: it is
        written once, when it is closed; otherwise it can only be read.

        >>> with session.open("xlsx:plan.xlsx", update=True) as plan:       # doctest: +SKIP
        ...     plan.write(quillet.to("Total", 12.5))
        """
        self._check_open()
        opened, messages, driver, host = self._core.open(self._number, source, update)
        told = _Told(0 if opened is not None else -1, [], 0, messages, driver, host)
        if opened is None:
            raise self._error(source, told)
        self._warn(told)
        made = Source(self, source, opened)
        self._shared.sources.append(made)
        return made

    def new(self, spec: specs.Spec, value: Any = None) -> Any:
        """An empty container, or one with a value, for :func:`into` and :func:`to`."""
        self._check_open()
        made = _Maker(self).make("", spec)
        if value is not None:
            if isinstance(made, ScalarData):
                made.value = value
            elif isinstance(made, SetData):
                made._native.set_extend(value)
            elif isinstance(made, ListData):
                made.extend(value)
            else:
                made.update(value)
        return made

    @property
    def drivers(self) -> Dict[str, str]:
        """The drivers with their usage texts."""
        return self._core.drivers

    def close(self) -> None:
        """Closes the session and the sources that it holds open, saving those that were opened for update. What was
        read stays usable."""
        if self._shared.closed:
            return
        with contextlib.ExitStack() as closing:  # all of them, whatever one raises
            closing.callback(setattr, self._shared, "closed", True)
            for source in self._shared.sources:
                closing.callback(source.close)

    @property
    def closed(self) -> bool:
        """Whether the session was closed."""
        return self._shared.closed

    def __enter__(self) -> "Session":
        self._check_open()
        return self

    def __exit__(self, *raised: object) -> None:
        self.close()

    def _check_open(self) -> None:
        if self._shared.closed:
            raise ValueError("this session is closed")

    def _transfer(self, source: str, writing: bool, items: Any) -> "_Told":
        return _Told(*self._core.transfer(self._number, source, writing, items))

    def _error(self, source: str, told: "_Told") -> StatementError:
        return StatementError(source, told.messages, told.driver, told.host, told.status, told.counts, told.close)

    def _warn(self, told: "_Told") -> None:
        texts = [text.rstrip("\n") for text in told.messages]
        texts += [f"{text} ({code})" for code, text in told.driver]
        for text in texts + list(told.host):
            warnings.warn(text, StatementWarning, stacklevel=_caller())


class Source:
    """A file that a session holds open. Closed at the end of a ``with`` block, also when an exception ended it."""

    def __init__(self, session: Session, source: str, opened: Any) -> None:
        self._session, self._source, self._opened = session, source, opened

    def read(self, /, **items: Any) -> Data:
        """Reads items, as :meth:`Session.read`."""
        self._check_open()
        return self._session.read(self._source, **items)

    def write(self, *items: To) -> None:
        """Writes items, as :meth:`Session.write`; the file itself is written by :meth:`close`."""
        self._check_open()
        self._session.write(self._source, *items)

    def close(self) -> None:
        """Closes the file, and saves it when it was opened for update. Raises :class:`StatementError` when it cannot be
        saved."""
        if not self._opened.is_open:
            return
        sources = self._session._shared.sources
        if self in sources:
            sources.remove(self)
        status, messages, driver, host = self._opened.close()
        told = _Told(status, [], status, messages, driver, host)
        if status != 0:
            raise self._session._error(self._source, told)
        self._session._warn(told)

    @property
    def closed(self) -> bool:
        """Whether the source was closed."""
        return not self._opened.is_open

    def _check_open(self) -> None:
        self._session._check_open()
        if not self._opened.is_open:
            raise ValueError("this source is closed")

    def __enter__(self) -> "Source":
        self._check_open()
        return self

    def __exit__(self, *raised: object) -> None:
        self.close()


def _caller() -> int:
    """How far up the stack the statement of whoever uses this package stands, for a warning of the calling function."""
    frame, level = sys._getframe(1), 1
    while frame.f_back is not None and frame.f_code.co_filename == __file__:
        frame, level = frame.f_back, level + 1
    return level


class _Told:
    """How a statement ended."""

    def __init__(self, status: int, counts: ListOf[int], close: Optional[int], messages: ListOf[str],
                 driver: ListOf[Tuple[int, str]], host: ListOf[str]) -> None:
        self.status, self.counts, self.close = status, counts, close
        self.messages, self.driver, self.host = messages, driver, host


class _Maker:
    """Makes the containers of a statement; indices of one name share their set."""

    def __init__(self, session: Session) -> None:
        self._session = session
        self._core, self._types = session._core, session._types
        self._made: Dict[int, Any] = {}
        self._named: Dict[str, Any] = {}

    def make(self, name: str, spec: specs.Spec) -> Held:
        if isinstance(spec, specs.Scalar):
            return ScalarData(native.Container.scalar(self._core, self._types.number(spec.type)))
        if isinstance(spec, specs.Set):
            return SetData(self.index_set(spec, name))
        if isinstance(spec, specs.Range):
            return SetData(self.index_set(spec, name))
        if isinstance(spec, specs.List):
            return ListData(new_list(self._session, spec.type, spec.dynamic),
                            self._types.record(self._types.number(spec.type)))
        if isinstance(spec, specs.Array):
            return self.array([self.index_set(kind, index) for index, kind in spec.indices],
                              [index for index, _ in spec.indices], spec.type, spec.dynamic)
        raise TypeError(f"{type(spec).__name__} describes nothing that can be read")

    def array(self, sets: ListOf[Any], names: ListOf[str], type_: Any, dynamic: bool) -> ArrayData:
        number = self._types.number(type_)
        return ArrayData(native.Container.array(self._core, sets, number, dynamic), tuple(names),
                         self._types.record(number))

    def index_set(self, kind: Any, name: str) -> Any:
        if isinstance(kind, SetData):
            return kind._native
        if name and name in self._named:
            return self._named[name]
        if isinstance(kind, (specs.Set, specs.Range)) and id(kind) in self._made:
            return self._made[id(kind)]
        if isinstance(kind, specs.Range):
            made = native.Container.range(self._core, kind.first, kind.last, kind.dynamic)
        elif isinstance(kind, specs.Set):
            made = native.Container.set(self._core, self._types.index_number(kind.type), kind.dynamic)
            made.set_extend(kind.values)
        elif kind is specs.Guessed:
            return native.Container.set(self._core, native.TYPE_TEXT, True)
        else:
            return native.Container.set(self._core, self._types.index_number(kind), True)
        self._made[id(kind)] = made
        return made

    def declare(self, name: str, spec: specs.Spec) -> Held:
        """A set that is an item; later indices of its name are this set."""
        made = self.make("", spec)
        self._named[name] = made._native
        return made


class _Reading:
    """The items of a read statement."""

    def __init__(self, session: Session, items: Dict[str, Any]) -> None:
        self._session = session
        self.items: ListOf[Tuple[Optional[str], Any]] = []
        self._results: Dict[str, Any] = {}
        self._guessed: ListOf[Tuple[ArrayData, int]] = []
        self._counted: ListOf[int] = []
        maker = _Maker(session)
        sets = {name: maker.declare(name, spec) for name, spec in items.items() if isinstance(spec, specs.Set)}
        for name, spec in items.items():
            if name in sets:
                self._results[name] = sets[name]
                self._item(spec.label, sets[name]._native)
            else:
                self._add(maker, name, spec)

    def _item(self, label: Optional[str], container: Any) -> None:
        self._counted.append(len(self.items))
        self.items.append((label, container))

    def _add(self, maker: _Maker, name: str, spec: Any) -> None:
        if isinstance(spec, Into):
            self._results[name] = spec.container
            self._item(spec.label, spec.container._native)
        elif isinstance(spec, specs.Frame):
            rows = specs.Array((specs.Range(), str), object)
            made = maker.make("", rows)
            self._results[name] = (spec, made)
            self._item("dataframe;skiph;" + (spec.label or "[]"), made._native)
        elif isinstance(spec, specs.Arrays):
            self._add_arrays(maker, name, spec)
        elif isinstance(spec, specs.Spec):
            made = maker.make("", spec)
            self._results[name] = made
            if isinstance(spec, specs.Array):
                self._note_guesses(spec, made)
            self._item(spec.label, made._native)
        else:
            raise TypeError(f"{name} is described by {type(spec).__name__}: take a Scalar, Set, List, Array, Arrays or "
                            "Frame, or into(...)")

    def _note_guesses(self, spec: Any, made: Any) -> None:
        for place, (_, kind) in enumerate(spec.indices):
            shared = made._native.array_sets[place]
            named = any(shared is container for _, container in self.items)
            if kind is specs.Guessed and not named:
                self._guessed.append((made, place))

    def _add_arrays(self, maker: _Maker, name: str, spec: specs.Arrays) -> None:
        sets = [maker.index_set(kind, index) for index, kind in spec.indices]
        names = [index for index, _ in spec.indices]
        made = {column: maker.array(sets, names, type_, True) for column, type_ in spec.columns.items()}
        held = native.Container.list(maker._core, native.WORD_ARRAY, True)
        for array in made.values():
            held.list_append_container(array._native)
            self._note_guesses(spec, array)
        self._results[name] = Data(made)
        self._item(spec.label, held)

    def counts(self, counts: ListOf[int]) -> Tuple[int, ...]:
        return tuple(counts[place] for place in self._counted if place < len(counts))

    def finished(self) -> Data:
        """The results, with scalars as their values and the types of indices found."""
        found: Dict[int, Any] = {}
        for array, place in self._guessed:
            _find_type(self._session, array, place, found)
        return Data({name: _result(made) for name, made in self._results.items()})


def _result(made: Any) -> Any:
    if isinstance(made, ScalarData):
        return made.value
    if isinstance(made, tuple):
        return _frames.table(made[1], made[0].dates)
    return made


def _find_type(session: Session, array: ArrayData, place: int, found: Dict[int, Any]) -> None:
    """Gives an index of texts the type of numbers when all of its elements are."""
    texts = array._native.array_sets[place]
    if id(texts) not in found:
        elements = texts.set_elements()
        found[id(texts)] = (texts, None)
        for number, type_ in ((_whole, native.TYPE_INTEGER), (_number, native.TYPE_REAL)):
            numbers = [number(element) for element in elements]
            if elements and None not in numbers:
                made = native.Container.set(session._core, type_, True)
                made.set_extend(numbers)
                found[id(texts)] = (texts, made)
                break
    made = found[id(texts)][1]
    if made is not None:
        array._native.array_exchange_set(place, made)


def _whole(text: str) -> Optional[int]:
    try:
        number = int(text)
    except ValueError:
        return None
    return number if str(number) == text and -2**31 <= number < 2**31 else None


def _number(text: str) -> Optional[float]:
    try:
        number = float(text)
    except ValueError:
        return None
    return number if "%.15g" % number == text and number - number == 0 else None
