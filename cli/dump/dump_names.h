#pragma once

#include "cli/workbook/json_lines.h"
#include "engine/api/ibook.h"

namespace cli {

/// A line for each defined name of the book, in the file's order: {"name":{"text":"Rates","scope":null,...}}. "scope"
/// is a sheet's index, or null for the workbook; "area" is null where the name is no single area; "formula" is null
/// where the engine has no text for it.
void dumpNames(vellum::IBookT<char>& book, JsonLines& out);

}  // namespace cli
