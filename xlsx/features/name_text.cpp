#include "xlsx/features/name_text.h"

#include <algorithm>

#include "engine/facts/sheet_names.h"

namespace vellum::xlsx {
namespace {

constexpr std::uint32_t oldRows = 65536;
constexpr std::uint32_t oldColumns = 256;

/// Where the cells of a piece begin, behind the "!" that ends the sheet's name; 0 when there is none.
std::size_t cellsAt(std::wstring_view area) {
    bool quoted = false;
    for (std::size_t i = 0; i < area.size(); ++i) {
        if (area[i] == L'\'') quoted = !quoted;
        if (area[i] == L'!' && !quoted) return i + 1;
    }
    return 0;
}

/// Both ends of an area, or one cell twice.
struct Ends {
    AddressPart first, last;
    bool isPair = false;
};

std::optional<Ends> readEnds(std::wstring_view cells) {
    const std::wstring text = inCapitals(cells);
    if (!readCellRange(text)) return {};
    const std::size_t colon = text.find(L':');
    const bool isPair = colon != std::wstring::npos;
    const auto first = readAddressPart(std::wstring_view(text).substr(0, colon));
    const auto last = isPair ? readAddressPart(std::wstring_view(text).substr(colon + 1)) : first;
    if (!first || !last) return {};
    return Ends{*first, *last, isPair};
}

bool spansAll(Span span, const CellMove& move) {
    const std::uint32_t old = move.isRow ? oldRows : oldColumns;
    return span.first == 0 && (span.last == move.limit() - 1 || span.last == old - 1);
}

/// Nothing when nothing is left of it.
std::optional<std::wstring> movedArea(std::wstring_view area, std::wstring_view sheet, const CellMove& move) {
    const std::size_t at = cellsAt(area);
    if (at == 0 || !sameSheetName(sheetOfReference(area), sheet)) return std::wstring(area);
    auto ends = readEnds(area.substr(at));
    if (!ends || !(move.isRow ? ends->first.hasRow() : ends->first.hasCol())) return std::wstring(area);
    auto& first = move.isRow ? ends->first.row : ends->first.col;
    auto& last = move.isRow ? ends->last.row : ends->last.col;
    const Span span{std::min(first, last), std::max(first, last)};
    if (spansAll(span, move)) return std::wstring(area);
    const auto moved = movedSpan(span, move);
    if (!moved) return {};
    if (*moved == span) return std::wstring(area);
    first = moved->first;
    last = moved->last;
    std::wstring text(area.substr(0, at));
    appendAddressPart(text, ends->first);
    if (ends->isPair) {
        text += L':';
        appendAddressPart(text, ends->last);
    }
    return text;
}

std::wstring withSheet(std::wstring_view sheet, const AddressPart& first, const AddressPart& last, bool isPair) {
    std::wstring text = quotedSheetName(sheet) + L"!";
    appendAddressPart(text, first);
    if (isPair) {
        text += L':';
        appendAddressPart(text, last);
    }
    return text;
}

}  // namespace

std::wstring inCapitals(std::wstring_view text) {
    std::wstring capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c; });
    return capitals;
}

std::vector<std::wstring_view> areasOf(std::wstring_view text) {
    std::vector<std::wstring_view> areas;
    bool quoted = false;
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\'') quoted = !quoted;
        if (text[i] != L',' || quoted) continue;
        areas.push_back(text.substr(from, i - from));
        from = i + 1;
    }
    areas.push_back(text.substr(from));
    return areas;
}

std::optional<CellRange> rangeOnSheet(std::wstring_view area, std::wstring_view sheet) {
    const std::size_t at = cellsAt(area);
    if (at != 0 && !sameSheetName(sheetOfReference(area), sheet)) return {};
    return readCellRange(inCapitals(area.substr(at)));
}

AreaKind areaKind(std::wstring_view area, std::wstring_view sheet) {
    const auto range = rangeOnSheet(area, sheet);
    if (!range) return AreaKind::none;
    const auto ends = readEnds(area.substr(cellsAt(area)));
    if (!ends->first.hasCol()) return AreaKind::rows;
    if (!ends->first.hasRow()) return AreaKind::columns;
    if (range->colFirst == 0 && range->colLast == sheetColumns - 1) return AreaKind::rows;
    return range->rowFirst == 0 && range->rowLast == sheetRows - 1 ? AreaKind::columns : AreaKind::cells;
}

std::wstring absoluteArea(std::wstring_view sheet, const CellRange& range) {
    const bool isPair = range.rowFirst != range.rowLast || range.colFirst != range.colLast;
    return withSheet(sheet, {range.rowFirst, range.colFirst, true, true}, {range.rowLast, range.colLast, true, true},
                     isPair);
}

std::wstring absoluteRows(std::wstring_view sheet, std::uint32_t first, std::uint32_t last) {
    return withSheet(sheet, {.row = first, .rowFixed = true}, {.row = last, .rowFixed = true}, true);
}

std::wstring absoluteColumns(std::wstring_view sheet, std::uint32_t first, std::uint32_t last) {
    return withSheet(sheet, {.col = first, .colFixed = true}, {.col = last, .colFixed = true}, true);
}

std::wstring movedAreas(std::wstring_view text, std::wstring_view sheet, const CellMove& move) {
    std::wstring result;
    bool isFirst = true;
    for (const std::wstring_view area : areasOf(text)) {
        const auto moved = movedArea(area, sheet, move);
        if (!moved) continue;
        if (!isFirst) result += L',';
        result += *moved;
        isFirst = false;
    }
    return result;
}

}  // namespace vellum::xlsx
