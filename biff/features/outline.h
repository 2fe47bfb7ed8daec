// Groups of rows and columns that can be folded.
#pragma once
#include <cstdint>

namespace vellum {

struct Guts;
class ColumnTable;
class RowTable;

namespace biff {

/// The deepest level of a row or column.
inline constexpr int maxOutlineLevel = 7;

/// Puts rows one level deeper. The row that stands for the group, behind it or with `summaryBefore` in front, gets
/// the mark of a folded group, or loses it. Throws, with nothing changed, when the rows are on several levels, or
/// beyond the last one.
void groupRows(RowTable& rows, Guts& guts, std::uint16_t first, std::uint16_t last, bool collapsed, bool summaryBefore,
               std::uint16_t defaultHeight);

/// The same for columns, which may be on several levels. `coldx` is the width of columns without a record.
void groupColumns(ColumnTable& columns, Guts& guts, std::uint16_t first, std::uint16_t last, bool collapsed,
                  bool summaryBefore, std::uint16_t coldx);

}  // namespace biff
}  // namespace vellum
