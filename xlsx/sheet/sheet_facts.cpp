// What reports tell of a sheet.
#include <algorithm>

#include "xlsx/features/validation.h"
#include "xlsx/sheet/sheet.h"

namespace vellum {

template <class CharT, class Tag>
SheetFacts XMLSheetImplT<CharT, Tag>::facts() {
    return guard(SheetFacts(), [&] {
        SheetFacts facts;
        for (const auto& row : *_rows) facts.rowLevels = std::max<int>(facts.rowLevels, row.outlineLevel());
        for (const auto& columns : this->_root.cols()) {
            for (const auto& column : columns.col()) {
                facts.columnLevels = std::max(facts.columnLevels, static_cast<int>(column.outlineLevel()));
            }
        }
        if (!_rows->empty()) facts.rowEnd = static_cast<int>(std::min(_rows->back().r(), sheetRows));
        facts.validationRules = xlsx::validationRuleTotal(this->_root);
        return facts;
    });
}

}  // namespace vellum
