// Statements of the drivers on the reference host: rows, items and sources by the thousand.
#include <algorithm>

#include "bench/growth/task.h"
#include "tests/support/script_runner.h"

namespace growth {
namespace {

/// A folder with the world's saved book, where scripts name it FILE.
class Model {
public:
    explicit Model(const World& world) : _source(world.binary ? "xls:f.xls" : "xlsx:f.xlsx") {
        _runner.folder().write(world.binary ? "f.xls" : "f.xlsx", world.text);
    }

    bool run(std::string script) {
        for (auto at = script.find("FILE"); at != std::string::npos; at = script.find("FILE", at)) {
            script.replace(at, 4, _source);
        }
        return _runner.run(script).status == 0;
    }

private:
    support::ScriptRunner _runner;
    std::string _source;
};

void keepSaved(World& world) {
    const char* data;
    std::size_t size;
    if (world.book->saveMemory(&data, &size)) world.text.assign(data, size);
}

void saveRows(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.sheet->writeNumber(i, 0, i + 1);
        world.sheet->writeNumber(i, 1, i * 0.5);
    }
    keepSaved(world);
}

/// A thousand rows, and one cell that lies the farther off the more steps there are.
void saveWithStrayCell(World& world) {
    for (int i = 0; i < 1000; ++i) world.sheet->writeNumber(i, 0, i);
    world.sheet->writeNumber(world.steps, std::min(world.steps / 10, world.cols - 1), 1);
    keepSaved(world);
}

bool readRows(World& world) {
    return Model(world).run(R"(declare A : dynamic array(range) of real
                               read "FILE" { A from "[A:B]" })");
}

bool readList(World& world) {
    return Model(world).run(R"(declare L : list of real
                               read "FILE" { L from "[]" })");
}

bool writeList(World& world) {
    return Model(world).run(R"(declare L : list of real
                               read "FILE" { L from "[]" }
                               write "FILE" { L to "grow;[D1:D1]" })");
}

bool readItems(World& world) {
    std::string script = "declare x : real\nread \"FILE\" { ";
    for (int i = 1; i <= world.steps; ++i) script += numbered(i > 1 ? ", x from \"[B" : "x from \"[B", i) + "]\"";
    return Model(world).run(script + " }");
}

bool readStatements(World& world) {
    std::string script = "declare x : real\nopen \"FILE\"\n";
    for (int i = 1; i <= world.steps; ++i) script += numbered("read \"FILE\" { x from \"[B", i) + "]\" }\n";
    return Model(world).run(script + "close \"FILE\"");
}

bool writeStatements(World& world) {
    std::string script = "declare x : real = 1.5\nopen \"FILE\" update\n";
    for (int i = 1; i <= world.steps; ++i) script += numbered("write \"FILE\" { x to \"[C", i) + "]\" }\n";
    return Model(world).run(script + "close \"FILE\"");
}

/// So many sources open at once, each a text file of its own.
bool openSources(World& world) {
    support::ScriptRunner runner;
    std::string script;
    for (int i = 0; i < world.steps; ++i) script += numbered("open \"csv:f", i) + ".csv\" update\n";
    return runner.run(script).status == 0;
}

constexpr int rows = 65'000, scriptLines = 10'000;

constexpr Task tasks[] = {
    {"read rows into an array", {rows, 1'000'000}, nullptr, saveRows, readRows},
    {"read rows into a list", {rows, 1'000'000}, nullptr, saveRows, readList},
    {"write a list", {30'000, 500'000}, nullptr, saveRows, writeList},
    {"read beside a stray cell", {60'000, 1'000'000}, nullptr, saveWithStrayCell, readList},
    {"items of a statement", {scriptLines, scriptLines}, nullptr, saveRows, readItems},
    {"statements that read", {scriptLines, scriptLines}, nullptr, saveRows, readStatements},
    {"statements that write", {scriptLines, scriptLines}, nullptr, saveRows, writeStatements},
    {"sources open at once", {2'000, 0}, nullptr, nullptr, openSources},
};

}  // namespace

std::span<const Task> statementTasks() {
    return tasks;
}

}  // namespace growth
