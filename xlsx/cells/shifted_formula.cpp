#include "xlsx/cells/shifted_formula.h"

#include "engine/facts/cell_address.h"

namespace vellum {
namespace {

bool isWordCharacter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'$';
}

std::uint32_t wrapped(std::uint32_t at, std::int64_t delta, std::int64_t size) {
    return static_cast<std::uint32_t>(((at + delta) % size + size) % size);
}

}  // namespace

std::wstring translateFormula(std::wstring_view text, std::int64_t rowDelta, std::int64_t colDelta) {
    std::wstring result;
    result.reserve(text.size() + 8);
    const auto putWord = [&](std::wstring_view word) {
        auto address = readCellAddress(word);
        if (!address) {
            result += word;
            return;
        }
        if (!address->rowFixed) address->row = wrapped(address->row, rowDelta, sheetRows);
        if (!address->colFixed) address->col = wrapped(address->col, colDelta, sheetColumns);
        appendCellAddress(result, *address);
    };
    bool quoted = false;
    std::size_t wordAt = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (!quoted && isWordCharacter(c)) continue;
        const std::wstring_view word = text.substr(wordAt, i - wordAt);
        if (quoted || c == L'(') {
            result += word;
        } else {
            putWord(word);
        }
        result += c;
        wordAt = i + 1;
        if (c == L'"') quoted = !quoted;
    }
    const std::wstring_view word = text.substr(wordAt);
    if (quoted) {
        result += word;
    } else {
        putWord(word);
    }
    return result;
}

}  // namespace vellum
