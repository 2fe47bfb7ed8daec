// Options of the command that prints cells.
#pragma once
namespace cli {

/// What `quillet dump` prints besides the list of sheets.
struct DumpOptions {
    bool cells = true;
    bool formulas = false;  // the text of each formula
    bool names = false;     // a line for each defined name, in front of the sheets
    bool features = false;  // a line of its settings behind each worksheet's cells
    bool objects = false;   // pictures of the book, and what lies on each worksheet

    /// Whatever there is; the cells stay as they are.
    void addAll() { formulas = names = features = objects = true; }
};

}  // namespace cli
