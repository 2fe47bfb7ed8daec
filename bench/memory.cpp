// bench_memory [--json FILE]: bytes that a cell of each kind takes in a book, its share of the row included: how much
// more memory of the process is resident after 200,000 cells in ten columns than before.
#include <malloc.h>

#include <unistd.h>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "host/sources/csv_table.h"

namespace {

using Sheet = vellum::ISheetT<char>;
constexpr int rows = 20'000, columns = 10;

struct Kind {
    const char* name;
    void (*write)(vellum::IBookT<char>&, Sheet&, int row, int col);
};

std::string numbered(const char* head, int row, int col) {
    return std::string(head).append(std::to_string(row * columns + col));
}

constexpr Kind kinds[] = {
    {"number", [](auto&, Sheet& sheet, int row, int col) { sheet.writeNumber(row, col, row * 0.1 + col); }},
    {"boolean", [](auto&, Sheet& sheet, int row, int col) { sheet.writeBool(row, col, col % 2 != 0); }},
    {"blank", [](auto& book, Sheet& sheet, int row, int col) { sheet.writeBlank(row, col, book.formatAt(0)); }},
    {"shared text, 100 different",
     [](auto&, Sheet& sheet, int row, int col) {
         sheet.writeString(row, col, numbered("text ", row % 10, col).c_str());
     }},
    {"shared text, all different",
     [](auto&, Sheet& sheet, int row, int col) { sheet.writeString(row, col, numbered("text ", row, col).c_str()); }},
    {"formula", [](auto&, Sheet& sheet, int row, int col) { sheet.writeFormulaNumber(row, col, "SUM(A1:B9)+1", 1.5); }},
};

double residentBytes() {
    std::ifstream status("/proc/self/statm");
    double whole = 0, resident = 0;
    status >> whole >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

double bytesOfBook(const Kind& kind, bool binary) {
    malloc_trim(0);
    const double before = residentBytes();
    auto* const book = binary ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>();
    Sheet& sheet = *book->addSheet("S");
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < columns; ++col) kind.write(*book, sheet, row, col);
    }
    const double after = residentBytes();
    book->release();
    return (after - before) / (rows * columns);
}

double bytesOfTable(bool texts) {
    malloc_trim(0);
    const double before = residentBytes();
    quillet::CsvTable table(nullptr, nullptr, 0);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < columns; ++col) {
            texts ? table.storeText(row, col, numbered("text ", row, col).c_str()) : table.storeNumber(row, col, row);
        }
    }
    return (residentBytes() - before) / (rows * columns);
}

}  // namespace

int main(int argc, char** argv) {
    nlohmann::ordered_json table = nlohmann::ordered_json::array();
    const auto tell = [&](const char* engine, const char* kind, double bytes) {
        std::printf("%-5s %-28s %6.0f bytes a cell\n", engine, kind, bytes);
        table.push_back({{"engine", engine}, {"kind", kind}, {"bytes", bytes}});
    };
    for (const bool binary : {true, false}) {
        for (const Kind& kind : kinds) tell(binary ? "xls" : "xlsx", kind.name, bytesOfBook(kind, binary));
    }
    tell("csv", "number", bytesOfTable(false));
    tell("csv", "text, all different", bytesOfTable(true));
    if (argc == 3 && std::string(argv[1]) == "--json") std::ofstream(argv[2]) << table.dump(1) << '\n';
    return 0;
}
