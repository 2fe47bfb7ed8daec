#include "cli/workbook/picture_file.h"

#include <algorithm>
#include <cstdint>

#include "cli/workbook/picture_format.h"
#include "engine/facts/image_bytes.h"

namespace cli {
namespace {

constexpr std::size_t pictHeaderSize = 512;  // of zeros; programs kept their own things there

void append16(std::string& out, std::uint32_t value) {
    out += static_cast<char>(value);
    out += static_cast<char>(value >> 8);
}
void append32(std::string& out, std::uint32_t value) {
    append16(out, value);
    append16(out, value >> 16);
}

/// The header in front of a metafile that has its size: a box from 0, 0 in pixels.
std::string placeableHeader(int width, int height) {
    constexpr int longestSide = 32767;
    constexpr std::uint32_t magic = 0x9AC6CDD7, pixelsPerInch = 96;
    if (width <= 0 || height <= 0) return {};
    std::string header;
    append32(header, magic);
    for (const int word : {0, 0, 0, std::min(width, longestSide), std::min(height, longestSide)}) {
        append16(header, static_cast<std::uint32_t>(word));
    }
    append16(header, pixelsPerInch);
    append32(header, 0);
    std::uint32_t sum = 0;
    const vellum::ImageBytes words(asBytes(header));
    for (std::size_t at = 0; at < header.size(); at += 2) sum ^= *words.u16(at);
    append16(header, sum);
    return header;
}

/// Bytes between the front of a bitmap and its pixels: header, masks, colours.
std::uint64_t pixelsAt(std::string_view bitmap) {
    constexpr std::uint32_t core = 12, info = 40, masks = 3, masksWithAlpha = 6;
    const vellum::ImageBytes bytes(asBytes(bitmap));
    const std::uint32_t header = bytes.u32(0).value_or(0);
    const bool isCore = header == core;
    const std::uint32_t bits = bytes.u16(isCore ? 10 : 14).value_or(0);
    const std::uint32_t compression = isCore ? 0 : bytes.u32(16).value_or(0);
    std::uint64_t colours = isCore ? 0 : bytes.u32(32).value_or(0);
    if (colours == 0 && bits <= 8) colours = 1u << bits;
    std::uint64_t at = header + colours * (isCore ? 3 : 4);
    if (header == info && compression == masks) at += 12;
    if (header == info && compression == masksWithAlpha) at += 16;
    return at;
}

std::string bitmapFileHeader(std::string_view bitmap) {
    std::string header = "BM";
    append32(header, static_cast<std::uint32_t>(vellum::bitmapFileHeaderSize + bitmap.size()));
    append32(header, 0);
    append32(header, static_cast<std::uint32_t>(vellum::bitmapFileHeaderSize +
                                                std::min<std::uint64_t>(pixelsAt(bitmap), bitmap.size())));
    return header;
}

}  // namespace

PictureFile pictureFile(int kind, std::string_view bytes, int width, int height) {
    if (kind == vellum::picturePict) return {"pict", std::string(pictHeaderSize, '\0')};
    using vellum::ImageFormat;
    switch (vellum::imageFormat(asBytes(bytes))) {
        case ImageFormat::png:
            return {"png", {}};
        case ImageFormat::jpeg:
            return {"jpg", {}};
        case ImageFormat::gif:
            return {"gif", {}};
        case ImageFormat::wmf:
            return {"wmf", {}};
        case ImageFormat::bareWmf:
            return {"wmf", placeableHeader(width, height)};
        case ImageFormat::bmp:
            return {"bmp", {}};
        case ImageFormat::dib:
            return {"bmp", bitmapFileHeader(bytes)};
        case ImageFormat::emf:
            return {"emf", {}};
        case ImageFormat::tiff:
            return {"tiff", {}};
        case ImageFormat::other:
            break;
    }
    return {"bin", {}};
}

}  // namespace cli
