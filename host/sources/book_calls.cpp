#include "host/sources/book_calls.h"

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/api/isheet_row_cells.h"
#include "engine/factories/factories.h"
#include "host/interface/observer.h"

namespace quillet {
namespace {

vellum::IBookT<char>& asBook(Book* book) {
    return *static_cast<vellum::IBookT<char>*>(book);
}

vellum::ISheetT<char>& asSheet(Sheet* sheet) {
    return *static_cast<vellum::ISheetT<char>*>(sheet);
}

bool nextCell(void* cells, int* row, int* col) {
    return static_cast<vellum::ISheetCells*>(cells)->cellFrom(row, col);
}

void rowCells(void* cells, int row, int col, int count, std::uint8_t* kinds, double* numbers) {
    static_cast<vellum::ISheetRowCells*>(cells)->rowCells(row, col, count, kinds, numbers);
    for (int i = 0; i < count; ++i) kinds[i] = static_cast<std::uint8_t>(kindOfCellType(kinds[i]));
}

}  // namespace

int kindOfCellType(int cellType) {
    if (cellType == vellum::cellBlank) return cellEmpty;
    return cellType == vellum::cellDate ? int{cellNumber} : cellType;
}

Book* createBook() {
    return vellum::vlCreateBook<char>();
}
Book* createXmlBook() {
    return vellum::vlCreateXMLBook<char>();
}
void releaseBook(Book* book) {
    asBook(book).release();
}

bool bookLoadFile(Book* book, const char* path) {
    if (observer != nullptr) {
        if (const auto held = observer->heldFile(path)) return asBook(book).loadMemory(held->data(), held->size());
    }
    return asBook(book).loadFile(path, nullptr);
}
bool bookSaveFile(Book* book, const char* path) {
    if (observer != nullptr && observer->keepsFiles()) {
        const char* bytes = nullptr;
        std::size_t size = 0;
        return asBook(book).saveMemory(&bytes, &size) && observer->keepFile(path, {bytes, size});
    }
    return asBook(book).saveFile(path, false);
}
Sheet* bookAddSheet(Book* book, const char* name) {
    return asBook(book).addSheet(name, nullptr);
}
Sheet* bookGetSheet(Book* book, int index) {
    // Charts and macro sheets are kept as bytes: what a statement wrote there would be gone.
    return asBook(book).sheetKindAt(index) == vellum::sheetWorksheet ? asBook(book).getSheet(index) : nullptr;
}
int bookSheetCount(Book* book) {
    return asBook(book).sheetCount();
}
bool bookDateUnpack(Book* book, double number, int* year, int* month, int* day, int* hour, int* min, int* sec,
                    int* msec) {
    return asBook(book).dateUnpack(number, year, month, day, hour, min, sec, msec);
}
bool bookSetLocale(Book* book, const char* name) {
    return asBook(book).setLocale(name);
}
const char* bookErrorMessage(Book* book) {
    return asBook(book).errorMessage();
}

int sheetCellType(Sheet* sheet, int row, int col) {
    return asSheet(sheet).cellType(row, col);
}
const char* sheetReadString(Sheet* sheet, int row, int col) {
    return asSheet(sheet).readString(row, col, nullptr);
}
double sheetReadNumber(Sheet* sheet, int row, int col) {
    return asSheet(sheet).readNumber(row, col, nullptr);
}
bool sheetReadBool(Sheet* sheet, int row, int col) {
    return asSheet(sheet).readBool(row, col, nullptr);
}
bool sheetWriteString(Sheet* sheet, int row, int col, const char* text) {
    return asSheet(sheet).writeString(row, col, text, nullptr, vellum::stringIsText);
}
bool sheetWriteNumber(Sheet* sheet, int row, int col, double value) {
    return asSheet(sheet).writeNumber(row, col, value, nullptr);
}
bool sheetWriteBool(Sheet* sheet, int row, int col, bool value) {
    return asSheet(sheet).writeBool(row, col, value, nullptr, vellum::errorNone);
}
bool sheetWriteBlank(Sheet* sheet, int row, int col) {
    return asSheet(sheet).writeBlank(row, col, nullptr);
}
bool sheetIsDate(Sheet* sheet, int row, int col) {
    return asSheet(sheet).isDate(row, col);
}
int sheetFirstRow(Sheet* sheet) {
    return asSheet(sheet).firstRow();
}
int sheetLastRow(Sheet* sheet) {
    return asSheet(sheet).lastRow();
}
int sheetFirstCol(Sheet* sheet) {
    return asSheet(sheet).firstCol();
}
int sheetLastCol(Sheet* sheet) {
    return asSheet(sheet).lastCol();
}
int sheetNamedRangeCount(Sheet* sheet) {
    return asSheet(sheet).namedRangeCount();
}
const char* sheetNamedRange(Sheet* sheet, int index, int* firstRow, int* lastRow, int* firstCol, int* lastCol) {
    int scope = vellum::scopeWorkbook;
    bool hidden = false;
    return asSheet(sheet).namedRange(index, firstRow, lastRow, firstCol, lastCol, &scope, &hidden);
}
const char* sheetSheetName(Sheet* sheet) {
    return asSheet(sheet).sheetName();
}
CellWalk sheetCellWalk(Sheet* sheet) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&asSheet(sheet));
    return cells ? CellWalk{cells, nextCell} : CellWalk{};
}
RowLook sheetRowLook(Sheet* sheet) {
    auto* const cells = dynamic_cast<vellum::ISheetRowCells*>(&asSheet(sheet));
    return cells ? RowLook{cells, rowCells} : RowLook{};
}

}  // namespace quillet
