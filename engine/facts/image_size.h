// Sizes of images.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/facts/image_kind.h"

namespace vellum {

/// Why a header gave no size.
enum class ImageFault {
    none,
    cut,          // the bytes end before the size
    noMarker,     // of a JPEG: something else stands where a marker should
    badSegment,   // of a JPEG: a segment's length is below 2, or the frame header has no room for a size
    noDirectory,  // of a TIFF: its directory has no width or no length
};

inline constexpr int defaultDpi = 96;

/// What the first density segment (APP0) of a JPEG says, as it stands.
struct JpegDensity {
    bool present = false;
    bool jfif = false;       // it begins with that word, so that `units` means something
    std::uint8_t units = 0;  // 0: only the ratio counts, 1: dots per inch, 2: dots per centimetre
    std::uint16_t x = 0, y = 0;
};

struct ImageHeader {
    ImageFormat format = ImageFormat::other;
    ImageFault fault = ImageFault::none;
    int width = 0, height = 0;  // pixels, 0 when the header does not tell
    /// By the units that the header gives, rounded; 96 when it gives none, or a JPEG only a ratio.
    int dpiX = defaultDpi, dpiY = defaultDpi;
    JpegDensity density;
};

/// Reads what the header of an image says. Any bytes will do; nothing but the header is looked at.
ImageHeader readImageHeader(std::span<const std::byte> bytes);

/// Size of the header of a bitmap without file header, which begins the bytes.
void readDibSize(std::span<const std::byte> dib, ImageHeader& header);

}  // namespace vellum
