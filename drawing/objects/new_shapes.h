// Shapes of the book's own making.
#pragma once
#include <cstdint>

#include "drawing/art/containers.h"

namespace vellum::drawing {

/// A shape that shows a picture: `pib` is its place in the book's list, from 1. The identifier is still to be given.
OfficeArtSpContainer pictureShape(std::uint32_t pib, const AnchorFields& anchor);

/// The box of a comment's text, with its text box record last.
OfficeArtSpContainer noteShape(const AnchorFields& anchor);

}  // namespace vellum::drawing
