// Worksheets from bytes: every kind of cell, wrong sizes, and what a load leaves out.
#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

// A value of a cell in the words of the dump command: kind, then text, number or code.
std::string shown(ISheetT<char>& sheet, int row, int col) {
    const char* const text = sheet.readString(row, col);
    const std::string formula = sheet.isFormulaCell(row, col) ? "=" : "";
    switch (sheet.cellType(row, col)) {
        case cellEmpty:
            return formula + "empty";
        case cellNumber:
        case cellString:
            return formula + (sheet.cellType(row, col) == cellNumber ? "n " : "s ") + text;
        case cellBoolean:
            return formula + (sheet.readBool(row, col) ? "true" : "false");
        case cellError:
            return formula + "e " + std::to_string(sheet.readError(row, col));
        default:
            return formula + "blank";
    }
}

const Record textRecord{519, hex("0300 00 616263")};

TEST(SheetLoad, EveryKindOfCell) {
    const struct {
        const char* what;
        std::vector<Record> records;
        const char* value;  // of row 2, column 1
        const char* next = "empty";
    } cases[] = {
        {"RK integer", {{638, hex("0200 0100 0F00 1A000000")}}, "n 6"},
        {"RK negative integer", {{638, hex("0200 0100 0F00 EEFFFFFF")}}, "n -5"},
        {"RK integer by 100", {{638, hex("0200 0100 0F00 E7C00000")}}, "n 123.45"},
        {"RK double", {{638, hex("0200 0100 0F00 0000F83F")}}, "n 1.5"},
        {"MulRk", {{189, hex("0200 0100 0F00 1A000000 1000 0000F83F 0200")}}, "n 6", "n 1.5"},
        {"Number", {{515, hex("0200 0100 0F00 9A9999999999B93F")}}, "n 0.1"},
        {"Number of 16", {{515, hex("0200 0100 0F00 9A9999999999B93F 0000")}}, "n 0.1"},
        {"Number of 18", {{515, hex("0200 0100 0F00 9A9999999999B93F 00000000")}}, "n 0.1"},
        {"Label", {{516, hex("0200 0100 0F00 0200 00 E970")}}, "s \xC3\xA9p"},
        {"Label of wide characters", {{516, hex("0200 0100 0F00 0200 01 3C04 7000")}}, "s \xD0\xBCp"},
        {"true", {{517, hex("0200 0100 0F00 01 00")}}, "true"},
        {"error", {{517, hex("0200 0100 0F00 2A 01")}}, "e 42"},
        {"Blank", {{513, hex("0200 0100 0F00")}}, "blank"},
        {"MulBlank", {{190, hex("0200 0100 0F00 0F00 0200")}}, "blank", "blank"},
        {"formula, number", {{6, hex("0200 0100 0F00 000000000000F83F 0000 00000000 0300 1E0700")}}, "=n 1.5"},
        {"formula, text",
         {{6, hex("0200 0100 0F00 000000000000FFFF 0000 00000000 0300 1E0700")}, textRecord},
         "=s abc"},
        {"formula, true", {{6, hex("0200 0100 0F00 010001000000FFFF 0000 00000000 0300 1E0700")}}, "=true"},
        {"formula, error", {{6, hex("0200 0100 0F00 020007000000FFFF 0000 00000000 0300 1E0700")}}, "=e 7"},
        {"formula, empty text", {{6, hex("0200 0100 0F00 030000000000FFFF 0000 00000000 0300 1E0700")}}, "=empty"},
        {"formula under an older id",
         {{1030, hex("0200 0100 0F00 000000000000F83F 0000 00000000 0300 1E0700")}},
         "=n 1.5"},
        {"a later record of the cell wins",
         {{638, hex("0200 0100 0F00 1A000000")}, {517, hex("0200 0100 0F00 01 00")}},
         "true"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OneSheet one(c.records);
        ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
        EXPECT_EQ(shown(*one.sheet, 2, 1), c.value);
        EXPECT_EQ(shown(*one.sheet, 2, 2), c.next);
        // And again from what a save makes of it.
        const Book again = loaded(saved(*one.book));
        EXPECT_EQ(shown(*again->getSheet(0), 2, 1), c.value);
        EXPECT_EQ(shown(*again->getSheet(0), 2, 2), c.next);
    }
}

TEST(SheetLoad, WrongSizesAreNamed) {
    const struct {
        std::uint16_t id;
        std::vector<std::size_t> sizes;
        const char* text;
    } cases[] = {
        {638, {9, 11, 0}, "RK size is incorrect"},
        {515, {13, 15, 17, 19}, "Number size is incorrect"},
        {253, {9, 11}, "LabelSst size is incorrect"},
        {513, {5, 7}, "Blank size is incorrect"},
        {517, {7, 9}, "BoolErr size is incorrect"},
        {516, {7}, "Label size is incorrect"},
        {189, {4, 13}, "MulRk size is incorrect"},
        {190, {5, 9}, "MulBlank size is incorrect"},
        {6, {1, 20, 21}, "Formula size is incorrect"},
        {520, {15, 17}, "Row size is incorrect"},
        {125, {9, 13}, "ColInfo size is incorrect"},
        {523, {15, 18}, "Index size is incorrect"},
        {512, {10, 15}, "Dimensions size is incorrect"},
        {574, {9, 17}, "Window2 size is incorrect"},
        {229, {1, 3}, "MergeCells size is incorrect"},
        {12, {1, 3}, "CalcCount size is incorrect"},
        {13, {1}, "CalcMode size is incorrect"},
        {15, {1, 4}, "CalcRefMode size is incorrect"},
        {16, {2, 16}, "CalcDelta size is incorrect"},
        {17, {1}, "CalcIter size is incorrect"},
        {95, {0}, "CalcSaveRecalc size is incorrect"},
        {42, {1}, "PrintRowCol size is incorrect"},
        {43, {3}, "PrintGrid size is incorrect"},
        {130, {1}, "GridSet size is incorrect"},
        {85, {3}, "DefColWidth size is incorrect"},
        {94, {4}, "Uncalced size is incorrect"},
        {128, {7}, "Guts size is incorrect"},
        {129, {1}, "WsBool size is incorrect"},
        {549, {2}, "DefaultRowHeight size is incorrect"},
        {153, {1}, "DxGCol size is incorrect"},
    };
    for (const auto& c : cases) {
        for (const std::size_t size : c.sizes) {
            EXPECT_EQ(loadText({{c.id, Bytes(size)}}), c.text) << size << " bytes";
        }
    }
}

TEST(SheetLoad, OtherFailures) {
    const Record formula{6, hex("0200 0100 0F00 000000000000FFFF 0000 00000000 0300 1E0700")};
    const struct {
        std::vector<Record> records;
        const char* text;
    } cases[] = {
        {{{0, {}}}, "read error: record id can't be 0"},
        {{{189, Bytes(6 + 6 * 257)}}, "SheetIndex: col can't be more than 255"},
        {{{6, hex("0100")}, {515, Bytes(14)}}, "error in record FormulaBlock"},
        {{formula, {1212, Bytes(9)}}, "ShrFmla size is incorrect"},
        {{formula, {545, Bytes(6)}, textRecord, {93, {}}}, "FormulaBlock: file is corrupt"},
        {{formula, {519, hex("0300 00 61")}, {93, {}}}, "error in XLUnicodeString record #1"},
    };
    for (const auto& c : cases) EXPECT_EQ(loadText(c.records), c.text);
}

// Rows 0 to 9 with a number, a blank and a Row record each; the second sheet the same.
std::vector<Record> tenRows() {
    std::vector<Record> records;
    for (int row = 0; row < 10; ++row) {
        const auto rw = static_cast<std::byte>(row);
        Bytes number = hex("0000 0100 0F00 1A000000"), blank = hex("0000 0200 0F00");
        Bytes rowRecord = hex("0000 0000 0100 2C01 0000 0000 4001 0F00");
        number[0] = blank[0] = rowRecord[0] = rw;
        records.push_back({520, rowRecord});
        records.push_back({638, number});
        records.push_back({513, blank});
    }
    return records;
}

TEST(SheetLoad, KeepsTheAskedRowsOfTheAskedSheet) {
    const auto file = workbook({tenRows(), tenRows()});
    const struct {
        int sheet, first, last, expectFirst, expectEnd;
    } cases[] = {{-1, -1, -1, 0, 10}, {1, -1, -1, 0, 10}, {1, 5, 9, 5, 10}, {0, 3, 3, 3, 4},
                 {1, 5, -1, 5, 10},   {-1, 2, 4, 2, 5},   {0, 20, 30, 0, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.sheet << ' ' << c.first << ' ' << c.last);
        const Book book = newBook();
        ASSERT_TRUE(book->loadMemory(file.data(), file.size(), c.sheet, c.first, c.last)) << book->errorMessage();
        auto* const sheet = book->getSheet(0);
        EXPECT_EQ(sheet->firstRow(), c.expectFirst);
        EXPECT_EQ(sheet->lastRow(), c.expectEnd);
        for (int row = 0; row < 10; ++row) {
            const bool kept = row >= c.expectFirst && row < c.expectEnd;
            EXPECT_EQ(sheet->rowHeight(row), kept ? 15.0 : 12.75) << row;
        }
    }
}

TEST(SheetLoad, CellsOfChartsAndCustomViewsAreNotTheSheets) {
    const Record chartBof{2057, hex("0006 2000 BB0D CC07 41000000 06000000")};
    const std::vector<Record> records{
        {638, hex("0000 0000 0F00 1A000000")},
        {236, hex("0102030405060708")},
        {93, hex("1500 1200 0500 0100 1160 000000000000000000000000 0000 0000")},
        chartBof,
        {515, hex("0500 0500 0F00 9A9999999999B93F")},
        {2057, chartBof.body},
        eof,
        {574, Bytes(10)},
        eof,
        {426, Bytes(50)},
        {229, hex("0100 0100 0200 0100 0200")},
        {574, Bytes(18)},
        {427, hex("0100")},
        {574, hex("B606 0700 0300 4000 0000 0000 0000 00000000")},
    };
    OneSheet one(records);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_EQ(one.sheet->lastRow(), 1);
    EXPECT_EQ(one.sheet->mergeTotal(), 0);
    int row = 0, col = 0;
    EXPECT_TRUE(one.sheet->topLeftCell(&row, &col));
    EXPECT_EQ(std::pair(row, col), std::pair(7, 3));
    const auto out = savedRecords(*one.book);
    const auto chart = std::ranges::search(out, std::vector(records.begin() + 1, records.begin() + 9));
    EXPECT_FALSE(chart.empty()) << "the drawing with its chart is one run, as it was";
    const auto view = std::ranges::search(out, std::vector(records.begin() + 9, records.begin() + 13));
    EXPECT_FALSE(view.empty());
}

TEST(SheetLoad, ASheetWithoutItsEndEndsWithTheStream) {
    std::vector<Record> all{bof8, boundSheet("S"), eof, sheetBof8};
    // The stream fills its last sector, so that nothing comes behind the last record.
    std::size_t size = 0;
    for (const Record& record : all) size += 4 + record.body.size();
    all.push_back({638, hex("0400 0000 0F00 1A000000")});
    all.push_back({5000, Bytes(8192 - size - 14 - 4)});
    const Book book = loaded(compoundFile(all));
    ASSERT_NE(book->getSheet(0), nullptr) << book->errorMessage();
    EXPECT_EQ(book->getSheet(0)->lastRow(), 5);
}

TEST(SheetLoad, OfSeveralRecordsOfARowTheFirstCountsOfACellTheLast) {
    OneSheet one({{520, hex("0500 0000 0100 2C01 0000 0000 4001 0F00")},
                  {520, hex("0200 0000 0100 9001 0000 0000 4001 0F00")},
                  {520, hex("0500 0000 0100 F401 0000 0000 4001 0F00")},
                  {638, hex("0500 0300 0F00 1A000000")},
                  {638, hex("0200 0000 0F00 1A000000")},
                  {513, hex("0500 0300 0F00")}});
    EXPECT_EQ(one.sheet->rowHeight(5), 15.0);
    EXPECT_EQ(one.sheet->rowHeight(2), 20.0);
    EXPECT_EQ(one.sheet->lastRow(), 6);
    auto& sheet = *one.sheet;
    EXPECT_EQ((std::vector{sheet.firstRow(), sheet.lastRow(), sheet.firstCol(), sheet.lastCol()}),
              (std::vector{2, 6, 0, 4}));
    EXPECT_EQ((std::vector{sheet.firstFilledRow(), sheet.lastFilledRow(), sheet.firstFilledColumn(),
                           sheet.lastFilledColumn()}),
              (std::vector{2, 3, 0, 1}))
        << "without the blank that came last";
}

// An element that another one takes the place of is no use of its string: what is used once is changed in its place.
TEST(SheetLoad, UsesOfAStringWithoutThoseWrittenOver) {
    const Book book = loaded(workbook({{{253, hex("0000 0000 0F00 00000000")},
                                        {253, hex("0000 0000 0F00 01000000")},
                                        {253, hex("0100 0000 0F00 00000000")}}},
                                      false, {{252, hex("03000000 02000000 0100 00 61 0100 00 62")}}));
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_STREQ(book->getSheet(0)->readString(0, 0), "b");
    EXPECT_TRUE(book->getSheet(0)->writeString(1, 0, "z"));
    EXPECT_EQ(only(recordsOf(saved(*book)), 252).at(0).body, hex("03000000 02000000 0100 01 7A00 0100 00 62"));
}

// A macro sheet, of which the bytes are kept, shows the second string: it is not changed in its place as long as the
// sheet, or a copy of it, is there.
TEST(SheetLoad, StringsOfMacroSheetsAreUses) {
    const Record macroBof{2057, hex("0006 4000 BB0D CC07 41000000 06000000")};
    Record macro = boundSheet("M");
    macro.body[5] = std::byte{1};
    const std::vector<Record> records{bof8,
                                      {252, hex("03000000 02000000 0100 00 61 0100 00 62")},
                                      boundSheet("S"),
                                      macro,
                                      eof,
                                      sheetBof8,
                                      {253, hex("0000 0000 0F00 00000000")},
                                      {253, hex("0100 0000 0F00 01000000")},
                                      eof,
                                      macroBof,
                                      {253, hex("0000 0000 0F00 01000000")},
                                      {253, hex("0000 0100 0F00 09000000")},  // of no string
                                      {253, hex("0000 0100")},
                                      eof};
    const auto written = [](IBookT<char>& book) {
        auto* const sheet = book.getSheet(0);
        return sheet->writeString(0, 0, "x") && sheet->writeString(1, 0, "y")
                   ? only(recordsOf(saved(book)), 252)[0].body
                   : Bytes();
    };
    const Book book = loaded(compoundFile(records));
    EXPECT_EQ(written(*book), hex("04000000 03000000 0100 01 7800 0100 00 62 0100 01 7900")) << book->errorMessage();

    const Book removed = loaded(compoundFile(records));
    ASSERT_TRUE(removed->removeSheet(1));
    EXPECT_EQ(written(*removed), hex("03000000 02000000 0100 01 7800 0100 01 7900"));

    const Book copied = loaded(compoundFile(records));
    ASSERT_NE(copied->addSheet("C", copied->getSheet(1)), nullptr) << copied->errorMessage();
    ASSERT_TRUE(copied->removeSheet(1));
    EXPECT_EQ(written(*copied), hex("04000000 03000000 0100 01 7800 0100 00 62 0100 01 7900"));

    const auto file = compoundFile(records);
    const Book alone = newBook();
    ASSERT_TRUE(alone->loadMemory(file.data(), file.size(), 0)) << alone->errorMessage();
    EXPECT_EQ(written(*alone), hex("03000000 02000000 0100 01 7800 0100 01 7900")) << "the macro sheet is gone";
}

// A sheet that is no worksheet has its flags in the first of its view records; others are those of further windows.
TEST(SheetLoad, TheFirstWindowOfAChartSheetIsSelected) {
    const auto window = [](const char* flags) {
        return Record{574, hex(std::string(flags) + "00000000400000000000000000000000")};
    };
    Record chart = boundSheet("C");
    chart.body[5] = std::byte{2};
    const Book book = loaded(compoundFile({bof8,
                                           boundSheet("S"),
                                           chart,
                                           eof,
                                           sheetBof8,
                                           eof,
                                           {2057, hex("0006 2000 BB0D CC07 41000000 06000000")},
                                           window("0600"),
                                           window("0A00"),
                                           eof}));
    ASSERT_TRUE(book->setActiveSheetIndex(1)) << book->errorMessage();
    const auto windows = only(savedRecords(*book, 1), 574);
    ASSERT_EQ(windows.size(), 2U);
    EXPECT_EQ(loadLe<std::uint16_t>(windows[0].body.data()), 0x0606);
    EXPECT_EQ(loadLe<std::uint16_t>(windows[1].body.data()), 0x000A);
}

// Small sheets are kept as their bytes; of those that nobody changed only some are open at a time.
TEST(SheetLoad, ManySmallSheetsAsIfAllWereOpen) {
    constexpr int sheets = 40;
    std::vector<std::vector<Record>> parts;
    for (int i = 0; i < sheets; ++i) {
        Bytes number = hex("0000 0000 0F00 02000000");
        number[6] = static_cast<std::byte>(i << 2 | 2);
        parts.push_back({{20, hex("0100 00 61")},
                         {638, number},
                         {253, hex("0000 0100 0F00 00000000")},
                         {574, hex("B606 0700 0300 4000 0000 0000 0000 00000000")},
                         {155, {}}});
    }
    const auto file = workbook(parts, false, {{252, hex("28000000 01000000 0100 00 61")}});
    const auto number = [](IBookT<char>& book, int sheet) { return book.getSheet(sheet)->readNumber(0, 0); };

    const Book untouched = loaded(file), book = loaded(file);
    ASSERT_STREQ(book->errorMessage(), "ok");
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < sheets; ++i) {
            EXPECT_EQ(number(*book, i), i);
            EXPECT_STREQ(book->getSheet(i)->readString(0, 1), "a");
        }
    }
    EXPECT_EQ(saved(*book), saved(*untouched)) << "reading changes nothing";

    ISheetT<char>* const changed = book->getSheet(3);
    EXPECT_TRUE(changed->writeNumber(5, 5, 77));
    EXPECT_TRUE(changed->setHeaderText("new", 0.5));
    for (int i = 0; i < sheets; ++i) EXPECT_EQ(number(*book, i), i);
    EXPECT_EQ(changed->readNumber(5, 5), 77);
    EXPECT_EQ(changed->lastFilledRow(), 6);
    EXPECT_STREQ(changed->headerText(), "new");

    // Forty cells show the text: none but the last may change it in its place.
    ASSERT_TRUE(book->removeSheet(0));
    ASSERT_NE(book->addSheet("Copy", book->getSheet(20)), nullptr) << book->errorMessage();
    EXPECT_TRUE(changed->writeString(0, 1, "b"));
    EXPECT_STREQ(book->getSheet(10)->readString(0, 1), "a");
    const Book again = loaded(saved(*book));
    for (int i = 0; i < sheets; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(number(*again, i), i + 1 < sheets ? i + 1 : 21);
        EXPECT_STREQ(again->getSheet(i)->readString(0, 1), i == 2 ? "b" : "a");
        EXPECT_EQ(again->getSheet(i)->isRightToLeft(), false);
    }
    while (again->sheetCount() > 1) ASSERT_TRUE(again->removeSheet(0));
    EXPECT_TRUE(again->getSheet(0)->writeString(0, 1, "last"));
    EXPECT_EQ(only(recordsOf(saved(*again)), 252).at(0).body,
              hex("29000000 02000000 0400 01 6C00610073007400 0100 01 6200"));
}

// Rows 1 to 3 of column A use the tokens behind the first, rows 1 to 3 of column B an array behind its last cell.
TEST(SheetLoad, TokensBehindARowThatIsLeftOut) {
    const auto user = [](const std::string& place, const std::string& anchor) {
        return Record{6, hex(place + "0F00 000000000000F03F 0800 00000000 0500 01" + anchor)};
    };
    const Record shared{1212, hex("0100 0300 00 00 00 03 0300 1E0700")};
    const Record array{545, hex("0100 0300 01 01 0000 00000000 0300 1E0900")};
    const auto file = workbook(
        {{user("0100 0000", "0100 0000"), shared, user("0100 0100", "0300 0100"), user("0200 0000", "0100 0000"),
          user("0200 0100", "0300 0100"), user("0300 0000", "0100 0000"), user("0300 0100", "0300 0100"), array}});
    const struct {
        int first, last;
        std::vector<Record> saved;
    } cases[] = {
        {2,
         3,
         {user("0200 0000", "0200 0000"), shared, user("0200 0100", "0300 0100"), user("0300 0000", "0200 0000"),
          user("0300 0100", "0300 0100"), array}},
        {1,
         2,
         {user("0100 0000", "0100 0000"), shared, user("0100 0100", "0100 0100"), array, user("0200 0000", "0100 0000"),
          user("0200 0100", "0100 0100")}},
        {3, 3, {user("0300 0000", "0300 0000"), shared, user("0300 0100", "0300 0100"), array}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.first);
        const Book book = newBook();
        ASSERT_TRUE(book->loadMemory(file.data(), file.size(), 0, c.first, c.last)) << book->errorMessage();
        std::vector<Record> formulas;
        for (const Record& r : savedRecords(*book)) {
            if (r.id == 6 || r.id == 545 || r.id == 1212) formulas.push_back(r);
        }
        EXPECT_EQ(formulas, c.saved);
    }
}

TEST(SheetLoad, Biff5CellsAndWhatOfThemIsSaved) {
    OneSheet one({{214, hex("0000 0000 0F00 0300 6162E9 01 0000")},
                  {6, hex("0100 0000 0F00 000000000000FFFF 0000 00000000 0100 FF")},
                  {519, hex("0200 7879")},
                  {6, hex("0200 0000 0F00 000000000000F83F 0000 00000000 0100 FF")},
                  {6, hex("0300 0000 0F00 020007000000FFFF 0000 00000000 0100 FF")},
                  {512, Bytes(10)},
                  {523, Bytes(12)},
                  {20, hex("0161")},
                  {574, hex("B606 0100 0000 00000000")}},
                 true);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_EQ(shown(*one.sheet, 0, 0), "s ab\xC3\xA9");
    EXPECT_EQ(shown(*one.sheet, 1, 0), "=s xy");
    const auto out = savedRecords(*one.book);
    EXPECT_TRUE(only(out, 6).empty()) << "tokens of the older layout";
    EXPECT_EQ(only(out, 20).at(0).body, hex("0100 00 61"));
    ASSERT_EQ(only(out, 516).size(), 2U);
    EXPECT_EQ(only(out, 516)[1].body, hex("0100 0000 0F00 0200 00 7879"));
    EXPECT_EQ(only(out, 515).at(0).body, hex("0200 0000 0F00 000000000000F83F"));
    EXPECT_EQ(only(out, 517).at(0).body, hex("0300 0000 0F00 07 01"));
    EXPECT_EQ(only(out, 574).at(0).body.size(), 18U);
}

}  // namespace
}  // namespace vellum::test
