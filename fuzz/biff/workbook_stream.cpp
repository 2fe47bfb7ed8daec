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
            sheet->isDate(row, col);
            if (sheet->isRichTextCell(row, col)) sheet->readRichText(row, col);
        }
    }
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
    }
    return 0;
}
