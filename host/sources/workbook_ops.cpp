// The table operations over the workbook engine.
#include "engine/api/enums.h"
#include "host/sources/book_calls.h"
#include "host/sources/table_ops.h"
#include "host/text/c_locale.h"
#include "host/text/text_compare.h"

namespace quillet {
namespace {

constexpr int largestRow = 1048575;  // of a name that spans whole columns

Sheet* addSheet(Book* book, const char* name, Sheet*) {
    return bookAddSheet(book, name);
}

/// The engine gives -1 for what spans the whole sheet.
void widen(int* first, int* last, int largest) {
    if (*first != -1 || *last != -1) return;
    *first = 0;
    *last = largest;
}

const char* nameRange(Sheet* sheet, int index, int* firstRow, int* lastRow, int* firstCol, int* lastCol) {
    const char* const name = sheetNamedRange(sheet, index, firstRow, lastRow, firstCol, lastCol);
    if (name) {
        widen(firstRow, lastRow, largestRow);
        widen(firstCol, lastCol, largestColumn);
    }
    return name;
}

// An empty sheet answers 0 to both ends; so does none with a cell, whose end is one past its last cell.
int firstRow(Sheet* sheet) {
    const int first = sheetFirstRow(sheet);
    return first == 0 && sheetLastRow(sheet) == 0 ? notGiven : first;
}
int firstCol(Sheet* sheet) {
    const int first = sheetFirstCol(sheet);
    return first == 0 && sheetLastCol(sheet) == 0 ? notGiven : first;
}
int lastRow(Sheet* sheet) {
    const int end = sheetLastRow(sheet);
    return end >= 1 ? end - 1 : 0;
}
int lastCol(Sheet* sheet) {
    const int end = sheetLastCol(sheet);
    return end >= 1 ? end - 1 : 0;
}

int cellKind(Sheet* sheet, int row, int col) {
    return kindOfCellType(sheetCellType(sheet, row, col));
}

bool cellIsDate(Sheet* sheet, int row, int col) {
    return sheetIsDate(sheet, row, col) || sheetCellType(sheet, row, col) == vellum::cellDate;
}

int readBool(Sheet* sheet, int row, int col, CellFormat**) {
    return sheetReadBool(sheet, row, col);
}
const char* readBoolText(Sheet* sheet, int row, int col) {
    return sheetReadBool(sheet, row, col) ? "true" : "false";
}
double readReal(Sheet* sheet, int row, int col, CellFormat**) {
    return sheetReadNumber(sheet, row, col);
}
const char* readText(Sheet* sheet, int row, int col, CellFormat**) {
    return sheetReadString(sheet, row, col);
}

int writeBool(Sheet* sheet, int row, int col, int value, CellFormat*) {
    return sheetWriteBool(sheet, row, col, value != 0);
}
int writeReal(Sheet* sheet, int row, int col, CellFormat*, double value) {
    return sheetWriteNumber(sheet, row, col, value);
}
int writeText(Sheet* sheet, int row, int col, const char* text, CellFormat*) {
    return sheetWriteString(sheet, row, col, text ? text : "");
}
int writeBlank(Sheet* sheet, int row, int col, CellFormat*) {
    return sheetWriteBlank(sheet, row, col);
}

double textToReal(Sheet* sheet, int row, int col) {
    const char* const text = sheetReadString(sheet, row, col);
    return text ? strtodC(text, nullptr) : 0.0;
}
int textToBool(Sheet* sheet, int row, int col) {
    const char* const text = sheetReadString(sheet, row, col);
    return text && equalIgnoringCase(text, "true");
}

}  // namespace

constinit const TableOps workbookTableOps = {
    bookSheetCount, bookGetSheet, addSheet,  sheetSheetName, sheetNamedRangeCount,
    nameRange,      firstRow,     lastRow,   firstCol,       lastCol,
    cellKind,       cellIsDate,   readBool,  readBoolText,   readReal,
    readText,       writeBool,    writeReal, writeText,      writeBlank,
    textToReal,     textToBool,
};

}  // namespace quillet
