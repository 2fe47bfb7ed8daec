// How cells look beside their number formats.
#pragma once
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/api/ibook.h"
#include "engine/api/iformat.h"

namespace cli {

struct Look {
    std::vector<std::string> values;  // in the order of the list of properties
    std::uint64_t hash = 0;
    bool isUsual = false;  // that of the cells that nobody touched
};

/// What the two do not share, each side with its own values: "bold 0, fill 0" and "bold 1, fill 1". Empty texts when
/// nothing differs, or when both are usual in their books.
std::pair<std::string, std::string> lookChanges(const Look& before, const Look& after);

/// Looks of a book's cells: fonts, fills, borders, alignment and protection. Each format is read once.
class CellLooks {
public:
    explicit CellLooks(vellum::IBookT<char>& book) : _book(book) {}

    /// Null stands for a cell that nobody touched.
    const Look& of(vellum::IFormatT<char>* format);
    /// As if it were any other.
    Look usual();

private:
    vellum::IBookT<char>& _book;
    std::unordered_map<vellum::IFormatT<char>*, Look> _known;
};

}  // namespace cli
