// Dates and times by a section of a number format.
#pragma once
#include <optional>
#include <string>

#include "cli/formats/format_code.h"

namespace cli {

/// A day number, with English names of months and days. Nothing for a number that is no date.
std::optional<std::string> showDate(const FormatSection& section, double value, bool date1904);

}  // namespace cli
