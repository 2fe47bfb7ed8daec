// What is told of a statement: its source, its items, their cells and warnings. Rows and columns count from 0.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/explain/facts/finding.h"
#include "host/interface/observer.h"

namespace cli::explain {

enum class Fate { read, notConverted, passedOver, written, refused };

struct CellRecord {
    int row = 0, col = 0;
    quillet::CellPart part = quillet::CellPart::value;
    Fate fate = Fate::read;
    std::string kind, shown;            // of what stands there, before a write
    std::string value;                  // JSON: what the host gets, or what is put there
    std::vector<const Rule*> warnings;  // of this cell
};

struct RowRecord {
    int row = 0;
    bool passedOver = false;
    std::vector<CellRecord> cells;
};

/// An option in force, with its value where it has one.
struct OptionRecord {
    std::string name, value;
    const char* from = "";  // "file name", "label", "range" or "default"
};

struct ColumnRecord {
    int col = 0;
    std::string header;
};

/// What the sheet shows in a row around the item's cells.
struct ContextRow {
    int row = 0;
    std::vector<std::string> texts;
};

struct ItemRecord {
    std::string label;
    bool hasLabel = false, write = false;
    bool opened = false, done = false;  // its range was understood; its cells were gone through to the end
    std::string rest;                   // of the label, behind its options
    std::vector<OptionRecord> options;
    std::string sheet;
    int firstRow = 0, lastRow = -1, firstCol = 0, lastCol = -1, headerRow = -1;
    std::vector<ColumnRecord> columns;  // in the item's order
    std::optional<quillet::Layout> layout;
    int indexColumns = 0;
    bool grows = false;
    long long rows = 0, rowsPassedOver = 0, cells = 0, cellsPassedOver = 0;
    long long rowsCut = 0;
    std::vector<RowRecord> shownRows;  // the first ones, the last ones, and those with warnings; ascending
    std::size_t firstRows = 0;         // so many of them are the first ones
    std::vector<ContextRow> context;   // of the rows that are shown, and two beyond; only where last rows are kept
    int contextCol = 0;                // the column of their first texts
    std::vector<Finding> findings;
};

struct SourceRecord {
    std::string text;          // as the script has it
    std::string driver, name;  // what was taken as the file's name
    std::string path;
    bool update = false, exists = false;
    bool written = false;  // by an earlier statement, in memory
    std::uintmax_t size = 0;
    std::string format;  // empty when it did not open
    std::vector<OptionRecord> options;
    std::vector<Finding> findings;
};

/// Which rows of an item are kept.
struct RowWishes {
    std::size_t first = 5;
    std::size_t last = 0;
    std::size_t warned = 0;
};

}  // namespace cli::explain
