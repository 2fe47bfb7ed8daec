// What a sheet holds beside cells: merged blocks, breaks, links, names, comments, rules.
#include "bench/growth/task.h"

namespace growth {
namespace {

constexpr int halfRows = 30'000;  // blocks of two rows in a sheet of the binary format

void merge(World& world) {
    for (int i = 0; i < world.steps; ++i) world.sheet->addMerge(2 * i, 2 * i + 1, 0, 1);
}

void link(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.sheet->addHyperlink(numbered("http://example.org/", i).c_str(), i, i, 0, 0);
    }
}

void name(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.sheet->setNamedRangeByName(numbered("name_", i).c_str(), i, i, 0, 0);
    }
}

void breakRows(World& world) {
    for (int i = 0; i < world.steps; ++i) world.sheet->setRowBreak(i + 1);
}

void comment(World& world) {
    for (int i = 0; i < world.steps; ++i) world.sheet->writeComment(i, 0, "a comment", "author", 100, 50);
}

bool findMerge(World& w, int i) {
    int a, b, c, d;
    return w.sheet->mergeAt(2 * i, 1, &a, &b, &c, &d);
}

bool listMerge(World& w, int i) {
    int a, b, c, d;
    return w.sheet->mergeByIndex(i, &a, &b, &c, &d);
}

bool listLink(World& w, int i) {
    int a, b, c, d;
    return w.sheet->hyperlinkAt(i, &a, &b, &c, &d) != nullptr;
}

bool listName(World& w, int i) {
    int a, b, c, d;
    return w.sheet->namedRange(i, &a, &b, &c, &d) != nullptr;
}

bool findName(World& w, int i) {
    int a, b, c, d;
    return w.sheet->namedRangeByName(numbered("name_", i).c_str(), &a, &b, &c, &d);
}

constexpr Task tasks[] = {
    {"merge", {halfRows, 500'000}, [](World& w, int i) { return w.sheet->addMerge(2 * i, 2 * i + 1, 0, 1); }},
    {"find merged block", {halfRows, 500'000}, findMerge, merge},
    {"merged block by number", {halfRows, 500'000}, listMerge, merge},
    {"unmerge at a cell", {halfRows, 100'000}, [](World& w, int i) { return w.sheet->removeMergeAt(2 * i, 0); }, merge},
    {"unmerge the last by number",
     {halfRows, 100'000},
     [](World& w, int i) { return w.sheet->removeMergeByIndex(w.steps - 1 - i); },
     merge},
    {"unmerge the first by number",
     {halfRows, 100'000},
     [](World& w, int) { return w.sheet->removeMergeByIndex(0); },
     merge},
    {"row break", {1'000, 100'000}, [](World& w, int i) { return w.sheet->setRowBreak(i + 1); }},
    {"row break by number",
     {1'000, 100'000},
     [](World& w, int i) { return w.sheet->rowBreakAt(i) == i + 1; },
     breakRows},
    {"remove row break",
     {1'000, 100'000},
     [](World& w, int i) { return w.sheet->setRowBreak(i + 1, false); },
     breakRows},
    {"link",
     {60'000, 100'000},
     [](World& w, int i) { return w.sheet->addHyperlink(numbered("http://example.org/", i).c_str(), i, i, 0, 0); }},
    {"link by number", {60'000, 100'000}, listLink, link},
    {"remove the last link",
     {60'000, 100'000},
     [](World& w, int i) { return w.sheet->removeHyperlinkAt(w.steps - 1 - i); },
     link},
    {"remove the first link", {60'000, 100'000}, [](World& w, int) { return w.sheet->removeHyperlinkAt(0); }, link},
    {"name",
     {30'000, 100'000},
     [](World& w, int i) { return w.sheet->setNamedRangeByName(numbered("name_", i).c_str(), i, i, 0, 0); }},
    {"name by text", {30'000, 100'000}, findName, name},
    {"name by number", {30'000, 100'000}, listName, name},
    {"remove name",
     {30'000, 100'000},
     [](World& w, int i) { return w.sheet->removeNamedRange(numbered("name_", i).c_str()); },
     name},
    {"comment",
     {30'000, 0},
     [](World& w, int i) { return w.sheet->writeComment(i, 0, "a comment", "author", 100, 50); }},
    {"read comment", {30'000, 0}, [](World& w, int i) { return w.sheet->readComment(i, 0) != nullptr; }, comment},
    {"remove comment", {30'000, 0}, [](World& w, int i) { return w.sheet->removeComment(i, 0); }, comment},
    {"ignored error", {30'000, 100'000}, [](World& w, int i) { return w.sheet->addIgnoredErrorRange(i, 0, i, 0, 1); }},
    {"validation rule",
     {0, 100'000},
     [](World& w, int i) { return w.sheet->addValidationRule(1, 0, i, i, 0, 0, "1", "2"); }},
};

}  // namespace

std::span<const Task> featureTasks() {
    return tasks;
}

}  // namespace growth
