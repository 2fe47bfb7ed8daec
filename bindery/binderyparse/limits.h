// Bounds of the reader.
#pragma once
#include <cstddef>

namespace bindery {

// What a hostile document may ask for.
inline constexpr std::size_t maxElementDepth = 1000;
inline constexpr std::size_t maxAttributes = 256;  // of one element
inline constexpr std::size_t maxBindings = 1024;   // namespace declarations in force
inline constexpr std::size_t maxEntityDepth = 100;
inline constexpr std::size_t maxEntityBytes = std::size_t{16} << 20;  // of all values expanded in one document

}  // namespace bindery
