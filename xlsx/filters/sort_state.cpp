#include "xlsx/filters/sort_state.h"

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/filters/filter_ref.h"
#include "xlsx/filters/messages.h"

namespace vellum::xlsx {
namespace {

constexpr std::size_t sortConditionLimit = 64;  // of the format

}  // namespace

template <class Tag>
CellRange FilterSort<Tag>::range() const {
    const auto* const state = std::as_const(_filter).find_sortState();
    if (!state) throw vlerror(msg::sortStateNotFound);
    return readFilterRef(state->ref());
}

template <class Tag>
SortKey FilterSort<Tag>::first() const {
    const auto* const state = std::as_const(_filter).find_sortState();
    if (!state) throw vlerror(msg::sortStateNotFound);
    if (state->sortCondition().empty()) throw vlerror(msg::sortConditionNotFound);
    const auto& condition = state->sortCondition()[0];
    return {readFilterRef(condition.ref()).colFirst, condition.descending()};
}

/// A sort needs a row behind the header.
template <class Tag>
void FilterSort<Tag>::check(const CellRange& filter, int columnIndex) const {
    if (filter.rowFirst >= filter.rowLast) throw vlerror(msg::filterRefNotSpecified);
    const bool inside = columnIndex >= 0 && filter.colFirst <= filter.colLast &&
                        static_cast<std::uint32_t>(columnIndex) <= filter.colLast - filter.colFirst;
    if (!inside) throw vlerror(msg::columnIndexOutOfRange);
}

template <class Tag>
void FilterSort<Tag>::set(const CellRange& filter, int columnIndex, bool descending) {
    check(filter, columnIndex);
    _filter.sortState().unset_sortCondition();
    add(filter, columnIndex, descending);
}

template <class Tag>
void FilterSort<Tag>::add(const CellRange& filter, int columnIndex, bool descending) {
    check(filter, columnIndex);
    const auto* const old = std::as_const(_filter).find_sortState();
    if (old && old->sortCondition().size() >= sortConditionLimit) throw vlerror(msg::tooManySortConditions);
    auto& state = _filter.sortState();
    CellRange data = filter;
    ++data.rowFirst;
    state.ref(cellRangeText(data));
    auto& condition = state.sortCondition().append();
    data.colFirst = data.colLast = filter.colFirst + static_cast<std::uint32_t>(columnIndex);
    condition.ref(cellRangeText(data));
    if (descending) condition.descending(true);
}

template <class Tag>
std::vector<SortKey> FilterSort<Tag>::keys(const CellRange& filter) const {
    std::vector<SortKey> keys;
    const auto* const state = std::as_const(_filter).find_sortState();
    if (!state || state->columnSort()) return keys;
    for (const auto& condition : state->sortCondition()) {
        if (condition.sortBy() != "value" || condition.isset_customList()) return {};
        const auto range = readCellRange(std::string_view(condition.ref()));
        if (!range || range->colFirst < filter.colFirst || range->colFirst > filter.colLast) continue;
        keys.push_back({range->colFirst, condition.descending()});
    }
    return keys;
}

template class FilterSort<ooxml::excelNormal_tag>;
template class FilterSort<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
