# The sheets of a binary workbook; part of the target vellum_biff.
set(QUILLET_BIFF_SHEET_SOURCES
    cell_store.cpp column_table.cpp formula_block.cpp formula_read.cpp kept_records.cpp row_table.cpp
    shared_tokens.cpp sheet.cpp sheet_cells.cpp sheet_columns.cpp sheet_formulas.cpp sheet_index.cpp sheet_layout.cpp sheet_load.cpp
    sheet_parts.cpp sheet_rows.cpp sheet_save.cpp sheet_texts.cpp sheet_view.cpp)
