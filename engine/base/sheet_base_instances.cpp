// SheetBaseT is compiled here, once for each form of it: its pieces are sources of this one.
#include "engine/base/sheet_base.h"

#include "engine/base/sheet_base_cells.cpp"
#include "engine/base/sheet_base_layout.cpp"
#include "engine/base/sheet_base_objects.cpp"
#include "engine/base/sheet_base_pages.cpp"

namespace vellum {

template class SheetBaseT<char>;
template class SheetBaseT<wchar_t>;

}  // namespace vellum
