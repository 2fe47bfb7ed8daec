// Formulas of a binary workbook:
//   bench_formulas write COUNT OUT | read IN
// `write` makes that many of three kinds in turn, `read` asks for the text of each. Both print the processor
// seconds of this part alone, without loading and saving.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <stdexcept>
#include <string>

#include "cli/workbook/book_file.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

constexpr int rowsPerSheet = 65536, columnsOfNumbers = 2;

class Clock {
public:
    [[nodiscard]] double seconds() const { return static_cast<double>(std::clock() - _start) / CLOCKS_PER_SEC; }

private:
    std::clock_t _start = std::clock();
};

void write(long count, const char* out) {
    const cli::BookPtr book(vellum::vlCreateBook<char>());
    book->setLocale("UTF-8.comma");
    auto* const sheet = book->addSheet("Sheet1");
    book->addSheet("Sheet2");
    const Clock clock;
    for (long i = 0; i < count; ++i) {
        const int row = static_cast<int>(i % rowsPerSheet);
        const int col = columnsOfNumbers + static_cast<int>(i / rowsPerSheet);
        const std::string at = std::to_string(row + 1);
        std::string text;
        switch (i % 3) {
            case 0:
                text = "A" + at + "*B" + at + "+SUM(A" + at + ":B" + at + ")/2";
                break;
            case 1:
                text = "IF(A" + at + ">10,ROUND(B" + at + "/3,2),\"none\")";
                break;
            default:
                text = "Sheet2!A" + at + "&\"x\"";
                break;
        }
        if (!sheet->writeFormula(row, col, text.c_str())) throw std::runtime_error(book->errorMessage());
    }
    std::printf("wrote %ld formulas in %.3f s\n", count, clock.seconds());
    if (!book->saveFile(out)) throw std::runtime_error(book->errorMessage());
    std::printf("with saving %.3f s\n", clock.seconds());
}

void read(const char* in) {
    std::string error;
    const cli::BookPtr book = cli::loadBook(in, error);
    if (!book) throw std::runtime_error(error);
    const Clock clock;
    long formulas = 0;
    std::size_t characters = 0;
    for (int i = 0; i < book->sheetCount(); ++i) {
        auto* const sheet = book->getSheet(i);
        auto* const walk = dynamic_cast<vellum::ISheetCells*>(sheet);
        if (walk == nullptr) continue;
        for (int row = 0, col = 0; walk->cellFrom(&row, &col); ++col) {
            if (!sheet->isFormulaCell(row, col)) continue;
            const char* const text = sheet->readFormula(row, col);
            characters += text == nullptr ? 0 : std::strlen(text);
            ++formulas;
        }
    }
    std::printf("read %ld formulas of %zu characters in %.3f s\n", formulas, characters, clock.seconds());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 4 && std::strcmp(argv[1], "write") == 0) return write(std::atol(argv[2]), argv[3]), 0;
        if (argc == 3 && std::strcmp(argv[1], "read") == 0) return read(argv[2]), 0;
        std::fputs("bench_formulas write COUNT OUT | read IN\n", stderr);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "bench_formulas: %s\n", e.what());
    }
    return 2;
}
