// A page for a browser with grids of cells: one file, without scripts and without anything from elsewhere.
#pragma once
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace cli::html {

/// `&`, `<`, `>` and quotes as entities; control characters as the replacement character.
std::string escaped(std::string_view text);

/// What a cell is to the page; each has a colour of its own.
enum class Part { outside, header, index, value, passedOver, cut };

struct Cell {
    std::string text;
    Part part = Part::outside;
    std::string details;  // shown when the cell is pointed at or reached by keyboard; empty: it is not reached
    bool warned = false;
    bool right = false;  // numbers stand on the right
};

struct Row {
    std::string head;  // the row's number
    bool gap = false;  // rows are left out in front of this one
    std::vector<Cell> cells;
};

struct Grid {
    std::vector<std::string> columns;  // their letters
    std::vector<Row> rows;
};

/// An entry of the list on the side: a title, and the id of what it leads to.
struct Entry {
    std::string id, title;
    bool warned = false, failed = false;
};

/// All texts are plain; they are escaped here. Content goes between the two.
void beginPage(std::ostream& out, std::string_view title, const std::vector<Entry>& entries);
void endPage(std::ostream& out);

void writeGrid(std::ostream& out, std::string_view caption, const Grid& grid);

}  // namespace cli::html
