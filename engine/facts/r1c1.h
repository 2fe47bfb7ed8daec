// R1C1 notation of formula text: cells told by their distance from the cell that holds the formula.
#pragma once
#include <string>
#include <string_view>

namespace vellum {

/// Appends a word such as `$B3` as `R[1]C2`, relative to a cell; false, and nothing appended, for a word that is no
/// single cell. Only the form is looked at: one to four characters of letters with a `$` before them, one to eight
/// digits with a `$` before them.
bool appendR1C1(std::wstring& out, std::wstring_view word, int originRow, int originCol);

/// The whole text of a formula with its single cells in R1C1 notation. Areas and cells with a sheet stay as they are,
/// as does what stands in quotes, and what is no cell of an Open XML sheet.
std::wstring a1ToR1C1(std::wstring_view text, int row, int col);

/// Rewrites every cell in R1C1 notation as A1, relative to a cell, and drops the blanks outside of quotes; all else
/// stays. What leaves the sheet on the low side comes in on the other: 65536 rows and 256 columns of a binary
/// workbook, else 1048576 and 16384. Throws "row must be in range 0-1048575", "col must be in range 0-16383".
void r1c1ToA1(std::wstring& text, int row, int col, bool forBinaryFile);

}  // namespace vellum
