// Orders in which cells come, and what belongs to whole rows and columns.
#include "bench/growth/task.h"

namespace growth {
namespace {

constexpr Task tasks[] = {
    {"row by row, ten columns",
     {650'000, noLimit},
     [](World& w, int i) { return w.sheet->writeNumber(i / 10, i % 10, i); }},
    {"rows from the bottom up",
     {65'000, noLimit},
     [](World& w, int i) { return w.sheet->writeNumber(w.steps - 1 - i, 0, i); }},
    {"rows, scattered", {65'000, noLimit}, [](World& w, int i) { return w.sheet->writeNumber(scattered(w, i), 0, i); }},
    {"rows far apart", {3'000, 30'000}, [](World& w, int i) { return w.sheet->writeNumber(i * 20, i % w.cols, i); }},
    {"columns from the right, row by row",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeNumber(i / 250, 249 - i % 250, i); }},
    {"columns from the right, column by column",
     {noLimit, noLimit},
     [](World& w, int i) {
         const int rows = (w.steps + 249) / 250;
         return w.sheet->writeNumber(i % rows, 249 - i / rows, i);
     }},
    {"full width rows",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeNumber(i / w.cols, i % w.cols, i); }},
    {"set row", {65'000, noLimit}, [](World& w, int i) { return w.sheet->setRow(i, 20 + i % 5); }},
    {"set row, from the bottom up",
     {65'000, noLimit},
     [](World& w, int i) { return w.sheet->setRow(w.steps - 1 - i, 20 + i % 5); }},
    {"hide row", {65'000, noLimit}, [](World& w, int i) { return w.sheet->setRowHidden(i, true); }},
    {"height of a row",
     {65'000, noLimit},
     [](World& w, int i) { return w.sheet->rowHeight(i) > 0; },
     [](World& w) {
         for (int i = 0; i < w.steps; ++i) w.sheet->setRow(i, 20);
     }},
    {"group row", {65'000, noLimit}, [](World& w, int i) { return w.sheet->groupRowRange(i, i, false); }},
    {"set column", {250, 16'000}, [](World& w, int i) { return w.sheet->setColumn(i, i, 5 + i % 20); }},
    {"set column, from the right",
     {250, 16'000},
     [](World& w, int i) { return w.sheet->setColumn(w.steps - 1 - i, w.steps - 1 - i, 5 + i % 20); }},
    {"width of a column",
     {250, 16'000},
     [](World& w, int i) { return w.sheet->columnWidth(i) > 0; },
     [](World& w) {
         for (int i = 0; i < w.steps; ++i) w.sheet->setColumn(i, i, 5 + i % 20);
     }},
    {"hide column", {250, 16'000}, [](World& w, int i) { return w.sheet->setColumnHidden(i, true); }},
    {"group column", {250, 16'000}, [](World& w, int i) { return w.sheet->groupColumnRange(i, i, false); }},
    {"insert a row at the top", {10'000, 10'000}, [](World& w, int) { return w.sheet->insertRows(0, 0); }, fillNumbers},
    {"insert a row at the end",
     {30'000, 30'000},
     [](World& w, int i) { return w.sheet->insertRows(w.steps + i, w.steps + i); },
     fillNumbers},
    {"remove a row at the top", {10'000, 10'000}, [](World& w, int) { return w.sheet->removeRows(0, 0); }, fillNumbers},
    {"remove the last row",
     {30'000, 30'000},
     [](World& w, int i) { return w.sheet->removeRows(w.steps - 1 - i, w.steps - 1 - i); },
     fillNumbers},
    {"first and last row",
     {noLimit, noLimit},
     [](World& w, int) { return w.sheet->lastRow() > w.sheet->firstRow(); },
     fillNumbers},
    {"first and last filled row and column",
     {noLimit, noLimit},
     [](World& w, int) { return w.sheet->lastFilledRow() + w.sheet->lastFilledColumn() > 0; },
     fillNumbers},
    {"cell address to text",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->formatCellAddress(rowOf(w, i), colOf(w, i)) != nullptr; }},
};

}  // namespace

std::span<const Task> rowTasks() {
    return tasks;
}

}  // namespace growth
