#include "formula/compiling/sheet_spec.h"

#include <string>

#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "formula/formula_context.h"
#include "formula/messages.h"
#include "formula/text_words.h"

namespace vellum::formula {
namespace {

/// Whether the quote at the front closes at the very end.
bool isQuotedWhole(std::wstring_view text) {
    if (text.size() < 2 || text.front() != L'\'' || text.back() != L'\'') return false;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == L'\'' && text[++i] != L'\'') return false;
        if (i + 1 == text.size()) return false;  // the last one is the second of a pair
    }
    return true;
}

std::wstring unquoted(std::wstring_view text) {
    if (!isQuotedWhole(text)) return std::wstring(text);
    std::wstring plain;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        plain += text[i];
        if (text[i] == L'\'') ++i;
    }
    return plain;
}

std::size_t sheetNamed(std::wstring_view name, const FormulaContext& book) {
    for (std::size_t i = 0; i < book.sheetTotal(); ++i) {
        if (sameSheetName(book.sheetNameOf(i), name)) return i;
    }
    throw vlerror(msg::sheetNotFound);
}

}  // namespace

// No sheet has a colon in its name, so that one inside the quotes of the whole joins two names as well.
SheetPair sheetsOfSpec(std::wstring_view spec, const FormulaContext& book) {
    const std::wstring whole = unquoted(spec);
    const bool wasQuoted = whole.size() != spec.size();
    const std::size_t colon = wasQuoted ? whole.find(L':') : findOutsideQuotes(whole, L':');
    const auto sheet = [&](std::wstring_view name) {
        return wasQuoted ? sheetNamed(name, book) : sheetNamed(unquoted(name), book);
    };
    const std::size_t first = sheet(std::wstring_view(whole).substr(0, colon));
    return {first, colon == std::wstring::npos ? first : sheet(std::wstring_view(whole).substr(colon + 1))};
}

std::uint16_t xtiIndexOfSheetSpec(std::wstring_view spec, FormulaContext& book) {
    const SheetPair sheets = sheetsOfSpec(spec, book);
    return book.xtiOfSheets(sheets.first, sheets.last);
}

}  // namespace vellum::formula
