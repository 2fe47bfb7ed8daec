#include "formula/expand_shared.h"

#include "formula/token_cut.h"

namespace vellum::formula {
namespace {

constexpr std::uint16_t colRelative = 0x4000, rowRelative = 0x8000, biff5Rows = 0x3FFF;

/// Where a location keeps its row, and its column.
struct Fields {
    std::size_t row, col;
};

// The bits stand in the column's field, and the column has 8 bits of it.
void shift(std::byte* at, Fields fields, LocationBase base) {
    auto col = loadLe<std::uint16_t>(at + fields.col);
    if ((col & rowRelative) != 0) {
        storeLe(at + fields.row, static_cast<std::uint16_t>(loadLe<std::uint16_t>(at + fields.row) + base.row));
    }
    if ((col & colRelative) != 0) {
        col = static_cast<std::uint16_t>((col & 0xFF00) | ((col + base.col) & 0xFF));
        storeLe(at + fields.col, col);
    }
}

// The bits stand in the row's field.
void shiftBiff5(std::byte* at, Fields fields, LocationBase base) {
    auto row = loadLe<std::uint16_t>(at + fields.row);
    if ((row & colRelative) != 0) {
        at[fields.col] = static_cast<std::byte>(std::to_integer<unsigned>(at[fields.col]) + base.col);
    }
    if ((row & rowRelative) == 0) return;
    row = static_cast<std::uint16_t>((row & ~biff5Rows) | ((row + base.row) & biff5Rows));
    storeLe(at + fields.row, row);
}

}  // namespace

std::optional<std::vector<std::byte>> expandShared(std::span<const std::byte> rgce, LocationBase base,
                                                   Generation generation) {
    std::vector<std::byte> own(rgce.begin(), rgce.end());
    const bool biff5 = generation == Generation::biff5;
    const auto move = biff5 ? shiftBiff5 : shift;
    TokenWalk walk(rgce, generation);
    while (walk.next()) {
        std::byte* const at = own.data() + walk.offset() + 1;
        const TokenWord word = walk.row().word;
        if (word != TokenWord::cell && word != TokenWord::area) continue;
        const std::uint8_t base8 = walk.base();
        if (base8 == ptg::refN || base8 == ptg::areaN) {
            at[-1] = static_cast<std::byte>(walk.code() - (ptg::refN - ptg::ref));  // Ref, Area
        }
        if (word == TokenWord::cell) {
            move(at, {0, 2}, base);
        } else {
            move(at, {0, 4}, base);
            move(at, {2, biff5 ? 5U : 6U}, base);
        }
    }
    if (walk.isBroken()) return std::nullopt;
    return own;
}

}  // namespace vellum::formula
