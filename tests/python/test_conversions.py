"""Values that do not fit, and Python's code at bad moments: an exception each time, never a crash, never a silent
change."""
import dataclasses
import datetime
import decimal
import fractions
import gc
import math
import threading

import numpy as np
import pytest

import quillet
from quillet import Array, List, Range, Record, Scalar, Set, into, to

DATE = datetime.date
UTC = datetime.timezone.utc


class Index:
    def __index__(self):
        return 7


class Raises:
    """Whatever is asked of it, it raises."""
    def __index__(self):
        raise RuntimeError("no index")

    def __float__(self):
        raise RuntimeError("no float")


@dataclasses.dataclass
class Line:
    product: str
    qty: int


def written_and_read(session, value, type_, as_):
    session.write("xlsx:c.xlsx", to("[S$A1]", value, type=type_))
    return session.read("xlsx:c.xlsx", x=Scalar(as_, "[S$A1]")).x


@pytest.mark.parametrize("type_, value, expected", [
    (int, True, 1), (int, np.int64(5), 5), (int, Index(), 7), (int, np.uint8(255), 255),
    (float, 3, 3.0), (float, np.float16(0.5), 0.5), (float, np.float32(0.25), 0.25), (float, np.longdouble(0.5), 0.5),
    (float, decimal.Decimal("2.5"), 2.5), (float, fractions.Fraction(1, 4), 0.25), (float, 2**53, float(2**53)),
    (float, 2**60, float(2**60)), (float, np.int64(-2**40), -float(2**40)),
    (bool, np.bool_(True), True), (str, np.str_("x"), "x"), (str, None, ""), (str, "", ""),
    (DATE, None, None), (DATE, np.datetime64("2024-03-01T08:30"), datetime.datetime(2024, 3, 1, 8, 30)),
    (DATE, np.datetime64("NaT"), None), (DATE, DATE(9999, 12, 31), DATE(9999, 12, 31)),
    (DATE, datetime.datetime(2024, 3, 1, 1, 2, 3, 456789), datetime.datetime(2024, 3, 1, 1, 2, 3, 456000)),
    (object, None, None), (object, 2**40, float(2**40)), (object, np.int16(3), 3.0), (object, decimal.Decimal(1), 1.0),
])
def test_values_that_fit(session, type_, value, expected):
    assert written_and_read(session, value, type_, type_) == expected


@pytest.mark.parametrize("kind", "bhilqBHILQefdg?")
def test_scalars_of_numpy_of_all_widths(session, kind):
    value = np.dtype(kind).type(1)
    whole = np.issubdtype(value.dtype, np.integer)
    for type_ in (bool,) if kind == "?" else (float, int) if whole else (float,):
        assert written_and_read(session, value, type_, type_) == 1
        listed = session.new(List(type_), [value])
        assert listed == [1] and value in session.new(Set(type_ if type_ is not bool else object), [value])
        assert session.new(Array({"k": str}, type_), {"a": value})["a"] == 1
    assert written_and_read(session, value, None, bool if kind == "?" else float) == 1
    if whole:
        for extreme in (np.iinfo(value.dtype).min, np.iinfo(value.dtype).max):
            number = value.dtype.type(extreme)
            if -2**31 <= extreme < 2**31:
                assert written_and_read(session, number, int, int) == extreme
            else:
                with pytest.raises(OverflowError):
                    session.new(Scalar(int), number)


@pytest.mark.parametrize("type_, value, error", [
    (int, 2**31, OverflowError), (int, -2**31 - 1, OverflowError), (int, np.int64(2**40), OverflowError),
    (int, np.uint64(2**64 - 1), OverflowError), (int, 10**400, OverflowError), (int, 1.5, TypeError),
    (int, "1", TypeError), (int, None, TypeError), (int, math.nan, TypeError), (int, Raises(), RuntimeError),
    (float, 2**53 + 1, OverflowError), (float, np.int64(2**63 - 1), OverflowError), (float, 10**400, OverflowError),
    (float, "1", TypeError), (float, None, TypeError), (float, Raises(), RuntimeError), (float, 1j, TypeError),
    (bool, 1, TypeError), (bool, None, TypeError), (bool, "true", TypeError),
    (str, 1, TypeError), (str, b"x", TypeError), (str, "a\0b", ValueError), (str, "\ud800", UnicodeEncodeError),
    (str, "x\udcffy", UnicodeEncodeError),
    (DATE, "2024-03-01", TypeError), (DATE, 45000, TypeError),
    (DATE, datetime.datetime(2024, 3, 1, tzinfo=UTC), ValueError), (DATE, datetime.time(1, 2, tzinfo=UTC), ValueError),
    (DATE, np.datetime64("20000-01-01"), ValueError), (DATE, np.datetime64("-0500-01-01"), ValueError),
    (DATE, np.datetime64(2**62, "s"), ValueError), (DATE, np.datetime64(300_000, "Y"), ValueError),
    (object, "\udfff", UnicodeEncodeError), (object, "\0", ValueError), (object, b"x", TypeError),
    (object, 2**53 + 1, OverflowError), (object, object(), TypeError), (object, [1], TypeError),
    (Record(a=int, b=str), (1,), ValueError), (Record(a=int, b=str), {"a": 1}, KeyError),
    (Record(a=int, b=str), 5, (AttributeError, TypeError)), (Record(a=int, b=str), "ab", TypeError),
    (Record(a=int, b=str), None, TypeError), (Record(a=int, b=str), ("x", "y"), TypeError),
    (Record(a=Record(b=int)), {"a": {"b": 2**40}}, OverflowError), (complex, 1j, TypeError), ("int", 1, TypeError),
])
def test_values_that_do_not_fit(session, tmp_path, type_, value, error):
    with pytest.raises(error):
        session.new(Scalar(type_)).value = value
    with pytest.raises(error):
        session.write("xlsx:c.xlsx", to("[S$A1]", [value], type=type_))
    assert not (tmp_path / "c.xlsx").exists()


@pytest.mark.parametrize("value, type_", [
    (math.nan, float), (math.inf, float), (-math.inf, float),
])
def test_numbers_beyond_numbers(session, value, type_):
    session.write("xlsx:nan=NA;inf=INF;c.xlsx", to("[S$A1]", value))
    back = session.read("xlsx:nan=NA;inf=INF;c.xlsx", x=Scalar(float, "[S$A1]")).x
    assert back == value or (math.isnan(back) and math.isnan(value))
    session.write("csv:c.csv", to("[A1]", value))
    again = session.read("csv:c.csv", x=Scalar(float, "[A1]")).x
    assert again == value or (math.isnan(again) and math.isnan(value))


@pytest.mark.parametrize("day", [DATE(1, 1, 1), DATE(1582, 10, 14), DATE(1899, 12, 31), DATE(1900, 2, 28),
                                 DATE(1904, 1, 1), DATE(9999, 12, 31)])
def test_dates_keep_their_text_in_csv(session, day):
    session.write("csv:d.csv", to("[A1]", day))
    assert session.read("csv:d.csv", x=Scalar(DATE, "[A1]")).x == day


def test_dates_that_a_workbook_or_python_cannot_hold(session, csv):
    csv("0000-01-01\n")
    with pytest.raises(ValueError):
        session.read("csv:in.csv", x=Scalar(DATE, "[A1]"))
    days = session.read("csv:in.csv", x=List(DATE, "[A1]")).x
    with pytest.raises(ValueError):
        list(days)
    assert days.to_numpy()[0] == np.datetime64("0000-01-01")
    csv("10000-01-01\n", "far.csv")
    with pytest.raises(quillet.StatementError):
        session.read("csv:far.csv", x=Scalar(DATE, "[A1]"))


@pytest.mark.parametrize("dtype", ["f2", "f4", "f8", "g", "i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", ">f8", ">i4",
                                   "?", "U3", "O", "M8[s]", "M8[ns]"])
def test_arrays_of_numpy_of_all_widths(session, dtype):
    strange = np.array([10**9, 0, 10**9] if dtype == "M8[ns]" else [1, 0, 1]).astype(dtype)
    for values in (strange, strange[::-1], np.repeat(strange, 2)[::2], np.stack([strange, strange], 1)[:, 1]):
        session.write("xlsx:n.xlsx", to("[S$A1:A3]", values))
        kind = {"U": str, "M": DATE, "b": bool}.get(values.dtype.kind, float)
        back = session.read("xlsx:n.xlsx", x=List(kind, "[S$A1:A3]")).x.to_numpy()
        assert (back == values).all()


def test_matrices(session):
    for matrix in (np.arange(6.0).reshape(2, 3), np.arange(6).reshape(3, 2).T, np.arange(24.0).reshape(4, 6)[::2, ::2],
                   np.array([["a", "b", "c"], ["d", "e", "f"]]), np.array([[True, False, True]] * 2),
                   np.asfortranarray(np.arange(6.0).reshape(2, 3))):
        session.write("xlsx:m.xlsx", to("[S$A1:C2]", matrix))
        kind = {"U": str, "b": bool}.get(matrix.dtype.kind, float)
        back = session.new(Array((Range(1, 2), Range(1, 3)), kind, dynamic=False))
        session.read("xlsx:noindex;m.xlsx", x=into(back, "[S$A1:C2]"))
        assert (back.to_grid() == matrix).all()


def test_masked_arrays_have_empty_places(session, tmp_path):
    days = np.array(["2024-03-01", "2024-03-02T08:30"], dtype="M8[ns]")
    for values, expected in ((np.array([1.5, 2]), [1.5, None]), (np.array([2**40, 1]), [2.0**40, None]),
                             (days, ["2024-03-01T00:00:00", ""]), (np.array(["a", "b"]), ["a", ""])):
        masked = np.ma.array(values, mask=[False, True])
        for written in (masked, np.ma.stack([masked]).T):
            session.write("xlsx:m.xlsx", to("[S$A1:A2]", np.array(["x", "x"])), to("[S$A1:A2]", written))
            with quillet.open(tmp_path / "m.xlsx") as book:
                assert [book["S"][cell].value for cell in ("A1", "A2")] == expected
    moments = np.stack([days, days[::-1]])
    session.write("csv:d.csv", to("[A1:B2]", moments))
    back = session.new(Array((Range(1, 2), Range(1, 2)), DATE, dynamic=False))
    session.read("csv:noindex;d.csv", x=into(back, "[A1:B2]"))
    assert (back.to_grid() == moments.astype("M8[ms]")).all()


@pytest.mark.parametrize("value, error", [
    (np.array([2**53 + 1]), OverflowError), (np.array([[2**60 + 1, 1]]), OverflowError),
    (np.array([1j]), TypeError), (np.array([b"x"]), TypeError), (np.array([np.timedelta64(1, "D")]), TypeError),
    (np.array(["a\0b"], dtype=object), ValueError), (np.zeros((2, 2, 2)).astype("S1"), TypeError),
    ({1: 2, (1, 2): 3}, ValueError), ({"a": object()}, TypeError), ({object(): 1}, TypeError), ({"\ud800"}, UnicodeError),
    ([Line("a", 1), 5], TypeError), ([{"a": 1}, {"b": 1}], KeyError), (iter([Raises()]), RuntimeError),
    ([1, object], TypeError), (lambda: 0, TypeError),
])
def test_collections_that_do_not_fit(session, tmp_path, value, error):
    with pytest.raises(error):
        session.write("xlsx:c.xlsx", to("[S$A1:D9]", value))
    assert not (tmp_path / "c.xlsx").exists()


class Changing(dict):
    """A mapping that grows while it is gone through."""
    def items(self):
        for key in self:
            self[f"{key}{len(self)}"] = 1.0
            yield key, 1.0


class ChangingSet(set):
    def __iter__(self):
        for element in set.__iter__(self):
            self.add(f"{element}{len(self)}")
            yield element


def test_collections_that_change_while_they_are_written(session, tmp_path):
    for changing in (Changing(a=1.0), ChangingSet("a")):
        with pytest.raises(RuntimeError):
            session.write("xlsx:c.xlsx", to("[S$A1:B9]", changing))
        with pytest.raises(RuntimeError):
            session.new(Set(str), ChangingSet("a"))
    assert not (tmp_path / "c.xlsx").exists()

    numbers = session.new(List(object))

    class Adds:
        """Empties or extends the list that takes it."""
        def __float__(self):
            numbers.extend([1.0] * 1000)
            return 2.0

    numbers.extend([Adds(), Adds()])
    assert len(numbers) == 2002
    array = session.new(Array({"k": str}, float))

    class Puts:
        def __float__(self):
            array.update({f"k{i}": float(i) for i in range(1000)})
            return 5.0

    array["k1"] = Puts()
    assert array["k1"] == 5 and len(array) == 1000
    growing = session.new(Set(float), [1.0])

    class Grows:
        def __float__(self):
            for i in range(100):
                growing.add(1000.0 + i)
            return 2.0

    growing.add(Grows())
    assert len(growing) == 102 and Grows() in growing


def test_exceptions_in_callbacks_leave_nothing_behind(session):
    array = session.new(Array(("a", "b"), float))
    with pytest.raises(RuntimeError, match="no index"):
        array.update([(("x", "y"), 1.0), (("x", "z"), Raises())])
    assert array == {("x", "y"): 1.0}

    def entries():
        yield ("p", "q"), 2.0
        raise LookupError("stop")

    with pytest.raises(LookupError):
        array.update(entries())
    assert array["p", "q"] == 2
    for wrong in (5, [5], [("p", "q")], [(("p",), 1.0)], [("p", 1.0)]):
        with pytest.raises((TypeError, ValueError)):
            array.update(wrong)


def test_keys_that_no_set_has(session, csv):
    csv("a,1\n")
    data = session.read("csv:in.csv", x=Array({"k": str}, float, "[A:B]"), s=Set(int, "[B:B]"))
    for key in (None, 1, 1.5, "\ud800", "a\0", b"a", object(), ("a", "b"), (), [], Raises, np.nan, 10**400):
        assert key not in data.x and key not in data.s or key == 1
        with pytest.raises(KeyError):
            data.x[key]
    assert data.x["a"] == 1 == data.x["a",] and 1 in data.s
    with pytest.raises(RuntimeError):
        Raises() in data.s


def test_places_and_fields_out_of_range(session, csv):
    csv("1,x\n")
    line = Record(a=int, b=str)
    data = session.read("csv:in.csv", n=List(int, "[A:A]"), r=List(line, "[A:B]"), s=Set(int, "[A:A]"))
    for bad in (1, -2, 2**70):
        for container in (data.n, data.s):
            with pytest.raises((IndexError, OverflowError)):
                container[bad]
    with pytest.raises(KeyError):
        data.r.column("c")
    with pytest.raises(TypeError):
        data.n.column("a")
    with pytest.raises(AttributeError):
        data.missing


def test_what_was_read_outlives_its_session(tmp_path, csv):
    csv("a,1\nb,2\n")
    session = quillet.Session(directory=tmp_path)
    data = session.read("csv:in.csv", x=Array("k", float, "[A:B]"), t=List(str, "[A:A]"))
    source = session.open("csv:in.csv")
    numbers = data.x.to_numpy()
    other = session.context(1)
    session.close()
    session.close()
    assert source.closed
    for use in (lambda: session.read("csv:in.csv", x=Scalar(int, "[B1]")), lambda: source.read(x=Scalar(int, "[B1]")),
                lambda: session.write("csv:out.csv"), lambda: session.open("csv:in.csv"), lambda: other.new(List(int)),
                lambda: session.set_parameters(finish=True), source.__enter__, session.__enter__):
        with pytest.raises(ValueError, match="closed"):
            use()
    del session, source, other
    gc.collect()
    assert data.x == {"a": 1, "b": 2} and data.t == ["a", "b"]
    del data
    gc.collect()
    assert numbers.tolist() == [1, 2]


def test_containers_of_another_session(tmp_path, csv):
    csv("a,1\nb,2\n")
    line = Record(k=str, n=int)
    with quillet.Session(directory=tmp_path) as first:
        data = first.read("csv:in.csv", x=Array("k", float, "[A:B]"), rows=List(line, "[A:B]"), s=Set(str, "[A:A]"))
        days = first.new(Set(DATE), [DATE(2024, 3, 1)])
    with quillet.Session(directory=tmp_path) as second:
        second.write("csv:out.csv", to("grow;[A1:B1]", data.x), to("grow;[C1:D1]", data.rows), to("grow;[E1]", days))
        assert (tmp_path / "out.csv").read_text() == "a,1,a,1,2024-03-01\nb,2,b,2\n"
        with pytest.raises(ValueError, match="another session"):
            second.read("csv:in.csv", x=into(data.x, "[A:B]"))
        with pytest.raises(ValueError, match="session"):
            second.new(Array({"k": data.s}, float))


def test_texts_that_are_no_utf8_are_kept(session, csv):
    csv(b"M\xfcller,caf\xc3\xa9\n")
    data = session.read("csv:in.csv", x=List(str, "[A1:B1]"))
    assert list(data.x) == ["M\udcfcller", "café"]
    assert data.x[0].encode("utf-8", "surrogateescape") == b"M\xfcller"


def test_arguments_of_wrong_kinds(session):
    for wrong in (None, 5, b"csv:x.csv"):
        with pytest.raises(TypeError):
            session.read(wrong)
    for wrong in ("csv:\0", "csv:\ud800.csv"):
        with pytest.raises(ValueError):
            session.read(wrong)
    with pytest.raises(quillet.StatementError):
        session.read("")
    for spec in (5, None, float, "[A1]", {}):
        with pytest.raises(TypeError):
            session.read("csv:in.csv", x=spec)
    with pytest.raises(TypeError):
        session.write("csv:out.csv", 5)
    with pytest.raises(TypeError):
        session.write("csv:out.csv", to(5, 1))
    with pytest.raises(ValueError):
        session.write("csv:out.csv", to("[A1]\0", 1))
    for make in (lambda: Record(), lambda: Array((), float), lambda: quillet.Session(contexts=0),
                 lambda: session.context(2), lambda: session.context(0),
                 lambda: session.new(Range(-2**31, 2**31 - 1))):
        with pytest.raises(ValueError):
            make()
    with pytest.raises(quillet.ModuleError):
        quillet.Session(module="/nowhere/quillet.dso")


def test_a_record_too_large_and_too_many_types(session):
    with pytest.raises((ValueError, OverflowError, RuntimeError)):
        session.new(Scalar(Record(**{f"f{i}": int for i in range(1100)})))
    wide = Record(**{f"f{i}": int for i in range(1024)})
    with pytest.raises((ValueError, quillet.StatementError)):
        session.write("csv:out.csv", to("[A1]", session.new(Scalar(wide))))


def test_containers_are_refused_while_a_statement_has_them(tmp_path):
    session = quillet.Session(directory=tmp_path)
    session.write("xlsx:b.xlsx", to("grow;[S$A1:T1]", np.arange(200_000.0).reshape(10_000, 20)))
    numbers = session.new(List(float))
    seen, stop = set(), threading.Event()

    def poke():
        while not stop.is_set():
            try:
                len(numbers), numbers.to_numpy().sum(), list(numbers)[:1]
            except RuntimeError as error:
                seen.add(str(error))

    thread = threading.Thread(target=poke)
    thread.start()
    try:
        for _ in range(3):
            while True:  # while the other thread looks at the numbers the statement is refused
                try:
                    session.read("xlsx:b.xlsx", x=into(numbers, "[S$]"))
                    break
                except BufferError:
                    continue
    finally:
        stop.set()
        thread.join()
    assert len(numbers) == 600_000
    assert seen <= {"a statement on another thread is at work on this"}


def test_reference_counts_stay_over_a_thousand_rounds(session, csv, counts_stay):
    csv("a,1,x\nb,2,y\n")
    line = Record(k=str, n=float, t=str)
    text, number, key = "a text of its own", 1234.5, ("a", "b")
    entries = {key: number}

    def round_():
        session.write("csv:out.csv", to("[A1:C1]", entries), to("[A2]", [text]), to("[A3:B3]", np.array([[number, 1]])))
        data = session.read("csv:in.csv", a=Array(("k", "m"), str, "[A:C]"), r=List(line, "[A:C]"), s=Set(str, "[A:A]"))
        list(data.r), dict(data.a), list(data.s), data.r.to_numpy(), data.a.to_numpy(), "a" in data.s, repr(data)
        for bad in (to("[A1]", "\ud800"), to("[A1]", [1, object()])):
            with pytest.raises((UnicodeEncodeError, TypeError)):
                session.write("csv:out.csv", bad)
        with pytest.raises(quillet.StatementError):
            session.read("csv:none.csv", x=Scalar(int, "[A1]"))

    counts_stay(round_, (text, number, key, entries, line, line.made, None, True, session, session._core,
                         session._types))
