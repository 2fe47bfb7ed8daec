#include "biff/sheet/sheet_parts.h"

namespace vellum {

void SheetParts::recountBounds() const {
    used = filled = AreaBounds();
    cells.index().forEach([this](std::uint32_t row, std::uint32_t col, CellSlot slot) {
        used.grow(row, col);
        if (slot.kind() != SlotKind::blank) filled.grow(row, col);
    });
    boundsDirty = false;
}

}  // namespace vellum
