// The rows and columns of a sheet as hashes.
#pragma once
#include <cstdint>
#include <vector>

#include "cli/diff/cell_reader.h"

namespace cli {

struct RowHash {
    std::uint64_t exact = 0, loose = 0;  // 0 for a row without content
    bool formulas = false;
};

/// Rows from 0 to the last one with content. `columnMap` gives each column another number, for columns that moved, and
/// leaves out those with -1; empty: all stay.
std::vector<RowHash> rowHashes(CellReader& reader, vellum::ISheetT<char>& sheet, const std::vector<int>& columnMap);

/// A column as the least values of hash functions over its cells: of two columns that share most cells most are equal.
struct ColumnSketch {
    static constexpr std::size_t count = 6;
    std::uint64_t least[count];
    bool isEmpty = true;

    [[nodiscard]] bool isLike(const ColumnSketch& other) const;
};
std::vector<ColumnSketch> columnSketches(CellReader& reader, vellum::ISheetT<char>& sheet);

/// Hashes of a row's cells without their columns, sorted: for rows that share most cells.
std::vector<std::uint64_t> cellsOfRow(CellReader& reader, vellum::ISheetT<char>& sheet, int row);

}  // namespace cli
