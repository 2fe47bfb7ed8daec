// The header of an image from hostile bytes: whatever they are, the reader ends and gives sizes that can be used.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "engine/facts/image_size.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    const vellum::ImageHeader header = vellum::readImageHeader(bytes);
    if (header.width < 0 || header.height < 0 || header.dpiX <= 0 || header.dpiY <= 0) std::abort();
    if (size < vellum::shortestImage && header.format != vellum::ImageFormat::other) std::abort();
    if (header.fault != vellum::ImageFault::none && (header.width != 0 || header.height != 0)) std::abort();
    vellum::ImageHeader bitmap;
    vellum::readDibSize(bytes, bitmap);
    if (bitmap.width < 0 || bitmap.height < 0) std::abort();
    return 0;
}
