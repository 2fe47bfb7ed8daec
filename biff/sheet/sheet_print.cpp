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
    return ask(false, [](const SheetParts& p) { return p.features.pageSetup.setup().isLandscape(); });
}

template <class CharT>
bool SheetImplT<CharT>::setLandscape(bool landscape) {
    return change([&] { edit().features.pageSetup.editPrinterSettings().setLandscape(landscape); });
}

template <class CharT>
int SheetImplT<CharT>::paperCode() {
    return ask(0, [](const SheetParts& p) { return int{p.features.pageSetup.setup().iPaperSize}; });
}

template <class CharT>
bool SheetImplT<CharT>::setPaperCode(int paper) {
    return change([&] {
        const auto code = biff::checkedSetting(paper);
        edit().features.pageSetup.editPrinterSettings().iPaperSize = code;
    });
}

template <class CharT>
int SheetImplT<CharT>::printZoomPercent() {
    return ask(0, [](const SheetParts& p) { return p.features.pageSetup.setup().scale(); });
}

template <class CharT>
bool SheetImplT<CharT>::setPrintZoomPercent(int zoom) {
    return change([&] {
        const auto scale = biff::checkedSetting(zoom);
        edit().features.pageSetup.editPrinterSettings().iScale = scale;
        edit().settings.wsBool &= static_cast<std::uint16_t>(~SheetSettings::fitToPage);
    });
}

template <class CharT>
bool SheetImplT<CharT>::printFitPages(int* width, int* height) {
    return ask(false, [&](const SheetParts& p) {
        const Setup& setup = p.features.pageSetup.setup();
        biff::give(width, setup.iFitWidth);
        biff::give(height, setup.iFitHeight);
        return (p.settings.wsBool & SheetSettings::fitToPage) != 0;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setPrintFitPages(int width, int height) {
    return change([&] {
        const auto fitWidth = biff::checkedSetting(width), fitHeight = biff::checkedSetting(height);
        Setup& setup = edit().features.pageSetup.editPrinterSettings();
        setup.iFitWidth = fitWidth;
        setup.iFitHeight = fitHeight;
        edit().settings.wsBool |= SheetSettings::fitToPage;
    });
}

template <class CharT>
const CharT* SheetImplT<CharT>::headerText() {
    return guard<const CharT*>(nullptr, [&] { return give(parts().features.pageSetup.header.text()); });
}

template <class CharT>
const CharT* SheetImplT<CharT>::footerText() {
    return guard<const CharT*>(nullptr, [&] { return give(parts().features.pageSetup.footer.text()); });
}

template <class CharT>
bool SheetImplT<CharT>::setPageText(biff::PageText biff::PageSetup::*to, std::uint16_t id, const CharT* text,
                                    double Setup::*margin, double inches) {
    return change([&] {
        biff::PageSetup& setup = edit().features.pageSetup;
        (setup.*to).set(id, widened(text));
        setup.editSetup().*margin = inches;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setHeaderText(const CharT* text, double margin) {
    return setPageText(&biff::PageSetup::header, record_id::Header, text, &Setup::numHdr, margin);
}

template <class CharT>
bool SheetImplT<CharT>::setFooterText(const CharT* text, double margin) {
    return setPageText(&biff::PageSetup::footer, record_id::Footer, text, &Setup::numFtr, margin);
}

template <class CharT>
double SheetImplT<CharT>::headerMargin() {
    return ask(0.0, [](const SheetParts& p) { return p.features.pageSetup.setup().numHdr; });
}

template <class CharT>
double SheetImplT<CharT>::footerMargin() {
    return ask(0.0, [](const SheetParts& p) { return p.features.pageSetup.setup().numFtr; });
}

template <class CharT>
bool SheetImplT<CharT>::setMargin(biff::Margin side, double inches) {
    return change([&] { edit().features.pageSetup.setMargin(side, inches); });
}

template <class CharT>
bool SheetImplT<CharT>::centersHorizontally() {
    return ask(false, [](const SheetParts& p) { return p.features.pageSetup.centersHorizontally(); });
}

template <class CharT>
bool SheetImplT<CharT>::setCentersHorizontally(bool center) {
    return change([&] { edit().features.pageSetup.setCentersHorizontally(center); });
}

template <class CharT>
bool SheetImplT<CharT>::centersVertically() {
    return ask(false, [](const SheetParts& p) { return p.features.pageSetup.centersVertically(); });
}

template <class CharT>
bool SheetImplT<CharT>::setCentersVertically(bool center) {
    return change([&] { edit().features.pageSetup.setCentersVertically(center); });
}

template <class CharT>
int SheetImplT<CharT>::rowBreakAt(int index) {
    return guard(-1, [&] { return breakAt(parts().features.pageBreaks.rows(), index); });
}

template <class CharT>
int SheetImplT<CharT>::columnBreakAt(int index) {
    return guard(-1, [&] { return breakAt(parts().features.pageBreaks.columns(), index); });
}

template <class CharT>
bool SheetImplT<CharT>::setRowBreak(int row, bool enable) {
    return change([&] { edit().features.pageBreaks.setRow(checkedRow(row), enable); });
}

template <class CharT>
bool SheetImplT<CharT>::setColumnBreak(int col, bool enable) {
    return change([&] { edit().features.pageBreaks.setColumn(checkedCol(col), enable); });
}

}  // namespace vellum
