#include "xlsx/filters/filter_run.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "engine/api/enums.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/filters/column_judge.h"
#include "xlsx/filters/filter_choice.h"

namespace vellum::xlsx {
namespace {

template <class Tag>
class Run {
public:
    using Row = typename ooxml::dialect<Tag>::sml::c_CT_Row;
    using Cell = typename ooxml::dialect<Tag>::sml::c_CT_Cell;
    using Filter = typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter;

    Run(Filter& filter, const CellRange& range, FilterBook& book) : _range(range), _reader(book) {
        for (auto& element : filter.filterColumn()) {
            if (element.colId() > range.colLast - range.colFirst) continue;
            if (auto judge = makeJudge<Tag>(element)) {
                _columns.push_back({range.colFirst + element.colId(), 0, std::move(judge)});
            } else if (FilterChoice<Tag>(element).kind() != filterNone) {
                _isPartial = true;
            }
        }
    }

    void run(Rows<Tag>& rows, std::uint32_t endRow) {
        const std::uint32_t end = std::min(_range.rowLast + 1, endRow);
        if (_range.rowFirst + 1 >= end) return;
        look(rows, end);
        const bool passesMissing = passes(nullptr);
        std::vector<std::uint32_t> missing;
        std::uint32_t next = _range.rowFirst + 1;
        for (std::size_t i = firstRowFrom(rows, next); i < rows.size() && rows[i].r() <= end; ++i) {
            Row& row = rows[i];
            for (; next + 1 < row.r(); ++next) {
                if (!passesMissing) missing.push_back(next);
            }
            show(row, passes(&row));
            next = row.r();
        }
        for (; next < end; ++next) {
            if (!passesMissing) missing.push_back(next);
        }
        addRows(rows, missing);
        std::size_t i = missing.empty() ? 0 : firstRowFrom(rows, missing.front());
        for (const std::uint32_t row : missing) {
            while (rows[i].r() != row + 1) ++i;
            rows[i].hidden(true);
        }
    }

private:
    struct Column {
        std::uint32_t col;
        std::size_t hint;
        std::unique_ptr<ColumnJudge<Tag>> judge;
    };

    FilterValue valueIn(const Row* row, Column& column) {
        return _reader.read(row ? cellOf(row->c(), column.col, column.hint) : nullptr);
    }

    /// Shows the values to those columns that have to know all of them. Rows that are not there are blank.
    void look(const Rows<Tag>& rows, std::uint32_t end) {
        for (Column& column : _columns) {
            if (!column.judge->looksFirst()) continue;
            for (std::size_t i = firstRowFrom(rows, _range.rowFirst + 1); i < rows.size() && rows[i].r() <= end; ++i) {
                column.judge->note(valueIn(&rows[i], column));
            }
            column.judge->endOfNotes();
        }
    }

    bool passes(const Row* row) {
        return std::all_of(_columns.begin(), _columns.end(),
                           [&](Column& column) { return column.judge->passes(valueIn(row, column), _reader); });
    }

    void show(Row& row, bool passed) {
        if (!passed) {
            row.hidden(true);
        } else if (!_isPartial) {
            row.unset_hidden();
        }
    }

    CellRange _range;
    ValueReader<Cell> _reader;
    std::vector<Column> _columns;
    bool _isPartial = false;  // a column that is not judged here may hide rows
};

}  // namespace

template <class Tag>
void runFilter(typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter& filter, const CellRange& range, Rows<Tag>& rows,
               std::uint32_t endRow, FilterBook& book) {
    Run<Tag>(filter, range, book).run(rows, endRow);
}

template void runFilter<ooxml::excelNormal_tag>(sheet::c_CT_AutoFilter&, const CellRange&,
                                                Rows<ooxml::excelNormal_tag>&, std::uint32_t, FilterBook&);
template void runFilter<ooxml::excelStrict_tag>(strict::c_CT_AutoFilter&, const CellRange&,
                                                Rows<ooxml::excelStrict_tag>&, std::uint32_t, FilterBook&);

}  // namespace vellum::xlsx
