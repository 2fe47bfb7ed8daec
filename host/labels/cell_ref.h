// One cell reference of a label: "B7", "r7c2", "B" (a column), "7" (a row).
#pragma once

namespace quillet {

/// Parses the reference at `text` and leaves `*end` behind it. Row and column count from 0, `notGiven` where the
/// reference does not say; "A0" gives row -1, which no range accepts. 0 for success.
int parseCellRef(const char* text, const char** end, int* row, int* col);

}  // namespace quillet
