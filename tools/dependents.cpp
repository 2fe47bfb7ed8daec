// dependents FILE [SHEET ROW COLUMN]...: which formulas depend on a cell, as the command tells stale results by it.
// All numbers count from 0. A line for each cell and one for what cannot be told: [[sheet,column,first row,last], ...].
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <string>

#include "cli/explain/stale/dependency_index.h"
#include "cli/workbook/book_file.h"

namespace {

void print(const cli::explain::CellSet& cells) {
    std::string out = "[";
    for (const auto& [place, rows] : cells) {
        for (const auto& [first, last] : rows.runs()) {
            if (out.size() > 1) out += ',';
            const int numbers[] = {place.first, place.second, first, last};
            for (const int& number : numbers) {
                out.append(&number == numbers ? "[" : ",").append(std::to_string(number));
            }
            out.append("]");
        }
    }
    std::cout << out << "]\n";
}

}  // namespace

int main(int count, char** words) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::string error;
    const cli::BookPtr book = count > 1 ? cli::loadBook(words[1], error) : nullptr;
    if (!book) {
        std::cerr << (count > 1 ? error : "which file?") << '\n';
        return 2;
    }
    const cli::explain::DependencyIndex index(*book);
    print(index.unsure());
    for (int i = 2; i + 2 < count; i += 3) {
        cli::explain::CellSet changed;
        const int row = std::atoi(words[i + 1]);
        changed[{std::atoi(words[i]), std::atoi(words[i + 2])}].add({row, row});
        print(index.dependents(changed));
    }
}
