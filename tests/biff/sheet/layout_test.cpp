// Rows, columns, merged blocks, copies of cells and sheets, and formulas that share their tokens.
#include <chrono>

#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

TEST(SheetRows, HeightsAndStates) {
    NewSheet s;
    auto& sheet = *s.sheet;
    EXPECT_EQ(sheet.rowHeight(4), 12.75);
    EXPECT_EQ(sheet.rowHeightPixels(4), 17);
    auto* const format = s.book->newFormat(nullptr);
    EXPECT_TRUE(sheet.setRow(4, 410, format, true));
    EXPECT_EQ(sheet.rowHeight(4), 410.0);
    EXPECT_EQ(sheet.rowHeightPixels(4), 0);
    EXPECT_TRUE(sheet.isRowHidden(4));
    EXPECT_TRUE(sheet.setRowHidden(4, false));
    EXPECT_EQ(sheet.rowHeightPixels(4), 547);
    EXPECT_TRUE(sheet.setRowHidden(5, false));
    EXPECT_TRUE(sheet.setRowHidden(2, true));
    EXPECT_TRUE(sheet.isRowHidden(2));
    EXPECT_EQ(sheet.rowHeight(4), 410.0);
    const auto rows = only(savedRecords(*s.book), 520);
    ASSERT_EQ(rows.size(), 2U) << "showing a row that is shown makes no record";
    EXPECT_EQ(rows[0].body, hex("0400 0000 0000 0820 0000 0000 C001 1500"));
    EXPECT_EQ(rows[1].body, hex("0200 0000 0000 FF00 0000 0000 2001 0F00"));
}

TEST(SheetColumns, WidthsInCharactersAndPixels) {
    NewSheet s;
    auto& sheet = *s.sheet;
    EXPECT_EQ(sheet.columnWidth(0), 8.43);
    EXPECT_EQ(sheet.columnWidthPixels(0), 64);
    EXPECT_TRUE(sheet.setColumn(1, 1, 10));
    EXPECT_EQ(sheet.columnWidth(1), 10.0);
    EXPECT_EQ(sheet.columnWidthPixels(1), 75);
    EXPECT_TRUE(sheet.setColumnHidden(1, true));
    EXPECT_EQ(sheet.columnWidthPixels(1), 0);
    EXPECT_TRUE(sheet.isColumnHidden(1));
    EXPECT_EQ(sheet.columnWidth(1), 10.0);
    EXPECT_FALSE(sheet.setColumn(250, 256, 10));

    OneSheet wide({{153, hex("000A")}, {125, hex("0200 0300 0008 0F00 0000")}});
    EXPECT_EQ(wide.sheet->columnWidthPixels(0), 70) << "the sheet's own default width";
    EXPECT_EQ(wide.sheet->columnWidthPixels(3), 56);
    // What only hides, shows or fits to nothing leaves every width as it was: 2500 is no whole number of pixels.
    OneSheet odd({{153, hex("C509")}, {125, hex("0200 0200 C409 0F00 0000 0000")}});
    for (const int col : {1, 2}) {
        EXPECT_TRUE(odd.sheet->setColumnHidden(col, true));
        EXPECT_TRUE(odd.sheet->setColumn(col, col, -1));
    }
    EXPECT_TRUE(odd.sheet->setColumn(3, 3, 1e300)) << "as wide as a record can say";
    const auto columns = only(savedRecords(*odd.book), 125);
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[0].body, hex("0100 0100 C509 0F00 0200 0000"));
    EXPECT_EQ(columns[1].body, hex("0200 0200 C409 0F00 0200 0000"));
    EXPECT_EQ(columns[2].body, hex("0300 0300 FFFF 0F00 0200 0000"));
}

TEST(SheetColumns, NewWidthsCutOldRecords) {
    // Columns 2 to 9 on outline level 1 with format 16, 10 to 11 without.
    OneSheet one({{125, hex("0200 0900 0008 1000 0001 0000")}, {125, hex("0A00 0B00 0008 0F00 0000 0000")}});
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_TRUE(one.sheet->setColumn(8, 12, 10, nullptr, true));
    const auto columns = only(savedRecords(*one.book), 125);
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[0].body, hex("0200 0700 0008 1000 0001 0000"));
    EXPECT_EQ(columns[1].body, hex("0800 0900 B70A 1000 0301 0000"));
    EXPECT_EQ(columns[2].body, hex("0A00 0C00 B70A 0F00 0300 0000"));

    OneSheet within({{125, hex("0200 0900 0008 1000 0001 0000")}});
    EXPECT_TRUE(within.sheet->setColumn(4, 5, 10));
    const auto parts = only(savedRecords(*within.book), 125);
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(parts[0].body, hex("0200 0300 0008 1000 0001 0000"));
    EXPECT_EQ(parts[1].body, hex("0400 0500 B70A 1000 0201 0000"));
    EXPECT_EQ(parts[2].body, hex("0600 0900 0008 1000 0001 0000"));
}

TEST(SheetColumns, FitToWhatTheyHold) {
    NewSheet s;
    s.sheet->writeString(0, 0, "a text of some length that needs room");
    s.sheet->writeString(1, 0, "short");
    s.sheet->setColumn(1, 1, 20);
    EXPECT_TRUE(s.sheet->setColumn(0, 1, -1));
    EXPECT_GT(s.sheet->columnWidth(0), 20);
    EXPECT_LT(s.sheet->columnWidth(0), 60);
    EXPECT_EQ(s.sheet->columnWidth(1), 20.0) << "nothing in it";
    EXPECT_TRUE(s.sheet->autoFitColumns(0, 1, 0, 1));
    EXPECT_LT(s.sheet->columnWidth(0), 12);
    s.sheet->addMerge(0, 0, 0, 5);
    s.sheet->writeString(6, 0, "a text in a lower block");
    s.sheet->addMerge(5, 9, 0, 1);
    EXPECT_TRUE(s.sheet->autoFitColumns(0, 0, 0, 20));
    EXPECT_LT(s.sheet->columnWidth(0), 12) << "cells of blocks are passed over";
}

TEST(SheetLayout, MergedBlocks) {
    NewSheet s;
    auto& sheet = *s.sheet;
    auto* const format = s.book->newFormat(nullptr);
    sheet.writeNumber(2, 1, 5, format);
    sheet.writeNumber(3, 2, 6);
    EXPECT_TRUE(sheet.addMerge(2, 4, 1, 2));
    int a = 0, b = 0, c = 0, d = 0;
    EXPECT_TRUE(sheet.mergeAt(4, 2, &a, &b, &c, &d));
    EXPECT_EQ((std::vector{a, b, c, d}), (std::vector{2, 4, 1, 2}));
    EXPECT_EQ(sheet.readNumber(3, 2), 6);
    for (int row = 2; row <= 4; ++row) {
        EXPECT_EQ(sheet.cellFormatAt(row, 1), format);
        EXPECT_EQ(sheet.cellFormatAt(row, 2), format);
    }
    EXPECT_EQ(sheet.lastRow(), 5);
    for (int i = 0; i < 1027; ++i) EXPECT_TRUE(sheet.addMerge(100 + i, 100 + i, 0, 1));
    EXPECT_TRUE(sheet.clearRange(100, 100, 0, 5));
    EXPECT_EQ(sheet.mergeTotal(), 1027);
    const auto records = only(savedRecords(*s.book), 229);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].body.size(), 2U + 8 * 1026);
    EXPECT_TRUE(sheet.removeMergeAt(2, 1));
    EXPECT_TRUE(sheet.removeMergeByIndex(0));
    EXPECT_TRUE(sheet.mergeByIndex(0, &a, &b, &c, &d));
    EXPECT_EQ(a, 102);
}

TEST(SheetLayout, CopiesOfCells) {
    OneSheet one({{638, hex("0000 0000 0F00 1A000000")},
                  {516, hex("0000 0100 1000 0200 00 6162")},
                  {517, hex("0000 0200 0F00 2A 01")},
                  {6, hex("0000 0300 0F00 000000000000F83F 0000 00000000 0300 1E0700")},
                  {513, hex("0000 0400 0F00")}});
    auto& sheet = *one.sheet;
    for (int col = 0; col < 5; ++col) EXPECT_TRUE(sheet.copyCell(0, col, 9, 8 - col)) << col;
    EXPECT_EQ(sheet.readNumber(9, 8), 6);
    EXPECT_STREQ(sheet.readString(9, 7), "ab");
    EXPECT_EQ(sheet.readError(9, 6), 42);
    EXPECT_TRUE(sheet.isFormulaCell(9, 5));
    EXPECT_EQ(sheet.cellType(9, 4), cellBlank);
    EXPECT_EQ(only(savedRecords(*one.book), 6).at(1).body,
              hex("0900 0500 0F00 000000000000F83F 0000 00000000 0300 1E0700"));
}

const Record sharedTokens{1212, hex("0100 0400 00 00 00 04 0300 1E0700")};
const Record arrayTokens{545, hex("0100 0400 00 00 0000 00000000 0300 1E0700")};
const Record tableRefs{566, hex("0100 0400 00 00 0000 0000 0000 0000 0000")};

// Rows 1 to 4 of column 0 use what stands behind the formula of row 1.
std::vector<Record> sharedBlock(const Record& behind = sharedTokens) {
    std::vector<Record> records;
    for (int row = 1; row <= 4; ++row) {
        Bytes body = hex("0000 0000 0F00 000000000000F83F 0800 00000000 0500 01 0100 0000");
        body[0] = static_cast<std::byte>(row);
        if (behind.id == tableRefs.id) body[22] = std::byte{2};
        records.push_back({6, body});
        if (row == 1) records.push_back(behind);
    }
    return records;
}

TEST(SheetLayout, SharedTokensAreHandedOn) {
    const struct {
        const char* what;
        void (*change)(ISheetT<char>&);
        int anchor;  // row behind whose formula the tokens stand then; 0: nowhere
        bool copies = false;
    } cases[] = {
        {"a member is overwritten", [](auto& s) { s.writeNumber(2, 0, 1); }, 1},
        {"the first is", [](auto& s) { s.writeNumber(1, 0, 1); }, 2},
        {"two are", [](auto& s) { s.writeNumber(1, 0, 1), s.writeString(2, 0, "a"); }, 3},
        {"three are cleared", [](auto& s) { s.clearRange(0, 3, 0, 0); }, 4},
        {"all are", [](auto& s) { s.clearRange(0, 9, 0, 0); }, 0},
        {"the first is copied onto itself", [](auto& s) { s.copyCell(1, 0, 1, 0); }, 1},
        {"a copy far away is the last user", [](auto& s) { s.copyCell(2, 0, 900, 7), s.clearRange(0, 9, 0, 0); }, 132,
         true},
        {"a copy in the place of the first is the last user",
         [](auto& s) { s.copyCell(2, 0, 1, 0), s.clearRange(2, 9, 0, 0); }, 1, true},
    };
    for (const Record& behind : {sharedTokens, arrayTokens, tableRefs}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << behind.id << ": " << c.what);
            OneSheet one(sharedBlock(behind));
            c.change(*one.sheet);
            const auto out = savedRecords(*one.book);
            const auto shared = std::ranges::find(out, behind.id, &Record::id);
            // A copy of a shared formula has tokens of its own; one of an array or a table goes on naming it.
            if (c.anchor == 0 || (c.copies && behind.id == sharedTokens.id)) {
                EXPECT_EQ(shared, out.end());
                continue;
            }
            ASSERT_NE(shared, out.end());
            EXPECT_EQ(shared->body, behind.body);
            EXPECT_EQ(std::to_integer<int>(shared[-1].body[0]), c.anchor);
            for (const Record& formula : only(out, 6)) EXPECT_EQ(std::to_integer<int>(formula.body[23]), c.anchor);
            EXPECT_EQ(only(out, behind.id).size(), 1U);
        }
    }
}

// Each member that is overwritten has the next one take the tokens over.
TEST(SheetLayout, ALongColumnOfSharedFormulasIsOverwrittenInTime) {
    constexpr int rows = 20000;
    std::vector<Record> records;
    for (int row = 0; row < rows; ++row) {
        Bytes body = hex("0000 0000 0F00 000000000000FFFF 0800 00000000 0500 01 0000 0000");
        storeLe(body.data(), static_cast<std::uint16_t>(row));
        records.push_back({6, body});
        if (row == 0) records.push_back({1212, hex("0000 FFFF 00 00 00 04 0300 1E0700")});
        if (row == 0) records.push_back({519, hex("0300 00 616263")});
    }
    OneSheet one(records);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_STREQ(one.sheet->readString(rows - 1, 0), "abc") << "the text of the first";
    const auto start = std::chrono::steady_clock::now();
    for (int row = 0; row < rows - 1; ++row) {
        one.sheet->writeNumber(row, 0, row);
        one.sheet->readString(rows - 1, 0);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5))
        << "some ms, minutes when each asks all";
    EXPECT_EQ(only(savedRecords(*one.book), 1212).size(), 1U);
}

TEST(SheetLayout, CopiesOfSheets) {
    auto records = sharedBlock();
    records.push_back({516, hex("0600 0000 1000 0200 00 6162")});
    records.push_back({520, hex("0600 0000 0100 2C01 0000 0000 C001 0010")});  // format 0, a thick border
    records.push_back({125, hex("0200 0900 0008 1000 0001 0000")});
    records.push_back({229, hex("0100 0100 0200 0100 0200")});
    records.push_back({20, hex("0100 00 61")});
    records.push_back({236, Bytes(30)});
    records.push_back({574, hex("B606 0700 0300 4000 0000 0000 0000 00000000")});
    OneSheet one(records);
    auto* const text = one.book->newFont(nullptr);
    auto* const format = one.book->newFormat(nullptr);
    format->setFont(text);
    format->setNumFormat(one.book->newCustomNumFormat("0.0\"x\""));
    one.sheet->writeString(7, 0, "shared", format);

    auto* const twin = one.book->addSheet("Twin", one.sheet);
    ASSERT_NE(twin, nullptr) << one.book->errorMessage();
    twin->writeNumber(1, 0, 1);  // the twin's shared block is its own
    EXPECT_EQ(twin->mergeTotal(), 1);
    EXPECT_EQ(twin->rowHeight(6), 15.0);
    EXPECT_EQ(twin->cellFormatAt(7, 0), format);
    const auto out = savedRecords(*one.book, 1);
    EXPECT_EQ(std::to_integer<int>(only(out, 6).at(0).body[23]), 2);
    EXPECT_EQ(std::to_integer<int>(only(savedRecords(*one.book), 6).at(0).body[23]), 1);
    EXPECT_EQ(only(out, 20).size(), 1U);
    EXPECT_TRUE(only(out, 236).empty()) << "shapes have numbers that are unique in the book";
    EXPECT_EQ(only(out, 574).at(0).body, hex("B600 0700 0300 4000 0000 0000 0000 00000000"));

    const Book other = newBook();
    auto* const guest = other->addSheet("Guest", one.sheet);
    ASSERT_NE(guest, nullptr) << other->errorMessage();
    EXPECT_STREQ(guest->readString(7, 0), "shared");
    EXPECT_STREQ(guest->readString(6, 0), "ab");
    ASSERT_NE(guest->cellFormatAt(7, 0), nullptr);
    EXPECT_STREQ(other->customNumFormatText(guest->cellFormatAt(7, 0)->numFormat()), "0.0\"x\"");
    EXPECT_EQ(guest->readNumber(2, 0), 1.5);
    EXPECT_FALSE(guest->isFormulaCell(2, 0)) << "its tokens would name things of the other book";
    const auto rows = only(savedRecords(*other), 520);
    const auto row = std::ranges::find(rows, std::byte{6}, [](const Record& r) { return r.body[0]; });
    ASSERT_NE(row, rows.end());
    const auto ixfe = loadLe<std::uint16_t>(&row->body[14]);
    EXPECT_EQ(ixfe >> 12, 1);
    EXPECT_STREQ(other->customNumFormatText(other->formatAt(ixfe & 0x0FFF)->numFormat()), "0.0\"x\"");
    EXPECT_NE(loaded(saved(*other))->getSheet(0), nullptr);
}

TEST(SheetView, FlagsNameAndState) {
    NewSheet s;
    auto& sheet = *s.sheet;
    EXPECT_TRUE(sheet.showsGridlines());
    sheet.setShowsGridlines(false);
    sheet.setRightToLeft(true);
    sheet.setTopLeftCell(3, 4);
    sheet.setPrintsGridlines(true);
    sheet.setPrintsRowColHeadings(true);
    sheet.setSummaryBelow(false);
    EXPECT_TRUE(sheet.setSheetName("New")) << s.book->errorMessage();
    EXPECT_STREQ(sheet.sheetName(), "New");
    EXPECT_STREQ(s.book->sheetNameAt(0), "New");
    const auto out = savedRecords(*s.book);
    EXPECT_EQ(only(out, 574).at(0).body, hex("F404 0300 0400 4000 0000 0000 0000 0000 0000"));
    EXPECT_EQ(only(out, 129).at(0).body, hex("8104"));
    EXPECT_EQ(only(out, 43).at(0).body, hex("0100"));
    EXPECT_EQ(only(out, 42).at(0).body, hex("0100"));
}

}  // namespace
}  // namespace vellum::test
