// A whole workbook from hostile bytes: load, read what there is to read, save, and load the result.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "fuzz/read_features.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};

/// A bound for inputs whose few bytes stand for many cells; none of them costs much.
constexpr int maxCells = 200'000;

void readCells(Sheet& sheet, int& left) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    for (int row = 0, col = 0; left > 0 && cells->cellFrom(&row, &col); ++col, --left) {
        vellum::IFormatT<char>* format = nullptr;
        switch (sheet.cellType(row, col)) {
            case vellum::cellNumber:
                sheet.readNumber(row, col, &format);
                break;
            case vellum::cellBoolean:
                sheet.readBool(row, col, &format);
                break;
            case vellum::cellError:
                sheet.readError(row, col, &format);
                break;
            case vellum::cellBlank:
                sheet.readBlank(row, col, &format);
                break;
            default:
                break;
        }
        sheet.readString(row, col, &format);
        sheet.isDate(row, col);
        sheet.cellFormatAt(row, col);
        if (sheet.isFormulaCell(row, col)) sheet.readFormula(row, col, &format);
        if (sheet.isRichTextCell(row, col)) sheet.readRichText(row, col, &format);
        if (left % 64 == 0) {
            sheet.readComment(row, col);
            sheet.rowHeight(row);
            sheet.columnWidth(col);
        }
    }
}

void readAll(Book& book) {
    int left = maxCells;
    for (int i = 0; i < book.sheetCount(); ++i) {
        book.sheetNameAt(i);
        book.sheetKindAt(i);
        if (Sheet* const sheet = book.getSheet(i)) {
            readCells(*sheet, left);
            vellum::fuzz::readFeatures(*sheet);
        }
    }
    for (int i = 0; i < book.pictureTotal(); ++i) {
        const char* data = nullptr;
        std::size_t size = 0;
        book.pictureAt(i, &data, &size);
    }
    int size = 0;
    book.defaultFontName(&size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const bool isPackage = size > 1 && data[0] == 'P' && data[1] == 'K';
    const std::unique_ptr<Book, Release> book(isPackage ? vellum::vlCreateXMLBook<char>()
                                                        : vellum::vlCreateBook<char>());
    if (!book) return 0;
    book->setLocale("UTF-8");
    if (!book->loadMemory(data, size)) {
        if (book->sheetCount() != 0 || std::string_view(book->errorMessage()) == "ok") std::abort();
        return 0;
    }
    const int sheets = book->sheetCount();
    readAll(*book);

    const char* saved = nullptr;
    std::size_t savedSize = 0;
    if (!book->saveMemory(&saved, &savedSize)) return 0;
    // What we wrote we must be able to read, from the very buffer that the book owns; and so after changes.
    std::vector<char> copy(saved, saved + savedSize);
    if (Sheet* const sheet = book->getSheet(0)) {
        vellum::fuzz::changeFeatures(*sheet);
        if (book->saveMemory(&saved, &savedSize)) copy.assign(saved, saved + savedSize);
    }
    if (!book->loadMemory(copy.data(), copy.size()) || book->sheetCount() != sheets) std::abort();
    return 0;
}
