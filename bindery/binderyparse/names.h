// Names and namespaces as the reader knows them.
#pragma once
#include <cstdint>
#include <cstring>
#include <string_view>

namespace bindery {

/// What the last scan of a reader found. Names of a class's tables count up from `token_first_name`.
enum Token : int {
    token_unknown = 1,  // a name that is not in the table, or character data
    token_failed = 3,
    token_end = 5,  // end of the input
    token_end_tag = 6,
    token_start_tag = 7,
    token_xsi_type = 8,
    token_xsi_nil = 9,
    token_xsi_schema_location = 10,
    token_xsi_no_namespace_schema_location = 11,
    token_empty_element_end = 12,
    token_first_name = 13,
};

/// Ids of namespaces. The tables of a unit count its own namespaces from 2 on and leave out 5;
/// namespaces that no table knows get ids from `namespace_first_unknown` on, in the order met.
enum NamespaceId : int {
    namespace_unresolved = 0,  // a prefix that nobody declared
    namespace_none = 1,
    namespace_first = 2,
    namespace_xsi = 5,
    namespace_xml = 254,
    namespace_first_unknown = 256,
};

inline constexpr const char* xsiUri = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr const char* xmlUri = "http://www.w3.org/XML/1998/namespace";

/// One entry of a table of names; the table ends with an entry whose name is null.
struct NameEntry {
    std::uint16_t ns;
    const char* name;
    std::uint16_t length;
    int token;
};

/// For tables: `entry(2, "row", 13)`.
constexpr NameEntry entry(std::uint16_t ns, std::string_view name, int token) {
    return {ns, name.data(), static_cast<std::uint16_t>(name.size()), token};
}
inline constexpr NameEntry endOfNames = {0, nullptr, 0, 0};

/// The token of a name, `token_unknown` when the table has none. The first match wins.
inline int findToken(const NameEntry* table, int ns, std::string_view name) {
    for (; table->name != nullptr; ++table) {
        if (table->ns == ns && table->length == name.size() && table->name[0] == name[0] &&
            std::memcmp(table->name, name.data(), name.size()) == 0)
            return table->token;
    }
    return token_unknown;
}

/// A namespace that the classes of a unit know.
struct NamespaceEntry {
    std::uint16_t id;    // as in the tables of names
    const char* prefix;  // the one that the writer uses; "" for the default namespace
    const char* uri;
    bool onRoot;  // always declared on the root element; others where they are first needed
};

}  // namespace bindery
