// Just enough of UTF-8 to print texts of unknown origin.
#pragma once
#include <cstddef>
#include <string_view>

namespace refhost {

/// Bytes of the well-formed character that the text begins with; 0 when it begins with none.
constexpr std::size_t utf8Length(std::string_view text) {
    if (text.empty()) return 0;
    const auto byte = [&](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
    };
    const auto follows = [&](std::size_t i, unsigned low = 0x80, unsigned high = 0xbf) {
        return byte(i) >= low && byte(i) <= high;
    };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first >= 0xc2 && first <= 0xdf) return follows(1) ? 2 : 0;
    if (first >= 0xe0 && first <= 0xef)  // no longer form than needed, no surrogates
        return follows(1, first == 0xe0 ? 0xa0 : 0x80, first == 0xed ? 0x9f : 0xbf) && follows(2) ? 3 : 0;
    if (first >= 0xf0 && first <= 0xf4)
        return follows(1, first == 0xf0 ? 0x90 : 0x80, first == 0xf4 ? 0x8f : 0xbf) && follows(2) && follows(3) ? 4 : 0;
    return 0;
}

}  // namespace refhost
