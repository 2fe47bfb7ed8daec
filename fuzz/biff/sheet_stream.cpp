// A worksheet's records from hostile bytes, in a workbook that is sound: load, read, change, save, load again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include "biff/container/memory_stream.h"
#include "biff/container/xls.h"
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

constexpr std::uint16_t biff8 = 0x0600, biff5 = 0x0500;

void bof(vellum::Sink& out, std::uint16_t vers, std::uint16_t kind) {
    out.putAll(vellum::record_id::Bof, std::uint16_t{8}, vers, kind, std::uint16_t{8346}, std::uint16_t{1997});
}

/// Globals with one string and one sheet, then a worksheet of the given records.
std::vector<char> workbook(std::uint16_t vers, std::span<const std::byte> records) {
    constexpr std::uint8_t name[] = {0, 0, 0, 0, 0, 0, 1, 0, 'S'};
    constexpr std::uint8_t sst[] = {1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 'a', 'b'};
    vellum::MemoryStream stream;
    vellum::Xls xls;
    xls.setStream(&stream);
    bof(xls.out(), vers, 5);
    const auto boundSheet = std::as_bytes(std::span(name));
    xls.writeRecord(vellum::record_id::BoundSheet8, boundSheet);
    xls.writeRecord(vellum::record_id::SST, std::as_bytes(std::span(sst)));
    xls.writeRecordHeader(vellum::record_id::Eof, 0);
    bof(xls.out(), vers, 16);
    xls.writeBytes(records);
    xls.writeRecordHeader(vellum::record_id::Eof, 0);
    xls.close();
    return stream.written();
}

/// Reads every cell; the count of them.
long readCells(Sheet& sheet) {
    auto* const walk = dynamic_cast<vellum::ISheetCells*>(&sheet);
    long cells = 0;
    for (int row = 0, col = 0; walk->cellFrom(&row, &col); ++col, ++cells) {
        if (cells > 100'000) break;  // MulBlank makes many of few bytes
        sheet.readString(row, col);
        sheet.readNumber(row, col);
        sheet.readFormula(row, col);
        sheet.isDate(row, col);
        sheet.columnWidthPixels(col);
        sheet.rowHeight(row);
    }
    vellum::fuzz::readFeatures(sheet);
    return cells;
}

/// What a save writes a load must read, with as many cells.
void saveAndLoad(Book& book) {
    Sheet* const sheet = book.getSheet(0);
    const long cells = sheet == nullptr ? 0 : readCells(*sheet);
    const char* data = nullptr;
    std::size_t size = 0;
    if (!book.saveMemory(&data, &size)) std::abort();
    const std::vector<char> copy(data, data + size);
    if (!book.loadMemory(copy.data(), copy.size())) std::abort();
    if (sheet != nullptr && readCells(*book.getSheet(0)) != cells) std::abort();
}

void change(Sheet& sheet) {
    sheet.writeNumber(1, 0, 0.1);
    sheet.writeString(2, 1, "text");
    sheet.copyCell(0, 0, 9, 9);
    sheet.setColumn(1, 3, 12.5);
    sheet.setColumn(2, 2, -1.0);
    sheet.setRow(1, 20);
    sheet.clearRange(0, 3, 0, 1);
    sheet.removeMergeAt(1, 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto file = workbook(data[0] == 5 ? biff5 : biff8, std::as_bytes(std::span(data, size).subspan(1)));
    const std::unique_ptr<Book, Release> book(vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    if (!book->loadMemory(file.data(), file.size())) return 0;
    saveAndLoad(*book);
    if (Sheet* const sheet = book->getSheet(0)) {
        change(*sheet);
        book->addSheet("Twin", sheet);
        saveAndLoad(*book);
        vellum::fuzz::changeFeatures(*book->getSheet(0));
        saveAndLoad(*book);
    }
    return 0;
}
