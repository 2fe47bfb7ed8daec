"""The transport example: both solvers find the same, and the plan's chart, formats and formulas stay."""
import pathlib
import shutil
import subprocess
import sys
import zipfile

import numpy as np
import pytest

import quillet

EXAMPLE = pathlib.Path(__file__).parents[2] / "examples" / "transport"
PLAN = EXAMPLE / "plan.xlsx"


def solved(tmp_path, script):
    result = tmp_path / f"{script}.xlsx"
    run = subprocess.run([sys.executable, EXAMPLE / script, PLAN, result], text=True, capture_output=True, timeout=120)
    assert run.returncode == 0 and run.stderr == "" and run.stdout == "lowest cost 2925.00\n", run
    return result


@pytest.fixture(params=["transport.py", "transport_glpk.py"])
def result(request, tmp_path):
    if request.param == "transport.py":
        pytest.importorskip("pulp")
    elif shutil.which("glpsol") is None:
        pytest.skip("glpsol is not installed")
    return solved(tmp_path, request.param)


def column(book, sheet, area):
    return book[sheet].values(area)[:, 0]


def test_flows_and_duals_are_an_optimum(result):
    book = quillet.open(result)
    flows = column(book, "Flows", "C2:C13").reshape(3, 4)
    cost = column(book, "Costs", "C2:C13").reshape(3, 4)
    capacity, supply = column(book, "Plants", "B2:B4"), column(book, "Plants", "C2:C4")
    demand, need = column(book, "Markets", "B2:B5"), column(book, "Markets", "C2:C5")
    assert (flows >= 0).all() and (flows.sum(1) <= capacity).all() and (flows.sum(0) >= demand).all()
    assert (flows * cost).sum() == capacity @ supply + demand @ need == book["Flows"]["G2"].value == 2925
    assert (supply <= 0).all() and (need >= 0).all() and (cost - supply[:, None] - need >= 0).all()


def test_all_else_stays(result):
    with zipfile.ZipFile(PLAN) as before, zipfile.ZipFile(result) as after:
        assert set(before.namelist()) <= set(after.namelist())
        for part in ("xl/charts/chart1.xml", "xl/styles.xml"):
            assert before.read(part) == after.read(part), part
        assert b"c:chart" in after.read("xl/drawings/drawing1.xml")
    before, after = quillet.open(PLAN), quillet.open(result)
    for sheet in before:
        assert (sheet.formulas() == after[sheet.name].formulas()).all()
        for row, cell in np.ndindex(*sheet.values().shape):
            old, new = sheet[row, cell].format, after[sheet.name][row, cell].format
            assert (old and (old.number_format_id, old.bold)) == (new and (new.number_format_id, new.bold))
