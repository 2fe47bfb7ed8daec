// The texts of defined names that stand for cells: "Sheet1!$A$1:$B$2", or several areas joined by commas.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/facts/cell_address.h"
#include "xlsx/features/moved_range.h"

namespace vellum::xlsx {

/// Names and addresses are the same in letters of either case.
std::wstring inCapitals(std::wstring_view text);

/// The pieces between commas; commas in quoted names of sheets do not count.
std::vector<std::wstring_view> areasOf(std::wstring_view text);

/// The cells of a piece that lies on `sheet`, or names no sheet. Nothing for formulas, "#REF!" and other sheets.
std::optional<CellRange> rangeOnSheet(std::wstring_view area, std::wstring_view sheet);

/// Whether a piece, which lies on `sheet`, consists of whole rows or of whole columns.
enum class AreaKind { none, cells, rows, columns };
AreaKind areaKind(std::wstring_view area, std::wstring_view sheet);

/// The sheet's name, in apostrophes when it needs them, and the range with "$" signs.
std::wstring absoluteArea(std::wstring_view sheet, const CellRange& range);
std::wstring absoluteRows(std::wstring_view sheet, std::uint32_t first, std::uint32_t last);
std::wstring absoluteColumns(std::wstring_view sheet, std::uint32_t first, std::uint32_t last);

/// The text after rows or columns of `sheet` moved. Ranges that span all rows, or all columns, keep doing so, as do
/// those that came from sheets of 65536 by 256 cells. A piece with nothing left goes; "" when all have gone.
std::wstring movedAreas(std::wstring_view text, std::wstring_view sheet, const CellMove& move);

}  // namespace vellum::xlsx
