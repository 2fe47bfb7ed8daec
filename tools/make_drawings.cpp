// Makes a workbook with pictures, for other programs to look at.
//   make_drawings OUT PICTURE...
// The first sheet has each picture, 12 rows apart, the second the first picture 300 times, the third the last one at
// B3, C10 and E20 with sizes, offsets and the three ways of following the cells. A binary workbook has comments
// besides: on the first sheet one with umlauts and line breaks, and one as long as a cell's text can be.
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

void require(bool ok, Book& book) {
    if (!ok) throw std::runtime_error(book.errorMessage());
}

Sheet& sheetOf(Book& book, const char* name) {
    Sheet* const sheet = book.addSheet(name, nullptr);
    require(sheet != nullptr, book);
    return *sheet;
}

void writeComments(Book& book, Sheet& sheet) {
    constexpr std::size_t longest = 32767;
    require(sheet.writeComment(0, 5,
                               "Gr\xC3\xB6\xC3\x9F"
                               "e:\nzwei Zeilen",
                               "J\xC3\xBCrgen", 0, 0),
            book);
    require(sheet.writeComment(4, 5, std::string(longest, 'x').c_str(), "Ann", 0, 0), book);
}

void fill(Book& book, int count, char** paths) {
    Sheet& all = sheetOf(book, "All");
    int last = -1;
    for (int i = 0; i < count; ++i) {
        last = book.addPictureFile(paths[i]);
        require(last >= 0 && all.placePicture(12 * i, 1, last), book);
    }
    Sheet& many = sheetOf(book, "Many");
    for (int i = 0; i < 300; ++i) require(many.placePictureSized(3 * (i / 10), 2 * (i % 10), 0, 40, 30), book);
    Sheet& placed = sheetOf(book, "Placed");
    require(placed.setColumn(0, 20, 8.43), book);  // other programs have defaults of their own
    for (int row = 0; row < 40; ++row) require(placed.setRow(row, 15), book);
    require(placed.placePictureSized(2, 1, last, 100, 60, 0, 0, vellum::moveAndSize), book);
    require(placed.placePictureSized(9, 2, last, 64, 40, 10, 5, vellum::moveOnly), book);
    require(placed.placePictureSized(19, 4, last, 200, 100, 3, 7, vellum::stayInPlace), book);
    if (book.binaryVersion() != 0) writeComments(book, all);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc < 3) {
            std::fputs("usage: make_drawings OUT PICTURE...\n", stderr);
            return 2;
        }
        const bool isPackage = std::string_view(argv[1]).ends_with(".xlsx");
        const cli::BookPtr book(isPackage ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
        book->setLocale("UTF-8");
        fill(*book, argc - 2, argv + 2);
        require(book->saveFile(argv[1], false), *book);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
