// What a sheet holds beside its cells, as JSON.
#pragma once
#include "cli/workbook/json_lines.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"

namespace cli {

/// One line {"features":{...}} with all that a worksheet holds beside its cells: state, merged blocks, links, view,
/// print settings, tables, filter, rows and columns. Every key is always there, null where the engine has no answer.
void dumpFeatures(vellum::IBookT<char>& book, vellum::ISheetT<char>& sheet, JsonLines& out);

}  // namespace cli
