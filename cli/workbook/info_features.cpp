#include "cli/workbook/info_features.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "cli/workbook/cell_name.h"
#include "engine/api/iautofilter.h"
#include "engine/api/isheetfacts.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

struct Area {
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;

    [[nodiscard]] std::string text() const { return cellName(rowFirst, colFirst) + ":" + cellName(rowLast, colLast); }
};

class Notes {
public:
    void add(std::initializer_list<std::string_view> words) {
        if (!_text.empty()) _text += "; ";
        for (const std::string_view word : words) _text += word;
    }
    /// "1 merge", "7 merges"; nothing for none.
    void count(int total, std::string_view one, std::string_view several) {
        if (total > 0) add({std::to_string(total), " ", total == 1 ? one : several});
    }
    [[nodiscard]] const std::string& text() const { return _text; }

private:
    std::string _text;
};

std::string columnName(int col) {
    std::string name = cellName(0, col);
    name.pop_back();
    return name;
}

void addPrinting(Sheet& sheet, Notes& notes) {
    Area area;
    if (sheet.printAreaRange(&area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast)) {
        notes.add({"print area ", area.text()});
    }
    int first = 0, last = 0;
    if (sheet.repeatRows(&first, &last)) {
        notes.add({"repeats rows ", std::to_string(first + 1), ":", std::to_string(last + 1)});
    }
    if (sheet.repeatColumns(&first, &last)) {
        notes.add({"repeats columns ", columnName(first), ":", columnName(last)});
    }
    notes.count(std::max(sheet.rowBreakTotal(), 0) + std::max(sheet.columnBreakTotal(), 0), "page break",
                "page breaks");
}

void addFilter(Sheet& sheet, Notes& notes) {
    auto* const filter = sheet.hasFilter() ? sheet.filterObject() : nullptr;
    if (!filter) return;
    Area area;
    const bool hasRange = filter->filterRange(&area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast);
    const int columns = filter->filterColumnTotal();
    bool descending = false;
    int column = 0;
    notes.add({"filter", hasRange ? " " : "", hasRange ? area.text() : std::string(), columns > 0 ? " judging " : "",
               columns > 0 ? std::to_string(columns) : std::string(),
               filter->sortOrder(&column, &descending) ? ", sorted" : ""});
}

void addTables(Sheet& sheet, Notes& notes) {
    for (int i = 0; i < sheet.tableTotal(); ++i) {
        Area area;
        const char* const name = sheet.tableAt(i, &area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast);
        if (name) notes.add({"table ", name, " ", area.text()});
    }
}

void addHidden(Sheet& sheet, Notes& notes) {
    const int endCol = sheet.columnWidth(256) < 0 ? 256 : 16384;  // of a binary sheet, or of a package's
    int rows = 0, columns = 0;
    for (int row = 0; row < sheet.lastRow(); ++row) rows += sheet.isRowHidden(row);
    for (int col = 0; col < endCol; ++col) columns += sheet.isColumnHidden(col);
    notes.count(rows, "hidden row", "hidden rows");
    notes.count(columns, "hidden column", "hidden columns");
}

void addLevels(const vellum::SheetFacts& facts, Notes& notes) {
    notes.count(facts.rowLevels, "level of rows", "levels of rows");
    notes.count(facts.columnLevels, "level of columns", "levels of columns");
}

}  // namespace

std::string featureNotes(Sheet& sheet) {
    Notes notes;
    int row = 0, col = 0;
    if (sheet.splitPosition(&row, &col)) notes.add({"panes at ", cellName(row, col)});
    if (sheet.isProtected()) notes.add({"protected"});
    addPrinting(sheet, notes);
    notes.count(sheet.mergeTotal(), "merge", "merges");
    notes.count(sheet.hyperlinkTotal(), "link", "links");
    auto* const known = dynamic_cast<vellum::ISheetFacts*>(&sheet);
    const vellum::SheetFacts facts = known ? known->facts() : vellum::SheetFacts();
    notes.count(facts.validationRules, "validation rule", "validation rules");
    addFilter(sheet, notes);
    addTables(sheet, notes);
    addHidden(sheet, notes);
    addLevels(facts, notes);
    return notes.text();
}

}  // namespace cli
