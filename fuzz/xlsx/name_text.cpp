// Texts of defined names and formulas: moved there and back, renamed there and back, with prefixes and without.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "bindery/values/value_spec.h"
#include "engine/facts/sheet_names.h"
#include "xlsx/features/future_functions.h"
#include "xlsx/features/moved_range.h"
#include "xlsx/features/name_text.h"

namespace {

using namespace vellum;
using namespace vellum::xlsx;

/// Rows or columns that come and go again leave every area where it was, unless the end of the sheet cut it.
void checkMoves(const std::wstring& text, const std::wstring& sheet, CellMove move) {
    move.isInsert = true;
    const std::wstring moved = movedAreas(text, sheet, move);
    CellMove back = move;
    back.isInsert = false;
    const auto before = areasOf(text);
    for (const std::wstring_view area : before) {
        const auto range = rangeOnSheet(area, sheet);
        const std::uint32_t last = range ? (move.isRow ? range->rowLast : range->colLast) : 0;
        if (last + move.count() >= move.limit()) return;
    }
    const std::wstring again = movedAreas(moved, sheet, back);
    const auto after = areasOf(again);
    if (after.size() != before.size()) std::abort();
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (rangeOnSheet(after[i], sheet) != rangeOnSheet(before[i], sheet)) std::abort();
    }
}

/// Whether quotes begin behind a word or the mark that ends a sheet, or never end, as in no formula: a name that loses
/// its quotes would run into it.
bool hasStrayQuotes(const std::wstring& text) {
    constexpr std::wstring_view inFront = L" +-*/^&=<>,;:(){}";
    bool open = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != L'\'') continue;
        if (!open && at > 0 && inFront.find(text[at - 1]) == std::wstring_view::npos) return true;
        if (open && at + 1 < text.size() && text[at + 1] == L'\'') {
            ++at;
        } else {
            open = !open;
        }
    }
    return open;
}

/// A name that stands nowhere in the text takes the place of one, and gives it back.
void checkNames(const std::wstring& text, const std::wstring& sheet) {
    const std::wstring other = L"another 'sheet'";
    if (sheet.empty() || hasStrayQuotes(text) || foldedSheetName(text).find(L"another") != std::wstring::npos) return;
    if (foldedSheetName(sheet).find(L"another") != std::wstring::npos) return;
    const std::wstring there = withSheetRenamed(text, sheet, other);
    const std::wstring back = withSheetRenamed(there, other, sheet);
    if (withSheetRenamed(back, sheet, other) != there) std::abort();
}

void checkPrefixes(const std::wstring& text) {
    std::wstring prefixed = text, plain = text;
    prefixFunctions(prefixed);
    unprefixFunctions(prefixed);
    unprefixFunctions(plain);
    if (prefixed != plain) std::abort();
}

}  // namespace

/// Two bytes of numbers, a sheet's name up to a line's end, and the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::wstring all = bindery::toWide({reinterpret_cast<const char*>(data) + 2, size - 2});
    const std::size_t line = all.find(L'\n');
    if (line == std::wstring::npos) return 0;
    const std::wstring sheet = all.substr(0, line), text = all.substr(line + 1);
    const std::uint32_t first = data[0] / 2;
    checkMoves(text, sheet, {true, data[0] % 2 == 0, first, first + data[1]});
    movedAreas(text, sheet, {false, data[0] % 2 == 0, first, first + data[1]});
    checkNames(text, sheet);
    checkPrefixes(text);
    return 0;
}
