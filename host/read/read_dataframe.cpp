// Reading of data frames: rows count from 1 on the first set of the array, columns run along the second.
#include <cstdio>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/read/read_array_values.h"
#include "host/values/cell_values.h"

namespace quillet {
namespace {

/// The name of a used column as a text of the host: its header, or "#" and its place from 1.
int columnName(const ArrayReading& a, int used, const char** name) {
    RangeSpec& range = a.range;
    const PartScope header(CellPart::header);
    HostValue value = {.bits = 0};
    if (readCellAs(a.context, range, hostTypeText, &value, range.headerRow - range.firstRow, range.column(used))) {
        return 1;
    }
    if (!value.text || !*value.text) {
        std::snprintf(range.textBuffer, std::size_t(range.bufferSize), "#%d", used + 1);
        value.text = hostApi().hostRegisterText(a.context, range.textBuffer);
    }
    *name = value.text;
    return 0;
}

/// The position of each used column on the second set.
int columnPositions(const ArrayReading& a, int* positions) {
    for (int c = 0; c < a.range.columnCount; ++c) {
        positions[c] = c + 1;
        if (!a.range.has(optSkipHeader)) continue;
        HostValue value = {.bits = 0};
        if (columnName(a, c, &value.text)) return 1;
        if (hostApi().hostSetAdd(a.context, a.shape.sets[1], value, &positions[c])) {
            return fail(a.context, msg::nameNotInserted, value.text);
        }
    }
    return 0;
}

/// Whether the first set has, or can get, this row index.
bool hasRow(const ArrayReading& a, int index) {
    HostSet* const rows = a.shape.sets[0];
    if ((hostApi().hostSetFlags(rows) & (hostFlagDynamic | hostFlagExplicit)) == hostFlagDynamic) return true;
    return hostApi().hostSetContains(a.context, rows, {.integer = index}) != 0;
}

}  // namespace

int readDataFrame(const ArrayReading& a) {
    const auto positions = allocateArray<int>(std::size_t(a.range.columnCount));
    if (!positions) return fail(a.context, msg::noMemory);
    if (columnPositions(a, positions.get())) return 1;
    const int height = a.range.height();
    a.tuple[0] = 1;
    for (int row = 0; row < height; ++row) {
        const auto behind = [&](int c) { return a.shape.isRecord ? c + 1 : a.range.usedFrom(row, c + 1); };
        for (int c = 0; c < a.range.columnCount; c = behind(c)) {
            a.tuple[1] = positions[std::size_t(c)];
            if (a.storeValue(row, c)) return 1;
        }
        if (!hasRow(a, ++a.tuple[0])) break;
    }
    return 0;
}

}  // namespace quillet
