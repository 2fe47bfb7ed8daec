// The cells of a binary sheet: one flat vector per kind of cell, found through the table of slots.
#pragma once
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include "biff/cells/formula_block.h"
#include "biff/cells/sheet_index.h"
#include "biff/records/unicode_string.h"

namespace vellum {

/// Characters of a text in a cell.
inline constexpr std::size_t maxCellText = 32767;

struct RkCell {
    static constexpr SlotKind kind = SlotKind::rk;
    static constexpr const char* name = "RK";
    std::uint16_t row, col, ixfe;
    std::uint32_t rk;
};

struct NumberCell {
    static constexpr SlotKind kind = SlotKind::number;
    static constexpr const char* name = "Number";
    std::uint16_t row, col, ixfe;
    double value;
};

struct LabelSstCell {
    static constexpr SlotKind kind = SlotKind::labelSst;
    static constexpr const char* name = "LabelSst";
    std::uint16_t row, col, ixfe;
    std::uint32_t isst;  // index in the book's shared strings
};

struct BlankCell {
    static constexpr SlotKind kind = SlotKind::blank;
    static constexpr const char* name = "Blank";
    std::uint16_t row, col, ixfe;
};

struct BoolErrCell {
    static constexpr SlotKind kind = SlotKind::boolErr;
    static constexpr const char* name = "BoolErr";
    std::uint16_t row, col, ixfe;
    std::uint8_t value;
    std::uint8_t isError;
};

/// Text in the cell itself, as only other writers make it.
struct LabelCell {
    static constexpr SlotKind kind = SlotKind::label;
    static constexpr const char* name = "Label";
    std::uint16_t row, col, ixfe;
    XLUnicodeString text;
};

/// Cells by place. Vectors only grow: a cell that is overwritten by another kind, or cleared, leaves
/// its element behind, and the slot alone tells what the cell is.
class CellStore {
public:
    [[nodiscard]] const SheetIndex& index() const { return _index; }
    [[nodiscard]] SheetIndex& index() { return _index; }

    [[nodiscard]] CellSlot at(std::uint16_t row, std::uint16_t col) const { return _index.at(row, col); }

    template <class Cell>
    [[nodiscard]] const std::vector<Cell>& all() const {
        return std::get<std::vector<Cell>>(_cells);
    }
    /// The element of a slot of that kind.
    template <class Cell>
    [[nodiscard]] const Cell& get(CellSlot slot) const {
        return std::get<std::vector<Cell>>(_cells)[slot.index()];
    }
    template <class Cell>
    [[nodiscard]] Cell& get(CellSlot slot) {
        return std::get<std::vector<Cell>>(_cells)[slot.index()];
    }

    /// Writes a cell: over the element that it has when the kinds are the same, else as a new one.
    /// True when a cell of another kind was there.
    template <class Cell>
    bool put(Cell cell);

    /// Calls `visit` with the element of an occupied slot.
    template <class Visit>
    void visit(CellSlot slot, Visit&& visit) const {
        dispatch(*this, slot, visit);
    }
    template <class Visit>
    void visit(CellSlot slot, Visit&& visit) {
        dispatch(*this, slot, visit);
    }
    [[nodiscard]] std::uint16_t ixfe(CellSlot slot) const {
        std::uint16_t ixfe = 0;
        visit(slot, [&ixfe](const auto& cell) { ixfe = cell.ixfe; });
        return ixfe;
    }

    void clear() { *this = CellStore(); }
    /// Gives back what the vectors reserved beyond their elements.
    void shrink();
    /// Bytes that cells and table hold on to, without texts and tokens.
    [[nodiscard]] std::size_t memoryBytes() const;

private:
    template <class Store, class Visit>
    static void dispatch(Store& store, CellSlot slot, Visit&& visit) {
        switch (slot.kind()) {
            case SlotKind::rk:
                visit(store.template get<RkCell>(slot));
                break;
            case SlotKind::number:
                visit(store.template get<NumberCell>(slot));
                break;
            case SlotKind::labelSst:
                visit(store.template get<LabelSstCell>(slot));
                break;
            case SlotKind::boolErr:
                visit(store.template get<BoolErrCell>(slot));
                break;
            case SlotKind::formula:
                visit(store.template get<FormulaCell>(slot));
                break;
            case SlotKind::label:
                visit(store.template get<LabelCell>(slot));
                break;
            case SlotKind::blank:
                visit(store.template get<BlankCell>(slot));
                break;
            case SlotKind::none:
                break;
        }
    }

    SheetIndex _index;
    std::tuple<std::vector<RkCell>, std::vector<NumberCell>, std::vector<LabelSstCell>, std::vector<BlankCell>,
               std::vector<BoolErrCell>, std::vector<LabelCell>, std::vector<FormulaCell>>
        _cells;
};

}  // namespace vellum
