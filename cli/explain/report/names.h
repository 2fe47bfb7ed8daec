// Words for what reports tell.
#pragma once
#include <string>

#include "cli/explain/facts/records.h"

namespace cli::explain {

const char* nameOf(quillet::CellPart part);
const char* nameOf(quillet::Layout layout);
const char* nameOf(Fate fate);

/// Texts, one behind the other.
template <class... Texts>
std::string joined(const Texts&... texts) {
    std::string out;
    (out.append(texts), ...);
    return out;
}

/// "A1:C9", or "" for an item without a rectangle.
std::string areaOf(const ItemRecord& item);
/// "AB" for column 27.
std::string columnLetters(int col);

}  // namespace cli::explain
