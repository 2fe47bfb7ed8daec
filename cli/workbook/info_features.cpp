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

void findPrinting(Sheet& sheet, FeatureFacts& facts) {
    Area area;
    if (sheet.printAreaRange(&area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast))
        facts.printArea = area.text();
    int first = 0, last = 0;
    if (sheet.repeatRows(&first, &last))
        facts.repeatedRows = std::to_string(first + 1) + ":" + std::to_string(last + 1);
    if (sheet.repeatColumns(&first, &last)) facts.repeatedColumns = columnName(first) + ":" + columnName(last);
    facts.pageBreaks = std::max(sheet.rowBreakTotal(), 0) + std::max(sheet.columnBreakTotal(), 0);
}

void findFilter(Sheet& sheet, FeatureFacts& facts) {
    auto* const filter = sheet.hasFilter() ? sheet.filterObject() : nullptr;
    if (!filter) return;
    facts.hasFilter = true;
    Area area;
    if (filter->filterRange(&area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast)) {
        facts.filter.area = area.text();
    }
    facts.filter.columns = filter->filterColumnTotal();
    bool descending = false;
    int column = 0;
    facts.filter.sorted = filter->sortOrder(&column, &descending);
}

void findTables(Sheet& sheet, FeatureFacts& facts) {
    for (int i = 0; i < sheet.tableTotal(); ++i) {
        Area area;
        const char* const name = sheet.tableAt(i, &area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast);
        if (name) facts.tables.push_back({name, area.text()});
    }
}

void findHidden(Sheet& sheet, FeatureFacts& facts) {
    const int endCol = sheet.columnWidth(256) < 0 ? 256 : 16384;  // of a binary sheet, or of a package's
    for (int row = 0; row < sheet.lastRow(); ++row) facts.hiddenRows += sheet.isRowHidden(row);
    for (int col = 0; col < endCol; ++col) facts.hiddenColumns += sheet.isColumnHidden(col);
}

void addFilter(const FeatureFacts::Filter& filter, Notes& notes) {
    notes.add({"filter", filter.area.empty() ? "" : " ", filter.area, filter.columns > 0 ? " judging " : "",
               filter.columns > 0 ? std::to_string(filter.columns) : std::string(), filter.sorted ? ", sorted" : ""});
}

void addLevels(const FeatureFacts& facts, Notes& notes) {
    notes.count(facts.rowLevels, "level of rows", "levels of rows");
    notes.count(facts.columnLevels, "level of columns", "levels of columns");
}

}  // namespace

FeatureFacts featureFacts(Sheet& sheet) {
    FeatureFacts facts;
    int row = 0, col = 0;
    if (sheet.splitPosition(&row, &col)) facts.panes = cellName(row, col);
    facts.isProtected = sheet.isProtected();
    findPrinting(sheet, facts);
    facts.merges = std::max(sheet.mergeTotal(), 0);
    facts.links = std::max(sheet.hyperlinkTotal(), 0);
    findFilter(sheet, facts);
    findTables(sheet, facts);
    findHidden(sheet, facts);
    if (auto* const known = dynamic_cast<vellum::ISheetFacts*>(&sheet)) {
        const vellum::SheetFacts more = known->facts();
        facts.validationRules = more.validationRules;
        facts.rowLevels = more.rowLevels;
        facts.columnLevels = more.columnLevels;
    }
    return facts;
}

std::string featureNotes(Sheet& sheet) {
    const FeatureFacts facts = featureFacts(sheet);
    Notes notes;
    if (!facts.panes.empty()) notes.add({"panes at ", facts.panes});
    if (facts.isProtected) notes.add({"protected"});
    if (!facts.printArea.empty()) notes.add({"print area ", facts.printArea});
    if (!facts.repeatedRows.empty()) notes.add({"repeats rows ", facts.repeatedRows});
    if (!facts.repeatedColumns.empty()) notes.add({"repeats columns ", facts.repeatedColumns});
    notes.count(facts.pageBreaks, "page break", "page breaks");
    notes.count(facts.merges, "merge", "merges");
    notes.count(facts.links, "link", "links");
    notes.count(facts.validationRules, "validation rule", "validation rules");
    if (facts.hasFilter) addFilter(facts.filter, notes);
    for (const auto& table : facts.tables) notes.add({"table ", table.name, " ", table.area});
    notes.count(facts.hiddenRows, "hidden row", "hidden rows");
    notes.count(facts.hiddenColumns, "hidden column", "hidden columns");
    addLevels(facts, notes);
    return notes.text();
}

}  // namespace cli
