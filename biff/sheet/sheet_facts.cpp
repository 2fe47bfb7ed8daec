// What reports tell of a binary sheet.
#include <algorithm>

#include "biff/sheet/sheet.h"

namespace vellum {

template <class CharT>
SheetFacts SheetImplT<CharT>::facts() {
    return ask(SheetFacts(), [](const SheetParts& p) {
        constexpr int columnLevelShift = 8;
        SheetFacts facts;
        for (const Row& row : p.rows.rows()) facts.rowLevels = std::max(facts.rowLevels, row.flags & Row::levelMask);
        for (const ColInfo& column : p.columns.records()) {
            facts.columnLevels = std::max(facts.columnLevels, (column.flags & ColInfo::levelMask) >> columnLevelShift);
        }
        facts.validationRules = static_cast<int>(p.kept.countRecords(record_id::Dv));
        return facts;
    });
}

}  // namespace vellum
