// How the sheet is shown.
#include "xlsx/pages/view.h"

#include "engine/failure/vlerror.h"
#include "xlsx/pages/tab_color.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::splitAt(int row, int col) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        xlsx::View<Tag>(this->_root).splitAt(at.row, at.col);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::splitPosition(int* row, int* col) {
    return guard(false, [&] {
        const auto split = xlsx::View<Tag>(this->_root).split();
        if (!split) throw vlerror(xlsx::msg::notSplit);
        if (row) *row = split->row;
        if (col) *col = split->col;
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::topLeftCell(int* row, int* col) {
    return guard(false, [&] {
        const auto cell = xlsx::View<Tag>(this->_root).topLeftCell();
        if (row) *row = cell.row;
        if (col) *col = cell.col;
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setTopLeftCell(int row, int col) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        xlsx::View<Tag>(this->_root).setTopLeftCell(at.row, at.col);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isRightToLeft() {
    return guard(false, [&] { return xlsx::View<Tag>(this->_root).isRightToLeft(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setRightToLeft(bool rightToLeft) {
    return guard(false, [&] {
        xlsx::View<Tag>(this->_root).setRightToLeft(rightToLeft);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::showsGridlines() {
    return guard(false, [&] { return xlsx::View<Tag>(this->_root).showsGridlines(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setShowsGridlines(bool show) {
    return guard(false, [&] {
        xlsx::View<Tag>(this->_root).setShowsGridlines(show);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::zoomPercent() {
    return guard(-1, [&] { return xlsx::View<Tag>(this->_root).zoom(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setZoomPercent(int zoom) {
    return guard(false, [&] {
        xlsx::View<Tag>(this->_root).setZoom(zoom);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setTabPaletteColor(int index) {
    return guard(false, [&] {
        xlsx::setTabPaletteColor<Tag>(this->_root, index);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setTabRgbColor(int red, int green, int blue) {
    return guard(false, [&] {
        xlsx::setTabRgbColor<Tag>(this->_root, red, green, blue);
        return true;
    });
}

}  // namespace vellum
