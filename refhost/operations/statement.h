// Read and write statements: their type words with field lists, and the calls of a driver in their order.
#pragma once
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "refhost/operations/host.h"
#include "refhost/operations/module.h"
#include "refhost/values/variable.h"

namespace refhost {

/// The array of types of a statement: one word for each item, then the field lists of the records among them.
class TypeWords {
public:
    /// Throws std::length_error when the fields of all records do not fit in 1024 places.
    TypeWords(const TypeRegistry& types, std::span<const HostType> items);
    const std::vector<HostType>& words() const { return _words; }

private:
    /// The word with the place of its field list, when its element type is a record.
    HostType withFields(HostType word);

    const TypeRegistry& _types;
    std::vector<HostType> _words;
    std::map<HostType, std::size_t> _places;  // of the field lists, by record type
};

struct TransferItem {
    Variable* variable = nullptr;
    std::optional<std::string> label;  // none: a null label
};

struct TransferResult {
    int status = -1;          // items not done; -1: the source could not be opened
    std::vector<int> counts;  // of a read: values stored, by item
    std::optional<int> close;
    bool fresh = true;  // false: the host could not make results anew after saving
    bool ok() const { return status == 0 && close == 0 && fresh; }
};

/// A driver and the name behind its prefix, as in "csv:skiph;data.csv".
struct SourceName {
    const Driver* driver = nullptr;  // null: no such driver, or no prefix
    std::string prefix, name;
};
SourceName splitSource(const Module& module, std::string_view source);

enum class Direction { read, write };

/// Opens the source (for update when writing), moves the items, closes it.
TransferResult transfer(Context& context, const Driver& driver, const std::string& name, Direction direction,
                        std::span<const TransferItem> items);

/// Opens a source; null on failure, which was reported to the context.
void* openSource(Context& context, const Driver& driver, const std::string& name, bool update);

/// Has the host make results anew in a workbook that was saved, by its full path. True when there is nothing to make.
bool refresh(Context& context, const std::string& workbook);

}  // namespace refhost
