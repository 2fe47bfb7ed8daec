// Drawings, comments and controls of hostile packages: all of them are read, a picture comes and goes, and what is
// saved has as many of each as before.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/api/ibook.h"
#include "engine/api/iformcontrol.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "fuzz/xlsx/text_package.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};

constexpr int mostSheets = 16, mostObjects = 200;
constexpr char png[] = "\x89PNG\r\n\x1A\n\0\0\0\xDIHDR\0\0\0\x40\0\0\0\x20\x8\x6\0\0\0";

struct Counts {
    int pictures = 0, controls = 0;
    std::size_t comments = 0, shapes = 0;
    bool operator==(const Counts&) const = default;
};

Counts read(Sheet& sheet) {
    auto& objects = dynamic_cast<vellum::ISheetObjects<char>&>(sheet);
    const Counts counts{sheet.pictureTotalOnSheet(), sheet.formControlTotal(), objects.comments().size(),
                        objects.shapes().size()};
    for (int i = 0; i < counts.pictures && i < mostObjects; ++i) {
        int place[8] = {};
        const char* link = nullptr;
        sheet.sheetPictureAt(i, &place[0], &place[1], &place[2], &place[3], &place[4], &place[5], &place[6], &place[7],
                             &link);
        if (place[0] < 0 || place[1] < 0 || place[2] > 1048575 || place[3] > 16383) std::abort();
    }
    for (int i = 0; i < counts.controls && i < mostObjects; ++i) {
        if (auto* const control = sheet.formControlAt(i)) control->objectType(), control->setVal(control->itemTotal());
    }
    for (const auto& comment : objects.comments()) {
        const char* const text = sheet.readComment(comment.row, comment.col);
        if (!text || std::string_view(comment.text.c_str()) != text) std::abort();  // a text of C ends at a NUL
    }
    return counts;
}

/// A picture more, and away with it again: where that goes, nothing else has changed. False where it does not go.
bool touch(Book& book, Sheet& sheet, const Counts& before) {
    const int id = book.addPictureData(png, sizeof png - 1);
    if (id < 0 || !sheet.placePicture(3, 2, id)) return false;
    if (sheet.pictureTotalOnSheet() != before.pictures + 1) std::abort();
    if (!sheet.removePictureByIndex(before.pictures) || read(sheet) != before) std::abort();
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::packageOf(data, size);
    const std::unique_ptr<Book, Release> book(vellum::vlCreateXMLBook<char>());
    if (!book->loadMemory(bytes.data(), bytes.size())) return 0;
    book->setLocale("UTF-8");
    for (int i = 0; i < book->pictureTotal(); ++i) book->pictureAt(i, nullptr, nullptr);
    std::vector<Counts> counts;
    std::vector<bool> reached;  // a drawing named by a prefix that nobody declared is reached when that was saved
    for (int i = 0; i < book->sheetCount() && i < mostSheets; ++i) {
        Sheet* const sheet = book->getSheet(i);
        counts.push_back(sheet ? read(*sheet) : Counts{});
        reached.push_back(sheet && touch(*book, *sheet, counts.back()));
    }
    const char* saved = nullptr;
    std::size_t savedSize = 0;
    if (!book->saveMemory(&saved, &savedSize)) return 0;
    const std::vector<char> copy(saved, saved + savedSize);
    if (!book->loadMemory(copy.data(), copy.size())) std::abort();
    book->setLocale("UTF-8");
    for (std::size_t i = 0; i < counts.size(); ++i) {
        Sheet* const sheet = book->getSheet(static_cast<int>(i));
        const int pictures = sheet ? read(*sheet).pictures : counts[i].pictures;
        if (reached[i] ? pictures != counts[i].pictures : pictures < counts[i].pictures) std::abort();
    }
    return 0;
}
