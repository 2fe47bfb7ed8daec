// The table of a csv source: a sparse sheet of 64-cell blocks, made for wide files with few cells a row.
#pragma once
#include <cstddef>
#include <cstdint>

#include "host/interface/host_api.h"
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

/// 64 adjacent columns of one row; all zero at first. A row's blocks are linked in order of blockIndex. Tables are
/// often narrow: a block is given memory for its first `valueCount` values only, and moves when it needs more.
struct CsvBlock {
    std::int32_t blockIndex;  // column / 64
    std::int32_t valueCount;  // values that have memory, a multiple of 8
    std::uint8_t kinds[columnsPerBlock];
    CsvBlock* lower;
    CsvBlock* upper;
    CsvValue values[columnsPerBlock];
};
static_assert(sizeof(CsvBlock) == 600);

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

    CsvCellKind kind() const { return static_cast<CsvCellKind>(block->kinds[slot]); }
    CsvValue& value() const { return block->values[slot]; }
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
    /// Text of the loader, `length` bytes without a NUL; kept in the arena.
    int loadText(int row, int col, const char* text, std::size_t length);

    /// Bytes of the table by its layout: 136, 16 a row slot, 600 a block, and each text that has memory of its own.
    std::int64_t memorySize() const;

private:
    bool reserveRow(int row);
    CsvBlock* blockFor(CsvRow& row, int blockIndex, int slot);
    CsvBlock* newBlock(int valueCount);
    CsvBlock* widened(CsvBlock* block, int slot);
    CsvCell emptied(int row, int col);

    CsvRow* _rows = nullptr;
    ZeroedArena _blocks;
    ZeroedArena _texts;
    bool _hasHeapTexts = false;
    int _usualCount = 8;  // valueCount of new blocks: that of the last one that had to be widened
};

/// The first block of a row, by column; null for a row without cells.
CsvBlock* lowestBlock(const CsvRow& row);

}  // namespace quillet
