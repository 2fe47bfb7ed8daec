// The rows of an item that a report shows.
#pragma once
#include <deque>

#include "cli/explain/facts/records.h"

namespace cli::explain {

/// Takes the cells of an item as they come, and keeps the first rows, the last ones, and those with warnings.
class RowKeeper {
public:
    explicit RowKeeper(const RowWishes& wishes) : _wishes(wishes) {}

    /// Whether the texts of a cell of this row are worth making: only then may it be shown.
    [[nodiscard]] bool wants(int row) const;
    void add(CellRecord cell);
    void passOver(int row);
    /// Marks the cell that was added last.
    void warn(const Rule& rule);
    /// All that was kept, by rows.
    std::vector<RowRecord> take();

private:
    RowRecord& current(int row);
    void finishRow();

    RowWishes _wishes;
    std::vector<RowRecord> _kept;
    std::deque<RowRecord> _last;
    std::optional<RowRecord> _current;
    std::size_t _first = 0, _warned = 0;  // rows kept for these reasons
};

}  // namespace cli::explain
