// Explains a script in a folder of its own.
#pragma once
#include <functional>
#include <string>
#include <vector>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "tests/support/script_runner.h"

namespace support {

using FillSheet = std::function<void(vellum::IBookT<char>&, vellum::ISheetT<char>&)>;

/// Saves a workbook of one sheet, "Sheet1", at a path that ends in .xls or .xlsx.
void makeWorkbook(const std::string& path, const FillSheet& fill);

struct Explanation {
    int status = 0;
    std::vector<Json> lines;
    std::string errors;

    /// The names of all warnings, of files and items, each once, in order.
    std::vector<std::string> warnings() const;
    /// The warning of this name; null when there is none.
    Json warning(const std::string& name) const;
};

Explanation explain(const TempFolder& folder, const std::string& script, int rows = 5);

}  // namespace support
