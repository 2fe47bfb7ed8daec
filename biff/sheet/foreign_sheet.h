// Chart and macro sheets, of which a workbook keeps the bytes.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "biff/container/wire_records.h"

namespace vellum::biff {

/// Calls `visit(isst)` for each cell of a macro sheet that shows a shared string.
template <class Visit>
void forEachForeignString(std::span<const std::byte> wire, Visit&& visit) {
    constexpr std::size_t labelSstSize = 10, isstAt = 6;
    forEachWireRecord(wire, [&](std::uint16_t id, std::span<const std::byte> body, int) {
        if (id == record_id::LabelSst && body.size() == labelSstSize) visit(loadLe<std::uint32_t>(&body[isstAt]));
    });
}

}  // namespace vellum::biff
