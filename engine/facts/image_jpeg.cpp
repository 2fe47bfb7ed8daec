// The segments of a JPEG up to its frame header.
#include "engine/facts/image_readers.h"

namespace vellum::image {
namespace {

constexpr std::uint8_t markerStart = 0xFF;
constexpr std::uint8_t app0 = 0xE0;
constexpr double centimetresPerInch = 2.54;

/// Markers that stand alone: the start and end of the image, restarts, and one for arithmetic coding.
bool standsAlone(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD9);
}

/// C0 to CF begin a frame, but for the tables (C4, CC) and the one that is reserved (C8).
bool beginsFrame(std::uint8_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// `at` is the FF of the segment, `length` that of the segment without its marker.
void readDensity(const ImageBytes& jpeg, std::size_t at, std::uint16_t length, JpegDensity& density) {
    constexpr std::size_t endOfDensity = 16;
    if (density.present || length + 2u < endOfDensity || jpeg.size() - at < endOfDensity) return;
    constexpr std::uint32_t jfif = 0x4A464946;
    density.present = true;
    density.jfif = jpeg.u32(at + 4) == jfif && jpeg.u8(at + 8) == 0;
    density.units = *jpeg.u8(at + 11);
    density.x = *jpeg.u16(at + 12);
    density.y = *jpeg.u16(at + 14);
}

void useDensity(ImageHeader& header) {
    const JpegDensity& density = header.density;
    if (!density.jfif || density.x == 0 || density.y == 0) return;
    if (density.units == 1) setDpi(header, density.x, density.y);
    if (density.units == 2) setDpi(header, density.x * centimetresPerInch, density.y * centimetresPerInch);
}

/// Walks to the frame header; every step moves on, so that it ends with the bytes.
ImageFault walk(const ImageBytes& jpeg, ImageHeader& header) {
    std::size_t at = 2;
    for (;;) {
        const auto start = jpeg.u8(at), marker = jpeg.u8(at + 1);
        if (!start) return ImageFault::cut;
        if (*start != markerStart) return ImageFault::noMarker;
        if (!marker) return ImageFault::cut;
        if (*marker == markerStart) {  // a fill byte
            ++at;
            continue;
        }
        if (standsAlone(*marker)) {
            at += 2;
            continue;
        }
        const auto length = jpeg.u16(at + 2);
        if (!length) return ImageFault::cut;
        if (*length < 2) return ImageFault::badSegment;
        if (beginsFrame(*marker)) {
            const auto height = jpeg.u16(at + 5), width = jpeg.u16(at + 7);
            if (!height || !width) return ImageFault::badSegment;
            setSize(header, *width, *height);
            return ImageFault::none;
        }
        if (*marker == app0) readDensity(jpeg, at, *length, header.density);
        at += 2u + *length;
    }
}

}  // namespace

void readJpeg(std::span<const std::byte> bytes, ImageHeader& header) {
    header.fault = walk(ImageBytes(bytes, ByteOrder::big), header);
    useDensity(header);
}

}  // namespace vellum::image
