#include "biff/book/formula_book.h"

namespace vellum::biff {

std::wstring_view FormulaBook::sheetNameOf(std::size_t index) const {
    return _globals.boundSheets.at(index).sheetName.view();
}

formula::SheetSpan FormulaBook::sheetSpan(std::uint16_t xti) const {
    using Where = formula::SheetSpan::Where;
    if (_globals.names.links.empty()) return {.where = Where::noBooks};
    const auto sheets = _globals.names.links.ownSheets(xti);
    if (!sheets) return {.where = Where::unknown};
    return {.where = Where::ownBook, .first = sheets->first, .last = sheets->last};
}

std::uint16_t FormulaBook::xtiOfSheets(std::size_t first, std::size_t last) {
    return _globals.names.links.indexOf({static_cast<int>(first), static_cast<int>(last)});
}

std::optional<std::wstring_view> FormulaBook::nameText(std::uint32_t index) const {
    if (index >= _globals.names.size() || !_globals.names.at(index).isSound()) return std::nullopt;
    return _globals.names.at(index).shownText();
}

std::optional<std::uint32_t> FormulaBook::nameIndex(std::wstring_view text, int sheet) const {
    auto found = _globals.names.find(text, {sheet});
    if (!found) found = _globals.names.find(text, {Lbl::wholeBook});
    if (!found) return std::nullopt;
    return static_cast<std::uint32_t>(*found);
}

}  // namespace vellum::biff
