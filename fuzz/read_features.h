// What a user may ask of a sheet beside its cells, for targets that load workbooks.
#pragma once
#include <algorithm>

#include "engine/api/isheet.h"

namespace vellum::fuzz {

/// Asks for every feature. Lists are read up to a bound, since a few bytes may stand for long ones.
inline void readFeatures(ISheetT<char>& sheet) {
    constexpr int most = 1000;
    int a, b, c, d;
    for (int i = 0; i < std::min(sheet.mergeTotal(), most); ++i) sheet.mergeByIndex(i, &a, &b, &c, &d);
    for (int i = 0; i < std::min(sheet.hyperlinkTotal(), most); ++i) sheet.hyperlinkAt(i, &a, &b, &c, &d);
    for (int i = 0; i < std::min(sheet.namedRangeCount(), most); ++i) sheet.namedRange(i, &a, &b, &c, &d);
    for (int i = 0; i < std::min(sheet.tableTotal(), most); ++i) sheet.tableAt(i, &a, &b, &c, &d);
    for (int i = 0; i < std::min(sheet.pictureTotalOnSheet(), most); ++i) {
        sheet.sheetPictureAt(i, &a, &b, &c, &d, &a, &b, &c, &d);
    }
    for (int i = 0; i < std::min(sheet.rowBreakTotal(), most); ++i) sheet.rowBreakAt(i);
    for (int i = 0; i < std::min(sheet.columnBreakTotal(), most); ++i) sheet.columnBreakAt(i);
    sheet.headerText();
    sheet.footerText();
    sheet.printZoomPercent();
    sheet.printFitPages(&a, &b);
    sheet.marginTop();
    sheet.printAreaRange(&a, &b, &c, &d);
    sheet.repeatRows(&a, &b);
    sheet.repeatColumns(&a, &b);
    sheet.splitPosition(&a, &b);
    sheet.zoomPercent();
    sheet.visibilityState();
    sheet.isProtected();
}

/// Sets one of each kind, and moves rows and columns.
inline void changeFeatures(ISheetT<char>& sheet) {
    sheet.setRowBreak(7, true);
    sheet.setLandscape(true);
    sheet.setHeaderText("&P");
    sheet.setMarginTop(0.5);
    sheet.splitAt(2, 1);
    sheet.setZoomPercent(80);
    sheet.setTabRgbColor(1, 2, 3);
    sheet.setProtected(true, "x", 1);
    sheet.addIgnoredErrorRange(1, 1, 2, 2, 4);
    sheet.addHyperlink("..\\a.xls#b", 0, 0, 0, 0);
    sheet.removeHyperlinkAt(0);
    sheet.groupRowRange(1, 3, true);
    sheet.groupColumnRange(1, 3, true);
    sheet.insertRows(1, 2);
    sheet.removeRows(4, 4);
    sheet.insertColumns(1, 1);
    sheet.removeColumns(0, 0);
}

}  // namespace vellum::fuzz
