// Features of sheets for other programs to look at.
//   sheet_features make OUT          a new .xls workbook with every setting
//   sheet_features move IN OUT OPERATION FIRST LAST
//     rows or columns of every worksheet inserted or removed: insertRows, removeRows, insertColumns, removeColumns
// Sheets that refuse are told on standard error with the engine's text and left as they are.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

using cli::BookPtr;

class Maker {
public:
    explicit Maker(Book& book) : _book(book) {}

    Sheet& sheet(const char* name) {
        Sheet* const sheet = _book.addSheet(name);
        require(sheet != nullptr);
        for (int row = 0; row < 30; ++row) {
            for (int col = 0; col < 8; ++col) require(sheet->writeNumber(row, col, row * 100 + col));
        }
        return *sheet;
    }
    void require(bool done) {
        if (!done) throw std::runtime_error(_book.errorMessage());
    }

private:
    Book& _book;
};

void page(Maker& maker) {
    Sheet& s = maker.sheet("Page");
    maker.require(s.setLandscape(true) && s.setPaperCode(9) && s.setPrintZoomPercent(55));
    maker.require(s.setHeaderText("&LLeft&CPage &P&RRight", 0.25) && s.setFooterText("&CFoot \xC3\xA9", 0.375));
    maker.require(s.setMarginLeft(0.5) && s.setMarginRight(0.625) && s.setMarginTop(1.25) && s.setMarginBottom(1.5));
    maker.require(s.setCentersHorizontally(true) && s.setCentersVertically(true));
    maker.require(s.setPrintsGridlines(true) && s.setPrintsRowColHeadings(true));
    for (const int row : {20, 5, 11}) maker.require(s.setRowBreak(row, true));
    for (const int col : {4, 2}) maker.require(s.setColumnBreak(col, true));
    maker.require(s.setPrintAreaRange(0, 24, 0, 6) && s.setRepeatRows(0, 1) && s.setRepeatColumns(0, 2));
    Sheet& fit = maker.sheet("Fit");
    maker.require(fit.setPrintFitPages(2, 3));
}

void view(Maker& maker) {
    Sheet& both = maker.sheet("Both panes");
    maker.require(both.splitAt(3, 2) && both.setZoomPercent(75) && both.setTabRgbColor(255, 128, 0));
    Sheet& rows = maker.sheet("Rows frozen");
    maker.require(rows.splitAt(4, 0) && rows.setTabPaletteColor(12) && rows.setShowsGridlines(false));
    Sheet& columns = maker.sheet("Columns frozen");
    maker.require(columns.splitAt(0, 1) && columns.setRightToLeft(true));
    Sheet& groups = maker.sheet("Groups");
    maker.require(groups.groupRowRange(2, 8, false) && groups.groupRowRange(4, 6, true));
    maker.require(groups.groupColumnRange(1, 4, false) && groups.groupColumnRange(2, 3, true));
}

void content(Maker& maker) {
    Sheet& s = maker.sheet("Links");
    const char* const targets[] = {
        "http://example.org/a?b=c", "mailto:a@example.org", "Page!A1", "other.xls", "..\\up.xls",
        "http://example.org/x#part"};
    int row = 0;
    for (const char* const target : targets) maker.require(s.addHyperlink(target, row, row, 0, 0)), ++row;
    maker.require(s.addMerge(10, 12, 1, 3) && s.addMerge(14, 14, 0, 5));
    maker.require(s.addIgnoredErrorRange(0, 0, 5, 5, 4));
    Sheet& locked = maker.sheet("Protected");
    maker.require(locked.setProtected(true, "secret", 0x4400));
    Sheet& hidden = maker.sheet("Hidden");
    maker.require(hidden.setVisibilityState(1));
    Sheet& deep = maker.sheet("Very hidden");
    maker.require(deep.setVisibilityState(2));
}

bool move(Sheet& sheet, const char* operation, int first, int last) {
    if (std::strcmp(operation, "insertRows") == 0) return sheet.insertRows(first, last);
    if (std::strcmp(operation, "removeRows") == 0) return sheet.removeRows(first, last);
    if (std::strcmp(operation, "insertColumns") == 0) return sheet.insertColumns(first, last);
    if (std::strcmp(operation, "removeColumns") == 0) return sheet.removeColumns(first, last);
    throw std::runtime_error("no such operation");
}

void moveAll(Book& book, const char* operation, int first, int last) {
    for (int index = 0; index < book.sheetCount(); ++index) {
        if (book.sheetKindAt(index) != 0) continue;
        if (Sheet* const sheet = book.getSheet(index); sheet != nullptr && !move(*sheet, operation, first, last)) {
            std::fprintf(stderr, "%d: %s\n", index, book.errorMessage());
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const bool makes = argc == 3 && std::strcmp(argv[1], "make") == 0;
    const bool moves = argc == 7 && std::strcmp(argv[1], "move") == 0;
    if (!makes && !moves) {
        std::fputs("usage: sheet_features make OUT | move IN OUT OPERATION FIRST LAST\n", stderr);
        return 2;
    }
    try {
        const BookPtr book(vellum::vlCreateBook<char>());
        book->setLocale("UTF-8");
        Maker maker(*book);
        if (makes) {
            page(maker);
            view(maker);
            content(maker);
        } else {
            maker.require(book->loadFile(argv[2]));
            moveAll(*book, argv[4], std::atoi(argv[5]), std::atoi(argv[6]));
        }
        maker.require(book->saveFile(argv[makes ? 2 : 3]));
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
