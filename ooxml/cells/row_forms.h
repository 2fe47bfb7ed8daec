// What the pieces of a row and of a sheet's rows know of their form.
#pragma once
#include <cstdint>
#include <cstring>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "ooxml/cells/cell_text.h"

namespace ooxml {

inline constexpr const char* rowSource = "ooxml/handwritten/row";
inline constexpr std::string_view dyDescentName = "x14ac:dyDescent";
inline constexpr std::string_view x14acUri = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac";

inline constexpr std::uint16_t rowSlot_c = 1, rowSlot_extLst = 2;  // children of a row by their place in the schema

inline bool startsWith(const char* at, const char* end, std::string_view text) {
    return end - at >= static_cast<std::ptrdiff_t>(text.size()) && std::memcmp(at, text.data(), text.size()) == 0;
}

/// Whether unprefixed names are the sheet's own here.
inline bool plainNames(const bindery::c_xml_reader& reader) {
    return reader.resolve("") == sheetNamespace;
}

}  // namespace ooxml
