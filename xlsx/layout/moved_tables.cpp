#include "xlsx/layout/moved_tables.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "bindery/values/value_spec.h"
#include "engine/failure/vlerror.h"
#include "xlsx/layout/moved_filter.h"

namespace vellum::xlsx {
namespace {

[[noreturn]] void refuse(const std::wstring& name, const char* why) {
    throw vlerror(("table " + bindery::toUtf8(name) + why).c_str());
}

}  // namespace

template <class Tag>
void checkTable(const typename Sml<Tag>::c_CT_Table& table, const CellMove& move) {
    const auto range = readCellRange(std::string_view(table.ref()));
    if (!range) return;
    const std::wstring& name = table.displayName();
    const auto moved = movedRange(*range, move);
    if (!move.isRow) {
        const bool sameWidth = moved && moved->colLast - moved->colFirst == range->colLast - range->colFirst;
        if (!sameWidth) refuse(name, " would lose or gain columns");
        return;
    }
    const bool leavesSheet = range->rowLast + std::uint64_t{move.count()} >= sheetRows;
    if (move.isInsert && leavesSheet && range->rowLast >= move.first) refuse(name, " would leave the sheet");
    if (move.isInsert || move.first > range->rowLast || move.last < range->rowFirst) return;
    const std::uint32_t first = std::max(move.first, range->rowFirst), past = std::min(move.last, range->rowLast) + 1;
    const std::uint32_t dataFirst = range->rowFirst + table.headerRowCount();
    const std::uint32_t dataPast = range->rowLast + 1 - std::min(table.totalsRowCount(), range->rowLast);
    if (first < dataFirst || past > dataPast) refuse(name, " would lose its header or totals row");
    if (first == dataFirst && past == dataPast) refuse(name, " would lose all its rows");
}

template <class Tag>
void moveTable(typename Sml<Tag>::c_CT_Table& table, const CellMove& move) {
    auto ref = movedRef(table.ref(), move);
    if (!ref) return;
    table.ref(std::move(*ref));
    if (auto* const filter = table.find_autoFilter()) moveKeptRanges(*filter, move);
    if (auto* const sorted = table.find_sortState(); sorted && !moveKeptRanges(*sorted, move)) table.unset_sortState();
}

template void checkTable<ooxml::excelNormal_tag>(const Sml<ooxml::excelNormal_tag>::c_CT_Table&, const CellMove&);
template void checkTable<ooxml::excelStrict_tag>(const Sml<ooxml::excelStrict_tag>::c_CT_Table&, const CellMove&);
template void moveTable<ooxml::excelNormal_tag>(Sml<ooxml::excelNormal_tag>::c_CT_Table&, const CellMove&);
template void moveTable<ooxml::excelStrict_tag>(Sml<ooxml::excelStrict_tag>::c_CT_Table&, const CellMove&);

}  // namespace vellum::xlsx
