#include "cli/show/grid_html.h"

#include "cli/html/grid_page.h"
#include "cli/workbook/cell_name.h"

namespace cli {
namespace {

html::Cell cellOf(const ShownCell& shown, const std::string& address) {
    html::Cell cell;
    cell.text = shown.text;
    cell.part = shown.text.empty() ? html::Part::outside : html::Part::value;
    if (!shown.text.empty()) cell.details = address + ": " + shown.text;
    cell.right = shown.side == Side::right;
    return cell;
}

}  // namespace

void writeGridPage(const Grid& grid, const std::string& title, std::ostream& out) {
    html::Grid page;
    for (const GridColumn& column : grid.columns) {
        page.columns.push_back(cellName(0, column.col));
        page.columns.back().pop_back();
    }
    bool gap = false;
    for (const GridRow& row : grid.rows) {
        if (row.row < 0) {
            gap = true;
            continue;
        }
        html::Row line;
        line.head = std::to_string(row.row + 1);
        line.gap = gap;
        gap = false;
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            line.cells.push_back(cellOf(row.cells[i], cellName(row.row, grid.columns[i].col)));
        }
        page.rows.push_back(std::move(line));
    }
    html::beginPage(out, title, {});
    html::writeGrid(out, title, page);
    html::endPage(out);
}

}  // namespace cli
