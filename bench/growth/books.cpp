// Sheets of a book, and whole books.
#include "bench/growth/task.h"

namespace growth {
namespace {

constexpr int sheets = 8'000;

void addSheets(World& world) {
    for (int i = 1; i <= world.steps; ++i) world.book->addSheet(numbered("sheet ", i).c_str());
}

/// The saved book in `text`.
void saveNumbers(World& world) {
    fillNumbers(world);
    const char* data;
    std::size_t size;
    world.book->saveMemory(&data, &size);
    world.text.assign(data, size);
}

void saveTexts(World& world) {
    fillTexts(world);
    const char* data;
    std::size_t size;
    world.book->saveMemory(&data, &size);
    world.text.assign(data, size);
}

bool save(World& w) {
    const char* data;
    std::size_t size;
    return w.book->saveMemory(&data, &size);
}

bool load(World& w) {
    return w.book->loadMemory(w.text.data(), w.text.size());
}

constexpr Task tasks[] = {
    {"add sheet",
     {sheets, sheets},
     [](World& w, int i) { return w.book->addSheet(numbered("sheet ", i).c_str()) != nullptr; }},
    {"insert sheet in front",
     {sheets, sheets},
     [](World& w, int i) { return w.book->insertSheet(0, numbered("sheet ", i).c_str()) != nullptr; }},
    {"sheet by number", {sheets, sheets}, [](World& w, int i) { return w.book->getSheet(i) != nullptr; }, addSheets},
    {"name of a sheet", {sheets, sheets}, [](World& w, int i) { return w.book->sheetNameAt(i) != nullptr; }, addSheets},
    {"rename sheet",
     {sheets, sheets},
     [](World& w, int i) { return w.book->getSheet(i)->setSheetName(numbered("renamed ", i).c_str()); },
     addSheets},
    {"move sheet to the front",
     {sheets, sheets},
     [](World& w, int) { return w.book->moveSheet(w.steps, 0); },
     addSheets},
    {"remove the last sheet",
     {sheets, sheets},
     [](World& w, int i) { return w.book->removeSheet(w.steps - i); },
     addSheets},
    {"remove the first sheet", {sheets, sheets}, [](World& w, int) { return w.book->removeSheet(0); }, addSheets},
    {"save numbers", {noLimit, noLimit}, nullptr, fillNumbers, save},
    {"load numbers", {noLimit, noLimit}, nullptr, saveNumbers, load},
    {"save texts", {noLimit, noLimit}, nullptr, fillTexts, save},
    {"load texts", {noLimit, noLimit}, nullptr, saveTexts, load},
    {"save sheets", {sheets, sheets}, nullptr, addSheets, save},
    {"date to number",
     {noLimit, noLimit},
     [](World& w, int i) { return w.book->datePack(2000 + i % 50, 1 + i % 12, 1) > 0; }},
};

}  // namespace

std::span<const Task> bookTasks() {
    return tasks;
}

}  // namespace growth
