// Times of filters, names, links, rules and function names, each beside what bounds it: bench_filters
#include <cstdio>
#include <string>

#include "bench/new_book.h"
#include "engine/api/enums.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"
#include "engine/api/isheet.h"

namespace {

using bench::newBook;
using bench::seconds;
using bench::tell;
using cli::BookPtr;
using Sheet = vellum::ISheetT<char>;

constexpr int rows = 1'000'000, columns = 4;

/// A well spread number for each cell.
unsigned spread(int row, int col) {
    auto x = static_cast<unsigned>(row) * 2654435761u + static_cast<unsigned>(col) * 40503u;
    x ^= x >> 15;
    return x * 2246822519u;
}

void fill(Sheet& sheet) {
    for (int col = 0; col < columns; ++col) sheet.writeString(0, col, "head");
    for (int row = 1; row <= rows; ++row) {
        sheet.writeString(row, 0, ("value " + std::to_string(spread(row, 0) % 2000)).c_str());
        sheet.writeNumber(row, 1, spread(row, 1) % 100000 * 0.25);
        sheet.writeNumber(row, 2, spread(row, 2) * 0.5);
        sheet.writeNumber(row, 3, row);
    }
}

double visit(Sheet& sheet) {
    return seconds([&] {
        double sum = 0;
        for (int row = 1; row <= rows; ++row) {
            sum += sheet.readString(row, 0) != nullptr;
            sum += sheet.readNumber(row, 1) + sheet.readNumber(row, 2);
        }
        if (sum < 0) std::puts("?");
    });
}

void filters() {
    const BookPtr book = newBook(false);
    Sheet& sheet = *book->getSheet(0);
    fill(sheet);
    const double visited = visit(sheet);
    tell("visit of three columns, 1,000,000 rows", visited, 0);
    auto* const filter = sheet.filterObject();
    filter->setFilterRange(0, rows, 0, columns - 1);
    for (int i = 0; i < 1000; ++i) filter->filterColumn(0)->addValueFilter(("value " + std::to_string(i)).c_str());
    filter->filterColumn(1)->setCustomFilter(vellum::filterGreaterThan, "100", vellum::filterLessThan, "20000", true);
    filter->filterColumn(2)->setTop10(40, true, true);
    tell("applyFilter", seconds([&] { sheet.applyFilter(); }), visited);
    filter->setSort(0, false);
    filter->addSort(1, true);
    tell("applyFilter, sorted by two columns", seconds([&] { sheet.applyFilter(); }), visited);
}

template <class Work>
void growth(const char* what, Work&& work) {
    constexpr int few = 1000, many = 10'000;
    const auto time = [&](int count) {
        const BookPtr book = newBook(false);
        Sheet& sheet = *book->getSheet(0);
        return seconds([&] {
            for (int i = 0; i < count; ++i) work(sheet, i);
        });
    };
    double base = 0;
    for (int i = 0; i < 5; ++i) base += time(few) / 5;
    tell(what, time(many), base);
}

void functionNames() {
    const auto write = [](const char* head) {
        const BookPtr book = newBook(false);
        Sheet& sheet = *book->getSheet(0);
        return seconds([&] {
            for (int row = 0; row < 200'000; ++row) {
                sheet.writeFormula(row, 0, (head + std::to_string(row + 1) + ")*2+A1").c_str());
            }
        });
    };
    const double plain = write("-A$1+B1*C1+D1*E1+D");  // no bracket that opens: no search
    tell("200,000 formulas without functions", plain, 0);
    tell("with an old function", write("SUM(A1)+VLOOKUP(A"), plain);
    tell("with a newer one", write("IFNA(A1)+STDEV.S(A"), plain);
}

}  // namespace

int main() {
    filters();
    growth("10,000 links, beside 1,000", [](Sheet& sheet, int i) {
        sheet.addHyperlink(("https://example.org/" + std::to_string(i)).c_str(), i, i, 0, 0);
    });
    growth("10,000 places", [](Sheet& sheet, int i) { sheet.addHyperlink("S!A1", i, i, 0, 0); });
    growth("10,000 rules", [](Sheet& sheet, int i) { sheet.addValidationRuleNumeric(1, 0, i, i, 0, 0, 1, 9); });
    growth("10,000 names",
           [](Sheet& sheet, int i) { sheet.setNamedRangeByName(("name" + std::to_string(i)).c_str(), i, i, 0, 3); });
    growth("10,000 names looked up", [](Sheet& sheet, int i) {
        sheet.setNamedRangeByName(("name" + std::to_string(i)).c_str(), i, i, 0, 3);
        int row, last, col, lastCol;
        sheet.namedRangeByName(("NAME" + std::to_string(i / 2)).c_str(), &row, &last, &col, &lastCol);
    });
    functionNames();
    return 0;
}
