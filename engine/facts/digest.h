#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace vellum {

using Digest = std::array<std::uint8_t, 16>;

/// MD5 of the bytes.
Digest md5(std::span<const std::byte> bytes);

}  // namespace vellum
