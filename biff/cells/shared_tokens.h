// Formulas whose tokens stand behind another formula, and the way of these tokens when that one goes.
#pragma once
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "biff/cells/formula_block.h"

namespace vellum {

class CellStore;

/// The tokens of a shared, array or table formula stand behind the formula of one cell, the anchor, and each other
/// cell that uses them names that cell. When the anchor is overwritten, the next user takes the tokens over.
///
/// The other users then name a cell that has them no more. They are put right all at once by `settle`, which a save
/// needs; until then `resolve` tells what they mean. So a column of n formulas is overwritten in n steps.
class SharedTokens {
public:
    using Anchor = FormulaCell::Anchor;

    /// The cell behind which those tokens stand now that once stood behind `named`.
    [[nodiscard]] Anchor resolve(Anchor named) const;
    /// To be called with a formula that is about to be put into the sheet.
    void note(const FormulaCell& cell);
    /// The formula at `at`, behind which tokens stand, is about to go.
    void handOn(CellStore& cells, Anchor at);
    /// Makes every formula name the cell that has its tokens.
    void settle(CellStore& cells);

private:
    using Key = std::uint32_t;
    /// Users in row order; those before `next` have been looked at.
    struct Users {
        std::vector<Key> cells;
        std::size_t next = 0;
    };

    static constexpr Key keyOf(std::uint16_t row, std::uint16_t col) { return Key{row} << 16 | col; }
    [[nodiscard]] Key resolved(Key named) const;
    void collect(const CellStore& cells);
    [[nodiscard]] FormulaCell* user(CellStore& cells, Key at, Key anchor) const;

    bool _collected = false;
    std::unordered_map<Key, Users> _users;        // by the anchor as it is now
    mutable std::unordered_map<Key, Key> _moved;  // from where tokens stood, towards where they stand
};

}  // namespace vellum
