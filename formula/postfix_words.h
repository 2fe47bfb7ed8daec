// The words of postfix text.
#pragma once
#include <string_view>

namespace vellum::formula {

/// The next word of postfix text, which is taken off its front; empty at the end. A blank in quotes ends no word, and
/// a quote inside a stretch of the other kind is text.
std::wstring_view takeWord(std::wstring_view& postfix);

}  // namespace vellum::formula
