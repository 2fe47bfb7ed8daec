#include "cli/explain/facts/finding.h"

#include "cli/workbook/cell_name.h"

namespace cli::explain {

namespace {
constexpr std::size_t shownCells = 3;
}

void Finding::at(int row, int col) {
    ++count;
    if (cells.size() < shownCells) cells.push_back(cellName(row, col));
}

void Finding::add(const std::string& text, long long times) {
    count += times;
    details[text] += times;
}

void Finding::at(int row, int col, const std::string& kind) {
    at(row, col);
    ++details[kind];
}

void Finding::merge(const Finding& other) {
    count += other.count;
    for (const std::string& cell : other.cells) {
        if (cells.size() < shownCells) cells.push_back(cell);
    }
    for (const auto& [kind, times] : other.details) details[kind] += times;
}

}  // namespace cli::explain
