// c_CT_Row, its list and c_CT_SheetData are compiled here, once for each form of them: their pieces are sources of this
// one.
#include "ooxml/cells/row.cpp"
#include "ooxml/cells/row_list.cpp"
#include "ooxml/cells/row_plain.cpp"
#include "ooxml/cells/sheet_data.cpp"

namespace ooxml {

template class c_CT_Row<SheetFamily>;
template class c_CT_Row<StrictFamily>;
template class RowList<c_CT_Row<SheetFamily>>;
template class RowList<c_CT_Row<StrictFamily>>;
template class c_CT_SheetData<SheetFamily>;
template class c_CT_SheetData<StrictFamily>;

}  // namespace ooxml
