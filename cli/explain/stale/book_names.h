// Sheets, names and tables of a workbook, as its formulas call them.
#pragma once
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "cli/explain/stale/formula_references.h"
#include "engine/api/ibook.h"

namespace cli::explain {

class BookNames final : public FormulaNames {
public:
    explicit BookNames(vellum::IBookT<char>& book);

    int sheetIndex(std::string_view name) const override;
    int lastColumn() const override { return _isPackage ? lastSheetColumn : 255; }
    int lastRow() const override { return _isPackage ? lastSheetRow : 65535; }
    void resolve(std::string_view name, int sheet, References& out) const override;

private:
    /// Names in lower case, with the sheet that they are known on; -1 for all.
    std::map<std::pair<std::string, int>, vellum::IBookNames::Name> _names;
    std::map<std::string, Reference> _tables;
    std::vector<std::string> _sheets;  // in lower case
    bool _isPackage;
    mutable int _depth = 0;  // of names that stand for names
};

}  // namespace cli::explain
