# The worksheets of the Open XML engine.
set(QUILLET_XLSX_SHEET_SOURCES
    cell_address.cpp cell_values.cpp shifted_formula.cpp
    sheet_areas.cpp sheet_formulas.cpp sheet_load.cpp sheet_lookup.cpp sheet_order.cpp sheet_ranges.cpp sheet_read.cpp
    sheet_shared.cpp sheet_write.cpp)
