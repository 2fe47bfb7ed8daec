#include "cli/show/show.h"

#include <climits>
#include <fstream>

#include "cli/show/grid_html.h"
#include "cli/show/print_grid.h"
#include "cli/tables/table_file.h"

namespace cli {

int show(const ShowOptions& options, std::ostream& out, std::ostream& errors) {
    constexpr int failed = 2;
    std::string error;
    const TableFile file = loadTable(options.file, error);
    SheetArea area;
    if (!file.book || !findArea(*file.book, options.label, area, error)) {
        errors << options.file << ": " << error << '\n';
        return failed;
    }
    const Fit fit = options.fit || file.isCsv ? Fit::content : Fit::sheet;
    const Grid grid = readGrid(*file.book, area, fit, options.rows > 0 ? options.rows : INT_MAX);
    if (!options.html.empty()) {
        std::ofstream page(options.html);
        writeGridPage(grid, options.label.empty() ? options.file : options.file + " " + options.label, page);
        if (page.flush()) return 0;
        errors << options.html << ": can't write the page\n";
        return failed;
    }
    if (grid.rows.empty() || grid.columns.empty()) {
        const char* const name = file.book->sheetNameAt(area.sheet);
        out << (name != nullptr ? name : "") << ": nothing to show\n";
    } else {
        printGrid(grid, options.width, out);
    }
    if (out.flush()) return 0;
    errors << "can't write the picture\n";
    return failed;
}

}  // namespace cli
