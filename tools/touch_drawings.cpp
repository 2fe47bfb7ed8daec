// Touches the drawings of a workbook, for scripts/touched-xls and touched-xlsx to see what that changed besides.
// Packages take no comments, and get a picture on each worksheet.
//   touch_drawings add IN OUT       a picture and a comment on each sheet that has a drawing
//   touch_drawings restore IN OUT   the same, and away with them again
//   touch_drawings remove IN OUT    one file OUT.N for each picture and each comment: the workbook without it;
//                                   prints "N sheet picture INDEX" or "N sheet comment ROW COLUMN"
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

using cli::BookPtr;

constexpr unsigned char png[] = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0,  0, 0, 13, 'I', 'H', 'D',
                                 'R',  0,   0,   0,   32, 0,  0,  0,  16, 8, 2, 0,  0,   0};

void require(bool ok, Book& book) {
    if (!ok) throw std::runtime_error(book.errorMessage());
}

BookPtr load(const char* path) {
    char first[2] = {};
    std::ifstream(path, std::ios::binary).read(first, sizeof first);
    BookPtr book(first[0] == 'P' && first[1] == 'K' ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    require(book->loadFile(path), *book);
    return book;
}

vellum::ISheetObjects<char>& objectsOf(Sheet& sheet) {
    return dynamic_cast<vellum::ISheetObjects<char>&>(sheet);
}

bool isPackage(Book& book) {
    return book.binaryVersion() == 0;
}

/// Calls `touch` for each worksheet with a drawing, of a package for each worksheet.
void forEachDrawing(Book& book, const std::function<void(int, Sheet&)>& touch) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        Sheet* const sheet = book.getSheet(i);
        if (!sheet) continue;
        auto& objects = objectsOf(*sheet);
        if (isPackage(book) || sheet->pictureTotalOnSheet() > 0 || !objects.comments().empty() ||
            !objects.shapes().empty())
            touch(i, *sheet);
    }
}

/// The first cell of column 0 without a comment.
int freeRow(Sheet& sheet) {
    int row = 0;
    while (sheet.readComment(row, 0) != nullptr) ++row;
    return row;
}

void add(Book& book, bool restore) {
    forEachDrawing(book, [&](int, Sheet& sheet) {
        const bool comments = !isPackage(book);
        const int row = comments ? freeRow(sheet) : 0, pictures = sheet.pictureTotalOnSheet();
        const int id = book.addPictureData(png, sizeof png);
        require(id >= 0 && sheet.placePictureSized(row, 0, id, 10, 10), book);
        require(!comments || sheet.writeComment(row, 0, "added", "tool", 10, 10), book);
        if (!restore) return;
        require(sheet.removePictureByIndex(pictures) && (!comments || sheet.removeComment(row, 0)), book);
    });
}

void removeEach(const char* in, const std::string& out) {
    int file = 0;
    const auto without = [&](int index, const std::function<bool(Sheet&)>& remove) {
        const BookPtr book = load(in);
        require(remove(*book->getSheet(index)), *book);
        require(book->saveFile((out + "." + std::to_string(file)).c_str(), false), *book);
        return file++;
    };
    const BookPtr book = load(in);
    forEachDrawing(*book, [&](int index, Sheet& sheet) {
        for (int i = 0; i < sheet.pictureTotalOnSheet(); ++i) {
            const int n = without(index, [i](Sheet& other) { return other.removePictureByIndex(i); });
            std::printf("%d %d picture %d\n", n, index, i);
        }
        if (isPackage(*book)) return;
        for (const auto& comment : objectsOf(sheet).comments()) {
            const int n = without(index, [&](Sheet& other) { return other.removeComment(comment.row, comment.col); });
            std::printf("%d %d comment %d %d\n", n, index, comment.row, comment.col);
        }
    });
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 4 && std::strcmp(argv[1], "remove") == 0) {
            removeEach(argv[2], argv[3]);
            return 0;
        }
        const bool restore = argc == 4 && std::strcmp(argv[1], "restore") == 0;
        if (!restore && (argc != 4 || std::strcmp(argv[1], "add") != 0)) {
            std::fputs("usage: touch_drawings add|restore|remove IN OUT\n", stderr);
            return 2;
        }
        const BookPtr book = load(argv[2]);
        add(*book, restore);
        require(book->saveFile(argv[3], false), *book);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
