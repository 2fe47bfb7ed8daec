// Kinds of images.
#pragma once
#include <cstddef>
#include <span>
#include <string_view>

namespace vellum {

/// What the first bytes of an image say it is. Which of these a workbook takes, and the `PictureKind` that it gives
/// them, is each engine's own affair.
enum class ImageFormat {
    other,
    png,
    jpeg,
    gif,
    wmf,      // with the placeable header, which has its size
    bareWmf,  // without it
    bmp,      // with the file header
    dib,      // without it
    emf,
    tiff,
};

/// Fewer bytes than this are no image at all.
inline constexpr std::size_t shortestImage = 5;

/// Headers that come off when only the metafile, or only the bitmap, is wanted.
inline constexpr std::size_t placeableHeaderSize = 22;
inline constexpr std::size_t bitmapFileHeaderSize = 14;

ImageFormat imageFormat(std::span<const std::byte> bytes);

/// "png", "jpeg", "gif", "wmf" with or without its header, "bmp", "dib", "emf", "tiff", "other".
std::string_view imageFormatName(ImageFormat format);

}  // namespace vellum
