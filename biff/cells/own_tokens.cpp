#include "biff/cells/own_tokens.h"

#include <algorithm>

#include "biff/cells/formula_block.h"
#include "engine/text/string_pool.h"
#include "formula/expand_shared.h"

namespace vellum::biff {
namespace {

constexpr std::uint16_t sharedFlag = 0x0008;  // of `grbit`
constexpr std::size_t countSize = sizeof(std::uint16_t);

}  // namespace

// Tokens that are no whole ones have no text before or after; they are taken as they are.
void giveOwnTokens(FormulaCell& cell, const FormulaCell& anchor, StringPool& pool) {
    if (anchor.tail == nullptr || !anchor.tail->shared) return;
    const std::span<const std::byte> shared = anchor.tail->shared->expression;
    if (shared.size() < countSize) return;
    const std::size_t count = std::min<std::size_t>(loadLe<std::uint16_t>(shared.data()), shared.size() - countSize);
    const formula::LocationBase base{cell.row, cell.col};
    const auto own = formula::expandShared(shared.subspan(countSize, count), base, anchor.generation);

    std::byte* const expression = pool.allocateBytes(shared.size());
    std::ranges::copy(shared, expression);
    if (own) std::ranges::copy(*own, expression + countSize);
    cell.expression = expression;
    cell.expressionSize = static_cast<std::uint32_t>(shared.size());
    cell.generation = anchor.generation;
    cell.grbit &= static_cast<std::uint16_t>(~sharedFlag);
}

}  // namespace vellum::biff
