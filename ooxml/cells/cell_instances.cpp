// c_CT_Cell is compiled here, once for each form of it: its pieces are sources of this one.
#include "ooxml/cells/cell.h"

#include "ooxml/cells/cell.cpp"
#include "ooxml/cells/cell_formula.cpp"
#include "ooxml/cells/cell_plain.cpp"
#include "ooxml/cells/cell_read.cpp"
#include "ooxml/cells/cell_write.cpp"

namespace ooxml {

template class CellFormula<SheetFamily::c_CT_CellFormula>;
template class CellFormula<StrictFamily::c_CT_CellFormula>;
template class c_CT_Cell<SheetFamily>;
template class c_CT_Cell<StrictFamily>;

}  // namespace ooxml
