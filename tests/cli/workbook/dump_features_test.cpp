// The line of a sheet's features: values where the engine answers, null where it fails.
#include "cli/dump/dump_features.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/absent_book.h"
#include "tests/support/absent_sheet.h"

namespace cli {
namespace {

/// Has some features; the others fail.
struct FakeSheet final : vellum::AbsentSheet {
    explicit FakeSheet(vellum::LastError& error) : last(error) {}
    vellum::LastError& last;

    vellum::LastError& lastError() noexcept override { return last; }
    const char* sheetName() override {
        last.clear();
        return "S";
    }
    int visibilityState() override { return 2; }
    int mergeTotal() override { return 2; }
    bool mergeByIndex(int index, int* a, int* b, int* c, int* d) override {
        *a = index, *b = 5, *c = 1, *d = 3;
        return true;
    }
    int hyperlinkTotal() override { return 2; }
    const char* hyperlinkAt(int index, int* a, int* b, int* c, int* d) override {
        *a = 0, *b = 1, *c = 2, *d = 3;
        if (index == 1) last.set("index is out of range");
        return index == 0 ? "a\"b" : nullptr;
    }
    bool splitPosition(int* row, int* col) override {
        *row = 3, *col = 0;
        return true;
    }
    int rowBreakTotal() override { return 2; }
    int rowBreakAt(int index) override { return index + 7; }
    bool printFitPages(int* width, int*) override { return *width = 9, false; }
    double marginLeft() override { return 0.5; }
    const char* headerText() override {
        last.set("warning: some characters have not been converted properly");
        return "&P?";
    }
    bool centersHorizontally() override { return true; }
    bool centersVertically() override { return false; }
    int lastRow() override { return 4; }
    double rowHeight(int row) override { return row == 1 || row == 2 ? 20 : 12.75; }
    bool isRowHidden(int row) override { return row == 9; }
    double columnWidth(int col) override { return col == 0 ? 3.5 : 8.43; }
    bool isColumnHidden(int) override { return false; }
};

struct FakeBook final : vellum::AbsentBook {
    FakeSheet sheet{_lastError};
    int binaryVersion() override { return 0x600; }
};

TEST(DumpFeatures, ValuesAndNulls) {
    FakeBook book;
    std::ostringstream out;
    {
        JsonLines lines(out);
        dumpFeatures(book, book.sheet, lines);
    }
    EXPECT_EQ(out.str(),
              R"({"features":{"state":2,"merges":[[0,1,5,3],[1,1,5,3]],)"
              R"("links":[{"area":[0,2,1,3],"target":"a\"b"},null],"split":[3,0],"rowBreaks":[7,8],)"
              R"("columnBreaks":null,"landscape":null,"paper":null,"printZoom":null,"fit":null,"margins":null,)"
              R"("header":"&P?","footer":null,"centered":[true,false],"printsGridlines":null,"printsHeadings":null,)"
              R"("printArea":null,"repeatRows":null,"repeatColumns":null,"tables":null,"filter":null,)"
              R"("validations":null,"protected":null,"gridlines":null,"zoom":null,"rightToLeft":null,"topLeft":null,)"
              R"("summaryBelow":null,"summaryRight":null,"rows":[[1,2,20,false],[9,9,12.75,true]],)"
              R"("columns":[[0,0,3.5,false]]}})"
              "\n");
}

}  // namespace
}  // namespace cli
