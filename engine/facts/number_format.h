// Which number formats show dates and times.
#pragma once
#include <optional>
#include <string_view>

namespace vellum {

/// Whether the built-in format of an id shows a date or time. Nothing for ids that have a text of their own, and for
/// those between, which are dates in some countries only: files bring their texts along.
std::optional<bool> builtInShowsDate(unsigned id);

/// Whether the text of a format has a letter of a date or time outside of quotes, and of brackets, which hold colours
/// and conditions.
bool showsDate(std::wstring_view format);

}  // namespace vellum
