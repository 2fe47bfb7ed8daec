// The first directory of a TIFF.
#include "engine/facts/image_readers.h"

namespace vellum::image {
namespace {

enum Tag : std::uint16_t { imageWidth = 256, imageLength = 257 };
enum Type : std::uint16_t { typeByte = 1, typeShort = 3, typeLong = 4 };

/// A number that stands in the entry itself, at its front in either byte order.
std::optional<std::uint32_t> numberIn(const ImageBytes& tiff, std::size_t entry) {
    constexpr std::size_t type = 2, value = 8;
    switch (tiff.u16(entry + type).value_or(0)) {
        case typeByte:
            return tiff.u8(entry + value);
        case typeShort:
            return tiff.u16(entry + value);
        case typeLong:
            return tiff.u32(entry + value);
        default:
            return std::nullopt;
    }
}

}  // namespace

void readTiff(std::span<const std::byte> bytes, ImageHeader& header) {
    constexpr std::size_t directoryAt = 4, entrySize = 12;
    const bool isBig = bytes[0] == std::byte{'M'};
    const ImageBytes tiff(bytes, isBig ? ByteOrder::big : ByteOrder::little);
    const std::size_t directory = tiff.u32(directoryAt).value_or(0);
    const std::size_t count = tiff.u16(directory).value_or(0);
    std::optional<std::uint32_t> width, length;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = directory + 2 + i * entrySize;
        const auto tag = tiff.u16(entry);
        if (!tag) break;
        if (*tag == imageWidth) width = numberIn(tiff, entry);
        if (*tag == imageLength) length = numberIn(tiff, entry);
    }
    if (width && length) {
        setSize(header, *width, *length);
    } else {
        header.fault = ImageFault::noDirectory;
    }
}

}  // namespace vellum::image
