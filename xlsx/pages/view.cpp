#include "xlsx/pages/view.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"
#include "xlsx/layout/pixels.h"

namespace vellum::xlsx {

template <class Tag>
auto View<Tag>::find() const -> const Element* {
    const auto* const views = std::as_const(_sheet).find_sheetViews();
    return views && !views->sheetView().empty() ? &views->sheetView()[0] : nullptr;
}

template <class Tag>
auto View<Tag>::make() -> Element& {
    auto& views = _sheet.sheetViews().sheetView();
    if (views.empty()) views.append().workbookViewId(0);
    return views[0];
}

namespace {

/// A split of columns has panes on the right, one of rows panes at the bottom; the top left one is always there.
bool paneExists(const std::string* pane, bool rows, bool cols) {
    if (!pane || *pane == "topLeft") return true;
    if (*pane == "topRight") return cols;
    return *pane == "bottomLeft" ? rows : rows && cols;
}

}  // namespace

template <class Tag>
void View<Tag>::splitAt(std::uint32_t row, std::uint32_t col) {
    Element& view = make();
    view.selection().eraseIf(
        [&](const auto& selection) { return !paneExists(selection.attribute("pane"), row > 0, col > 0); });
    view.unset_pane();
    if (row == 0 && col == 0) return;
    auto& pane = view.pane();
    if (col > 0) pane.xSplit(col);
    if (row > 0) pane.ySplit(row);
    pane.topLeftCell(cellAddressText(row, col));
    pane.activePane(row > 0 ? "bottomLeft" : "topRight");
    pane.state("frozen");
}

template <class Tag>
auto View<Tag>::split() const -> std::optional<Place> {
    const Element* const view = find();
    const auto* const pane = view ? view->find_pane() : nullptr;
    if (!pane) return {};
    return Place{wholeNumber(pane->ySplit()), wholeNumber(pane->xSplit())};
}

template <class Tag>
auto View<Tag>::topLeftCell() const -> Place {
    const Element* const view = find();
    if (!view || !view->isset_topLeftCell()) return {0, 0};
    const std::string& text = view->topLeftCell();
    const auto address = readCellAddress(std::wstring(text.begin(), text.end()));
    if (!address) throw vlerror(msg::refUnrecognized);
    return {static_cast<int>(address->row), static_cast<int>(address->col)};
}

template <class Tag>
void View<Tag>::setTopLeftCell(std::uint32_t row, std::uint32_t col) {
    make().topLeftCell(cellAddressText(row, col));
}

template <class Tag>
bool View<Tag>::isRightToLeft() const {
    const Element* const view = find();
    return view && view->rightToLeft();
}

template <class Tag>
void View<Tag>::setRightToLeft(bool rightToLeft) {
    make().rightToLeft(rightToLeft);
}

template <class Tag>
bool View<Tag>::showsGridlines() const {
    const Element* const view = find();
    return !view || view->showGridLines();
}

template <class Tag>
void View<Tag>::setShowsGridlines(bool show) {
    make().showGridLines(show);
}

template <class Tag>
int View<Tag>::zoom() const {
    const Element* const view = find();
    return view ? wholeNumber(view->zoomScale()) : 100;
}

template <class Tag>
void View<Tag>::setZoom(int percent) {
    if (percent < 0) throw vlerror(msg::zoomNegative);
    Element& view = make();
    view.zoomScale(static_cast<unsigned>(percent));
    view.zoomScaleNormal(static_cast<unsigned>(percent));
}

template class View<ooxml::excelNormal_tag>;
template class View<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
