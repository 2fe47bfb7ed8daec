#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

std::string rgb(IBookT<char>& book, int color) {
    int r = -1, g = -1, b = -1;
    if (!book.unpackColor(color, &r, &g, &b)) return book.errorMessage();
    char text[16];
    std::snprintf(text, sizeof text, "%02X%02X%02X", r, g, b);
    return text;
}

TEST(Palette, ColoursAreTakenFromTheFirstEntryOn) {
    const Book book = newBook();
    book->addSheet("A");
    EXPECT_TRUE(only(recordsOf(saved(*book)), 146).empty());
    EXPECT_EQ(book->packColor(255, 0, 0), 10) << "a colour that is there already";
    EXPECT_EQ(book->packColor(1, 2, 3), 8);
    EXPECT_EQ(book->packColor(1, 2, 4), 9);
    EXPECT_EQ(book->packColor(1, 2, 5), 11) << "10 is in use";
    EXPECT_EQ(book->packColor(1, 2, 3), 8);
    for (int i = 0; i < 52; ++i) EXPECT_EQ(book->packColor(7, 7, i), 12 + i);
    EXPECT_EQ(book->packColor(9, 9, 9), noColor);
    EXPECT_STREQ(book->errorMessage(), "no free color index, limit is reached for xls format");
    const auto record = only(recordsOf(saved(*book)), 146).at(0).body;
    EXPECT_EQ(record.size(), 226U);
    EXPECT_EQ(Bytes(record.begin(), record.begin() + 14), hex("3800 01020300 01020400 FF000000"));
    EXPECT_EQ(rgb(*loaded(saved(*book)), 63), "070733");
}

TEST(Palette, FixedAndChangedColours) {
    // Two entries in the file, the rest as always.
    const Book book = loaded(compoundFile(withGlobals({{146, hex("0200 11223300 44556600")}})));
    const struct {
        int index;
        const char* rgb;
    } cases[] = {{0, "000000"},
                 {1, "FFFFFF"},
                 {7, "00FFFF"},
                 {8, "112233"},
                 {9, "445566"},
                 {10, "FF0000"},
                 {63, "333333"},
                 {64, "index is out of range"},
                 {-1, "index is out of range"}};
    for (const auto& c : cases) EXPECT_EQ(rgb(*book, c.index), c.rgb) << c.index;
    EXPECT_EQ(book->packColor(1, 1, 1), 8) << "after a load no entry counts as used";
    EXPECT_TRUE(book->unpackColor(9, nullptr, nullptr, nullptr));
}

}  // namespace
}  // namespace vellum::test
