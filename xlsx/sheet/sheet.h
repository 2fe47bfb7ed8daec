// One worksheet of an Open XML workbook.
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/api/iformula_results.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "engine/api/isheet_row_cells.h"
#include "engine/api/isheet_rules.h"
#include "engine/api/isheetfacts.h"
#include "engine/facts/cell_address.h"
#include "engine/failure/guarded.h"
#include "engine/text/text_holder.h"
#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/cell_area.h"
#include "xlsx/features/defined_names.h"
#include "xlsx/layout/columns.h"
#include "xlsx/layout/merges.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/xml_file.h"
#include "xlsx/pages/page_breaks.h"
#include "xlsx/pages/page_setup.h"
#include "xlsx/parts/sheet_pictures.h"

namespace bindery {
class c_read;
}

namespace vellum {

template <class CharT, class Tag>
class XMLAutoFilterT;
namespace xlsx {
class FilterBook;
}
template <class Tag>
class Comments;

/// A sheet of 1048576 rows by 16384 columns. The bound tree is the store: rows and cells in two levels of vectors that
/// stay sorted, and all operations go straight to them. Owned by its book, which binds it each time that it gives it
/// out; not to be used from two threads at once. Strings that it returns live until its next operation that returns
/// one.
template <class CharT, class Tag>
class XMLSheetImplT final : public ISheetT<CharT>,
                            public ISheetCells,
                            public ISheetRowCells,
                            public XmlFile<typename ooxml::dialect<Tag>::c_worksheet>,
                            public ISheetObjects<CharT>,
                            public ISheetFacts,
                            public IFormulaResults,
                            public ISheetRules,
                            private xlsx::CellPixels {
public:
    using typename ISheetT<CharT>::Format;

    // Loading, copying, saving: sheet_load.cpp.

    /// An empty sheet.
    XMLSheetImplT();
    /// Rows from `firstRow` to `lastRow`, counted from 0; -1 for no bound.
    XMLSheetImplT(const PartBytes& part, int firstRow, int lastRow);
    XMLSheetImplT(bindery::c_read& source, int firstRow, int lastRow);
    /// The same rows and cells. What refers to other parts comes along: see `takeOutLinkedParts`.
    XMLSheetImplT(const XMLSheetImplT& source);
    XMLSheetImplT& operator=(const XMLSheetImplT&) = delete;
    ~XMLSheetImplT() override;

    void bind(BookContextT<CharT, Tag>& book, int sheetIndex);
    [[nodiscard]] int index() const { return _index; }
    /// The sheet no longer belongs to the group that is shown and edited.
    void clearTabSelected();
    /// Drops what names a part by an Id that a copy's relationships do not have: drawings, controls, tables.
    void takeOutLinkedParts();

    // Kinds, values, formats: sheet_read.cpp.
    int cellType(int row, int col) override;
    void rowCells(int row, int col, int count, std::uint8_t* kinds, double* numbers) override;
    bool isFormulaCell(int row, int col) override;
    bool isDate(int row, int col) override;
    bool isRichTextCell(int row, int col) override;
    Format* cellFormatAt(int row, int col) override;
    const CharT* readString(int row, int col, Format** format) override;
    IRichStringT<CharT>* readRichText(int row, int col, Format** format) override;
    double readNumber(int row, int col, Format** format) override;
    bool readBool(int row, int col, Format** format) override;
    bool readBlank(int row, int col, Format** format) override;
    int readError(int row, int col, Format** format) override;

    // sheet_write.cpp
    bool setCellFormatAt(int row, int col, Format* format) override;
    bool writeString(int row, int col, const CharT* text, Format* format, int stringKind) override;
    bool writeRichText(int row, int col, IRichStringT<CharT>* text, Format* format) override;
    bool writeNumber(int row, int col, double value, Format* format) override;
    bool writeBool(int row, int col, bool value, Format* format, int errorCode) override;
    bool writeBlank(int row, int col, Format* format) override;
    bool writeError(int row, int col, int errorCode, Format* format) override;
    bool copyCell(int rowSrc, int colSrc, int rowDst, int colDst) override;

    // sheet_formulas.cpp
    const CharT* readFormula(int row, int col, Format** format) override;
    bool writeFormula(int row, int col, const CharT* text, Format* format) override;
    bool writeFormulaNumber(int row, int col, const CharT* text, double value, Format* format) override;
    bool writeFormulaText(int row, int col, const CharT* text, const CharT* value, Format* format) override;
    bool writeFormulaBoolean(int row, int col, const CharT* text, bool value, Format* format) override;

    // sheet_areas.cpp
    int firstRow() override;
    int lastRow() override;
    int firstCol() override;
    int lastCol() override;
    int firstFilledRow() override;
    int lastFilledRow() override;
    int firstFilledColumn() override;
    int lastFilledColumn() override;
    bool cellFrom(int* row, int* col) override;

    // Rows and columns, outlines: sheet_rows.cpp, sheet_columns.cpp.
    double columnWidth(int col) override;
    double rowHeight(int row) override;
    int columnWidthPixels(int col) override;
    int rowHeightPixels(int row) override;
    bool setColumn(int colFirst, int colLast, double width, Format* format, bool hidden) override;
    bool setRow(int row, double height, Format* format, bool hidden) override;
    bool isRowHidden(int row) override;
    bool setRowHidden(int row, bool hidden) override;
    bool isColumnHidden(int col) override;
    bool setColumnHidden(int col, bool hidden) override;
    bool autoFitColumns(int colFirst, int rowFirst, int colLast, int rowLast) override;  // sheet_fit.cpp
    double defaultRowHeightValue() override;
    bool setDefaultRowHeightValue(double height) override;
    bool groupRowRange(int rowFirst, int rowLast, bool collapsed) override;
    bool groupColumnRange(int colFirst, int colLast, bool collapsed) override;
    bool summaryBelow() override;
    bool setSummaryBelow(bool below) override;
    bool summaryRight() override;
    bool setSummaryRight(bool right) override;

    // Merges, page breaks: sheet_merges.cpp.
    bool mergeAt(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool addMerge(int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool removeMergeAt(int row, int col) override;
    int mergeTotal() override;
    bool mergeByIndex(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool removeMergeByIndex(int index) override;
    int rowBreakAt(int index) override;
    int rowBreakTotal() override;
    int columnBreakAt(int index) override;
    int columnBreakTotal() override;
    bool setRowBreak(int row, bool enable) override;
    bool setColumnBreak(int col, bool enable) override;

    // sheet_view.cpp
    bool splitAt(int row, int col) override;
    bool splitPosition(int* row, int* col) override;
    bool topLeftCell(int* row, int* col) override;
    bool setTopLeftCell(int row, int col) override;
    bool isRightToLeft() override;
    bool setRightToLeft(bool rightToLeft) override;
    bool showsGridlines() override;
    bool setShowsGridlines(bool show) override;
    int zoomPercent() override;
    bool setZoomPercent(int zoom) override;
    bool setTabPaletteColor(int index) override;
    bool setTabRgbColor(int red, int green, int blue) override;

    // sheet_print.cpp
    bool printsGridlines() override;
    bool setPrintsGridlines(bool print) override;
    bool printsRowColHeadings() override;
    bool setPrintsRowColHeadings(bool print) override;
    bool centersHorizontally() override;
    bool setCentersHorizontally(bool center) override;
    bool centersVertically() override;
    bool setCentersVertically(bool center) override;
    int printZoomPercent() override;
    bool setPrintZoomPercent(int zoom) override;
    bool printFitPages(int* width, int* height) override;
    bool setPrintFitPages(int width, int height) override;
    bool isLandscape() override;
    bool setLandscape(bool landscape) override;
    int paperCode() override;
    bool setPaperCode(int paper) override;
    const CharT* headerText() override;
    bool setHeaderText(const CharT* text, double margin) override;
    double headerMargin() override;
    const CharT* footerText() override;
    bool setFooterText(const CharT* text, double margin) override;
    double footerMargin() override;
    double marginLeft() override;
    bool setMarginLeft(double inches) override;
    double marginRight() override;
    bool setMarginRight(double inches) override;
    double marginTop() override;
    bool setMarginTop(double inches) override;
    double marginBottom() override;
    bool setMarginBottom(double inches) override;

    // What moves or clears cells: sheet_layout.cpp.
    bool clearRange(int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool insertColumns(int colFirst, int colLast, bool updateNames) override;
    bool insertRows(int rowFirst, int rowLast, bool updateNames) override;
    bool removeColumns(int colFirst, int colLast, bool updateNames) override;
    bool removeRows(int rowFirst, int rowLast, bool updateNames) override;

    // Pictures, comments, controls: sheet_objects.cpp.
    int pictureTotalOnSheet() override;
    int sheetPictureAt(int index, int* rowTop, int* colLeft, int* rowBottom, int* colRight, int* width, int* height,
                       int* offsetX, int* offsetY, const CharT** linkPath) override;
    bool removePictureAt(int row, int col) override;
    bool placePicture(int row, int col, int pictureId, double scale, int offsetX, int offsetY, int placement) override;
    bool placePictureSized(int row, int col, int pictureId, int width, int height, int offsetX, int offsetY,
                           int placement) override;
    bool removePictureByIndex(int index) override;
    const CharT* readComment(int row, int col) override;
    bool writeComment(int row, int col, const CharT* text, const CharT* author, int width, int height) override;
    bool removeComment(int row, int col) override;
    int formControlTotal() override;
    IFormControlT<CharT>* formControlAt(int index) override;
    std::vector<SheetComment<CharT>> comments() override;
    std::vector<SheetShape> shapes() override;
    SheetFacts facts() override;  // sheet_facts.cpp

    // Cached results: sheet_results.cpp.
    bool isCalculated(int row, int col) override;
    bool setResult(int row, int col, const FormulaResult& result) override;
    bool arrayArea(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    std::optional<ReferenceText> referenceText(int row, int col) override;
    std::vector<EntryRule> entryRules() override;  // sheet_rules.cpp

    // The sheet in its workbook: sheet_workbook.cpp.
    const CharT* sheetName() override;
    bool setSheetName(const CharT* name) override;
    int visibilityState() override;
    bool setVisibilityState(int state) override;
    bool isProtected() override;
    bool setProtected(bool enable, const CharT* password, int options) override;

    // Names and addresses: sheet_ranges.cpp.
    bool namedRangeByName(const CharT* name, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int scope,
                          bool* hidden) override;
    bool setNamedRangeByName(const CharT* name, int rowFirst, int rowLast, int colFirst, int colLast, int scope,
                             bool hidden) override;
    bool removeNamedRange(const CharT* name, int scope) override;
    int namedRangeCount() override;
    const CharT* namedRange(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int* scope,
                            bool* hidden) override;
    bool repeatRows(int* rowFirst, int* rowLast) override;
    bool setRepeatRows(int rowFirst, int rowLast) override;
    bool repeatColumns(int* colFirst, int* colLast) override;
    bool setRepeatColumns(int colFirst, int colLast) override;
    bool clearRepeats() override;
    bool printAreaRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool setPrintAreaRange(int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool clearPrintAreaRange() override;
    bool parseCellAddress(const CharT* text, int* row, int* col, bool* rowRelative, bool* colRelative) override;
    const CharT* formatCellAddress(int row, int col, bool rowRelative, bool colRelative) override;

    // Links and rules: sheet_rules.cpp.
    int hyperlinkTotal() override;
    const CharT* hyperlinkAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool removeHyperlinkAt(int index) override;
    bool addHyperlink(const CharT* target, int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool addIgnoredErrorRange(int rowFirst, int colFirst, int rowLast, int colLast, int flags) override;
    bool addValidationRule(int type, int op, int rowFirst, int rowLast, int colFirst, int colLast,
                           const CharT* formula1, const CharT* formula2, bool allowBlank, bool hideDropDown,
                           bool showInputMessage, bool showErrorMessage, const CharT* promptTitle, const CharT* prompt,
                           const CharT* errorTitle, const CharT* error, int errorStyle) override;
    bool addValidationRuleNumeric(int type, int op, int rowFirst, int rowLast, int colFirst, int colLast, double value1,
                                  double value2, bool allowBlank, bool hideDropDown, bool showInputMessage,
                                  bool showErrorMessage, const CharT* promptTitle, const CharT* prompt,
                                  const CharT* errorTitle, const CharT* error, int errorStyle) override;
    bool removeValidationRules() override;

    // Filters and tables: sheet_filters.cpp.
    bool hasFilter() override;
    IAutoFilterT<CharT>* filterObject() override;
    bool applyFilter() override;
    bool removeFilter() override;
    int tableTotal() override;
    const CharT* tableAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int* headerRows,
                         int* totalsRows) override;

protected:
    LastError& lastError() noexcept { return _book ? _book->lastError() : _ownError; }
    void beforeWrite() override;

private:
    using Sml = typename ooxml::dialect<Tag>::sml;
    using Cell = typename Sml::c_CT_Cell;
    using Row = typename Sml::c_CT_Row;
    using Cells = std::vector<Cell>;
    using Rows = ooxml::RowList<Row>;
    using RowPlace = typename Rows::iterator;
    using Formula = typename Sml::c_CT_CellFormula;
    using DefinedName = typename Sml::c_CT_DefinedName;
    using CellType = ooxml::CellType;

    /// A checked place of a cell.
    struct CellPlace {
        std::uint32_t row, col;
        bool operator==(const CellPlace&) const = default;
    };
    /// Throws for what lies outside of a sheet.
    static CellPlace place(int row, int col);

    template <class Result, class Body>
    Result guard(Result onFailure, Body&& body) {
        return guarded<Result>(lastError(), onFailure, static_cast<Body&&>(body));
    }
    BookContextT<CharT, Tag>& book() const;

    // Loading: sheet_load.cpp.
    void readFrom(bindery::c_read& source, int firstRow, int lastRow);
    void attachRows() { _rows = &this->_root.sheetData().row(); }
    void afterLoad();
    void readColumnStyles();
    void checkOrder();
    void setDimension();

    // Places of rows and cells: sheet_order.cpp.
    /// Walks all cells with their places, numbered or not: visit(row, col, cell).
    template <class Visit>
    void eachCell(Visit&& visit);
    void numberAll();
    void splitZeroRows();
    void sortAll();

    // Finding and making cells: sheet_lookup.cpp.
    /// The first row that does not lie before `row`. All rows have to be numbered.
    RowPlace rowAt(std::uint32_t row);
    std::size_t cellAt(const Cells& cells, std::uint32_t col);
    Row* findRow(std::uint32_t row);
    Row* rowOfLastCall(std::uint32_t row) const;
    Cell* findCellInRow(Row& row, std::uint32_t col);
    Cell* findCell(CellPlace at);
    /// Null for a place outside of a sheet, too.
    Cell* findCell(int row, int col);
    /// Throws "cell is not found".
    Cell& requireCell(int row, int col);
    Row& ensureRow(std::uint32_t row);
    /// `reset` clears what the cell held. A null format leaves the cell's own, or takes that of its column.
    Cell& ensureCell(CellPlace at, Format* format, bool reset);
    Row* unnumberedRow(std::uint32_t row);
    static bool leavesSpans(const Row& row, std::uint32_t col);

    static bool isFilled(const Cell& cell);
    int kindOf(const Cell& cell) const;
    Format* formatOf(const Cell& cell);
    void giveFormat(const Cell& cell, Format** format) {
        if (format) *format = formatOf(cell);
    }
    double numberIn(const Cell& cell);
    const CharT* give(std::wstring_view text);
    const CharT* giveUtf8(std::string_view text);
    const CharT* giveShared(SharedStrings<CharT, Tag>& strings, std::size_t position);
    std::wstring_view widened(const CharT* text);

    /// An error code that is none leaves the cell without a value and throws.
    void putNumber(Cell& cell, double value);
    void putError(Cell& cell, int errorCode);
    void fill(CellPlace at) { _filled.add(static_cast<int>(at.row), static_cast<int>(at.col)); }

    // Formulas: sheet_formulas.cpp; shared ones: sheet_shared.cpp.
    Cell& putFormula(CellPlace at, const CharT* text, Format* format);
    static bool isMember(const Cell& cell, std::uint32_t si);
    /// Whether the text of a group stands here.
    static bool hasGroupText(const Cell& cell);
    static bool isMaster(const Cell& cell);
    /// The text of a formula cell, of a shared one as it is at this place.
    std::wstring formulaText(CellPlace at, const Cell& cell, CellPlace as);
    Cell* findMaster(std::uint32_t si, CellPlace& at);
    /// visit(place, cell) for the members of a group within the master's `ref`, row by row; true ends the walk. Those
    /// in front of `from` are left out.
    template <class Visit>
    void eachMember(const Formula& master, CellPlace from, Visit&& visit);
    void handOverMaster(CellPlace at, Cell& master);
    void removeShared(CellPlace at, Cell& master);

    const xlsx::FontMetrics& metrics() const { return book().fontMetrics(); }
    static std::uint32_t checkedRow(int row);
    static std::uint32_t checkedCol(int col);
    void putColumns(std::uint32_t first, std::uint32_t last, double chars, std::optional<std::uint32_t> style,
                    std::optional<bool> hidden);
    void move(const xlsx::CellMove& move, bool updateNames);
    void moveRanges(const xlsx::CellMove& move);
    void moveNames(const xlsx::CellMove& move, bool updateNames);
    void moveColumnStyles(const xlsx::CellMove& move);
    std::vector<typename Sml::c_CT_Table*> tables();
    bool clearCells(const CellRange& range);
    /// Whatever was remembered of places of rows and cells.
    void forgetPlaces();
    /// Fits columns to their cells in some rows; those where nothing was measured are left alone.
    void fitColumns(const CellRange& area, std::optional<std::uint32_t> style, std::optional<bool> hidden);
    double margin(typename xlsx::PageMargins<Tag>::Side side);
    bool setMargin(typename xlsx::PageMargins<Tag>::Side side, double inches);

    // For pictures, comments, controls: sheet_objects.cpp.
    int columnPixels(int col) override;
    int rowPixels(int row) override;
    int firstEqualRow() override;
    xlsx::SheetPictures<Tag> pictures();
    Comments<Tag>* findComments();
    const std::vector<std::string>& controls();

    void updateAreas();
    const CellArea& used() { return updateAreas(), _used; }
    const CellArea& filled() { return updateAreas(), _filled; }

    // The filter: sheet_filters.cpp.
    void dropFilter();
    void dropFilterElement();
    void dropEmptyFilter();
    void dissolveShared(const CellRange& range);
    std::vector<std::uint32_t> sortData(typename Sml::c_CT_AutoFilter& filter, CellRange range, std::uint32_t endRow,
                                        xlsx::FilterBook& values);

    // The workbook, and names: sheet_workbook.cpp, sheet_ranges.cpp, sheet_rules.cpp.
    typename Sml::c_CT_Sheet* sheetElement();
    /// Throws when the workbook has no such sheet.
    xlsx::NamedSheet namedSheet();
    const std::vector<DefinedName*>& visibleNames();
    std::optional<CellRange> areaOfName(const DefinedName& name);
    void warnOfMoreAreas(bool hasMore);
    int checkedScope(int scope);
    Relationships* findRelationships();
    std::optional<std::wstring> wideOrNothing(const CharT* text);

    BookContextT<CharT, Tag>* _book = nullptr;
    int _index = -1;
    LastError _ownError;  // until a book binds the sheet

    Rows* _rows = nullptr;  // of the bound tree
    bool _numbered = true;  // all rows and cells say where they stand, in order
    bool _changed = false;
    int _firstLoadedRow = 0;
    std::vector<std::pair<std::uint32_t, Row*>> _rowPlaces;  // while rows are not numbered, when asked for
    // Where the last row and cell were found: neighbours are likely to be next.
    RowPlace _rowHint;
    std::size_t _cellHint = 0;
    Row* _lastRow = nullptr;
    std::size_t _lastRowRemovals = 0;  // of the rows, when it was found

    xlsx::Columns<Tag> _columns{this->_root};
    xlsx::Merges<Tag> _merges{this->_root};
    xlsx::PageBreaks<Tag> _rowBreaks{this->_root, xlsx::BreakKind::above};
    xlsx::PageBreaks<Tag> _columnBreaks{this->_root, xlsx::BreakKind::leftOf};
    std::vector<std::uint32_t> _columnStyle;  // up to the last column that has one; 0 for none
    CellArea _used, _filled;
    bool _areasDirty = false;
    // Of all groups, when known; the first one counts, but producers use a number again.
    std::unordered_map<std::uint32_t, std::vector<CellPlace>> _sharedMasters;
    bool _mastersKnown = false;
    std::unordered_map<std::uint32_t, CellPlace> _heirs;  // who took over last: no member stands in front of it

    std::unique_ptr<XMLAutoFilterT<CharT, Tag>> _filter;  // once it was asked for

    std::vector<DefinedName*> _visibleNames;
    unsigned _visibleNamesVersion = 0;  // of the names that they were taken from; 0 for none

    std::optional<std::vector<std::string>> _controls;  // their relationship Ids, when known

    TextHolder _text, _nameText, _addressText, _linkText, _tableText;
    std::wstring _wide;
};

extern template class XMLSheetImplT<char, excelNormal_tag>;
extern template class XMLSheetImplT<char, excelStrict_tag>;
extern template class XMLSheetImplT<wchar_t, excelNormal_tag>;
extern template class XMLSheetImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
