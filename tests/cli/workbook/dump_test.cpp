#include "cli/dump/dump.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "cli/workbook/resave.h"
#include "engine/api/enums.h"
#include "tests/support/absent_book.h"
#include "tests/support/absent_sheet.h"

namespace cli {
namespace {

struct Cell {
    int kind;
    double number = 0;
    const char* text = nullptr;
    bool formula = false;
};

/// A sheet that shows the cells of a map through a walk over all of them.
struct FakeSheet final : vellum::AbsentSheet {
    explicit FakeSheet(vellum::LastError& error) : last(error) {}
    vellum::LastError& last;
    std::map<std::pair<int, int>, Cell> cells;

    vellum::LastError& lastError() noexcept override { return last; }
    const char* sheetName() override { return "S"; }
    int firstRow() override { return 0; }
    int firstCol() override { return 0; }
    int lastRow() override { return cells.empty() ? 0 : cells.rbegin()->first.first + 1; }
    int lastCol() override { return 8; }
    const Cell* find(int row, int col) {
        const auto at = cells.find({row, col});
        return at == cells.end() ? nullptr : &at->second;
    }
    int cellType(int row, int col) override { return find(row, col) ? find(row, col)->kind : 0; }
    bool isFormulaCell(int row, int col) override { return find(row, col) && find(row, col)->formula; }
    double readNumber(int row, int col, Format**) override {
        last.clear();
        if (find(row, col)->text) last.set("this cell doesn't contain a number");
        return find(row, col)->number;
    }
    const char* readString(int row, int col, Format**) override {
        last.clear();
        if (!find(row, col)->text) last.set("Invalid UTF-16");
        return find(row, col)->text;
    }
    bool readBool(int row, int col, Format**) override { return find(row, col)->number != 0; }
    int readError(int row, int col, Format**) override { return static_cast<int>(find(row, col)->number); }
};

struct FakeBook final : vellum::AbsentBook {
    FakeSheet sheet{_lastError};
    int sheetCount() override { return 3; }
    const char* sheetNameAt(int index) override { return index == 0 ? "S \"1\"" : "C"; }
    int sheetKindAt(int index) override { return index; }
    vellum::ISheetT<char>* getSheet(int index) override { return index == 0 ? &sheet : nullptr; }
};

TEST(Dump, EveryKindOfCell) {
    FakeBook book;
    book.sheet.cells = {
        {{0, 0}, {vellum::cellNumber, 1.5}},
        {{0, 2}, {vellum::cellString, 0, "a\nb"}},
        {{1, 1}, {vellum::cellBoolean, 1}},
        {{2, 0}, {vellum::cellError, vellum::errorNotAvailable}},
        {{2, 1}, {vellum::cellError, vellum::errorName, nullptr, true}},
        {{2, 7}, {vellum::cellBlank}},
        {{4, 0}, {vellum::cellDate, 0, "2020-01-31"}},
        {{4, 1}, {vellum::cellNumber, 0, "no value", true}},
        {{4, 2}, {vellum::cellEmpty, 0, nullptr, true}},
        {{4, 3}, {vellum::cellString}},
        {{5, 5}, {vellum::cellNumber, 0}},
    };
    std::ostringstream out, errors;
    dumpBook(book, {}, out, errors);
    EXPECT_EQ(out.str(),
              R"({"sheet":{"index":0,"name":"S \"1\""}}
{"r":0,"c":0,"k":"n","v":1.5}
{"r":0,"c":2,"k":"s","v":"a\nb"}
{"r":1,"c":1,"k":"b","v":true}
{"r":2,"c":0,"k":"e","v":"#N/A"}
{"r":2,"c":1,"k":"e","v":"#NAME?","f":true}
{"r":2,"c":7,"k":"z"}
{"r":4,"c":0,"k":"d","v":"2020-01-31"}
{"r":4,"c":1,"k":"n","v":null,"f":true}
{"r":4,"c":2,"k":"z","f":true}
{"r":4,"c":3,"k":"s","v":null}
{"r":5,"c":5,"k":"n","v":0}
{"sheet":{"index":1,"name":"C","kind":"chart"}}
{"sheet":{"index":2,"name":"C","kind":"other"}}
)");
    EXPECT_EQ(errors.str(), "S!D5: Invalid UTF-16\n");
}

TEST(Dump, AFileThatDoesNotLoad) {
    std::ostringstream out, errors;
    EXPECT_EQ(dump(testing::TempDir() + "no such file.xls", {}, out, errors), 1);
    EXPECT_EQ(resave(testing::TempDir() + "no such file.xls", testing::TempDir() + "x.xls", errors), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(errors.str(), "");
}

}  // namespace
}  // namespace cli
