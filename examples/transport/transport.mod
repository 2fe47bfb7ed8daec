# The transport problem for glpsol, over csv files that the script beside it writes and reads.
set PLANTS;
set MARKETS;
set WAYS, dimen 2;
param capacity{PLANTS};
param demand{MARKETS};
param cost{WAYS};

table plants IN "CSV" "plants.csv": PLANTS <- [plant], capacity;
table markets IN "CSV" "markets.csv": MARKETS <- [market], demand;
table costs IN "CSV" "costs.csv": WAYS <- [plant, market], cost;

var flow{WAYS} >= 0;
minimize total: sum{(p, m) in WAYS} cost[p, m] * flow[p, m];
s.t. supply{p in PLANTS}: sum{(p, m) in WAYS} flow[p, m] <= capacity[p];
s.t. need{m in MARKETS}: sum{(p, m) in WAYS} flow[p, m] >= demand[m];
solve;

table flows{(p, m) in WAYS} OUT "CSV" "flows.csv": p ~ plant, m ~ market, flow[p, m] ~ flow;
table supplies{p in PLANTS} OUT "CSV" "supply.csv": p ~ plant, supply[p].dual ~ dual;
table needs{m in MARKETS} OUT "CSV" "need.csv": m ~ market, need[m].dual ~ dual;
end;
