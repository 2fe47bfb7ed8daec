// Names of sheets in formula text, and which they may be.
#pragma once
#include <string>
#include <string_view>

namespace vellum {

/// Throws the text for an empty name and for one with a character or an apostrophe where none may be.
void checkSheetName(std::wstring_view name);

/// In small letters, as the C library folds them.
std::wstring foldedSheetName(std::wstring_view name);

/// Equal but for case, as the C library folds it.
bool sameSheetName(std::wstring_view a, std::wstring_view b);

/// The sheet part of a reference such as "'My sheet'!$A$1", without its quotes; "" when there is no "!".
std::wstring sheetOfReference(std::wstring_view reference);

/// Gives each reference to sheet `from` in a formula the name `to`.
std::wstring withSheetRenamed(std::wstring_view formula, std::wstring_view from, std::wstring_view to);

}  // namespace vellum
