// SheetImplT is compiled here, once for each form of it: its pieces are sources of this one.
#include "biff/sheet/sheet.h"

#include "biff/sheet/sheet.cpp"
#include "biff/sheet/sheet_cells.cpp"
#include "biff/sheet/sheet_columns.cpp"
#include "biff/sheet/sheet_comments.cpp"
#include "biff/sheet/sheet_facts.cpp"
#include "biff/sheet/sheet_features.cpp"
#include "biff/sheet/sheet_formulas.cpp"
#include "biff/sheet/sheet_layout.cpp"
#include "biff/sheet/sheet_lines.cpp"
#include "biff/sheet/sheet_names.cpp"
#include "biff/sheet/sheet_objects.cpp"
#include "biff/sheet/sheet_pictures.cpp"
#include "biff/sheet/sheet_print.cpp"
#include "biff/sheet/sheet_results.cpp"
#include "biff/sheet/sheet_rows.cpp"
#include "biff/sheet/sheet_texts.cpp"
#include "biff/sheet/sheet_view.cpp"
#include "biff/sheet/sheet_window.cpp"

namespace vellum {

template class SheetImplT<char>;
template class SheetImplT<wchar_t>;

}  // namespace vellum
