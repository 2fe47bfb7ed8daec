// New identifiers for the copy of a drawing.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

namespace vellum {
class OfficeArtDgContainer;

namespace drawing {

class DrawingGroup;

/// Gives a drawing, of which `bytes` are all there are, a number and shape identifiers of its own in the group. Bytes
/// that are no drawing stay. `usedDgid` is the largest drawing number in use.
void renumberDrawing(std::span<std::byte> bytes, DrawingGroup& group, std::uint32_t usedDgid);
/// The same when `drawing` was read from the bytes.
void renumberDrawing(std::span<std::byte> bytes, const OfficeArtDgContainer& drawing, DrawingGroup& group,
                     std::uint32_t usedDgid);

}  // namespace drawing
}  // namespace vellum
