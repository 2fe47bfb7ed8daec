// Samples of numbers under formats that a workbook brings along.
#include <algorithm>
#include <array>

#include "xlsx/fitting/number_sample.h"

namespace vellum::xlsx {
namespace {

wchar_t small(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
}

bool isDateLetter(wchar_t c) {
    return std::wstring_view(L"dhmsy").find(small(c)) != std::wstring_view::npos;
}

/// What a format writes as it stands: the place behind it, or `at` itself when something else stands there.
std::size_t copyLiteral(std::wstring_view format, std::size_t at, std::wstring& text) {
    const bool hasNext = at + 1 < format.size();
    switch (format[at]) {
        case L'"': {
            const std::size_t end = std::min(format.find(L'"', at + 1), format.size());
            text += format.substr(at + 1, end - at - 1);
            return std::min(end + 1, format.size());
        }
        case L'[':
            return std::min(format.find(L']', at), format.size() - 1) + 1;
        case L'\\':
            if (hasNext) text += format[at + 1];
            return at + 1 + hasNext;
        case L'_':  // a blank as wide as the next character
            text += L' ';
            return at + 1 + hasNext;
        case L'*':  // the next character fills the column
            return at + 1 + hasNext;
        default:
            return at;
    }
}

std::wstring dateRun(wchar_t letter, std::size_t length) {
    if (letter == L'm' && length == 4) return L"September";
    if (letter == L'd' && length == 4) return L"Wednesday";
    return std::wstring(length, L'0');  // "mmm" and "ddd" are three characters wide, too
}

std::wstring dateSample(std::wstring_view format) {
    std::wstring text;
    for (std::size_t i = 0; i < format.size();) {
        if (const std::size_t behind = copyLiteral(format, i, text); behind != i) {
            i = behind;
        } else if (isDateLetter(format[i])) {
            const wchar_t letter = small(format[i]);
            std::size_t length = 1;
            while (i + length < format.size() && small(format[i + length]) == letter) ++length;
            text += dateRun(letter, length);
            i += length;
        } else if (format[i] == L';') {  // the sections behind are for numbers below 0, and for texts
            break;
        } else {
            text += format[i++];
        }
    }
    return text;
}

/// The part of the format for numbers of this sign; the first one when there is no other.
std::wstring_view sectionFor(std::wstring_view format, double value) {
    std::array<std::wstring_view, 3> sections;
    std::size_t count = 0, from = 0, i = 0;
    std::wstring ignored;
    while (count < sections.size()) {
        while (i < format.size() && format[i] != L';') {
            const std::size_t behind = copyLiteral(format, i, ignored);
            i = behind == i ? i + 1 : behind;
        }
        sections[count++] = format.substr(from, i - from);
        if (i == format.size()) break;
        from = ++i;
    }
    if (value < 0 && count > 1) return sections[1];
    return value == 0 && count > 2 ? sections[2] : sections[0];
}

/// The digits of the whole part, filled with zeros to the "0" places before the point.
std::wstring wholeDigits(std::wstring_view section, double value) {
    std::size_t places = 0;
    std::wstring ignored;
    for (std::size_t i = 0; i < section.size() && section[i] != L'.';) {
        const std::size_t behind = copyLiteral(section, i, ignored);
        if (behind == i && section[i] == L'0') ++places;
        i = behind == i ? i + 1 : behind;
    }
    const std::wstring digits = std::to_wstring(wholePart(value));
    return std::wstring(places > digits.size() ? places - digits.size() : 0, L'0') + digits;
}

std::wstring numberSample(std::wstring_view section, double value) {
    const std::wstring digits = wholeDigits(section, value);
    std::wstring text;
    bool begun = false, behindPoint = false;
    for (std::size_t i = 0; i < section.size();) {
        if (const std::size_t behind = copyLiteral(section, i, text); behind != i) {
            i = behind;
            continue;
        }
        const wchar_t c = section[i++];
        if (c == L'0' || c == L'#') {
            if (behindPoint) {
                text += L'0';
            } else if (!begun) {
                text += digits;
            }
            begun = true;
        } else if (c == L',') {
            if (begun) text.append(digits.size() / 3, L' ');
        } else if (c == L'%') {
            text += L"00%";
        } else {
            behindPoint = behindPoint || c == L'.';
            text += c;
        }
    }
    return text;
}

}  // namespace

std::wstring customSample(std::wstring_view format, bool isDate, double value) {
    return isDate ? dateSample(format) : numberSample(sectionFor(format, value), value);
}

}  // namespace vellum::xlsx
