// Sheets, as far as no engine has built more.
#pragma once
#include "engine/api/isheet.h"
#include "engine/failure/last_error.h"
#include "engine/failure/messages.h"

namespace vellum {

/// A sheet of either engine as far as nothing is built: every operation fails with the interface's
/// failure value and "function is not available yet". An engine overrides what it has.
template <class CharT>
class SheetBaseT : public ISheetT<CharT>, public ISheetCells {
public:
    using typename ISheetT<CharT>::Format;

    int cellType(int, int) override;
    bool isFormulaCell(int, int) override;
    Format* cellFormatAt(int, int) override;
    bool setCellFormatAt(int, int, Format*) override;
    const CharT* readString(int, int, Format**) override;
    bool writeString(int, int, const CharT*, Format*, int) override;
    IRichStringT<CharT>* readRichText(int, int, Format**) override;
    bool writeRichText(int, int, IRichStringT<CharT>*, Format*) override;
    double readNumber(int, int, Format**) override;
    bool writeNumber(int, int, double, Format*) override;
    bool readBool(int, int, Format**) override;
    bool writeBool(int, int, bool, Format*, int) override;
    bool readBlank(int, int, Format**) override;
    bool writeBlank(int, int, Format*) override;
    const CharT* readFormula(int, int, Format**) override;
    bool writeFormula(int, int, const CharT*, Format*) override;
    bool writeFormulaNumber(int, int, const CharT*, double, Format*) override;
    bool writeFormulaText(int, int, const CharT*, const CharT*, Format*) override;
    bool writeFormulaBoolean(int, int, const CharT*, bool, Format*) override;
    const CharT* readComment(int, int) override;
    bool writeComment(int, int, const CharT*, const CharT*, int, int) override;
    bool removeComment(int, int) override;
    bool isDate(int, int) override;
    bool isRichTextCell(int, int) override;
    int readError(int, int, Format**) override;
    bool writeError(int, int, int, Format*) override;
    double columnWidth(int) override;
    double rowHeight(int) override;
    int columnWidthPixels(int) override;
    int rowHeightPixels(int) override;
    bool setColumn(int, int, double, Format*, bool) override;
    bool setRow(int, double, Format*, bool) override;
    bool isRowHidden(int) override;
    bool setRowHidden(int, bool) override;
    bool isColumnHidden(int) override;
    bool setColumnHidden(int, bool) override;
    double defaultRowHeightValue() override;
    bool setDefaultRowHeightValue(double) override;
    bool mergeAt(int, int, int*, int*, int*, int*) override;
    bool addMerge(int, int, int, int) override;
    bool removeMergeAt(int, int) override;
    int mergeTotal() override;
    bool mergeByIndex(int, int*, int*, int*, int*) override;
    bool removeMergeByIndex(int) override;
    int pictureTotalOnSheet() override;
    int sheetPictureAt(int, int*, int*, int*, int*, int*, int*, int*, int*, const CharT**) override;
    bool removePictureAt(int, int) override;
    bool placePicture(int, int, int, double, int, int, int) override;
    bool placePictureSized(int, int, int, int, int, int, int, int) override;
    bool removePictureByIndex(int) override;
    int rowBreakAt(int) override;
    int rowBreakTotal() override;
    int columnBreakAt(int) override;
    int columnBreakTotal() override;
    bool setRowBreak(int, bool) override;
    bool setColumnBreak(int, bool) override;
    bool splitAt(int, int) override;
    bool splitPosition(int*, int*) override;
    bool groupRowRange(int, int, bool) override;
    bool groupColumnRange(int, int, bool) override;
    bool summaryBelow() override;
    bool setSummaryBelow(bool) override;
    bool summaryRight() override;
    bool setSummaryRight(bool) override;
    bool clearRange(int, int, int, int) override;
    bool insertColumns(int, int, bool) override;
    bool insertRows(int, int, bool) override;
    bool removeColumns(int, int, bool) override;
    bool removeRows(int, int, bool) override;
    bool copyCell(int, int, int, int) override;
    int firstRow() override;
    int lastRow() override;
    int firstCol() override;
    int lastCol() override;
    int firstFilledRow() override;
    int lastFilledRow() override;
    int firstFilledColumn() override;
    int lastFilledColumn() override;
    bool showsGridlines() override;
    bool setShowsGridlines(bool) override;
    bool printsGridlines() override;
    bool setPrintsGridlines(bool) override;
    int zoomPercent() override;
    bool setZoomPercent(int) override;
    int printZoomPercent() override;
    bool setPrintZoomPercent(int) override;
    bool printFitPages(int*, int*) override;
    bool setPrintFitPages(int, int) override;
    bool isLandscape() override;
    bool setLandscape(bool) override;
    int paperCode() override;
    bool setPaperCode(int) override;
    const CharT* headerText() override;
    bool setHeaderText(const CharT*, double) override;
    double headerMargin() override;
    const CharT* footerText() override;
    bool setFooterText(const CharT*, double) override;
    double footerMargin() override;
    bool centersHorizontally() override;
    bool setCentersHorizontally(bool) override;
    bool centersVertically() override;
    bool setCentersVertically(bool) override;
    double marginLeft() override;
    bool setMarginLeft(double) override;
    double marginRight() override;
    bool setMarginRight(double) override;
    double marginTop() override;
    bool setMarginTop(double) override;
    double marginBottom() override;
    bool setMarginBottom(double) override;
    bool printsRowColHeadings() override;
    bool setPrintsRowColHeadings(bool) override;
    bool repeatRows(int*, int*) override;
    bool setRepeatRows(int, int) override;
    bool repeatColumns(int*, int*) override;
    bool setRepeatColumns(int, int) override;
    bool printAreaRange(int*, int*, int*, int*) override;
    bool setPrintAreaRange(int, int, int, int) override;
    bool clearRepeats() override;
    bool clearPrintAreaRange() override;
    bool namedRangeByName(const CharT*, int*, int*, int*, int*, int, bool*) override;
    bool setNamedRangeByName(const CharT*, int, int, int, int, int, bool) override;
    bool removeNamedRange(const CharT*, int) override;
    int namedRangeCount() override;
    const CharT* namedRange(int, int*, int*, int*, int*, int*, bool*) override;
    int tableTotal() override;
    const CharT* tableAt(int, int*, int*, int*, int*, int*, int*) override;
    int hyperlinkTotal() override;
    const CharT* hyperlinkAt(int, int*, int*, int*, int*) override;
    bool removeHyperlinkAt(int) override;
    bool addHyperlink(const CharT*, int, int, int, int) override;
    bool hasFilter() override;
    IAutoFilterT<CharT>* filterObject() override;
    bool applyFilter() override;
    bool removeFilter() override;
    const CharT* sheetName() override;
    bool setSheetName(const CharT*) override;
    bool isProtected() override;
    bool setProtected(bool, const CharT*, int) override;
    int visibilityState() override;
    bool setVisibilityState(int) override;
    bool topLeftCell(int*, int*) override;
    bool setTopLeftCell(int, int) override;
    bool isRightToLeft() override;
    bool setRightToLeft(bool) override;
    bool autoFitColumns(int, int, int, int) override;
    bool parseCellAddress(const CharT*, int*, int*, bool*, bool*) override;
    const CharT* formatCellAddress(int, int, bool, bool) override;
    bool setTabPaletteColor(int) override;
    bool setTabRgbColor(int, int, int) override;
    bool addIgnoredErrorRange(int, int, int, int, int) override;
    bool addValidationRule(int, int, int, int, int, int, const CharT*, const CharT*, bool, bool, bool, bool,
                           const CharT*, const CharT*, const CharT*, const CharT*, int) override;
    bool addValidationRuleNumeric(int, int, int, int, int, int, double, double, bool, bool, bool, bool, const CharT*,
                                  const CharT*, const CharT*, const CharT*, int) override;
    bool removeValidationRules() override;
    int formControlTotal() override;
    IFormControlT<CharT>* formControlAt(int) override;

    /// Asks every cell of the used area.
    bool cellFrom(int* row, int* col) override;

protected:
    /// The last error of the book that the object belongs to.
    virtual LastError& lastError() noexcept = 0;

private:
    template <class Result>
    Result notAvailable(Result failure) noexcept {
        lastError().set(msg::notAvailable);
        return failure;
    }
};

extern template class SheetBaseT<char>;
extern template class SheetBaseT<wchar_t>;

}  // namespace vellum
