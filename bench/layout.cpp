// Times of operations on the layout of sheets, beside a walk over the same cells: bench_layout [xls|xlsx]
#include <cstdio>
#include <cstring>
#include <string>

#include "bench/new_book.h"
#include "engine/api/enums.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"

namespace {

using bench::newBook;
using bench::seconds;
using bench::tell;
using cli::BookPtr;
using Sheet = vellum::ISheetT<char>;

long walk(Sheet& sheet) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    long count = 0;
    for (int row = 0, col = 0; cells->cellFrom(&row, &col); ++col) ++count;
    return count;
}

void moves(bool binary) {
    const int rows = binary ? 60'000 : 100'000;
    const BookPtr book = newBook(binary);
    Sheet& sheet = *book->getSheet(0);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < 10; ++col) sheet.writeNumber(row, col, row + col * 0.5);
    }
    long count = 0;
    const double visit = seconds([&] { count = walk(sheet); });
    tell("walk over all cells", visit, 0);
    if (count != rows * 10L) std::printf("cells are missing\n");
    tell("insertRows of 1000", seconds([&] { sheet.insertRows(0, 999); }), visit);
    tell("removeRows of 1000", seconds([&] { sheet.removeRows(0, 999); }), visit);
    const int columns = binary ? 100 : 1000;
    tell("insertColumns", seconds([&] { sheet.insertColumns(0, columns - 1); }), visit);
    tell("removeColumns", seconds([&] { sheet.removeColumns(0, columns - 1); }), visit);
}

void fitting(bool binary) {
    const int rows = binary ? 60'000 : 100'000;
    const BookPtr book = newBook(binary);
    Sheet& sheet = *book->getSheet(0);
    vellum::IFormatT<char>* formats[4];
    for (int i = 0; i < 4; ++i) {
        formats[i] = book->newFormat();
        formats[i]->setNumFormat(i == 3 ? book->newCustomNumFormat("#,##0.000") : i * 2);
    }
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < 16; ++col) {
            if (col % 2 == 0) {
                sheet.writeNumber(row, col, row * 1.25 + col, formats[col / 2 % 4]);
            } else {
                sheet.writeString(row, col, std::string("text ").append(std::to_string(row * 7 + col)).c_str());
            }
        }
    }
    for (int i = 0; i < 10'000; ++i) sheet.addMerge(i * 5, i * 5 + 1, 20, 21);
    double sum = 0;
    const double visit = seconds([&] {
        for (int row = 0; row < rows; ++row) {
            for (int col = 0; col < 16; col += 2) {
                sum += sheet.readNumber(row, col);
                sum += static_cast<double>(std::strlen(sheet.readString(row, col + 1)));
            }
        }
    });
    tell("visit of 16 columns", visit, 0);
    tell("autoFitColumns with 10000 merges", seconds([&] { sheet.autoFitColumns(0, 0, 15, rows); }), visit);
    if (sum == 0) std::printf("nothing read\n");
}

void mergeSearch(bool binary, int merges, double& took) {
    const BookPtr book = newBook(binary);
    Sheet& sheet = *book->getSheet(0);
    const int rows = binary ? merges : merges / 4;
    for (int i = 0; i < merges; ++i)
        sheet.addMerge(i % rows * 2 % 65000, i % rows * 2 % 65000 + 1, i / rows * 3, i / rows * 3 + 1);
    took = seconds([&] {
        int a, b, c, d;
        for (int i = 0; i < 100'000; ++i) sheet.mergeAt(i % 65000, i % 13, &a, &b, &c, &d);
    });
}

template <class Add>
void growth(bool binary, const char* what, Add&& add) {
    const auto timed = [&](int count) {
        const BookPtr book = newBook(binary);
        Sheet& sheet = *book->getSheet(0);
        return seconds([&] {
            for (int i = 0; i < count; ++i) add(sheet, i);
        });
    };
    const double few = timed(1000);
    tell(std::string("10000 ").append(what).append(" against 1000").c_str(), timed(10'000), few);
}

}  // namespace

int main(int argc, char** argv) {
    const bool binary = argc > 1 && std::strcmp(argv[1], "xls") == 0;
    moves(binary);
    fitting(binary);
    double few = 0, many = 0;
    mergeSearch(binary, 5000, few);
    mergeSearch(binary, binary ? 30'000 : 50'000, many);
    tell("mergeAt beside 5000 merges", few, 0);
    tell("mergeAt beside many merges", many, few);
    growth(binary, "merges", [](Sheet& sheet, int i) { sheet.addMerge(i * 2, i * 2 + 1, 0, 1); });
    if (!binary) {
        growth(binary, "page breaks", [](Sheet& sheet, int i) { sheet.setRowBreak(i, true); });
        growth(binary, "links", [](Sheet& sheet, int i) { sheet.addHyperlink("http://x", i, i, 0, 0); });
        growth(binary, "validation rules",
               [](Sheet& sheet, int i) { sheet.addValidationRuleNumeric(1, 0, i, i, 0, 0, 1, 2); });
        growth(binary, "names", [](Sheet& sheet, int i) {
            sheet.setNamedRangeByName(std::string("n").append(std::to_string(i)).c_str(), i, i, 0, 0);
        });
    }
    const BookPtr book = newBook(binary);
    Sheet& sheet = *book->getSheet(0);
    const int columns = binary ? 256 : 16'384;
    tell("setColumn on each column", seconds([&] {
             for (int col = 0; col < columns; ++col) sheet.setColumn(col, col, 5 + col % 20);
         }),
         0);
    return 0;
}
