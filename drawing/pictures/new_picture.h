// Pictures of the book's own.
#pragma once
#include <memory>
#include <span>

#include "drawing/pictures/fbse.h"

namespace vellum::drawing {

/// An entry of the picture list from the bytes of an image file. Throws for formats that a binary workbook does not
/// hold, for a JPEG whose size cannot be found, and when nothing is left behind a file's header.
std::unique_ptr<OfficeArtFBSE> newPicture(std::span<const std::byte> file);

}  // namespace vellum::drawing
