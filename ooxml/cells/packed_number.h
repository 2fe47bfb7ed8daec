// Texts of numbers, two characters in a byte.
#pragma once
#include <cstddef>
#include <string_view>

namespace ooxml {

inline constexpr std::string_view packedCharacters = "0123456789.-+Ee";

/// The number of each character of numbers, 15 for all others.
inline constexpr auto packedCodes = [] {
    struct {
        unsigned char of[256];
    } codes{};
    for (unsigned char& code : codes.of) code = 15;
    for (std::size_t i = 0; i < packedCharacters.size(); ++i) {
        codes.of[static_cast<unsigned char>(packedCharacters[i])] = static_cast<unsigned char>(i);
    }
    return codes;
}();

/// Fills half as many bytes as the text has characters, rounded up; false when it has others than numbers have.
inline bool packNumber(std::string_view text, char* to) {
    const auto code = [&](std::size_t at) {
        return at < text.size() ? packedCodes.of[static_cast<unsigned char>(text[at])] : 0U;
    };
    unsigned worst = 0;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const unsigned low = code(at), high = code(at + 1);
        worst |= (low + 1) | (high + 1);
        to[at / 2] = static_cast<char>(low | high << 4);
    }
    return worst < 16;
}

}  // namespace ooxml
