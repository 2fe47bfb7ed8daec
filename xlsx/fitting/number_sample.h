// Texts about as long as those that number formats show.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace vellum::xlsx {

/// Number formats from here on are told by their text.
inline constexpr unsigned firstFormatWithText = 50;

/// The whole part; what no 64-bit integer holds is cut, what is no number is 0.
std::int64_t wholePart(double value);

/// Appends the sample of a number in a built-in format; one that has none shows it as "general" does.
void appendBuiltInSample(std::string& text, unsigned numFmtId, double value);

/// The sample of a number under a format's text.
std::wstring customSample(std::wstring_view format, bool isDate, double value);

}  // namespace vellum::xlsx
