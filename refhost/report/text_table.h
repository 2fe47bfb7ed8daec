// Tables of text for people, with aligned columns.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace refhost {

/// Columns that the text takes on a terminal: one for each character but combining ones.
std::size_t shownWidth(std::string_view text);
/// The text with control characters and bytes that are not UTF-8 as escapes, so that it stays on its line.
std::string shownText(std::string_view text);

/// Rows of cells. Columns of numbers stand right, others left.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> header) : _header(std::move(header)) {}
    void add(std::vector<std::string> row) { _rows.push_back(std::move(row)); }
    std::size_t rows() const { return _rows.size(); }
    /// Columns that the table takes.
    std::size_t width() const;
    /// With a line beneath the header; each line indented by two.
    void print(std::string& out) const;

private:
    std::vector<std::size_t> widths() const;
    std::vector<std::string> _header;
    std::vector<std::vector<std::string>> _rows;
};

}  // namespace refhost
