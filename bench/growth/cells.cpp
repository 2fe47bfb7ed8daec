// Cells of all kinds, one after the other.
#include "bench/growth/task.h"
#include "engine/api/enums.h"

namespace growth {
namespace {

void makeFormats(World& world) {
    for (int i = 0; i < 4; ++i) {
        world.formats.push_back(world.book->newFormat());
        world.formats.back()->setNumFormat(i);
    }
}

void fillFormulas(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.sheet->writeFormula(rowOf(world, i), colOf(world, i), "SUM($A$1:$B$9)+1");
    }
}

void fillWithFormats(World& world) {
    makeFormats(world);
    fillNumbers(world);
}

constexpr Task tasks[] = {
    {"number", {noLimit, noLimit}, [](World& w, int i) { return w.sheet->writeNumber(rowOf(w, i), colOf(w, i), i); }},
    {"number over a number",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeNumber(rowOf(w, i), colOf(w, i), -i); },
     fillNumbers},
    {"number over a text",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeNumber(rowOf(w, i), colOf(w, i), -i); },
     fillTexts},
    {"boolean",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeBool(rowOf(w, i), colOf(w, i), i % 2 != 0); }},
    {"error", {noLimit, noLimit}, [](World& w, int i) { return w.sheet->writeError(rowOf(w, i), colOf(w, i), 7); }},
    {"blank",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeBlank(rowOf(w, i), colOf(w, i), w.formats[i % 4U]); },
     makeFormats},
    {"formula",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeFormula(rowOf(w, i), colOf(w, i), "SUM($A$1:$B$9)+1"); }},
    {"formula with number",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeFormulaNumber(rowOf(w, i), colOf(w, i), "A1*2", i); }},
    {"formula with text",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeFormulaText(rowOf(w, i), colOf(w, i), "A1&\"x\"", "value"); }},
    {"formula over a formula",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeFormula(rowOf(w, i), colOf(w, i), "A1+1"); },
     fillFormulas},
    {"read number",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->readNumber(rowOf(w, i), colOf(w, i)) == i * 0.5; },
     fillNumbers},
    {"read number, scattered",
     {noLimit, noLimit},
     [](World& w, int i) {
         const int at = scattered(w, i);
         return w.sheet->readNumber(rowOf(w, at), colOf(w, at)) == at * 0.5;
     },
     fillNumbers},
    {"kind of a cell",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->cellType(rowOf(w, i), colOf(w, i)) == vellum::cellNumber; },
     fillNumbers},
    {"is a date",
     {noLimit, noLimit},
     [](World& w, int i) { return !w.sheet->isDate(rowOf(w, i), colOf(w, i)); },
     fillNumbers},
    {"read formula",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->readFormula(rowOf(w, i), colOf(w, i)) != nullptr; },
     fillFormulas},
    {"format of a cell",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->cellFormatAt(rowOf(w, i), colOf(w, i)) != nullptr; },
     fillNumbers},
    {"set format of a cell",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->setCellFormatAt(rowOf(w, i), colOf(w, i), w.formats[i % 4U]); },
     fillWithFormats},
    {"copy a cell",
     {500'000, 500'000},
     [](World& w, int i) { return w.sheet->copyCell(rowOf(w, i), colOf(w, i), rowOf(w, i), colOf(w, i) + 100); },
     fillTexts},
    {"clear a cell",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->clearRange(rowOf(w, i), rowOf(w, i), colOf(w, i), colOf(w, i)); },
     fillTexts},
    {"clear cells, scattered",
     {noLimit, noLimit},
     [](World& w, int i) {
         const int at = scattered(w, i);
         return w.sheet->clearRange(rowOf(w, at), rowOf(w, at), colOf(w, at), colOf(w, at));
     },
     fillNumbers},
    {"next cell",
     {noLimit, noLimit},
     nullptr,
     fillNumbers,
     [](World& w) {
         auto* const cells = dynamic_cast<vellum::ISheetCells*>(w.sheet);
         int count = 0;
         for (int row = 0, col = 0; cells->cellFrom(&row, &col); ++col) ++count;
         return count == w.steps;
     }},
};

}  // namespace

std::span<const Task> cellTasks() {
    return tasks;
}

}  // namespace growth
