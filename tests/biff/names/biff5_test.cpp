// Formulas and names of books from before BIFF8: what a save makes of them.
#include "tests/biff/names/fixture.h"
#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

/// A Formula at row 2, column 1, whose value is 7.
Record formula(const std::string& tokens, const std::string& extra = "", const std::string& place = "0200 0100") {
    Bytes body = hex(place + "0F00 0000000000001C40 0000 00000000");
    const Bytes rgce = hex(tokens), rest = hex(extra);
    body.push_back(static_cast<std::byte>(rgce.size()));
    body.push_back({});
    body.insert(body.end(), rgce.begin(), rgce.end());
    body.insert(body.end(), rest.begin(), rest.end());
    return {6, body};
}

std::string expressionOf(const Record& record) {
    return record.id == 6 ? hexOf(std::span(record.body).subspan(20)) : "no formula";
}

const std::string own2 = "FEFF 0000000000000000 0100 0100", gone = "FEFF 0000000000000000 FFFF FFFF",
                  other = "0100 0000000000000000 0100 0100";

const struct {
    const char* what;
    std::string tokens, extra;
    const char* saved;  // null: the value alone
} tokensInTheNewerFormCases[] = {
    {"operators and numbers", "1E0700 1F000000000000F03F 03 13 1D01 1C07 08", "",
     "1300"
     "1E07001F000000000000F03F03131D011C0708"},
    {"a text", "17 02 6162", "",
     "0500"
     "1702006162"},
    {"cells", "24 0100 02 44 01C0 02 64 FF7F 00", "",
     "0F00"
     "2401000200"
     "44010002C0"
     "64FF3F0040"},
    {"an area", "25 0100 03C0 01 02", "",
     "0900"
     "250100030001"
     "0002C0"},
    {"broken cells", "2A 112233 2B 112233445566 03", "",
     "0F00"
     "2A00000000"
     "2B0000000000000000"
     "03"},
    {"a name", "23 0200 000000000000000000000000", "",
     "0500"
     "2302000000"},
    {"on another sheet", "3A" + own2 + "0000 00", "",
     "0700"
     "3A000000000000"},
    {"on a deleted sheet", "3B" + gone + "0000 0100 00 01", "",
     "0B00"
     "3B00000000010000000100"},
    {"in another book", "3A" + other + "0000 00", "", nullptr},
    {"a name of this book", "59 FEFF 0000000000000000 0100 000000000000000000000000", "",
     "0500"
     "4301000000"},
    {"a name elsewhere", "39 0100 0000000000000000 0100 000000000000000000000000", "", nullptr},
    // IF(A1,"a",2): the ways to the branches change with the widths.
    {"branches", "24 00C0 00 19 02 0700 17 01 61 19 08 0A00 1E 0200 19 08 0300 22 03 0100", "",
     "1C00"
     "240000"
     "00C0"
     "19020800"
     "17010061"
     "19080A00"
     "1E0200"
     "19080300"
     "22030100"},
    {"a way into a token", "24 00C0 00 19 02 0600 17 01 61 19 08 0A00 1E 0200 19 08 0300 22 03 0100", "", nullptr},
    {"a choice", "1E0100 19 04 0200 0600 0D00 1400 17 01 61 19 08 0A00 1E 0200 19 08 0300 22 03 6400", "",
     "2000"
     "1E0100"
     "19040200"
     "06000E001500"
     "17010061"
     "19080A00"
     "1E0200"
     "19080300"
     "22036400"},
    {"a union", "29 0900 25 0000 0000 00 00 10", "", nullptr},
    {"a union of its size", "29 0900 24 0000 00 24 0000 00 10", "",
     "0E00"
     "290B00"
     "2400000000"
     "2400000000"
     "10"},
    {"an array", "60 00000000000000", "02 0100 01 000000000000F03F 02 02 6162",
     "0800"
     "6000000000000000"
     "010000"
     "01000000000000F03F"
     "0202000"
     "06162"},
    {"an array that is cut", "60 00000000000000", "02 0100 01 000000000000F03F 02 05 6162", nullptr},
    {"no token", "FF", "", nullptr},
    {"half a token", "24 00", "", nullptr},
};

TEST(Biff5, TokensInTheNewerForm) {
    for (const auto& c : tokensInTheNewerFormCases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(workbook({{formula(c.tokens, c.extra)}, {}}, true));
        ASSERT_STREQ(book->errorMessage(), "ok");
        const auto records = savedRecords(*book);
        const auto cell = std::ranges::find_if(records, [](const Record& r) { return r.id == 6 || r.id == 515; });
        ASSERT_NE(cell, records.end());
        EXPECT_EQ(expressionOf(*cell), c.saved ? c.saved : "no formula");
        EXPECT_EQ(dynamic_cast<IBookNames&>(*book).outside().lostFormulas, c.saved ? 0 : 1);
        const Book again = loaded(saved(*book));
        EXPECT_EQ(again->getSheet(0)->readNumber(2, 1), 7.0);
    }
}

TEST(Biff5, SharedTokensGoWithTheirUsers) {
    const Record user = formula("01 0200 0100", "", "0300 0100"), anchor = formula("01 0200 0100");
    const auto shared = [](const std::string& tokens) {
        const Bytes rgce = hex(tokens);
        Bytes body = hex("0200 0300 01 01 00 02");
        body.push_back(static_cast<std::byte>(rgce.size()));
        body.push_back({});
        body.insert(body.end(), rgce.begin(), rgce.end());
        return Record{1212, body};
    };
    const auto array = [](const std::string& tokens) {
        const Bytes rgce = hex(tokens);
        Bytes body = hex("0200 0300 01 01 0000 00000000");
        body.push_back(static_cast<std::byte>(rgce.size()));
        body.push_back({});
        body.insert(body.end(), rgce.begin(), rgce.end());
        return Record{545, body};
    };
    const struct {
        const char* what;
        std::vector<Record> records;
        std::string tokens;  // of the record behind the anchor; "" when all become values
        int lost;
    } cases[] = {
        // A row offset of -1 has 14 bits in the older form.
        {"shared", {anchor, shared("2C FFFF FF"), user}, "05002CFFFFFFC0", 0},
        {"shared without a newer form", {anchor, shared("3A" + other + "0000 00"), user}, "", 2},
        {"an array", {anchor, array("25 0000 0100 00 00"), user}, "0900250000010000000000", 0},
        {"an array without a newer form", {anchor, array("18 01 00000000"), user}, "", 2},
        {"nothing there", {anchor, user}, "", 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(workbook({c.records}, true));
        const auto records = savedRecords(*book);
        std::string tokens;
        for (const Record& r : records) {
            if (r.id == 1212) tokens = hexOf(std::span(r.body).subspan(8));
            if (r.id == 545) tokens = hexOf(std::span(r.body).subspan(12));
        }
        EXPECT_EQ(tokens, c.tokens);
        EXPECT_EQ(std::ranges::count(idsOf(records), 6), c.lost == 0 ? 2 : 0);
        EXPECT_EQ(dynamic_cast<IBookNames&>(*book).outside().lostFormulas, c.lost);
    }
}

TEST(Biff5, NamesAreFoundAndSaved) {
    const auto old = [](const std::string& text, const std::string& tokens, std::uint8_t itab = 0) {
        Record name = lbl(text, tokens, itab);
        name.body.erase(name.body.begin() + 14);  // no flags in front of the text
        name.body[6] = std::byte{2};
        return name;
    };
    const Book book =
        loaded(workbook({{}, {}}, true,
                        {old("Cell", "3A" + own2 + "0500 02"), old("Area", "3B" + own2 + "0500 0600 02 03", 2),
                         old("Away", "3A" + other + "0500 02"), old("Sum", "1E0700"), old("Macro", "")}));
    ASSERT_STREQ(book->errorMessage(), "ok");
    for (const Book* b : {&book}) {
        EXPECT_EQ(seen(**b, 1), "Cell@-1[5 5 2 2] Area@1[5 6 2 3] ");
        EXPECT_EQ(seen(**b, 0), "");
    }
    EXPECT_EQ(savedNames(*book), (std::vector<std::string>{"Cell/0/0/3A000005000200", "Area/0/2/3B00000500060002000300",
                                                           "Away/0/0/1C17", "Sum/0/0/1E0700", "Macro/0/0/"}));
    EXPECT_EQ(seen(*loaded(saved(*book)), 1), seen(*book, 1));
}

}  // namespace
}  // namespace vellum::test
