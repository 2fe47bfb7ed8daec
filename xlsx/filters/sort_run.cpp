#include "xlsx/filters/sort_run.h"

#include <algorithm>
#include <iterator>

#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/filters/sort_order.h"

namespace vellum::xlsx {
namespace {

template <class Tag>
class Sort {
public:
    using Row = typename ooxml::dialect<Tag>::sml::c_CT_Row;
    using Cell = typename ooxml::dialect<Tag>::sml::c_CT_Cell;
    using Cells = std::vector<Cell>;

    Sort(Rows<Tag>& rows, const CellRange& data, std::uint32_t endRow) : _rows(rows), _data(data) {
        const std::uint32_t end = std::min(data.rowLast + 1, endRow);
        if (data.rowFirst < end) _at.resize(end - data.rowFirst);
        findRows();
    }

    std::vector<std::uint32_t> run(const std::vector<SortKey>& keys, FilterBook& book) {
        const auto order = sortedOrder(ranked(keys, book), _at.size());
        if (std::is_sorted(order.begin(), order.end())) return {};
        takeBlocks();
        makeRows(order);
        std::vector<std::uint32_t> places(order.size());
        for (std::uint32_t to = 0; to < order.size(); ++to) places[order[to]] = to;
        for (std::uint32_t from = 0; from < places.size(); ++from) {  // cells lie in this order in memory
            constexpr std::uint32_t ahead = 16;                       // rows do not
            if (from + ahead < places.size()) fetch(_at[places[from + ahead]]);
            if (!_blocks[from].empty()) putBlock(from, places[from]);
        }
        return order;
    }

private:
    void findRows() {
        std::fill(_at.begin(), _at.end(), nullptr);
        for (auto row = _rows.firstFrom(_data.rowFirst); row != _rows.end(); ++row) {
            const std::size_t at = row->r() - 1 - _data.rowFirst;
            if (at >= _at.size()) return;
            _at[at] = &*row;
        }
    }

    /// The values of all keys, in one walk over the rows.
    std::vector<std::vector<SortPlace>> ranked(const std::vector<SortKey>& keys, FilterBook& book) {
        ValueReader<Cell> reader(book);
        std::vector<Ranking<Cell>> rankings;
        for (const SortKey& key : keys) rankings.emplace_back(reader, key.descending).reserve(_at.size());
        std::vector<std::size_t> hints(keys.size());
        for (const Row* const row : _at) {
            for (std::size_t i = 0; i < keys.size(); ++i) {
                rankings[i].add(row ? cellOf(row->c(), keys[i].col, hints[i]) : nullptr);
            }
        }
        std::vector<std::vector<SortPlace>> columns;
        for (auto& ranking : rankings) columns.push_back(ranking.take());
        return columns;
    }

    /// Takes the cells of the block out of their rows.
    void takeBlocks() {
        _blocks.resize(_at.size());
        for (std::size_t i = 0; i < _at.size(); ++i) {
            if (!_at[i]) continue;
            Cells& cells = _at[i]->c();
            if (cells.empty()) continue;
            if (cells.front().column() >= _data.colFirst && cells.back().column() <= _data.colLast) {
                _blocks[i].swap(cells);
                continue;
            }
            const auto first = cells.begin() + static_cast<std::ptrdiff_t>(firstCellFrom(cells, _data.colFirst, 0));
            const auto end = cells.begin() + static_cast<std::ptrdiff_t>(firstCellFrom(cells, _data.colLast + 1, 0));
            _blocks[i].assign(std::make_move_iterator(first), std::make_move_iterator(end));
            cells.erase(first, end);
        }
    }

    /// Rows that get cells and are not there.
    void makeRows(const std::vector<std::uint32_t>& order) {
        for (std::uint32_t to = 0; to < order.size(); ++to) {
            if (!_at[to] && !_blocks[order[to]].empty()) _at[to] = &addRow(_rows, _data.rowFirst + to);
        }
    }

    /// Has a row on its way to the processor before it is needed.
    static void fetch(const Row* row) {
        for (std::size_t at = 0; row != nullptr && at < sizeof(Row); at += 64) {
            __builtin_prefetch(reinterpret_cast<const char*>(row) + at, 1);
        }
    }

    void putBlock(std::uint32_t from, std::uint32_t to) {
        Row& row = *_at[to];
        Cells& block = _blocks[from];
        if (from != to) {
            row.unset_spans();  // of the cells that it had
            for (Cell& cell : block) {
                moveFormula(cell, from, to);
                cell.setReference(_data.rowFirst + to, cell.column());
            }
        }
        Cells& cells = row.c();
        if (cells.empty()) {
            cells.swap(block);
            return;
        }
        const auto at = static_cast<std::ptrdiff_t>(firstCellFrom(cells, _data.colFirst, 0));
        cells.insert(cells.begin() + at, std::make_move_iterator(block.begin()), std::make_move_iterator(block.end()));
    }

    /// The range of an array formula goes along with its cell.
    static void moveFormula(Cell& cell, std::uint32_t from, std::uint32_t to) {
        const auto formula = cell.formula();
        const auto range =
            formula && formula->isset_ref() ? readCellRange(std::string_view(formula->ref())) : std::nullopt;
        if (!range) return;
        const auto moved = [&](std::uint32_t row) {
            const std::int64_t at = std::int64_t{row} + to - from;
            return static_cast<std::uint32_t>(std::clamp<std::int64_t>(at, 0, sheetRows - 1));
        };
        cell.makeFormula().ref(
            cellRangeText({moved(range->rowFirst), moved(range->rowLast), range->colFirst, range->colLast}));
    }

    Rows<Tag>& _rows;
    CellRange _data;
    std::vector<Row*> _at;  // by row of the block; null for one that is not there
    std::vector<Cells> _blocks;
};

}  // namespace

template <class Tag>
std::vector<std::uint32_t> sortRows(Rows<Tag>& rows, const CellRange& data, std::uint32_t endRow,
                                    const std::vector<SortKey>& keys, FilterBook& book) {
    return Sort<Tag>(rows, data, endRow).run(keys, book);
}

template std::vector<std::uint32_t> sortRows<ooxml::excelNormal_tag>(Rows<ooxml::excelNormal_tag>&, const CellRange&,
                                                                     std::uint32_t, const std::vector<SortKey>&,
                                                                     FilterBook&);
template std::vector<std::uint32_t> sortRows<ooxml::excelStrict_tag>(Rows<ooxml::excelStrict_tag>&, const CellRange&,
                                                                     std::uint32_t, const std::vector<SortKey>&,
                                                                     FilterBook&);

}  // namespace vellum::xlsx
