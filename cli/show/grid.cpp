#include "cli/show/grid.h"

#include <algorithm>
#include <cmath>

#include "cli/formats/display_width.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

constexpr int widestContent = 60;
constexpr int longestGap = 5;  // rows without content up to here are shown

class GridReader {
public:
    GridReader(vellum::IBookT<char>& book, Sheet& sheet, const SheetArea& area, Fit fit, int maxRows)
        : _texts(book), _sheet(sheet), _area(area), _fit(fit), _maxRows(static_cast<std::size_t>(maxRows)) {}

    Grid read() {
        addColumns();
        auto* const cells = dynamic_cast<vellum::ISheetCells*>(&_sheet);
        int next = _area.rowFirst;
        for (int row = _area.rowFirst, col = _area.colFirst; cells != nullptr && cells->cellFrom(&row, &col);) {
            if (row > _area.rowLast) break;
            if (_area.contains(row, col)) {
                addGap(next, row);
                addRow(row);
                next = row + 1;
            }
            if (col <= _area.colLast && !_area.contains(row, col)) {
                col = _area.colFirst;  // this row's first cell lies left of the area
                continue;
            }
            ++row;
            col = _area.colFirst;
            if (_grid.rows.size() >= _maxRows) return std::move(_grid);
        }
        addGap(next, _area.rowLast + 1);
        return std::move(_grid);
    }

private:
    void addColumns() {
        for (int col = _area.colFirst; col <= _area.colLast; ++col) {
            if (_sheet.isColumnHidden(col)) continue;
            const int wanted = _fit == Fit::content ? 0 : static_cast<int>(std::lround(_sheet.columnWidth(col)));
            const int letters = col < 26 ? 1 : col < 26 + 26 * 26 ? 2 : 3;
            _grid.columns.push_back({col, std::max(wanted, letters)});
        }
    }
    void addGap(int from, int to) {
        if (to - from > longestGap) {
            _grid.rows.push_back({-1, {}});
            return;
        }
        for (int row = from; row < to; ++row) addRow(row);
    }
    void addRow(int row) {
        if (_sheet.isRowHidden(row)) return;
        GridRow& line = _grid.rows.emplace_back(GridRow{row, {}});
        line.cells.reserve(_grid.columns.size());
        for (GridColumn& column : _grid.columns) {
            ShownCell& cell = line.cells.emplace_back(_texts.at(_sheet, row, column.col));
            cell.text = onOneLine(cell.text);
            if (!cell.isNumber && _fit == Fit::sheet) continue;
            column.width = std::max(column.width, std::min(displayWidth(cell.text), widestContent));
        }
    }

    CellTexts _texts;
    Sheet& _sheet;
    const SheetArea& _area;
    Fit _fit;
    std::size_t _maxRows;
    Grid _grid;
};

}  // namespace

Grid readGrid(vellum::IBookT<char>& book, const SheetArea& area, Fit fit, int maxRows) {
    Sheet* const sheet = book.getSheet(area.sheet);
    if (sheet == nullptr) return {};
    return GridReader(book, *sheet, area, fit, maxRows).read();
}

}  // namespace cli
