// The 22 operations over an opaque book and sheet through which all reading and writing of host data reaches cells.
// There are two instances: one over a CsvTable, one over the workbook engine.
#pragma once
#include <cstdint>

namespace quillet {

using Book = void;
using Sheet = void;
using CellFormat = void;  // always passed as null

/// Kinds of cell as `cellKind` gives them; blank cells with a format count as empty.
enum CellKind : int { cellEmpty = 0, cellNumber = 1, cellText = 2, cellBoolean = 3, cellError = 5 };

constexpr std::int32_t notGiven = 0x7fffffff;  // a row or column that is not there
constexpr std::int32_t largestColumn = 16383;

/// Rows and columns count from 0 and are absolute. Texts live until the next read. Write operations give 1 on success,
/// 0 or a negative number on failure: test `> 0`.
struct TableOps {
    int (*sheetCount)(Book*);
    Sheet* (*sheetAt)(Book*, int index);
    Sheet* (*addSheet)(Book*, const char* name, Sheet* init);
    const char* (*sheetName)(Sheet*);
    int (*nameCount)(Sheet*);
    const char* (*nameRange)(Sheet*, int index, int* firstRow, int* lastRow, int* firstCol, int* lastCol);
    int (*firstRow)(Sheet*);  // notGiven on an empty sheet
    int (*lastRow)(Sheet*);
    int (*firstCol)(Sheet*);
    int (*lastCol)(Sheet*);
    int (*cellKind)(Sheet*, int row, int col);
    bool (*cellIsDate)(Sheet*, int row, int col);
    int (*readBool)(Sheet*, int row, int col, CellFormat**);
    const char* (*readBoolText)(Sheet*, int row, int col);
    double (*readReal)(Sheet*, int row, int col, CellFormat**);
    const char* (*readText)(Sheet*, int row, int col, CellFormat**);
    int (*writeBool)(Sheet*, int row, int col, int value, CellFormat*);
    int (*writeReal)(Sheet*, int row, int col, CellFormat*, double value);
    int (*writeText)(Sheet*, int row, int col, const char* text, CellFormat*);
    int (*writeBlank)(Sheet*, int row, int col, CellFormat*);
    double (*textToReal)(Sheet*, int row, int col);
    int (*textToBool)(Sheet*, int row, int col);
};
static_assert(sizeof(TableOps) == 22 * sizeof(void*));

/// Beside the operations, from sources that can tell: moves (row, col) to the first cell at or behind it, in row order.
/// All between them are empty. False when there is none. No functions: the source cannot tell.
struct CellWalk {
    void* cells = nullptr;
    bool (*from)(void* cells, int* row, int* col) = nullptr;
};

/// Beside the operations, from sources that can tell: for `count` cells of a row from (row, col) on what `cellKind`
/// gives, and for numbers what `readReal` gives; the other numbers are left alone. No function: the source cannot tell.
struct RowLook {
    void* cells = nullptr;
    void (*at)(void* cells, int row, int col, int count, std::uint8_t* kinds, double* numbers) = nullptr;
};

extern const TableOps csvTableOps;       // csv_ops.cpp
extern const TableOps workbookTableOps;  // workbook_ops.cpp
/// The look at the rows of a csv table.
void csvRowCells(void* table, int row, int col, int count, std::uint8_t* kinds, double* numbers);

}  // namespace quillet
