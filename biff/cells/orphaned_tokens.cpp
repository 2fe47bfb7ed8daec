#include "biff/cells/orphaned_tokens.h"

#include "biff/cells/cell_store.h"

namespace vellum {

namespace {

std::uint32_t keyOf(FormulaCell::Anchor at) {
    return std::uint32_t{at.row} << 16 | at.col;
}

}  // namespace

void OrphanedTokens::leaveOut(FormulaCell&& cell) {
    if (!cell.hasSharedTokens()) return;
    Tokens& tokens = _left[keyOf({cell.row, cell.col})];
    tokens.tail.shared = std::move(cell.tail->shared);
    tokens.tail.followingId = cell.tail->followingId;
    tokens.tail.following = std::move(cell.tail->following);
}

void OrphanedTokens::adopt(CellStore& cells) {
    if (_left.empty()) return;
    cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
        if (slot.kind() != SlotKind::formula) return;
        FormulaCell& cell = cells.get<FormulaCell>(slot);
        const auto named = cell.anchor();
        const auto found = named ? _left.find(keyOf(*named)) : _left.end();
        if (found == _left.end()) return;
        Tokens& tokens = found->second;
        if (!tokens.adopted && !cell.hasSharedTokens()) {
            FormulaTail& tail = cell.ensureTail();
            tail.shared = std::move(tokens.tail.shared);
            tail.followingId = tokens.tail.followingId;
            tail.following = std::move(tokens.tail.following);
            tokens.at = {cell.row, cell.col};
            tokens.adopted = true;
        }
        if (tokens.adopted) cell.setAnchor(tokens.at);
    });
    _left.clear();
}

}  // namespace vellum
