// Csv files as workbooks.
#pragma once
#include <string>

#include "cli/workbook/book_file.h"

namespace cli {

/// The cells of a csv file in a new workbook; `name` is options and a path. Null, with a text in `error`, when it does
/// not load or does not fit a sheet.
BookPtr loadCsvBook(const char* name, std::string& error);

}  // namespace cli
