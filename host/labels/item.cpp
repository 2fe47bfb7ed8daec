#include "host/labels/item.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "host/labels/range.h"
#include "host/labels/report.h"
#include "host/sources/book_calls.h"
#include "host/text/text_compare.h"

namespace quillet {
namespace {

constexpr std::string_view rangesizePrefix = "rangesize;";
constexpr HostType classBits = 0x1e000;  // of a type word that is no scalar

bool takesRangesize(const char** label) {
    if (!equalIgnoringCase({*label, strnlen(*label, rangesizePrefix.size())}, rangesizePrefix)) return false;
    *label += rangesizePrefix.size();
    return true;
}

/// Parses the options at `*label` on top of those of the source.
std::uint32_t itemOptions(Item& item, DriverContext* source, const char** label, std::int32_t* autoBase) {
    SpecialValues* block = nullptr;
    if (source->specialValues) {
        item.specialValues = *source->specialValues;
        block = &item.specialValues;
    }
    std::uint32_t flags = parseOptions(source->optionFlags, label, nullptr, autoBase, block);
    if (block) completeSpecialValues(&flags, block);
    return flags;
}

/// Rows behind the last cell of a sheet store nothing, whatever the form: a range of whole columns need not be walked
/// to the end of the sheet.
void leaveOutRowsBehindTheLast(RangeSpec& range) {
    range.lastRow = std::min(range.lastRow, std::max(range.firstRow, range.ops.lastRow(range.sheet)));
}

/// Nor do stretches without a cell in front of it; neighbouring cells are asked for at once.
void lookAhead(RangeSpec& range, const DriverContext& source) {
    if (source.ops == &workbookTableOps) {
        range.gap = CellGap(sheetCellWalk(range.sheet));
        range.window = RowWindow(sheetRowLook(range.sheet));
    } else if (source.ops == &csvTableOps) {
        range.window = RowWindow({range.sheet, csvRowCells});
    }
}

}  // namespace

ItemForm itemForm(HostType type) {
    switch (type & hostClassMask) {
        case hostClassSet:
            return ItemForm::set;
        case hostClassList:
            return ItemForm::list;
        case hostClassArray:
            return ItemForm::array;
        default:
            return (type & classBits) != 0 ? ItemForm::unknown : ItemForm::scalar;
    }
}

int openItem(Item& item, DriverContext* source, const char* label, ItemUse use) {
    HostContext* const context = item.context;
    if (!label) label = "";
    std::int32_t autoBase = source->autoIndexBase;
    std::uint32_t flags = 0;
    if (use == ItemUse::read && takesRangesize(&label)) {
        if (itemForm(item.type) != ItemForm::list) return fail(context, msg::rangesizeNeedsIntegers);
        flags = optRangeSize;
    } else {
        flags = itemOptions(item, source, &label, &autoBase);
    }
    if (parseRange(context, flags, autoBase, source, &item.range, label)) {
        return fail(context, msg::invalidRangeOrName);
    }
    if (use == ItemUse::read && !item.range.has(optRangeSize)) {
        leaveOutRowsBehindTheLast(item.range);
        lookAhead(item.range, *source);
    }
    if (source->specialValues) item.range.specialValues = &item.specialValues;
    if (item.range.has(optDataFrame) && itemForm(item.type) != ItemForm::array) {
        return fail(context, msg::dataframeNeedsArray);
    }
    return itemForm(item.type) == ItemForm::unknown ? fail(context, msg::wrongColumnType) : 0;
}

}  // namespace quillet
