// Names of a sheet that is copied.
#include "tests/biff/names/fixture.h"

namespace vellum::test {
namespace {

TEST(CopiedNames, LocalNamesFollowTheCopy) {
    const struct {
        const char* what;
        std::string tokens;  // of a name of sheet B; its reference is 1
        const char* copied;  // the copy gets reference 7
    } cases[] = {
        {"an area", "3B 0100 0000 0100 0000 0100", "3B07000000010000000100"},
        {"of another sheet", "3B 0200 0000 0100 0000 0100", "3B02000000010000000100"},
        {"a call", "3B 0100 0000 0100 0000 0100 19 1000 00", "3B0700000001000000010042010400"},
        {"a deleted sheet", "3B 0400 0000 0100 0000 0100", "3B04000000010000000100"},
        {"several sheets", "3A 0300 0000 0000", "3A030000000000"},
        {"another workbook", "3A 0500 0000 0000 3A 0100 0000 0000 03", "3A0500000000003A07000000000003"},
        {"an error", "3C 0100 0000 0000", "3C070000000000"},
        {"offsets", "2C FFFF 00C0", "2CFFFF00C0"},
        {"a text", "17 0400 42214131 3A 0100 0000 0000 08", "17040142002100410031005A07000000000008"},
        {"nothing", "", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(threeSheets({lbl("Global", "1E 0500"), lbl("Own", c.tokens, 2, 1)}));
        ASSERT_NE(book->insertSheet(0, "Copy", book->getSheet(1)), nullptr) << book->errorMessage();
        const auto names = savedNames(*book);
        ASSERT_EQ(names.size(), 3U);
        EXPECT_EQ(names.back(), std::string("Own/1/1/") + c.copied);
    }
}

TEST(CopiedNames, TheyFindEachOther) {
    // Twice is Once * 2; a global name of the same text stands in front.
    const Book book = loaded(threeSheets(
        {lbl("Once", "1E 0500"), lbl("Twice", "23 0300 0000 1E 0200 05", 2), lbl("Once", "3A 0100 0000 0000", 2)}));
    ASSERT_NE(book->addSheet("B's copy", book->getSheet(1)), nullptr) << book->errorMessage();
    EXPECT_EQ(savedNames(*book).at(3), "Twice/0/4/43050000001E020005");
    EXPECT_EQ(savedNames(*book).at(4).substr(0, 9), "Once/0/4/");
}

TEST(CopiedNames, PrintAreaAndTitles) {
    const Book book =
        loaded(threeSheets({lbl("\6", "3B 0100 0000 0100 0000 0100", 2, 0x20),
                            lbl("\7", "29 1700 3B 0100 0000 FFFF 0100 0300 3B 0100 0200 0400 0000 FF00 10", 2, 0x20)}));
    ASSERT_NE(book->addSheet("Copy", book->getSheet(1)), nullptr) << book->errorMessage();
    int first = 0, last = 0;
    EXPECT_TRUE(book->getSheet(3)->repeatRows(&first, &last));
    EXPECT_TRUE(book->getSheet(3)->setPrintAreaRange(7, 8, 0, 0));
    EXPECT_EQ(seen(*book, 1), "Print_Area@1[0 1 0 1] ") << "the source keeps its own";
    EXPECT_EQ(seen(*book, 3), "Print_Area@3[7 8 0 0] ");
}

TEST(CopiedNames, IntoAnotherBook) {
    const Book from =
        loaded(threeSheets({lbl("Cell", "3A 0100 0500 0000", 2), lbl("Of A", "3A 0000 0500 0000", 2),
                            lbl("Call", "1E 0500", 2), lbl("Area", "3B 0100 0500 0500 0000 0000", 2, 1)}));
    const Book to = newBook();
    to->addSheet("First");
    ASSERT_NE(to->addSheet("Second", from->getSheet(1)), nullptr) << to->errorMessage();
    EXPECT_EQ(savedNames(*to),
              (std::vector<std::string>{"Cell/0/2/3A000005000000", "Area/1/2/3B00000500050000000000"}));
}

TEST(CopiedNames, BytesThatAreNoTokensStopTheCopy) {
    const Book book = loaded(threeSheets({lbl("Odd", "3A 01", 2)}));
    const auto before = saved(*book);
    EXPECT_EQ(book->addSheet("Copy", book->getSheet(1)), nullptr);
    EXPECT_STREQ(book->errorMessage(), "ByteStream::popInt16() error");
    EXPECT_EQ(saved(*book), before);
    EXPECT_NE(book->addSheet("Copy", book->getSheet(0)), nullptr);
}

}  // namespace
}  // namespace vellum::test
