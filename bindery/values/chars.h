// Classes of bytes of a document.
#pragma once
#include <array>
#include <cstdint>

namespace bindery {

/// Classes of bytes, one table for all scans.
enum CharClass : std::uint8_t {
    char_space = 1,  // blank, tab, newline, carriage return
    char_name = 2,   // of a name: letters, digits, "_", ":", "-", "." and all bytes above 127
    char_name_start = 4,
    char_text_stop = 8,   // ends the plain run of a text
    char_value_stop = 16  // ends the plain run of a value
};

inline constexpr std::array<std::uint8_t, 256> charClasses = [] {
    std::array<std::uint8_t, 256> table{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c > 127;
        const bool space = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        // C2 85 and E2 80 A8 are ends of line.
        const bool special = c == '&' || c == '\r' || c == 0xC2 || c == 0xE2;
        unsigned bits = 0;
        if (space) bits |= char_space;
        if (letter || (c >= '0' && c <= '9') || c == '-' || c == '.') bits |= char_name;
        if (letter) bits |= char_name_start;
        if (special || c == '<') bits |= char_text_stop;
        if (special || c == '"' || c == '\'' || c == '\t' || c == '\n') bits |= char_value_stop;
        table[c] = static_cast<std::uint8_t>(bits);
    }
    return table;
}();

inline bool is(char c, CharClass wanted) {
    return (charClasses[static_cast<unsigned char>(c)] & wanted) != 0;
}

inline const char* skipSpace(const char* at, const char* end) {
    while (at != end && is(*at, char_space)) ++at;
    return at;
}

inline const char* skipName(const char* at, const char* end) {
    while (at != end && is(*at, char_name)) ++at;
    return at;
}

/// Length of the end of line that begins here, 0 for none: CR LF, CR, LF; in UTF-8 documents also U+0085 and U+2028.
inline int endOfLine(const char* at, const char* end, bool utf8) {
    switch (static_cast<unsigned char>(*at)) {
        case '\n':
            return 1;
        case '\r':
            return end - at > 1 && at[1] == '\n' ? 2 : 1;
        case 0xC2:
            return utf8 && end - at > 1 && at[1] == '\x85' ? 2 : 0;
        case 0xE2:
            return utf8 && end - at > 2 && at[1] == '\x80' && at[2] == '\xA8' ? 3 : 0;
        default:
            return 0;
    }
}

}  // namespace bindery
