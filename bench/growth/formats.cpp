// Formats, fonts and number formats.
#include "bench/growth/task.h"

namespace growth {
namespace {

constexpr int formatsInBook[] = {4'000, 60'000};
constexpr int fontsInBook[] = {500, 30'000};

void addFormats(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.formats.push_back(world.book->newFormat());
        if (world.formats.back()) world.formats.back()->setIndent(i % 15);
    }
}

void addFonts(World& world) {
    for (int i = 0; i < world.steps; ++i) world.book->newFont();
}

void addNumberFormats(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.ids.push_back(world.book->newCustomNumFormat(numbered("0.0\" unit \"0", i).c_str()));
    }
}

constexpr Task tasks[] = {
    {"format", {formatsInBook[0], formatsInBook[1]}, [](World& w, int) { return w.book->newFormat() != nullptr; }},
    {"format, all different",
     {formatsInBook[0], formatsInBook[1]},
     [](World& w, int i) {
         Format* const format = w.book->newFormat();
         if (!format) return false;
         format->setNumFormat(i % 40);
         format->setIndent(i / 40 % 15);
         format->setRotation(i / 600 % 90);
         return true;
     }},
    {"format by number",
     {formatsInBook[0], formatsInBook[1]},
     [](World& w, int i) { return w.book->formatAt(i) != nullptr; },
     addFormats},
    {"cell in a format of its own",
     {formatsInBook[0], formatsInBook[1]},
     [](World& w, int i) { return w.sheet->writeNumber(i, 0, i, w.formats[static_cast<std::size_t>(i)]); },
     addFormats},
    {"one format changed again and again",
     {noLimit, noLimit},
     [](World& w, int i) {
         Format* const format = w.book->formatAt(0);
         format->setIndent(i % 15);
         return format->indent() == i % 15;
     }},
    {"font", {fontsInBook[0], fontsInBook[1]}, [](World& w, int) { return w.book->newFont() != nullptr; }},
    {"font, all different",
     {fontsInBook[0], fontsInBook[1]},
     [](World& w, int i) {
         auto* const font = w.book->newFont();
         if (!font) return false;
         font->setSize(1 + i % 400);
         return font->setName(numbered("Face ", i).c_str());
     }},
    {"font by number",
     {fontsInBook[0], fontsInBook[1]},
     [](World& w, int i) { return w.book->fontAt(i) != nullptr; },
     addFonts},
    {"number format",
     {220, 220},
     [](World& w, int i) { return w.book->newCustomNumFormat(numbered("0.0\" unit \"0", i).c_str()) > 0; }},
    {"number format by number",
     {220, 220},
     [](World& w, int i) { return w.book->customNumFormatText(w.ids[static_cast<std::size_t>(i)]) != nullptr; },
     addNumberFormats},
};

}  // namespace

std::span<const Task> formatTasks() {
    return tasks;
}

}  // namespace growth
