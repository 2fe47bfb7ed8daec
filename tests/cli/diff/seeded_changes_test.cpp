// One change at a time, of every kind, in both formats: the comparison finds it, names it, and finds nothing else.
#include <gtest/gtest.h>

#include <clocale>
#include <functional>
#include <sstream>

#include "cli/diff/diff.h"
#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

constexpr unsigned char dot[] = {0x89, 'P',  'N',  'G',  13,   10,  26,  10,   0,    0,    0,    13,   'I',  'H',
                                 'D',  'R',  0,    0,    0,    1,   0,   0,    0,    1,    8,    0,    0,    0,
                                 0,    0x3a, 0x7e, 0x9b, 0x55, 0,   0,   0,    10,   'I',  'D',  'A',  'T',  0x78,
                                 0x9c, 0x63, 0x60, 0,    0,    0,   2,   0,    1,    0x48, 0xaf, 0xa4, 0x71, 0,
                                 0,    0,    0,    'I',  'E',  'N', 'D', 0xae, 0x42, 0x60, 0x82};

/// A table of 40 rows with formulas beneath and beside it, and two other sheets.
void fill(Book& book) {
    auto* const sheet = book.addSheet("Data");
    const char* const heads[] = {"name", "count", "price", "sum"};
    for (int col = 0; col < 4; ++col) sheet->writeString(0, col, heads[col]);
    for (int row = 1; row <= 40; ++row) {
        const std::string line = std::to_string(row + 1);
        sheet->writeString(row, 0, ("item " + line).c_str());
        sheet->writeNumber(row, 1, row * 3 % 17);
        sheet->writeNumber(row, 2, row + 0.25);
        sheet->writeFormulaNumber(row, 3, ("B" + line + "*C" + line).c_str(), row);
    }
    sheet->writeFormulaNumber(42, 1, "SUM(B2:B41)", 300);
    sheet->writeBool(43, 0, true);
    sheet->writeError(43, 1, vellum::errorNotAvailable);
    sheet->addMerge(50, 51, 0, 1);
    sheet->setNamedRangeByName("Prices", 1, 40, 2, 2);
    auto* const other = book.addSheet("Other");
    other->writeFormulaNumber(0, 0, "Data!D41+1", 5);
    for (int row = 1; row < 9; ++row) other->writeNumber(row, 0, row * 100);
    book.addSheet("Last")->writeString(0, 0, "end");
}

std::string fileOf(const std::string& name, bool package) {
    return testing::TempDir() + "diff_" + name + (package ? ".xlsx" : ".xls");
}

BookPtr loaded(const std::string& path) {
    std::string error;
    BookPtr book = loadBook(path, error);
    EXPECT_TRUE(book) << error;
    return book;
}

struct Change {
    const char* told;  // the whole output
    std::function<void(Book&, Sheet&)> apply;
    enum Where { both, packagesOnly, binaryOnly } where = both;
};

const std::vector<Change>& changes() {
    static const std::vector<Change> list = {
        {"Data!B5  1 number changed: 12 -> 99\n", [](Book&, Sheet& s) { s.writeNumber(4, 1, 99); }},
        {"Data!C3  1 number changed: 2.25 -> 2.25000001\n", [](Book&, Sheet& s) { s.writeNumber(2, 2, 2.25000001); }},
        {"Data!B2:B5  4 numbers changed, first 3 -> 50\n",
         [](Book&, Sheet& s) {
             for (int row = 1; row < 5; ++row) s.writeNumber(row, 1, 50);
         }},
        {"Data!A4  1 text changed: \"item 4\" -> \"Item 4\"\n", [](Book&, Sheet& s) { s.writeString(3, 0, "Item 4"); }},
        {"Data!A4  1 kind of value changed: text \"item 4\" -> number 4\n",
         [](Book&, Sheet& s) { s.writeNumber(3, 0, 4); }},
        {"Data!B4  1 kind of value changed: number 9 -> text \"9\"\n",
         [](Book&, Sheet& s) { s.writeString(3, 1, "9"); }},
        {"Data!A44  1 boolean changed: TRUE -> FALSE\n", [](Book&, Sheet& s) { s.writeBool(43, 0, false); }},
        {"Data!B44  1 error changed: #N/A -> #REF!\n",
         [](Book&, Sheet& s) { s.writeError(43, 1, vellum::errorReference); }},
        {"Data!C44  1 cell added: 7\n", [](Book&, Sheet& s) { s.writeNumber(43, 2, 7); }},
        {"Data!C46  1 cell added: =1+1\n", [](Book&, Sheet& s) { s.writeFormulaNumber(45, 2, "1+1", 2); }},
        {"Data!A44  1 cell removed: TRUE\n", [](Book&, Sheet& s) { s.clearRange(43, 43, 0, 0); }},
        {"Data!D5  1 formula changed: =B5*C5 -> =B5+C5\n",
         [](Book&, Sheet& s) { s.writeFormulaNumber(4, 3, "B5+C5", 4); }},
        {"Data!D5  1 formula changed: =B5*C5 -> =B6*C5\n",
         [](Book&, Sheet& s) { s.writeFormulaNumber(4, 3, "B6*C5", 4); }},
        {"Data!D5  1 number changed: 4 -> 8\n", [](Book&, Sheet& s) { s.writeFormulaNumber(4, 3, "B5*C5", 8); }},
        {"Data!D5  1 formula changed: =B5*C5 -> 4\n", [](Book&, Sheet& s) { s.writeNumber(4, 3, 4); }},
        {"Data!C2  1 number format changed: General -> 0.00%\n",
         [](Book& b, Sheet& s) {
             auto* const format = b.newFormat();
             format->setNumFormat(10);
             s.setCellFormatAt(1, 2, format);
         }},
        {"Data!C2  1 number format changed: General -> yyyy\"!\"\n",
         [](Book& b, Sheet& s) {
             auto* const format = b.newFormat();
             format->setNumFormat(b.newCustomNumFormat("yyyy\"!\""));
             s.setCellFormatAt(1, 2, format);
         }},
        {"Data: merges changed: [[50,0,51,1]] -> []\n", [](Book&, Sheet& s) { s.removeMergeByIndex(0); }},
        {"Data: landscape changed: false -> true\n", [](Book&, Sheet& s) { s.setLandscape(true); }},
        {"Data: split changed: null -> [1,0]\n", [](Book&, Sheet& s) { s.splitAt(1, 0); }},
        {"Data: protected changed: false -> true\n", [](Book&, Sheet& s) { s.setProtected(true); }},
        {"Data: zoom changed: 100 -> 120\n", [](Book&, Sheet& s) { s.setZoomPercent(120); }},
        {"Data: gridlines changed: true -> false\n", [](Book&, Sheet& s) { s.setShowsGridlines(false); }},
        {"Data: rowBreaks changed: [] -> [7]\n", [](Book&, Sheet& s) { s.setRowBreak(7); }},
        {"Data: header changed: \"\" -> \"&LTop\"\n",
         [](Book&, Sheet& s) { s.setHeaderText("&LTop", s.headerMargin()); }},
        {"Data: links changed: [] -> [{\"area\":[0,0,0,0],\"target\":\"http://x.y/\"}]\n",
         [](Book&, Sheet& s) { s.addHyperlink("http://x.y/", 0, 0, 0, 0); }},
        {"Data: margins changed: ", [](Book&, Sheet& s) { s.setMarginLeft(1.25); }},
        {"Data: paper changed: ", [](Book&, Sheet& s) { s.setPaperCode(8); }},
        {"name Data!Print_Area added: =Data!$A$1:$D$10\nData: printArea changed: null -> [0,0,9,3]\n",
         [](Book&, Sheet& s) { s.setPrintAreaRange(0, 9, 0, 3); }, Change::binaryOnly},
        {"name Data!_xlnm.Print_Area added: =Data!$A$1:$D$10\nData: printArea changed: null -> [0,0,9,3]\n",
         [](Book&, Sheet& s) { s.setPrintAreaRange(0, 9, 0, 3); }, Change::packagesOnly},
        {"name Data!_xlnm.Print_Titles added: =Data!$1:$2\nData: repeatRows changed: null -> [0,1]\n",
         [](Book&, Sheet& s) { s.setRepeatRows(0, 1); }, Change::packagesOnly},
        {"Data: rightToLeft changed: false -> true\n", [](Book&, Sheet& s) { s.setRightToLeft(true); }},
        {"Data: rows changed: [] -> [[6,6,30,false]]\n", [](Book&, Sheet& s) { s.setRow(6, 30); }},
        {"Data: rows changed: [] -> [[200,200,30,false]]\n", [](Book&, Sheet& s) { s.setRow(200, 30); }},
        {"Data: rows changed: [] -> [[6,6,", [](Book&, Sheet& s) { s.setRowHidden(6, true); }},
        {"Data: columns changed: [] -> [[1,1,20", [](Book&, Sheet& s) { s.setColumn(1, 1, 20); }},
        {"Last: state changed: 0 -> 1\n", [](Book& b, Sheet&) { b.getSheet(2)->setVisibilityState(1); }},
        {"name More added: =Data!$A$1\n", [](Book&, Sheet& s) { s.setNamedRangeByName("More", 0, 0, 0, 0); }},
        {"name Prices removed: =Data!$C$2:$C$41\n", [](Book&, Sheet& s) { s.removeNamedRange("Prices"); },
         Change::packagesOnly},
        // Its place stays, for the formulas that count through it.
        {"name Prices removed: =Data!$C$2:$C$41\nname _gone1 added: =#REF! hidden\n",
         [](Book&, Sheet& s) { s.removeNamedRange("Prices"); }, Change::binaryOnly},
        {"name Prices changed: =Data!$C$2:$C$41 -> =Data!$C$2:$C$40\n",
         [](Book&, Sheet& s) { s.setNamedRangeByName("Prices", 1, 39, 2, 2); }},
        {"dates from changed: 1900 -> 1904\n", [](Book& b, Sheet&) { b.setDate1904(true); }},
        {"active sheet changed: 1 -> 2\n", [](Book& b, Sheet&) { b.setActiveSheetIndex(1); }},
        {"New: sheet added\n", [](Book& b, Sheet&) { b.addSheet("New"); }},
        {"Last: sheet removed\n", [](Book& b, Sheet&) { b.removeSheet(2); }},
        {"Tail: sheet renamed: Last -> Tail\n", [](Book& b, Sheet&) { b.getSheet(2)->setSheetName("Tail"); }},
        {"Last: sheet moved: 3 -> 1\n",
         [](Book& b, Sheet&) {
             b.moveSheet(2, 0);
             b.setActiveSheetIndex(0);
         }},
        {"Data: comment B2 added: \"look\" by \"me\"\n",
         [](Book&, Sheet& s) { s.writeComment(1, 1, "look", "me", 100, 50); }, Change::binaryOnly},
        {"Data: picture F6 added: \"png\"",
         [](Book& b, Sheet& s) { s.placePicture(5, 5, b.addPictureData(dot, sizeof dot)); }},
    };
    return list;
}

class SeededChanges : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }
    /// Saves the workbook, changes it, and compares both.
    std::string told(const std::function<void(Book&, Sheet&)>& apply, int status = 1, bool all = false) {
        const bool package = GetParam();
        const std::string before = fileOf("before", package), after = fileOf("after", package);
        {
            const BookPtr book(package ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
            book->setLocale("UTF-8");
            fill(*book);
            EXPECT_TRUE(book->saveFile(before.c_str())) << book->errorMessage();
        }
        const BookPtr book = loaded(before);
        apply(*book, *book->getSheet(0));
        EXPECT_TRUE(book->saveFile(after.c_str())) << book->errorMessage();
        std::ostringstream out, errors;
        EXPECT_EQ(diff({before, after, "", false, false, all}, out, errors), status) << errors.str();
        return out.str();
    }
};
INSTANTIATE_TEST_SUITE_P(BothFormats, SeededChanges, testing::Bool());

TEST_P(SeededChanges, EachIsFoundAndNamed) {
    for (const Change& change : changes()) {
        if ((change.where == Change::packagesOnly && !GetParam()) || (change.where == Change::binaryOnly && GetParam()))
            continue;
        const std::string found = told(change.apply);
        const std::string_view expected = change.told;
        EXPECT_EQ(expected.ends_with('\n') ? found : found.substr(0, expected.size()), expected);
    }
    EXPECT_EQ(told([](Book&, Sheet&) {}, 0), "");
    EXPECT_EQ(told([](Book&, Sheet&) {}, 0, true), "");
}

TEST_P(SeededChanges, LooksOfCellsAreToldWithAll) {
    const struct {
        const char* told;
        int row, col;
        std::function<void(Book&, vellum::IFormatT<char>&)> apply;
    } cases[] = {
        {"Data!C2  1 look changed: bold 0 -> bold 1\n", 1, 2,
         [](Book& b, auto& format) {
             auto* const font = b.newFont(format.font());
             font->setBold(true);
             format.setFont(font);
         }},
        {"Data!C2  1 look changed: left border 0 -> left border 1\n", 1, 2,
         [](Book&, auto& format) { format.setBorderLeft(1); }},
        {"Data!C2  1 look changed: fill 0", 1, 2, [](Book&, auto& format) { format.setFillPattern(1); }},
        {"Data!C2  1 look changed: wrapped 0 -> wrapped 1\n", 1, 2,
         [](Book&, auto& format) { format.setWrapsText(true); }},
        {"Data!C2  1 look changed: locked 1 -> locked 0\n", 1, 2, [](Book&, auto& format) { format.setLocked(false); }},
        // A cell without content.
        {"Data!F3  1 look changed: rotation 0 -> rotation 45\n", 2, 5,
         [](Book&, auto& format) { format.setRotation(45); }},
    };
    for (const auto& c : cases) {
        const auto apply = [&](Book& book, Sheet& sheet) {
            auto* const format = book.newFormat(sheet.cellFormatAt(c.row, c.col));
            c.apply(book, *format);
            sheet.setCellFormatAt(c.row, c.col, format);
        };
        const std::string found = told(apply, 1, true);
        const std::string_view expected = c.told;
        EXPECT_EQ(expected.ends_with('\n') ? found : found.substr(0, expected.size()), expected);
        EXPECT_EQ(told(apply, 0), "") << expected;
    }
}

TEST_P(SeededChanges, RowsAndColumnsThatComeTogetherAreNoNoise) {
    const std::string found = told([](Book& b, Sheet& s) {
        s.insertRows(10, 11);
        s.insertColumns(1, 1);
        for (int row = 1; row <= 42; ++row) {  // as a program that calculates would leave the texts
            if (row == 10 || row == 11) continue;
            const std::string line = std::to_string(row + 1);
            s.writeFormulaNumber(row, 4, ("C" + line + "*D" + line).c_str(), row < 10 ? row : row - 2);
        }
        s.writeFormulaNumber(44, 2, "SUM(C2:C43)", 300);
        b.getSheet(1)->writeFormulaNumber(0, 0, "Data!E43+1", 5);
        s.writeNumber(20, 2, 99);  // one change that is none of it
    });
    EXPECT_NE(found.find("Data: rows 11:12 inserted\nData: columns B:B inserted\nData!C21  1 number changed: "),
              std::string::npos)
        << found;
    EXPECT_EQ(found.find("formula"), std::string::npos) << found;
    EXPECT_EQ(found.find("cell"), std::string::npos) << found;
}

TEST_P(SeededChanges, RowsAndColumnsThatMoveAreNoNoise) {
    const auto insertRow = [](Book&, Sheet& s) {
        s.insertRows(10, 11);
        for (int row = 12; row <= 42; ++row) {  // as a program that calculates would leave the texts
            const std::string line = std::to_string(row + 1);
            if (row <= 42) s.writeFormulaNumber(row, 3, ("B" + line + "*C" + line).c_str(), row - 2);
        }
        s.writeFormulaNumber(44, 1, "SUM(B2:B43)", 300);
    };
    const std::string rows = told([&](Book& b, Sheet& s) {
        insertRow(b, s);
        b.getSheet(1)->writeFormulaNumber(0, 0, "Data!D43+1", 5);
    });
    EXPECT_NE(rows.find("Data: rows 11:12 inserted\n"), std::string::npos) << rows;
    EXPECT_EQ(rows.find("formula"), std::string::npos) << rows;
    EXPECT_EQ(rows.find("number"), std::string::npos) << rows;

    const std::string removed = told([](Book&, Sheet& s) { s.removeRows(45, 49); });
    EXPECT_EQ(removed.find('!'), std::string::npos) << removed;

    const std::string columns = told([](Book& b, Sheet& s) {
        s.insertColumns(1, 1);
        for (int row = 1; row <= 40; ++row) {
            const std::string line = std::to_string(row + 1);
            s.writeFormulaNumber(row, 4, ("C" + line + "*D" + line).c_str(), row);
        }
        s.writeFormulaNumber(42, 2, "SUM(C2:C41)", 300);
        b.getSheet(1)->writeFormulaNumber(0, 0, "Data!E41+1", 5);
    });
    EXPECT_NE(columns.find("Data: columns B:B inserted\n"), std::string::npos) << columns;
    EXPECT_EQ(columns.find("formula"), std::string::npos) << columns;
    EXPECT_EQ(columns.find("number"), std::string::npos) << columns;
}

}  // namespace
}  // namespace cli
