// Files with tables by their names, csv as well.
#pragma once
#include <string>

#include "cli/workbook/book_file.h"

namespace cli {

/// A table in memory. A csv file becomes a workbook of one sheet that bears the file's name, without its ending.
struct TableFile {
    BookPtr book;  // null when the file does not load
    bool isCsv = false;
};

/// Whether the name is taken for that of a csv file: it begins with "csv:", which options may follow, or ends in .csv,
/// .tsv or .txt.
bool isCsvName(const std::string& name);

/// The tables of a file. Csv files are read by the rules of the module, with the options behind "csv:". In `error`
/// stands why a file does not load.
TableFile loadTable(const std::string& name, std::string& error);

}  // namespace cli
