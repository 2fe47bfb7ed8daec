#include "engine/facts/image_kind.h"

#include <algorithm>

namespace vellum {
namespace {

using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    ImageFormat format;
};

// The first that matches counts. An EMF begins with a record of type 1, whose number has four bytes; a WMF without
// the placeable header begins with its own type, 1 in two bytes, and its header's size.
constexpr Signature signatures[] = {
    {"\x89PNG"sv, ImageFormat::png},
    {"\xFF\xD8\xFF"sv, ImageFormat::jpeg},
    {"\xD7\xCD\xC6\x9A"sv, ImageFormat::wmf},
    {"BM"sv, ImageFormat::bmp},
    {"GIF"sv, ImageFormat::gif},
    {"II*\0"sv, ImageFormat::tiff},
    {"MM*\0"sv, ImageFormat::tiff},
    {"\x01\x00\x09\x00"sv, ImageFormat::bareWmf},
    {"\x01\x00"sv, ImageFormat::emf},
    // The size of one of the bitmap headers: core, info, OS/2, and the fourth and fifth version of info.
    {"\x0C"sv, ImageFormat::dib},
    {"\x28"sv, ImageFormat::dib},
    {"\x40"sv, ImageFormat::dib},
    {"\x6C"sv, ImageFormat::dib},
    {"\x7C"sv, ImageFormat::dib},
};

bool beginsWith(std::span<const std::byte> bytes, std::string_view signature) {
    return bytes.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), bytes.begin(),
                      [](char expected, std::byte found) { return static_cast<std::byte>(expected) == found; });
}

}  // namespace

ImageFormat imageFormat(std::span<const std::byte> bytes) {
    if (bytes.size() < shortestImage) return ImageFormat::other;
    for (const Signature& known : signatures) {
        if (beginsWith(bytes, known.bytes)) return known.format;
    }
    return ImageFormat::other;
}

std::string_view imageFormatName(ImageFormat format) {
    constexpr std::string_view names[] = {"other", "png", "jpeg", "gif", "wmf", "wmf", "bmp", "dib", "emf", "tiff"};
    return names[static_cast<std::size_t>(format)];
}

}  // namespace vellum
