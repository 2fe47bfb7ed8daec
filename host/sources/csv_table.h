// The table of a csv source: a sparse sheet of 64-cell blocks, made for wide files with few cells a row.
#pragma once
#include <cstddef>
#include <cstdint>

#include "host/interface/host_api.h"
#include "host/sources/csv_texts.h"
#include "host/sources/zeroed_arena.h"

namespace quillet {

constexpr int columnsPerBlock = 64;

/// What a slot holds. Texts of up to 7 characters stand in the slot itself; with the low two bits alone every text is
/// a text (2). Loaded texts lie in the table's arena and are freed with it, written ones on the heap.
enum CsvCellKind : std::uint8_t {
    csvEmpty = 0,
    csvNumber = 1,
    csvHeapText = 2,
    csvBoolean = 3,
    csvShortText = 6,
    csvArenaText = 10,
    csvKindMask = 3,
};

union CsvValue {
    double real;
    std::int32_t word;
    char* text;
    char shortText[8];
};

/// 64 adjacent columns of one row. A row's blocks are linked in order of blockIndex. Tables are often narrow: a block
/// has memory for its first `slotCount` slots only, and moves when it needs more. Behind it lie the values of its
/// slots, then a byte for the kind of each.
struct CsvBlock {
    std::int32_t blockIndex;  // column / 64
    std::int32_t slotCount;
    CsvBlock* lower;
    CsvBlock* upper;

    CsvValue* values() { return reinterpret_cast<CsvValue*>(this + 1); }
    const CsvValue* values() const { return reinterpret_cast<const CsvValue*>(this + 1); }
    std::uint8_t* kinds() { return reinterpret_cast<std::uint8_t*>(values() + slotCount); }
    const std::uint8_t* kinds() const { return reinterpret_cast<const std::uint8_t*>(values() + slotCount); }
};
static_assert(sizeof(CsvBlock) % alignof(CsvValue) == 0);

/// What the loader gathers of a row before it becomes a block. All zero but for the slots from `first` to `end`.
struct CsvStretch {
    CsvValue values[columnsPerBlock];
    std::uint8_t kinds[columnsPerBlock];
    int first, end;  // end 0: nothing

    CsvValue& store(int slot, CsvCellKind kind) {
        if (end == 0) first = slot;
        end = slot + 1;
        kinds[slot] = kind;
        return values[slot];
    }
    void clear();
};

/// A row slot. Until the row has a block its bounds hold no column: fresh slots are zero pages that nobody touched,
/// so that one cell in a far row costs one page and not all rows before it.
struct CsvRow {
    std::int32_t firstCol;
    std::int32_t lastCol;
    CsvBlock* current;  // the block last touched; null: no cell
};
static_assert(sizeof(CsvRow) == 16);

struct CsvCell {
    CsvBlock* block;  // null: a miss
    int slot;

    CsvCellKind kind() const { return static_cast<CsvCellKind>(block->kinds()[slot]); }
    CsvValue& value() const { return block->values()[slot]; }
    /// The cell's text, null when it holds none.
    char* text() const;
};

/// Rows and columns count from 0. Belongs to one source and one thread at a time.
class CsvTable {
public:
    CsvTable(HostContext* context, char* lineBufferOfSource, std::int32_t bufferSizeOfSource);
    ~CsvTable();
    CsvTable(const CsvTable&) = delete;
    CsvTable& operator=(const CsvTable&) = delete;

    HostContext* hostContext;
    char* lineBuffer;  // the source's text buffer
    std::int32_t bufferSize;
    std::int32_t fieldSep = ',';
    std::int32_t decimalSep = '.';
    char trueText[32] = "TRUE";
    char falseText[32] = "FALSE";
    const char* realFormat = nullptr;                           // set at close
    std::int32_t firstRow, lastRow = 0, firstCol, lastCol = 0;  // first ones 0x7fffffff while there is no cell
    std::int32_t rowCapacity = 0;

    const CsvRow& row(int index) const { return _rows[index]; }

    /// The cell when it was ever stored, else a miss.
    CsvCell find(int row, int col) const;

    /// The cell, made when it is not there; bounds widen to it. A miss after a report when memory is short.
    CsvCell cellFor(int row, int col);

    /// Writers: 1, or -1 when the cell could not be made.
    int storeNumber(int row, int col, double value);
    int storeBoolean(int row, int col, int value);
    int storeText(int row, int col, const char* text);  // null and "" empty the cell
    int storeBlank(int row, int col);

    /// The loader's way in, for rows and columns behind all that there are. The new block, null after a report when
    /// memory is short.
    CsvBlock* appendStretch(std::int64_t row, std::int64_t blockIndex, const CsvStretch& stretch);
    CsvTexts& texts() { return _texts; }

    /// Bytes of the table by its layout: 136, 16 a row slot, 600 a block, and each text that has memory of its own.
    std::int64_t memorySize() const;

private:
    bool reserveRow(int row);
    bool reserveRowMemory(std::int32_t capacity);
    CsvBlock* blockFor(int row, int blockIndex, int slot);
    CsvBlock* newBlock(int blockIndex, int slotCount);
    int usualSlots(int row, int blockIndex, int slot) const;
    CsvBlock* widened(CsvBlock* block, int slot);
    CsvCell emptied(int row, int col);

    CsvRow* _rows = nullptr;
    ZeroedArena _blocks;
    std::int32_t _reservedRows = 0;  // row slots that have addresses, at least rowCapacity
    CsvTexts _texts;
    bool _hasHeapTexts = false;
};

/// The first block of a row, by column; null for a row without cells.
CsvBlock* lowestBlock(const CsvRow& row);

}  // namespace quillet
