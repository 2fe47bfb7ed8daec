#include "biff/names/print_names.h"

#include "biff/container/cursor.h"
#include "biff/container/messages.h"
#include "biff/names/name_messages.h"
#include "engine/failure/vlerror.h"

namespace vellum::biff {

namespace {

constexpr int lastRow = 65535, lastCol = 255;

// Titles of both kinds are a union: its size, an area each, the operator.
constexpr std::uint8_t memFunc = 0x29, unionOperator = 0x10;
constexpr std::uint16_t unionSize = 2 * PlainRange::areaSize + 1;
constexpr std::size_t bothSize = 3 + unionSize;

void checkRows(Lines rows) {
    if (rows.first < 0 || rows.first > lastRow) throw vlerror(msg::firstRowRange);
    if (rows.last < 0 || rows.last > lastRow) throw vlerror(msg::lastRowRange);
    if (rows.last < rows.first) throw vlerror(msg::rowOrder);
}

void checkColumns(Lines columns) {
    if (columns.first < 0 || columns.first > lastCol) throw vlerror(msg::firstColRange);
    if (columns.last < 0 || columns.last > lastCol) throw vlerror(msg::lastColRange);
    if (columns.last < columns.first) throw vlerror(msg::colOrder);
}

// The sheet's reference: the one that the name has, when it means this sheet and no other.
std::uint16_t referenceOf(DefinedNames& names, int sheet, std::optional<std::size_t> name) {
    const auto tokens = name ? names.at(*name).tokens() : std::span<const std::byte>();
    const std::size_t at = tokens.size() == bothSize ? 4 : 1;
    if (tokens.size() == PlainRange::areaSize || tokens.size() == bothSize) {
        const auto xti = loadLe<std::uint16_t>(&tokens[at]);
        if (names.links.ownSheets(xti) == SheetSpan{sheet, sheet}) return xti;
    }
    return names.links.indexOf({sheet, sheet});
}

// A new name, one that was removed, or the tokens of the one that is there.
void store(DefinedNames& names, int sheet, BuiltinName code, std::optional<std::size_t> name,
           std::span<const std::byte> tokens) {
    static constexpr wchar_t codes[] = {0, 1, 2, 3, 4, 5, 6, 7};
    const auto gone = name ? std::nullopt : names.findGone(builtinText(static_cast<wchar_t>(code)), sheet);
    if (name) {
        names.change(*name).setTokens(tokens);
    } else if (gone && names.at(*gone).builtin() == code) {
        names.change(*gone).revive(tokens);
    } else {
        names.add(Lbl::make(Lbl::builtIn, sheet, {&codes[static_cast<std::size_t>(code)], 1}, tokens));
    }
}

// One kind of titles spans all of the other direction.
void take(PrintTitles& titles, std::span<const std::byte> tokens) {
    const auto range = PlainRange::of(tokens);
    if (!range || tokens.size() != PlainRange::areaSize) return;
    const NameArea& area = range->area;
    if (area.rowFirst == 0 && area.rowLast == lastRow) {
        titles.columns = {area.colFirst, area.colLast};
    } else if (area.colFirst == 0 && area.colLast == lastCol) {
        titles.rows = {area.rowFirst, area.rowLast};
    }
}

PrintTitles titlesOf(std::span<const std::byte> tokens) {
    PrintTitles titles;
    take(titles, tokens);
    if (tokens.size() != bothSize || tokenBase(tokens[0]) != memFunc ||
        loadLe<std::uint16_t>(&tokens[1]) != unionSize || tokens.back() != std::byte{unionOperator})
        return titles;
    take(titles, tokens.subspan(3, PlainRange::areaSize));
    take(titles, tokens.subspan(3 + PlainRange::areaSize, PlainRange::areaSize));
    return titles;
}

void writeTitles(DefinedNames& names, int sheet, const PrintTitles& titles) {
    const auto name = names.find(BuiltinName::printTitles, sheet);
    if (!name) names.requireRoom();
    PlainRange part;
    part.xti = referenceOf(names, sheet, name);
    std::vector<std::byte> tokens;
    const bool both = titles.rows && titles.columns;
    if (both) {
        tokens = {std::byte{memFunc}, static_cast<std::byte>(unionSize), std::byte{0}};
    }
    if (titles.rows) {
        part.area = {titles.rows->first, titles.rows->last, 0, lastCol};
        part.writeArea(tokens);
    }
    if (titles.columns) {
        part.area = {0, lastRow, titles.columns->first, titles.columns->last};
        part.writeArea(tokens);
    }
    if (both) tokens.push_back(std::byte{unionOperator});
    store(names, sheet, BuiltinName::printTitles, name, tokens);
}

}  // namespace

NameArea printArea(const DefinedNames& names, int sheet) {
    const auto name = names.find(BuiltinName::printArea, sheet);
    const auto range = name ? PlainRange::of(names.at(*name).tokens()) : std::nullopt;
    if (!range) throw vlerror(msg::notFound);
    return range->area;
}

void setPrintArea(DefinedNames& names, int sheet, const NameArea& area) {
    checkRows({area.rowFirst, area.rowLast});
    checkColumns({area.colFirst, area.colLast});
    const auto name = names.find(BuiltinName::printArea, sheet);
    if (!name) names.requireRoom();
    PlainRange range{.area = area};
    range.xti = referenceOf(names, sheet, name);
    std::vector<std::byte> tokens;
    range.writeArea(tokens);
    store(names, sheet, BuiltinName::printArea, name, tokens);
}

PrintTitles printTitles(const DefinedNames& names, int sheet) {
    const auto name = names.find(BuiltinName::printTitles, sheet);
    return name ? titlesOf(names.at(*name).tokens()) : PrintTitles{};
}

void setRepeatRows(DefinedNames& names, int sheet, Lines rows) {
    checkRows(rows);
    PrintTitles titles = printTitles(names, sheet);
    titles.rows = rows;
    writeTitles(names, sheet, titles);
}

void setRepeatColumns(DefinedNames& names, int sheet, Lines columns) {
    checkColumns(columns);
    PrintTitles titles = printTitles(names, sheet);
    titles.columns = columns;
    writeTitles(names, sheet, titles);
}

void clearBuiltin(DefinedNames& names, int sheet, BuiltinName code) {
    if (const auto name = names.find(code, sheet)) names.remove(*name);
}

}  // namespace vellum::biff
