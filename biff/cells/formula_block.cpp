#include "biff/cells/formula_block.h"

#include <algorithm>

#include "engine/text/string_pool.h"

namespace vellum {
namespace {

// A row and a column: of the cell behind which the shared or array formula stands, or the data table.
constexpr std::uint8_t ptgExp = 0x01, ptgTbl = 0x02;
constexpr std::size_t anchoredSize = 7;  // of an expression that is such a token and no more

}  // namespace

CachedValue CachedValue::number(double value) {
    CachedValue v;
    storeLe(v._wire.data(), value);
    return v;
}

CachedValue CachedValue::special(std::uint8_t kind, std::uint8_t value) {
    CachedValue v;
    v._wire[0] = std::byte{kind};
    v._wire[2] = std::byte{value};
    storeLe(&v._wire[6], std::uint16_t{0xFFFF});
    return v;
}

CellKind CachedValue::kind() const {
    if (!isSpecial()) return cellNumber;
    switch (std::to_integer<int>(_wire[0])) {
        case 0:
            return cellString;
        case 1:
            return cellBoolean;
        case 2:
            return cellError;
        default:
            return cellEmpty;
    }
}

std::optional<FormulaCell::Anchor> FormulaCell::anchor() const {
    Cursor in(expressionBytes());
    if (in.left() < anchoredSize || in.get<std::uint16_t>() != anchoredSize - 2) return std::nullopt;
    if (const auto token = in.get<std::uint8_t>(); token != ptgExp && token != ptgTbl) return std::nullopt;
    const auto anchorRow = in.get<std::uint16_t>();
    return Anchor{anchorRow, in.get<std::uint16_t>()};
}

void FormulaCell::setAnchor(Anchor to) {
    storeLe(expression + 3, to.row);
    storeLe(expression + 5, to.col);
}

FormulaCell FormulaCell::copyWithoutTail(StringPool& pool) const {
    FormulaCell copy;
    copy.row = row;
    copy.col = col;
    copy.ixfe = ixfe;
    copy.grbit = grbit;
    copy.value = value;
    copy.chn = chn;
    copy.generation = generation;
    copy.expressionSize = expressionSize;
    copy.expression = pool.allocateBytes(expressionSize);
    std::ranges::copy(expressionBytes(), copy.expression);
    copy.text = text;
    copy.hasText = hasText;
    return copy;
}

}  // namespace vellum
