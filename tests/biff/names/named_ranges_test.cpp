#include "tests/biff/names/fixture.h"

namespace vellum::test {
namespace {

std::string numbered(char letter, int number) {
    return std::string(1, letter).append(std::to_string(number));
}

const std::string cell = "3A 0000 0100 0200";  // A!$C$2

TEST(NamedRanges, ASheetSeesPlainRangesThatReachIt) {
    const Book book = loaded(threeSheets({
        lbl("Cell", cell),
        lbl("Area", "3B 0100 0000 FFFF 0300 0400"),
        lbl("Local", "5A 0000 0000 0000", 2),                // of sheet B, on sheet A
        lbl("Secret", "7B 0000 0000 0100 00C0 0140", 0, 1),  // marks of relative columns are left out
        lbl("Both", "3A 0300 0000 0000"),
        lbl("\6", "3B 0200 0000 0100 0000 0100", 3, 0x20),
        lbl("\x1e", "3A 0200 0000 0000", 0, 0x20),  // a code without a text
        lbl("Deleted", "3A 0400 0000 0000"),
        lbl("Elsewhere", "3A 0500 0000 0000"),
        lbl("Book", "3A 0600 0000 0000"),
        lbl("Nowhere", "3A 0900 0000 0000"),
        lbl("Broken", "3D 0000 0000 0000 0000 0000"),
        lbl("Sum", "3B 0000 0000 0100 0000 0100 19 1000 00"),
    }));
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_EQ(seen(*book, 0), "Cell@-1[1 1 2 2] Local@1[0 0 0 0] !Secret@-1[0 1 0 1] Both@-1[0 0 0 0] ");
    EXPECT_EQ(seen(*book, 1), "Area@-1[0 65535 3 4] Both@-1[0 0 0 0] ");
    EXPECT_EQ(seen(*book, 2), "Print_Area@2[0 1 0 1] \x1e@-1[0 0 0 0] ");
    int out = 0;
    EXPECT_EQ(book->getSheet(0)->namedRange(4, &out, &out, &out, &out), nullptr);
    EXPECT_STREQ(book->errorMessage(), "index is out of range");
    EXPECT_NE(book->getSheet(0)->namedRange(0, nullptr, nullptr, nullptr, nullptr), nullptr);
}

TEST(NamedRanges, FoundByTextAndScope) {
    const Book book = loaded(
        threeSheets({lbl("Rates", cell, 2), lbl("RATES", "3B 0100 0000 0100 0200 0300"), lbl("Formula", "1E 0500"),
                     lbl("Away", "3A 0500 0000 0000"), lbl("\6", "3B 0200 0000 0100 0000 0100", 3, 0x20)}));
    const struct {
        const char* name;
        int scope;
        const char* area;  // null: not found
    } cases[] = {
        {"rates", 1, "1 1 2 2"}, {"rates", -1, "0 1 2 3"},     {"rAtEs", -2, "1 1 2 2"},    {"rates", 0, nullptr},
        {"rate", -2, nullptr},   {"Formula", -1, nullptr},     {"Away", -1, nullptr},       {"", -1, nullptr},
        {nullptr, -2, nullptr},  {"print_area", 2, "0 1 0 1"}, {"print_area", -1, nullptr}, {"rates", -3, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.name ? c.name : "null") + std::to_string(c.scope));
        int r0 = -1, r1 = -1, c0 = -1, c1 = -1;
        const bool found = book->getSheet(2)->namedRangeByName(c.name, &r0, &r1, &c0, &c1, c.scope);
        EXPECT_EQ(found, c.area != nullptr);
        EXPECT_STREQ(book->errorMessage(), c.area ? "ok" : "named range is not found");
        if (c.area != nullptr) {
            EXPECT_EQ(
                std::to_string(r0) + ' ' + std::to_string(r1) + ' ' + std::to_string(c0) + ' ' + std::to_string(c1),
                c.area);
        }
        EXPECT_EQ(book->getSheet(0)->namedRangeByName(c.name, nullptr, nullptr, nullptr, nullptr, c.scope), found);
    }
}

TEST(NamedRanges, ANewBookGetsEverythingThatANameNeeds) {
    const Book book = newBook();
    auto* const a = book->addSheet("A");
    auto* const b = book->addSheet("B");
    EXPECT_TRUE(b->setNamedRangeByName("Global", 1, 3, 2, 2)) << book->errorMessage();
    EXPECT_TRUE(a->setNamedRangeByName("Own", 5, 5, 0, 0, -2, true));
    EXPECT_TRUE(a->setNamedRangeByName("OfB", 0, 0, 0, 1, 1));
    const auto records = recordsOf(saved(*book));
    EXPECT_EQ(only(records, 430), (std::vector<Record>{{430, hex("0200 0104")}}));
    EXPECT_EQ(only(records, 23), (std::vector<Record>{{23, hex("0200 0000 0100 0100 0000 0000 0000")}}));
    EXPECT_EQ(savedNames(*book),
              (std::vector<std::string>{"Global/0/0/3B0000010003000200"
                                        "0200",
                                        "Own/1/1/3A010005000000", "OfB/0/2/3B01000000000000000100"}));
    const Book again = loaded(saved(*book));
    EXPECT_EQ(seen(*again, 0), "!Own@0[5 5 0 0] OfB@1[0 0 0 1] ");
    EXPECT_EQ(seen(*again, 1), "Global@-1[1 3 2 2] ");
}

TEST(NamedRanges, ANameThatIsThereIsChangedAtItsPlace) {
    const struct {
        const char* what;
        Record before;
        const char* name;
        int rowLast, scope;
        bool hidden;
        const char* after;
    } cases[] = {
        {"an area", lbl("N", "3B 0200 0000 0100 0000 0100"), "N", 4, -1, false, "N/0/0/3B02000100040003000300"},
        {"an area becomes a cell", lbl("N", "3B 0200 0000 0100 0000 0100"), "N", 1, -1, true,
         "N/1/0/3B02000100010003000300"},
        {"a cell", lbl("N", "5A 0200 0000 0000", 0, 1), "N", 1, -1, false, "N/0/0/5A020001000300"},
        {"a cell becomes an area", lbl("N", "5A 0200 0000 0000"), "N", 2, -1, false, "N/0/0/3B02000100020003000300"},
        {"on another sheet", lbl("N", "3A 0000 0000 0000"), "N", 1, -1, false, "N/0/0/3A020001000300"},
        {"a formula", lbl("N", "1E 0500", 1), "N", 1, 0, false, "N/0/1/3A020001000300"},
        {"other case", lbl("n", "1E 0500", 2), "N", 1, -2, false, "n/0/2/3A020001000300"},
        {"a built-in name", lbl("\6", "1C17", 3, 0x21), "Print_Area", 1, 2, false, "6/32/3/3A020001000300"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(threeSheets({c.before}));
        EXPECT_TRUE(book->getSheet(2)->setNamedRangeByName(c.name, 1, c.rowLast, 3, 3, c.scope, c.hidden))
            << book->errorMessage();
        EXPECT_EQ(savedNames(*book), std::vector<std::string>{c.after});
    }
    // The very text comes before one of other case.
    const Book book = loaded(threeSheets({lbl("n", "1E 0500", 1), lbl("N", "1E 0600", 2)}));
    EXPECT_TRUE(book->getSheet(0)->setNamedRangeByName("N", 0, 0, 0, 0, -2));
    EXPECT_EQ(savedNames(*book), (std::vector<std::string>{"n/0/1/1E0500", "N/0/2/3A000000000000"}));
}

TEST(NamedRanges, ARefusedNameChangesNothing) {
    const std::string longest(255, 'n');
    const struct {
        const char* name;
        int area[4], scope;
        const char* text;
    } cases[] = {
        {"N", {-1, 0, 0, 0}, -1, "row must be in range 0-65535"},
        {"N", {0, 65536, 0, 0}, -1, "row must be in range 0-65535"},
        {"N", {0, 0, 256, 0}, -1, "col must be in range 0-255"},
        {"N", {0, 0, 0, 256}, -1, "col must be in range 0-255"},
        {"N", {1, 0, 0, 0}, -1, "rowLast must be greater than or equal to rowFirst"},
        {"N", {0, 0, 1, 0}, -1, "colLast must be greater than or equal to colFirst"},
        {"a b", {0, 0, 0, 0}, -1, "space symbol isn't allowed"},
        {"", {0, 0, 0, 0}, -1, "a name can't be empty"},
        {nullptr, {0, 0, 0, 0}, -1, "a name can't be empty"},
        {"N", {0, 0, 0, 0}, 3, "index is out of range"},
        {"N", {0, 0, 0, 0}, -3, "index is out of range"},
    };
    const Book book = loaded(threeSheets({lbl("N", "1E 0500")}));
    const auto before = saved(*book);
    auto* const sheet = book->getSheet(1);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_FALSE(sheet->setNamedRangeByName(c.name, c.area[0], c.area[1], c.area[2], c.area[3], c.scope));
        EXPECT_STREQ(book->errorMessage(), c.text);
    }
    EXPECT_FALSE(sheet->setNamedRangeByName((longest + "n").c_str(), 0, 0, 0, 0));
    EXPECT_STREQ(book->errorMessage(), "string is too long");
    EXPECT_EQ(saved(*book), before);
    EXPECT_TRUE(sheet->setNamedRangeByName(longest.c_str(), 0, 0, 0, 0));
    EXPECT_EQ(seen(*loaded(saved(*book)), 1), longest + "@-1[0 0 0 0] ");
}

TEST(NamedRanges, ARemovedNameLeavesItsPlace) {
    const Book book =
        loaded(threeSheets({lbl("_GONE1", "1E 0500"), lbl("N", cell, 1), lbl("n", "3A 0100 0000 0000"),
                            lbl("T", "29 0F00 3B 0100 0000 0000 0000 0100 3A 0100 0000 0000 10"), lbl("M", cell)}));
    auto* const b = book->getSheet(1);
    EXPECT_FALSE(b->removeNamedRange("N", 1));
    EXPECT_STREQ(book->errorMessage(), "named range is not found");
    EXPECT_FALSE(b->removeNamedRange("M", -2)) << "it is on another sheet";
    EXPECT_TRUE(b->removeNamedRange("N", -2));  // the one that reaches B
    EXPECT_STREQ(book->errorMessage(), "ok");
    EXPECT_FALSE(b->removeNamedRange("N", -1));
    EXPECT_TRUE(b->removeNamedRange("t", -2));
    EXPECT_EQ(seen(*book, 1), "");
    const std::vector<std::string> names{"_GONE1/0/0/1E0500", "N/0/1/3A000001000200", "_gone2/1/0/1C17",
                                         "_gone3/1/0/1C17", "M/0/0/3A000001000200"};
    EXPECT_EQ(savedNames(*book), names);
    // The place is taken again by a name of the same text and scope, not by another.
    EXPECT_TRUE(b->setNamedRangeByName("N", 0, 0, 0, 0, 1));
    EXPECT_TRUE(b->setNamedRangeByName("N", 7, 7, 0, 0, -1));
    EXPECT_EQ(savedNames(*book).at(2), "n/0/0/3A010007000000");
    EXPECT_EQ(savedNames(*book).at(5), "N/0/2/3A010000000000");
}

TEST(NamedRanges, WhatCannotBeParsedStaysAsItIs) {
    Record cut = lbl("Name", cell), odd = lbl("Other", cell);
    cut.body.resize(18);
    odd.body[4] = std::byte{200};  // more tokens than there are bytes
    Record texts = lbl("Told", cell);
    texts.body[10] = std::byte{2};
    texts.body.push_back(std::byte{'o'});
    texts.body.push_back(std::byte{'k'});
    const Book book = loaded(threeSheets({cut, {24, hex("0000")}, odd, texts}));
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_EQ(seen(*book, 0), "Told@-1[1 1 2 2] ");
    EXPECT_TRUE(book->getSheet(1)->setNamedRangeByName("Told", 1, 2, 3, 4));
    const auto records = only(recordsOf(saved(*book)), 24);
    EXPECT_EQ(records.at(0), cut);
    EXPECT_EQ(records.at(1), (Record{24, hex("0000")}));
    EXPECT_EQ(records.at(2), odd);
    EXPECT_EQ(hexOf(std::span(records.at(3).body).last(13)), "3B010001000200030004006F6B");
    EXPECT_TRUE(book->removeSheet(0));
    EXPECT_EQ(only(recordsOf(saved(*book)), 24).at(2), odd);
}

// Formulas count through the list that is there, whoever's it is.
TEST(NamedRanges, ANewReferenceGoesIntoTheListOfTheBook) {
    const Record addIn{430, hex("0100 013A")}, self{430, hex("0100 0104")};
    const struct {
        const char* what;
        std::vector<Record> links;
        std::vector<Record> after;
    } cases[] = {
        {"the list of another block",
         {self, addIn, {23, hex("0100 0100 FEFF FEFF")}},
         {self, addIn, {23, hex("0200 0100 FEFF FEFF 0000 0000 0000")}}},
        {"no reference to the workbook itself",
         {addIn, {23, hex("0100 0000 FEFF FEFF")}},
         {addIn, self, {23, hex("0200 0000 FEFF FEFF 0100 0000 0000")}}},
        {"no list", {self, addIn}, {self, {23, hex("0100 0000 0000 0000")}, addIn}},
        {"it is there",
         {self, {23, hex("0200 0000 FFFF FFFF 0000 0000 0000")}},
         {self, {23, hex("0200 0000 FFFF FFFF 0000 0000 0000")}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(compoundFile(withGlobals(c.links)));
        EXPECT_TRUE(book->getSheet(0)->setNamedRangeByName("N", 0, 0, 0, 0));
        std::vector<Record> links;
        for (const Record& r : recordsOf(saved(*book))) {
            if (r.id == 430 || r.id == 23) links.push_back(r);
        }
        EXPECT_EQ(links, c.after);
        EXPECT_EQ(seen(*loaded(saved(*book)), 0), "N@-1[0 0 0 0] ");
    }
}

TEST(NamedRanges, ThousandsOfNamesAreFoundInTime) {
    const Book book = newBook();
    for (int i = 0; i < 200; ++i) book->addSheet(numbered('S', i).c_str());
    for (int i = 0; i < 5000; ++i) {
        ASSERT_TRUE(book->getSheet(i % 200)->setNamedRangeByName(numbered('N', i).c_str(), i, i, 0, 0));
    }
    int found = 0;
    for (int s = 0; s < 200; ++s) {
        auto* const sheet = book->getSheet(s);
        for (int i = sheet->namedRangeCount() - 1; i >= 0; --i)
            found += sheet->namedRange(i, nullptr, nullptr, nullptr, nullptr) != nullptr;
    }
    EXPECT_EQ(found, 5000);
    for (int i = 0; i < 5000; ++i) {
        ASSERT_TRUE(book->getSheet(i % 200)->removeNamedRange(numbered('n', i).c_str(), -2));
    }
    EXPECT_EQ(book->getSheet(7)->namedRangeCount(), 0);
}

TEST(NamedRanges, WideTextsOfTheOtherCharacterType) {
    const std::unique_ptr<IBookT<wchar_t>, Release<wchar_t>> book(vlCreateBook<wchar_t>());
    auto* const sheet = book->addSheet(L"\u65e5\u672c");
    EXPECT_TRUE(sheet->setNamedRangeByName(L"\u00c4pfel\u65e5", 1, 2, 3, 4));
    int row = 0;
    EXPECT_TRUE(sheet->namedRangeByName(L"\u00e4PFEL\u65e5", &row, nullptr, nullptr, nullptr));
    EXPECT_EQ(row, 1);
    EXPECT_EQ(std::wstring(sheet->namedRange(0, nullptr, nullptr, nullptr, nullptr)), L"\u00c4pfel\u65e5");
}

}  // namespace
}  // namespace vellum::test
