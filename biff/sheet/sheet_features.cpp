// Protection of a sheet, errors that it does not show, its links, tables and groups, and the texts of addresses.
#include "biff/container/messages.h"
#include "biff/features/outline.h"
#include "biff/features/tables.h"
#include "biff/sheet/sheet_change.h"
#include "engine/facts/cell_address.h"
#include "engine/facts/password_hash.h"
#include "formula/cell_location.h"
#include "formula/messages.h"

namespace vellum {
namespace {

// The format hashes bytes of Latin-1, and stores nothing for an empty password.
std::uint16_t passwordHashOf(std::wstring_view password) {
    if (password.empty()) return 0;
    std::wstring bytes(password);
    for (wchar_t& c : bytes) {
        if (c > 0xFF) c = L'?';
    }
    return passwordHash(bytes);
}

std::size_t checkedIndex(int index, std::size_t total) {
    if (index < 0 || static_cast<std::size_t>(index) >= total) throw vlerror(biff::msg::indexOutOfRange);
    return static_cast<std::size_t>(index);
}

}  // namespace

template <class CharT>
biff::CellRange SheetImplT<CharT>::checkedRange(int rowFirst, int rowLast, int colFirst, int colLast) {
    const CellPlace first = place(rowFirst, colFirst), last = place(rowLast, colLast);
    if (first.row > last.row) throw vlerror(biff::msg::rowOrder);
    if (first.col > last.col) throw vlerror(biff::msg::colOrder);
    return {first.row, last.row, first.col, last.col};
}

template <class CharT>
bool SheetImplT<CharT>::setProtected(bool enable, const CharT* password, int options) {
    return change([&] {
        std::optional<std::uint16_t> hash;
        if (password != nullptr) hash = passwordHashOf(widened(password));
        biff::SheetFeatures& features = edit().features;
        features.protection.set(enable, hash);
        if (options < 0) return;
        features.protection.setOptions(static_cast<std::uint32_t>(options));
        features.shared.setPermissions(static_cast<std::uint32_t>(options));
    });
}

template <class CharT>
bool SheetImplT<CharT>::addIgnoredErrorRange(int rowFirst, int colFirst, int rowLast, int colLast, int flags) {
    return change(
        [&] { edit().features.shared.ignoreErrors(checkedRange(rowFirst, rowLast, colFirst, colLast), flags); });
}

template <class CharT>
const CharT* SheetImplT<CharT>::hyperlinkAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard<const CharT*>(nullptr, [&] {
        const biff::Hyperlinks& links = parts().features.hyperlinks;
        const std::size_t at = checkedIndex(index, links.total());
        biff::giveRange(links.range(at), rowFirst, rowLast, colFirst, colLast);
        return give(links.target(at));
    });
}

template <class CharT>
bool SheetImplT<CharT>::removeHyperlinkAt(int index) {
    return change([&] {
        biff::Hyperlinks& links = edit().features.hyperlinks;
        links.remove(checkedIndex(index, links.total()));
    });
}

template <class CharT>
bool SheetImplT<CharT>::addHyperlink(const CharT* target, int rowFirst, int rowLast, int colFirst, int colLast) {
    return change(
        [&] { edit().features.hyperlinks.add(checkedRange(rowFirst, rowLast, colFirst, colLast), widened(target)); });
}

template <class CharT>
int SheetImplT<CharT>::tableTotal() {
    return ask(0, [](const SheetParts& p) { return static_cast<int>(biff::tableTotal(p.kept)); });
}

template <class CharT>
const CharT* SheetImplT<CharT>::tableAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                        int* headerRows, int* totalsRows) {
    return guard<const CharT*>(nullptr, [&] {
        if (index < 0) throw vlerror(biff::msg::indexOutOfRange);
        const biff::TableFacts table = biff::tableAt(parts().kept, static_cast<std::size_t>(index));
        biff::giveRange(table.area, rowFirst, rowLast, colFirst, colLast);
        biff::give(headerRows, table.headerRows);
        biff::give(totalsRows, table.totalsRows);
        return give(table.name);
    });
}

template <class CharT>
bool SheetImplT<CharT>::groupRowRange(int rowFirst, int rowLast, bool collapsed) {
    return change([&] {
        const auto first = biff::checkedUpTo(rowFirst, biff::lastRowOfSheet, biff::msg::rowFirstRange);
        const auto last = biff::checkedUpTo(rowLast, biff::lastRowOfSheet, biff::msg::rowLastRange);
        if (first > last) throw vlerror(biff::msg::groupRowOrder);
        SheetSettings& settings = edit().settings;
        biff::groupRows(edit().rows, settings.guts, first, last, collapsed, !summaryBelow(),
                        settings.defaultRowHeight.miyRw);
    });
}

template <class CharT>
bool SheetImplT<CharT>::groupColumnRange(int colFirst, int colLast, bool collapsed) {
    return change([&] {
        const auto first = biff::checkedUpTo(colFirst, biff::lastColOfSheet, biff::msg::colFirstRange);
        const auto last = biff::checkedUpTo(colLast, biff::lastColOfSheet, biff::msg::colLastRange);
        if (first > last) throw vlerror(biff::msg::groupColOrder);
        biff::groupColumns(edit().columns, edit().settings.guts, first, last, collapsed, !summaryRight(),
                           defaultWidthUnits());
    });
}

template <class CharT>
bool SheetImplT<CharT>::parseCellAddress(const CharT* text, int* row, int* col, bool* rowRelative, bool* colRelative) {
    return guard(false, [&] {
        const auto cell = formula::parseCellWord(widened(text));
        if (!cell) throw vlerror(formula::msg::incorrectToken);
        biff::give(row, cell->at.row);
        biff::give(col, cell->at.col);
        if (rowRelative != nullptr) *rowRelative = cell->at.rowRelative;
        if (colRelative != nullptr) *colRelative = cell->at.colRelative;
        return true;
    });
}

template <class CharT>
const CharT* SheetImplT<CharT>::formatCellAddress(int row, int col, bool rowRelative, bool colRelative) {
    return guard<const CharT*>(nullptr, [&] {
        const CellPlace at = place(row, col);
        std::wstring text;
        appendCellAddress(text, {at.row, at.col, !rowRelative, !colRelative});
        return give(text);
    });
}

}  // namespace vellum
