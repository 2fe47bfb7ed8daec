#include "cli/workbook/resave.h"

#include <strings.h>

#include <algorithm>
#include <filesystem>

#include "cli/workbook/book_file.h"

namespace cli {
namespace {

bool endsIn(const std::string& path, std::initializer_list<const char*> extensions) {
    const std::string found = std::filesystem::path(path).extension().string();
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](const char* extension) { return strcasecmp(found.c_str(), extension) == 0; });
}

/// Whether the name says that the file is of the other format than the book. Other programs refuse such a file.
bool misleads(const std::string& path, bool package) {
    return package ? endsIn(path, {".xls", ".xlt"}) : endsIn(path, {".xlsx", ".xlsm", ".xltx", ".xltm"});
}

}  // namespace

int resave(const std::string& in, const std::string& out, std::ostream& errors) {
    std::string error;
    const BookPtr book = loadBook(in, error);
    if (!book) {
        errors << in << ": " << error << '\n';
        return 1;
    }
    const bool package = book->binaryVersion() == 0;
    if (misleads(out, package) && !misleads(in, package)) {
        errors << out << ": '" << in << "' is " << (package ? "an Open XML" : "a binary")
               << " workbook and keeps its format; choose another name\n";
        return 1;
    }
    if (book->saveFile(out.c_str())) return 0;
    errors << out << ": " << book->errorMessage() << '\n';
    return 1;
}

}  // namespace cli
