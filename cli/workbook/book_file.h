// Workbooks by the names of their files.
#pragma once
#include <memory>
#include <string>

#include "engine/api/ibook.h"

namespace cli {

struct ReleaseBook {
    void operator()(vellum::IBookT<char>* book) const { book->release(); }
};
using BookPtr = std::unique_ptr<vellum::IBookT<char>, ReleaseBook>;

/// Whether the file is a zip archive, which makes it an Open XML workbook; all else is for the binary engine.
bool isPackage(const std::string& path);

/// The workbook of a file, with texts in UTF-8. Null, and the engine's text in `error`, when it does not load; what the
/// first dialect of an Open XML workbook said is in `firstTry`, "" when there was no second.
BookPtr loadBook(const std::string& path, std::string& error, std::string* firstTry = nullptr);

}  // namespace cli
