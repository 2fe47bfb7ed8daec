// Texts and tokens through a workbook that is made of lists.
#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/failure/vlerror.h"
#include "formula/compiling/formula_from_text.h"
#include "formula/printing/formula_to_text.h"
#include "tests/formula/fake_book.h"

namespace vellum::test {

inline std::vector<std::byte> hex(std::string_view text) {
    std::vector<std::byte> bytes;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == ' ') continue;
        bytes.push_back(static_cast<std::byte>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
        ++i;
    }
    return bytes;
}

inline std::string hexOf(std::span<const std::byte> bytes) {
    std::string text;
    char digits[4];
    for (const std::byte b : bytes) {
        std::snprintf(digits, sizeof digits, "%02X", std::to_integer<unsigned>(b));
        if (!text.empty()) text += ' ';
        text += digits;
    }
    return text;
}

/// The text of tokens, or the text of the failure.
inline std::wstring textOf(std::string_view tokens, const FakeBook& book,
                           formula::Generation generation = formula::Generation::biff8, formula::LocationBase base = {},
                           formula::TextOrigin origin = {}) {
    try {
        return formula::FormulaText().formulaToText(hex(tokens), book, generation, base, origin);
    } catch (const vlerror& e) {
        const std::string_view text = e.what();
        return {text.begin(), text.end()};
    }
}

/// The tokens of a text, or the text of the failure. The formula stands in the first sheet.
inline std::string tokensOf(std::wstring_view text, FakeBook& book, formula::TextOrigin at = {}) {
    try {
        return hexOf(formula::FormulaTokens().tokensOfText(text, book, 0, at));
    } catch (const vlerror& e) {
        return e.what();
    }
}

}  // namespace vellum::test
