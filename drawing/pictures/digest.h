// The identifier of a picture's data.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace vellum::drawing {

using PictureUid = std::array<std::uint8_t, 16>;

/// MD5 of the bytes.
PictureUid digest(std::span<const std::byte> bytes);

}  // namespace vellum::drawing
