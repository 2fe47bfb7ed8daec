// One load, write or update of a workbook, for timing beside other programs:
//   bench_workbook read IN | write CONTENT OUT | update IN OUT
// `read` visits every cell and prints how many there are, how many are texts, and the sum of the numbers.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/content.h"
#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

void require(bool ok, Book& book) {
    if (!ok) throw std::runtime_error(book.errorMessage());
}

cli::BookPtr load(const char* path) {
    std::string error;
    cli::BookPtr book = cli::loadBook(path, error);
    if (!book) throw std::runtime_error(error);
    return book;
}

bool endsWith(const std::string& text, const char* tail) {
    return text.size() >= std::strlen(tail) && text.ends_with(tail);
}

void read(const char* in) {
    const cli::BookPtr book = load(in);
    long cells = 0, texts = 0;
    double sum = 0;
    for (int i = 0; i < book->sheetCount(); ++i) {
        Sheet* const sheet = book->getSheet(i);
        auto* const walk = dynamic_cast<vellum::ISheetCells*>(sheet);
        if (!walk) continue;
        for (int row = 0, col = 0; walk->cellFrom(&row, &col); ++col, ++cells) {
            switch (sheet->cellType(row, col)) {
                case vellum::cellNumber:
                    sum += sheet->readNumber(row, col);
                    break;
                case vellum::cellString:
                    texts += sheet->readString(row, col) != nullptr;
                    break;
                case vellum::cellBoolean:
                    sum += sheet->readBool(row, col);
                    break;
                default:
                    break;
            }
        }
    }
    std::printf("cells=%ld texts=%ld sum=%.9g\n", cells, texts, sum);
}

void write(const char* spec, const char* out) {
    const bench::Content content(spec);
    const cli::BookPtr book(endsWith(out, ".xls") ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>());
    if (!book) throw std::runtime_error("cannot create book");
    book->setLocale("UTF-8");
    auto* const date = book->newFormat();
    require(date != nullptr, *book);
    date->setNumFormat(book->newCustomNumFormat("yyyy-mm-dd"));
    Sheet* const sheet = book->addSheet("Data");
    require(sheet != nullptr, *book);
    for (int row = 0; row < content.rows; ++row) {
        for (int col = 0; col < content.cols; ++col) {
            const std::uint64_t hash = content.hash(row, col);
            bool ok = true;
            switch (content.kind(col, hash)) {
                case bench::Kind::number:
                    ok = sheet->writeNumber(row, col, content.number(hash));
                    break;
                case bench::Kind::text:
                    ok = sheet->writeString(row, col, content.text(hash).c_str());
                    break;
                case bench::Kind::boolean:
                    ok = sheet->writeBool(row, col, content.boolean(hash));
                    break;
                case bench::Kind::date:
                    ok = sheet->writeNumber(row, col, content.date(hash), date);
                    break;
                case bench::Kind::none:
                    break;
            }
            require(ok, *book);
        }
    }
    require(book->saveFile(out), *book);
}

void update(const char* in, const char* out) {
    const cli::BookPtr book = load(in);
    Sheet* const sheet = book->getSheet(0);
    require(sheet != nullptr, *book);
    const int rows = sheet->lastRow();
    for (int k = 0; k < bench::changes; ++k) {
        require(sheet->writeNumber(bench::changedRow(k, rows), k % 4, k + 0.5), *book);
    }
    require(book->saveFile(out), *book);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string task = argc > 1 ? argv[1] : "";
        if (task == "read" && argc == 3) {
            read(argv[2]);
        } else if (task == "write" && argc == 4) {
            write(argv[2], argv[3]);
        } else if (task == "update" && argc == 4) {
            update(argv[2], argv[3]);
        } else {
            std::fputs("usage: bench_workbook read IN | write CONTENT OUT | update IN OUT\n", stderr);
            return 2;
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}
