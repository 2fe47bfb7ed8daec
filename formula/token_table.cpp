#include "formula/token_table.h"

#include <iterator>

namespace vellum::formula {
namespace {

constexpr std::size_t codeLimit = 0x80;
constexpr std::uint8_t noRow = 0xFF;

/// Row index by code; `noRow` for codes that are no token. Fails to compile when two rows claim a code.
constexpr std::array<std::uint8_t, codeLimit> rowOfCode = [] {
    std::array<std::uint8_t, codeLimit> rows{};
    rows.fill(noRow);
    for (std::size_t i = 0; i < std::size(tokenRows); ++i) {
        for (std::size_t code = 0; code < codeLimit; ++code) {
            const auto c = static_cast<std::uint8_t>(code);
            const std::uint8_t mask = tokenClassMask(c);
            if (tokenBase(c) != tokenRows[i].code || (mask & tokenRows[i].classes) != mask) continue;
            if (rows[code] != noRow) throw "two rows for one code";
            rows[code] = static_cast<std::uint8_t>(i);
        }
    }
    return rows;
}();

constexpr std::size_t count(bool (*wanted)(std::uint8_t)) {
    std::size_t n = 0;
    for (std::size_t code = 0; code < codeLimit; ++code) n += wanted(static_cast<std::uint8_t>(code)) ? 1 : 0;
    return n;
}
static_assert(count([](std::uint8_t code) { return rowOfCode[code] != noRow; }) == 29 + 3 * 21);
static_assert(rowOfCode[0x00] == noRow && rowOfCode[0x1A] == noRow && rowOfCode[0x1B] == noRow);
static_assert(rowOfCode[0x7D] != noRow && rowOfCode[0x7E] == noRow && rowOfCode[0x38] == noRow);
static_assert(tokenRows[rowOfCode[0x63]].word == TokenWord::fixed &&
              tokenRows[rowOfCode[0x43]].word == TokenWord::name);

}  // namespace

const TokenRow* tokenRow(std::uint8_t code) {
    return code >= codeLimit || rowOfCode[code] == noRow ? nullptr : &tokenRows[rowOfCode[code]];
}

const AttributeRow* attributeRow(std::uint8_t kind) {
    for (const AttributeRow& row : attributeRows) {
        if (row.kind == kind) return &row;
    }
    return nullptr;
}

}  // namespace vellum::formula
