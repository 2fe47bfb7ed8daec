// How the sheet is printed.
#include "xlsx/pages/header_footer.h"
#include "xlsx/pages/page_setup.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::printsGridlines() {
    return guard(false, [&] {
        const auto* const options = this->_root.find_printOptions();
        return options && options->gridLines();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setPrintsGridlines(bool print) {
    return guard(false, [&] {
        this->_root.printOptions().gridLines(print);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::printsRowColHeadings() {
    return guard(false, [&] {
        const auto* const options = this->_root.find_printOptions();
        return options && options->headings();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setPrintsRowColHeadings(bool print) {
    return guard(false, [&] {
        this->_root.printOptions().headings(print);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::centersHorizontally() {
    return guard(false, [&] {
        const auto* const options = this->_root.find_printOptions();
        return options && options->horizontalCentered();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setCentersHorizontally(bool center) {
    return guard(false, [&] {
        this->_root.printOptions().horizontalCentered(center);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::centersVertically() {
    return guard(false, [&] {
        const auto* const options = this->_root.find_printOptions();
        return options && options->verticalCentered();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setCentersVertically(bool center) {
    return guard(false, [&] {
        this->_root.printOptions().verticalCentered(center);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::printZoomPercent() {
    return guard(-1, [&] { return xlsx::PageSetup<Tag>(this->_root).scale(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setPrintZoomPercent(int zoom) {
    return guard(false, [&] {
        xlsx::PageSetup<Tag>(this->_root).setScale(zoom);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::printFitPages(int* width, int* height) {
    return guard(false, [&] {
        const xlsx::PageSetup<Tag> setup(this->_root);
        const auto pages = setup.pages();
        if (width) *width = pages.width;
        if (height) *height = pages.height;
        return setup.fits();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setPrintFitPages(int width, int height) {
    return guard(false, [&] {
        xlsx::PageSetup<Tag>(this->_root).setPages(width, height);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isLandscape() {
    return guard(false, [&] { return xlsx::PageSetup<Tag>(this->_root).isLandscape(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setLandscape(bool landscape) {
    return guard(false, [&] {
        xlsx::PageSetup<Tag>(this->_root).setLandscape(landscape);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::paperCode() {
    return guard(-1, [&] { return xlsx::PageSetup<Tag>(this->_root).paper(); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setPaperCode(int paper) {
    return guard(false, [&] {
        xlsx::PageSetup<Tag>(this->_root).setPaper(paper);
        return true;
    });
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::headerText() {
    return guard(static_cast<const CharT*>(nullptr), [&] {
        const std::wstring* const text = xlsx::HeaderFooter<Tag>(this->_root).header();
        return give(text ? std::wstring_view(*text) : std::wstring_view());
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setHeaderText(const CharT* text, double margin) {
    return guard(false, [&] {
        const std::wstring_view wide = widened(text);
        xlsx::PageMargins<Tag>::check(margin);
        xlsx::HeaderFooter<Tag>(this->_root).setHeader(wide);
        xlsx::PageMargins<Tag>(this->_root).set(xlsx::PageMargins<Tag>::header, margin);
        return true;
    });
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::headerMargin() {
    return margin(xlsx::PageMargins<Tag>::header);
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::footerText() {
    return guard(static_cast<const CharT*>(nullptr), [&] {
        const std::wstring* const text = xlsx::HeaderFooter<Tag>(this->_root).footer();
        return give(text ? std::wstring_view(*text) : std::wstring_view());
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setFooterText(const CharT* text, double margin) {
    return guard(false, [&] {
        const std::wstring_view wide = widened(text);
        xlsx::PageMargins<Tag>::check(margin);
        xlsx::HeaderFooter<Tag>(this->_root).setFooter(wide);
        xlsx::PageMargins<Tag>(this->_root).set(xlsx::PageMargins<Tag>::footer, margin);
        return true;
    });
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::footerMargin() {
    return margin(xlsx::PageMargins<Tag>::footer);
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::margin(typename xlsx::PageMargins<Tag>::Side side) {
    return guard(0.0, [&] { return xlsx::PageMargins<Tag>(this->_root).get(side); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setMargin(typename xlsx::PageMargins<Tag>::Side side, double inches) {
    return guard(false, [&] {
        xlsx::PageMargins<Tag>(this->_root).set(side, inches);
        return true;
    });
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::marginLeft() {
    return margin(xlsx::PageMargins<Tag>::left);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setMarginLeft(double inches) {
    return setMargin(xlsx::PageMargins<Tag>::left, inches);
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::marginRight() {
    return margin(xlsx::PageMargins<Tag>::right);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setMarginRight(double inches) {
    return setMargin(xlsx::PageMargins<Tag>::right, inches);
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::marginTop() {
    return margin(xlsx::PageMargins<Tag>::top);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setMarginTop(double inches) {
    return setMargin(xlsx::PageMargins<Tag>::top, inches);
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::marginBottom() {
    return margin(xlsx::PageMargins<Tag>::bottom);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setMarginBottom(double inches) {
    return setMargin(xlsx::PageMargins<Tag>::bottom, inches);
}

}  // namespace vellum
