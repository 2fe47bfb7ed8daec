// Rows, columns and blocks that come and go.
#include <algorithm>

#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "xlsx/filters/auto_filter.h"
#include "xlsx/layout/moved_cells.h"
#include "xlsx/layout/moved_filter.h"
#include "xlsx/layout/moved_tables.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/drawing_parts.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::forgetPlaces() {
    _rowHint = {};
    _cellHint = 0;
    _rowPlaces.clear();
    _sharedMasters.clear();
    _mastersKnown = false;
    _heirs.clear();
    _areasDirty = _changed = true;
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::insertRows(int rowFirst, int rowLast, bool updateNames) {
    return guard(false, [&] {
        move({true, true, checkedRow(rowFirst), checkedRow(rowLast)}, updateNames);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeRows(int rowFirst, int rowLast, bool updateNames) {
    return guard(false, [&] {
        move({false, true, checkedRow(rowFirst), checkedRow(rowLast)}, updateNames);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::insertColumns(int colFirst, int colLast, bool updateNames) {
    return guard(false, [&] {
        move({true, false, checkedCol(colFirst), checkedCol(colLast)}, updateNames);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeColumns(int colFirst, int colLast, bool updateNames) {
    return guard(false, [&] {
        move({false, false, checkedCol(colFirst), checkedCol(colLast)}, updateNames);
        return true;
    });
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::move(const xlsx::CellMove& move, bool updateNames) {
    if (move.first > move.last) throw vlerror(move.isRow ? xlsx::msg::rowsReversed : xlsx::msg::colsReversed);
    namedSheet();  // throws for a sheet without a book before anything changes
    numberAll();
    xlsx::MovedCells<Tag> cells(*_rows);
    if (move.isInsert && cells.pushesOff(move))
        throw vlerror(move.isRow ? xlsx::msg::rowOutOfRange : xlsx::msg::colOutOfRange);
    const auto tablesHere = tables();
    for (const auto* const table : tablesHere) xlsx::checkTable<Tag>(*table, move);
    cells.moveFormulas(move);
    cells.move(move);
    forgetPlaces();
    moveRanges(move);
    for (auto* const table : tablesHere) xlsx::moveTable<Tag>(*table, move);
    moveNames(move, updateNames);
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::moveRanges(const xlsx::CellMove& move) {
    _merges.move(move);
    if (!move.isRow) {
        _columns.move(move);
        moveColumnStyles(move);
    }
    auto* const filter = this->_root.find_autoFilter();
    if (filter && !xlsx::moveFilter<Tag>(*filter, move)) dropFilter();
    if (_filter) _filter->forgetGone();
}

/// The hidden name of the filter follows the filter, whatever happens to the others.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::moveNames(const xlsx::CellMove& move, bool updateNames) {
    auto& names = book().names();
    const xlsx::NamedSheet sheet = namedSheet();
    if (updateNames) {
        names.move(sheet.name, move);
    } else if (auto* const ofFilter = names.find(L"_xlnm._FilterDatabase", sheet.index)) {
        names.move(*ofFilter, sheet.name, move);
    }
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::moveColumnStyles(const xlsx::CellMove& move) {
    if (move.first >= _columnStyle.size()) return;
    const auto first = _columnStyle.begin() + move.first;
    if (move.isInsert) {
        _columnStyle.insert(first, move.count(), 0);
        if (_columnStyle.size() > sheetColumns) _columnStyle.resize(sheetColumns);
    } else {
        const auto past = std::min<std::size_t>(move.last + 1, _columnStyle.size());
        _columnStyle.erase(first, _columnStyle.begin() + static_cast<std::ptrdiff_t>(past));
    }
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::tables() -> std::vector<typename Sml::c_CT_Table*> {
    std::vector<typename Sml::c_CT_Table*> found;
    const auto* const parts = this->_root.find_tableParts();
    const std::string path = parts ? book().sheetPath(_index) : std::string();
    const auto* const relationships = parts ? book().findRelationshipsOf(path) : nullptr;
    if (!relationships) return found;
    for (const auto& part : parts->tablePart()) {
        const std::string target = relationships->targetById(part.id());
        if (target.empty()) continue;
        const std::string partPath = target.starts_with('/') ? target : absoluteTarget(folderOf(path), target);
        auto* const table = dynamic_cast<Table<Tag>*>(book().findPart(partPath));
        if (table) found.push_back(&table->root());
    }
    return found;
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::clearRange(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guard(false, [&] {
        if (rowFirst > rowLast) throw vlerror(xlsx::msg::rowsReversed);
        if (colFirst > colLast) throw vlerror(xlsx::msg::colsReversed);
        const bool isWhole = rowFirst == 0 && rowLast == static_cast<int>(sheetRows) - 1 && colFirst == 0 &&
                             colLast == static_cast<int>(sheetColumns) - 1;
        if (isWhole) {
            _rows->clear();
            _numbered = true;
            forgetPlaces();
            return true;
        }
        numberAll();
        const int row1 = std::max(rowFirst, 0), row2 = std::min(rowLast, static_cast<int>(sheetRows) - 1);
        const int col1 = std::max(colFirst, 0), col2 = std::min(colLast, static_cast<int>(sheetColumns) - 1);
        if (row1 > row2 || col1 > col2) return true;
        if (clearCells({static_cast<std::uint32_t>(row1), static_cast<std::uint32_t>(row2),
                        static_cast<std::uint32_t>(col1), static_cast<std::uint32_t>(col2)})) {
            _areasDirty = _changed = true;  // the rows stay, and groups of formulas were handed on
        }
        return true;
    });
}

/// Row by row; where the text of a group of formulas stands, it is handed on before the cell goes. False when there was
/// no cell.
template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::clearCells(const CellRange& range) {
    bool any = false;
    for (RowPlace row = rowAt(range.rowFirst); row != _rows->end() && row->r() <= range.rowLast + 1; ++row) {
        Cells& cells = row->c();
        const std::size_t from = cellAt(cells, range.colFirst);
        std::size_t past = from;
        for (; past < cells.size() && cells[past].column() <= range.colLast; ++past) {
            Cell& cell = cells[past];
            if (isMaster(cell)) handOverMaster({cell.row(), cell.column()}, cell);
            cell.clearContent();
        }
        const auto at = [&](std::size_t n) { return cells.begin() + static_cast<std::ptrdiff_t>(n); };
        any = any || past != from;
        cells.erase(at(from), at(past));
        _cellHint = 0;
    }
    return any;
}

}  // namespace vellum
