// Records of sheets that are kept as bytes.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "biff/container/cursor.h"
#include "biff/container/record_ids.h"

namespace vellum::biff {

/// Calls `visit(id, body, depth)` for each record of a sheet in wire form. Depth 1 is the sheet itself, 2 and more are
/// sheets inside it, such as the chart of a drawing.
template <class Byte, class Visit>
void forEachWireRecord(std::span<Byte> wire, Visit&& visit) {
    int depth = 0;
    while (wire.size() >= recordHeaderSize) {
        const auto id = loadLe<std::uint16_t>(wire.data());
        const std::size_t size = loadLe<std::uint16_t>(wire.data() + sizeof id);
        if (size > wire.size() - recordHeaderSize) return;
        depth += (id == record_id::Bof) - (id == record_id::Eof);
        visit(id, wire.subspan(recordHeaderSize, size), depth);
        wire = wire.subspan(recordHeaderSize + size);
    }
}

}  // namespace vellum::biff
