#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "host/sources/table_ops.h"
#include "tests/support/absent_sheet.h"

namespace quillet {
namespace {

/// A sheet that answers what the test put into it.
struct FakeSheet final : vellum::AbsentSheet {
    vellum::LastError last;
    int bounds[4] = {0, 0, 0, 0};      // first row, end row, first column, end column
    int nameBounds[4] = {1, 2, 3, 4};  // first row, last row, first column, last column
    int kind = 0;
    bool date = false;
    const char* text = nullptr;
    const char* written = nullptr;

    vellum::LastError& lastError() noexcept override { return last; }
    int firstRow() override { return bounds[0]; }
    int lastRow() override { return bounds[1]; }
    int firstCol() override { return bounds[2]; }
    int lastCol() override { return bounds[3]; }
    int cellType(int, int) override { return kind; }
    bool isDate(int, int) override { return date; }
    const char* readString(int, int, Format**) override { return text; }
    bool writeString(int, int, const char* value, Format* format, int stringKind) override {
        written = value;
        return !format && stringKind == 2;
    }
    bool writeBool(int, int, bool value, Format*, int errorCode) override { return value && errorCode == 255; }
    const char* namedRange(int index, int* r1, int* r2, int* c1, int* c2, int* scope, bool* hidden) override {
        if (index != 0 || *scope != -1 || *hidden) return nullptr;
        int* const out[] = {r1, r2, c1, c2};
        for (int i = 0; i < 4; ++i) *out[i] = nameBounds[i];
        return "name";
    }
};

// The drivers hold a sheet by the address of its interface.
Sheet* handle(FakeSheet& sheet) {
    return static_cast<vellum::ISheetT<char>*>(&sheet);
}

TEST(WorkbookOps, BoundsAreOfTheLastCellAndAnEmptySheetHasNone) {
    const struct {
        int engine[4];
        int ops[4];  // first row, last row, first column, last column
    } cases[] = {
        {{0, 0, 0, 0}, {notGiven, 0, notGiven, 0}},
        {{0, 1, 0, 1}, {0, 0, 0, 0}},
        {{3, 9, 2, 5}, {3, 8, 2, 4}},
    };
    for (const auto& c : cases) {
        FakeSheet sheet;
        std::copy(std::begin(c.engine), std::end(c.engine), sheet.bounds);
        EXPECT_EQ(workbookTableOps.firstRow(handle(sheet)), c.ops[0]);
        EXPECT_EQ(workbookTableOps.lastRow(handle(sheet)), c.ops[1]);
        EXPECT_EQ(workbookTableOps.firstCol(handle(sheet)), c.ops[2]);
        EXPECT_EQ(workbookTableOps.lastCol(handle(sheet)), c.ops[3]);
    }
}

TEST(WorkbookOps, BlankIsEmptyAndADateCellIsANumber) {
    const std::pair<int, int> kinds[] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 0}, {5, 5}, {6, 1}};
    FakeSheet sheet;
    for (const auto& [engine, ops] : kinds) {
        sheet.kind = engine;
        EXPECT_EQ(workbookTableOps.cellKind(handle(sheet), 0, 0), ops) << engine;
        EXPECT_EQ(workbookTableOps.cellIsDate(handle(sheet), 0, 0), engine == 6) << engine;
    }
    sheet.kind = 1;
    sheet.date = true;
    EXPECT_TRUE(workbookTableOps.cellIsDate(handle(sheet), 0, 0));
}

TEST(WorkbookOps, NamesOfWholeRowsAndColumns) {
    FakeSheet sheet;
    int r1, r2, c1, c2;
    EXPECT_STREQ(workbookTableOps.nameRange(handle(sheet), 0, &r1, &r2, &c1, &c2), "name");
    EXPECT_EQ(std::tuple(r1, r2, c1, c2), std::tuple(1, 2, 3, 4));
    std::fill(std::begin(sheet.nameBounds), std::end(sheet.nameBounds), -1);
    workbookTableOps.nameRange(handle(sheet), 0, &r1, &r2, &c1, &c2);
    EXPECT_EQ(std::tuple(r1, r2, c1, c2), std::tuple(0, 1048575, 0, 16383));
    EXPECT_EQ(workbookTableOps.nameRange(handle(sheet), 1, &r1, &r2, &c1, &c2), nullptr);
}

TEST(WorkbookOps, TextsAsNumbersAndBooleans) {
    const struct {
        const char* text;
        double real;
        int boolean;
    } cases[] = {{nullptr, 0, 0}, {"", 0, 0}, {"1.5x", 1.5, 0}, {"TRUE", 0, 1}, {"true ", 0, 0}, {"1", 1, 0}};
    FakeSheet sheet;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text ? c.text : "null");
        sheet.text = c.text;
        EXPECT_EQ(workbookTableOps.textToReal(handle(sheet), 0, 0), c.real);
        EXPECT_EQ(workbookTableOps.textToBool(handle(sheet), 0, 0), c.boolean);
    }
    EXPECT_EQ(workbookTableOps.writeText(handle(sheet), 0, 0, nullptr, nullptr), 1);
    EXPECT_STREQ(sheet.written, "");
    EXPECT_EQ(workbookTableOps.writeBool(handle(sheet), 0, 0, 7, nullptr), 1);
    EXPECT_EQ(workbookTableOps.writeBlank(handle(sheet), 0, 0, nullptr), 0);  // a failure of the engine
}

}  // namespace
}  // namespace quillet
