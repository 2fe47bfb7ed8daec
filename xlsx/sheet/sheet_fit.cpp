// Columns that are as wide as what they show.
#include <algorithm>

#include "xlsx/fitting/column_fit.h"
#include "xlsx/fitting/number_sample.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

/// Applications take no longer ones; a hostile file may have a format of megabytes on each cell.
constexpr std::size_t longestFormat = 255;

template <class CharT, class Tag>
class BookLooks final : public xlsx::LookSource {
public:
    explicit BookLooks(BookContextT<CharT, Tag>& book)
        : _book(book), _styles(book.findStyles()), _strings(book.findSharedStrings()) {}

    std::size_t formatTotal() const override { return _styles ? _styles->formatTotal() : 0; }
    xlsx::CellLook lookOf(std::uint32_t xf) override {
        xlsx::CellLook look;
        auto* const list = _styles ? _styles->root().find_cellXfs() : nullptr;
        if (!list || xf >= list->xf().size()) return look;
        const auto& format = list->xf()[xf];
        look.numFmtId = format.numFmtId();
        look.isDate = _styles->isDateFormat(xf);
        const auto* const text = _styles->customNumFormatText(look.numFmtId);
        if (text && look.numFmtId >= xlsx::firstFormatWithText) look.formatText = text->substr(0, longestFormat);
        if (format.fontId() < _styles->fontTotal()) look.font = fontOf(*_styles->fontAt(format.fontId()));
        return look;
    }
    std::wstring_view sharedText(std::size_t position) override {
        return _strings && position < _strings->size() ? _strings->textAt(position) : std::wstring_view();
    }
    bool dates1904() const override { return _book.dates1904(); }

private:
    static xlsx::MeasuredFont fontOf(XMLFontImplT<CharT, Tag>& font) {
        const auto* const name = font.element().find_name();
        return {name ? name->val() : std::wstring(), font.size(), font.isBold()};
    }

    BookContextT<CharT, Tag>& _book;
    Styles<CharT, Tag>* _styles;
    SharedStrings<CharT, Tag>* _strings;
};

}  // namespace

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::fitColumns(const CellRange& area, std::optional<std::uint32_t> style,
                                           std::optional<bool> hidden) {
    numberAll();
    BookLooks<CharT, Tag> looks(book());
    const auto widths = xlsx::ColumnFit<Tag>(looks, _merges, metrics()).widths(*_rows, area);
    for (std::uint32_t col = area.colFirst; col <= area.colLast; ++col) {
        const double width = widths[col - area.colFirst];
        if (width >= 0) putColumns(col, col, width, style, hidden);
    }
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::autoFitColumns(int colFirst, int rowFirst, int colLast, int rowLast) {
    return guard(false, [&] {
        const CellArea& area = used();
        const int row1 = std::max(rowFirst, area.rowFirst), row2 = std::min(rowLast, area.rowEnd - 1);
        const int col1 = std::max(colFirst, area.colFirst), col2 = std::min(colLast, area.colEnd - 1);
        if (row1 > row2 || col1 > col2) return true;
        const auto number = [](int n) { return static_cast<std::uint32_t>(n); };
        fitColumns({number(row1), number(row2), number(col1), number(col2)}, {}, {});
        return true;
    });
}

}  // namespace vellum
