// What bench_growth repeats: operations of books, sheets, formats, texts and drivers.
#pragma once
#include <span>
#include <string>
#include <vector>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "engine/api/isheet.h"

namespace growth {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;
using Format = vellum::IFormatT<char>;

/// A new book with one sheet, and what a task keeps beside it.
struct World {
    World(bool isBinary, int stepCount);

    bool binary;
    int steps;
    cli::BookPtr book;
    Sheet* sheet;
    std::vector<Format*> formats;
    std::vector<int> ids;
    vellum::IRichStringT<char>* rich = nullptr;
    std::string text;
    int rows, cols;  // of a sheet of the format
};

constexpr int noLimit = 1'000'000;

/// An operation, and how often it can be repeated. `prepare` is not timed; `step` is done for 0 to steps - 1, and
/// answers false when the operation failed; `all` stands for all steps where these are one call.
struct Task {
    const char* name;
    int most[2];  // of .xls and .xlsx; 0: there is none
    bool (*step)(World&, int);
    void (*prepare)(World&) = nullptr;
    bool (*all)(World&) = nullptr;
};

std::span<const Task> cellTasks();
std::span<const Task> textTasks();
std::span<const Task> rowTasks();
std::span<const Task> featureTasks();
std::span<const Task> pictureTasks();
std::span<const Task> bookTasks();
std::span<const Task> formatTasks();
std::span<const Task> csvTasks();
std::span<const Task> statementTasks();

/// The i-th cell, column after column when the rows do not suffice.
inline int rowOf(const World& world, int i) {
    return i % world.rows;
}
inline int colOf(const World& world, int i) {
    return i / world.rows;
}
/// The i-th of the steps in an order that jumps about.
inline int scattered(const World& world, int i) {
    return static_cast<int>(i * 7919LL % world.steps);
}

std::string numbered(const char* head, int i);

/// Numbers in the cells of all steps.
void fillNumbers(World& world);
void fillTexts(World& world);

}  // namespace growth
