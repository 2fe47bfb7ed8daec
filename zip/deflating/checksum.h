// The CRC of zip entries.
#pragma once
#include <cstddef>
#include <cstdint>

namespace zip {

/// The CRC-32 of bytes behind those that gave `crc`; 0 for none. By the fastest of the libraries that are there.
std::uint32_t crcOf(std::uint32_t crc, const void* bytes, std::size_t count);

/// The CRC of two pieces, one behind the other; the second has `count` bytes.
std::uint32_t crcOfBoth(std::uint32_t first, std::uint32_t second, std::size_t count);

}  // namespace zip
