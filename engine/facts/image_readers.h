// The readers of single formats. Each gets an image whose first bytes are known to be of its format.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "engine/facts/image_bytes.h"
#include "engine/facts/image_size.h"

namespace vellum::image {

inline constexpr std::int64_t longestSide = std::numeric_limits<int>::max();

inline int clamped(std::int64_t pixels) {
    return static_cast<int>(pixels < 0 ? 0 : pixels > longestSide ? longestSide : pixels);
}

inline void setSize(ImageHeader& header, std::int64_t width, std::int64_t height) {
    header.width = clamped(width);
    header.height = clamped(height);
}

/// A density of 0 tells nothing.
inline void setDpi(ImageHeader& header, double x, double y) {
    if (std::lround(x) <= 0 || std::lround(y) <= 0) return;
    header.dpiX = clamped(std::lround(x));
    header.dpiY = clamped(std::lround(y));
}

void readPng(std::span<const std::byte> bytes, ImageHeader& header);
void readGif(std::span<const std::byte> bytes, ImageHeader& header);
void readBmp(std::span<const std::byte> bytes, ImageHeader& header);
void readPlaceableWmf(std::span<const std::byte> bytes, ImageHeader& header);
void readEmf(std::span<const std::byte> bytes, ImageHeader& header);
void readJpeg(std::span<const std::byte> bytes, ImageHeader& header);
void readTiff(std::span<const std::byte> bytes, ImageHeader& header);

}  // namespace vellum::image
