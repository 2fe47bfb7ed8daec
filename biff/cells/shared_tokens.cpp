#include "biff/cells/shared_tokens.h"

#include <algorithm>
#include <iterator>

#include "biff/cells/cell_store.h"

namespace vellum {

// B1:B4 share the tokens behind B1. B1 is overwritten: the tokens go to B2, and `_moved` says B1 -> B2. B3 and B4 still
// name B1 in their own tokens; rewriting them at once would make n overwritten cells cost n * n. B2 is overwritten in
// its turn: B2 -> B3, and a question for B1 follows the arrows to B3, which `resolved` shortens on the way. Whoever
// takes the tokens over is the next of the users that were collected when the first anchor went; that one is a user no
// more when it was overwritten meanwhile.
//
// A place may serve twice: when tokens once stood behind it and went on, an arrow leads away from it, and it must not
// become an anchor again before all users say what they mean. That is rare, and `settle` then rewrites them all.

SharedTokens::Key SharedTokens::resolved(Key named) const {
    const auto first = _moved.find(named);
    if (first == _moved.end()) return named;
    Key now = first->second;
    for (auto next = _moved.find(now); next != _moved.end(); next = _moved.find(now)) now = next->second;
    first->second = now;  // nearly all ask for the same cell, so the way stays short
    return now;
}

SharedTokens::Anchor SharedTokens::resolve(Anchor named) const {
    if (_moved.empty()) return named;
    const Key now = resolved(keyOf(named.row, named.col));
    return {static_cast<std::uint16_t>(now >> 16), static_cast<std::uint16_t>(now & 0xFFFF)};
}

void SharedTokens::note(const FormulaCell& cell) {
    if (!_collected) return;
    if (const auto named = cell.anchor()) {
        _users[resolved(keyOf(named->row, named->col))].cells.push_back(keyOf(cell.row, cell.col));
    }
}

void SharedTokens::collect(const CellStore& cells) {
    if (_collected) return;
    _collected = true;
    cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
        if (slot.kind() == SlotKind::formula) note(cells.get<FormulaCell>(slot));
    });
}

// Cells that were written over since they were noted are users no more.
FormulaCell* SharedTokens::user(CellStore& cells, Key at, Key anchor) const {
    if (at == anchor) return nullptr;
    const CellSlot slot = cells.at(static_cast<std::uint16_t>(at >> 16), static_cast<std::uint16_t>(at & 0xFFFF));
    if (!slot.occupied() || slot.kind() != SlotKind::formula) return nullptr;
    FormulaCell& cell = cells.get<FormulaCell>(slot);
    const auto named = cell.anchor();
    return named && resolved(keyOf(named->row, named->col)) == anchor ? &cell : nullptr;
}

void SharedTokens::handOn(CellStore& cells, Anchor at) {
    collect(cells);
    const Key anchor = keyOf(at.row, at.col);
    const auto known = _users.find(anchor);
    if (known == _users.end()) return;
    Users users = std::move(known->second);
    _users.erase(known);

    FormulaCell* heir = nullptr;
    while (heir == nullptr && users.next < users.cells.size()) heir = user(cells, users.cells[users.next++], anchor);
    if (heir == nullptr) return;
    const Key place = keyOf(heir->row, heir->col);
    // Tokens once stood there and went elsewhere: users that still name the place mean those.
    if (_moved.contains(place)) settle(cells);
    _moved[anchor] = place;

    FormulaTail& from = *cells.get<FormulaCell>(cells.at(at.row, at.col)).tail;
    FormulaTail& to = heir->ensureTail();
    to.shared = std::move(from.shared);
    to.followingId = from.followingId;
    to.following = std::move(from.following);
    from.shared.reset();
    from.followingId = 0;

    Users& own = _users[place];
    if (own.cells.empty()) {
        own = std::move(users);
    } else {
        std::copy(users.cells.begin() + static_cast<std::ptrdiff_t>(users.next), users.cells.end(),
                  std::back_inserter(own.cells));
    }
}

void SharedTokens::settle(CellStore& cells) {
    if (_moved.empty()) return;
    cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
        if (slot.kind() != SlotKind::formula) return;
        FormulaCell& cell = cells.get<FormulaCell>(slot);
        if (const auto named = cell.anchor()) cell.setAnchor(resolve(*named));
    });
    _moved.clear();
}

}  // namespace vellum
