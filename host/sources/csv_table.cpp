#include "host/sources/csv_table.h"

#include <sys/mman.h>
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/sources/table_ops.h"

namespace quillet {
namespace {

constexpr int firstCapacity = 256;
constexpr int doublingEnds = 8192;  // rows; from here on the array grows by this much

constexpr int firstSlots = 8;                              // of a block, when nothing tells how many columns are in use
constexpr std::int64_t rowSlotSize = 16, blockSize = 600;  // by the table's layout, whatever memory they take here

// What a slot reads as that lies in a block, but beyond its slots: nothing. Never written.
struct {
    CsvBlock block;  // of no slots, so that kinds and values both begin behind it
    CsvValue nothing[columnsPerBlock];
} noSlots = {};

std::size_t rowBytes(std::int32_t capacity) {
    return static_cast<std::size_t>(capacity) * sizeof(CsvRow);
}

}  // namespace

char* CsvCell::text() const {
    switch (kind()) {
        case csvShortText:
            return value().shortText;
        case csvHeapText:
        case csvArenaText:
            return value().text;
        default:
            return nullptr;
    }
}

CsvTable::CsvTable(HostContext* context, char* lineBufferOfSource, std::int32_t bufferSizeOfSource)
    : hostContext(context),
      lineBuffer(lineBufferOfSource),
      bufferSize(bufferSizeOfSource),
      firstRow(notGiven),
      firstCol(notGiven) {}

CsvTable::~CsvTable() {
    if (_hasHeapTexts) {
        for (int r = firstRow; r <= lastRow && r < rowCapacity; ++r) {
            for (CsvBlock* block = lowestBlock(_rows[r]); block; block = block->upper) {
                for (int slot = 0; slot < block->slotCount; ++slot) {
                    if (block->kinds()[slot] == csvHeapText) std::free(block->values()[slot].text);
                }
            }
        }
    }
    if (_rows) munmap(_rows, rowBytes(_reservedRows));
}

CsvBlock* lowestBlock(const CsvRow& row) {
    CsvBlock* block = row.current;
    while (block && block->lower) block = block->lower;
    return block;
}

CsvCell CsvTable::find(int row, int col) const {
    if (row < firstRow || row > lastRow || row < 0 || row >= rowCapacity) return {nullptr, 0};
    CsvRow& slots = _rows[row];
    if (!slots.current || col < slots.firstCol || col > slots.lastCol) return {nullptr, 0};
    const int wanted = col / columnsPerBlock;
    CsvBlock* block = slots.current;
    while (block && block->blockIndex > wanted) block = block->lower;
    while (block && block->blockIndex < wanted) block = block->upper;
    if (!block || block->blockIndex != wanted) return {nullptr, 0};
    slots.current = block;
    const int slot = col % columnsPerBlock;
    return {slot < block->slotCount ? block : &noSlots.block, slot};
}

/// Makes sure that the row has its slot. The array grows in place or is moved by the system, page by page.
bool CsvTable::reserveRow(int row) {
    if (row < rowCapacity) return true;
    std::int32_t capacity;
    if (row > rowCapacity) {
        if (row > notGiven - firstCapacity) return false;
        capacity = (row + firstCapacity) / firstCapacity * firstCapacity;
    } else if (rowCapacity == 0) {
        capacity = firstCapacity;
    } else if (rowCapacity < doublingEnds) {
        capacity = rowCapacity * 2;
    } else if (rowCapacity > notGiven - doublingEnds) {
        return false;
    } else {
        capacity = rowCapacity + doublingEnds;
    }
    if (!reserveRowMemory(capacity)) return false;
    rowCapacity = capacity;
    return true;
}

/// Addresses for so many row slots and half as many again, which cost nothing until they are used; else for these.
bool CsvTable::reserveRowMemory(std::int32_t capacity) {
    if (capacity <= _reservedRows) return true;
    const std::int32_t generous = capacity < notGiven / 2 ? capacity + capacity / 2 : capacity;
    for (const std::int32_t wanted : {generous, capacity}) {
        void* const memory =
            _rows ? mremap(_rows, rowBytes(_reservedRows), rowBytes(wanted), MREMAP_MAYMOVE)
                  : mmap(nullptr, rowBytes(wanted), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) continue;
        preferLargePages(memory, rowBytes(wanted));
        _rows = static_cast<CsvRow*>(memory);
        _reservedRows = wanted;
        return true;
    }
    return false;
}

CsvBlock* CsvTable::newBlock(int blockIndex, int slotCount) {
    const std::size_t size =
        sizeof(CsvBlock) + static_cast<std::size_t>(slotCount) * (sizeof(CsvValue) + sizeof(std::uint8_t));
    auto* const block = static_cast<CsvBlock*>(_blocks.take(size, alignof(CsvBlock)));
    if (!block) return nullptr;
    block->blockIndex = blockIndex;
    block->slotCount = slotCount;
    return block;
}

/// Slots for a new block that is to hold `slot`: as many as the row above uses there.
int CsvTable::usualSlots(int row, int blockIndex, int slot) const {
    int usual = firstSlots;
    if (row > 0 && _rows[row - 1].current) {
        const int above = _rows[row - 1].lastCol - blockIndex * columnsPerBlock + 1;
        if (above > 0) usual = std::min(above, columnsPerBlock);
    }
    return std::max(usual, slot + 1);
}

/// A larger block in the place of `block`, with room for `slot`.
CsvBlock* CsvTable::widened(CsvBlock* block, int slot) {
    const int count = std::min(columnsPerBlock, std::max(block->slotCount * 2, slot + 1));
    CsvBlock* const wider = newBlock(block->blockIndex, count);
    if (!wider) return nullptr;
    wider->lower = block->lower;
    wider->upper = block->upper;
    const auto slots = static_cast<std::size_t>(block->slotCount);
    std::memcpy(wider->values(), block->values(), slots * sizeof(CsvValue));
    std::memcpy(wider->kinds(), block->kinds(), slots);
    if (wider->lower) wider->lower->upper = wider;
    if (wider->upper) wider->upper->lower = wider;
    return wider;
}

/// The block, made when it is not there, with memory for the slot.
CsvBlock* CsvTable::blockFor(int row, int blockIndex, int slot) {
    CsvRow& slots = _rows[row];
    CsvBlock* lower = slots.current;
    if (lower && lower->blockIndex == blockIndex && slot < lower->slotCount) return lower;
    CsvBlock* upper = nullptr;
    while (lower && lower->blockIndex > blockIndex) {
        upper = lower;
        lower = lower->lower;
    }
    if (!upper && lower) upper = lower->upper;
    while (lower && lower->blockIndex < blockIndex && upper && upper->blockIndex <= blockIndex) {
        lower = upper;
        upper = upper->upper;
    }
    if (lower && lower->blockIndex == blockIndex) {
        CsvBlock* const block = slot < lower->slotCount ? lower : widened(lower, slot);
        if (block) slots.current = block;
        return block;
    }

    CsvBlock* const block = newBlock(blockIndex, usualSlots(row, blockIndex, slot));
    if (!block) return nullptr;
    block->lower = lower;
    block->upper = upper;
    if (lower) lower->upper = block;
    if (upper) upper->lower = block;
    return slots.current = block;
}

CsvCell CsvTable::cellFor(int row, int col) {
    CsvBlock* block = nullptr;
    if (row >= 0 && col >= 0 && reserveRow(row)) {
        CsvRow& slots = _rows[row];
        if (!slots.current) slots.firstCol = notGiven;
        block = blockFor(row, col / columnsPerBlock, col % columnsPerBlock);
        if (block) {
            slots.firstCol = std::min(slots.firstCol, col);
            slots.lastCol = std::max(slots.lastCol, col);
        }
    }
    if (!block) {
        hostApi().hostError(hostContext, msg::storeOutOfMemory);
        return {nullptr, 0};
    }
    firstRow = std::min(firstRow, row);
    lastRow = std::max(lastRow, row);
    firstCol = std::min(firstCol, col);
    lastCol = std::max(lastCol, col);
    return {block, col % columnsPerBlock};
}

/// The cell with whatever it held freed; a miss when it cannot be made.
CsvCell CsvTable::emptied(int row, int col) {
    const CsvCell cell = cellFor(row, col);
    if (cell.block) {
        if (cell.kind() == csvHeapText) std::free(cell.value().text);
        cell.block->kinds()[cell.slot] = csvEmpty;
        cell.value() = {};
    }
    return cell;
}

int CsvTable::storeNumber(int row, int col, double value) {
    const CsvCell cell = emptied(row, col);
    if (!cell.block) return -1;
    cell.value().real = value;
    cell.block->kinds()[cell.slot] = csvNumber;
    return 1;
}

int CsvTable::storeBoolean(int row, int col, int value) {
    const CsvCell cell = emptied(row, col);
    if (!cell.block) return -1;
    cell.value().word = value;
    cell.block->kinds()[cell.slot] = csvBoolean;
    return 1;
}

int CsvTable::storeBlank(int row, int col) {
    return emptied(row, col).block ? 1 : -1;
}

int CsvTable::storeText(int row, int col, const char* text) {
    const std::size_t length = text ? std::strlen(text) : 0;
    // The text may be the one that this write replaces: it is copied before that is freed.
    char* copy = nullptr;
    char inSlot[8] = {};
    if (length < sizeof inSlot) {
        std::memcpy(inSlot, text ? text : "", length);
    } else {
        copy = static_cast<char*>(std::malloc(length + 1));
        if (!copy) {
            hostApi().hostError(hostContext, msg::storeOutOfMemory);
            return -1;
        }
        std::memcpy(copy, text, length + 1);
    }
    const CsvCell cell = emptied(row, col);
    if (!cell.block) {
        std::free(copy);
        return -1;
    }
    if (copy) {
        cell.value().text = copy;
        cell.block->kinds()[cell.slot] = csvHeapText;
        _hasHeapTexts = true;
    } else if (length > 0) {
        std::memcpy(cell.value().shortText, inSlot, sizeof inSlot);
        cell.block->kinds()[cell.slot] = csvShortText;
    }
    return 1;
}

CsvBlock* CsvTable::appendStretch(std::int64_t row, std::int64_t blockIndex, const CsvStretch& stretch) {
    CsvBlock* block = nullptr;
    if (row < notGiven && blockIndex < notGiven / columnsPerBlock && reserveRow(static_cast<int>(row))) {
        block = newBlock(static_cast<int>(blockIndex), stretch.end);
    }
    if (!block) {
        hostApi().hostError(hostContext, msg::storeOutOfMemory);
        return nullptr;
    }
    const auto count = static_cast<std::size_t>(stretch.end);
    std::memcpy(block->values(), stretch.values, count * sizeof(CsvValue));
    std::memcpy(block->kinds(), stretch.kinds, count);
    const int column = block->blockIndex * columnsPerBlock;
    CsvRow& slots = _rows[row];
    if (slots.current) {
        block->lower = slots.current;
        slots.current->upper = block;
    } else {
        slots.firstCol = column + stretch.first;
    }
    slots.lastCol = column + stretch.end - 1;
    slots.current = block;
    firstRow = std::min(firstRow, static_cast<int>(row));
    lastRow = std::max(lastRow, static_cast<int>(row));
    firstCol = std::min(firstCol, slots.firstCol);
    lastCol = std::max(lastCol, slots.lastCol);
    return block;
}

void CsvStretch::clear() {
    const auto from = static_cast<std::size_t>(first), count = static_cast<std::size_t>(end) - from;
    std::memset(values + from, 0, count * sizeof(CsvValue));
    std::memset(kinds + from, 0, count);
    end = 0;
}

std::int64_t CsvTable::memorySize() const {
    constexpr std::int64_t tableItself = 136;
    std::int64_t size = tableItself + rowSlotSize * rowCapacity;
    for (int r = firstRow; r <= lastRow && r < rowCapacity; ++r) {
        for (const CsvBlock* block = lowestBlock(_rows[r]); block; block = block->upper) {
            size += blockSize;
            for (int slot = 0; slot < block->slotCount; ++slot) {
                const auto kind = block->kinds()[slot];
                if (kind != csvHeapText && kind != csvArenaText) continue;
                size += static_cast<std::int64_t>(std::strlen(block->values()[slot].text)) + 1;
            }
        }
    }
    return size;
}

}  // namespace quillet
