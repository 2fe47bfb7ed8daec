// The options in force, as the module's own parser understands them.
#pragma once
#include <string>
#include <vector>

#include "cli/explain/facts/records.h"
#include "host/labels/item.h"

namespace cli::explain {

/// A text in front of a file name or label, taken apart.
struct ParsedOptions {
    std::vector<OptionRecord> options;
    std::string rest;
};

/// `from` is "file name" or "label". Values that are not given have their defaults under a file name.
ParsedOptions parseFileName(const std::string& text, bool csv);

/// Options of an item: those of its label, of its source, and what its range brings along.
std::vector<OptionRecord> optionsOf(const quillet::Item& item, const quillet::DriverContext& source, const char* label,
                                    std::string* rest);

/// The label behind its options, when the item has not been opened.
std::string restOfLabel(const char* label, bool write);

}  // namespace cli::explain
