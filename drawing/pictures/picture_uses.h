// The pictures of the book's list that a shape shows.
#pragma once

namespace vellum {
class OfficeArtSpContainer;

namespace drawing {
class DrawingGroup;

/// A shape comes: each picture of its line, its fill and itself is shown once more.
void addUses(DrawingGroup& group, const OfficeArtSpContainer& shape);
/// A shape goes.
void dropUses(DrawingGroup& group, const OfficeArtSpContainer& shape);

}  // namespace drawing
}  // namespace vellum
