#include "host/labels/column_selection.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/text/text_compare.h"

namespace quillet {
namespace {

constexpr int notCreatingHeader = -1;

/// One parse of a selection.
struct Selection {
    HostContext* context;
    RangeSpec& range;
    const char* at;    // the next character
    int nextHeader;    // offset of the header cell that the next name is written to, or notCreatingHeader
    int entries = 0;   // columns read so far
    int capacity = 0;  // of columnMap

    int badIdentifier(const char* from) const { return fail(context, msg::badColumnIdentifier, from); }
    void skipBlanks() {
        while (isBlank(*at)) ++at;
    }
};

bool headerIsEmpty(const RangeSpec& range) {
    for (int col = 0; col < range.width(); ++col) {
        if (!range.passesOver(range.ops.cellKind(range.sheet, range.headerRow, range.firstCol + col))) return false;
    }
    return true;
}

/// Sets the first row apart as header row and decides whether the names are to be written into it.
int takeHeaderRow(Selection& s) {
    RangeSpec& range = s.range;
    if (range.height() < 1) return fail(s.context, msg::missingHeaderRow);
    if (range.height() == 1) {
        if (range.has(optUpdate) && !range.has(optGrow)) return fail(s.context, msg::missingHeaderRow);
        ++range.lastRow;
    }
    range.headerRow = range.firstRow++;
    if (range.has(optUpdate) && range.has(optWriteHeader) && headerIsEmpty(range)) s.nextHeader = 0;
    return 0;
}

/// A column number from 1, at its first digit.
int readNumber(Selection& s, int* column) {
    char* end = nullptr;
    const long number = std::strtol(s.at, &end, 10);
    if (number < 1 || number > s.range.width() || s.nextHeader != notCreatingHeader) {
        return fail(s.context, msg::badColumnNumber, number);
    }
    s.at = end;
    *column = int(number) - 1;
    return 0;
}

/// Offset of the header cell with exactly this text, -1 when there is none.
int findHeader(const RangeSpec& range, std::string_view name) {
    for (int col = 0; col < range.width(); ++col) {
        if (range.ops.cellKind(range.sheet, range.headerRow, range.firstCol + col) != cellText) continue;
        const char* const text = range.ops.readText(range.sheet, range.headerRow, range.firstCol + col, nullptr);
        if (text && text == name) return col;
    }
    return -1;
}

int writeHeader(Selection& s, std::string_view name, const char* entry, int* column) {
    const RangeSpec& range = s.range;
    if (s.nextHeader >= range.width()) return s.badIdentifier(entry);
    const auto text = allocateArray<char>(name.size() + 1);
    if (!text) return fail(s.context, msg::noMemory);
    std::memcpy(text.get(), name.data(), name.size());
    const int col = range.firstCol + s.nextHeader;
    const int row = range.headerRow - range.firstRow;
    if (observer != nullptr) observer->cellToBeWritten(range, CellPart::header, row, s.nextHeader);
    const bool done = range.ops.writeText(range.sheet, range.headerRow, col, text.get(), nullptr) > 0;
    if (observer != nullptr) observer->cellWritten(range, row, s.nextHeader, done);
    if (!done) return s.badIdentifier(entry);
    *column = s.nextHeader++;
    return 0;
}

/// A column by its name in the header row. Names run to the next comma, or else to the next ")", and may contain
/// blanks.
int readName(Selection& s, int* column) {
    const char* const entry = s.at;
    const char* end = std::strchr(entry, ',');
    if (!end) end = std::strchr(entry, ')');
    if (!end || end == entry) return s.badIdentifier(entry);
    s.at = end;
    while (isBlank(end[-1])) --end;
    const std::string_view name(entry, std::size_t(end - entry));
    if (s.nextHeader != notCreatingHeader) return writeHeader(s, name, entry, column);
    *column = findHeader(s.range, name);
    if (observer != nullptr) observer->headerSought(s.range, name, *column);
    return *column < 0 ? s.badIdentifier(entry) : 0;
}

/// Without a header row only numbers are possible, with or without "#".
int readPlainNumber(Selection& s, int* column) {
    const char* const entry = s.at;
    if (*s.at == '#') ++s.at;
    s.skipBlanks();
    if (!isDigit(*s.at)) return s.badIdentifier(entry);
    return readNumber(s, column);
}

int readEntry(Selection& s, int* column) {
    if (!s.range.has(optSkipHeader)) return readPlainNumber(s, column);
    if (s.at[0] == '#' && isDigit(s.at[1])) {
        ++s.at;
        return readNumber(s, column);
    }
    return readName(s, column);
}

int readEntries(Selection& s) {
    for (;;) {
        s.skipBlanks();
        int column = 0;
        if (readEntry(s, &column)) return 1;
        if (s.entries >= s.capacity) return s.badIdentifier(s.at);
        s.range.columnMap[std::size_t(s.entries++)] = column;
        s.skipBlanks();
        if (*s.at != ',') break;
        ++s.at;
    }
    return *s.at == ')' ? 0 : s.badIdentifier(s.at);
}

/// Pulls the sides of the rectangle in to the smallest and the largest column in use.
void narrowToUsedColumns(RangeSpec& range) {
    std::int32_t* const begin = range.columnMap.get();
    std::int32_t* const end = begin + range.columnCount;
    const auto [smallest, largest] = std::minmax_element(begin, end);
    const std::int32_t low = *smallest, high = *largest;
    range.lastCol = range.firstCol + high;
    range.firstCol += low;
    for (std::int32_t* column = begin; column < end; ++column) *column -= low;
}

}  // namespace

int parseColumnSelection(HostContext* context, RangeSpec* range, const char* text) {
    Selection s{context, *range, text, notCreatingHeader};
    s.skipBlanks();
    if (*s.at == '\0' || *s.at == ',' || *s.at == ')') return s.badIdentifier(s.at);
    s.capacity = 1 + int(std::count(s.at, s.at + std::strlen(s.at), ','));
    range->columnMap = allocateArray<std::int32_t>(std::size_t(s.capacity));
    if (!range->columnMap) return fail(context, msg::noMemory);
    if (range->has(optSkipHeader) && takeHeaderRow(s)) return 1;
    if (readEntries(s)) return 1;
    range->columnCount = s.entries;
    narrowToUsedColumns(*range);
    return 0;
}

}  // namespace quillet
