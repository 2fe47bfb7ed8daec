#include "engine/text/letter_case.h"

#include <locale.h>

#include <algorithm>
#include <cwctype>

namespace vellum {

wchar_t smallLetter(wchar_t c) {
    if (c < 0x80) return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const auto code = static_cast<std::wint_t>(c);
    return static_cast<wchar_t>(unicode == nullptr ? std::towlower(code) : towlower_l(code, unicode));
}

std::wstring smallLetters(std::wstring_view text) {
    std::wstring small(text);
    std::ranges::transform(small, small.begin(), smallLetter);
    return small;
}

bool equalIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, {}, smallLetter, smallLetter);
}

}  // namespace vellum
