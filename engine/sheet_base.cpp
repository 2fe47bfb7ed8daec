#include "engine/sheet_base.h"

#include <algorithm>

#include "engine/enums.h"
#include "engine/messages.h"

namespace vellum {

template <class CharT>
int SheetBaseT<CharT>::cellType(int, int) {
    return notAvailable<int>(cellEmpty);
}

template <class CharT>
bool SheetBaseT<CharT>::isFormulaCell(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
typename SheetBaseT<CharT>::Format* SheetBaseT<CharT>::cellFormatAt(int, int) {
    return notAvailable<Format*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setCellFormatAt(int, int, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::readString(int, int, Format**) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeString(int, int, const CharT*, Format*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
IRichStringT<CharT>* SheetBaseT<CharT>::readRichText(int, int, Format**) {
    return notAvailable<IRichStringT<CharT>*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeRichText(int, int, IRichStringT<CharT>*, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::readNumber(int, int, Format**) {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::writeNumber(int, int, double, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::readBool(int, int, Format**) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeBool(int, int, bool, Format*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::readBlank(int, int, Format**) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeBlank(int, int, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::readFormula(int, int, Format**) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormula(int, int, const CharT*, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormulaNumber(int, int, const CharT*, double, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormulaText(int, int, const CharT*, const CharT*, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormulaBoolean(int, int, const CharT*, bool, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::readComment(int, int) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeComment(int, int, const CharT*, const CharT*, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeComment(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isDate(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isRichTextCell(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::readError(int, int, Format**) {
    return notAvailable<int>(errorNone);
}

template <class CharT>
bool SheetBaseT<CharT>::writeError(int, int, int, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::columnWidth(int) {
    return notAvailable<double>(-1.0);
}

template <class CharT>
double SheetBaseT<CharT>::rowHeight(int) {
    return notAvailable<double>(-1.0);
}

template <class CharT>
int SheetBaseT<CharT>::columnWidthPixels(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::rowHeightPixels(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setColumn(int, int, double, Format*, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRow(int, double, Format*, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isRowHidden(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRowHidden(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isColumnHidden(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setColumnHidden(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::defaultRowHeightValue() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setDefaultRowHeightValue(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::mergeAt(int, int, int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addMerge(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeMergeAt(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::mergeTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::mergeByIndex(int, int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeMergeByIndex(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::pictureTotalOnSheet() {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::sheetPictureAt(int, int*, int*, int*, int*, int*, int*, int*, int*, const CharT**) {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::removePictureAt(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::placePicture(int, int, int, double, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::placePictureSized(int, int, int, int, int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removePictureByIndex(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::rowBreakAt(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::rowBreakTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::columnBreakAt(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::columnBreakTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setRowBreak(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setColumnBreak(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::splitAt(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::splitPosition(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::groupRowRange(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::groupColumnRange(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::summaryBelow() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setSummaryBelow(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::summaryRight() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setSummaryRight(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::clearRange(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::insertColumns(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::insertRows(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeColumns(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeRows(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::copyCell(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::firstRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::firstCol() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastCol() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::firstFilledRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastFilledRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::firstFilledColumn() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastFilledColumn() {
    return notAvailable<int>(0);
}

template <class CharT>
bool SheetBaseT<CharT>::showsGridlines() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setShowsGridlines(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printsGridlines() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintsGridlines(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::zoomPercent() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setZoomPercent(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::printZoomPercent() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintZoomPercent(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printFitPages(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintFitPages(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isLandscape() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setLandscape(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::paperCode() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setPaperCode(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::headerText() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setHeaderText(const CharT*, double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::headerMargin() {
    return notAvailable<double>(0.0);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::footerText() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setFooterText(const CharT*, double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::footerMargin() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::centersHorizontally() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setCentersHorizontally(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::centersVertically() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setCentersVertically(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginLeft() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginLeft(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginRight() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginRight(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginTop() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginTop(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginBottom() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginBottom(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printsRowColHeadings() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintsRowColHeadings(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::repeatRows(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRepeatRows(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::repeatColumns(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRepeatColumns(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printAreaRange(int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintAreaRange(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::clearRepeats() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::clearPrintAreaRange() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::namedRangeByName(const CharT*, int*, int*, int*, int*, int, bool*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setNamedRangeByName(const CharT*, int, int, int, int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeNamedRange(const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::namedRangeCount() {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::namedRange(int, int*, int*, int*, int*, int*, bool*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
int SheetBaseT<CharT>::tableTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::tableAt(int, int*, int*, int*, int*, int*, int*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
int SheetBaseT<CharT>::hyperlinkTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::hyperlinkAt(int, int*, int*, int*, int*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::removeHyperlinkAt(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addHyperlink(const CharT*, int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::hasFilter() {
    return notAvailable<bool>(false);
}

template <class CharT>
IAutoFilterT<CharT>* SheetBaseT<CharT>::filterObject() {
    return notAvailable<IAutoFilterT<CharT>*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::applyFilter() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeFilter() {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::sheetName() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setSheetName(const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isProtected() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setProtected(bool, const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::visibilityState() {
    return notAvailable<int>(sheetVisible);
}

template <class CharT>
bool SheetBaseT<CharT>::setVisibilityState(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::topLeftCell(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setTopLeftCell(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isRightToLeft() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRightToLeft(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::autoFitColumns(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::parseCellAddress(const CharT*, int*, int*, bool*, bool*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::formatCellAddress(int, int, bool, bool) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setTabPaletteColor(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setTabRgbColor(int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addIgnoredErrorRange(int, int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addValidationRule(int, int, int, int, int, int, const CharT*, const CharT*, bool, bool, bool,
                                          bool, const CharT*, const CharT*, const CharT*, const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addValidationRuleNumeric(int, int, int, int, int, int, double, double, bool, bool, bool, bool,
                                                 const CharT*, const CharT*, const CharT*, const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeValidationRules() {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::formControlTotal() {
    return notAvailable<int>(0);
}

template <class CharT>
IFormControlT<CharT>* SheetBaseT<CharT>::formControlAt(int) {
    return notAvailable<IFormControlT<CharT>*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::cellFrom(int* row, int* col) {
    const int firstRow = this->firstRow(), endRow = this->lastRow(), firstCol = this->firstCol(),
              endCol = this->lastCol();
    int r = *row, c = *col;
    if (r < firstRow) r = firstRow, c = firstCol;
    for (; r < endRow; ++r, c = firstCol) {
        for (c = std::max(c, firstCol); c < endCol; ++c) {
            if (this->cellType(r, c) == cellEmpty && !this->isFormulaCell(r, c)) continue;
            *row = r;
            *col = c;
            return true;
        }
    }
    return false;
}

template class SheetBaseT<char>;
template class SheetBaseT<wchar_t>;

}  // namespace vellum
