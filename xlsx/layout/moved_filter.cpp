#include "xlsx/layout/moved_filter.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace vellum::xlsx {

bool moveKeptRanges(bindery::c_raw_node& element, const CellMove& move) {
    for (bindery::Attr& attr : element.attrs) {
        if (attr.name != "ref") continue;
        auto ref = movedRef(attr.value, move);
        if (!ref) return false;
        attr.value = std::move(*ref);
    }
    std::erase_if(element.children, [&](const auto& child) { return !moveKeptRanges(*child, move); });
    return true;
}

namespace {

/// False when nothing is left to sort.
template <class SortState>
bool moveSortState(SortState& state, const CellMove& move) {
    auto ref = movedRef(state.ref(), move);
    if (!ref) return false;
    state.ref(std::move(*ref));
    state.sortCondition().eraseIf([&](auto& condition) {
        auto of = movedRef(condition.ref(), move);
        if (of) condition.ref(std::move(*of));
        return !of;
    });
    return true;
}

}  // namespace

template <class Tag>
bool moveFilter(typename Sml<Tag>::c_CT_AutoFilter& filter, const CellMove& move) {
    const auto old = readCellRange(std::string_view(filter.ref()));
    if (!old) return true;
    const auto range = movedRange(*old, move);
    if (!range) return false;
    if (!move.isRow) {
        filter.filterColumn().eraseIf([&](auto& column) {
            const std::uint32_t at = old->colFirst + column.colId();
            const auto moved = movedSpan({at, at}, move);
            if (moved) column.colId(moved->first - range->colFirst);
            return !moved;
        });
    }
    if (auto* const sorted = filter.find_sortState(); sorted && !moveSortState(*sorted, move)) filter.unset_sortState();
    filter.ref(cellRangeText(*range));
    return true;
}

template bool moveFilter<ooxml::excelNormal_tag>(Sml<ooxml::excelNormal_tag>::c_CT_AutoFilter&, const CellMove&);
template bool moveFilter<ooxml::excelStrict_tag>(Sml<ooxml::excelStrict_tag>::c_CT_AutoFilter&, const CellMove&);

}  // namespace vellum::xlsx
