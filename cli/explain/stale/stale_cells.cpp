#include "cli/explain/stale/stale_cells.h"

#include <string_view>

#include "cli/explain/facts/sheet_view.h"

namespace cli::explain {

void StaleCells::wrote(const RangeSpec& range, int row, int col) {
    Sheet* const sheet = worksheetOf(range);
    if (sheet == nullptr || _current == nullptr) return;
    const char* const name = sheet->sheetName();
    _current->cells[name != nullptr ? name : ""][col].add({row, row});
    _current->changed = true;
}

int StaleCells::sheetOf(Book& book, Sheet& sheet) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        if (book.getSheet(i) == &sheet) return i;
    }
    return -1;
}

void StaleCells::judge(Written& written, Book& book) {
    CellSet changed;
    for (int i = 0; i < book.sheetCount(); ++i) {
        const char* const name = book.sheetNameAt(i);
        const auto columns = written.cells.find(name != nullptr ? name : "");
        if (columns == written.cells.end()) continue;
        for (const auto& [col, rows] : columns->second) changed[{i, col}] = rows;
    }
    const DependencyIndex index(book);
    written.stale = index.dependents(changed);
    written.unsure = index.unsure();
    written.changed = false;
}

Freshness StaleCells::read(const RangeSpec& range, int row, int col) {
    // Cells of an array formula need have no formula of their own.
    if (_current == nullptr || _current->cells.empty() || !workbookOf(range)) return Freshness::fresh;
    Book& book = *workbookOf(range);
    if (_current->changed) judge(*_current, book);
    const int sheet = sheetOf(book, *worksheetOf(range));
    const auto isIn = [&](const CellSet& set) {
        const auto rows = set.find({sheet, col});
        return rows != set.end() && rows->second.has(row);
    };
    if (isIn(_current->stale)) return Freshness::stale;
    return isIn(_current->unsure) ? Freshness::cannotTell : Freshness::fresh;
}

}  // namespace cli::explain
