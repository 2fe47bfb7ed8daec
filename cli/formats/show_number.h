// Numbers and fractions by a section of a number format.
#pragma once
#include <string>

#include "cli/formats/format_code.h"

namespace cli {

/// A number by a section with places for digits; its sign is the caller's to put in front.
std::string showNumber(const FormatSection& section, double value);

/// The same by a section with a fraction, such as "# ?/?" or "0/16".
std::string showFraction(const FormatSection& section, double value);

}  // namespace cli
