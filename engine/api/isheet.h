// The interface of sheets.
#pragma once
namespace vellum {

template <class CharT>
class IFormatT;
template <class CharT>
class IRichStringT;
template <class CharT>
class IAutoFilterT;
template <class CharT>
class IFormControlT;

/// One sheet of a book, owned by it. Rows and columns count from 0; a binary sheet has 65536 by 256
/// cells, an Open XML one 1048576 by 16384. Ranges include their last row and column. Errors go into the book's
/// last error text; see IBookT for failure values, ownership and threads. Blocks are given as
/// first row, last row, first column, last column.
template <class CharT>
class ISheetT {
public:
    using Format = IFormatT<CharT>;

    /// A `CellKind`; for a formula the kind of its cached value.
    virtual int cellType(int row, int col) = 0;
    virtual bool isFormulaCell(int row, int col) = 0;
    virtual Format* cellFormatAt(int row, int col) = 0;
    virtual bool setCellFormatAt(int row, int col, Format* format) = 0;

    // The readers give the cell's format through `format`. A null format leaves a writer's cell as it
    // was formatted, or as its column is.
    virtual const CharT* readString(int row, int col, Format** format = nullptr) = 0;
    /// `stringKind` is a `StringKind`; a binary sheet ignores it.
    virtual bool writeString(int row, int col, const CharT* text, Format* format = nullptr, int stringKind = 2) = 0;
    virtual IRichStringT<CharT>* readRichText(int row, int col, Format** format = nullptr) = 0;
    virtual bool writeRichText(int row, int col, IRichStringT<CharT>* text, Format* format = nullptr) = 0;
    virtual double readNumber(int row, int col, Format** format = nullptr) = 0;
    virtual bool writeNumber(int row, int col, double value, Format* format = nullptr) = 0;
    virtual bool readBool(int row, int col, Format** format = nullptr) = 0;
    /// Writes an error cell when `errorCode` is not 255.
    virtual bool writeBool(int row, int col, bool value, Format* format = nullptr, int errorCode = 255) = 0;
    virtual bool readBlank(int row, int col, Format** format) = 0;
    virtual bool writeBlank(int row, int col, Format* format) = 0;
    virtual const CharT* readFormula(int row, int col, Format** format = nullptr) = 0;
    virtual bool writeFormula(int row, int col, const CharT* text, Format* format = nullptr) = 0;
    virtual bool writeFormulaNumber(int row, int col, const CharT* text, double value, Format* format = nullptr) = 0;
    virtual bool writeFormulaText(int row, int col, const CharT* text, const CharT* value,
                                  Format* format = nullptr) = 0;
    virtual bool writeFormulaBoolean(int row, int col, const CharT* text, bool value, Format* format = nullptr) = 0;
    virtual const CharT* readComment(int row, int col) = 0;
    /// The size is in pixels.
    virtual bool writeComment(int row, int col, const CharT* text, const CharT* author, int width, int height) = 0;
    virtual bool removeComment(int row, int col) = 0;
    virtual bool isDate(int row, int col) = 0;
    virtual bool isRichTextCell(int row, int col) = 0;
    /// An `ErrorCode`, 255 when the cell holds none.
    virtual int readError(int row, int col, Format** format = nullptr) = 0;
    virtual bool writeError(int row, int col, int errorCode, Format* format = nullptr) = 0;

    /// Characters of the default font; -1.0 on failure.
    virtual double columnWidth(int col) = 0;
    /// Points; -1.0 on failure.
    virtual double rowHeight(int row) = 0;
    /// Pixels at 96 dpi, -1 on failure. Of what is hidden: 0 in a binary workbook, its size when shown in an Open XML
    /// one.
    virtual int columnWidthPixels(int col) = 0;
    virtual int rowHeightPixels(int row) = 0;
    /// A negative width fits each column to its content.
    virtual bool setColumn(int colFirst, int colLast, double width, Format* format = nullptr, bool hidden = false) = 0;
    virtual bool setRow(int row, double height, Format* format = nullptr, bool hidden = false) = 0;
    virtual bool isRowHidden(int row) = 0;
    virtual bool setRowHidden(int row, bool hidden) = 0;
    virtual bool isColumnHidden(int col) = 0;
    virtual bool setColumnHidden(int col, bool hidden) = 0;
    virtual double defaultRowHeightValue() = 0;
    virtual bool setDefaultRowHeightValue(double height) = 0;

    virtual bool mergeAt(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    virtual bool addMerge(int rowFirst, int rowLast, int colFirst, int colLast) = 0;
    virtual bool removeMergeAt(int row, int col) = 0;
    virtual int mergeTotal() = 0;
    virtual bool mergeByIndex(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    virtual bool removeMergeByIndex(int index) = 0;

    virtual int pictureTotalOnSheet() = 0;
    /// The picture's id, -1 on failure. Sizes and offsets are in pixels; `linkPath` is for linked pictures.
    virtual int sheetPictureAt(int index, int* rowTop, int* colLeft, int* rowBottom, int* colRight, int* width,
                               int* height, int* offsetX, int* offsetY, const CharT** linkPath = nullptr) = 0;
    virtual bool removePictureAt(int row, int col) = 0;
    /// `placement` is a `PicturePlacement`.
    virtual bool placePicture(int row, int col, int pictureId, double scale = 1.0, int offsetX = 0, int offsetY = 0,
                              int placement = 0) = 0;
    /// A negative width or height takes that of the picture.
    virtual bool placePictureSized(int row, int col, int pictureId, int width = -1, int height = -1, int offsetX = 0,
                                   int offsetY = 0, int placement = 0) = 0;
    virtual bool removePictureByIndex(int index) = 0;

    virtual int rowBreakAt(int index) = 0;
    virtual int rowBreakTotal() = 0;
    virtual int columnBreakAt(int index) = 0;
    virtual int columnBreakTotal() = 0;
    virtual bool setRowBreak(int row, bool enable = true) = 0;
    virtual bool setColumnBreak(int col, bool enable = true) = 0;

    virtual bool splitAt(int row, int col) = 0;
    virtual bool splitPosition(int* row, int* col) = 0;
    virtual bool groupRowRange(int rowFirst, int rowLast, bool collapsed = true) = 0;
    virtual bool groupColumnRange(int colFirst, int colLast, bool collapsed = true) = 0;
    virtual bool summaryBelow() = 0;
    virtual bool setSummaryBelow(bool below) = 0;
    virtual bool summaryRight() = 0;
    virtual bool setSummaryRight(bool right) = 0;

    virtual bool clearRange(int rowFirst, int rowLast, int colFirst, int colLast) = 0;
    // Cells, merged blocks and sizes move, and defined names where asked for. Texts of formulas stay as they are; an
    // Open XML sheet leaves links, validation rules, conditional formats, page breaks, drawings and comments behind.
    virtual bool insertColumns(int colFirst, int colLast, bool updateNames = true) = 0;
    virtual bool insertRows(int rowFirst, int rowLast, bool updateNames = true) = 0;
    virtual bool removeColumns(int colFirst, int colLast, bool updateNames = true) = 0;
    virtual bool removeRows(int rowFirst, int rowLast, bool updateNames = true) = 0;
    virtual bool copyCell(int rowSrc, int colSrc, int rowDst, int colDst) = 0;

    // The used area counts formatted blanks, the filled one does not. "Last" is one past the end; an
    // empty sheet answers 0 to all eight.
    virtual int firstRow() = 0;
    virtual int lastRow() = 0;
    virtual int firstCol() = 0;
    virtual int lastCol() = 0;
    virtual int firstFilledRow() = 0;
    virtual int lastFilledRow() = 0;
    virtual int firstFilledColumn() = 0;
    virtual int lastFilledColumn() = 0;

    virtual bool showsGridlines() = 0;
    virtual bool setShowsGridlines(bool show) = 0;
    virtual bool printsGridlines() = 0;
    virtual bool setPrintsGridlines(bool print) = 0;
    virtual int zoomPercent() = 0;
    virtual bool setZoomPercent(int zoom) = 0;
    virtual int printZoomPercent() = 0;
    virtual bool setPrintZoomPercent(int zoom) = 0;
    /// Whether the sheet is fitted to pages; the out arguments are set either way.
    virtual bool printFitPages(int* width, int* height) = 0;
    virtual bool setPrintFitPages(int width = 1, int height = 1) = 0;
    virtual bool isLandscape() = 0;
    virtual bool setLandscape(bool landscape) = 0;
    virtual int paperCode() = 0;
    virtual bool setPaperCode(int paper) = 0;
    virtual const CharT* headerText() = 0;
    /// Margins are in inches.
    virtual bool setHeaderText(const CharT* text, double margin = 0.5) = 0;
    virtual double headerMargin() = 0;
    virtual const CharT* footerText() = 0;
    virtual bool setFooterText(const CharT* text, double margin = 0.5) = 0;
    virtual double footerMargin() = 0;
    virtual bool centersHorizontally() = 0;
    virtual bool setCentersHorizontally(bool center) = 0;
    virtual bool centersVertically() = 0;
    virtual bool setCentersVertically(bool center) = 0;
    virtual double marginLeft() = 0;
    virtual bool setMarginLeft(double inches) = 0;
    virtual double marginRight() = 0;
    virtual bool setMarginRight(double inches) = 0;
    virtual double marginTop() = 0;
    virtual bool setMarginTop(double inches) = 0;
    virtual double marginBottom() = 0;
    virtual bool setMarginBottom(double inches) = 0;
    virtual bool printsRowColHeadings() = 0;
    virtual bool setPrintsRowColHeadings(bool print) = 0;
    virtual bool repeatRows(int* rowFirst, int* rowLast) = 0;
    virtual bool setRepeatRows(int rowFirst, int rowLast) = 0;
    virtual bool repeatColumns(int* colFirst, int* colLast) = 0;
    virtual bool setRepeatColumns(int colFirst, int colLast) = 0;
    virtual bool printAreaRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    virtual bool setPrintAreaRange(int rowFirst, int rowLast, int colFirst, int colLast) = 0;
    virtual bool clearRepeats() = 0;
    virtual bool clearPrintAreaRange() = 0;

    // `scope` is a sheet index, -1 for the workbook, or -2 for any match.
    virtual bool namedRangeByName(const CharT* name, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                  int scope = -1, bool* hidden = nullptr) = 0;
    virtual bool setNamedRangeByName(const CharT* name, int rowFirst, int rowLast, int colFirst, int colLast,
                                     int scope = -1, bool hidden = false) = 0;
    virtual bool removeNamedRange(const CharT* name, int scope = -1) = 0;
    virtual int namedRangeCount() = 0;
    virtual const CharT* namedRange(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                    int* scope = nullptr, bool* hidden = nullptr) = 0;

    virtual int tableTotal() = 0;
    virtual const CharT* tableAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                 int* headerRows = nullptr, int* totalsRows = nullptr) = 0;
    virtual int hyperlinkTotal() = 0;
    virtual const CharT* hyperlinkAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    virtual bool removeHyperlinkAt(int index) = 0;
    virtual bool addHyperlink(const CharT* target, int rowFirst, int rowLast, int colFirst, int colLast) = 0;

    // Filters are for Open XML only.
    virtual bool hasFilter() = 0;
    virtual IAutoFilterT<CharT>* filterObject() = 0;
    virtual bool applyFilter() = 0;
    virtual bool removeFilter() = 0;

    virtual const CharT* sheetName() = 0;
    virtual bool setSheetName(const CharT* name) = 0;
    virtual bool isProtected() = 0;
    /// A null password and options of -1 leave those as they are.
    virtual bool setProtected(bool enable, const CharT* password = nullptr, int options = -1) = 0;
    /// A `SheetVisibility`.
    virtual int visibilityState() = 0;
    virtual bool setVisibilityState(int state) = 0;
    virtual bool topLeftCell(int* row, int* col) = 0;
    virtual bool setTopLeftCell(int row, int col) = 0;
    virtual bool isRightToLeft() = 0;
    virtual bool setRightToLeft(bool rightToLeft) = 0;
    virtual bool autoFitColumns(int colFirst, int rowFirst, int colLast, int rowLast) = 0;
    virtual bool parseCellAddress(const CharT* text, int* row, int* col, bool* rowRelative = nullptr,
                                  bool* colRelative = nullptr) = 0;
    virtual const CharT* formatCellAddress(int row, int col, bool rowRelative = true, bool colRelative = true) = 0;
    virtual bool setTabPaletteColor(int index) = 0;
    virtual bool setTabRgbColor(int red, int green, int blue) = 0;
    virtual bool addIgnoredErrorRange(int rowFirst, int colFirst, int rowLast, int colLast, int flags) = 0;

    // Data validation is for Open XML only. `type` and `op` count as in the format's own lists; a null
    // text is left out.
    virtual bool addValidationRule(int type, int op, int rowFirst, int rowLast, int colFirst, int colLast,
                                   const CharT* formula1, const CharT* formula2 = nullptr, bool allowBlank = true,
                                   bool hideDropDown = false, bool showInputMessage = true,
                                   bool showErrorMessage = true, const CharT* promptTitle = nullptr,
                                   const CharT* prompt = nullptr, const CharT* errorTitle = nullptr,
                                   const CharT* error = nullptr, int errorStyle = 0) = 0;
    virtual bool addValidationRuleNumeric(int type, int op, int rowFirst, int rowLast, int colFirst, int colLast,
                                          double value1, double value2, bool allowBlank = true,
                                          bool hideDropDown = false, bool showInputMessage = true,
                                          bool showErrorMessage = true, const CharT* promptTitle = nullptr,
                                          const CharT* prompt = nullptr, const CharT* errorTitle = nullptr,
                                          const CharT* error = nullptr, int errorStyle = 0) = 0;
    virtual bool removeValidationRules() = 0;

    // Form controls are for Open XML only.
    virtual int formControlTotal() = 0;
    virtual IFormControlT<CharT>* formControlAt(int index) = 0;

    virtual ~ISheetT() = default;
};

/// The walk over the cells that are there: what a visitor of all cells uses, since the used area of a sparse
/// sheet may be huge. Both engines' sheets have it.
class ISheetCells {
public:
    /// Moves (row, col) to the first cell at or behind it, in row order, whose `cellType` is not empty or that holds
    /// a formula. False when there is none.
    virtual bool cellFrom(int* row, int* col) = 0;

protected:
    ~ISheetCells() = default;
};

}  // namespace vellum
