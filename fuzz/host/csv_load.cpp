// Any bytes as a csv file: loaded in blocks of varying size, read, and written again. The first byte chooses the
// separators, the buffer's size and how the host cuts its stream.
#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "host/interface/host.h"
#include "host/sources/csv_load.h"
#include "host/sources/csv_save.h"
#include "host/sources/csv_table.h"
#include "host/sources/table_ops.h"

namespace {

const std::uint8_t* stream;
std::size_t left;
long longestRead;

long readStream(HostContext*, void* buffer, long count) {
    const auto part = std::min({left, static_cast<std::size_t>(count), static_cast<std::size_t>(longestRead)});
    std::memcpy(buffer, stream, part);
    stream += part;
    left -= part;
    return static_cast<long>(part);
}

void print(HostContext*, const char*, ...) {}

int formatReal(HostContext*, char* buffer, int size, const char* format, double value) {
    return std::snprintf(buffer, static_cast<std::size_t>(size), format, value);
}

const char* language() {
    return "en";
}

const HostApi* host() {
    static HostApi api = {};
    api.hostLanguage = language;
    api.hostStreamRead = readStream;
    api.hostStreamPrint = print;
    api.hostError = print;
    api.hostFormatReal = formatReal;
    return &api;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned choice = data[0];
    stream = data + 1;
    left = size - 1;
    longestRead = choice & 1 ? 1 + (choice >> 4) : 1 << 20;
    quillet::openHost(host());
    std::vector<char> lineBuffer(choice & 2 ? 16 : 2048);
    quillet::CsvTable table(nullptr, lineBuffer.data(), static_cast<std::int32_t>(lineBuffer.size()));
    if (choice & 4) table.fieldSep = ';';
    if (choice & 4) table.decimalSep = ',';
    table.realFormat = "%.15g";
    if (quillet::loadCsv(table, choice & 8)) {
        for (int r = table.firstRow; r <= table.lastRow; ++r) {
            for (int c = table.firstCol; c <= std::min(table.lastCol, table.firstCol + 100); ++c) {
                if (quillet::csvTableOps.cellKind(&table, r, c) == quillet::cellText) {
                    quillet::csvTableOps.textToReal(&table, r, c);
                    quillet::csvTableOps.textToBool(&table, r, c);
                }
            }
        }
        quillet::saveCsv(table);
    }
    quillet::closeHost();
    return 0;
}
