#include "biff/cells/sheet_index.h"

#include <algorithm>

#include "biff/container/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

void SheetIndex::throwBadColumn() {
    throw vlerror(biff::msg::sheetIndexColumn);
}

void SheetIndex::clear() {
    *this = SheetIndex();
}

std::size_t SheetIndex::addPage(std::size_t page) {
    const std::size_t chapter = page / chapterPages;
    if (chapter >= _chapters.size()) _chapters.resize(chapter + 1);
    if (_chapters[chapter] == 0) {
        _pages.resize(_pages.size() + chapterPages);
        _chapters[chapter] = static_cast<std::uint16_t>(_pages.size() / chapterPages);
    }
    _rows.resize(_rows.size() + pageRows);
    const std::size_t number = _rows.size() / pageRows;
    _pages[(_chapters[chapter] - 1U) * chapterPages + page % chapterPages] = static_cast<std::uint16_t>(number);
    return number;
}

// A row of n stretches owns a run of the next power of two; size class k stands for 2^k stretches.
void SheetIndex::addStretch(RowEntry& entry, std::uint32_t stretch) {
    const auto count = static_cast<std::size_t>(std::popcount(entry.stretches));
    if (count == 0) {
        entry.slots = takeRun(0);
    } else if (std::has_single_bit(count)) {
        const auto sizeClass = static_cast<std::size_t>(std::countr_zero(count));
        const std::uint32_t grown = takeRun(sizeClass + 1);
        std::copy_n(_slots.begin() + entry.slots, count * stretchSlots, _slots.begin() + grown);
        giveRun(entry.slots, sizeClass);
        entry.slots = grown;
    }
    const auto before = static_cast<std::size_t>(std::popcount(entry.stretches & (stretch - 1)));
    const auto first = _slots.begin() + entry.slots;
    std::copy_backward(first + static_cast<std::ptrdiff_t>(before * stretchSlots),
                       first + static_cast<std::ptrdiff_t>(count * stretchSlots),
                       first + static_cast<std::ptrdiff_t>((count + 1) * stretchSlots));
    std::fill_n(first + static_cast<std::ptrdiff_t>(before * stretchSlots), stretchSlots, CellSlot());
    entry.stretches |= stretch;
}

std::uint32_t SheetIndex::takeRun(std::size_t sizeClass) {
    auto& freeRuns = _freeRuns[sizeClass];
    if (!freeRuns.empty()) {
        const std::uint32_t position = freeRuns.back();
        freeRuns.pop_back();
        return position;
    }
    const auto position = static_cast<std::uint32_t>(_slots.size());
    _slots.resize(_slots.size() + (std::size_t{stretchSlots} << sizeClass));
    return position;
}

void SheetIndex::giveRun(std::uint32_t position, std::size_t sizeClass) {
    _freeRuns[sizeClass].push_back(position);
}

bool SheetIndex::isEmptyRow(std::uint16_t row) const {
    bool empty = true;
    forEachInRow(row, [&](std::uint32_t, CellSlot) { empty = false; });
    return empty;
}

void SheetIndex::freeRowIfEmpty(std::uint16_t row) {
    if (!hasRow(row) || !isEmptyRow(row)) return;
    RowEntry& entry = rowForWrite(row);
    const auto count = static_cast<std::size_t>(std::popcount(entry.stretches));
    giveRun(entry.slots, static_cast<std::size_t>(std::bit_width(count - 1)));
    entry = RowEntry();
}

void SheetIndex::moveRow(std::uint16_t from, std::uint16_t to) {
    freeRowIfEmpty(to);
    const RowEntry moved = rowForWrite(from);
    rowForWrite(from) = RowEntry();
    rowForWrite(to) = moved;
}

std::uint32_t SheetIndex::nextRow(std::uint32_t from) const {
    const std::size_t pageEnd = _chapters.size() * chapterPages;
    for (std::size_t page = from / pageRows; page < pageEnd; ++page, from = 0) {
        const std::size_t number = pageNumber(page);
        if (number == 0) continue;
        const RowEntry* const rows = &_rows[(number - 1) * pageRows];
        for (std::uint32_t i = from % pageRows; i < pageRows; ++i) {
            if (rows[i].stretches != 0) return static_cast<std::uint32_t>(page) * pageRows + i;
        }
    }
    return rowLimit;
}

std::uint32_t SheetIndex::nextInRow(const RowEntry& entry, std::uint32_t col) const {
    for (; col < colLimit; col = (col / stretchSlots + 1) * stretchSlots) {
        const auto stretch = static_cast<std::uint32_t>(1) << (col / stretchSlots);
        if ((entry.stretches & stretch) == 0) continue;
        const CellSlot* const slots = &_slots[slotPosition(entry, stretch, col)] - col % stretchSlots;
        for (std::uint32_t i = col % stretchSlots; i < stretchSlots; ++i) {
            if (slots[i].occupied()) return col - col % stretchSlots + i;
        }
    }
    return colLimit;
}

bool SheetIndex::nextOccupied(std::uint32_t& row, std::uint32_t& col) const {
    for (std::uint32_t r = nextRow(row); r < rowLimit; r = nextRow(r + 1)) {
        const std::uint32_t found = nextInRow(*find(static_cast<std::uint16_t>(r)), r == row ? col : 0);
        if (found == colLimit) continue;
        row = r;
        col = found;
        return true;
    }
    return false;
}

std::size_t SheetIndex::memoryBytes() const {
    std::size_t bytes = (_chapters.capacity() + _pages.capacity()) * sizeof(_pages[0]) +
                        _rows.capacity() * sizeof(_rows[0]) + _slots.capacity() * sizeof(_slots[0]);
    for (const auto& freeRuns : _freeRuns) bytes += freeRuns.capacity() * sizeof(std::uint32_t);
    return bytes;
}

}  // namespace vellum
