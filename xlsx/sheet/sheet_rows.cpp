// Rows: heights, hidden ones, groups.
#include "engine/failure/vlerror.h"
#include "xlsx/layout/outline.h"
#include "xlsx/layout/row_heights.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/styles/styles.h"

namespace vellum {

template <class CharT, class Tag>
std::uint32_t XMLSheetImplT<CharT, Tag>::checkedRow(int row) {
    return place(row, 0).row;
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::rowHeight(int row) {
    return guard(-1.0, [&] { return xlsx::RowHeights<Tag>(this->_root, metrics()).points(findRow(checkedRow(row))); });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::rowHeightPixels(int row) {
    return guard(-1, [&] { return xlsx::RowHeights<Tag>(this->_root, metrics()).pixels(findRow(checkedRow(row))); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setRow(int row, double height, Format* format, bool hidden) {
    return guard(false, [&] {
        const std::uint32_t at = checkedRow(row);
        xlsx::RowHeights<Tag>::check(height);
        const std::size_t style = format ? book().ensureStyles().formatIndexOf(format) : 0;
        Row& element = ensureRow(at);
        xlsx::RowHeights<Tag>(this->_root, metrics()).setPoints(element, height);
        if (format) {
            element.s(static_cast<std::uint32_t>(style));
            element.customFormat(true);
        }
        if (hidden) {
            element.hidden(true);
        } else {
            element.unset_hidden();
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isRowHidden(int row) {
    return guard(false, [&] {
        const Row* const element = findRow(checkedRow(row));
        return element && element->hidden();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setRowHidden(int row, bool hidden) {
    return guard(false, [&] {
        Row& element = ensureRow(checkedRow(row));
        if (hidden) {
            element.hidden(true);
        } else {
            element.unset_hidden();
        }
        return true;
    });
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::defaultRowHeightValue() {
    return guard(0.0, [&] { return xlsx::RowHeights<Tag>(this->_root, metrics()).defaultPoints(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setDefaultRowHeightValue(double height) {
    return guard(false, [&] {
        xlsx::RowHeights<Tag>(this->_root, metrics()).setDefaultPoints(height);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::groupRowRange(int rowFirst, int rowLast, bool collapsed) {
    return guard(false, [&] {
        const std::uint32_t first = checkedRow(rowFirst), last = checkedRow(rowLast);
        if (first > last) throw vlerror(xlsx::msg::rowGroupOrder);
        numberAll();
        xlsx::Outline<Tag>(this->_root, metrics()).groupRows(first, last, collapsed);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::summaryBelow() {
    return guard(false, [&] { return xlsx::Outline<Tag>(this->_root, metrics()).summaryBelow(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setSummaryBelow(bool below) {
    return guard(false, [&] {
        xlsx::Outline<Tag>(this->_root, metrics()).setSummaryBelow(below);
        return true;
    });
}

}  // namespace vellum
