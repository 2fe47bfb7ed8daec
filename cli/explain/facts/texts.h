// Texts as the rules compare them.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "host/labels/range_spec.h"

namespace cli::explain {

/// Whether a text is a number in digits from end to end, blanks around it aside.
bool isNumber(std::string_view text, char decimalSeparator);

/// The decimal separator of a csv source, "." of workbooks.
char decimalSeparator(const quillet::RangeSpec& range);

/// Whether the text stands for a value that is not finite, by `nan=`, `inf=` and `minf=`.
bool isSpecialText(const quillet::RangeSpec& range, std::string_view text);

/// Single characters to insert, drop or change, or neighbours to swap, until one text is the other; `limit` + 1 for
/// all that takes more. Letters A to Z are equal in both cases.
std::size_t distance(std::string_view a, std::string_view b, std::size_t limit);

/// 'text'
std::string inQuotes(std::string_view text);

std::string_view withoutBlanks(std::string_view text);

}  // namespace cli::explain
