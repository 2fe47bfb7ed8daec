// The order of rows by the values of their cells.
#pragma once
#include <cstdint>
#include <vector>

#include "ooxml/generated/dialect.h"
#include "xlsx/filters/filter_value.h"

namespace vellum::xlsx {

/// One value as a sort compares it, in its direction: numbers first, then texts by their place among all texts of the
/// column, booleans and errors, or the other way round; blank cells come last in either direction.
using SortPlace = std::uint64_t;

/// Which row stands at each place, counted from the first row: by the first column, rows that are equal there by the
/// next one, and as they were after the last. All columns have a value for each row.
std::vector<std::uint32_t> sortedOrder(const std::vector<std::vector<SortPlace>>& columns, std::size_t rowCount);

/// Collects the values of one column.
template <class Cell>
class Ranking {
public:
    Ranking(ValueReader<Cell>& reader, bool descending) : _reader(reader), _descending(descending) {}
    void reserve(std::size_t rows) { _values.reserve(rows); }
    void add(const Cell* cell);
    /// With the texts in their order.
    std::vector<SortPlace> take();

private:
    std::size_t textAt(const FilterValue& value);

    std::vector<SortPlace> textPlaces() const;

    ValueReader<Cell>& _reader;
    bool _descending;
    std::vector<SortPlace> _values;      // a text's is its place in _texts until all are known
    std::vector<std::wstring> _texts;    // each one once, as far as the string table has them once
    std::vector<std::size_t> _ofShared;  // place in _texts plus one, by position in the string table
};

}  // namespace vellum::xlsx
