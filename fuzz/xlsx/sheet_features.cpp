// What sheets of a hostile package have beside their cells: asked for, changed, saved, and asked for again.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "fuzz/xlsx/text_package.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};

constexpr int mostAsked = 200;

/// All readers; the result is what has to be the same after saving and loading.
std::vector<double> ask(Sheet& sheet) {
    int a = 0, b = 0, c = 0, d = 0;
    bool flag = false;
    std::vector<double> told;
    for (const int at : {0, 1, 7, 300, 16383, 1048575}) {
        told.push_back(sheet.rowHeight(at));
        told.push_back(sheet.rowHeightPixels(at));
        told.push_back(sheet.columnWidth(at));
        told.push_back(sheet.columnWidthPixels(at));
        told.push_back(sheet.isRowHidden(at) + 2 * sheet.isColumnHidden(at));
        told.push_back(sheet.mergeAt(at, at % 7, &a, &b, &c, &d));
    }
    for (int i = 0; i < std::min(sheet.mergeTotal(), mostAsked); ++i) {
        told.push_back(sheet.mergeByIndex(i, &a, &b, &c, &d) ? a + b * 3.0 + c * 5.0 + d * 7.0 : -1);
    }
    for (int i = 0; i < std::min(sheet.rowBreakTotal(), mostAsked); ++i) told.push_back(sheet.rowBreakAt(i));
    for (int i = 0; i < std::min(sheet.columnBreakTotal(), mostAsked); ++i) told.push_back(sheet.columnBreakAt(i));
    for (int i = 0; i < std::min(sheet.namedRangeCount(), mostAsked); ++i) {
        sheet.namedRange(i, &a, &b, &c, &d, nullptr, &flag);
    }
    told.push_back(sheet.splitPosition(&a, &b) ? a + b * 3.0 : -1);
    told.push_back(sheet.topLeftCell(&a, &b) ? a + b * 3.0 : -1);
    told.push_back(sheet.printFitPages(&a, &b) ? a + b * 3.0 : -1);
    for (const int n : {sheet.zoomPercent(), sheet.printZoomPercent(), sheet.paperCode(), sheet.visibilityState()}) {
        told.push_back(n);
    }
    for (const double m :
         {sheet.marginLeft(), sheet.marginBottom(), sheet.headerMargin(), sheet.defaultRowHeightValue()}) {
        if (m == m) told.push_back(m);
    }
    told.push_back(sheet.showsGridlines() + 2 * sheet.isRightToLeft() + 4 * sheet.isLandscape() +
                   8 * sheet.summaryBelow() + 16 * sheet.summaryRight() + 32 * sheet.printsGridlines());
    sheet.headerText();
    sheet.footerText();
    return told;
}

/// Attributes keep 14 digits.
bool sameNumber(double a, double b) {
    return a == b || std::abs(a - b) <= 1e-13 * std::abs(a);
}

void change(Sheet& sheet, std::size_t seed) {
    const int at = static_cast<int>(seed % 11), last = at + static_cast<int>(seed / 11 % 3);
    sheet.groupRowRange(at, last, true);
    sheet.setColumn(at, last, seed % 2 != 0 ? -1 : 12.5, nullptr, false);
    sheet.groupColumnRange(at, last, seed % 3 == 0);
    sheet.insertRows(at, last, true);
    sheet.insertColumns(at, last, true);
    sheet.addMerge(at, last + 1, at, last);
    sheet.setRowBreak(at, true);
    sheet.splitAt(at, last);
    sheet.autoFitColumns(0, 0, 100, 1000);
    sheet.removeColumns(last, last + 1, true);
    sheet.removeRows(last, last + 1, true);
    sheet.clearRange(at, at + 3, 0, last);
    sheet.removeMergeAt(at, at);
    sheet.setHeaderText("&L x", 0.5);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::packageOf(data, size);
    const std::unique_ptr<Book, Release> book(vellum::vlCreateXMLBook<char>());
    if (!book->loadMemory(bytes.data(), bytes.size())) return 0;
    for (int i = 0; i < std::min(book->sheetCount(), 8); ++i) {
        Sheet* const sheet = book->getSheet(i);
        if (!sheet) continue;
        ask(*sheet);
        change(*sheet, size);
    }
    std::vector<std::vector<double>> told;
    const int sheets = book->sheetCount();
    for (int i = 0; i < std::min(sheets, 8); ++i) {
        Sheet* const sheet = book->getSheet(i);
        told.push_back(sheet ? ask(*sheet) : std::vector<double>());
    }
    const char* saved = nullptr;
    std::size_t savedSize = 0;
    if (!book->saveMemory(&saved, &savedSize)) return 0;
    const std::vector<char> copy(saved, saved + savedSize);
    if (!book->loadMemory(copy.data(), copy.size()) || book->sheetCount() != sheets) std::abort();
    for (int i = 0; i < std::min(sheets, 8); ++i) {
        Sheet* const sheet = book->getSheet(i);
        const auto& before = told[static_cast<std::size_t>(i)];
        // A sheet whose prefix nobody declared is found only when it was written anew.
        if (sheet && !before.empty() && !std::ranges::equal(ask(*sheet), before, sameNumber)) std::abort();
    }
    return 0;
}
