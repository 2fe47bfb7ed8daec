#!/usr/bin/env python3
"""The same as transport.py with GLPK's modelling language: the module writes what the model reads as csv files, glpsol
solves, and the module reads the csv files that it wrote.

    transport_glpk.py PLAN [RESULT]
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile

import quillet
from quillet import Array, to

MODEL = pathlib.Path(__file__).with_name("transport.mod")


def solve(folder, data):
    """Runs glpsol in a folder; the flows and the dual values."""
    files = quillet.Session(directory=folder)
    files.write("csv:skiph+;grow;plants.csv", to("[A1:B2](plant,capacity)", data.capacity))
    files.write("csv:skiph+;grow;markets.csv", to("[A1:B2](market,demand)", data.demand))
    files.write("csv:skiph+;grow;costs.csv", to("[A1:C2](plant,market,cost)", data.cost))
    run = subprocess.run(["glpsol", "--math", str(MODEL.resolve())], cwd=folder, text=True, capture_output=True)
    if run.returncode != 0 or "OPTIMAL" not in run.stdout:
        sys.exit("glpsol found no flows:\n" + run.stdout + run.stderr)
    return (files.read("csv:skiph;flows.csv", flows=Array(("plant", "market"), float, "[A:C]")).flows,
            files.read("csv:skiph;supply.csv", dual=Array("plant", float, "[A:B]")).dual,
            files.read("csv:skiph;need.csv", dual=Array("market", float, "[A:B]")).dual)


def main(plan, result):
    if result != plan:
        shutil.copyfile(plan, result)
    session = quillet.Session()
    with session.open(f"xlsx:skiph;{result}", update=True) as book, tempfile.TemporaryDirectory() as folder:
        data = book.read(capacity=Array("plant", float, "Plants(plant,capacity)"),
                         demand=Array("market", float, "Markets(market,demand)"),
                         cost=Array(("plant", "market"), float, "Costs"))
        flows, supply, need = solve(folder, data)
        book.write(to("Flows", flows), to("Plants(plant,dual)", supply), to("Markets(market,dual)", need))
    lowest = sum(data.cost[way] * flow for way, flow in flows.items())
    session.write(f"xlsx:{result}", to("LowestCost", lowest))
    print(f"lowest cost {lowest:.2f}")


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[-1])
