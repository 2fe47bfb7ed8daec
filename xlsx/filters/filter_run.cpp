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
class Judge {
public:
    using Row = typename ooxml::dialect<Tag>::sml::c_CT_Row;
    using Cell = typename ooxml::dialect<Tag>::sml::c_CT_Cell;
    using Filter = typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter;

    Judge(Filter& filter, const CellRange& range, FilterBook& book) : _range(range), _reader(book) {
        for (auto& element : filter.filterColumn()) {
            if (element.colId() > range.colLast - range.colFirst) continue;
            if (auto judge = makeJudge<Tag>(element)) {
                _columns.push_back({range.colFirst + element.colId(), 0, std::move(judge)});
            } else if (FilterChoice<Tag>(element).kind() != filterNone) {
                _isPartial = true;
            }
        }
    }

    Judgement run(const Rows<Tag>& rows, std::uint32_t endRow) {
        Judgement judgement{{}, _isPartial};
        const std::uint32_t first = _range.rowFirst + 1, end = std::min(_range.rowLast + 1, endRow);
        if (first >= end) return judgement;
        look(rows, end);
        judgement.passes.assign(end - first, passes(nullptr));
        for (auto row = rows.firstFrom(first); row != rows.end() && row->r() <= end; ++row) {
            judgement.passes[row->r() - 1 - first] = passes(&*row);
        }
        return judgement;
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
            for (auto row = rows.firstFrom(_range.rowFirst + 1); row != rows.end() && row->r() <= end; ++row) {
                column.judge->note(valueIn(&*row, column));
            }
            column.judge->endOfNotes();
        }
    }

    bool passes(const Row* row) {
        return std::all_of(_columns.begin(), _columns.end(),
                           [&](Column& column) { return column.judge->passes(valueIn(row, column), _reader); });
    }

    CellRange _range;
    ValueReader<Cell> _reader;
    std::vector<Column> _columns;
    bool _isPartial = false;
};

}  // namespace

template <class Tag>
Judgement judgeRows(typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter& filter, const CellRange& range,
                    const Rows<Tag>& rows, std::uint32_t endRow, FilterBook& book) {
    return Judge<Tag>(filter, range, book).run(rows, endRow);
}

template <class Tag>
void showRows(const Judgement& judgement, const std::vector<std::uint32_t>& order, const CellRange& range,
              Rows<Tag>& rows) {
    const std::uint32_t first = range.rowFirst + 1;
    const auto count = static_cast<std::uint32_t>(judgement.passes.size());
    const auto passes = [&](std::uint32_t at) { return judgement.passes[order.empty() ? at : order[at]]; };
    std::vector<std::uint32_t> missing;
    std::uint32_t next = 0;  // from the first row
    const auto missTo = [&](std::uint32_t end) {
        for (; next < end; ++next) {
            if (!passes(next)) missing.push_back(first + next);
        }
    };
    for (auto row = rows.firstFrom(first); row != rows.end() && row->r() <= first + count; ++row) {
        missTo(row->r() - 1 - first);
        if (!passes(next++)) {
            row->hidden(true);
        } else if (!judgement.isPartial) {
            row->unset_hidden();
        }
    }
    missTo(count);
    for (const std::uint32_t row : missing) addRow(rows, row).hidden(true);
}

#define VELLUM_FILTER_RUN(Tag, family)                                                                             \
    template Judgement judgeRows<Tag>(family::c_CT_AutoFilter&, const CellRange&, const Rows<Tag>&, std::uint32_t, \
                                      FilterBook&);                                                                \
    template void showRows<Tag>(const Judgement&, const std::vector<std::uint32_t>&, const CellRange&, Rows<Tag>&);
VELLUM_FILTER_RUN(ooxml::excelNormal_tag, sheet)
VELLUM_FILTER_RUN(ooxml::excelStrict_tag, strict)
#undef VELLUM_FILTER_RUN

}  // namespace vellum::xlsx
