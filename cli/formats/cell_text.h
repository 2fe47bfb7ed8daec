// What the cells of a workbook show.
#pragma once
#include <string>
#include <string_view>
#include <unordered_map>

#include "cli/formats/number_format.h"
#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"

namespace cli {

enum class Side { left, center, right };

/// A cell as a person sees it.
struct ShownCell {
    std::string text;  // UTF-8
    Side side = Side::left;
    bool isNumber = false;  // or a date: what a person would not see cut
};

/// The texts of cells by their number formats, each of which is taken apart once.
class CellTexts {
public:
    explicit CellTexts(vellum::IBookT<char>& book) : _book(book), _date1904(book.isDate1904()) {}

    ShownCell at(vellum::ISheetT<char>& sheet, int row, int col);
    /// The code of a number format: the workbook's own text, else the built-in one, else "General".
    const std::string& code(int id);

private:
    struct Known {
        std::string code;
        NumberFormat format;
    };
    const Known& known(int id);
    ShownCell number(vellum::ISheetT<char>& sheet, int row, int col, const NumberFormat& format);

    vellum::IBookT<char>& _book;
    bool _date1904;
    std::unordered_map<int, Known> _known;
};

/// The text of an error code, "#UNKNOWN!" for one that has none.
std::string_view shownError(int code);

}  // namespace cli
