#pragma once

#include <string>
#include <string_view>

namespace cli {

/// A picture as a file of its own.
struct PictureFile {
    std::string_view extension;
    std::string front;  // what a viewer needs in front of the bytes
};

/// `kind` is the `PictureKind` that came with the bytes; the size, in pixels, serves metafiles that lost their header.
PictureFile pictureFile(int kind, std::string_view bytes, int width, int height);

}  // namespace cli
