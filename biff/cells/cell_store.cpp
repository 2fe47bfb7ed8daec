#include "biff/cells/cell_store.h"

#include "biff/container/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

template <class Cell>
bool CellStore::put(Cell cell) {
    CellSlot& slot = _index.forWrite(cell.row, cell.col);
    auto& cells = std::get<std::vector<Cell>>(_cells);
    if (slot.occupied() && slot.kind() == Cell::kind) {
        cells[slot.index()] = std::move(cell);
        return false;
    }
    if (cells.size() > CellSlot::maxIndex) throw vlerror(biff::msg::tooManyCells);
    const CellSlot fresh(Cell::kind, cells.size());
    cells.push_back(std::move(cell));
    const bool over = slot.occupied();
    slot = fresh;
    return over;
}

template bool CellStore::put(RkCell);
template bool CellStore::put(NumberCell);
template bool CellStore::put(LabelSstCell);
template bool CellStore::put(BlankCell);
template bool CellStore::put(BoolErrCell);
template bool CellStore::put(LabelCell);
template bool CellStore::put(FormulaCell);

void CellStore::shrink() {
    std::apply([](auto&... cells) { (cells.shrink_to_fit(), ...); }, _cells);
}

std::size_t CellStore::memoryBytes() const {
    const auto bytes = [](const auto& cells) { return cells.capacity() * sizeof(cells[0]); };
    return _index.memoryBytes() + std::apply([&](const auto&... cells) { return (bytes(cells) + ...); }, _cells);
}

}  // namespace vellum
