#include "biff/cells/biff5_formulas.h"

#include <algorithm>
#include <unordered_set>

#include "biff/cells/cell_store.h"
#include "biff/names/biff5_tokens.h"
#include "engine/text/string_pool.h"

namespace vellum::biff {

namespace {

constexpr std::size_t arrayFixedSize = 12;  // of an Array body, before its expression: range, flags, unused

std::uint32_t keyOf(std::uint16_t row, std::uint16_t col) {
    return std::uint32_t{row} << 16 | col;
}

class Conversion {
public:
    Conversion(CellStore& cells, Links& links, std::size_t sheetCount, StringPool& pool)
        : _cells(cells), _links(links), _sheetCount(sheetCount), _pool(pool) {}

    void run() {
        // Those behind which tokens stand come first: whether the others can be converted hangs on them.
        forEachFormula([this](FormulaCell& cell) {
            if (cell.hasSharedTokens()) convertAnchor(cell);
        });
        forEachFormula([this](FormulaCell& cell) {
            if (!cell.hasSharedTokens() && !convertUser(cell)) cell.generation = formula::Generation::biff5;
        });
    }

private:
    template <class Visit>
    void forEachFormula(Visit&& visit) {
        _cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
            if (slot.kind() == SlotKind::formula) visit(_cells.get<FormulaCell>(slot));
        });
    }

    /// Size of the tokens, the tokens, what follows them: the newer form of all of it.
    [[nodiscard]] std::optional<std::vector<std::byte>> converted(std::span<const std::byte> expression) {
        if (expression.size() < 2) return std::nullopt;
        const std::size_t size = loadLe<std::uint16_t>(expression.data());
        if (size > expression.size() - 2) return std::nullopt;
        const auto made =
            expressionFromBiff5(expression.subspan(2, size), expression.subspan(2 + size), _links, _sheetCount);
        if (!made) return std::nullopt;
        std::vector<std::byte> bytes(2);
        storeLe(bytes.data(), static_cast<std::uint16_t>(made->tokens.size()));
        bytes.insert(bytes.end(), made->tokens.begin(), made->tokens.end());
        bytes.insert(bytes.end(), made->extra.begin(), made->extra.end());
        if (bytes.size() > maxExpression) return std::nullopt;
        return bytes;
    }

    void put(FormulaCell& cell, std::span<const std::byte> expression) {
        cell.expression = _pool.allocateBytes(expression.size());
        cell.expressionSize = static_cast<std::uint32_t>(expression.size());
        std::ranges::copy(expression, cell.expression);
    }

    void convertAnchor(FormulaCell& cell) {
        const auto own = converted(cell.expressionBytes());
        FormulaTail& tail = *cell.tail;
        const auto array = std::span<const std::byte>(tail.following);
        const bool isArray = tail.followingId == record_id::Array;
        const bool isCut = isArray && array.size() < arrayFixedSize;
        const auto shared = tail.shared         ? converted(tail.shared->expression)
                            : isArray && !isCut ? converted(array.subspan(arrayFixedSize))
                                                : std::nullopt;
        if (!own || ((tail.shared || isArray) && !shared)) {
            cell.generation = formula::Generation::biff5;
            return;
        }
        put(cell, *own);
        if (tail.shared) {
            tail.shared->expression = *shared;
        } else if (isArray) {
            tail.following.resize(arrayFixedSize);
            tail.following.insert(tail.following.end(), shared->begin(), shared->end());
        }
        _usable.insert(keyOf(cell.row, cell.col));
    }

    // A cell that names one without tokens makes programs call the file damaged.
    bool convertUser(FormulaCell& cell) {
        if (const auto named = cell.anchor()) return _usable.contains(keyOf(named->row, named->col));
        const auto own = converted(cell.expressionBytes());
        if (own) put(cell, *own);
        return own.has_value();
    }

    static constexpr std::size_t maxExpression = maxRecordBody - 20;  // of a Formula record

    CellStore& _cells;
    Links& _links;
    std::size_t _sheetCount;
    StringPool& _pool;
    std::unordered_set<std::uint32_t> _usable;
};

}  // namespace

void convertBiff5Formulas(CellStore& cells, Links& links, std::size_t sheetCount, StringPool& pool) {
    Conversion(cells, links, sheetCount, pool).run();
}

}  // namespace vellum::biff
