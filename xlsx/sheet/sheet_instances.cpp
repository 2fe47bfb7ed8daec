// XMLSheetImplT is compiled here, once for each form of it: its pieces are sources of this one.
#include "xlsx/sheet/sheet.h"

#include "xlsx/sheet/sheet_areas.cpp"
#include "xlsx/sheet/sheet_columns.cpp"
#include "xlsx/sheet/sheet_facts.cpp"
#include "xlsx/sheet/sheet_filters.cpp"
#include "xlsx/sheet/sheet_fit.cpp"
#include "xlsx/sheet/sheet_formulas.cpp"
#include "xlsx/sheet/sheet_layout.cpp"
#include "xlsx/sheet/sheet_load.cpp"
#include "xlsx/sheet/sheet_lookup.cpp"
#include "xlsx/sheet/sheet_merges.cpp"
#include "xlsx/sheet/sheet_objects.cpp"
#include "xlsx/sheet/sheet_order.cpp"
#include "xlsx/sheet/sheet_print.cpp"
#include "xlsx/sheet/sheet_ranges.cpp"
#include "xlsx/sheet/sheet_read.cpp"
#include "xlsx/sheet/sheet_results.cpp"
#include "xlsx/sheet/sheet_rows.cpp"
#include "xlsx/sheet/sheet_rules.cpp"
#include "xlsx/sheet/sheet_shared.cpp"
#include "xlsx/sheet/sheet_view.cpp"
#include "xlsx/sheet/sheet_workbook.cpp"
#include "xlsx/sheet/sheet_write.cpp"

namespace vellum {

template class XMLSheetImplT<char, excelNormal_tag>;
template class XMLSheetImplT<char, excelStrict_tag>;
template class XMLSheetImplT<wchar_t, excelNormal_tag>;
template class XMLSheetImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
