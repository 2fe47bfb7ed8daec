#include "xlsx/pages/page_setup.h"

#include <utility>

#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"
#include "xlsx/layout/pixels.h"

namespace vellum::xlsx {

template <class Tag>
auto PageSetup<Tag>::find() const -> const typename Sml<Tag>::c_CT_PageSetup* {
    return std::as_const(_sheet).find_pageSetup();
}

template <class Tag>
bool PageSetup<Tag>::isLandscape() const {
    const auto* const setup = find();
    return setup && setup->orientation() == "landscape";
}

template <class Tag>
void PageSetup<Tag>::setLandscape(bool landscape) {
    _sheet.pageSetup().orientation(landscape ? "landscape" : "portrait");
}

template <class Tag>
int PageSetup<Tag>::paper() const {
    const auto* const setup = find();
    return setup && setup->isset_paperSize() ? wholeNumber(setup->paperSize()) : 0;
}

template <class Tag>
void PageSetup<Tag>::setPaper(int code) {
    if (code < 0) throw vlerror(msg::paperNegative);
    _sheet.pageSetup().paperSize(static_cast<unsigned>(code));
}

template <class Tag>
int PageSetup<Tag>::scale() const {
    const auto* const setup = find();
    return setup ? wholeNumber(setup->scale()) : 100;
}

template <class Tag>
void PageSetup<Tag>::setScale(int percent) {
    if (percent < 0) throw vlerror(msg::zoomNegative);
    _sheet.pageSetup().scale(static_cast<unsigned>(percent));
    auto* const properties = _sheet.find_sheetPr();
    auto* const fitting = properties ? properties->find_pageSetUpPr() : nullptr;
    if (fitting) fitting->unset_fitToPage();
}

template <class Tag>
bool PageSetup<Tag>::fits() const {
    const auto* const properties = std::as_const(_sheet).find_sheetPr();
    const auto* const fitting = properties ? properties->find_pageSetUpPr() : nullptr;
    return fitting && fitting->fitToPage();
}

template <class Tag>
auto PageSetup<Tag>::pages() const -> Pages {
    const auto* const setup = find();
    if (!setup) return {1, 1};
    return {wholeNumber(setup->fitToWidth()), wholeNumber(setup->fitToHeight())};
}

template <class Tag>
void PageSetup<Tag>::setPages(int width, int height) {
    if (width < 0 || height < 0) throw vlerror(msg::pagesNegative);
    _sheet.sheetPr().pageSetUpPr().fitToPage(true);
    auto& setup = _sheet.pageSetup();
    setup.fitToWidth(static_cast<unsigned>(width));
    setup.fitToHeight(static_cast<unsigned>(height));
}

namespace {

constexpr double usualMargins[] = {0.7, 0.7, 0.75, 0.75, 0.3, 0.3};  // inches, by side

}  // namespace

template <class Tag>
double PageMargins<Tag>::get(Side side) const {
    const auto* const margins = std::as_const(_sheet).find_pageMargins();
    if (!margins) return usualMargins[side];
    switch (side) {
        case left:
            return margins->left();
        case right:
            return margins->right();
        case top:
            return margins->top();
        case bottom:
            return margins->bottom();
        case header:
            return margins->header();
        default:
            return margins->footer();
    }
}

template <class Tag>
void PageMargins<Tag>::check(double inches) {
    if (inches - inches != 0) throw vlerror(msg::marginNotFinite);
}

template <class Tag>
void PageMargins<Tag>::set(Side side, double inches) {
    check(inches);
    const bool isNew = !_sheet.isset_pageMargins();
    auto& margins = _sheet.pageMargins();
    const auto value = [&](Side of, double present) {
        if (of == side) return inches;
        return isNew ? usualMargins[of] : present;
    };
    margins.left(value(left, margins.left()));
    margins.right(value(right, margins.right()));
    margins.top(value(top, margins.top()));
    margins.bottom(value(bottom, margins.bottom()));
    margins.header(value(header, margins.header()));
    margins.footer(value(footer, margins.footer()));
}

template class PageSetup<ooxml::excelNormal_tag>;
template class PageSetup<ooxml::excelStrict_tag>;
template class PageMargins<ooxml::excelNormal_tag>;
template class PageMargins<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
