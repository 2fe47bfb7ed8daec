// The records of a binary workbook from hostile bytes: what the container would hand out, without the container to
// get in the way. Load, read, save; what was saved must load with the same sheets and the same cells in use.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include "biff/container/memory_stream.h"
#include "biff/container/xls.h"
#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "fuzz/read_features.h"

namespace {

using Book = vellum::IBookT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};
using BookPtr = std::unique_ptr<Book, Release>;

BookPtr load(const std::vector<char>& file) {
    BookPtr book(vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    if (!book->loadMemory(file.data(), file.size())) book.reset();
    return book;
}

void read(Book& book) {
    for (int i = 0; i < book.formatTotal(); ++i) {
        book.formatAt(i)->font();
        book.customNumFormatText(book.formatAt(i)->numFormat());
    }
    for (int i = 0; i < book.sheetCount(); ++i) {
        auto* const sheet = book.getSheet(i);
        auto* const cells = dynamic_cast<vellum::ISheetCells*>(sheet);
        int left = 2000;
        for (int row = 0, col = 0; left > 0 && cells->cellFrom(&row, &col); ++col, --left) {
            sheet->readString(row, col);
            sheet->readFormula(row, col);
            sheet->isDate(row, col);
            if (sheet->isRichTextCell(row, col)) sheet->readRichText(row, col);
        }
        vellum::fuzz::readFeatures(*sheet);
    }
}

void readNames(Book& book) {
    auto& names = dynamic_cast<vellum::IBookNames&>(book);
    vellum::IBookNames::Name name;
    for (int i = names.nameTotal() - 1; i >= 0; --i) names.nameAt(i, name);
    names.outside();
    int a, b, c, d;
    for (int s = 0; s < book.sheetCount() && s < 20; ++s) {
        auto* const sheet = book.getSheet(s);
        for (int i = 0; i < sheet->namedRangeCount(); ++i) {
            const char* const text = sheet->namedRange(i, &a, &b, &c, &d);
            if (text == nullptr) std::abort();
        }
        sheet->printAreaRange(&a, &b, &c, &d);
        sheet->repeatRows(&a, &b);
        sheet->repeatColumns(&a, &b);
    }
}

/// Names set, found, copied with their sheet and removed.
void changeNames(Book& book) {
    if (book.sheetCount() == 0) return;
    auto* const sheet = book.getSheet(0);
    int a, b, c, d;
    if (sheet->setNamedRangeByName("fuzzed", 1, 2, 3, 4, 0) &&
        (!sheet->namedRangeByName("FUZZED", &a, &b, &c, &d, 0) || a != 1 || d != 4))
        std::abort();
    sheet->setPrintAreaRange(0, 9, 0, 9);
    sheet->setRepeatRows(0, 1);
    sheet->setRepeatColumns(2, 3);
    if (book.sheetCount() < 20) book.insertSheet(0, "Fuzzed", sheet);
    sheet->insertRows(1, 2, true);
    sheet->removeRows(5, 5, true);
    sheet->removeNamedRange("fuzzed", -2);
    if (book.sheetCount() > 1) book.removeSheet(1);
    readNames(book);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vellum::MemoryStream stream;
    vellum::Xls xls;
    xls.setStream(&stream);
    xls.writeBytes(std::as_bytes(std::span(data, size)));
    xls.close();
    const BookPtr book = load(stream.written());
    if (!book) return 0;
    read(*book);
    readNames(*book);

    const char* saved = nullptr;
    std::size_t savedSize = 0;
    if (!book->saveMemory(&saved, &savedSize)) return 0;
    const BookPtr again = load({saved, saved + savedSize});
    if (!again || again->sheetCount() != book->sheetCount() || again->formatTotal() != book->formatTotal())
        std::abort();
    for (int i = 0; i < book->sheetCount(); ++i) {
        auto* const a = book->getSheet(i);
        auto* const b = again->getSheet(i);
        if (a->lastRow() != b->lastRow() || a->lastCol() != b->lastCol()) std::abort();
        if (i < 20 && a->namedRangeCount() != b->namedRangeCount()) std::abort();
    }
    changeNames(*again);
    if (again->saveMemory(&saved, &savedSize) && !load({saved, saved + savedSize})) std::abort();
    return 0;
}
