#include "engine/facts/r1c1.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "engine/facts/cell_address.h"
#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

constexpr std::int64_t rowLimit = sheetRows, colLimit = sheetColumns;

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}
bool isLetter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}
/// Part of a name, a cell or a number.
bool isWordCharacter(wchar_t c) {
    return isLetter(c) || isDigit(c) || c == L'_' || c == L'.' || c == L'$' || c == L'\\' || c > 127;
}

void appendNumber(std::wstring& out, std::int64_t value) {
    char digits[24];
    out.append(+digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendColumn(std::wstring& out, std::int64_t col) {
    wchar_t letters[8];
    wchar_t* first = letters + 8;
    for (std::int64_t rest = col + 1; rest > 0; rest = (rest - 1) / 26)
        *--first = static_cast<wchar_t>(L'A' + (rest - 1) % 26);
    out.append(first, letters + 8);
}

/// The stretch from a quote to its fellow, or to the end.
std::size_t quotedLength(std::wstring_view text, std::size_t at) {
    const std::size_t end = text.find(text[at], at + 1);
    return (end == std::wstring_view::npos ? text.size() : end + 1) - at;
}

std::size_t wordLength(std::wstring_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && isWordCharacter(text[end])) ++end;
    return end - at;
}

// Towards R1C1.

void appendPart(std::wstring& out, wchar_t letter, std::int64_t at, bool relative, int origin) {
    out += letter;
    if (!relative) return appendNumber(out, at + 1);
    if (at == origin) return;
    out += L'[';
    appendNumber(out, at - origin);
    out += L']';
}

// From R1C1.

struct Part {
    std::int64_t value = 0;  // counted from 0, or the distance
    bool relative = true;
};

/// `R` or `C` and what belongs to it, from `at` on, which moves behind it.
std::optional<Part> readPart(std::wstring_view text, std::size_t& at, wchar_t letter) {
    if (at >= text.size() || (text[at] | 0x20) != (letter | 0x20)) return std::nullopt;
    std::size_t i = at + 1;
    const bool bracket = i < text.size() && text[i] == L'[';
    if (bracket) ++i;
    const bool minus = bracket && i < text.size() && text[i] == L'-';
    if (minus) ++i;
    const std::size_t digits = i;
    Part part;
    for (; i < text.size() && isDigit(text[i]); ++i)
        part.value = std::min(part.value * 10 + (text[i] - L'0'), rowLimit * 2);
    if (bracket && (i == digits || i == text.size() || text[i] != L']')) return std::nullopt;
    if (bracket) ++i;
    if (minus) part.value = -part.value;
    part.relative = bracket || i == digits;
    if (!part.relative) --part.value;
    at = i;
    return part;
}

void appendA1(std::wstring& out, Part row, Part col, int originRow, int originCol, bool forBinaryFile) {
    const auto resolve = [](Part& part, int origin, std::int64_t size) {
        if (!part.relative) return;
        part.value += origin;
        if (part.value < 0) part.value += size;
    };
    resolve(row, originRow, forBinaryFile ? 65536 : rowLimit);
    resolve(col, originCol, forBinaryFile ? 256 : colLimit);
    if (row.value < 0 || row.value >= rowLimit) throw vlerror(msg::rowOutOfRange);
    if (col.value < 0 || col.value >= colLimit) throw vlerror(msg::colOutOfRange);
    if (!col.relative) out += L'$';
    appendColumn(out, col.value);
    if (!row.relative) out += L'$';
    appendNumber(out, row.value + 1);
}

}  // namespace

bool appendR1C1(std::wstring& out, std::wstring_view word, int originRow, int originCol) {
    std::size_t i = 0;
    const auto dollar = [&] {
        const bool there = i < word.size() && word[i] == L'$';
        i += there ? 1 : 0;
        return there;
    };
    const bool colFixed = dollar();
    const std::size_t letters = i;
    std::int64_t col = 0, row = 0;
    for (; i < word.size() && i < 4 && isLetter(word[i]); ++i) col = col * 26 + (word[i] & 0x1F);
    if (i == letters) return false;
    const bool rowFixed = dollar();
    const std::size_t digits = i;
    for (; i < word.size() && i < digits + 8 && isDigit(word[i]); ++i) row = row * 10 + (word[i] - L'0');
    if (i == digits || i != word.size()) return false;
    appendPart(out, L'R', row - 1, !rowFixed, originRow);
    appendPart(out, L'C', col - 1, !colFixed, originCol);
    return true;
}

std::wstring a1ToR1C1(std::wstring_view text, int row, int col) {
    std::wstring out;
    out.reserve(text.size() + 16);
    for (std::size_t at = 0; at < text.size();) {
        const bool quote = text[at] == L'"' || text[at] == L'\'';
        const std::size_t length = quote ? quotedLength(text, at) : std::max<std::size_t>(wordLength(text, at), 1);
        const std::wstring_view piece = text.substr(at, length);
        const wchar_t before = at == 0 ? L' ' : text[at - 1];
        at += length;
        const wchar_t behind = at == text.size() ? L' ' : text[at];
        const auto joins = [](wchar_t c) { return c == L'!' || c == L':' || c == L'(' || c == L'[' || c == L']'; };
        const bool alone = (before == L'(' || !joins(before)) && !joins(behind);
        // A name may have the form of a cell that no sheet has.
        if (!alone || !readCellAddress(piece) || !appendR1C1(out, piece, row, col)) out += piece;
    }
    return out;
}

void r1c1ToA1(std::wstring& text, int row, int col, bool forBinaryFile) {
    std::wstring out;
    out.reserve(text.size() + 16);
    for (std::size_t at = 0; at < text.size();) {
        const wchar_t c = text[at];
        if (c == L'"' || c == L'\'') {
            const std::size_t length = quotedLength(text, at);
            out.append(text, at, length);
            at += length;
            continue;
        }
        std::size_t end = at;
        const auto rowPart = readPart(text, end, L'R');
        const auto colPart = rowPart ? readPart(text, end, L'C') : std::nullopt;
        const wchar_t behind = end == text.size() ? L' ' : text[end];
        if (colPart && !isWordCharacter(behind) && behind != L'(' && behind != L'!' && behind != L'[') {
            appendA1(out, *rowPart, *colPart, row, col, forBinaryFile);
            at = end;
            continue;
        }
        const std::size_t length = std::max<std::size_t>(wordLength(text, at), 1);
        if (c != L' ') out.append(text, at, length);
        at += length;
    }
    text = std::move(out);
}

}  // namespace vellum
