#include "cli/show/print_grid.h"

#include <algorithm>

#include "cli/formats/display_width.h"
#include "cli/workbook/cell_name.h"

namespace cli {
namespace {

constexpr int betweenCells = 3;  // " | "

std::string columnLetters(int col) {
    std::string name = cellName(0, col);
    name.pop_back();
    return name;
}

std::string placed(const std::string& text, int width, Side side) {
    const int missing = std::max(width - displayWidth(text), 0);
    const int before = side == Side::left ? 0 : side == Side::right ? missing : missing / 2;
    return std::string(static_cast<std::size_t>(before), ' ') + text +
           std::string(static_cast<std::size_t>(missing - before), ' ');
}

class GridPrinter {
public:
    GridPrinter(const Grid& grid, int width, std::ostream& out) : _grid(grid), _out(out) {
        int last = 0;
        for (const GridRow& row : grid.rows) last = std::max(last, row.row + 1);
        _headWidth = static_cast<int>(std::to_string(last).size());
        _count = fitting(width);
    }

    void print() {
        heads();
        for (const GridRow& row : _grid.rows) line(row);
        if (_count == _grid.columns.size()) return;
        const GridColumn& next = _grid.columns[_count];
        _out << std::string(static_cast<std::size_t>(_headWidth), ' ') << " \u2026 columns " << columnLetters(next.col)
             << " to " << columnLetters(_grid.columns.back().col) << " do not fit\n";
    }

private:
    /// Columns that fit; at least one.
    [[nodiscard]] std::size_t fitting(int width) const {
        if (width <= 0) return _grid.columns.size();
        int taken = _headWidth + 2;
        std::size_t count = 0;
        for (const GridColumn& column : _grid.columns) {
            taken += column.width + betweenCells;
            if (taken > width && count > 0) break;
            ++count;
        }
        return count;
    }

    void heads() {
        _out << std::string(static_cast<std::size_t>(_headWidth), ' ') << " |";
        for (std::size_t i = 0; i < _count; ++i) {
            _out << ' ' << placed(columnLetters(_grid.columns[i].col), _grid.columns[i].width, Side::center) << " |";
        }
        _out << '\n' << std::string(static_cast<std::size_t>(_headWidth) + 1, '-') << '+';
        for (std::size_t i = 0; i < _count; ++i) {
            _out << std::string(static_cast<std::size_t>(_grid.columns[i].width) + 2, '-') << '+';
        }
        _out << '\n';
    }

    void line(const GridRow& row) {
        if (row.row < 0) {
            _out << placed(":", _headWidth, Side::right) << " |\n";
            return;
        }
        _out << placed(std::to_string(row.row + 1), _headWidth, Side::right) << " |";
        for (std::size_t i = 0; i < _count;) {
            const ShownCell& cell = row.cells[i];
            const std::size_t end = i + 1 + (cell.isNumber || cell.side != Side::left ? 0 : overrun(row, i));
            int width = -betweenCells;
            for (std::size_t k = i; k < end; ++k) width += _grid.columns[k].width + betweenCells;
            _out << ' ' << placed(cutToWidth(cell.text, width), width, cell.side) << " |";
            i = end;
        }
        _out << '\n';
    }

    /// Empty cells beside a text that it runs over.
    [[nodiscard]] std::size_t overrun(const GridRow& row, std::size_t at) const {
        int missing = displayWidth(row.cells[at].text) - _grid.columns[at].width;
        std::size_t cells = 0;
        for (std::size_t i = at + 1; missing > 0 && i < _count && row.cells[i].text.empty(); ++i, ++cells) {
            missing -= _grid.columns[i].width + betweenCells;
        }
        return cells;
    }

    const Grid& _grid;
    std::ostream& _out;
    int _headWidth = 1;
    std::size_t _count = 0;
};

}  // namespace

void printGrid(const Grid& grid, int width, std::ostream& out) {
    GridPrinter(grid, width, out).print();
}

}  // namespace cli
