// The table of the csv driver. Its tasks stand once, in the column of .xls.
#include "host/sources/csv_table.h"

#include "bench/growth/task.h"
#include "host/sources/csv_texts.h"

namespace growth {
namespace {

using quillet::CsvTable;

/// Stores a number for each step at the place that `rowAt` and `colAt` tell.
template <class RowAt, class ColAt>
bool fill(World& world, RowAt&& rowAt, ColAt&& colAt) {
    CsvTable table(nullptr, nullptr, 0);
    for (int i = 0; i < world.steps; ++i) {
        if (table.storeNumber(rowAt(i), colAt(i), i) < 0) return false;
    }
    return table.find(rowAt(0), colAt(0)).block != nullptr;
}

bool storeTexts(World& world, bool alike) {
    CsvTable table(nullptr, nullptr, 0);
    for (int i = 0; i < world.steps; ++i) {
        if (table.storeText(i, 0, numbered("a longer text ", alike ? 0 : i).c_str()) < 0) return false;
    }
    return true;
}

bool keepTexts(World& world, int different) {
    quillet::CsvTexts texts;
    for (int i = 0; i < world.steps; ++i) {
        const std::string text = numbered("a longer text ", i % different);
        char* kept = nullptr;
        const auto arriving = texts.note(text.data(), text.size(), &kept);
        if (!texts.keep(&arriving, 1)) return false;
    }
    return true;
}

constexpr Task tasks[] = {
    {"csv: rows in order",
     {noLimit, 0},
     nullptr,
     nullptr,
     [](World& w) {
         return fill(
             w, [](int i) { return i; }, [](int) { return 3; });
     }},
    {"csv: rows from the bottom up",
     {noLimit, 0},
     nullptr,
     nullptr,
     [](World& w) {
         return fill(
             w, [&](int i) { return w.steps - 1 - i; }, [](int) { return 3; });
     }},
    {"csv: rows, scattered",
     {noLimit, 0},
     nullptr,
     nullptr,
     [](World& w) {
         return fill(
             w, [&](int i) { return scattered(w, i); }, [](int) { return 3; });
     }},
    {"csv: rows of 100 columns, from the right",
     {noLimit, 0},
     nullptr,
     nullptr,
     [](World& w) {
         return fill(
             w, [](int i) { return i / 100; }, [](int i) { return 99 - i % 100; });
     }},
    {"csv: one row, to the right",
     {noLimit, 0},
     nullptr,
     nullptr,
     [](World& w) {
         return fill(
             w, [](int) { return 0; }, [](int i) { return i; });
     }},
    {"csv: one row, scattered",
     {16'000, 0},
     nullptr,
     nullptr,
     [](World& w) {
         return fill(
             w, [](int) { return 0; }, [&](int i) { return scattered(w, i); });
     }},
    {"csv: texts", {noLimit, 0}, nullptr, nullptr, [](World& w) { return storeTexts(w, false); }},
    {"csv: texts, all alike", {noLimit, 0}, nullptr, nullptr, [](World& w) { return storeTexts(w, true); }},
    {"csv: loaded texts, all different",
     {noLimit, 0},
     nullptr,
     nullptr,
     [](World& w) { return keepTexts(w, noLimit); }},
    {"csv: loaded texts, 1,000 different", {noLimit, 0}, nullptr, nullptr, [](World& w) { return keepTexts(w, 1000); }},
};

}  // namespace

std::span<const Task> csvTasks() {
    return tasks;
}

}  // namespace growth
