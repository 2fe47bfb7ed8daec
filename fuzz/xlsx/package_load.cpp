// A package of hostile parts: load, read the cells, save, and load the result.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "fuzz/xlsx/text_package.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};

constexpr int maxCells = 100'000;
void visit(Sheet& sheet, int& left) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    for (int row = 0, col = 0; left > 0 && cells->cellFrom(&row, &col); ++col, --left) {
        vellum::IFormatT<char>* format = nullptr;
        if (sheet.cellType(row, col) == vellum::cellNumber) sheet.readNumber(row, col, &format);
        sheet.readString(row, col, &format);
        sheet.isDate(row, col);
        if (format) format->fillPattern(), format->borderLeftColor(), format->font();
        if (sheet.isFormulaCell(row, col)) sheet.readFormula(row, col, &format);
        if (sheet.isRichTextCell(row, col)) sheet.readRichText(row, col, &format);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::packageOf(data, size);
    const std::unique_ptr<Book, Release> book(vellum::vlCreateXMLBook<char>());
    if (!book->loadMemory(bytes.data(), bytes.size())) {
        if (book->sheetCount() != 0) std::abort();
        return 0;
    }
    int left = maxCells;
    for (int i = 0; i < book->sheetCount() && left > 0; ++i, --left) {
        if (Sheet* const sheet = book->getSheet(i)) visit(*sheet, left);
    }
    // The operations that delete parts.
    if (book->sheetCount() > 1 && size % 2 == 0) book->removeSheet(0);
    const int sheets = book->sheetCount();
    const char* saved = nullptr;
    std::size_t savedSize = 0;
    if (!book->saveMemory(&saved, &savedSize)) return 0;
    const std::vector<char> copy(saved, saved + savedSize);
    if (!book->loadMemory(copy.data(), copy.size()) || book->sheetCount() != sheets) std::abort();
    return 0;
}
