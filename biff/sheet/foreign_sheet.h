// Chart and macro sheets, of which a workbook keeps the bytes.
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
void forEachForeignRecord(std::span<Byte> wire, Visit&& visit) {
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

/// Calls `visit(isst)` for each cell of a macro sheet that shows a shared string.
template <class Visit>
void forEachForeignString(std::span<const std::byte> wire, Visit&& visit) {
    constexpr std::size_t labelSstSize = 10, isstAt = 6;
    forEachForeignRecord(wire, [&](std::uint16_t id, std::span<const std::byte> body, int) {
        if (id == record_id::LabelSst && body.size() == labelSstSize) visit(loadLe<std::uint32_t>(&body[isstAt]));
    });
}

}  // namespace vellum::biff
