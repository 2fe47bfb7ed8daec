// The table operations over a CsvTable: a book with a single sheet and no names.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "host/sources/csv_table.h"
#include "host/sources/table_ops.h"
#include "host/text/c_locale.h"

namespace quillet {
namespace {

CsvTable& tableOf(void* bookOrSheet) {
    return *static_cast<CsvTable*>(bookOrSheet);
}

bool isThere(const CsvTable& table) {
    return table.rowCapacity > 0;
}

int sheetCount(Book* book) {
    return isThere(tableOf(book)) ? 1 : 0;
}

Sheet* sheetAt(Book* book, int index) {
    return index == 0 && isThere(tableOf(book)) ? book : nullptr;
}

Sheet* addSheet(Book* book, const char*, Sheet* init) {
    if (init || isThere(tableOf(book))) return nullptr;
    return tableOf(book).cellFor(0, 0).block ? book : nullptr;
}

const char* sheetName(Sheet* sheet) {
    return sheet && isThere(tableOf(sheet)) ? "Sheet1" : nullptr;
}

int nameCount(Sheet*) {
    return 0;
}

const char* nameRange(Sheet*, int, int*, int*, int*, int*) {
    return nullptr;
}

int firstRow(Sheet* sheet) {
    return tableOf(sheet).firstRow;
}
int lastRow(Sheet* sheet) {
    return tableOf(sheet).lastRow;
}
int firstCol(Sheet* sheet) {
    return tableOf(sheet).firstCol;
}
int lastCol(Sheet* sheet) {
    return tableOf(sheet).lastCol;
}

int cellKind(Sheet* sheet, int row, int col) {
    const CsvCell cell = tableOf(sheet).find(row, col);
    return cell.block ? cell.kind() & csvKindMask : cellEmpty;
}

bool cellIsDate(Sheet*, int, int) {
    return false;
}

int readBool(Sheet* sheet, int row, int col, CellFormat**) {
    const CsvCell cell = tableOf(sheet).find(row, col);
    return cell.block ? cell.value().word : 0;
}

const char* readBoolText(Sheet* sheet, int row, int col) {
    const CsvTable& table = tableOf(sheet);
    const CsvCell cell = table.find(row, col);
    if (!cell.block) return nullptr;
    return cell.value().word > 0 ? table.trueText : table.falseText;
}

double readReal(Sheet* sheet, int row, int col, CellFormat**) {
    const CsvCell cell = tableOf(sheet).find(row, col);
    return cell.block ? cell.value().real : 0.0;
}

/// The text of a cell, null when it is missing or holds none.
char* textAt(Sheet* sheet, int row, int col) {
    const CsvCell cell = tableOf(sheet).find(row, col);
    return cell.block ? cell.text() : nullptr;
}

const char* readText(Sheet* sheet, int row, int col, CellFormat**) {
    const char* const text = textAt(sheet, row, col);
    return text ? text : "";
}

int writeBool(Sheet* sheet, int row, int col, int value, CellFormat*) {
    return tableOf(sheet).storeBoolean(row, col, value);
}

int writeReal(Sheet* sheet, int row, int col, CellFormat*, double value) {
    return tableOf(sheet).storeNumber(row, col, value);
}

int writeText(Sheet* sheet, int row, int col, const char* text, CellFormat*) {
    return tableOf(sheet).storeText(row, col, text);
}

int writeBlank(Sheet* sheet, int row, int col, CellFormat*) {
    return tableOf(sheet).storeBlank(row, col);
}

double textToReal(Sheet* sheet, int row, int col) {
    const CsvTable& table = tableOf(sheet);
    char* const text = textAt(sheet, row, col);
    if (!text) return 0.0;
    char* const point = table.decimalSep == '.' ? nullptr : std::strchr(text, table.decimalSep);
    if (point) *point = '.';
    const double value = strtodC(text, nullptr);
    if (point) *point = static_cast<char>(table.decimalSep);
    return value;
}

int textToBool(Sheet* sheet, int row, int col) {
    const CsvTable& table = tableOf(sheet);
    const char* const text = textAt(sheet, row, col);
    if (!text) return 0;
    if (std::strcmp(text, table.trueText) == 0) return 1;
    if (std::strcmp(text, table.falseText) == 0) return 0;
    const char first = text[0];
    if ((first < '0' || first > '9') && first != '+' && first != '-') return 0;
    return std::strtol(text, nullptr, 10) != 0 ? 1 : 0;
}

}  // namespace

void csvRowCells(void* table, int row, int col, int count, std::uint8_t* kinds, double* numbers) {
    for (int i = 0; i < count;) {
        const CsvCell first = tableOf(table).find(row, col + i);
        if (!first.block) {
            kinds[i++] = cellEmpty;
            continue;
        }
        const int end = std::min(count, i + columnsPerBlock - first.slot);
        for (int slot = first.slot; i < end; ++i, ++slot) {
            const CsvBlock& block = *first.block;
            const int kind = slot < block.slotCount ? block.kinds()[slot] & csvKindMask : int{csvEmpty};
            kinds[i] = static_cast<std::uint8_t>(kind);
            if (kind == csvNumber) numbers[i] = block.values()[slot].real;
        }
    }
}

constinit const TableOps csvTableOps = {
    sheetCount, sheetAt,   addSheet,  sheetName,  nameCount,  nameRange,    firstRow, lastRow,
    firstCol,   lastCol,   cellKind,  cellIsDate, readBool,   readBoolText, readReal, readText,
    writeBool,  writeReal, writeText, writeBlank, textToReal, textToBool,
};

}  // namespace quillet
