// The children of a cell by their place in the schema: what is kept between them says behind which it stood.
#pragma once
#include <cstdint>

namespace ooxml {

inline constexpr std::uint16_t cellSlot_f = 1, cellSlot_v = 2, cellSlot_is = 3, cellSlot_extLst = 4;

}  // namespace ooxml
