#include "cli/diff/sheet_lines.h"

#include <algorithm>

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

std::uint64_t scrambled(std::uint64_t value) {
    value ^= value >> 33;
    value *= 0xff51afd7ed558ccd;
    value ^= value >> 33;
    value *= 0xc4ceb9fe1a85ec53;
    return value ^ (value >> 33);
}

template <class Visit>
void forEachCell(CellReader& reader, Sheet& sheet, Visit&& visit) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    if (cells == nullptr) return;
    for (int row = 0, col = 0; cells->cellFrom(&row, &col); ++col) {
        const CellHash hash = reader.hash(sheet, row, col);
        if (hash.exact != 0) visit(row, col, hash);
    }
}

}  // namespace

std::vector<RowHash> rowHashes(CellReader& reader, Sheet& sheet, const std::vector<int>& columnMap) {
    std::vector<RowHash> rows;
    forEachCell(reader, sheet, [&](int row, int col, const CellHash& hash) {
        const auto at = static_cast<std::size_t>(col);
        const int place = columnMap.empty() ? col : at < columnMap.size() ? columnMap[at] : -1;
        if (place < 0) return;
        if (rows.size() <= static_cast<std::size_t>(row)) rows.resize(static_cast<std::size_t>(row) + 1);
        RowHash& line = rows[static_cast<std::size_t>(row)];
        // A sum, since columns may have changed their order.
        line.exact += scrambled(hash.exact + static_cast<std::uint64_t>(place) * 0x9e3779b97f4a7c15);
        line.loose += scrambled(hash.loose + static_cast<std::uint64_t>(place) * 0x9e3779b97f4a7c15);
        line.formulas |= hash.isFormula;
    });
    return rows;
}

bool ColumnSketch::isLike(const ColumnSketch& other) const {
    if (isEmpty || other.isEmpty) return isEmpty == other.isEmpty;
    std::size_t same = 0;
    for (std::size_t i = 0; i < count; ++i) same += least[i] == other.least[i];
    return 2 * same >= count;
}

std::vector<ColumnSketch> columnSketches(CellReader& reader, Sheet& sheet) {
    std::vector<ColumnSketch> columns;
    forEachCell(reader, sheet, [&](int, int col, const CellHash& hash) {
        if (columns.size() <= static_cast<std::size_t>(col)) columns.resize(static_cast<std::size_t>(col) + 1);
        ColumnSketch& column = columns[static_cast<std::size_t>(col)];
        std::uint64_t value = hash.loose;
        for (std::uint64_t& least : column.least) {
            value = scrambled(value + 0x632be59bd9b4e019);
            least = column.isEmpty ? value : std::min(least, value);
        }
        column.isEmpty = false;
    });
    return columns;
}

std::vector<std::uint64_t> cellsOfRow(CellReader& reader, Sheet& sheet, int row) {
    std::vector<std::uint64_t> found;
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    for (int at = row, col = 0; cells != nullptr && cells->cellFrom(&at, &col) && at == row; ++col) {
        const CellHash hash = reader.hash(sheet, row, col);
        if (hash.exact != 0) found.push_back(hash.loose);
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace cli
