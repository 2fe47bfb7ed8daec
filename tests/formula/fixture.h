// A workbook as formulas see it, made of lists, and texts and tokens through it.
#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "formula/compiling/formula_from_text.h"
#include "formula/printing/formula_to_text.h"

namespace vellum::test {

using formula::SheetSpan;

struct FakeBook final : formula::FormulaContext {
    struct Name {
        std::wstring text;
        int sheet = -1;  // -1: of the whole workbook
    };
    std::vector<std::wstring> sheets{L"Sheet1", L"Sheet2", L"My Sheet", L"O'Neil"};
    std::vector<SheetSpan> spans;
    std::vector<Name> names{{L"Rate"}, {L"Total", 1}, {L"Total"}};
    wchar_t separator = L';';
    bool r1c1 = false;

    [[nodiscard]] std::size_t sheetTotal() const override { return sheets.size(); }
    [[nodiscard]] std::wstring_view sheetNameOf(std::size_t index) const override { return sheets.at(index); }
    [[nodiscard]] SheetSpan sheetSpan(std::uint16_t xti) const override {
        return xti < spans.size() ? spans[xti] : SheetSpan{};
    }
    std::uint16_t xtiOfSheets(std::size_t first, std::size_t last) override {
        const auto from = static_cast<int>(first), to = static_cast<int>(last);
        for (std::size_t i = 0; i < spans.size(); ++i) {
            if (spans[i].where == SheetSpan::Where::ownBook && spans[i].first == from && spans[i].last == to) {
                return static_cast<std::uint16_t>(i);
            }
        }
        spans.push_back({SheetSpan::Where::ownBook, from, to});
        return static_cast<std::uint16_t>(spans.size() - 1);
    }
    [[nodiscard]] std::optional<std::wstring_view> nameText(std::uint32_t index) const override {
        if (index >= names.size()) return std::nullopt;
        return names[index].text;
    }
    [[nodiscard]] std::optional<std::uint32_t> nameIndex(std::wstring_view text, int sheet) const override {
        for (const int scope : {sheet, -1}) {
            for (std::uint32_t i = 0; i < names.size(); ++i) {
                if (names[i].sheet == scope && sameSheetName(names[i].text, text)) return i;
            }
        }
        return std::nullopt;
    }
    [[nodiscard]] wchar_t argumentSeparator() const override { return separator; }
    [[nodiscard]] bool usesR1C1Text() const override { return r1c1; }
};

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
inline std::string tokensOf(std::wstring text, FakeBook& book, formula::TextOrigin at = {}) {
    try {
        return hexOf(formula::FormulaTokens().tokensOfText(text, book, 0, at));
    } catch (const vlerror& e) {
        return e.what();
    }
}

}  // namespace vellum::test
