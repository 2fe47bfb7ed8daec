// Codes of the number formats that every workbook has.
#pragma once
#include <string_view>

namespace cli {

/// The code of a built-in format, as an English reader knows it; empty for ids that have none.
std::string_view builtInCode(int id);

}  // namespace cli
