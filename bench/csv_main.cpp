// bench_csv read FILE | rewrite FILE OUT | write CONTENT OUT
//
// Loads a csv file through the driver's open and visits every cell; loads it and writes it again; or fills a source
// with the workload's content and writes it at close.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "bench/content.h"
#include "host/interface/host.h"
#include "host/labels/row_window.h"
#include "host/sources/csv_source.h"
#include "host/sources/csv_table.h"
#include "host/sources/driver_context.h"
#include "host/sources/source_list.h"
#include "host/sources/table_ops.h"
#include "refhost/values/format_real.h"

namespace {

// A host of two stdio streams.
std::FILE* input;
std::FILE* output;
std::string outputName;  // where a source open for update is written

const char* language() {
    return "en";
}
void param(HostContext*, int, void* out) {
    *static_cast<const char**>(out) = "%.15g";
}
void driverError(HostContext*, const char* text, int code) {
    std::fprintf(stderr, "%s (%d)\n", text, code);
}

void error(HostContext*, const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::vfprintf(stderr, format, args);
    va_end(args);
}

int openStream(HostContext*, int mode, const char* name) {
    std::FILE*& stream = mode & hostStreamWriting ? output : input;
    stream = std::fopen(mode & hostStreamWriting ? outputName.c_str() : name, mode & hostStreamWriting ? "wb" : "rb");
    return stream ? 0 : -1;
}

int closeStream(HostContext*, int which) {
    return std::fclose(which == hostOutputStream ? output : input);
}

long readStream(HostContext*, void* buffer, long count) {
    return static_cast<long>(std::fread(buffer, 1, static_cast<std::size_t>(count), input));
}

void print(HostContext*, const char* format, ...) {
    va_list args;
    va_start(args, format);
    if (std::strcmp(format, "%s") == 0) {
        std::fputs(va_arg(args, const char*), output);
    } else {
        std::vfprintf(output, format, args);
    }
    va_end(args);
}

int formatReal(HostContext*, char* buffer, int size, const char* format, double value) {
    return refhost::formatReal(buffer, size, format, value);
}

HostApi makeHost() {
    HostApi api = {};
    api.hostLanguage = language;
    api.hostParam = param;
    api.hostError = error;
    api.hostDriverError = driverError;
    api.hostOpenStream = openStream;
    api.hostCloseStream = closeStream;
    api.hostStreamRead = readStream;
    api.hostStreamPrint = print;
    api.hostFormatReal = formatReal;
    return api;
}

quillet::DriverContext* open(const char* name, bool update) {
    std::uint32_t flags = update ? hostOpenUpdate : 0;
    void* const source = quillet::openCsv(nullptr, &flags, name);
    if (!source) std::exit(1);
    return static_cast<quillet::DriverContext*>(source);
}

void visit(quillet::DriverContext* source) {
    const quillet::TableOps& ops = *source->ops;
    quillet::Sheet* const sheet = ops.sheetAt(source->backing, 0);
    long cells = 0, texts = 0;
    double sum = 0;
    quillet::RowWindow window({sheet, quillet::csvRowCells});  // as statements read
    for (int r = ops.firstRow(sheet); r <= ops.lastRow(sheet); ++r) {
        for (int c = ops.firstCol(sheet), last = ops.lastCol(sheet); c <= last; ++c) {
            if (!window.holds(r, c)) window.moveTo(r, c, last - c + 1);
            switch (window.kind(c)) {
                case quillet::cellEmpty:
                    continue;
                case quillet::cellNumber:
                    sum += window.number(c);
                    break;
                case quillet::cellText:
                    texts += ops.readText(sheet, r, c, nullptr)[0] != '\0';
                    break;
                default:
                    sum += ops.readBool(sheet, r, c, nullptr);
                    break;
            }
            ++cells;
        }
    }
    std::printf("cells=%ld texts=%ld sum=%.9g\n", cells, texts, sum);
}

void fill(quillet::DriverContext* source, const bench::Content& content) {
    const quillet::TableOps& ops = *source->ops;
    quillet::Sheet* const sheet = ops.addSheet(source->backing, "Sheet1", nullptr);
    for (int r = 0; r < content.rows; ++r) {
        for (int c = 0; c < content.cols; ++c) {
            const std::uint64_t hash = content.hash(r, c);
            switch (content.kind(c, hash)) {
                case bench::Kind::number:
                    ops.writeReal(sheet, r, c, nullptr, content.number(hash));
                    break;
                case bench::Kind::text:
                    ops.writeText(sheet, r, c, content.text(hash).c_str(), nullptr);
                    break;
                case bench::Kind::boolean:
                    ops.writeBool(sheet, r, c, content.boolean(hash), nullptr);
                    break;
                case bench::Kind::date: {
                    const std::time_t day = static_cast<std::time_t>(content.date(hash) - 25569) * 86400;
                    std::tm parts;
                    char text[16];
                    std::strftime(text, sizeof text, "%Y-%m-%d", gmtime_r(&day, &parts));
                    ops.writeText(sheet, r, c, text, nullptr);
                    break;
                }
                case bench::Kind::none:
                    break;
            }
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string task = argc > 2 ? argv[1] : "";
    const HostApi host = makeHost();
    quillet::openSourceList();
    quillet::openHost(&host);
    if (task == "read" && argc == 3) {
        quillet::DriverContext* const source = open(argv[2], false);
        visit(source);
        return quillet::closeCsv(nullptr, source);
    }
    if ((task == "rewrite" || task == "write") && argc == 4) {
        outputName = argv[3];
        const bool fresh = task == "write";
        quillet::DriverContext* const source = open(fresh ? "no such file" : argv[2], true);
        if (fresh) fill(source, bench::Content(argv[2]));
        return quillet::closeCsv(nullptr, source);
    }
    std::fprintf(stderr, "usage: bench_csv read FILE | rewrite FILE OUT | write CONTENT OUT\n");
    return 2;
}
