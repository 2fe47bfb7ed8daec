// A filter as JSON.
#pragma once
#include "cli/workbook/json_lines.h"
#include "cli/workbook/sheet_answers.h"

namespace cli {

/// The sheet's filter as a JSON value: {"area":[...],"columns":[...],"sort":[...]}, null when it has none.
void dumpFilter(SheetAnswers& answers, JsonLines& out);

}  // namespace cli
