// References to sheets by number, through all that happens to sheets.
#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

Record name(std::uint16_t itab, char letter) {
    Bytes body = hex("0000 00 01 0000 0000 0000 00000000 00");
    body[8] = static_cast<std::byte>(itab);
    body.push_back(static_cast<std::byte>(letter));
    return {24, body};
}

// Three sheets A, B, C; an add-in's block 0 and the workbook's own block 1; one reference to each sheet, one to A
// through C, one to no sheet, one into the other block; a global name and one for each sheet.
std::vector<char> threeSheets() {
    std::vector<Record> records{bof8, {317, hex("0700 0300 0500")}};
    for (const char* sheet : {"A", "B", "C"}) records.push_back(boundSheet(sheet));
    records.push_back({430, hex("0100 013A")});
    records.push_back({35, hex("0000 00000000 01 00 46 0200 1C17")});
    records.push_back({60, hex("99")});
    records.push_back({430, hex("0300 0104")});
    records.push_back({23, hex("0600 0100 0000 0000 0100 0100 0100 0100 0200 0200 0100 0000 0200 0100 FFFF FFFF "
                               "0000 0100 0100")});
    for (std::uint16_t i = 0; i <= 3; ++i) records.push_back(name(i, static_cast<char>('g' + i)));
    records.push_back(eof);
    for (int i = 0; i < 3; ++i) {
        records.push_back(sheetBof8);
        records.push_back(eof);
    }
    return compoundFile(records);
}

struct Links {
    std::string table;  // first and last sheet of each reference, '-' for none
    std::string names;  // each name with its sheet
    std::string tabIds;
    int sheetsOfSelf = 0;
};

Links linksOf(IBookT<char>& book) {
    Links links;
    const auto records = recordsOf(saved(book));
    const auto sheet = [](const std::byte* at) {
        const auto i = loadLe<std::uint16_t>(at);
        return i == 0xFFFF ? std::string("-") : std::to_string(i);
    };
    const auto table = only(records, 23).at(0).body;
    for (std::size_t at = 2; at < table.size(); at += 6)
        links.table += sheet(&table[at + 2]) + sheet(&table[at + 4]) + ' ';
    for (const Record& r : only(records, 24))
        links.names += static_cast<char>(r.body[15]) + std::to_string(loadLe<std::uint16_t>(&r.body[8])) + ' ';
    for (std::size_t at = 0; at < only(records, 317).at(0).body.size(); at += 2)
        links.tabIds += std::to_string(loadLe<std::uint16_t>(&only(records, 317)[0].body[at]));
    links.sheetsOfSelf = loadLe<std::uint16_t>(only(records, 430).at(1).body.data());
    return links;
}

TEST(Links, FollowTheirSheets) {
    const struct {
        const char* what;
        std::function<void(IBookT<char>&)> change;
        const char *table, *names, *tabIds;
        int sheets, active;
    } cases[] = {
        {"nothing", [](auto&) {}, "00 11 22 02 -- 11 ", "g0 h1 i2 j3 ", "735", 3, 1},
        {"insert before B", [](auto& b) { b.insertSheet(1, "N", nullptr); }, "00 22 33 03 -- 11 ", "g0 h1 i3 j4 ",
         "7835", 4, 2},
        {"move A to the end", [](auto& b) { b.moveSheet(0, 3); }, "22 00 11 12 -- 11 ", "g0 h3 i1 j2 ", "357", 3, 0},
        {"move C to the front", [](auto& b) { b.moveSheet(2, 0); }, "11 22 00 01 -- 11 ", "g0 h2 i3 j1 ", "573", 3, 2},
        {"remove A", [](auto& b) { b.removeSheet(0); }, "-- 00 11 -- -- 11 ", "g0 _0 i1 j2 ", "12", 2, 0},
        {"remove B", [](auto& b) { b.removeSheet(1); }, "00 -- 11 -- -- 11 ", "g0 h1 _0 j2 ", "12", 2, 1},
        {"remove C", [](auto& b) { b.removeSheet(2); }, "00 11 -- -- -- 11 ", "g0 h1 i2 _0 ", "12", 2, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(threeSheets());
        ASSERT_STREQ(book->errorMessage(), "ok");
        book->setActiveSheetIndex(1);
        c.change(*book);
        const Links links = linksOf(*book);
        EXPECT_EQ(links.table, c.table);
        EXPECT_EQ(links.names, c.names);
        EXPECT_EQ(links.tabIds, c.tabIds);
        EXPECT_EQ(links.sheetsOfSelf, c.sheets);
        EXPECT_EQ(book->activeSheetIndex(), c.active);
    }
}

TEST(Links, OneSheetOfAFileIsLikeRemovingTheOthers) {
    const auto file = threeSheets();
    const Book book = newBook();
    ASSERT_TRUE(book->loadMemory(file.data(), file.size(), 1)) << book->errorMessage();
    EXPECT_EQ(book->sheetCount(), 1);
    EXPECT_STREQ(book->sheetNameAt(0), "B");
    const Links links = linksOf(*book);
    EXPECT_EQ(links.table, "-- 00 -- -- -- 11 ");
    EXPECT_EQ(links.names, "g0 _0 i1 _0 ");
    EXPECT_EQ(book->activeSheetIndex(), 0);
}

TEST(Links, AContinuationStaysBehindItsName) {
    const auto records = recordsOf(saved(*loaded(threeSheets())));
    for (std::size_t i = 0; i + 1 < records.size(); ++i) {
        if (records[i].id == 35) {
            EXPECT_EQ(records[i + 1], (Record{60, hex("99")}));
        }
    }
    EXPECT_EQ(only(records, 60).size(), 1U);
}

TEST(Links, ATableOfManyReferencesGoesOnInContinuations) {
    Bytes table = hex("A005");  // 1440 entries
    for (int i = 0; i < 1440; ++i) {
        for (const std::byte b : hex("0000 0000 0000")) table.push_back(b);
    }
    const Bytes first(table.begin(), table.begin() + 8222), rest(table.begin() + 8222, table.end());
    const auto records =
        recordsOf(saved(*loaded(compoundFile(withGlobals({{430, hex("0100 0104")}, {23, first}, {60, rest}})))));
    EXPECT_EQ(only(records, 23).at(0).body, first);
    EXPECT_EQ(only(records, 60).at(0).body, rest);
}

// Each table has one reference, and they count through all tables.
TEST(Links, SeveralTablesAreOne) {
    const Book book = loaded(compoundFile({bof8,
                                           boundSheet("A"),
                                           boundSheet("B"),
                                           {430, hex("0200 0104")},
                                           {23, hex("0100 0000 0100 0100")},
                                           {23, hex("0100 0000 0000 0000")},
                                           {23, hex("0100 0000 0000 0100")},
                                           eof,
                                           sheetBof8,
                                           eof,
                                           sheetBof8,
                                           eof}));
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_NE(book->insertSheet(1, "N"), nullptr);
    EXPECT_EQ(only(recordsOf(saved(*book)), 23),
              (std::vector<Record>{{23, hex("0300 0000 0200 0200 0000 0000 0000 0000 0000 0200")}}));
}

TEST(Links, ATableWithAWrongCountIsKeptAsItIs) {
    const Record wrong{23, hex("0900 0000 0000 0000")};
    const auto records = recordsOf(saved(*loaded(compoundFile(withGlobals({{430, hex("0100 0104")}, wrong})))));
    EXPECT_EQ(only(records, 23).at(0), wrong);
}

TEST(Links, OnlyTheActiveSheetIsSelected) {
    const Book book = newBook();
    for (const char* sheet : {"A", "B", "C"}) book->addSheet(sheet);
    const auto selected = [&] {
        std::string all;
        for (const Record& r : only(recordsOf(saved(*book)), 574))
            all += std::to_string(loadLe<std::uint16_t>(r.body.data()) >> 9 & 3);
        return all;
    };
    book->setActiveSheetIndex(2);
    EXPECT_EQ(selected(), "003");
    book->addSheet("Copy", book->getSheet(2));
    EXPECT_EQ(selected(), "0030");
    book->removeSheet(2);
    EXPECT_EQ(book->activeSheetIndex(), 2);
    EXPECT_EQ(selected(), "003");
    EXPECT_TRUE(book->getSheet(2)->setVisibilityState(sheetHidden)) << book->errorMessage();
    EXPECT_EQ(book->activeSheetIndex(), 0);
    EXPECT_EQ(selected(), "300");
    // Neither does a sheet that was hidden come to the front, unless none is left.
    EXPECT_NE(book->addSheet("D"), nullptr);
    book->setActiveSheetIndex(1);
    EXPECT_TRUE(book->removeSheet(1));
    EXPECT_EQ(book->activeSheetIndex(), 0);
    EXPECT_TRUE(book->removeSheet(2));
    EXPECT_TRUE(book->removeSheet(0));
    EXPECT_EQ(selected(), "3");
    EXPECT_EQ(loaded(saved(*book))->getSheet(0)->visibilityState(), sheetVisible);
}

// Three sheets of a group, the second a chart: its records are kept as bytes.
TEST(Links, AGroupOfSheetsEndsWhenOneIsShown) {
    const Record window{574, hex("B606 0000 0000 0000 0000")}, chartBof{2057, hex("0006 2000 BB0D CC07 41000000")};
    const auto file = compoundFile({bof8,
                                    {61, hex("0000 0000 0000 0000 3800 0000 0000 0300 5802")},
                                    boundSheet("A"),
                                    boundSheet("C"),
                                    boundSheet("B"),
                                    eof,
                                    sheetBof8,
                                    window,
                                    eof,
                                    chartBof,
                                    {574, hex("")},
                                    chartBof,
                                    window,
                                    eof,
                                    window,
                                    eof,
                                    sheetBof8,
                                    window,
                                    eof});
    const auto state = [](IBookT<char>& book) {
        std::string text;
        const auto records = recordsOf(saved(book));
        for (const Record& r : only(records, 574))
            text += r.body.empty() ? '-' : static_cast<char>('0' + (loadLe<std::uint16_t>(r.body.data()) >> 9 & 3));
        return text + " of " + std::to_string(std::to_integer<int>(only(records, 61).at(0).body[14]));
    };
    const Book book = loaded(file);
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_EQ(state(*book), "3-333 of 3");
    EXPECT_NE(book->addSheet("Copy", book->getSheet(1)), nullptr) << book->errorMessage();
    EXPECT_EQ(state(*book), "3-333-30 of 3") << "a copy is not in the group";
    book->setActiveSheetIndex(1);
    EXPECT_EQ(state(*book), "0-330-30 of 1");
    const Book one = newBook();
    ASSERT_TRUE(one->loadMemory(file.data(), file.size(), 2)) << one->errorMessage();
    EXPECT_EQ(state(*one), "3 of 1");
}

}  // namespace
}  // namespace vellum::test
