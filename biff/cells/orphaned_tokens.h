// Tokens that stood behind formulas which a load leaves out, while it keeps other cells that use them.
#pragma once
#include <cstdint>
#include <unordered_map>

#include "biff/cells/formula_block.h"

namespace vellum {

class CellStore;

class OrphanedTokens {
public:
    /// A formula that is left out.
    void leaveOut(FormulaCell&& cell);
    /// When all cells are there: the first user of such tokens in row order takes them over, the others name it.
    void adopt(CellStore& cells);

private:
    struct Tokens {
        FormulaTail tail;
        bool adopted = false;
        FormulaCell::Anchor at{};
    };

    std::unordered_map<std::uint32_t, Tokens> _left;  // by row and column of the formula
};

}  // namespace vellum
