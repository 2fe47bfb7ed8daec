// A workbook as a spreadsheet program calculates it.
#pragma once
#include <string>

#include "cli/workbook/book_file.h"

namespace cli {

/// Why nothing can be calculated on this machine; empty when LibreOffice is installed.
std::string calculatorMissing();

/// Has a copy of the file calculated by LibreOffice, without a window and with settings of its own, and loads what
/// comes of it. Null, and why in `error`, also when it takes more than so many seconds.
BookPtr calculatedCopy(const std::string& path, int seconds, std::string& error);

}  // namespace cli
