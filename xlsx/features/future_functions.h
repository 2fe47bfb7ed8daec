// Functions that came after the first edition of the format.
#pragma once
#include <span>
#include <string>
#include <string_view>

namespace vellum::xlsx {

/// Files have such functions with this prefix, people and the interfaces without it.
inline constexpr std::wstring_view functionPrefix = L"_xlfn.";

/// The names with their opening brackets, in the order in which they are looked for.
std::span<const std::wstring_view> futureFunctions();

/// Puts the prefix in front of each such function in a formula. Text in single or double quotes is left alone, as is a
/// name behind a letter; one that has the prefix already gets a second one.
void prefixFunctions(std::wstring& formula);

/// Takes the prefixes away again, wherever they stand.
void unprefixFunctions(std::wstring& formula);

}  // namespace vellum::xlsx
