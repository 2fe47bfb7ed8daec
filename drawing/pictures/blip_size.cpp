// Sizes of pictures, in pixels.
#include <algorithm>

#include "drawing/pictures/blip.h"
#include "engine/facts/image_messages.h"
#include "engine/facts/image_size.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {

BlipContent::Size BlipContent::metafileSize() const {
    const auto pixels = [this](std::size_t axis) -> std::uint32_t {
        const std::int32_t emu = metafile.ptSize[axis];
        if (emu > 0) return static_cast<std::uint32_t>(emu / MetafileHeader::emuPerPixel);
        const std::int64_t extent = std::int64_t{metafile.rcBounds[axis + 2]} - metafile.rcBounds[axis];
        return static_cast<std::uint32_t>(std::max<std::int64_t>(extent, 0));
    };
    return {pixels(0), pixels(1)};
}

// A JPEG says its density in its first density segment, whatever the units.
BlipContent::Size BlipContent::bitmapSize() const {
    const ImageHeader header = readImageHeader(bytes());
    if (header.format == ImageFormat::jpeg && header.fault != ImageFault::none) {
        throw vlerror(header.fault == ImageFault::badSegment ? msg::jpegRead : msg::jpgCorrupted);
    }
    Size size{static_cast<std::uint32_t>(header.width), static_cast<std::uint32_t>(header.height),
              static_cast<std::uint32_t>(header.dpiX), static_cast<std::uint32_t>(header.dpiY)};
    if (header.density.present) {
        size.dpiX = header.density.x;
        size.dpiY = header.density.y;
    }
    return size;
}

}  // namespace vellum::drawing
