// Places that texts take on a terminal.
#pragma once
#include <string>
#include <string_view>

namespace cli {

/// Columns of a text on a terminal: wide characters take two, marks that go on another character none.
int displayWidth(std::string_view utf8);

/// As much of the text as fits; where that is not all it ends in "…".
std::string cutToWidth(std::string_view utf8, int width);

/// One line without control characters, which become blanks.
std::string onOneLine(std::string_view utf8);

}  // namespace cli
