// Sets of rows that lie mostly side by side.
#pragma once
#include <map>
#include <vector>

namespace cli::explain {

struct Rows {
    int first = 0, last = -1;  // both included
};

class RowSet {
public:
    /// Adds rows; those among them that are new go to `fresh`, where that is not null.
    void add(Rows rows, std::vector<Rows>* fresh = nullptr);
    [[nodiscard]] bool has(int row) const;
    [[nodiscard]] bool empty() const { return _runs.empty(); }
    /// By first row; the values are last rows.
    [[nodiscard]] const std::map<int, int>& runs() const { return _runs; }

private:
    std::map<int, int> _runs;
};

}  // namespace cli::explain
