// Changes the list of sheets of a workbook, for other programs to open what comes out.
//   change_sheets OPERATION IN OUT
// OPERATION is add (a sheet "Added" behind all, with the number 42 in A1), copy (of the first sheet, in front of all,
// named "Copied"), move (the first sheet behind all), remove (the first sheet) or names (of the first sheet: the last
// name that it sees is removed, the first one becomes A4:B5, "Quillet_Book" A1:B2 and, as its own, "Quillet_Own" C3 are
// added). Exit status 3 where the engine
// refuses with a reason, which goes to standard output: only one sheet is there, the first is no worksheet.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;

bool add(Book& book) {
    auto* const sheet = book.addSheet("Added", nullptr);
    return sheet && sheet->writeNumber(0, 0, 42, nullptr);
}

bool copy(Book& book) {
    auto* const first = book.getSheet(0);
    return first && book.insertSheet(0, "Copied", first);
}

bool move(Book& book) {
    return book.moveSheet(0, book.sheetCount());
}

bool remove(Book& book) {
    return book.removeSheet(0);
}

bool names(Book& book) {
    auto* const sheet = book.getSheet(0);
    if (!sheet) return false;
    int area[4], scope = 0;
    if (const int count = sheet->namedRangeCount(); count > 0) {
        const auto nameAt = [&](int index) {
            const char* const name = sheet->namedRange(index, &area[0], &area[1], &area[2], &area[3], &scope, nullptr);
            return std::string(name ? name : "");
        };
        const std::string last = nameAt(count - 1);
        if (!sheet->removeNamedRange(last.c_str(), scope)) return false;
        const std::string first = count > 1 ? nameAt(0) : "";
        if (!first.empty() && !sheet->setNamedRangeByName(first.c_str(), 3, 4, 0, 1, scope)) return false;
    }
    return sheet->setNamedRangeByName("Quillet_Book", 0, 1, 0, 1) &&
           sheet->setNamedRangeByName("Quillet_Own", 2, 2, 2, 2, 0);
}

cli::BookPtr load(const char* path) {
    char first[2] = {};
    std::ifstream(path, std::ios::binary).read(first, sizeof first);
    const bool isPackage = first[0] == 'P' && first[1] == 'K';
    cli::BookPtr book(isPackage ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    if (!book->loadFile(path)) throw std::runtime_error(book->errorMessage());
    return book;
}

}  // namespace

int main(int argc, char** argv) {
    const struct {
        const char* name;
        bool (*change)(Book&);
    } operations[] = {{"add", add}, {"copy", copy}, {"move", move}, {"remove", remove}, {"names", names}};
    for (const auto& operation : operations) {
        if (argc != 4 || std::strcmp(argv[1], operation.name) != 0) continue;
        try {
            const auto book = load(argv[2]);
            if (!operation.change(*book)) {
                std::printf("%s\n", book->errorMessage());
                return 3;
            }
            if (!book->saveFile(argv[3], false)) throw std::runtime_error(book->errorMessage());
            return 0;
        } catch (const std::exception& e) {
            std::fprintf(stderr, "%s\n", e.what());
            return 1;
        }
    }
    std::fputs("usage: change_sheets add|copy|move|remove|names IN OUT\n", stderr);
    return 2;
}
