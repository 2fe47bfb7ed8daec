// The small records of a worksheet of which the engine knows the fields.
#pragma once
#include <cstdint>
#include <vector>

#include "biff/container/record_ids.h"

namespace vellum::biff {

/// A block of cells, its last row and column included.
struct CellRange {
    std::uint16_t rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;

    bool operator==(const CellRange&) const = default;
    [[nodiscard]] bool holds(std::uint32_t row, std::uint32_t col) const {
        return rowFirst <= row && row <= rowLast && colFirst <= col && col <= colLast;
    }
};

}  // namespace vellum::biff

namespace vellum {

/// Index of a sheet's rows in the stream. The engine never uses the offsets and writes them as they were.
struct Index {
    static constexpr std::uint16_t id = record_id::Index;
    static constexpr const char* name = "Index";

    std::uint32_t reserved = 0, rwMic = 0, rwMac = 3, ibXF = 0;
    std::vector<std::uint32_t> offsets;
};

/// Space for the outline symbols, pixels, and the deepest levels plus one.
struct Guts {
    static constexpr std::uint16_t id = record_id::Guts;
    static constexpr const char* name = "Guts";

    std::uint16_t dxRwGut = 0, dyColGut = 0, iLevelRwMac = 0, iLevelColMac = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("dxRwGut", r.dxRwGut);
        visit("dyColGut", r.dyColGut);
        visit("iLevelRwMac", r.iLevelRwMac);
        visit("iLevelColMac", r.iLevelColMac);
    }
};

/// Height of rows that have no Row record.
struct DefaultRowHeight {
    static constexpr std::uint16_t id = record_id::DefaultRowHeight;
    static constexpr const char* name = "DefaultRowHeight";

    std::uint16_t flags = 0;
    std::uint16_t miyRw = 255;  // twips

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("flags", r.flags);
        visit("miyRw", r.miyRw);
    }
};

/// How a sheet is shown.
struct Window2 {
    static constexpr std::uint16_t id = record_id::Window2;
    static constexpr const char* name = "Window2";

    static constexpr std::uint16_t showGrid = 0x0002, frozen = 0x0008, rightToLeft = 0x0040;
    static constexpr std::uint16_t selected = 0x0200, active = 0x0400;

    std::uint16_t flags = 1206;
    std::uint16_t rwTop = 0, colLeft = 0;
    std::uint16_t icvHdr = 64;  // colour index of the grid
    std::uint16_t reserved = 0;
    std::uint16_t wScaleSLV = 0, wScaleNormal = 0;
    std::uint16_t reserved2 = 0, reserved3 = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("flags", r.flags);
        visit("rwTop", r.rwTop);
        visit("colLeft", r.colLeft);
        visit("icvHdr", r.icvHdr);
        visit("reserved", r.reserved);
        visit("wScaleSLV", r.wScaleSLV);
        visit("wScaleNormal", r.wScaleNormal);
        visit("reserved2", r.reserved2);
        visit("reserved3", r.reserved3);
    }
};

/// Merged blocks; a file cuts them into records of at most 1026.
struct MergeCells {
    static constexpr std::uint16_t id = record_id::MergeCells;
    static constexpr const char* name = "MergeCells";
    static constexpr std::size_t maxRanges = 1026;
};

}  // namespace vellum
