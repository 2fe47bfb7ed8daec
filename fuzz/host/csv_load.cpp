// Any bytes as a csv file: loaded in blocks of varying size by every scan and by none, compared with what a plain
// reader makes of them, read, and written again. The first byte chooses the separators, the buffer's size and how the
// host cuts its stream.
#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "host/interface/host.h"
#include "host/sources/csv_load.h"
#include "host/sources/csv_save.h"
#include "host/sources/csv_table.h"
#include "host/sources/table_ops.h"
#include "tests/host/sources/csv_reference.h"

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

namespace {

/// Loads by a scan, and aborts when the outcome is not the reference's.
void check(const std::uint8_t* data, std::size_t size, quillet::CsvScan scan) {
    const unsigned choice = data[0];
    stream = data + 1;
    left = size - 1;
    longestRead = choice & 1 ? 1 + (choice >> 4) : 1 << 20;
    std::vector<char> lineBuffer(choice & 2 ? 16 : 2048);
    quillet::CsvTable table(nullptr, lineBuffer.data(), static_cast<std::int32_t>(lineBuffer.size()));
    if (choice & 4) table.fieldSep = ';';
    if (choice & 4) table.decimalSep = ',';
    table.realFormat = "%.15g";
    const std::string text(reinterpret_cast<const char*>(stream), left);
    const quillet::ReferenceTable reference = quillet::readByReference(text, table, choice & 8);
    if (quillet::loadCsvBy(scan, table, choice & 8) != reference.loaded) std::abort();
    if (!reference.loaded) return;
    if (!quillet::differenceFrom(reference, table).empty()) std::abort();
    for (const auto& [at, cell] : reference.cells) {
        quillet::csvTableOps.textToReal(&table, at.first, at.second);
        quillet::csvTableOps.textToBool(&table, at.first, at.second);
    }
    quillet::saveCsv(table);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    quillet::openHost(host());
    check(data, size, nullptr);
    for (const quillet::CsvScan* scan = quillet::usableScans(); *scan; ++scan) check(data, size, *scan);
    quillet::closeHost();
    return 0;
}
