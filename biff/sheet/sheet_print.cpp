// Print settings and page breaks of a sheet.
#include "biff/container/messages.h"
#include "biff/sheet/sheet_change.h"

namespace vellum {
namespace {

int breakAt(const biff::PageBreaks::List& breaks, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= breaks.size()) throw vlerror(biff::msg::indexOutOfRange);
    return breaks[static_cast<std::size_t>(index)].position;
}

}  // namespace

template <class CharT>
bool SheetImplT<CharT>::isLandscape() {
    return _parts.features.pageSetup.setup().isLandscape();
}

template <class CharT>
bool SheetImplT<CharT>::setLandscape(bool landscape) {
    return change([&] { _parts.features.pageSetup.editPrinterSettings().setLandscape(landscape); });
}

template <class CharT>
int SheetImplT<CharT>::paperCode() {
    return _parts.features.pageSetup.setup().iPaperSize;
}

template <class CharT>
bool SheetImplT<CharT>::setPaperCode(int paper) {
    return change([&] {
        const auto code = biff::checkedSetting(paper);
        _parts.features.pageSetup.editPrinterSettings().iPaperSize = code;
    });
}

template <class CharT>
int SheetImplT<CharT>::printZoomPercent() {
    return _parts.features.pageSetup.setup().scale();
}

template <class CharT>
bool SheetImplT<CharT>::setPrintZoomPercent(int zoom) {
    return change([&] {
        const auto scale = biff::checkedSetting(zoom);
        _parts.features.pageSetup.editPrinterSettings().iScale = scale;
        _parts.settings.wsBool &= static_cast<std::uint16_t>(~SheetSettings::fitToPage);
    });
}

template <class CharT>
bool SheetImplT<CharT>::printFitPages(int* width, int* height) {
    const Setup& setup = _parts.features.pageSetup.setup();
    biff::give(width, setup.iFitWidth);
    biff::give(height, setup.iFitHeight);
    return (_parts.settings.wsBool & SheetSettings::fitToPage) != 0;
}

template <class CharT>
bool SheetImplT<CharT>::setPrintFitPages(int width, int height) {
    return change([&] {
        const auto fitWidth = biff::checkedSetting(width), fitHeight = biff::checkedSetting(height);
        Setup& setup = _parts.features.pageSetup.editPrinterSettings();
        setup.iFitWidth = fitWidth;
        setup.iFitHeight = fitHeight;
        _parts.settings.wsBool |= SheetSettings::fitToPage;
    });
}

template <class CharT>
const CharT* SheetImplT<CharT>::headerText() {
    return guard<const CharT*>(nullptr, [&] { return give(_parts.features.pageSetup.header.text()); });
}

template <class CharT>
const CharT* SheetImplT<CharT>::footerText() {
    return guard<const CharT*>(nullptr, [&] { return give(_parts.features.pageSetup.footer.text()); });
}

template <class CharT>
bool SheetImplT<CharT>::setPageText(biff::PageText& to, std::uint16_t id, const CharT* text, double Setup::*margin,
                                    double inches) {
    return change([&] {
        to.set(id, widened(text));
        _parts.features.pageSetup.editSetup().*margin = inches;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setHeaderText(const CharT* text, double margin) {
    return setPageText(_parts.features.pageSetup.header, record_id::Header, text, &Setup::numHdr, margin);
}

template <class CharT>
bool SheetImplT<CharT>::setFooterText(const CharT* text, double margin) {
    return setPageText(_parts.features.pageSetup.footer, record_id::Footer, text, &Setup::numFtr, margin);
}

template <class CharT>
double SheetImplT<CharT>::headerMargin() {
    return _parts.features.pageSetup.setup().numHdr;
}

template <class CharT>
double SheetImplT<CharT>::footerMargin() {
    return _parts.features.pageSetup.setup().numFtr;
}

template <class CharT>
bool SheetImplT<CharT>::setMargin(biff::Margin side, double inches) {
    return change([&] { _parts.features.pageSetup.setMargin(side, inches); });
}

template <class CharT>
bool SheetImplT<CharT>::centersHorizontally() {
    return _parts.features.pageSetup.centersHorizontally();
}

template <class CharT>
bool SheetImplT<CharT>::setCentersHorizontally(bool center) {
    return change([&] { _parts.features.pageSetup.setCentersHorizontally(center); });
}

template <class CharT>
bool SheetImplT<CharT>::centersVertically() {
    return _parts.features.pageSetup.centersVertically();
}

template <class CharT>
bool SheetImplT<CharT>::setCentersVertically(bool center) {
    return change([&] { _parts.features.pageSetup.setCentersVertically(center); });
}

template <class CharT>
int SheetImplT<CharT>::rowBreakAt(int index) {
    return guard(-1, [&] { return breakAt(_parts.features.pageBreaks.rows(), index); });
}

template <class CharT>
int SheetImplT<CharT>::columnBreakAt(int index) {
    return guard(-1, [&] { return breakAt(_parts.features.pageBreaks.columns(), index); });
}

template <class CharT>
bool SheetImplT<CharT>::setRowBreak(int row, bool enable) {
    return change([&] { _parts.features.pageBreaks.setRow(checkedRow(row), enable); });
}

template <class CharT>
bool SheetImplT<CharT>::setColumnBreak(int col, bool enable) {
    return change([&] { _parts.features.pageBreaks.setColumn(checkedCol(col), enable); });
}

}  // namespace vellum
