#include "engine/facts/image_size.h"

#include <cstdlib>

#include "engine/facts/image_readers.h"

namespace vellum {
namespace {

constexpr double inchesPerMetre = 39.370078740157480;
constexpr std::uint32_t coreHeaderSize = 12;  // the oldest bitmap header, whose fields have 16 bits
constexpr std::int64_t hundredthsOfMmPerInch = 2540;

constexpr std::uint32_t chunkName(const char (&name)[5]) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(name[i]);
    return value;
}

/// Lengths in parts of an inch, to the nearest pixel.
std::int64_t pixels(std::int64_t length, std::int64_t perInch) {
    return perInch <= 0 || length <= 0 ? 0 : (length * defaultDpi + perInch / 2) / perInch;
}

}  // namespace

namespace image {

void readPng(std::span<const std::byte> bytes, ImageHeader& header) {
    constexpr std::size_t firstChunk = 8, chunkFrame = 12;  // length, name and check sum around the data
    const ImageBytes png(bytes, ByteOrder::big);
    const auto width = png.u32(16), height = png.u32(20);
    if (!width || !height) {
        header.fault = ImageFault::cut;
        return;
    }
    setSize(header, *width, *height);
    for (std::size_t at = firstChunk;;) {
        const auto length = png.u32(at), name = png.u32(at + 4);
        if (!length || !name || *name == chunkName("IDAT") || *name == chunkName("IEND")) return;
        if (*name == chunkName("pHYs")) {
            const auto x = png.u32(at + 8), y = png.u32(at + 12);
            const auto unit = png.u8(at + 16);
            constexpr std::uint8_t perMetre = 1;
            if (unit == perMetre) setDpi(header, *x / inchesPerMetre, *y / inchesPerMetre);
            return;
        }
        if (*length > bytes.size() - at) return;
        at += chunkFrame + *length;
    }
}

void readGif(std::span<const std::byte> bytes, ImageHeader& header) {
    const ImageBytes gif(bytes);
    const auto width = gif.u16(6), height = gif.u16(8);
    if (width && height) {
        setSize(header, *width, *height);
    } else {
        header.fault = ImageFault::cut;
    }
}

void readBmp(std::span<const std::byte> bytes, ImageHeader& header) {
    if (bytes.size() <= bitmapFileHeaderSize) {
        header.fault = ImageFault::cut;
    } else {
        readDibSize(bytes.subspan(bitmapFileHeaderSize), header);
    }
}

void readPlaceableWmf(std::span<const std::byte> bytes, ImageHeader& header) {
    const ImageBytes wmf(bytes);
    const auto left = wmf.i16(6), top = wmf.i16(8), right = wmf.i16(10), bottom = wmf.i16(12);
    const auto unitsPerInch = wmf.u16(14);
    if (!unitsPerInch) {
        header.fault = ImageFault::cut;
        return;
    }
    // Boxes drawn from the right or from below occur.
    setSize(header, pixels(std::abs(*right - *left), *unitsPerInch), pixels(std::abs(*bottom - *top), *unitsPerInch));
}

/// Bounds are device units and count both ends; the frame is in hundredths of a millimetre.
void readEmf(std::span<const std::byte> bytes, ImageHeader& header) {
    const ImageBytes emf(bytes);
    std::int64_t box[8];
    for (std::size_t i = 0; i < 8; ++i) {
        const auto side = emf.i32(8 + 4 * i);
        if (!side) {
            header.fault = ImageFault::cut;
            return;
        }
        box[i] = *side;
    }
    if (box[2] > box[0] && box[3] > box[1]) {
        setSize(header, box[2] - box[0] + 1, box[3] - box[1] + 1);
    } else {
        setSize(header, pixels(box[6] - box[4], hundredthsOfMmPerInch), pixels(box[7] - box[5], hundredthsOfMmPerInch));
    }
}

}  // namespace image

/// A height below 0 is that of a bitmap whose first line is the topmost one.
void readDibSize(std::span<const std::byte> dib, ImageHeader& header) {
    const ImageBytes bytes(dib);
    const bool isCore = bytes.u32(0) == coreHeaderSize;
    const auto narrowWidth = bytes.u16(4), narrowHeight = bytes.u16(6);
    const auto width = bytes.i32(4), height = bytes.i32(8);
    if (isCore ? !narrowHeight : !height) {
        header.fault = ImageFault::cut;
    } else if (isCore) {
        image::setSize(header, *narrowWidth, *narrowHeight);
    } else {
        image::setSize(header, *width, std::abs(std::int64_t{*height}));
    }
}

ImageHeader readImageHeader(std::span<const std::byte> bytes) {
    ImageHeader header;
    header.format = imageFormat(bytes);
    switch (header.format) {
        case ImageFormat::png:
            image::readPng(bytes, header);
            break;
        case ImageFormat::jpeg:
            image::readJpeg(bytes, header);
            break;
        case ImageFormat::gif:
            image::readGif(bytes, header);
            break;
        case ImageFormat::wmf:
            image::readPlaceableWmf(bytes, header);
            break;
        case ImageFormat::bmp:
            image::readBmp(bytes, header);
            break;
        case ImageFormat::dib:
            readDibSize(bytes, header);
            break;
        case ImageFormat::emf:
            image::readEmf(bytes, header);
            break;
        case ImageFormat::tiff:
            image::readTiff(bytes, header);
            break;
        case ImageFormat::bareWmf:  // its size is in logical units that only drawing it would tell
        case ImageFormat::other:
            break;
    }
    return header;
}

}  // namespace vellum
