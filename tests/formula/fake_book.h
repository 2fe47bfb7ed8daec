// A workbook as formulas see it, made of lists.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "engine/facts/sheet_names.h"
#include "formula/formula_context.h"

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

}  // namespace vellum::test
