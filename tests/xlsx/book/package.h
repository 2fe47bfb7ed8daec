// Packages made by hand, and the parts of saved ones.
#pragma once
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/api/ibook.h"

namespace vellum {

struct Release {
    template <class CharT>
    void operator()(IBookT<CharT>* book) const {
        book->release();
    }
};
using BookPtr = std::unique_ptr<IBookT<char>, Release>;

/// A book as the factory gives it.
BookPtr newBook();

using Parts = std::vector<std::pair<std::string, std::string>>;

/// The bytes of an archive of these entries, in this order.
std::string packed(const Parts& parts);
std::map<std::string, std::string> unpacked(const std::string& archive);

/// A package of `sheetCount` sheets with one cell in A1 each, its number counted from 1. `changed` replaces parts or
/// adds some; an empty text leaves a part out.
Parts samplePackage(int sheetCount, const std::map<std::string, std::string>& changed = {});
std::string samplePackageBytes(int sheetCount, const std::map<std::string, std::string>& changed = {});
/// The workbook part of that package, with `inside` behind its sheet list.
std::string workbookXml(int sheetCount, const std::string& inside = {}, bool strict = false);

/// What a book saves to memory.
std::map<std::string, std::string> savedParts(IBookT<char>& book);
bool load(IBookT<char>& book, const std::string& bytes);

}  // namespace vellum
