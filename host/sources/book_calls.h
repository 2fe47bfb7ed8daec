// The workbook engine as plain functions over an opaque book and sheet, one for each operation that the drivers use.
// They hold no logic; a book is an IBookT<char>, a sheet an ISheetT<char>.
#pragma once
#include "host/sources/table_ops.h"

namespace quillet {

/// Null when memory is short.
Book* createBook();
Book* createXmlBook();
void releaseBook(Book* book);

bool bookLoadFile(Book* book, const char* path);
bool bookSaveFile(Book* book, const char* path);
Sheet* bookAddSheet(Book* book, const char* name);
/// Null for what is no worksheet.
Sheet* bookGetSheet(Book* book, int index);
int bookSheetCount(Book* book);
/// False when the number is no date.
bool bookDateUnpack(Book* book, double number, int* year, int* month, int* day, int* hour, int* min, int* sec,
                    int* msec);
bool bookSetLocale(Book* book, const char* name);
const char* bookErrorMessage(Book* book);

/// What a cell of this type of the engine is to the drivers: blank ones are empty, and the date cells of Strict
/// packages numbers.
int kindOfCellType(int cellType);

int sheetCellType(Sheet* sheet, int row, int col);
const char* sheetReadString(Sheet* sheet, int row, int col);
double sheetReadNumber(Sheet* sheet, int row, int col);
bool sheetReadBool(Sheet* sheet, int row, int col);
bool sheetWriteString(Sheet* sheet, int row, int col, const char* text);
bool sheetWriteNumber(Sheet* sheet, int row, int col, double value);
bool sheetWriteBool(Sheet* sheet, int row, int col, bool value);
bool sheetWriteBlank(Sheet* sheet, int row, int col);
bool sheetIsDate(Sheet* sheet, int row, int col);
int sheetFirstRow(Sheet* sheet);
int sheetLastRow(Sheet* sheet);  // one past the end, as sheetLastCol
int sheetFirstCol(Sheet* sheet);
int sheetLastCol(Sheet* sheet);
int sheetNamedRangeCount(Sheet* sheet);
const char* sheetNamedRange(Sheet* sheet, int index, int* firstRow, int* lastRow, int* firstCol, int* lastCol);
const char* sheetSheetName(Sheet* sheet);
CellWalk sheetCellWalk(Sheet* sheet);
RowLook sheetRowLook(Sheet* sheet);

}  // namespace quillet
