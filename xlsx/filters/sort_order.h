// The order of rows by the values of their cells.
#pragma once
#include <cstdint>
#include <vector>

#include "ooxml/generated/dialect.h"
#include "xlsx/filters/filter_value.h"

namespace vellum::xlsx {

/// One value as a sort compares it: texts by their place among all texts of the column.
struct Ranked {
    ValueKind kind = ValueKind::blank;
    double place = 0;
};

/// The values of one column, row by row.
struct RankedColumn {
    std::vector<Ranked> values;
    bool descending = false;
};

/// Which row stands at each place, counted from the first row.
std::vector<std::uint32_t> sortedOrder(const std::vector<RankedColumn>& columns, std::size_t rowCount);

/// Collects the values of one column.
template <class Cell>
class Ranking {
public:
    explicit Ranking(ValueReader<Cell>& reader) : _reader(reader) {}
    void add(const Cell* cell);
    /// With the texts in their order.
    std::vector<Ranked> take();

private:
    std::size_t textAt(const FilterValue& value);

    ValueReader<Cell>& _reader;
    std::vector<Ranked> _values;
    std::vector<std::wstring> _texts;    // each one once, as far as the string table has them once
    std::vector<std::size_t> _ofShared;  // place in _texts plus one, by position in the string table
};

}  // namespace vellum::xlsx
