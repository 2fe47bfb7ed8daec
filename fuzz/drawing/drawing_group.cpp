// The drawing group from hostile bytes: read every picture, add one, save, and load again.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "fuzz/drawing/workbook.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto file = fuzz::workbook(std::as_bytes(std::span(data, size)), {});
    const fuzz::BookPtr book = fuzz::newBook();
    if (!book->loadMemory(file.data(), file.size())) return 0;
    fuzz::readPictures(*book);
    const std::vector<char> unchanged = fuzz::saved(*book);
    const int total = book->pictureTotal();
    if (book->addPictureData(fuzz::png, sizeof fuzz::png) != total) std::abort();
    if (!book->getSheet(0)->placePictureSized(1, 1, total, 10, 10)) return 0;  // no identifiers are left
    fuzz::saveAndLoad(*book);
    const char* bytes = nullptr;
    std::size_t stored = 0;
    if (book->pictureTotal() != total + 1) std::abort();
    if (book->pictureAt(total, &bytes, &stored) != vellum::picturePng || stored != sizeof fuzz::png) std::abort();
    if (std::memcmp(bytes, fuzz::png, stored) != 0) std::abort();
    fuzz::readPictures(*book);
    return 0;
}
