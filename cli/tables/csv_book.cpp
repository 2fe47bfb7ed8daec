#include "cli/tables/csv_book.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "host/interface/host.h"
#include "host/sources/csv_load.h"
#include "host/sources/csv_table.h"
#include "host/sources/options.h"
#include "host/sources/table_ops.h"
#include "refhost/operations/stream.h"

namespace cli {
namespace {

/// What the loader knows as its context: the open file, and the first thing that it complained of.
struct Reading {
    refhost::InputStream in;
    std::string complaint;
};

Reading& readingOf(HostContext* context) {
    return *reinterpret_cast<Reading*>(context);
}

long readStream(HostContext* context, void* buffer, long count) {
    return readingOf(context).in.read(buffer, count);
}

void complain(HostContext* context, const char* format, ...) {
    char text[512];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::string& complaint = readingOf(context).complaint;
    if (complaint.empty()) complaint = text;
    while (complaint.ends_with('\n')) complaint.pop_back();
}

const char* language() {
    return "en";
}

/// As much of a host as loading takes.
const HostApi* loadingHost() {
    static const HostApi api = [] {
        HostApi made = {};
        made.hostLanguage = language;
        made.hostStreamRead = readStream;
        made.hostError = complain;
        return made;
    }();
    return &api;
}

class OpenHost {
public:
    OpenHost() { quillet::openHost(loadingHost()); }
    ~OpenHost() { quillet::closeHost(); }
    OpenHost(const OpenHost&) = delete;
    OpenHost& operator=(const OpenHost&) = delete;
};

void applyOptions(quillet::CsvTable& table, const quillet::CsvOptions& options) {
    if (options.fieldSep) table.fieldSep = options.fieldSep;
    if (options.decimalSep) table.decimalSep = options.decimalSep;
    if (options.trueText[0]) std::memcpy(table.trueText, options.trueText, sizeof table.trueText);
    if (options.falseText[0]) std::memcpy(table.falseText, options.falseText, sizeof table.falseText);
}

bool copyCell(quillet::CsvTable& table, int row, int col, vellum::ISheetT<char>& sheet) {
    switch (quillet::csvTableOps.cellKind(&table, row, col)) {
        case quillet::cellNumber:
            return sheet.writeNumber(row, col, quillet::csvTableOps.readReal(&table, row, col, nullptr));
        case quillet::cellBoolean:
            return sheet.writeBool(row, col, quillet::csvTableOps.readBool(&table, row, col, nullptr) != 0);
        case quillet::cellText:
            return sheet.writeString(row, col, quillet::csvTableOps.readText(&table, row, col, nullptr));
        default:
            return true;
    }
}

bool copyCells(quillet::CsvTable& table, vellum::ISheetT<char>& sheet) {
    for (int row = table.firstRow; row <= table.lastRow; ++row) {
        const quillet::CsvRow& line = table.row(row);
        if (line.current == nullptr) continue;
        for (int col = line.firstCol; col <= line.lastCol; ++col) {
            if (!copyCell(table, row, col, sheet)) return false;
        }
    }
    return true;
}

/// A name for the sheet: that of the file as far as a sheet can have it.
std::string sheetName(const char* path) {
    constexpr std::size_t longest = 31;
    std::string name = std::filesystem::path(path).stem().string();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::strchr("\\/?*[]:'", c) != nullptr; }, '_');
    const bool fits = !name.empty() && std::all_of(name.begin(), name.end(), [](char c) { return c > 0; });
    return fits ? name.substr(0, longest) : "Sheet1";
}

}  // namespace

BookPtr loadCsvBook(const char* name, std::string& error) {
    const OpenHost host;
    quillet::CsvOptions options;
    std::int32_t bufferSize = quillet::defaultBufferSize, autoBase = 0;
    const std::uint32_t flags = quillet::parseOptions(0, &name, &bufferSize, &autoBase, &options);
    Reading reading;
    if (!reading.in.open(name, refhost::StreamKind::text)) {
        error = std::strerror(errno);
        return nullptr;
    }
    std::vector<char> buffer(static_cast<std::size_t>(bufferSize));
    quillet::CsvTable table(reinterpret_cast<HostContext*>(&reading), buffer.data(), bufferSize);
    applyOptions(table, options);
    if (!quillet::loadCsv(table, (flags & quillet::optAllText) != 0)) {
        error = reading.complaint.empty() ? "cannot be read" : reading.complaint;
        return nullptr;
    }
    BookPtr book(vellum::vlCreateXMLBook<char>());
    book->setLocale("UTF-8");
    auto* const sheet = book->addSheet(sheetName(name).c_str());
    if (sheet != nullptr && copyCells(table, *sheet)) return book;
    error = book->errorMessage();
    return nullptr;
}

}  // namespace cli
