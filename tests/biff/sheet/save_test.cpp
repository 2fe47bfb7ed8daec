// What a saved worksheet looks like: the order of its records, and that kept ones are unchanged.
#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

Record marked(std::uint16_t id, std::size_t size, int mark) {
    return {id, Bytes(size, static_cast<std::byte>(mark))};
}

const Record active{29, hex("03 0200 0100 0000 0100 0200 0200 01 01")};
const Record webLink{440, hex("0000 0000 0000 0000 D0C9EA79F9BACE118C8200AA004BA90B 02000000 03000000"
                              "E0C9EA79F9BACE118C8200AA004BA90B 0E000000 68003A002F002F0061007A000000")};

// Every place of the save order once, in the order of saving, in three runs.

std::vector<Record> settingsOfEachKind() {
    return {
        marked(94, 2, 1),  // Uncalced
        {523, hex("00000000 00000000 02000000 00000000 11111111")},
        {13, hex("0000")},  // calculation settings
        {12, hex("0500")},
        {15, hex("0100")},
        {17, hex("0100")},
        {16, hex("FCA9F1D24D62503F")},
        {95, hex("0000")},
        {42, hex("0100")},
        {43, hex("0100")},
        {130, hex("0100")},
        {128, hex("0100020003000400")},
        {549, hex("00002C01")},
        {129, hex("C104")},
        {27, hex("0100 0500 0000 FF00")},  // page breaks
        {26, hex("0100 0600 0100 0700")},
        {20, hex("0100 00 61")},  // page setup
        {21, hex("0100 01 6204")},
        marked(131, 2, 6),
        marked(132, 2, 7),
        marked(38, 8, 8),
        marked(39, 8, 9),
        marked(40, 8, 10),
        marked(41, 8, 11),
        marked(77, 9, 12),
        marked(60, 7, 13),
        marked(161, 34, 14),
        marked(2204, 38, 15),
    };
}

std::vector<Record> contentOfEachKind() {
    return {
        marked(18, 2, 16),  // protection
        marked(221, 2, 17),
        marked(99, 2, 18),
        marked(19, 2, 19),
        {85, hex("0A00")},
        {125, hex("0000 0100 0010 0F00 0000 0000")},
        marked(144, 6, 20),
        marked(2164, 6, 21),
        marked(157, 2, 22),
        marked(158, 24, 23),
        marked(2174, 40, 24),
        marked(60, 5, 25),
        marked(2197, 30, 80),  // the order of the filter's rows
        marked(2175, 9, 81),
        {512, hex("02000000 03000000 0100 0300 0000")},
        {520, hex("0200 0100 0300 2C01 0000 0000 4001 0F00")},
        {638, hex("0200 0100 0F00 1A000000")},
        {513, hex("0200 0200 0F00")},
        marked(450, 4, 26),
        marked(236, 30, 27),  // drawing
        {93, hex("1500 1200 0800 0100 1160 000000000000000000000000 0000 0000")},
        {438, hex("1202 0000 000000000000 0200 0000 0000 0000")},  // a text of two characters
        marked(60, 3, 30),
        marked(237, 20, 31),
        marked(28, 12, 32),
        marked(80, 6, 33),
    };
}

std::vector<Record> viewAndRestOfEachKind() {
    return {
        {574, hex("B606 0700 0300 4000 0000 0000 0000 00000000")},
        marked(2187, 16, 34),
        {160, hex("0300 0400")},
        marked(65, 10, 36),
        {29, hex("03 0200 0100 0000 0100 0200 0200 01 01")},
        {29, hex("01 0000 0000 0100 0200 0000 0000 00 00 0200 0300 04 05")},
        {153, hex("2409")},
        {229, hex("0200 0000 0000 0000 0100 0500 0600 0000 0000")},
        marked(239, 6, 39),
        webLink,
        marked(2048, 14, 41),
        {440, hex("0000 0100 0200 0300 D0C9EA79F9BACE118C8200AA004BA90B 02000000 08000000 03000000 410031000000")},
        marked(442, 5, 43),
        {2146, hex("6208 0000 0000000000000000 14000000 0A000000")},
        marked(155, 0, 45),  // others
        marked(4711, 3, 46),
        marked(2066, 9, 47),
        {2151, hex("6708 0000 0000000000000000 0200 01 FFFFFFFF 00440000")},
        {2152, hex("6808 0000 0000000000000000 0200 00 00000000 0100 00000000 0000 0100 0200 0300 0400 AABB")},
        marked(2161, 29, 50),
        marked(2162, 60, 51),
        marked(2165, 12, 52),
        marked(2167, 18, 53),
    };
}

std::vector<Record> oneOfEach() {
    std::vector<Record> all;
    for (const auto& run : {settingsOfEachKind(), contentOfEachKind(), viewAndRestOfEachKind()}) {
        all.insert(all.end(), run.begin(), run.end());
    }
    return all;
}

TEST(SheetSave, TheOrderIsFixedAndEveryByteStays) {
    const auto inOrder = oneOfEach();
    OneSheet straight(inOrder);
    ASSERT_NE(straight.sheet, nullptr) << straight.book->errorMessage();
    EXPECT_EQ(savedRecords(*straight.book), inOrder);

    // The records with what goes on with them, the other way round.
    std::vector<std::vector<Record>> groups;
    for (const Record& record : inOrder) {
        const bool belongs = record.id == 60 || record.id == 158 || record.id == 2174 || record.id == 2197 ||
                             record.id == 2175 || record.id == 2048 || record.id == 2066 || record.id == 2165 ||
                             (record.id == 29 && groups.back()[0].id == 29);
        if (!belongs) groups.emplace_back();
        groups.back().push_back(record);
    }
    // Of these several stand at one place, where they stay in their order.
    const auto ordered = [](std::uint16_t id) {
        return id == 236 || id == 93 || id == 438 || id == 237 || id == 440 || id == 155 || id == 4711 || id == 2151 ||
               id == 2152 || id == 2161 || id == 2162 || id == 2167;
    };
    std::vector<Record> shuffled;
    for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
        if (!ordered(group->front().id)) shuffled.insert(shuffled.end(), group->begin(), group->end());
    }
    for (const auto& group : groups) {
        if (ordered(group.front().id)) shuffled.insert(shuffled.end(), group.begin(), group.end());
    }
    OneSheet back(shuffled);
    ASSERT_NE(back.sheet, nullptr) << back.book->errorMessage();
    EXPECT_EQ(savedRecords(*back.book), inOrder);
}

TEST(SheetSave, ANewSheetsRecords) {
    NewSheet sheet;
    const auto out = savedRecords(*sheet.book);
    EXPECT_EQ(idsOf(out), (std::vector<std::uint16_t>{523, 13,  12, 15, 17,  16,  95,  42, 43,  130, 128,
                                                      549, 129, 20, 21, 131, 132, 161, 85, 512, 574, 29}));
    EXPECT_EQ(out[0].body, hex("00000000 00000000 03000000 00000000"));
    EXPECT_EQ(out[1].body, hex("0100")) << "calculated automatically";
    EXPECT_EQ(out[12].body, hex("C104"));
    EXPECT_EQ(out[17].body, hex("0000 6400 0100 0100 0100 0600 0000 0000 000000000000E03F 000000000000E03F 0000"));
    EXPECT_EQ(out[19].body, Bytes(14));
    EXPECT_EQ(out[21].body, hex("03 0000 0000 0000 0100 0000 0000 00 00"));
}

TEST(SheetSave, LaterSingleRecordsTakeThePlaceOfEarlierOnes) {
    OneSheet one(
        {marked(450, 4, 1), marked(60, 2, 1), marked(450, 6, 2), {20, hex("0100 00 61")}, {20, hex("0200 00 6162")}});
    const auto out = savedRecords(*one.book);
    EXPECT_EQ(only(out, 450), (std::vector{marked(450, 6, 2)}));
    EXPECT_EQ(only(out, 20), (std::vector{Record{20, hex("0200 00 6162")}}));
    EXPECT_TRUE(only(out, 60).empty());
}

TEST(SheetSave, ViewsOfFurtherWindowsAndStrayContinuationsAreDropped) {
    const Record window{574, hex("B606 0700 0300 4000 0000 0000 0000 00000000")};
    OneSheet one({window,
                  active,
                  marked(450, 4, 1),
                  marked(60, 8, 1),
                  {513, hex("0000 0000 0F00")},
                  marked(60, 9, 2),
                  {574, Bytes(18)},
                  marked(65, 10, 3),
                  marked(29, 15, 3),
                  marked(160, 4, 3),
                  marked(60, 3, 3)});
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    const auto out = savedRecords(*one.book);
    EXPECT_EQ(only(out, 574), std::vector{window});
    EXPECT_EQ(only(out, 29), std::vector{active});
    EXPECT_EQ(only(out, 60), (std::vector{marked(60, 8, 1)}));
    EXPECT_TRUE(only(out, 65).empty());
    EXPECT_TRUE(only(out, 160).empty());
}

TEST(SheetSave, FormulaBlocksAreUnchanged) {
    const Record number{6, hex("0100 0000 0F00 000000000000F83F 0200 01000000 0500 0101000000")};
    const Record text{6, hex("0100 0000 0F00 000000000000FFFF 0200 01000000 0300 1E0700 AABB")};
    const Record string{519, hex("0300 00 616263")};
    const std::vector<std::vector<Record>> blocks{
        {number},
        {number, {545, hex("0100 0200 00 00 0000 00000000 0300 1E0700")}},
        {number, {566, hex("0100 0200 00 00 0000 0000 0000 0000 0000")}},
        {number, {1212, hex("0100 0200 00 00 00 02 0300 1E0700")}},
        {text, string},
        {text, {1212, hex("0100 0200 00 00 00 02 0300 1E0700")}, string},
        {text, {519, hex("0600 00 616263")}, {60, hex("01 D004 6500 6600")}},
    };
    for (const auto& block : blocks) {
        auto records = block;
        records.push_back({574, Bytes(18)});
        OneSheet one(records);
        ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
        auto out = savedRecords(*one.book);
        const auto first = std::ranges::find(out, std::uint16_t{6}, &Record::id);
        ASSERT_NE(first, out.end());
        if (block.size() == 3 && block[2].id == 60) {
            const Book again = loaded(saved(*one.book));
            EXPECT_STREQ(again->getSheet(0)->readString(1, 0),
                         "abc\xD3\x90"
                         "ef")
                << "two widths became one";
            continue;
        }
        ASSERT_GE(out.end() - first, std::ptrdiff_t(block.size()));
        EXPECT_TRUE(std::equal(block.begin(), block.end(), first));
    }
}

TEST(SheetSave, LongTextsAreCutIntoRecords) {
    Bytes body = hex("0000 0000 0F00 FF7F 01");
    body.resize(8224, std::byte{0x41});  // leaves 1 byte of a pair
    body.resize(8223);
    Bytes more = hex("01");
    const std::size_t left = 32767 - (8223 - 9) / 2;
    more.resize(1 + 2 * std::min<std::size_t>(left, 4111), std::byte{0x42});
    std::vector<Record> records{{516, body}};
    for (std::size_t done = 0; done < left; done += 4111) {
        records.push_back({60, Bytes(1 + 2 * std::min<std::size_t>(left - done, 4111), std::byte{0x01})});
    }
    OneSheet one(records);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    const std::string before = one.sheet->readString(0, 0);
    for (const Record& record : savedRecords(*one.book)) EXPECT_LE(record.body.size(), 8224U);
    const Book again = loaded(saved(*one.book));
    EXPECT_EQ(again->getSheet(0)->readString(0, 0), before);
}

TEST(SheetSave, RowRecordsNameTheirCells) {
    NewSheet s;
    s.sheet->writeNumber(5, 3, 1);
    s.sheet->writeNumber(5, 200, 1);
    s.sheet->writeNumber(2, 0, 1);
    s.sheet->setRow(9, 20);
    const auto rows = only(savedRecords(*s.book), 520);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].body, hex("0900 0000 0000 9001 0000 0000 4001 0F00"));
    EXPECT_EQ(rows[1].body, hex("0200 0000 0100 FF00 0000 0000 0001 0F00"));
    EXPECT_EQ(rows[2].body, hex("0500 0300 C900 FF00 0000 0000 0001 0F00"));
}

// A sheet whose rows are 15 points high: rows that nobody set take that height.
TEST(SheetSave, MadeRowsHaveTheHeightOfTheSheet) {
    const struct {
        const char* what;
        bool (*make)(ISheetT<char>&);
    } cases[] = {
        {"by a cell", [](ISheetT<char>& s) { return s.writeNumber(4, 0, 1); }},
        {"hidden and shown", [](ISheetT<char>& s) { return s.setRowHidden(4, true) && s.setRowHidden(4, false); }},
        {"inserted", [](ISheetT<char>& s) { return s.insertRows(4, 4, false); }},
        {"moved onto one with a record",
         [](ISheetT<char>& s) { return s.setRow(4, 30) && s.insertRows(1, 1, false) && s.removeRows(5, 65535); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OneSheet one({{549, hex("01002C01")}});
        ASSERT_TRUE(c.make(*one.sheet)) << one.book->errorMessage();
        EXPECT_EQ(one.sheet->rowHeight(4), 15.0);
        const auto rows = only(savedRecords(*one.book), 520);
        ASSERT_FALSE(rows.empty());
        for (const Record& row : rows) {
            EXPECT_EQ(loadLe<std::uint16_t>(&row.body[6]), 300);
            EXPECT_EQ(loadLe<std::uint16_t>(&row.body[12]), 0x100) << "no height by hand";
        }
    }
    OneSheet grouped({{549, hex("01002C01")}});
    ASSERT_TRUE(grouped.sheet->groupRowRange(4, 4, true));
    for (const Record& row : only(savedRecords(*grouped.book), 520)) {
        EXPECT_EQ(loadLe<std::uint16_t>(&row.body[6]), 300);
        EXPECT_EQ(loadLe<std::uint16_t>(&row.body[12]) & 0x40, 0);
    }
}

// Numbers of objects, views and strings are those of one book, or of one sheet in it.
TEST(SheetSave, ACopyLeavesBehindWhatOthersCannotHave) {
    const Book book = loaded(workbook({oneOfEach(), {}}));
    ASSERT_NE(book->addSheet("Copy", book->getSheet(0)), nullptr) << book->errorMessage();
    auto expected = oneOfEach();
    std::erase_if(expected, [](const Record& r) {
        constexpr std::uint16_t unique[] = {236, 93, 438, 237, 28, 442, 2161, 2162, 2165, 2167};
        return std::ranges::count(unique, r.id) != 0 || r == marked(60, 3, 30);  // goes on with 438
    });
    std::ranges::find(expected, std::uint16_t{574}, &Record::id)->body[1] = std::byte{0};  // not selected
    EXPECT_EQ(idsOf(savedRecords(*book, 2)), idsOf(expected));
    EXPECT_EQ(savedRecords(*book, 2), expected);

    const Book view = loaded(workbook({{{426, Bytes(18)}, active, {427, {}}, marked(155, 0, 1)},
                                       {{253, hex("0000 0000 0F00 00000000")}, {513, hex("0100 0000 0F00")}}}));
    ASSERT_NE(view->addSheet("Copy", view->getSheet(0)), nullptr) << view->errorMessage();
    EXPECT_EQ(only(savedRecords(*view), 29).size(), 1U);
    EXPECT_TRUE(only(savedRecords(*view, 2), 29).empty());
    EXPECT_EQ(only(savedRecords(*view, 2), 155).size(), 1U);

    const Book other = newBook();
    other->addSheet("Own")->writeString(0, 0, "own");
    ISheetT<char>* const copy = other->addSheet("Copy", view->getSheet(1));
    ASSERT_NE(copy, nullptr) << other->errorMessage();
    EXPECT_EQ(copy->cellType(0, 0), cellBlank) << "a string that the source does not have";
}

TEST(SheetSave, AChartSheetIsKeptWhole) {
    const std::vector<Record> chart{{2057, hex("0006 2000 BB0D CC07 41000000 06000000")},
                                    {515, Bytes(14)},
                                    {2057, hex("0006 2000 BB0D CC07 41000000 06000000")},
                                    eof,
                                    {4098, Bytes(16)},
                                    eof};
    std::vector<Record> all{bof8, boundSheet("C"), boundSheet("S"), eof};
    all.insert(all.end(), chart.begin(), chart.end());
    all.push_back(sheetBof8);
    all.push_back({638, hex("0000 0000 0F00 1A000000")});
    all.push_back(eof);
    const Book book = loaded(compoundFile(all));
    ASSERT_EQ(book->sheetCount(), 2) << book->errorMessage();
    EXPECT_EQ(book->sheetKindAt(0), sheetChart);
    EXPECT_EQ(book->getSheet(0)->lastRow(), 0);
    EXPECT_EQ(book->getSheet(1)->readNumber(0, 0), 6);
    const auto out = recordsOf(saved(*book));
    EXPECT_FALSE(std::ranges::search(out, chart).empty());
}

}  // namespace
}  // namespace vellum::test
