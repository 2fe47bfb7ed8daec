#pragma once

#include "cli/workbook/json_lines.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"

namespace cli {

/// One line for each picture of the book: {"image":{"id":0,"kind":0,"format":"png","size":6645,"md5":"..."}}, its kind
/// and bytes as the engine gives them, its format by the bytes.
void dumpImages(vellum::IBookT<char>& book, JsonLines& lines);

/// One line for each picture, comment, control and other shape of a sheet, in this order. A value that the engine has
/// no answer for is null.
void dumpObjects(vellum::ISheetT<char>& sheet, JsonLines& lines);

}  // namespace cli
