// What the rules of warnings look at: one thing that happened, with all that is known of it. Rows and columns are
// absolute and count from 0.
#pragma once
#include <string>
#include <string_view>

#include "cli/explain/facts/freshness.h"
#include "host/interface/observer.h"
#include "host/labels/range_spec.h"

namespace cli::explain {

using quillet::CellPart;
using quillet::Layout;
using quillet::RangeSpec;

/// A cell that was read, or passed over.
struct ReadCell {
    const RangeSpec& range;
    CellPart part;
    HostType type;           // of the value, without class and flags; a union has 0
    const HostValue* value;  // null: it does not convert, or is passed over
    bool passedOver;
    int kind;
    int row, col;
    const std::string& text;  // of a text cell
    Freshness freshness;
};

/// What a cell holds at one time.
struct Held {
    int kind = 0;
    bool formula = false;
    double number = 0;
    std::string text;
};

struct WrittenCell {
    const RangeSpec& range;
    CellPart part;
    int row, col;
    bool done;
    const Held &before, &now;
};

/// A header that a selection of columns names; `col` is the sheet's, -1 when there is none.
struct SoughtHeader {
    const RangeSpec& range;
    std::string_view name;
    int col;
};

/// The first cell that is read of a row.
struct ReadRow {
    const RangeSpec& range;
    int row;
};

/// A row whose index is complete. `sameAs` is the row that had it before, -1 for none.
struct IndexedRow {
    const RangeSpec& range;
    int row, col;
    int sameAs;
};

/// An item whose cells have all been written.
struct WrittenItem {
    const RangeSpec& range;
    Layout layout;
    bool byName;           // its label is a name of the workbook
    int firstRow, height;  // as the label gave them
    int lastWritten;       // row, -1: none
    long long cells;       // written
    long long rowsCut;
};

/// A text with options in front: the file name of a statement, or an item's label.
struct OptionText {
    std::string_view rest;  // behind the options
};

/// A file that a statement is to write.
struct Target {
    const std::string& path;
};

}  // namespace cli::explain
