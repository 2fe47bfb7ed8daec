// Columns: widths, hidden ones, groups.
#include <cmath>

#include "engine/failure/vlerror.h"
#include "xlsx/layout/column_width.h"
#include "xlsx/layout/outline.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/styles/styles.h"

namespace vellum {

template <class CharT, class Tag>
std::uint32_t XMLSheetImplT<CharT, Tag>::checkedCol(int col) {
    return place(0, col).col;
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::columnWidth(int col) {
    return guard(-1.0, [&] { return xlsx::charsOfPixels(_columns.pixels(checkedCol(col), metrics()), metrics()); });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::columnWidthPixels(int col) {
    return guard(-1, [&] { return _columns.pixels(checkedCol(col), metrics()); });
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::putColumns(std::uint32_t first, std::uint32_t last, double chars,
                                           std::optional<std::uint32_t> style, std::optional<bool> hidden) {
    const double width = xlsx::storedWidthOfChars(chars, metrics());
    if (!std::isfinite(width)) throw vlerror(xlsx::msg::widthNotFinite);
    const auto run = _columns.cut(first, last, width);
    for (std::size_t i = run.first; i < run.past; ++i) {
        auto& col = _columns[i];
        col.width(width);
        col.customWidth(true);
        if (style) col.style(*style);
        if (!hidden) continue;
        if (*hidden) {
            col.hidden(true);
        } else {
            col.unset_hidden();
        }
    }
    if (!style) return;
    if (last >= _columnStyle.size()) _columnStyle.resize(last + 1);
    std::fill(_columnStyle.begin() + first, _columnStyle.begin() + last + 1, *style);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setColumn(int colFirst, int colLast, double width, Format* format, bool hidden) {
    return guard(false, [&] {
        const std::uint32_t first = checkedCol(colFirst), last = checkedCol(colLast);
        if (first > last) throw vlerror(xlsx::msg::colsReversed);
        std::optional<std::uint32_t> style;
        if (format) style = static_cast<std::uint32_t>(book().ensureStyles().formatIndexOf(format));
        if (std::isinf(width)) throw vlerror(xlsx::msg::widthNotFinite);
        if (width < 0) {
            fitColumns({0, sheetRows - 1, first, last}, style, hidden);
        } else {
            putColumns(first, last, width, style, hidden);
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isColumnHidden(int col) {
    return guard(false, [&] { return _columns.isHidden(checkedCol(col)); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setColumnHidden(int col, bool hidden) {
    return guard(false, [&] {
        const std::uint32_t at = checkedCol(col);
        _columns.setHidden(at, at, hidden, metrics());
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::groupColumnRange(int colFirst, int colLast, bool collapsed) {
    return guard(false, [&] {
        const std::uint32_t first = checkedCol(colFirst), last = checkedCol(colLast);
        if (first > last) throw vlerror(xlsx::msg::colGroupOrder);
        xlsx::Outline<Tag>(this->_root, metrics()).groupColumns(first, last, collapsed);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::summaryRight() {
    return guard(false, [&] { return xlsx::Outline<Tag>(this->_root, metrics()).summaryRight(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setSummaryRight(bool right) {
    return guard(false, [&] {
        xlsx::Outline<Tag>(this->_root, metrics()).setSummaryRight(right);
        return true;
    });
}

}  // namespace vellum
