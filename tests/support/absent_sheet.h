// A sheet for tests to build on: every operation fails with the failure value of its interface and the text "absent".
#pragma once
#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "engine/failure/last_error.h"

namespace vellum {

class AbsentSheet : public ISheetT<char>, public ISheetCells {
public:
    int cellType(int, int) override { return none(cellEmpty); }
    bool isFormulaCell(int, int) override { return none(false); }
    Format* cellFormatAt(int, int) override { return none(nullptr); }
    bool setCellFormatAt(int, int, Format*) override { return none(false); }
    const char* readString(int, int, Format**) override { return none(nullptr); }
    bool writeString(int, int, const char*, Format*, int) override { return none(false); }
    IRichStringT<char>* readRichText(int, int, Format**) override { return none(nullptr); }
    bool writeRichText(int, int, IRichStringT<char>*, Format*) override { return none(false); }
    double readNumber(int, int, Format**) override { return none(0.0); }
    bool writeNumber(int, int, double, Format*) override { return none(false); }
    bool readBool(int, int, Format**) override { return none(false); }
    bool writeBool(int, int, bool, Format*, int) override { return none(false); }
    bool readBlank(int, int, Format**) override { return none(false); }
    bool writeBlank(int, int, Format*) override { return none(false); }
    const char* readFormula(int, int, Format**) override { return none(nullptr); }
    bool writeFormula(int, int, const char*, Format*) override { return none(false); }
    bool writeFormulaNumber(int, int, const char*, double, Format*) override { return none(false); }
    bool writeFormulaText(int, int, const char*, const char*, Format*) override { return none(false); }
    bool writeFormulaBoolean(int, int, const char*, bool, Format*) override { return none(false); }
    const char* readComment(int, int) override { return none(nullptr); }
    bool writeComment(int, int, const char*, const char*, int, int) override { return none(false); }
    bool removeComment(int, int) override { return none(false); }
    bool isDate(int, int) override { return none(false); }
    bool isRichTextCell(int, int) override { return none(false); }
    int readError(int, int, Format**) override { return none(errorNone); }
    bool writeError(int, int, int, Format*) override { return none(false); }
    double columnWidth(int) override { return none(-1.0); }
    double rowHeight(int) override { return none(-1.0); }
    int columnWidthPixels(int) override { return none(-1); }
    int rowHeightPixels(int) override { return none(-1); }
    bool setColumn(int, int, double, Format*, bool) override { return none(false); }
    bool setRow(int, double, Format*, bool) override { return none(false); }
    bool isRowHidden(int) override { return none(false); }
    bool setRowHidden(int, bool) override { return none(false); }
    bool isColumnHidden(int) override { return none(false); }
    bool setColumnHidden(int, bool) override { return none(false); }
    double defaultRowHeightValue() override { return none(0.0); }
    bool setDefaultRowHeightValue(double) override { return none(false); }
    bool mergeAt(int, int, int*, int*, int*, int*) override { return none(false); }
    bool addMerge(int, int, int, int) override { return none(false); }
    bool removeMergeAt(int, int) override { return none(false); }
    int mergeTotal() override { return none(-1); }
    bool mergeByIndex(int, int*, int*, int*, int*) override { return none(false); }
    bool removeMergeByIndex(int) override { return none(false); }
    int pictureTotalOnSheet() override { return none(-1); }
    int sheetPictureAt(int, int*, int*, int*, int*, int*, int*, int*, int*, const char**) override { return none(-1); }
    bool removePictureAt(int, int) override { return none(false); }
    bool placePicture(int, int, int, double, int, int, int) override { return none(false); }
    bool placePictureSized(int, int, int, int, int, int, int, int) override { return none(false); }
    bool removePictureByIndex(int) override { return none(false); }
    int rowBreakAt(int) override { return none(-1); }
    int rowBreakTotal() override { return none(-1); }
    int columnBreakAt(int) override { return none(-1); }
    int columnBreakTotal() override { return none(-1); }
    bool setRowBreak(int, bool) override { return none(false); }
    bool setColumnBreak(int, bool) override { return none(false); }
    bool splitAt(int, int) override { return none(false); }
    bool splitPosition(int*, int*) override { return none(false); }
    bool groupRowRange(int, int, bool) override { return none(false); }
    bool groupColumnRange(int, int, bool) override { return none(false); }
    bool summaryBelow() override { return none(false); }
    bool setSummaryBelow(bool) override { return none(false); }
    bool summaryRight() override { return none(false); }
    bool setSummaryRight(bool) override { return none(false); }
    bool clearRange(int, int, int, int) override { return none(false); }
    bool insertColumns(int, int, bool) override { return none(false); }
    bool insertRows(int, int, bool) override { return none(false); }
    bool removeColumns(int, int, bool) override { return none(false); }
    bool removeRows(int, int, bool) override { return none(false); }
    bool copyCell(int, int, int, int) override { return none(false); }
    int firstRow() override { return none(0); }
    int lastRow() override { return none(0); }
    int firstCol() override { return none(0); }
    int lastCol() override { return none(0); }
    int firstFilledRow() override { return none(0); }
    int lastFilledRow() override { return none(0); }
    int firstFilledColumn() override { return none(0); }
    int lastFilledColumn() override { return none(0); }
    bool showsGridlines() override { return none(false); }
    bool setShowsGridlines(bool) override { return none(false); }
    bool printsGridlines() override { return none(false); }
    bool setPrintsGridlines(bool) override { return none(false); }
    int zoomPercent() override { return none(-1); }
    bool setZoomPercent(int) override { return none(false); }
    int printZoomPercent() override { return none(-1); }
    bool setPrintZoomPercent(int) override { return none(false); }
    bool printFitPages(int*, int*) override { return none(false); }
    bool setPrintFitPages(int, int) override { return none(false); }
    bool isLandscape() override { return none(false); }
    bool setLandscape(bool) override { return none(false); }
    int paperCode() override { return none(-1); }
    bool setPaperCode(int) override { return none(false); }
    const char* headerText() override { return none(nullptr); }
    bool setHeaderText(const char*, double) override { return none(false); }
    double headerMargin() override { return none(0.0); }
    const char* footerText() override { return none(nullptr); }
    bool setFooterText(const char*, double) override { return none(false); }
    double footerMargin() override { return none(0.0); }
    bool centersHorizontally() override { return none(false); }
    bool setCentersHorizontally(bool) override { return none(false); }
    bool centersVertically() override { return none(false); }
    bool setCentersVertically(bool) override { return none(false); }
    double marginLeft() override { return none(0.0); }
    bool setMarginLeft(double) override { return none(false); }
    double marginRight() override { return none(0.0); }
    bool setMarginRight(double) override { return none(false); }
    double marginTop() override { return none(0.0); }
    bool setMarginTop(double) override { return none(false); }
    double marginBottom() override { return none(0.0); }
    bool setMarginBottom(double) override { return none(false); }
    bool printsRowColHeadings() override { return none(false); }
    bool setPrintsRowColHeadings(bool) override { return none(false); }
    bool repeatRows(int*, int*) override { return none(false); }
    bool setRepeatRows(int, int) override { return none(false); }
    bool repeatColumns(int*, int*) override { return none(false); }
    bool setRepeatColumns(int, int) override { return none(false); }
    bool printAreaRange(int*, int*, int*, int*) override { return none(false); }
    bool setPrintAreaRange(int, int, int, int) override { return none(false); }
    bool clearRepeats() override { return none(false); }
    bool clearPrintAreaRange() override { return none(false); }
    bool namedRangeByName(const char*, int*, int*, int*, int*, int, bool*) override { return none(false); }
    bool setNamedRangeByName(const char*, int, int, int, int, int, bool) override { return none(false); }
    bool removeNamedRange(const char*, int) override { return none(false); }
    int namedRangeCount() override { return none(-1); }
    const char* namedRange(int, int*, int*, int*, int*, int*, bool*) override { return none(nullptr); }
    int tableTotal() override { return none(-1); }
    const char* tableAt(int, int*, int*, int*, int*, int*, int*) override { return none(nullptr); }
    int hyperlinkTotal() override { return none(-1); }
    const char* hyperlinkAt(int, int*, int*, int*, int*) override { return none(nullptr); }
    bool removeHyperlinkAt(int) override { return none(false); }
    bool addHyperlink(const char*, int, int, int, int) override { return none(false); }
    bool hasFilter() override { return none(false); }
    IAutoFilterT<char>* filterObject() override { return none(nullptr); }
    bool applyFilter() override { return none(false); }
    bool removeFilter() override { return none(false); }
    const char* sheetName() override { return none(nullptr); }
    bool setSheetName(const char*) override { return none(false); }
    bool isProtected() override { return none(false); }
    bool setProtected(bool, const char*, int) override { return none(false); }
    int visibilityState() override { return none(sheetVisible); }
    bool setVisibilityState(int) override { return none(false); }
    bool topLeftCell(int*, int*) override { return none(false); }
    bool setTopLeftCell(int, int) override { return none(false); }
    bool isRightToLeft() override { return none(false); }
    bool setRightToLeft(bool) override { return none(false); }
    bool autoFitColumns(int, int, int, int) override { return none(false); }
    bool parseCellAddress(const char*, int*, int*, bool*, bool*) override { return none(false); }
    const char* formatCellAddress(int, int, bool, bool) override { return none(nullptr); }
    bool setTabPaletteColor(int) override { return none(false); }
    bool setTabRgbColor(int, int, int) override { return none(false); }
    bool addIgnoredErrorRange(int, int, int, int, int) override { return none(false); }
    bool addValidationRule(int, int, int, int, int, int, const char*, const char*, bool, bool, bool, bool, const char*,
                           const char*, const char*, const char*, int) override {
        return none(false);
    }
    bool addValidationRuleNumeric(int, int, int, int, int, int, double, double, bool, bool, bool, bool, const char*,
                                  const char*, const char*, const char*, int) override {
        return none(false);
    }
    bool removeValidationRules() override { return none(false); }
    int formControlTotal() override { return none(0); }
    IFormControlT<char>* formControlAt(int) override { return none(nullptr); }
    /// Asks every cell of the used area.
    bool cellFrom(int* row, int* col) override {
        for (; *row < lastRow(); ++*row, *col = 0) {
            for (; *col < lastCol(); ++*col) {
                if (isFormulaCell(*row, *col) || cellType(*row, *col) != cellEmpty) return true;
            }
        }
        return false;
    }

protected:
    ~AbsentSheet() = default;
    /// The last error of the book that the sheet belongs to.
    virtual LastError& lastError() noexcept = 0;

private:
    template <class Result>
    Result none(Result failure) noexcept {
        lastError().set("absent");
        return failure;
    }
};

}  // namespace vellum
