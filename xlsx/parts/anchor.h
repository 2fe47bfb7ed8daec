// From an anchor of a drawing to cells and pixels, and back.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace vellum::xlsx {

inline constexpr std::int64_t emuPerPixel = 9525;

/// Sizes of columns and rows in pixels, for cells of the sheet.
class CellPixels {
public:
    virtual int columnPixels(int col) = 0;
    virtual int rowPixels(int row) = 0;
    /// From this row on all are as high as the first of them.
    virtual int firstEqualRow() = 0;

protected:
    ~CellPixels() = default;
};

/// A column or a row, and pixels from its beginning.
struct Edge {
    int cell = 0;
    std::int64_t offset = 0;
};

/// Where something lies: the two corners as cells and pixels within them, and the size in pixels.
struct Placement {
    Edge left, top, right, bottom;
    std::int64_t width = 0, height = 0;
};

/// The right and bottom edges by walking over the cells from the left and top ones; they end at the last cell of the
/// sheet.
void placeEnds(Placement& placement, CellPixels& pixels);
/// The size from all four edges.
void measureBetween(Placement& placement, CellPixels& pixels);
/// All four edges from a distance to the sheet's corner and the size.
void placeFromOrigin(Placement& placement, std::int64_t x, std::int64_t y, CellPixels& pixels);

/// A length as a drawing writes it, in EMU or with a unit ("2.5cm"), in pixels to the nearest one; 0 for no length.
std::int64_t pixelsOf(std::string_view length);
std::int64_t pixelsOf(std::int64_t emu);
std::string emuText(std::int64_t pixels);

/// Into the range of an out argument.
int clampToInt(std::int64_t value);

}  // namespace vellum::xlsx
