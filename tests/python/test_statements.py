"""Reading and writing by statements: every kind of thing and layout, both ways, in all three drivers."""
import datetime
import threading
import warnings

import numpy as np
import pytest

import quillet
from quillet import Array, Arrays, List, Range, Record, Scalar, Set, into, to

DRIVERS = ["xlsx", "xls", "csv"]
DAY = datetime.date(2024, 3, 1)
MOMENT = datetime.datetime(2024, 3, 1, 8, 30, 5, 250000)


@pytest.fixture(params=DRIVERS)
def file(request):
    return f"{request.param}:t.{request.param}"


def area(file, cells, sheet="S"):
    """A label; csv files have one sheet without a name."""
    return f"[{cells}]" if file.startswith("csv") else f"[{sheet}${cells}]"


@pytest.mark.parametrize("type_, value", [
    (int, -2**31), (int, 2**31 - 1), (float, 0.1), (float, -1e300), (str, "Änderung 数"), (bool, True), (bool, False),
    (datetime.date, DAY), (datetime.date, MOMENT), (datetime.date, datetime.time(8, 30)),
    (object, 1.5), (object, "x"), (object, True),
])
def test_scalars_come_back(session, file, type_, value):
    session.write(file, to(area(file, "B2"), value, type=type_))
    back = session.read(file, x=Scalar(type_, area(file, "B2"))).x
    assert back == value and type(back) is type(value)


def test_lists_and_sets_in_order(session, file):
    session.write(file, to("grow;" + area(file, "A1"), ["b", "a", "b"]), to("grow;" + area(file, "B1"), [3, 1, 2]),
                  to("grow;" + area(file, "C1"), {2.5: 0}.keys()))
    data = session.read(file, texts=List(str, area(file, "A1:A3")), numbers=List(int, area(file, "B1:B3")),
                        different=Set(str, area(file, "A1:A3")), reals=Set(float, area(file, "C1:C3")))
    assert data.texts == ["b", "a", "b"] and data.texts[-1] == "b" and data.texts[1:] == ["a", "b"]
    assert data.numbers.to_numpy().tolist() == [3, 1, 2] and data.numbers.to_numpy().dtype == np.int32
    assert list(data.different) == ["b", "a"] and data.different.index("a") == 1 and "c" not in data.different
    assert data.reals == {2.5} and data.different | {"c"} == {"a", "b", "c"}


def test_arrays_by_index_columns(session, file):
    demand = {("anvil", 2024): 135.5, ("bolt", 2024): 3.0, ("anvil", 2023): 1.0}
    session.write(file, to("grow;" + area(file, "A1:C1"), demand))
    label = area(file, "A1:C3")
    data = session.read(file, found=Array(("product", "year"), float, label),
                        typed=Array({"product": str, "year": float}, int, label))
    assert dict(data.found.items()) == demand and data.found == demand
    assert data.found["anvil", 2024] == 135.5 and ("anvil", 2025) not in data.found and "anvil" not in data.found
    assert [type(part) for part in next(iter(data.found))] == [str, int]
    assert data.typed["anvil", 2023.0] == 1 and isinstance(data.typed["bolt", 2024], int)
    with pytest.raises(KeyError):
        data.found["anvil", 1999]
    assert [list(s) for s in data.found.sets] == [["anvil", "bolt"], [2024, 2023]]


def test_records_are_rows(session, file):
    line = Record(product=str, qty=int, price=float, day=datetime.date)
    rows = [line("bolt", 12, 0.5, DAY), line("nut", 7, 0.25, None)]
    session.write(file, to("grow;" + area(file, "A1:D1"), rows, type=line),
                  to(area(file, "F1:I1"), line("x", 1, 2.0, DAY), type=line))
    data = session.read(file, rows=List(line, area(file, "A1:D2")), one=Scalar(line, area(file, "F1:I1")))
    assert list(data.rows) == rows and data.rows[0].price == 0.5 and data.one == ("x", 1, 2.0, DAY)
    assert data.rows.column("qty").tolist() == [12, 7]
    assert data.rows.column("day").dtype == "datetime64[ms]" and np.isnat(data.rows.column("day")[1])
    assert data.rows.to_numpy()["price"].tolist() == [0.5, 0.25]


def test_several_arrays_share_their_indices(session, file):
    session.write(file, to("grow;" + area(file, "A1:C1"), [("a", 1.5, 2), ("b", 2.5, 3)],
                           type=Record(k=str, x=float, y=int)))
    data = session.read(file, both=Arrays("k", {"x": float, "y": int}, area(file, "A1:C2")))
    assert data.both.x == {"a": 1.5, "b": 2.5} and data.both["y"] == {"a": 2, "b": 3}


@pytest.mark.parametrize("option, cells, text", [
    ("", "A1:C1", "1,1,1\n1,2,2\n2,1,3\n2,2,4\n"),
    ("noindex;", "A1:B1", "1,2\n3,4\n"),
    ("partndx;", "A1:C1", "1,1,2\n2,3,4\n"),
])
def test_layouts_of_arrays(session, tmp_path, option, cells, text):
    array = session.new(Array((Range(1, 2), Range(1, 2)), float, dynamic=False),
                        {(1, 1): 1, (1, 2): 2, (2, 1): 3, (2, 2): 4})
    session.write("csv:t.csv", to(f"grow;{option}[{cells}]", array))
    assert (tmp_path / "t.csv").read_text() == text
    back = session.new(Array((Range(1, 2), Range(1, 2)), float, dynamic=False))
    session.read("csv:t.csv", x=into(back, option + "[]"))
    assert back.to_grid().tolist() == [[1, 2], [3, 4]]


def test_numbers_of_static_arrays_are_not_copied(session, csv):
    csv("1,2\n3,4\n")
    array = session.new(Array((Range(1, 2), Range(1, 2)), float, dynamic=False))
    session.read("csv:noindex;in.csv", x=into(array, "[]"))
    first, second = array.to_numpy(), array.to_numpy()
    assert np.shares_memory(first, second) and not first.flags.writeable and first.tolist() == [1, 2, 3, 4]
    with pytest.raises(BufferError):
        session.read("csv:noindex;in.csv", x=into(array, "[]"))
    del first, second
    session.read("csv:noindex;in.csv", x=into(array, "[]"))


def test_indices_that_share_a_set(session, csv):
    csv("a,1\nb,2\nz,9\n")
    plants = Set(str, values=["a", "b"], dynamic=False)
    with pytest.raises(quillet.StatementError) as raised:
        session.read("csv:in.csv", cost=Array({"plant": plants}, float, "[A:B]"))
    assert raised.value.messages == ("SHEET: Wrong index value at [R3C1].\n",)
    assert raised.value.counts == (2,) and raised.value.data.cost == {"a": 1, "b": 2}
    data = session.read("csv:in.csv", plant=Set(str, "[A:A]"), cost=Array("plant", float, "[A:B]"))
    assert list(data.cost.sets[0]) == list(data.plant)


def test_into_adds_to_what_is_there(session, csv):
    csv("1\n2\n")
    numbers = session.new(List(int), [7])
    session.read("csv:in.csv", x=into(numbers, "[A:A]"))
    assert numbers == [7, 1, 2]
    scalar = session.new(Scalar(float), 3.5)
    session.read("csv:in.csv", x=into(scalar, "[A2]"))
    assert scalar.value == 2


def test_failures_tell_messages_codes_and_counts(session, csv, tmp_path):
    csv("a,1\n,2\n")
    with pytest.raises(quillet.StatementError) as raised:
        session.read("csv:in.csv", x=Array("k", float, "[A1:B2]"))
    error = raised.value
    assert (error.status, error.close, error.counts) == (1, 0, (1,))
    assert error.messages == ("SHEET: An index cannot be an empty cell ([R2C1]).\n",)
    with pytest.raises(quillet.StatementError) as raised:
        session.read("csv:none.csv", x=Scalar(int, "[A1]"))
    assert raised.value.status == -1 and raised.value.close is None
    assert "cannot open 'none.csv' for reading: No such file or directory" in str(raised.value)
    with pytest.raises(quillet.StatementError, match="there is no driver 'ods'"):
        session.read("ods:x.ods", x=Scalar(int, "[A1]"))
    (tmp_path / "bad.xlsx").write_bytes(b"PK\3\4 no workbook")
    with pytest.raises(quillet.StatementError) as raised:
        session.read("xlsx:bad.xlsx", x=Scalar(int, "[A1]"))
    assert raised.value.driver[0][0] == 7


def test_messages_of_statements_that_succeed_are_warnings(session, workbook, capfd):
    line = Record(a=float, b=float)
    workbook("e.xlsx", '<row r="1"><c r="A1" t="e"><v>#DIV/0!</v></c><c r="B1"><v>2</v></c></row>')
    with pytest.warns(quillet.StatementWarning, match=r"\[R1C1\]") as warned:
        data = session.read("xlsx:e.xlsx", rows=List(line, "[S$A1:B1]"))
        with session.open("xlsx:e.xlsx") as source:
            source.read(self=List(line, "[S$A1:B1]"))
    assert list(data.rows) == [(0.0, 2.0)]
    assert len(warned) == 2 and {warning.filename for warning in warned} == {__file__}
    assert capfd.readouterr() == ("", "")


def test_one_save_for_several_statements(session, tmp_path):
    with session.open("xlsx:plan.xlsx", update=True) as plan:
        plan.write(to("[S$A1]", 1.5))
        assert plan.read(x=Scalar(float, "[S$A1]")).x == 1.5
        assert (tmp_path / "plan.xlsx").stat().st_size == 0
    assert (tmp_path / "plan.xlsx").stat().st_size > 0 and plan.closed
    with session.open("xlsx:plan.xlsx") as plan, pytest.raises(quillet.StatementError) as raised:
        plan.write(to("[S$A1]", 2.5))
    assert raised.value.driver == ((2, "file already open for reading only"),)


def test_closing_a_session_closes_all_its_sources(session, tmp_path):
    (tmp_path / "gone").mkdir()
    sources = [session.open(f"csv:{name}.csv", update=True) for name in ("a", "gone/b", "c")]
    for source in sources:
        source.write(to("[A1]", 1))
    (tmp_path / "gone" / "b.csv").unlink(missing_ok=True)
    (tmp_path / "gone").rmdir()
    with pytest.raises(quillet.StatementError):
        session.close()
    assert session.closed and all(source.closed for source in sources)
    assert (tmp_path / "a.csv").read_text() == (tmp_path / "c.csv").read_text() == "1\n"


def test_parameters_and_rules(session, csv, tmp_path):
    csv("1\n")
    other = quillet.Session(directory=tmp_path, realformat="%.3f", finish=True, deny=["in.csv"])
    with pytest.raises(quillet.StatementError, match="access denied"):
        other.read("csv:in.csv", x=Scalar(int, "[A1]"))
    other.write("csv:out.csv", to("[A1]", 2 / 3))
    assert (tmp_path / "out.csv").read_text() == "0.667\n"
    many = quillet.Session(directory=tmp_path, contexts=2)
    many.context(2).set_parameters(deny="in.csv")
    assert many.read("csv:in.csv", x=Scalar(int, "[A1]")).x == 1
    with pytest.raises(quillet.StatementError):
        many.context(2).read("csv:in.csv", x=Scalar(int, "[A1]"))


def test_sessions_on_threads_run_side_by_side(tmp_path):
    count, failed = 6, []

    def work(number):
        try:
            with quillet.Session(directory=tmp_path) as mine:
                for round_ in range(5):
                    values = [float(number * 100 + i) for i in range(500)]
                    mine.write(f"xlsx:{number}.xlsx", to("grow;[S$A1]", values))
                    assert mine.read(f"xlsx:{number}.xlsx", x=List(float, "[S$A1:A500]")).x == values
        except BaseException as error:  # told by the main thread
            failed.append(error)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not failed


@pytest.mark.parametrize("work", ["read", "write", "load", "save"])
def test_the_interpreter_goes_on_meanwhile(tmp_path, work):
    session = quillet.Session(directory=tmp_path)
    numbers = session.new(Array((Range(1, 20_000), Range(1, 20)), float, dynamic=False),
                          {(i, j): i + j for i in range(1, 20_001) for j in range(1, 21)})
    session.write("xlsx:noindex;big.xlsx", to("grow;[S$A1:T1]", numbers))
    book = quillet.open(tmp_path / "big.xlsx")
    works = {"read": lambda: session.read("xlsx:big.xlsx", x=List(float, "[S$]")),
             "write": lambda: session.write("xlsx:noindex;new.xlsx", to("grow;[S$A1:T1]", numbers)),
             "load": lambda: quillet.open(tmp_path / "big.xlsx"), "save": lambda: book.save(tmp_path / "again.xlsx")}
    done, ticks = threading.Event(), []

    def run():
        try:
            works[work]()
        finally:
            done.set()

    thread = threading.Thread(target=run)
    thread.start()
    while not done.wait(0.002):
        ticks.append(None)
    thread.join()
    assert len(ticks) >= 3


def test_a_plan_is_read_and_written_as_people_would(tmp_path):
    session = quillet.Session(directory=tmp_path, contexts=1, realformat="%.6g", deny=["secret"])
    session.write("xlsx:plan.xlsx", to("grow;[Products$A1]", ["products", "anvil", "bolt"]),
                  to("grow;[Demand$A1:C1]", [("product", "year", 0.0)], type=Record(a=str, b=str, c=float)),
                  to("grow;[Demand$A2:C2]", {("anvil", 2024): 12.5, ("bolt", 2023): 3.0}),
                  to("grow;[Lines$A2:C2]", [("anvil", 2, 1.5)], type=Record(a=str, b=int, c=float)), to("[Lines$E1]", 15.5))
    with quillet.open(tmp_path / "plan.xlsx") as book:
        book["Lines"].define_name("Total", "E1")
        book.save()
    data = session.read("xlsx:skiph;plan.xlsx", products=Set(str, "[Products$A:A]"),
                        demand=Array(("product", "year"), float, "[Demand$A:C]"),
                        lines=List(Record(product=str, qty=int, price=float), "[Lines$A:C]"))
    assert data.demand["anvil", 2024] == 12.5 and dict(data.demand.items())["bolt", 2023] == 3
    assert list(data.products) == ["anvil", "bolt"] and data.lines[0] == ("anvil", 2, 1.5)
    session.write("xlsx:grow;plan.xlsx", to("[Result$A2:C2]", data.demand))
    with session.open("xlsx:plan.xlsx", update=True) as plan:
        plan.write(to("Total", plan.read(total=Scalar(float, "Total")).total + 1))
        assert plan.read(result=Array(("product", "year"), float, "[Result$A2:C3]")).result == data.demand
    assert session.read("xlsx:plan.xlsx", total=Scalar(float, "Total")).total == 16.5


def test_nothing_warns_when_all_is_well(session, file):
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        session.write(file, to(area(file, "A1"), 1))
        session.read(file, x=Scalar(int, area(file, "A1")))
