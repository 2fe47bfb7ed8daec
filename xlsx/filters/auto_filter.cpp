#include "xlsx/filters/auto_filter.h"

#include <algorithm>
#include <new>

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/block.h"
#include "xlsx/filters/filter_ref.h"
#include "xlsx/filters/messages.h"
#include "xlsx/filters/sort_state.h"

namespace vellum {

/// A new one makes the sheet a filtered one.
template <class CharT, class Tag>
auto XMLAutoFilterT<CharT, Tag>::element() -> Element& {
    if (!_worksheet.isset_autoFilter()) _worksheet.sheetPr().filterMode(true);
    return _worksheet.autoFilter();
}

template <class CharT, class Tag>
CellRange XMLAutoFilterT<CharT, Tag>::requireRange() {
    const auto* const found = std::as_const(_worksheet).find_autoFilter();
    if (!found || !found->isset_ref()) throw vlerror(xlsx::msg::filterRefNotFound);
    return xlsx::readFilterRef(found->ref());
}

template <class CharT, class Tag>
bool XMLAutoFilterT<CharT, Tag>::filterRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guarded(_lastError, false, [&] {
        xlsx::giveBlock(requireRange(), rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLAutoFilterT<CharT, Tag>::setFilterRange(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guarded(_lastError, false, [&] {
        const CellRange range = xlsx::orderedBlock(rowFirst, rowLast, colFirst, colLast);
        element().ref(cellAddressText(range.rowFirst, range.colFirst) + ":" +
                      cellAddressText(range.rowLast, range.colLast));
        _rangeIsSet = true;
        return true;
    });
}

template <class CharT, class Tag>
auto XMLAutoFilterT<CharT, Tag>::columnOf(ColumnElement& element) -> Column& {
    auto& column = _columns[&element];
    if (!column) column.reset(new (std::nothrow) Column(element, _utf8Mode, _lastError));
    if (!column) throw vlerror(xlsx::msg::filterColumnNotMade);
    return *column;
}

template <class CharT, class Tag>
IFilterColumnT<CharT>* XMLAutoFilterT<CharT, Tag>::filterColumn(int colId) {
    return guarded<IFilterColumnT<CharT>*>(_lastError, nullptr, [&] {
        const CellRange range = requireRange();
        if (range.colLast < range.colFirst) throw vlerror(xlsx::msg::refColumnsReversed);
        const auto id = static_cast<unsigned>(colId);
        if (colId < 0 || id > range.colLast - range.colFirst) throw vlerror(xlsx::msg::colIdOutOfRange);
        auto& columns = element().filterColumn();
        const auto found =
            std::find_if(columns.begin(), columns.end(), [&](const auto& known) { return known.colId() == id; });
        if (found != columns.end()) return &columnOf(*found);
        auto& made = columns.append();
        made.colId(id);
        return &columnOf(made);
    });
}

template <class CharT, class Tag>
int XMLAutoFilterT<CharT, Tag>::filterColumnTotal() {
    return guarded(_lastError, -1, [&] {
        const auto* const found = std::as_const(_worksheet).find_autoFilter();
        return found ? static_cast<int>(found->filterColumn().size()) : 0;
    });
}

template <class CharT, class Tag>
IFilterColumnT<CharT>* XMLAutoFilterT<CharT, Tag>::filterColumnAt(int index) {
    return guarded<IFilterColumnT<CharT>*>(_lastError, nullptr, [&] {
        auto* const found = _worksheet.find_autoFilter();
        const auto at = static_cast<std::size_t>(index);
        if (!found || index < 0 || at >= found->filterColumn().size()) throw vlerror(xlsx::msg::indexOutOfRange);
        return &columnOf(found->filterColumn()[at]);
    });
}

template <class CharT, class Tag>
bool XMLAutoFilterT<CharT, Tag>::sortRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guarded(_lastError, false, [&] {
        auto* const found = _worksheet.find_autoFilter();
        if (!found) throw vlerror(xlsx::msg::sortStateNotFound);
        xlsx::giveBlock(xlsx::FilterSort<Tag>(*found).range(), rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLAutoFilterT<CharT, Tag>::sortOrder(int* columnIndex, bool* descending) {
    return guarded(_lastError, false, [&] {
        const CellRange range = requireRange();
        const xlsx::SortKey key = xlsx::FilterSort<Tag>(*_worksheet.find_autoFilter()).first();
        if (columnIndex) *columnIndex = static_cast<int>(key.col) - static_cast<int>(range.colFirst);
        if (descending) *descending = key.descending;
        return true;
    });
}

template <class CharT, class Tag>
CellRange XMLAutoFilterT<CharT, Tag>::rangeToSort() {
    const auto* const found = std::as_const(_worksheet).find_autoFilter();
    const auto range = found ? xlsx::findFilterRef(found->ref()) : std::nullopt;
    if (!range) throw vlerror(xlsx::msg::filterRefNotSpecified);
    return *range;
}

template <class CharT, class Tag>
bool XMLAutoFilterT<CharT, Tag>::setSort(int columnIndex, bool descending) {
    return guarded(_lastError, false, [&] {
        const CellRange range = rangeToSort();
        xlsx::FilterSort<Tag>(element()).set(range, columnIndex, descending);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLAutoFilterT<CharT, Tag>::addSort(int columnIndex, bool descending) {
    return guarded(_lastError, false, [&] {
        const CellRange range = rangeToSort();
        xlsx::FilterSort<Tag>(element()).add(range, columnIndex, descending);
        return true;
    });
}

template <class CharT, class Tag>
void XMLAutoFilterT<CharT, Tag>::forgetGone() {
    const auto* const found = std::as_const(_worksheet).find_autoFilter();
    std::erase_if(_columns, [&](const auto& entry) {
        if (!found) return true;
        const auto& columns = found->filterColumn();
        return std::none_of(columns.begin(), columns.end(), [&](const auto& known) { return &known == entry.first; });
    });
}

template <class CharT, class Tag>
void XMLAutoFilterT<CharT, Tag>::dropColumnsOutside() {
    auto* const found = _worksheet.find_autoFilter();
    const auto range = found ? xlsx::findFilterRef(found->ref()) : std::nullopt;
    if (!_rangeIsSet || !range || range->colLast < range->colFirst) return;
    auto& columns = found->filterColumn();
    for (std::size_t i = columns.size(); i-- > 0;) {
        if (columns[i].colId() > range->colLast - range->colFirst) columns.erase(i);
    }
    forgetGone();
}

template class XMLAutoFilterT<char, ooxml::excelNormal_tag>;
template class XMLAutoFilterT<char, ooxml::excelStrict_tag>;
template class XMLAutoFilterT<wchar_t, ooxml::excelNormal_tag>;
template class XMLAutoFilterT<wchar_t, ooxml::excelStrict_tag>;

}  // namespace vellum
