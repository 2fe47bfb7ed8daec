// Names of sheets and of ranges, in UTF-8: the same but for the case of their letters, in all scripts.
#pragma once
#include <string_view>

namespace quillet {

/// Case is folded letter by letter, whatever the locale. What is no UTF-8 is told apart byte by byte, but for A to Z.
bool sameName(std::string_view a, std::string_view b);

}  // namespace quillet
