// bench_statements [--rows N] [--json FILE]: a statement of each layout over N rows of ten cells (100,000; of the .xls
// format 65,000), read and written through each driver on the reference host, and read on a host that stores nothing.
// Processor time of the statement with opening and closing its source, beside that of opening and closing alone.
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "refhost/operations/host.h"
#include "tests/support/script_runner.h"

namespace {

constexpr int columns = 10;

struct Layout {
    const char* name;
    const char* options;
    const char* declaration;  // with ROWS for the number of rows
    const char* range;
    int cellsOfRow;
};

constexpr Layout layouts[] = {
    {"index column", "", "declare A : dynamic array(range) of real", "[A:B]", 2},
    {"noindex", "noindex;", "declare A : array(1..ROWS, 1..10) of real", "[A:J]", 10},
    {"partndx", "partndx;", "declare A : dynamic array(range, 1..9) of real", "[A:J]", 10},
    {"autondx", "autondx;", "declare A : dynamic array(range) of real", "[B:B]", 1},
    {"dataframe", "dataframe;", "declare A : dynamic array(range, range) of real", "[A:J]", 10},
    {"list", "", "declare A : list of real", "[A:J]", 10},
};

double processorSeconds() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double valueAt(int row, int col) {
    return col == 0 ? row + 1 : row * 0.25 + col;
}

void writeText(const support::TempFolder& folder, int rows) {
    std::string text;
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < columns; ++col) {
            char number[32];
            const int length =
                std::snprintf(number, sizeof number, "%.15g%c", valueAt(row, col), col + 1 < columns ? ',' : '\n');
            text.append(number, static_cast<std::size_t>(length));
        }
    }
    folder.write("f.csv", text);
}

void writeBook(const support::TempFolder& folder, bool binary, int rows) {
    vellum::IBookT<char>* const book = binary ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>();
    vellum::ISheetT<char>* const sheet = book->addSheet("S");
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < columns; ++col) sheet->writeNumber(row, col, valueAt(row, col));
    }
    const bool saved = book->saveFile(folder.path(binary ? "f.xls" : "f.xlsx").c_str());
    book->release();
    if (!saved) throw std::runtime_error("the input cannot be written");
}

// --- A host that stores nothing
// ---------------------------------------------------------------------------------------

int storeNothing(HostContext*, HostArray*, const int*, HostValue*) {
    return 0;
}
int appendNothing(HostContext*, HostList*, HostType, HostValue, int) {
    return 0;
}
int addNothing(HostContext*, HostSet*, HostValue value, int* position) {
    *position = value.integer;
    return 0;
}

/// Gives the module, which keeps the table of its last start, another table of operations.
void start(const HostApi& api) {
    void* const module = dlopen(QUILLET_MODULE, RTLD_NOW | RTLD_NOLOAD);
    using Init = int (*)(const HostApi*, int*, int*, const void**);
    const auto init = module ? reinterpret_cast<Init>(dlsym(module, "quillet_init")) : nullptr;
    int interfaceVersion, moduleVersion;
    const void* block;
    if (!init || init(&api, &interfaceVersion, &moduleVersion, &block) != 0) throw std::runtime_error("no module");
}

const HostApi& nothingApi() {
    static const HostApi api = [] {
        HostApi changed = refhost::hostApiTable();
        changed.hostArrayStore = storeNothing;
        changed.hostListAppend = appendNothing;
        changed.hostSetAdd = addNothing;
        return changed;
    }();
    return api;
}

// ---------------------------------------------------------------------------------------------------------------------

std::string filled(std::string text, const std::string& what, const std::string& with) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at)) {
        text.replace(at, what.size(), with);
        at += with.size();
    }
    return text;
}

/// Seconds of a script, the quicker of two runs.
double timed(support::ScriptRunner& runner, const std::string& script) {
    double best = 0;
    for (int run = 0; run < 2; ++run) {
        const double begin = processorSeconds();
        const support::ScriptResult result = runner.run(script);
        const double took = processorSeconds() - begin;
        if (result.status != 0) throw std::runtime_error(script + "\n" + result.errors);
        best = run == 0 ? took : std::min(best, took);
    }
    return best;
}

void measure(support::ScriptRunner& runner, const std::string& driver, int rows, nlohmann::ordered_json& table) {
    const std::string source = driver + ":" + "f." + driver;
    const double opening = timed(runner, "open \"" + source + "\"\nclose \"" + source + "\"");
    for (const Layout& layout : layouts) {
        const std::string item = std::string("{ A VERB \"") + layout.options + layout.range + "\" }";
        const std::string read = filled(layout.declaration, "ROWS", std::to_string(rows)) + "\nread \"" + source +
                                 "\" " + filled(item, "VERB", "from") + "\n";
        const std::string write =
            "write \"" + driver + ":grow;out." + driver + "\" " + filled(item, "VERB", "to") + "\n";
        const double reading = timed(runner, read);
        start(nothingApi());
        const double unstored = timed(runner, read);
        start(refhost::hostApiTable());
        std::remove(runner.folder().path("out." + driver).c_str());
        const double both = timed(runner, read + write);
        std::remove(runner.folder().path("out." + driver).c_str());
        const double cells = static_cast<double>(rows) * layout.cellsOfRow;
        const double writing = std::max(both - reading, 0.0);
        std::printf(
            "%-5s %-13s %8.0f cells  load %6.3f s  read %6.3f s (%5.2f of loading; storing nothing %5.2f)  write %6.3f "
            "s\n",
            driver.c_str(), layout.name, cells, opening, reading, reading / opening, unstored / opening, writing);
        std::fflush(stdout);
        table.push_back({{"driver", driver},
                         {"layout", layout.name},
                         {"cells", cells},
                         {"load", opening},
                         {"read", reading},
                         {"readStoringNothing", unstored},
                         {"write", writing}});
    }
}

int run(int argc, char** argv) {
    int rows = 100'000;
    std::string json;
    for (int i = 1; i + 1 < argc; i += 2) {
        if (std::string(argv[i]) == "--rows") rows = std::max(std::atoi(argv[i + 1]), 10);
        if (std::string(argv[i]) == "--json") json = argv[i + 1];
    }
    nlohmann::ordered_json table = nlohmann::ordered_json::array();
    for (const std::string driver : {"csv", "xls", "xlsx"}) {
        const int most = driver == "xls" ? std::min(rows, 65'000) : rows;
        support::ScriptRunner runner;
        driver == "csv" ? writeText(runner.folder(), most) : writeBook(runner.folder(), driver == "xls", most);
        measure(runner, driver, most, table);
    }
    if (!json.empty()) std::ofstream(json) << table.dump(1) << '\n';
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 1;
    }
}
