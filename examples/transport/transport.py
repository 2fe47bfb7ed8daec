#!/usr/bin/env python3
"""Reads plants, markets and costs from a workbook, finds the cheapest flows with PuLP and CBC, and writes the flows and the
dual values back. Charts, formats and formulas of the workbook stay as they are.

    transport.py PLAN [RESULT]      without RESULT the plan itself is written
"""
import shutil
import sys

import pulp

import quillet
from quillet import Array, Scalar, to


def solve(capacity, demand, cost):
    """The lowest cost, the flows, and what one more unit of each capacity and demand changes the cost by."""
    model = pulp.LpProblem("transport", pulp.LpMinimize)
    flow = {way: pulp.LpVariable(f"flow_{number}", lowBound=0) for number, way in enumerate(cost)}
    model += pulp.lpSum(price * flow[way] for way, price in cost.items())
    supply, need = {}, {}
    for plant, most in capacity.items():
        supply[plant] = pulp.lpSum(flow[way] for way in cost if way[0] == plant) <= most
        model += supply[plant], f"supply_{len(supply)}"
    for market, least in demand.items():
        need[market] = pulp.lpSum(flow[way] for way in cost if way[1] == market) >= least
        model += need[market], f"need_{len(need)}"
    if model.solve(pulp.COIN_CMD(msg=False)) != pulp.LpStatusOptimal:
        sys.exit("no flows meet the demand: " + pulp.LpStatus[model.status])
    return (pulp.value(model.objective), {way: variable.value() for way, variable in flow.items()},
            {plant: row.pi for plant, row in supply.items()}, {market: row.pi for market, row in need.items()})


def main(plan, result):
    if result != plan:
        shutil.copyfile(plan, result)
    session = quillet.Session()
    with session.open(f"xlsx:skiph;{result}", update=True) as book:
        data = book.read(capacity=Array("plant", float, "Plants(plant,capacity)"),
                         demand=Array("market", float, "Markets(market,demand)"),
                         cost=Array(("plant", "market"), float, "Costs"))
        lowest, flows, supply, need = solve(data.capacity, data.demand, data.cost)
        book.write(to("Flows", flows), to("Plants(plant,dual)", supply), to("Markets(market,dual)", need))
    session.write(f"xlsx:{result}", to("LowestCost", lowest))
    assert session.read(f"xlsx:{result}", lowest=Scalar(float, "LowestCost")).lowest == lowest
    print(f"lowest cost {lowest:.2f}")


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[-1])
