// The sheets that stand before the `!` of a reference in formula text.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vellum::formula {

class FormulaContext;

struct SheetPair {
    std::size_t first, last;
};

/// `Sheet1`, `'My Sheet'`, `First:Last`, `'First:Last one'`: the sheets by their names, without regard to case.
/// Throws "sheet is not found".
SheetPair sheetsOfSpec(std::wstring_view spec, const FormulaContext& book);

/// The index of the reference to these sheets; one is added when there is none.
std::uint16_t xtiIndexOfSheetSpec(std::wstring_view spec, FormulaContext& book);

}  // namespace vellum::formula
