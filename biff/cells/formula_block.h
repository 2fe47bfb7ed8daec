// A formula cell of a binary sheet with the records that stand behind it.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "biff/cells/sheet_index.h"
#include "biff/container/cursor.h"
#include "biff/container/record_ids.h"
#include "biff/records/unicode_string.h"
#include "engine/api/enums.h"
#include "formula/formula_context.h"

namespace vellum {

/// The result of a formula when its file was saved, in the eight bytes of the wire: a double, or a kind,
/// a value and 0xFFFF in the last two bytes.
class CachedValue {
public:
    CachedValue() = default;
    explicit CachedValue(std::span<const std::byte, 8> wire) { std::memcpy(_wire.data(), wire.data(), 8); }
    static CachedValue number(double value);
    static CachedValue text() { return special(0, 0); }
    static CachedValue boolean(bool value) { return special(1, value ? 1 : 0); }
    static CachedValue empty() { return special(3, 0); }
    static CachedValue error(int code) { return special(2, static_cast<std::uint8_t>(code)); }

    /// A number, text, boolean or error; `cellEmpty` when the formula has none or gave an empty text.
    [[nodiscard]] CellKind kind() const;
    [[nodiscard]] double number() const { return loadLe<double>(_wire.data()); }
    [[nodiscard]] bool boolean() const { return _wire[2] != std::byte{0}; }
    [[nodiscard]] int error() const { return std::to_integer<int>(_wire[2]); }
    /// A text follows in a record of its own.
    [[nodiscard]] bool hasTextMark() const { return isSpecial() && _wire[0] == std::byte{0}; }
    [[nodiscard]] std::span<const std::byte, 8> wire() const { return _wire; }

private:
    static CachedValue special(std::uint8_t kind, std::uint8_t value);
    [[nodiscard]] bool isSpecial() const { return loadLe<std::uint16_t>(&_wire[6]) == 0xFFFF; }

    std::array<std::byte, 8> _wire{};
};

/// Tokens that several cells of a block share; it stands behind the block's first formula.
struct ShrFmla {
    std::uint16_t rowFirst = 0, rowLast = 0;
    std::uint8_t colFirst = 0, colLast = 0;
    std::uint8_t reserved = 0;
    std::uint8_t cUse = 0;              // formulas that use it
    std::vector<std::byte> expression;  // its size, the tokens, and what follows them
};

/// What few formulas have.
struct FormulaTail {
    std::optional<std::array<std::byte, 2>> prefix;  // body of the two-byte record before the formula
    std::uint16_t followingId = 0;                   // Array or Table, 0: none
    std::vector<std::byte> following;
    std::optional<ShrFmla> shared;
    std::vector<std::byte> continues;  // CONTINUE records behind the cached text, in wire form
};

struct FormulaCell {
    static constexpr SlotKind kind = SlotKind::formula;
    static constexpr const char* name = "Formula";
    static constexpr std::uint16_t alwaysCalc = 0x0001;  // of `grbit`: readers are to calculate it, whatever its value

    std::uint16_t row = 0, col = 0, ixfe = 0;
    std::uint16_t grbit = 0;
    CachedValue value;
    std::uint32_t chn = 0;
    /// Of the tokens. Those of an older book that have no newer form are kept as they are.
    formula::Generation generation = formula::Generation::biff8;
    std::uint32_t expressionSize = 0;
    std::byte* expression = nullptr;  // pool memory of this block's own: size of the tokens, these, what follows them
    XLUnicodeString text;             // the cached text, when `hasText`
    bool hasText = false;
    std::unique_ptr<FormulaTail> tail;  // null for most

    [[nodiscard]] std::span<const std::byte> expressionBytes() const { return {expression, expressionSize}; }
    /// The cell whose shared, array or table formula this one uses, when its tokens are nothing but that reference.
    struct Anchor {
        std::uint16_t row, col;
    };
    [[nodiscard]] std::optional<Anchor> anchor() const;
    /// Points such tokens to another cell.
    void setAnchor(Anchor to);
    /// Whether others may use tokens that stand behind this formula.
    [[nodiscard]] bool hasSharedTokens() const {
        return tail != nullptr && (tail->shared.has_value() || tail->followingId != 0);
    }
    /// Value, text and tokens, the tokens copied into the pool. The text stays where it is.
    [[nodiscard]] FormulaCell copyWithoutTail(StringPool& pool) const;
    FormulaTail& ensureTail() {
        if (tail == nullptr) tail = std::make_unique<FormulaTail>();
        return *tail;
    }
};

}  // namespace vellum
