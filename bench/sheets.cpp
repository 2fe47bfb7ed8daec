// Memory of a binary workbook of many small sheets:
//   bench_sheets make COUNT OUT | load IN
// `make` writes sheets of one cell each, in as few bytes as the format allows. `load` prints what a load, the reading
// of every cell and a save take at their peak, as a multiple of the file. Each is measured in this one process, so the
// later figures include the earlier ones.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>

#include "biff/container/memory_stream.h"
#include "biff/container/record_ids.h"
#include "biff/container/xls.h"
#include "biff/records/bof.h"
#include "cli/workbook/book_file.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using namespace vellum;

void writeBof(Xls& out, std::uint16_t kind) {
    out.out().putAll(record_id::Bof, std::uint16_t{16}, std::uint16_t{0x0600}, kind, std::uint32_t{0}, std::uint32_t{0},
                     std::uint32_t{6});
}

void make(long count, const char* path) {
    MemoryStream stream;
    Xls out;
    out.setStream(&stream);
    writeBof(out, 5);
    for (long i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        const auto cch = static_cast<std::uint8_t>(name.size());
        out.out().putAll(record_id::BoundSheet8, static_cast<std::uint16_t>(8 + cch), std::uint32_t{0},
                         std::uint16_t{0}, cch, std::uint8_t{0});
        out.writeBytes(std::as_bytes(std::span(name)));
    }
    out.writeRecordHeader(record_id::Eof, 0);
    for (long i = 0; i < count; ++i) {
        writeBof(out, Bof::worksheet);
        out.out().putAll(record_id::RK, std::uint16_t{10}, std::uint16_t{0}, std::uint16_t{0}, std::uint16_t{0},
                         static_cast<std::uint32_t>(i << 2 | 2));
        out.writeRecordHeader(record_id::Eof, 0);
    }
    out.close();
    std::ofstream file(path, std::ios::binary);
    file.write(stream.written().data(), static_cast<std::streamsize>(stream.written().size()));
    if (!file) throw std::runtime_error("cannot write");
}

/// Bytes of memory that the process had at most.
double peak() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::strtod(line.c_str() + 6, nullptr) * 1024;
    }
    throw std::runtime_error("no VmHWM");
}

void load(const char* path) {
    const double before = peak(), size = static_cast<double>(std::ifstream(path, std::ios::ate).tellg());
    const auto tell = [&](const char* what) {
        std::printf("%s: %.1f MB, %.1f times the file\n", what, (peak() - before) / 1e6, (peak() - before) / size);
    };
    const cli::BookPtr book(vlCreateBook<char>());
    book->setLocale("UTF-8");
    if (!book->loadFile(path)) throw std::runtime_error(book->errorMessage());
    tell("loaded");
    double sum = 0;
    for (int i = 0; i < book->sheetCount(); ++i) sum += book->getSheet(i)->readNumber(0, 0);
    tell("read");
    if (!book->saveMemory(nullptr, nullptr)) throw std::runtime_error(book->errorMessage());
    tell("saved");
    std::printf("%d sheets, sum %.0f\n", book->sheetCount(), sum);
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc == 4 && std::strcmp(argv[1], "make") == 0) {
        make(std::atol(argv[2]), argv[3]);
    } else if (argc == 3 && std::strcmp(argv[1], "load") == 0) {
        load(argv[2]);
    } else {
        std::fputs("bench_sheets make COUNT OUT | load IN\n", stderr);
        return 2;
    }
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "bench_sheets: %s\n", e.what());
    return 1;
}
