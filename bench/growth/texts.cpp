// Texts: new ones, the same ones, ones that begin alike, long and rich ones.
#include "bench/growth/task.h"

namespace growth {
namespace {

constexpr char prefix[] =
    "a prefix that all of these texts have, so that a comparison of two of them goes far into them, ";

void fillRich(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        auto* const rich = world.book->newRichString();
        rich->addRun("first ", nullptr);
        rich->addRun(numbered("second ", i % 1000).c_str(), world.book->fontAt(0));
        world.sheet->writeRichText(rowOf(world, i), colOf(world, i), rich);
    }
}

constexpr Task tasks[] = {
    {"text, all different",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeString(rowOf(w, i), colOf(w, i), numbered("text ", i).c_str()); }},
    {"text, all alike",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeString(rowOf(w, i), colOf(w, i), "always this text"); }},
    {"text in the cell",
     {noLimit, noLimit},
     [](World& w, int i) {
         return w.sheet->writeString(rowOf(w, i), colOf(w, i), numbered("text ", i).c_str(), nullptr, 1);
     }},
    {"text with a common beginning",
     {200'000, 200'000},
     [](World& w, int i) { return w.sheet->writeString(rowOf(w, i), colOf(w, i), numbered(prefix, i).c_str()); }},
    {"text beyond ASCII",
     {noLimit, noLimit},
     [](World& w, int i) {
         return w.sheet->writeString(rowOf(w, i), colOf(w, i), numbered("\xC3\xA9\xE2\x82\xAC ", i).c_str());
     }},
    {"text of 32,767 characters",
     {2'000, 2'000},
     [](World& w, int i) { return w.sheet->writeString(rowOf(w, i), 0, numbered(w.text.c_str(), 10'000 + i).c_str()); },
     [](World& w) { w.text.assign(32'762, 'x'); }},
    {"text over a text",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeString(rowOf(w, i), colOf(w, i), numbered("other ", i).c_str()); },
     fillTexts},
    {"one cell again and again",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->writeString(0, 0, numbered("text ", i).c_str()); }},
    {"read text",
     {noLimit, noLimit},
     [](World& w, int i) { return w.sheet->readString(rowOf(w, i), colOf(w, i)) != nullptr; },
     fillTexts},
    {"read text, scattered",
     {noLimit, noLimit},
     [](World& w, int i) {
         const int at = scattered(w, i);
         return w.sheet->readString(rowOf(w, at), colOf(w, at)) != nullptr;
     },
     fillTexts},
    {"rich text",
     {100'000, 100'000},
     [](World& w, int i) {
         auto* const rich = w.book->newRichString();
         rich->addRun("first ", nullptr);
         rich->addRun(numbered("second ", i).c_str(), w.book->fontAt(0));
         return w.sheet->writeRichText(rowOf(w, i), colOf(w, i), rich);
     }},
    {"read rich text",
     {100'000, 100'000},
     [](World& w, int i) { return w.sheet->readRichText(rowOf(w, i), colOf(w, i)) != nullptr; },
     fillRich},
    {"is a rich text",
     {100'000, 100'000},
     [](World& w, int i) { return w.sheet->isRichTextCell(rowOf(w, i), colOf(w, i)); },
     fillRich},
    {"run of a rich text",
     {4'000, 4'000},
     [](World& w, int) { return w.rich->addRun("run ", w.book->fontAt(0)); },
     [](World& w) { w.rich = w.book->newRichString(); }},
};

}  // namespace

std::span<const Task> textTasks() {
    return tasks;
}

}  // namespace growth
