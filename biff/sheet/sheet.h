// One sheet of a binary workbook.
#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

#include "biff/sheet/book_context.h"
#include "biff/sheet/sheet_content.h"
#include "engine/api/iformula_results.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "engine/api/isheet_row_cells.h"
#include "engine/api/isheetfacts.h"
#include "engine/failure/guarded.h"
#include "engine/text/text_holder.h"
#include "formula/compiling/formula_from_text.h"
#include "formula/printing/formula_to_text.h"

namespace vellum {

namespace drawing {
struct PixelPlace;
}

namespace biff {
struct MovedLines;
}

/// A sheet of 65536 rows by 256 columns. Owned by its book; not to be used from two threads at once.
/// Strings that it returns live until the next operation on the same sheet that returns one.
template <class CharT>
class SheetImplT final : public ISheetT<CharT>,
                         public ISheetCells,
                         public ISheetRowCells,
                         public ISheetObjects<CharT>,
                         public ISheetFacts,
                         public IFormulaResults {
public:
    using typename ISheetT<CharT>::Format;

    explicit SheetImplT(BookContext<CharT>& book);

    // What the book does with its sheets; these throw.

    /// Reads from the stream's place to the sheet's EOF, in place of all content.
    void load(Xls& in, const SheetLoad& what);
    /// Writes from Bof to EOF, always as BIFF8.
    void save(Xls& out);
    /// Takes the content of a sheet of this or another book. Tables stay behind, since what they name is unique in a
    /// book; from another book formulas come as their values, and of a drawing the pictures and comments.
    void cloneFrom(const SheetImplT& source);
    /// Takes the sheet's uses out of the shared strings; to be called before the sheet goes.
    void releaseStrings();
    [[nodiscard]] BookContext<CharT>& book() const { return _book; }
    /// The same for the pictures that its drawing shows.
    void releaseDrawing();
    /// Number of its drawing, 0 when it has none.
    [[nodiscard]] std::uint32_t dgid() const { return _content.isParked() ? 0 : parts().drawing.dgid(); }
    /// What of it is kept without being understood.
    [[nodiscard]] std::size_t keptBytes() const { return _content.keptBytes(); }
    [[nodiscard]] const wchar_t* name() const { return _name; }
    /// `pooled` must live as long as the book. No checks.
    void setName(const wchar_t* pooled) { _name = pooled; }
    /// Of the sheet's Bof: 16 worksheet, 32 chart, others.
    [[nodiscard]] std::uint16_t dt() const {
        return _content.isParked() ? std::uint16_t{Bof::worksheet} : parts().bof.dt;
    }
    /// Formulas that a save turns into their values.
    [[nodiscard]] int lostFormulas() const;
    /// Whether the sheet belongs to the group that is shown and edited.
    void setSelected(bool selected);
    [[nodiscard]] int calcMode() const { return _content.calcMode(); }
    void setCalcMode(int mode) {
        const auto wire = static_cast<std::int16_t>(mode);
        if (_content.calcMode() != wire) _content.edit().settings.calcMode = wire;
    }
    [[nodiscard]] bool usesR1C1() const { return _content.calcRefMode() == 0; }
    void setUsesR1C1(bool r1c1) {
        const std::uint16_t wire = r1c1 ? 0 : 1;
        if (_content.calcRefMode() != wire) _content.edit().settings.calcRefMode = wire;
    }
    /// What is in the sheet. It lives until the sheet is changed, or others are asked.
    [[nodiscard]] const SheetParts& parts() const { return _content.read(); }

    // Cells (sheet_cells.cpp, sheet_texts.cpp, sheet_formulas.cpp).
    int cellType(int row, int col) override;
    void rowCells(int row, int col, int count, std::uint8_t* kinds, double* numbers) override;
    bool isFormulaCell(int row, int col) override;
    Format* cellFormatAt(int row, int col) override;
    bool setCellFormatAt(int row, int col, Format* format) override;
    double readNumber(int row, int col, Format** format) override;
    bool writeNumber(int row, int col, double value, Format* format) override;
    bool readBool(int row, int col, Format** format) override;
    bool writeBool(int row, int col, bool value, Format* format, int errorCode) override;
    bool readBlank(int row, int col, Format** format) override;
    bool writeBlank(int row, int col, Format* format) override;
    int readError(int row, int col, Format** format) override;
    bool cellFrom(int* row, int* col) override;
    bool writeError(int row, int col, int errorCode, Format* format) override;
    bool isDate(int row, int col) override;
    const CharT* readString(int row, int col, Format** format) override;
    bool writeString(int row, int col, const CharT* text, Format* format, int stringKind) override;
    IRichStringT<CharT>* readRichText(int row, int col, Format** format) override;
    bool writeRichText(int row, int col, IRichStringT<CharT>* text, Format* format) override;
    bool isRichTextCell(int row, int col) override;
    const CharT* readFormula(int row, int col, Format** format) override;
    bool writeFormula(int row, int col, const CharT* text, Format* format) override;
    bool writeFormulaNumber(int row, int col, const CharT* text, double value, Format* format) override;
    bool writeFormulaText(int row, int col, const CharT* text, const CharT* value, Format* format) override;
    bool writeFormulaBoolean(int row, int col, const CharT* text, bool value, Format* format) override;

    // Rows (sheet_rows.cpp) and columns (sheet_columns.cpp).
    double rowHeight(int row) override;
    int rowHeightPixels(int row) override;
    bool setRow(int row, double height, Format* format, bool hidden) override;
    bool isRowHidden(int row) override;
    bool setRowHidden(int row, bool hidden) override;
    double defaultRowHeightValue() override { return 0.0; }
    bool setDefaultRowHeightValue(double) override { return false; }
    double columnWidth(int col) override;
    int columnWidthPixels(int col) override;
    bool setColumn(int colFirst, int colLast, double width, Format* format, bool hidden) override;
    bool isColumnHidden(int col) override;
    bool setColumnHidden(int col, bool hidden) override;
    bool autoFitColumns(int colFirst, int rowFirst, int colLast, int rowLast) override;

    // Blocks of cells (sheet_layout.cpp).
    bool mergeAt(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool addMerge(int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool removeMergeAt(int row, int col) override;
    int mergeTotal() override;
    bool mergeByIndex(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool removeMergeByIndex(int index) override;
    bool clearRange(int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool copyCell(int rowSrc, int colSrc, int rowDst, int colDst) override;
    bool insertRows(int rowFirst, int rowLast, bool updateNames) override;
    bool removeRows(int rowFirst, int rowLast, bool updateNames) override;
    bool insertColumns(int colFirst, int colLast, bool updateNames) override;
    bool removeColumns(int colFirst, int colLast, bool updateNames) override;
    int firstRow() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.usedBounds().rowFirst); });
    }
    int lastRow() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.usedBounds().rowEnd); });
    }
    int firstCol() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.usedBounds().colFirst); });
    }
    int lastCol() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.usedBounds().colEnd); });
    }
    int firstFilledRow() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.filledBounds().rowFirst); });
    }
    int lastFilledRow() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.filledBounds().rowEnd); });
    }
    int firstFilledColumn() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.filledBounds().colFirst); });
    }
    int lastFilledColumn() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.filledBounds().colEnd); });
    }

    // Defined names (sheet_names.cpp).
    bool namedRangeByName(const CharT* name, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int scope,
                          bool* hidden) override;
    bool setNamedRangeByName(const CharT* name, int rowFirst, int rowLast, int colFirst, int colLast, int scope,
                             bool hidden) override;
    bool removeNamedRange(const CharT* name, int scope) override;
    int namedRangeCount() override;
    const CharT* namedRange(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int* scope,
                            bool* hidden) override;
    bool printAreaRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool setPrintAreaRange(int rowFirst, int rowLast, int colFirst, int colLast) override;
    bool clearPrintAreaRange() override;
    bool repeatRows(int* rowFirst, int* rowLast) override;
    bool setRepeatRows(int rowFirst, int rowLast) override;
    bool repeatColumns(int* colFirst, int* colLast) override;
    bool setRepeatColumns(int colFirst, int colLast) override;
    bool clearRepeats() override;

    // Printing (sheet_print.cpp).
    bool isLandscape() override;
    bool setLandscape(bool landscape) override;
    int paperCode() override;
    bool setPaperCode(int paper) override;
    int printZoomPercent() override;
    bool setPrintZoomPercent(int zoom) override;
    bool printFitPages(int* width, int* height) override;
    bool setPrintFitPages(int width, int height) override;
    const CharT* headerText() override;
    bool setHeaderText(const CharT* text, double margin) override;
    double headerMargin() override;
    const CharT* footerText() override;
    bool setFooterText(const CharT* text, double margin) override;
    double footerMargin() override;
    bool centersHorizontally() override;
    bool setCentersHorizontally(bool center) override;
    bool centersVertically() override;
    bool setCentersVertically(bool center) override;
    double marginLeft() override { return marginOf(biff::Margin::left); }
    bool setMarginLeft(double inches) override { return setMargin(biff::Margin::left, inches); }
    double marginRight() override { return marginOf(biff::Margin::right); }
    bool setMarginRight(double inches) override { return setMargin(biff::Margin::right, inches); }
    double marginTop() override { return marginOf(biff::Margin::top); }
    bool setMarginTop(double inches) override { return setMargin(biff::Margin::top, inches); }
    double marginBottom() override { return marginOf(biff::Margin::bottom); }
    bool setMarginBottom(double inches) override { return setMargin(biff::Margin::bottom, inches); }
    int rowBreakAt(int index) override;
    int rowBreakTotal() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.features.pageBreaks.rows().size()); });
    }
    int columnBreakAt(int index) override;
    int columnBreakTotal() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.features.pageBreaks.columns().size()); });
    }
    bool setRowBreak(int row, bool enable) override;
    bool setColumnBreak(int col, bool enable) override;

    // Panes, size and tab (sheet_window.cpp).
    bool splitAt(int row, int col) override;
    bool splitPosition(int* row, int* col) override;
    int zoomPercent() override {
        return ask(0, [](const SheetParts& p) { return p.features.panes.zoomPercent(); });
    }
    bool setZoomPercent(int zoom) override;
    bool setTabPaletteColor(int index) override;
    bool setTabRgbColor(int red, int green, int blue) override;

    // Protection, errors that are not shown, links, tables, groups, addresses (sheet_features.cpp).
    bool isProtected() override {
        return ask(false, [](const SheetParts& p) { return p.features.protection.isOn(); });
    }
    bool setProtected(bool enable, const CharT* password, int options) override;
    bool addIgnoredErrorRange(int rowFirst, int colFirst, int rowLast, int colLast, int flags) override;
    int hyperlinkTotal() override {
        return ask(0, [](const SheetParts& p) { return static_cast<int>(p.features.hyperlinks.total()); });
    }
    const CharT* hyperlinkAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool removeHyperlinkAt(int index) override;
    bool addHyperlink(const CharT* target, int rowFirst, int rowLast, int colFirst, int colLast) override;
    int tableTotal() override;
    const CharT* tableAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int* headerRows,
                         int* totalsRows) override;
    bool groupRowRange(int rowFirst, int rowLast, bool collapsed) override;
    bool groupColumnRange(int colFirst, int colLast, bool collapsed) override;
    bool parseCellAddress(const CharT* text, int* row, int* col, bool* rowRelative, bool* colRelative) override;
    const CharT* formatCellAddress(int row, int col, bool rowRelative, bool colRelative) override;

    // Comments (sheet_comments.cpp) and pictures (sheet_pictures.cpp).
    const CharT* readComment(int row, int col) override;
    bool writeComment(int row, int col, const CharT* text, const CharT* author, int width, int height) override;
    bool removeComment(int row, int col) override;
    int pictureTotalOnSheet() override;
    int sheetPictureAt(int index, int* rowTop, int* colLeft, int* rowBottom, int* colRight, int* width, int* height,
                       int* offsetX, int* offsetY, const CharT** linkPath) override;
    bool placePicture(int row, int col, int pictureId, double scale, int offsetX, int offsetY, int placement) override;
    bool placePictureSized(int row, int col, int pictureId, int width, int height, int offsetX, int offsetY,
                           int placement) override;
    bool removePictureAt(int row, int col) override;
    bool removePictureByIndex(int index) override;
    // What a report needs of them: sheet_objects.cpp.
    std::vector<SheetComment<CharT>> comments() override;
    std::vector<SheetShape> shapes() override;
    SheetFacts facts() override;  // sheet_facts.cpp

    // Cached results: sheet_results.cpp.
    bool isCalculated(int row, int col) override;
    bool setResult(int row, int col, const FormulaResult& result) override;
    bool arrayArea(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    std::optional<ReferenceText> referenceText(int row, int col) override;

    // View, name, and what a binary sheet has not (sheet_view.cpp).
    bool showsGridlines() override;
    bool setShowsGridlines(bool show) override;
    bool isRightToLeft() override;
    bool setRightToLeft(bool rightToLeft) override;
    bool topLeftCell(int* row, int* col) override;
    bool setTopLeftCell(int row, int col) override;
    bool printsGridlines() override;
    bool setPrintsGridlines(bool print) override;
    bool printsRowColHeadings() override;
    bool setPrintsRowColHeadings(bool print) override;
    bool summaryBelow() override;
    bool setSummaryBelow(bool below) override;
    bool summaryRight() override;
    bool setSummaryRight(bool right) override;
    const CharT* sheetName() override;
    bool setSheetName(const CharT* name) override;
    int visibilityState() override;
    bool setVisibilityState(int state) override;
    bool hasFilter() override;
    IAutoFilterT<CharT>* filterObject() override;
    bool applyFilter() override;
    bool removeFilter() override;
    bool addValidationRule(int type, int op, int rowFirst, int rowLast, int colFirst, int colLast,
                           const CharT* formula1, const CharT* formula2, bool allowBlank, bool hideDropDown,
                           bool showInputMessage, bool showErrorMessage, const CharT* promptTitle, const CharT* prompt,
                           const CharT* errorTitle, const CharT* error, int errorStyle) override;
    bool addValidationRuleNumeric(int type, int op, int rowFirst, int rowLast, int colFirst, int colLast, double value1,
                                  double value2, bool allowBlank, bool hideDropDown, bool showInputMessage,
                                  bool showErrorMessage, const CharT* promptTitle, const CharT* prompt,
                                  const CharT* errorTitle, const CharT* error, int errorStyle) override;
    bool removeValidationRules() override;
    int formControlTotal() override { return 0; }
    IFormControlT<CharT>* formControlAt(int) override { return nullptr; }

protected:
    LastError& lastError() noexcept { return _book.lastError(); }

private:
    /// A checked place of a cell.
    struct CellPlace {
        std::uint16_t row, col;
    };
    static CellPlace place(int row, int col);
    /// Throws unless the corners are cells and in order.
    static biff::CellRange checkedRange(int rowFirst, int rowLast, int colFirst, int colLast);
    static std::uint16_t checkedRow(int row);
    static std::uint16_t checkedCol(int col);

    template <class Result, class Body>
    Result guard(Result onFailure, Body&& body) {
        return guarded<Result>(_book.lastError(), onFailure, static_cast<Body&&>(body));
    }

    /// For operations that leave the last error as it is. Only memory to open the sheet can lack.
    template <class Result, class Read>
    Result ask(Result onFailure, Read&& read) noexcept {
        try {
            return read(parts());
        } catch (const std::exception& e) {
            _book.lastError().set(e.what());
        }
        return onFailure;
    }
    [[nodiscard]] double marginOf(biff::Margin side) {
        return ask(0.0, [side](const SheetParts& p) { return p.features.pageSetup.margin(side); });
    }
    /// For a change. A chart or macro sheet, which is kept as bytes, would lose it: throws.
    SheetParts& edit() {
        SheetParts& content = _content.edit();
        if (!content.isWorksheet()) throwNoWorksheet();
        return content;
    }
    [[noreturn]] static void throwNoWorksheet();

    /// Position in tab order.
    [[nodiscard]] int index() const { return _book.indexOfSheet(*this); }
    /// A caller's text, null as an empty one, until the next such call.
    [[nodiscard]] std::wstring_view widened(const CharT* text) const {
        return text == nullptr ? std::wstring_view() : _book.widen(text);
    }

    /// The same for a setter of a sheet's features: a chart or macro sheet, which is kept as bytes, would lose what was
    /// set, and refuses.
    template <class Body>
    bool change(Body&& body);
    bool setMargin(biff::Margin side, double inches);
    bool setPageText(biff::PageText biff::PageSetup::*to, std::uint16_t id, const CharT* text, double Setup::*margin,
                     double inches);

    [[nodiscard]] CellSlot slotAt(CellPlace at) const { return parts().cells.at(at.row, at.col); }
    /// The cell's element when it is of that kind, else null.
    template <class Cell>
    [[nodiscard]] const Cell* cellAs(CellSlot slot) const {
        return slot.occupied() && slot.kind() == Cell::kind ? &parts().cells.template get<Cell>(slot) : nullptr;
    }
    [[nodiscard]] Format* formatOf(CellSlot slot) const;
    void giveFormat(CellSlot slot, Format** format) const {
        if (format != nullptr) *format = formatOf(slot);
    }
    /// A CellKind.
    [[nodiscard]] int kindOf(CellSlot slot) const;
    /// The value of a number, RK or formula cell; nothing for others.
    [[nodiscard]] std::optional<double> numberOf(CellSlot slot) const;

    /// The format index of a cell that is being written: the caller's, else the cell's own, else the default.
    [[nodiscard]] std::uint16_t ixfeFor(CellPlace at, const Format* format) const;
    [[nodiscard]] std::uint16_t defaultFormatIndex(std::uint16_t col) const;
    /// Writes an element over whatever the cell was.
    template <class Cell>
    void put(Cell cell);
    void putNumber(CellPlace at, std::uint16_t ixfe, double value);
    void putText(CellPlace at, std::uint16_t ixfe, std::wstring_view text);
    /// With the uses of the shared strings kept right.
    void putString(CellPlace at, std::uint16_t ixfe, std::uint32_t isst);
    void putLabelSst(CellPlace at, std::uint16_t ixfe, std::uint32_t isst);
    void putBoolErr(CellPlace at, std::uint16_t ixfe, int value, bool isError);
    void putBlank(CellPlace at, std::uint16_t ixfe);
    void putFormula(FormulaCell cell);
    void eraseCell(CellPlace at);
    void eraseCells(CellPlace first, CellPlace last);
    void setIxfe(CellSlot slot, std::uint16_t ixfe);

    [[nodiscard]] const CharT* textOf(CellSlot slot);
    [[nodiscard]] const CharT* formulaText(const FormulaCell& cell);
    /// The text of a formula's tokens, alive until the next call.
    [[nodiscard]] const std::wstring& expressionText(const FormulaCell& cell);
    /// Compiles a text into a cell that has no value yet. Nothing of the sheet changes.
    [[nodiscard]] FormulaCell compiled(CellPlace at, const CharT* text, const Format* format);
    [[nodiscard]] const CharT* numberText(double value);
    [[nodiscard]] const CharT* give(std::wstring_view text) {
        return made(_texts).text.template give<CharT>(text, _book.utf8());
    }
    /// The formula behind which the tokens stand that this one uses; null when there is none.
    [[nodiscard]] const FormulaCell* anchorOf(const FormulaCell& cell) const;
    /// Before the cell goes: a formula whose tokens others share hands them on.
    void handOnShared(CellPlace at);

    /// A row in default form but for its height, which is set by hand, and state.
    Row& setRowTwips(std::uint16_t rw, std::uint16_t miyRw, bool hidden);
    void mergeBlock(const biff::CellRange& block);
    // sheet_lines.cpp
    void moveLines(const biff::MovedLines& moved, bool updateNames);
    void moveMerges(const biff::MovedLines& moved);
    void pushRows(const biff::MovedLines& moved);
    void closeRows(const biff::MovedLines& moved);

    [[nodiscard]] int widthPixels(std::uint16_t col) const;
    /// As they are shown: 0 when hidden.
    [[nodiscard]] int shownColumnPixels(std::uint16_t col) const;
    [[nodiscard]] int shownRowPixels(std::uint16_t row) const;
    /// The same as a record has it, 1/256 character.
    [[nodiscard]] std::uint16_t widthUnits(std::uint16_t col) const;
    [[nodiscard]] std::uint16_t defaultWidthUnits() const;
    void setColumns(std::uint16_t first, std::uint16_t last, std::uint16_t coldx, const Format* format, bool hidden);
    class DrawingSurroundings;
    void requireWorksheet() const;
    void copyDrawing(const SheetImplT& source);
    /// After rows, or columns, were inserted before `first`, or removed from it on with a negative difference.
    void moveComments(bool rows, int first, int difference);
    void placeOnSheet(int pictureId, const drawing::PixelPlace& at, int placement);

    /// Characters that the cells of a column need, -1.0 when none has a text.
    [[nodiscard]] double fittingWidth(std::uint16_t col, std::uint32_t rowFirst, std::uint32_t rowEnd);

    BookContext<CharT>& _book;
    const wchar_t* _name = L"";
    biff::SheetContent _content;
    /// What operations give out, and what they work with; most sheets of a large book are never asked.
    struct Texts {
        TextHolder text, name;
    };
    struct FormulaDesk {
        formula::FormulaText text;
        formula::FormulaTokens tokens;
    };
    template <class Part>
    static Part& made(std::unique_ptr<Part>& part) {
        if (part == nullptr) part = std::make_unique<Part>();
        return *part;
    }
    std::unique_ptr<Texts> _texts;
    std::unique_ptr<FormulaDesk> _formulaDesk;
};

extern template class SheetImplT<char>;
extern template class SheetImplT<wchar_t>;

}  // namespace vellum
