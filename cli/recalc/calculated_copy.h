// A workbook as a spreadsheet program calculates it.
#pragma once
#include <string>

#include "cli/workbook/book_file.h"

namespace cli {

/// Has a copy of the file calculated by LibreOffice, without a window and with settings of its own, and loads what
/// comes of it. Null, and why in `error`.
BookPtr calculatedCopy(const std::string& path, std::string& error);

}  // namespace cli
