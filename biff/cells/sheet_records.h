// The small records of a worksheet of which the engine knows the fields.
#pragma once
#include <cstdint>
#include <vector>

namespace vellum::biff {

/// A block of cells, its last row and column included.
struct CellRange {
    std::uint16_t rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;

    [[nodiscard]] bool holds(std::uint32_t row, std::uint32_t col) const {
        return rowFirst <= row && row <= rowLast && colFirst <= col && col <= colLast;
    }
};

}  // namespace vellum::biff

namespace vellum {

/// Index of a sheet's rows in the stream. The engine never uses the offsets and writes them as they were.
struct Index {
    static constexpr std::uint16_t id = 523;
    static constexpr const char* name = "Index";

    std::uint32_t reserved = 0, rwMic = 0, rwMac = 3, ibXF = 0;
    std::vector<std::uint32_t> offsets;
};

/// Space for the outline symbols, pixels, and the deepest levels plus one.
struct Guts {
    static constexpr std::uint16_t id = 128;
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
    static constexpr std::uint16_t id = 549;
    static constexpr const char* name = "DefaultRowHeight";

    std::uint16_t flags = 0;
    std::uint16_t miyRw = 255;  // twips

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("flags", r.flags);
        visit("miyRw", r.miyRw);
    }
};

/// Settings of a sheet that every file has, with the values of a new one.
struct SheetSettings {
    static constexpr std::uint16_t summaryBelow = 0x0040, summaryRight = 0x0080, fitToPage = 0x0100;  // of wsBool

    std::int16_t calcMode = 1;
    std::uint16_t calcCount = 100;
    std::uint16_t calcRefMode = 1;  // 0: R1C1
    std::uint16_t calcIter = 0;
    double calcDelta = 0.001;
    std::uint16_t calcSaveRecalc = 1;
    std::uint16_t printRowCol = 0, printGrid = 0, gridSet = 1;
    Guts guts;
    DefaultRowHeight defaultRowHeight;
    std::uint16_t wsBool = 0x04C1;
    std::uint16_t defColWidth = 8;  // characters
    bool hasUncalced = false;
    std::uint16_t uncalced = 0;
    bool hasDxGCol = false;
    std::uint16_t dxGCol = 0;  // 1/256 character; counts before defColWidth when below 65535
};

/// How a sheet is shown.
struct Window2 {
    static constexpr std::uint16_t id = 574;
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
    static constexpr std::uint16_t id = 229;
    static constexpr const char* name = "MergeCells";
    static constexpr std::size_t maxRanges = 1026;
};

}  // namespace vellum
