// References to sheets: the books that formulas refer to, this one among them, and the list of sheet ranges in them by
// which tokens name a sheet.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "biff/names/sup_book.h"

namespace vellum::biff {

/// First and last sheet of a reference, counted from 0; -1 when the sheet is deleted.
struct SheetSpan {
    int first = 0, last = 0;

    [[nodiscard]] bool holds(int sheet) const { return first >= 0 && first <= sheet && sheet <= last; }
    bool operator==(const SheetSpan&) const = default;
};

class Links {
public:
    /// What a file refers to outside of itself.
    struct Outside {
        int otherBooks = 0, addInFunctions = 0, ddeLinks = 0;
    };

    void read(Xls& in, RecordHeader header) { _blocks.emplace_back().read(in, header); }
    void write(Xls& out, std::size_t sheetCount) {
        for (SupBookBlock& block : _blocks) block.write(out, sheetCount);
    }
    [[nodiscard]] bool empty() const { return _blocks.empty(); }

    /// The reference that tokens mean by this index: of the first list that is long enough. Null when there is none.
    [[nodiscard]] const globals::Xti* entry(std::uint16_t index) const;
    /// Its sheets when it is to sheets of this workbook, existing or deleted; null for other workbooks and for
    /// references to names.
    [[nodiscard]] std::optional<SheetSpan> ownSheets(std::uint16_t index) const;
    /// The index for sheets of this workbook; the reference is added when there is none yet.
    std::uint16_t indexOf(SheetSpan sheets);
    [[nodiscard]] Outside outside() const;

    /// How much there is, for `takeBack`.
    struct Mark {
        std::size_t blocks = 0, owner = 0, entries = 0;
    };
    [[nodiscard]] Mark mark() const;
    /// Undoes what `indexOf` added since then.
    void takeBack(const Mark& mark);

    /// `newIndex[i]` is the new index of sheet i, or -1 when it is removed. A range that holds a removed sheet then
    /// names none.
    void renumber(std::span<const int> newIndex);

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    [[nodiscard]] std::size_t self() const;
    [[nodiscard]] std::size_t owner() const;
    [[nodiscard]] bool isOwn(const globals::Xti& entry) const {
        return entry.iSupBook < _blocks.size() && _blocks[entry.iSupBook].isSelf();
    }
    std::size_t addSelf();

    std::vector<SupBookBlock> _blocks;
};

}  // namespace vellum::biff
