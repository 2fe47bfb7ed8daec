// Results of formulas that are older than what a script wrote.
#pragma once
#include <map>
#include <memory>
#include <string>

#include "cli/explain/facts/freshness.h"
#include "cli/explain/stale/dependency_index.h"
#include "host/labels/range_spec.h"

namespace cli::explain {

/// Remembers the cells that a run writes, by the paths of its workbooks, and tells of each formula that is read
/// whether its result is from before. Nothing is indexed before a workbook that was written is read.
class StaleCells {
public:
    /// The cells that follow are of this workbook.
    void enter(const char* path) { _current = &_books[path]; }
    /// Rows and columns are absolute.
    void wrote(const quillet::RangeSpec& range, int row, int col);
    [[nodiscard]] Freshness read(const quillet::RangeSpec& range, int row, int col);

private:
    struct Written {
        std::map<std::string, std::map<int, RowSet>> cells;  // by sheet and column
        bool changed = false;                                // since the sets below were made
        CellSet stale, unsure;
    };

    static void judge(Written& written, vellum::IBookT<char>& book);
    static int sheetOf(vellum::IBookT<char>& book, vellum::ISheetT<char>& sheet);

    std::map<std::string, Written> _books;
    Written* _current = nullptr;
};

}  // namespace cli::explain
