// The drawings inside a chart or macro sheet, of which the records are kept as bytes: its own, and those of the charts
// that stand in it. `wire` are the records from its Bof to the EOF that balances it.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vellum::drawing {

class DrawingGroup;

/// For a copy within a book: identifiers of their own, and one more use of each picture. `usedDgid` is the largest
/// drawing number in use.
void joinGroup(std::span<std::byte> wire, DrawingGroup& group, std::uint32_t usedDgid);
/// Before the bytes go: takes the drawings out of the group's counts, and out of the pictures' uses.
void leaveGroup(std::span<const std::byte> wire, DrawingGroup& group);
/// For a copy in another book, to whose pictures, fonts and storages a drawing cannot refer.
std::vector<std::byte> withoutDrawings(std::span<const std::byte> wire);

}  // namespace vellum::drawing
