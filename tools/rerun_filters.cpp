// Runs the filters of workbooks anew and holds the rows that they hide against those that the files hide:
//   rerun_filters FILE...
// Prints a line for each sheet with a filter; exit status 1 when one differs. Sorting is left out: what a file holds is
// sorted already, or was changed since.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"
#include "engine/api/isheet.h"

namespace {

using Sheet = vellum::ISheetT<char>;

std::vector<bool> hiddenRows(Sheet& sheet, int first, int last) {
    std::vector<bool> hidden;
    for (int row = first; row <= last; ++row) hidden.push_back(sheet.isRowHidden(row));
    return hidden;
}

/// Columns by dates relative to today, by colours and icons are not judged.
bool isJudged(vellum::IAutoFilterT<char>& filter) {
    for (int i = 0; i < filter.filterColumnTotal(); ++i) {
        const int kind = filter.filterColumnAt(i)->filterKind();
        if (kind > vellum::filterCustom && kind != vellum::filterNone) return false;
    }
    return true;
}

/// What the run makes of the rows: with `shown`, all are shown before.
bool sameRows(Sheet& sheet, int first, int last, const std::vector<bool>& stored, bool shown) {
    for (int row = first; shown && row <= last; ++row) {
        if (sheet.isRowHidden(row)) sheet.setRowHidden(row, false);
    }
    return sheet.applyFilter() && hiddenRows(sheet, first, last) == stored;
}

bool rerun(const std::string& path, Sheet& sheet) {
    auto& filter = *sheet.filterObject();
    int first = 0, last = 0, colFirst = 0, colLast = 0, column = 0;
    bool descending = false;
    const std::string name = path + ": " + sheet.sheetName();
    if (!filter.filterRange(&first, &last, &colFirst, &colLast) || filter.sortOrder(&column, &descending)) {
        std::printf("%s: has no range, or is sorted: left out\n", name.c_str());
        return true;
    }
    last = std::min(last, sheet.lastRow() - 1);
    const std::vector<bool> stored = hiddenRows(sheet, ++first, last);
    const bool judged = isJudged(filter);
    const bool same =
        sameRows(sheet, first, last, stored, false) && (!judged || sameRows(sheet, first, last, stored, true));
    std::size_t hidden = 0;
    for (const bool one : stored) hidden += one;
    std::printf("%s: %zu of %zu rows hidden%s: %s\n", name.c_str(), hidden, stored.size(), judged ? "" : ", not judged",
                same ? "the same" : "DIFFERS");
    return same;
}

}  // namespace

int main(int argc, char** argv) {
    bool same = true;
    for (int i = 1; i < argc; ++i) {
        std::string error;
        const cli::BookPtr book = cli::loadBook(argv[i], error);
        if (!book) {
            std::printf("%s: %s\n", argv[i], error.c_str());
            same = false;
            continue;
        }
        for (int k = 0; k < book->sheetCount(); ++k) {
            Sheet* const sheet = book->getSheet(k);
            if (sheet && sheet->hasFilter()) same = rerun(argv[i], *sheet) && same;
        }
    }
    return same ? 0 : 1;
}
