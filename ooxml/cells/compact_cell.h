// Cells and rows are written by hand: they make up a worksheet, and have to be small and quick to read.
#pragma once

#include "ooxml/cells/cell.h"
#include "ooxml/cells/row.h"
#include "ooxml/cells/sheet_data.h"

namespace sheet {
using c_CT_Cell = ooxml::c_CT_Cell<ooxml::SheetFamily>;
using c_CT_Row = ooxml::c_CT_Row<ooxml::SheetFamily>;
using c_CT_SheetData = ooxml::c_CT_SheetData<ooxml::SheetFamily>;
}  // namespace sheet

namespace strict {
using c_CT_Cell = ooxml::c_CT_Cell<ooxml::StrictFamily>;
using c_CT_Row = ooxml::c_CT_Row<ooxml::StrictFamily>;
using c_CT_SheetData = ooxml::c_CT_SheetData<ooxml::StrictFamily>;
}  // namespace strict
