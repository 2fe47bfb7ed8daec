"""DataFrames and Series of pandas, out and in."""
import datetime
import subprocess
import sys

import numpy as np
import pytest

import quillet
from quillet import Array, Frame, List, Record, to

pd = pytest.importorskip("pandas")

TABLE = pd.DataFrame({
    "whole": [1, 2, 3], "real": [1.5, np.nan, -2], "text": ["x", None, "z"], "flag": [True, False, True],
    "day": pd.to_datetime(["2024-03-01", None, "2025-12-31"]),
    "moment": pd.to_datetime(["2024-03-01 08:30", "2024-03-01 00:00", None]),
    "kind": pd.Categorical(["u", "v", "u"]), "maybe": pd.array([1, None, 3], dtype="Int64"),
    "words": pd.array(["a", None, "c"], dtype="string"), "sure": pd.array([True, None, False], dtype="boolean"),
})
EMPTY = {"real": 1, "text": 1, "day": 1, "moment": 2, "maybe": 1, "words": 1, "sure": 1}


@pytest.fixture(params=["xlsx", "xls", "csv"])
def driver(request):
    return request.param


def label(driver, cells):
    return f"[{cells}]" if driver == "csv" else f"[T${cells}]"


def test_a_table_of_all_kinds(session, driver):
    session.write(f"{driver}:t.{driver}", to(label(driver, "B2"), TABLE))
    back = session.read(f"{driver}:t.{driver}", t=Frame(label(driver, "B2:K5"), dates=["day", "moment"])).t
    assert list(back.columns) == list(TABLE.columns) and len(back) == 3
    for name in TABLE.columns:
        expected = [None if pd.isna(value) else value for value in TABLE[name]]
        found = [None if pd.isna(value) else value for value in back[name]]
        if driver == "csv" and name in ("flag", "sure"):
            found = [None if value is None else value in (True, "TRUE", 1) for value in found]
        assert found == expected, name
    assert back["whole"].dtype == back["real"].dtype == np.float64
    assert back["day"].dtype == back["moment"].dtype == "datetime64[ns]"


@pytest.mark.parametrize("kind", ["xlsx", "xls"])
def test_dates_are_dates_and_missing_values_empty_cells(tmp_path, kind):
    book = quillet.Book(kind)
    book.add_sheet("T").write_frame("A1", TABLE)
    many = pd.DataFrame({"day": pd.date_range("1990-01-01", periods=6000)})
    book.add_sheet("many").write_frame("B2", many)  # more than a workbook has formats
    book.save(tmp_path / f"t.{kind}")
    book = quillet.open(tmp_path / f"t.{kind}")
    sheet, columns = book["T"], list(TABLE.columns)
    assert book["many"]["B6002"].value == many["day"].iloc[-1].date()
    assert [sheet[0, c].value for c in range(len(columns))] == columns
    assert sheet[1, columns.index("day")].value == datetime.date(2024, 3, 1)
    assert sheet[1, columns.index("moment")].value == datetime.datetime(2024, 3, 1, 8, 30)
    for name, row in EMPTY.items():
        assert sheet[row + 1, columns.index(name)].value is None, name


def test_numbers_alone(session):
    table = pd.DataFrame(np.arange(12.0).reshape(4, 3), columns=list("abc"))
    table.iloc[1, 2] = np.nan
    session.write("xlsx:n.xlsx", to("[T$C3]", table))
    assert session.read("xlsx:n.xlsx", t=Frame("[T$C3:E7]")).t.equals(table)
    session.write("xlsx:n.xlsx", to("[U$A1]", table[::-2].reset_index(drop=True)), to("[V$A1]", table.iloc[:0]))
    assert session.read("xlsx:n.xlsx", t=List(float, "skiph;[U$B:B]")).t == [10.0, 4.0]


def test_an_index_becomes_columns(session):
    table = pd.DataFrame({"v": [1.0, 2.0]}, index=pd.MultiIndex.from_tuples([("a", 1), ("b", 2)], names=["k", "n"]))
    session.write("xlsx:i.xlsx", to("[T$A1]", table), to("grow;[S$A1:C1]", table["v"]))
    back = session.read("xlsx:i.xlsx", t=Frame("[T$A:C]"), s=Array(("k", "n"), float, "[S$A:C]"))
    assert list(back.t.columns) == ["k", "n", "v"] and list(back.t["k"]) == ["a", "b"]
    assert back.s.to_series().equals(table["v"].rename("value")) and back.s["b", 2] == 2


def test_containers_as_tables(session, csv):
    csv("a,1,5,x\nb,2,6,y\na,2,7,z\n")
    data = session.read("csv:in.csv", r=Array(("k", "n"), Record(v=float, t=str), "[A:D]"),
                        v=Array(("k", "n"), float, "[A:C]"), one=Array("t", int, "[A2:B2]"),
                        rows=List(Record(k=str, n=int), "[A:B]"))
    assert data.r.to_frame().to_dict("list") == {"k": ["a", "a", "b"], "n": [1, 2, 2], "v": [5, 7, 6],
                                                 "t": ["x", "z", "y"]}
    wide = data.v.to_frame(wide=True)
    assert wide.loc["a", 2] == 7 and np.isnan(wide.loc["b", 1]) and wide.index.name == "k"
    assert data.v.to_series().loc["a"].to_dict() == {1: 5, 2: 7} and data.one.to_series().to_dict() == {"b": 2}
    assert data.rows.to_frame()["n"].sum() == 5
    assert data.r.to_series().iloc[0] == (5, "x")


@pytest.mark.parametrize("table, error", [
    (pd.DataFrame({"a": pd.to_timedelta([1], "D")}), TypeError), (pd.DataFrame({"a": [1j]}), TypeError),
    (pd.DataFrame({"a": pd.to_datetime(["2024-01-01"]).tz_localize("UTC")}), ValueError),
    (pd.DataFrame({"a": [2**53 + 1]}), OverflowError), (pd.DataFrame({"a": [object()]}), TypeError),
    (pd.DataFrame([[1, 2]], columns=["a", "a"]), ValueError), (pd.DataFrame({"a\0": [1]}), ValueError),
    (pd.DataFrame({"a": ["\ud800", "b"]}), UnicodeEncodeError), (pd.DataFrame({"a": pd.period_range("2024", periods=1)}), TypeError),
    (pd.Series([1, object()]), TypeError), (pd.Series([1, 2], index=["a", "a"]), ValueError),
])
def test_tables_that_do_not_fit(session, tmp_path, table, error):
    with pytest.raises(error):
        session.write("xlsx:w.xlsx", to("[T$A1]", table))
    assert not (tmp_path / "w.xlsx").exists()


def test_the_package_works_without_pandas(tmp_path):
    """Nothing loads it, and what needs it says so."""
    code = """
import sys
sys.modules["pandas"] = None
import quillet
session = quillet.Session()
session.write("csv:x.csv", quillet.to("[A1:B1]", {"a": 1.0}))
data = session.read("csv:x.csv", x=quillet.Array("k", float, "[A:B]"))
try:
    data.x.to_frame()
except ImportError as error:
    print(error)
"""
    run = subprocess.run([sys.executable, "-c", code], cwd=tmp_path, text=True, capture_output=True)
    assert run.stdout == "this needs pandas (Debian: python3-pandas)\n", run.stderr
