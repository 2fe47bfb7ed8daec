#include "tests/cli/explain/explain_runner.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "cli/explain/explain.h"
#include "cli/workbook/book_file.h"
#include "engine/factories/factories.h"

namespace support {
namespace {

void eachWarning(const std::vector<Json>& lines, const std::function<void(const Json&)>& visit) {
    for (const Json& line : lines) {
        if (!line.contains("items")) continue;
        for (const Json& warning : line["file"]["warnings"]) visit(warning);
        for (const Json& item : line["items"]) {
            for (const Json& warning : item["warnings"]) visit(warning);
        }
    }
}

}  // namespace

void makeWorkbook(const std::string& path, const FillSheet& fill) {
    const cli::BookPtr book(path.ends_with(".xlsx") ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    auto* const sheet = book->addSheet("Sheet1");
    if (sheet == nullptr) throw std::runtime_error(book->errorMessage());
    fill(*book, *sheet);
    if (!book->saveFile(path.c_str())) throw std::runtime_error(book->errorMessage());
}

std::vector<std::string> Explanation::warnings() const {
    std::vector<std::string> names;
    eachWarning(lines, [&](const Json& warning) {
        const auto name = warning["name"].get<std::string>();
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    });
    return names;
}

Json Explanation::warning(const std::string& name) const {
    Json found;
    eachWarning(lines, [&](const Json& warning) {
        if (warning["name"] == name && found.is_null()) found = warning;
    });
    return found;
}

Explanation explain(const TempFolder& folder, const std::string& script, int rows) {
    cli::explain::ExplainOptions options;
    options.json = true;
    options.rows = rows;
    options.directory = folder.path();
    std::ostringstream out, err;
    Explanation result;
    result.status = cli::explain::explainScript(script, options, out, err);
    result.errors = err.str();
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) result.lines.push_back(Json::parse(line));
    return result;
}

}  // namespace support
