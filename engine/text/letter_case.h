// Texts that differ only in the case of their letters: names of sheets and of ranges.
#pragma once
#include <string>
#include <string_view>

namespace vellum {

/// The small letter, in all scripts, whatever the locale of the process is.
wchar_t smallLetter(wchar_t c);
std::wstring smallLetters(std::wstring_view text);
/// Same length, and equal character by character but for case.
bool equalIgnoringCase(std::wstring_view a, std::wstring_view b);

}  // namespace vellum
