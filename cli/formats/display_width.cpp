#include "cli/formats/display_width.h"

#include <utf8.h>
#include <wchar.h>

#include <algorithm>

namespace cli {
namespace {

/// Takes a character off a text. What is no UTF-8 counts a byte as a character.
int nextWidth(const char*& at, const char* end) {
    const char* const start = at;
    try {
        const int width = wcwidth(static_cast<wchar_t>(utf8::next(at, end)));
        return width < 0 ? 1 : width;
    } catch (const utf8::exception&) {
        at = start + 1;
        return 1;
    }
}

}  // namespace

int displayWidth(std::string_view utf8) {
    int width = 0;
    for (const char *at = utf8.data(), *const end = at + utf8.size(); at < end;) width += nextWidth(at, end);
    return width;
}

std::string cutToWidth(std::string_view utf8, int width) {
    if (displayWidth(utf8) <= width) return std::string(utf8);
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    const char* fits = at;
    for (int taken = 0; at < end;) {
        taken += nextWidth(at, end);
        if (taken > width - 1) break;
        fits = at;
    }
    return std::string(utf8.data(), fits) + (width > 0 ? "\u2026" : "");
}

std::string onOneLine(std::string_view utf8) {
    std::string line(utf8);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return (c >= 0 && c < ' ') || c == 127; }, ' ');
    return line;
}

}  // namespace cli
