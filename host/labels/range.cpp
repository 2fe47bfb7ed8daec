#include "host/labels/range.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "host/labels/cell_ref.h"
#include "host/labels/column_selection.h"
#include "host/labels/report.h"
#include "host/text/name_compare.h"
#include "host/text/text_compare.h"

namespace quillet {
namespace {

enum class Found { yes, failed, absent };  // absent: no sheet at all, which `rangesize` takes for an empty range

/// One parse of a label.
struct Label {
    HostContext* context;
    RangeSpec& range;
    bool update;                 // the source is open for update
    const char* selection = "";  // what follows the area

    Found failed(const char* message) const {
        fail(context, message);
        return Found::failed;
    }
};

/// The value of a run of digits; INT_MAX for all that does not fit.
int saturatedNumber(std::string_view digits) {
    long long number = 0;
    for (const char c : digits) {
        number = number * 10 + (c - '0');
        if (number > INT_MAX) return INT_MAX;
    }
    return int(number);
}

bool isAllDigits(std::string_view text) {
    for (const char c : text) {
        if (!isDigit(c)) return false;
    }
    return true;
}

Found addSheet(Label& l, const char* name) {
    l.range.sheet = l.range.ops.addSheet(l.range.book, name, nullptr);
    return l.range.sheet ? Found::yes : l.failed(msg::sheetNotAdded);
}

Found firstSheet(Label& l) {
    RangeSpec& range = l.range;
    if (range.ops.sheetCount(range.book) >= 1) {
        range.sheet = range.ops.sheetAt(range.book, 0);
        return range.sheet ? Found::yes : l.failed(msg::sheetNotFound);
    }
    if (l.update) return addSheet(l, "Sheet1");
    if (!range.has(optRangeSize)) return l.failed(msg::sheetNotFound);
    range.firstRow = range.firstCol = notGiven;
    range.lastRow = range.lastCol = 0;
    return Found::absent;
}

/// A sheet by its number from 1. A source open for update gets as many new sheets as that takes.
Found sheetByNumber(Label& l, int number) {
    const TableOps& ops = l.range.ops;
    if (number < 1) return l.failed(msg::sheetNotFound);
    int count = ops.sheetCount(l.range.book);
    if (number > count && !l.update) return l.failed(msg::sheetNotFound);
    while (count < number) {
        char name[32];
        std::snprintf(name, sizeof name, "Sheet%d", count + 1);
        if (const Found added = addSheet(l, name); added != Found::yes) return added;
        const int before = count;
        count = ops.sheetCount(l.range.book);
        if (count <= before) return l.failed(msg::sheetNotAdded);
    }
    l.range.sheet = ops.sheetAt(l.range.book, number - 1);
    return l.range.sheet ? Found::yes : l.failed(msg::sheetNotFound);
}

Found sheetByName(Label& l, std::string_view name) {
    RangeSpec& range = l.range;
    const int count = range.ops.sheetCount(range.book);
    for (int i = 0; i < count; ++i) {
        Sheet* const sheet = range.ops.sheetAt(range.book, i);
        const char* const found = sheet ? range.ops.sheetName(sheet) : nullptr;
        if (found && sameName(found, name)) {
            range.sheet = sheet;
            return Found::yes;
        }
    }
    if (!l.update) return l.failed(msg::sheetNotFound);
    const auto copy = allocateArray<char>(name.size() + 1);
    if (!copy) return l.failed(msg::noMemory);
    std::memcpy(copy.get(), name.data(), name.size());
    return addSheet(l, copy.get());
}

/// Chooses the sheet of a label that begins with "[" and leaves `*area` at the area text. The first "$" of the whole
/// label ends the sheet; one right behind the "[" is no sheet and stays in the area text.
Found chooseSheet(Label& l, const char* label, const char** area) {
    const char* const text = label + 1;
    const char* const dollar = std::strchr(label, '$');
    if (!dollar || dollar == text) {
        *area = text;
        return firstSheet(l);
    }
    *area = dollar + 1;
    const std::string_view sheet(text, std::size_t(dollar - text));
    return isAllDigits(sheet) ? sheetByNumber(l, saturatedNumber(sheet)) : sheetByName(l, sheet);
}

/// The used area of the sheet, with `grow` on a source open for update: new rows may follow.
void takeUsedArea(Label& l) {
    RangeSpec& range = l.range;
    range.firstRow = range.ops.firstRow(range.sheet);
    range.lastRow = range.ops.lastRow(range.sheet);
    range.firstCol = range.ops.firstCol(range.sheet);
    range.lastCol = range.ops.lastCol(range.sheet);
    if (l.update) range.flags |= optGrow;
}

/// The corner behind the ":". Whole columns run over all rows of the sheet, whole rows over all its columns.
Found secondCorner(Label& l, const char* text) {
    RangeSpec& range = l.range;
    const char* end = nullptr;
    if (parseCellRef(text, &end, &range.lastRow, &range.lastCol) || *end != ']') return l.failed(msg::invalidRange);
    if (range.lastRow == notGiven) {
        if (range.firstRow != notGiven) return l.failed(msg::invalidRange);
        range.firstRow = 0;
        range.lastRow = range.ops.lastRow(range.sheet);
        if (l.update) range.flags |= optGrow;
    }
    if (range.lastCol == notGiven) {
        if (range.firstCol != notGiven) return l.failed(msg::invalidRange);
        range.firstCol = 0;
        range.lastCol = range.ops.lastCol(range.sheet);
    }
    l.selection = end + 1;
    return Found::yes;
}

Found parseArea(Label& l, const char* area) {
    RangeSpec& range = l.range;
    if (*area == '\0' || *area == ']') {
        takeUsedArea(l);
        if (*area == ']') l.selection = area + 1;
        return Found::yes;
    }
    const char* end = nullptr;
    if (parseCellRef(area, &end, &range.firstRow, &range.firstCol)) return l.failed(msg::invalidRange);
    if (*end == ':') return secondCorner(l, end + 1);
    if (*end != ']' || range.firstRow == notGiven || range.firstCol == notGiven) return l.failed(msg::invalidRange);
    range.lastRow = range.firstRow;
    range.lastCol = range.firstCol;
    l.selection = end + 1;
    return Found::yes;
}

/// Looks a defined name up: sheets in order, of each sheet the youngest name first.
Found findName(Label& l, const char* label) {
    RangeSpec& range = l.range;
    const TableOps& ops = range.ops;
    const std::string_view wanted(label, std::strcspn(label, "("));
    const int sheets = ops.sheetCount(range.book);
    for (int i = 0; i < sheets; ++i) {
        Sheet* const sheet = ops.sheetAt(range.book, i);
        for (int n = sheet ? ops.nameCount(sheet) - 1 : -1; n >= 0; --n) {
            const char* const name =
                ops.nameRange(sheet, n, &range.firstRow, &range.lastRow, &range.firstCol, &range.lastCol);
            if (!name || !sameName(name, wanted)) continue;
            range.sheet = sheet;
            l.selection = label + wanted.size();
            return Found::yes;
        }
    }
    return l.failed(msg::rangeNameNotFound);
}

Found locate(Label& l, const char* label) {
    if (*label != '[') return findName(l, label);
    const char* area = nullptr;
    const Found sheet = chooseSheet(l, label, &area);
    return sheet == Found::yes ? parseArea(l, area) : sheet;
}

bool isRectangle(const RangeSpec& range) {
    return range.firstCol >= 0 && range.firstCol <= range.lastCol && range.firstRow >= 0 &&
           range.firstRow <= range.lastRow;
}

/// All columns in their order. The header row of a range of one row is that row, and the data the row beneath.
int takeAllColumns(HostContext* context, RangeSpec& range) {
    range.columnCount = range.width();
    range.columnMap = allocateArray<std::int32_t>(std::size_t(range.columnCount));
    if (!range.columnMap) return fail(context, msg::noMemory);
    for (std::int32_t i = 0; i < range.columnCount; ++i) range.columnMap[std::size_t(i)] = i;
    range.columnsInOrder = true;
    if (range.has(optSkipHeader)) {
        range.headerRow = range.firstRow++;
        if (range.lastRow < range.firstRow) range.lastRow = range.firstRow;
    }
    return 0;
}

}  // namespace

int parseRange(HostContext* context, std::uint32_t flags, std::int32_t autoStart, DriverContext* source, RangeSpec* out,
               const char* label) {
    *out = RangeSpec{};
    out->ops = *source->ops;
    out->flags = flags;
    out->autoIndexStart = autoStart;
    out->textBuffer = source->textBuffer();
    out->bufferSize = source->bufferSize;
    out->book = source->backing;
    hostApi().hostParam(context, hostParamRealFormat, &out->realFormat);

    Label l{context, *out, (source->optionFlags & optUpdate) != 0};
    const Found found = locate(l, label);
    if (found != Found::yes) return found == Found::absent ? 0 : 1;
    if (!isRectangle(*out)) return out->has(optRangeSize) ? 0 : fail(context, msg::invalidRange);
    const int failed =
        *l.selection == '(' ? parseColumnSelection(context, out, l.selection + 1) : takeAllColumns(context, *out);
    if (failed) out->columnMap.reset();
    return failed;
}

}  // namespace quillet
