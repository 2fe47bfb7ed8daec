// The bound classes of worksheets, by dialect.
#pragma once
#include <cstdint>

#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace vellum::xlsx {

template <class Tag>
using Sml = typename ooxml::dialect<Tag>::sml;
template <class Tag>
using Worksheet = typename Sml<Tag>::c_CT_Worksheet;

/// Marks a file of a producer that stores heights at the screen's resolution.
inline constexpr const char* dyDescentName = "x14ac:dyDescent";
inline constexpr const char* x14acUri = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac";

}  // namespace vellum::xlsx
