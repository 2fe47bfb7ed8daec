#include "cli/tables/area.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "engine/facts/cell_address.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;

bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

/// A sheet by its name, or by its number from 1.
std::optional<int> sheetOf(Book& book, std::string_view name) {
    int number = 0;
    const auto end = name.data() + name.size();
    if (std::from_chars(name.data(), end, number).ptr == end && number >= 1 && number <= book.sheetCount())
        return number - 1;
    for (int i = 0; i < book.sheetCount(); ++i) {
        const char* const found = book.sheetNameAt(i);
        if (found != nullptr && sameName(found, name)) return i;
    }
    return std::nullopt;
}

/// "R1C1" and "R1C1:R5C3" with numbers from 1.
std::optional<vellum::CellRange> readRowColumnRange(std::string_view text) {
    std::uint32_t numbers[4] = {};
    int count = 0;
    for (const char letter : {'r', 'c', ':', 'r', 'c'}) {
        if (text.empty() && count == 2) break;
        if (text.empty() || (text.front() | 0x20) != (letter | 0x20)) return std::nullopt;
        text.remove_prefix(1);
        if (letter == ':') continue;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), numbers[count]);
        if (read.ec != std::errc() || numbers[count] == 0) return std::nullopt;
        ++count;
        text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    }
    if (!text.empty()) return std::nullopt;
    if (count == 2) numbers[2] = numbers[0], numbers[3] = numbers[1];
    return vellum::CellRange{numbers[0] - 1, numbers[2] - 1, numbers[1] - 1, numbers[3] - 1};
}

/// Whole rows and columns end where the used area does.
bool applyRange(std::string_view text, const SheetArea& used, SheetArea& area) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    auto range = readRowColumnRange(text);
    if (!range) range = vellum::readCellRange(std::string_view(capitals));
    if (!range || range->rowLast < range->rowFirst || range->colLast < range->colFirst ||
        range->rowLast >= vellum::sheetRows || range->colLast >= vellum::sheetColumns)
        return false;
    area.rowFirst = static_cast<int>(range->rowFirst);
    area.rowLast = static_cast<int>(range->rowLast);
    area.colFirst = static_cast<int>(range->colFirst);
    area.colLast = static_cast<int>(range->colLast);
    if (area.rowFirst == 0 && range->rowLast == vellum::sheetRows - 1) area.rowLast = used.rowLast;
    if (area.colFirst == 0 && range->colLast == vellum::sheetColumns - 1) area.colLast = used.colLast;
    return true;
}

bool nameArea(Book& book, std::string_view label, SheetArea& area) {
    auto* const names = dynamic_cast<vellum::IBookNames*>(&book);
    const int total = names != nullptr ? names->nameTotal() : 0;
    for (int i = 0; i < total; ++i) {
        vellum::IBookNames::Name name;
        if (!names->nameAt(i, name) || name.sheet < 0 || !sameName(name.text, label)) continue;
        area = {name.sheet, name.rowFirst, name.rowLast, name.colFirst, name.colLast};
        return true;
    }
    return false;
}

int firstWorksheet(Book& book) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        if (book.sheetKindAt(i) == vellum::sheetWorksheet) return i;
    }
    return 0;
}

bool noSuch(const char* what, std::string_view name, std::string& error) {
    error = "there is no " + std::string(what) + " '" + std::string(name) + "'";
    return false;
}

/// The sheet in front of the area, and the area itself.
bool areaOn(Book& book, std::string_view sheet, bool hasSheet, std::string_view text, SheetArea& area,
            std::string& error) {
    const auto index = hasSheet ? sheetOf(book, sheet) : firstWorksheet(book);
    if (!index) return noSuch("sheet", sheet, error);
    const SheetArea used = usedArea(book, *index);
    area = used;
    if (text.empty() || applyRange(text, used, area)) return true;
    return noSuch("area", text, error);
}

}  // namespace

SheetArea usedArea(Book& book, int sheet) {
    auto* const found = book.getSheet(sheet);
    if (found == nullptr || found->lastRow() <= 0) return {sheet, 0, -1, 0, -1};
    return {sheet, found->firstRow(), found->lastRow() - 1, found->firstCol(), found->lastCol() - 1};
}

bool findArea(Book& book, std::string_view label, SheetArea& area, std::string& error) {
    // Options in front of a range, and columns chosen behind it, do not change the rectangle.
    if (const std::size_t bracket = label.find('['); bracket != label.npos && bracket > 0 && label[bracket - 1] == ';')
        label.remove_prefix(bracket);
    if (label.starts_with('[')) {
        std::string_view inside = label.substr(1, std::min(label.find(']'), label.size()) - 1);
        const std::size_t dollar = inside.find('$');
        const bool hasSheet = dollar != inside.npos && dollar > 0;
        return areaOn(book, hasSheet ? inside.substr(0, dollar) : "", hasSheet,
                      hasSheet ? inside.substr(dollar + 1) : inside, area, error);
    }
    if (label.empty()) return areaOn(book, {}, false, {}, area, error);
    if (nameArea(book, label, area)) return true;
    if (sheetOf(book, label)) return areaOn(book, label, true, {}, area, error);
    const std::size_t mark = label.rfind('!');
    if (mark == label.npos) return areaOn(book, {}, false, label, area, error);
    std::string_view sheet = label.substr(0, mark);
    if (sheet.size() > 1 && sheet.starts_with('\'') && sheet.ends_with('\'')) sheet = sheet.substr(1, sheet.size() - 2);
    return areaOn(book, sheet, true, label.substr(mark + 1), area, error);
}

}  // namespace cli
