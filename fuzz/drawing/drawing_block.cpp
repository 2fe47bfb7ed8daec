// The records of a sheet's drawing from hostile bytes: load, read all, add, remove, save, and load again.
#include <cstddef>
#include <cstdint>

#include "fuzz/drawing/workbook.h"

namespace {

// What is added is there, alone, and gone again when it is taken away.
void change(fuzz::Book& book) {
    fuzz::Sheet& sheet = *book.getSheet(0);
    const std::size_t before = fuzz::readSheet(sheet);
    const int pictures = sheet.pictureTotalOnSheet();
    const bool hadComment = sheet.readComment(7, 7) != nullptr;
    const int id = book.addPictureData(fuzz::png, sizeof fuzz::png);
    if (id < 0) std::abort();
    const bool placed = sheet.placePictureSized(3, 3, id, 20, 20);
    const bool commented = sheet.writeComment(7, 7, "text", "author", 20, 20);
    if (placed != commented) std::abort();
    if (!placed) return;
    fuzz::saveAndLoad(book);
    fuzz::Sheet& again = *book.getSheet(0);
    if (again.pictureTotalOnSheet() != pictures + 1 || again.readComment(7, 7) == nullptr) std::abort();
    if (fuzz::readSheet(again) != before + (hadComment ? 1 : 2)) std::abort();
    if (!again.removePictureByIndex(pictures) || !again.removeComment(7, 7)) std::abort();
    if (again.pictureTotalOnSheet() > pictures) std::abort();
    while (again.pictureTotalOnSheet() > 0) {
        if (!again.removePictureByIndex(0)) std::abort();
    }
    fuzz::saveAndLoad(book);
    if (book.getSheet(0)->pictureTotalOnSheet() != 0) std::abort();
    if (book.addSheet("Copy", book.getSheet(0)) == nullptr) std::abort();
    fuzz::saveAndLoad(book);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = fuzz::workbook({}, std::as_bytes(std::span(data, size)));
    const fuzz::BookPtr book = fuzz::newBook();
    if (!book->loadMemory(file.data(), file.size())) return 0;
    fuzz::readSheet(*book->getSheet(0));
    fuzz::saveAndLoad(*book);
    change(*book);
    return 0;
}
