#pragma once

#include <span>
#include <string_view>

#include "engine/api/enums.h"
#include "engine/facts/image_kind.h"

namespace cli {

inline std::span<const std::byte> asBytes(std::string_view bytes) {
    return std::as_bytes(std::span(bytes.data(), bytes.size()));
}

/// The format by the bytes; a PICT says nothing of itself there, it is known by its kind.
inline std::string_view pictureFormatName(int kind, std::string_view bytes) {
    return kind == vellum::picturePict ? "pict" : vellum::imageFormatName(vellum::imageFormat(asBytes(bytes)));
}

}  // namespace cli
