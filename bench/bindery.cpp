// A worksheet part of 100,000 rows of 10 numbers, half integers, half reals of 15 digits. The environment variable
// QUILLET_BENCH_PART names another part to take in its place.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "bindery/binderyparse/reader.h"
#include "bindery/writer/xml_writer.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"

#ifdef HAVE_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

using Reader = bindery::c_keeping_reader<bindery::c_xml_reader_memory>;

std::string madePart() {
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetData>";
    char value[32];
    for (int row = 1; row <= 100000; ++row) {
        out += "<row r=\"" + std::to_string(row) + "\" spans=\"1:10\">";
        for (int column = 0; column < 10; ++column) {
            if (column % 2 == 0)
                std::snprintf(value, sizeof value, "%d", (row * 7919 + column) % 1000000);
            else
                std::snprintf(value, sizeof value, "%.15g", row * 0.0123456789012345 + column);
            out += "<c r=\"";
            out += static_cast<char>('A' + column);
            out += std::to_string(row) + "\"><v>" + value + "</v></c>";
        }
        out += "</row>";
    }
    return out + "</sheetData></worksheet>";
}

const std::string& part() {
    static const std::string text = [] {
        const char* name = std::getenv("QUILLET_BENCH_PART");
        if (name == nullptr) return madePart();
        std::ifstream file(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }();
    return text;
}

double inUseMiB() {
    return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd) / (1024.0 * 1024.0);
}

void read(benchmark::State& state) {
    const std::string& text = part();
    double tree = 0;
    for (auto _ : state) {
        const double before = inUseMiB();
        sheet::c_worksheet root;
        Reader reader(text.data(), text.size());
        if (root.unmarshal(reader) != 0) state.SkipWithError("the part does not load");
        tree = inUseMiB() - before;
    }
    state.counters["tree_MiB"] = tree;
    state.counters["part_MiB"] = static_cast<double>(text.size()) / (1024.0 * 1024.0);
}
BENCHMARK(read)->Unit(benchmark::kMillisecond);

void write(benchmark::State& state) {
    const std::string& text = part();
    sheet::c_worksheet root;
    Reader reader(text.data(), text.size());
    if (root.unmarshal(reader) != 0) state.SkipWithError("the part does not load");
    for (auto _ : state) {
        std::size_t size = 0;
        bindery::c_keeping_writer writer([&](std::string_view piece) {
            size += piece.size();
            return true;
        });
        if (root.marshal(writer) != 0) state.SkipWithError("the part does not save");
        benchmark::DoNotOptimize(size);
    }
}
BENCHMARK(write)->Unit(benchmark::kMillisecond);

#ifdef HAVE_PUGIXML
void treeParser(benchmark::State& state) {
    const std::string& text = part();
    double tree = 0;
    for (auto _ : state) {
        const double before = inUseMiB();
        pugi::xml_document document;
        if (!document.load_buffer(text.data(), text.size())) state.SkipWithError("the part does not parse");
        tree = inUseMiB() - before;
    }
    state.counters["tree_MiB"] = tree;
}
BENCHMARK(treeParser)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
