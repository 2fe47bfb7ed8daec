#include "cli/tables/table_file.h"

#include <strings.h>

#include <algorithm>
#include <filesystem>

#include "cli/tables/csv_book.h"

namespace cli {
namespace {

constexpr std::string_view csvPrefix = "csv:";

}  // namespace

bool isCsvName(const std::string& name) {
    if (name.starts_with(csvPrefix)) return true;
    const std::string ending = std::filesystem::path(name).extension().string();
    const auto isEnding = [&](const char* each) { return strcasecmp(ending.c_str(), each) == 0; };
    return isEnding(".csv") || isEnding(".tsv") || isEnding(".txt");
}

TableFile loadTable(const std::string& name, std::string& error) {
    if (!isCsvName(name)) return {loadBook(name, error), false};
    const std::string_view tabs = name.ends_with(".tsv") && !name.starts_with(csvPrefix) ? "fsep=\t;" : "";
    const std::string options = name.starts_with(csvPrefix) ? name.substr(csvPrefix.size()) : std::string(tabs) + name;
    return {loadCsvBook(options.c_str(), error), true};
}

}  // namespace cli
