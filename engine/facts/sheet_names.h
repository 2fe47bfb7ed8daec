// Names of sheets in formula text, and which they may be.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace vellum {

inline constexpr std::size_t longestSheetName = 31;

/// Throws the text for an empty name and for one with a character or an apostrophe where none may be.
void checkSheetName(std::wstring_view name);

/// A name as a workbook has it, and whether it had to lose characters for that.
struct SheetNameText {
    std::wstring name;
    bool cut = false;
};
/// Cut to 31 characters: of the narrow text when that is no UTF-8. Throws for null.
template <class CharT>
SheetNameText cutSheetName(const CharT* name, bool utf8);

/// In small letters.
std::wstring foldedSheetName(std::wstring_view name);

/// Equal but for case.
bool sameSheetName(std::wstring_view a, std::wstring_view b);

/// The sheet part of a reference such as "'My sheet'!$A$1", without its quotes; "" when there is no "!".
std::wstring sheetOfReference(std::wstring_view reference);

/// As it stands in front of a "!": in apostrophes when it needs them, those in it doubled.
std::wstring quotedSheetName(std::wstring_view name);

/// Gives each reference to sheet `from` in a formula the name `to`; case does not count. Ranges of sheets, such as
/// "Sheet1:Sheet3!A1", are references to their first and last sheet.
std::wstring withSheetRenamed(std::wstring_view formula, std::wstring_view from, std::wstring_view to);

}  // namespace vellum
