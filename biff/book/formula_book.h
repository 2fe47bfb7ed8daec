// The workbook as its formulas see it.
#pragma once
#include "biff/globals/globals.h"
#include "formula/formula_context.h"

namespace vellum::biff {

/// Looks into the globals, and lives no longer than these. Notation and separator are those of the moment in which it
/// was made.
class FormulaBook final : public formula::FormulaContext {
public:
    FormulaBook(Globals& globals, wchar_t separator, bool r1c1)
        : _globals(globals), _separator(separator), _r1c1(r1c1) {}

    [[nodiscard]] std::size_t sheetTotal() const override { return _globals.boundSheets.size(); }
    [[nodiscard]] std::wstring_view sheetNameOf(std::size_t index) const override;
    [[nodiscard]] formula::SheetSpan sheetSpan(std::uint16_t xti) const override;
    std::uint16_t xtiOfSheets(std::size_t first, std::size_t last) override;
    [[nodiscard]] std::optional<std::wstring_view> nameText(std::uint32_t index) const override;
    [[nodiscard]] std::optional<std::uint32_t> nameIndex(std::wstring_view text, int sheet) const override;
    [[nodiscard]] wchar_t argumentSeparator() const override { return _separator; }
    [[nodiscard]] bool usesR1C1Text() const override { return _r1c1; }

private:
    Globals& _globals;
    wchar_t _separator;
    bool _r1c1;
};

}  // namespace vellum::biff
