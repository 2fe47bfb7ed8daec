// The table of cells of a binary sheet: where a cell is found, and of which kind it is.
#pragma once
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vellum {

/// What a cell slot leads to; each kind has a vector of its own in the sheet.
enum class SlotKind : std::uint8_t { none, rk, number, labelSst, blank, boolErr, formula, label };

/// One cell in 32 bits: bit 0 occupied, bits 1 to 3 the kind, bits 4 to 31 the index in the kind's vector.
class CellSlot {
public:
    static constexpr std::size_t maxIndex = (std::size_t{1} << 28) - 1;

    constexpr CellSlot() = default;
    constexpr CellSlot(SlotKind kind, std::size_t index)
        : _bits(1U | static_cast<std::uint32_t>(kind) << 1 | static_cast<std::uint32_t>(index) << 4) {}

    [[nodiscard]] constexpr bool occupied() const { return (_bits & 1U) != 0; }
    [[nodiscard]] constexpr SlotKind kind() const { return static_cast<SlotKind>(_bits >> 1 & 7U); }
    [[nodiscard]] constexpr std::size_t index() const { return _bits >> 4; }
    friend constexpr bool operator==(CellSlot, CellSlot) = default;

private:
    std::uint32_t _bits = 0;
};

/// 65536 rows of 256 cell slots, of which only those exist that were touched.
///
/// A row holds its slots in stretches of 16 columns, side by side in one flat vector for the whole
/// sheet; a bit map tells which of the 16 stretches it has, so that a stretch is found by counting
/// bits. Row entries come in pages of 32 rows, pages in chapters of 32. Access is constant-time, a sheet
/// without cells costs nothing, a row of up to 16 columns 72 bytes, a full row 1032 bytes, and a
/// lone cell far from all others at most 512 bytes.
class SheetIndex {
public:
    static constexpr std::uint32_t rowLimit = 65536;
    static constexpr std::uint32_t colLimit = 256;

    /// The slot of a cell, an empty one where nothing was written. Makes no row.
    /// Throws "SheetIndex: col can't be more than 255".
    [[nodiscard]] CellSlot at(std::uint16_t row, std::uint32_t col) const {
        if (col >= colLimit) throwBadColumn();
        const RowEntry* entry = find(row);
        if (entry == nullptr) return {};
        const auto stretch = static_cast<std::uint32_t>(1) << (col / stretchSlots);
        if ((entry->stretches & stretch) == 0) return {};
        return _slots[slotPosition(*entry, stretch, col)];
    }

    /// The slot of a cell for writing, made with its row when it did not exist. The reference holds
    /// until the next call of any operation that writes. Throws as `at` does.
    CellSlot& forWrite(std::uint16_t row, std::uint32_t col) {
        if (col >= colLimit) throwBadColumn();
        RowEntry& entry = rowForWrite(row);
        const auto stretch = static_cast<std::uint32_t>(1) << (col / stretchSlots);
        if ((entry.stretches & stretch) == 0) addStretch(entry, stretch);
        return _slots[slotPosition(entry, stretch, col)];
    }

    /// Empties one slot; the row stays.
    void erase(std::uint16_t row, std::uint32_t col) {
        if (at(row, col).occupied()) forWrite(row, col) = CellSlot();
    }
    /// All slots of a row become those of another, in which none may be occupied.
    void moveRow(std::uint16_t from, std::uint16_t to);
    /// Gives back the slots of a row in which no slot is occupied.
    void freeRowIfEmpty(std::uint16_t row);
    void clear();

    [[nodiscard]] bool hasRow(std::uint16_t row) const {
        const RowEntry* entry = find(row);
        return entry != nullptr && entry->stretches != 0;
    }
    /// The first row with slots at `from` or behind it, `rowLimit` when there is none.
    [[nodiscard]] std::uint32_t nextRow(std::uint32_t from) const;
    /// Moves to the first occupied slot at (row, col) or behind it, row by row. False when there is none.
    [[nodiscard]] bool nextOccupied(std::uint32_t& row, std::uint32_t& col) const;
    /// Whether every slot of the row is empty.
    [[nodiscard]] bool isEmptyRow(std::uint16_t row) const;

    /// Calls `visit(col, slot)` for each occupied slot of a row, in the order of columns.
    template <class Visit>
    void forEachInRow(std::uint16_t row, Visit&& visit) const {
        const RowEntry* entry = find(row);
        if (entry == nullptr) return;
        std::size_t position = entry->slots;
        for (std::uint32_t left = entry->stretches; left != 0; left &= left - 1, position += stretchSlots) {
            const auto colFirst = static_cast<std::uint32_t>(std::countr_zero(left)) * stretchSlots;
            for (std::uint32_t i = 0; i < stretchSlots; ++i) {
                const CellSlot slot = _slots[position + i];
                if (slot.occupied()) visit(colFirst + i, slot);
            }
        }
    }
    /// Calls `visit(row, col, slot)` for each occupied slot, row by row.
    template <class Visit>
    void forEach(Visit&& visit) const {
        for (std::uint32_t row = nextRow(0); row < rowLimit; row = nextRow(row + 1)) {
            forEachInRow(static_cast<std::uint16_t>(row),
                         [&](std::uint32_t col, CellSlot slot) { visit(row, col, slot); });
        }
    }

    /// Bytes that the table holds on to.
    [[nodiscard]] std::size_t memoryBytes() const;

private:
    static constexpr std::uint32_t stretchSlots = 16;
    static constexpr std::uint32_t pageRows = 32;
    static constexpr std::uint32_t chapterPages = 32;

    struct RowEntry {
        std::uint32_t slots = 0;      // position of the first stretch in `_slots`
        std::uint32_t stretches = 0;  // bit n: columns 16n to 16n + 15 exist
    };

    [[noreturn]] static void throwBadColumn();

    /// Number of the row's page in `_rows` plus one, 0 when it does not exist.
    [[nodiscard]] std::size_t pageNumber(std::size_t page) const {
        const std::size_t chapter = page / chapterPages;
        if (chapter >= _chapters.size() || _chapters[chapter] == 0) return 0;
        return _pages[(_chapters[chapter] - 1U) * chapterPages + page % chapterPages];
    }
    [[nodiscard]] const RowEntry* find(std::uint16_t row) const {
        const std::size_t number = pageNumber(row / pageRows);
        return number == 0 ? nullptr : &_rows[(number - 1) * pageRows + row % pageRows];
    }
    [[nodiscard]] static std::size_t slotPosition(const RowEntry& entry, std::uint32_t stretch, std::uint32_t col) {
        const std::uint32_t below = entry.stretches & (stretch - 1);
        // Most cells stand in their row's first stretch; counting bits is a call on this target.
        const std::size_t before = below == 0 ? 0 : static_cast<std::size_t>(std::popcount(below));
        return entry.slots + before * stretchSlots + col % stretchSlots;
    }
    RowEntry& rowForWrite(std::uint16_t row) {
        std::size_t number = pageNumber(row / pageRows);
        if (number == 0) number = addPage(row / pageRows);
        return _rows[(number - 1) * pageRows + row % pageRows];
    }
    std::size_t addPage(std::size_t page);
    /// The first occupied column at `col` or behind it, `colLimit` when there is none.
    [[nodiscard]] std::uint32_t nextInRow(const RowEntry& entry, std::uint32_t col) const;
    void addStretch(RowEntry& entry, std::uint32_t stretch);
    std::uint32_t takeRun(std::size_t sizeClass);
    void giveRun(std::uint32_t position, std::size_t sizeClass);

    std::vector<std::uint16_t> _chapters;  // number of the chapter in `_pages` plus one, or 0
    std::vector<std::uint16_t> _pages;     // number of the page in `_rows` plus one, or 0
    std::vector<RowEntry> _rows;
    std::vector<CellSlot> _slots;
    // Runs of 1, 2, 4, 8 and 16 stretches that rows have outgrown or given back.
    std::array<std::vector<std::uint32_t>, 5> _freeRuns;
};

}  // namespace vellum
