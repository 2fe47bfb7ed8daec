// The order in which a filter's rows are sorted: its bound element.
#pragma once
#include <optional>
#include <vector>

#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"

namespace vellum::xlsx {

/// One column to sort by, counted from 0 on the sheet.
struct SortKey {
    std::uint32_t col = 0;
    bool descending = false;
};

template <class Tag>
class FilterSort {
public:
    using AutoFilter = typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter;

    explicit FilterSort(AutoFilter& filter) : _filter(filter) {}

    /// Throws when there is no sort state, or its `ref` is no range.
    [[nodiscard]] CellRange range() const;
    /// The first condition. Throws when there is none.
    [[nodiscard]] SortKey first() const;
    /// The rows of `filter` behind its header become the range; `columnIndex` counts from its first column.
    void set(const CellRange& filter, int columnIndex, bool descending);
    void add(const CellRange& filter, int columnIndex, bool descending);

    /// What the rows of `filter` are to be sorted by. Nothing for an order that only an application knows: by colour,
    /// icon or a list of its user's, or of columns.
    [[nodiscard]] std::vector<SortKey> keys(const CellRange& filter) const;

private:
    void check(const CellRange& filter, int columnIndex) const;

    AutoFilter& _filter;
};

extern template class FilterSort<ooxml::excelNormal_tag>;
extern template class FilterSort<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
