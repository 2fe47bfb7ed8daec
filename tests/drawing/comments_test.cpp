// Comments of a binary workbook, alone and beside drawings of others.
#include "tests/biff/sheet/fixture.h"
#include "tests/drawing/images.h"

namespace vellum::test {
namespace {

std::string comment(ISheetT<char>& sheet, int row, int col) {
    const char* const text = sheet.readComment(row, col);
    return text == nullptr ? "(none)" : text;
}

TEST(Comments, TheFirstOnANewSheet) {
    NewSheet one;
    ASSERT_TRUE(one.sheet->writeComment(2, 1, "h\xC3\xA4\nb", "Ann", 0, 0)) << one.book->errorMessage();
    EXPECT_EQ(comment(*one.sheet, 2, 1), "h\xC3\xA4\nb");
    const auto records = savedRecords(*one.book);
    std::vector<std::uint16_t> ids;
    for (const Record& record : records) {
        if (record.id == 236 || record.id == 93 || record.id == 438 || record.id == 60 || record.id == 28)
            ids.push_back(record.id);
    }
    EXPECT_EQ(ids, (std::vector<std::uint16_t>{236, 93, 236, 438, 60, 60, 28}));
    const auto pieces = only(records, 236);
    EXPECT_EQ(pieces[0].body,
              hex("0F00 02F0 C8000000 1000 08F0 08000000 03000000 02040000 "
                  "0F00 03F0 B0000000 0F00 04F0 28000000 0100 09F0 10000000 00000000 00000000 00000000 00000000 "
                  "0200 0AF0 08000000 00040000 05000000 "
                  "0F00 04F0 78000000 A20C 0AF0 08000000 01040000 000A0000 "
                  "9300 0BF0 36000000 8000 BC08D900 BF00 08000800 5801 00000000 8101 50000008 8301 50000008 "
                  "BF01 10001100 0102 00000000 3F02 03000300 BF03 02000A00 "
                  "0000 10F0 12000000 0300 0100 0000 0200 0000 0300 0000 0600 5A00 0000 11F0 00000000"));
    EXPECT_EQ(pieces[1].body, hex("0000 0DF0 00000000"));
    EXPECT_EQ(only(records, 93)[0].body, hex("1500 1200 1900 0100 1140 000000000000000000000000 "
                                             "0D00 1600 FC5324BA 0AC73E43 B34BA4E0 CBE0AC98 0000 10000000 0000 0000"));
    EXPECT_EQ(only(records, 438)[0].body, hex("1202 0000 000000000000 0400 1000 0000 0000"));
    EXPECT_EQ(only(records, 60)[0].body, hex("01 6800 E400 0A00 6200"));
    EXPECT_EQ(only(records, 60)[1].body, hex("0000 0500 00000000 0400 0000 00000000"));
    EXPECT_EQ(only(records, 28)[0].body, hex("0200 0100 0000 0100 0300 01 4100 6E00 6E00 00"));
    const Book again = loaded(saved(*one.book));
    EXPECT_EQ(comment(*again->getSheet(0), 2, 1), "h\xC3\xA4\nb");
    EXPECT_EQ(comment(*again->getSheet(0), 1, 2), "(none)");
    EXPECT_STREQ(again->errorMessage(), "ok");
}

TEST(Comments, TextsAndAuthors) {
    const std::string longest(32767, 'x');
    const struct {
        const char* what;
        const char* text;
        const char* author;
        std::string read;
        std::size_t authorSize;  // characters
    } cases[] = {
        {"empty text", "", "A", "", 1},
        {"no text", nullptr, "A", "", 1},
        {"no author", "t", nullptr, "t", 6},
        {"empty author", "t", "", "t", 6},
        {"long author", "t", "0123456789012345678901234567890123456789012345678901234567890", "t", 54},
        {"longest text", longest.c_str(), "A", longest, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        NewSheet one;
        ASSERT_TRUE(one.sheet->writeComment(0, 0, c.text, c.author, 10, 10)) << one.book->errorMessage();
        const auto notes = only(savedRecords(*one.book), 28);
        ASSERT_EQ(notes.size(), 1u);
        EXPECT_EQ(notes[0].body.size(), 12 + 2 * c.authorSize);
        EXPECT_EQ(comment(*loaded(saved(*one.book))->getSheet(0), 0, 0), c.read);
    }
    NewSheet one;
    EXPECT_FALSE(one.sheet->writeComment(0, 0, (longest + "x").c_str(), "A", 1, 1));
    EXPECT_STREQ(one.book->errorMessage(), "string is too long");
    EXPECT_TRUE(only(savedRecords(*one.book), 236).empty());
    EXPECT_FALSE(one.sheet->removeComment(0, 0));
    EXPECT_STREQ(one.book->errorMessage(), "this cell doesn't have a comment");
    EXPECT_FALSE(one.sheet->writeComment(0, 256, "t", "A", 1, 1));
    EXPECT_STREQ(one.book->errorMessage(), "col must be in range 0-255");
    EXPECT_EQ(one.sheet->readComment(-1, 0), nullptr);
    EXPECT_STREQ(one.book->errorMessage(), "row must be in range 0-65535");
}

TEST(Comments, OverAnotherAndAway) {
    NewSheet one;
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(one.sheet->writeComment(i, 0, std::string(1, static_cast<char>('a' + i)).c_str(), "A", 10, 10));
    ASSERT_TRUE(one.sheet->writeComment(1, 0, "new", "B", 10, 10));
    auto records = savedRecords(*one.book);
    EXPECT_EQ(only(records, 438).size(), 3u);
    // The note keeps its place and names the new object.
    EXPECT_EQ(only(records, 28)[1].body, hex("0100 0000 0000 0400 0100 01 4200 00"));
    EXPECT_EQ(comment(*one.sheet, 1, 0), "new");
    ASSERT_TRUE(one.sheet->removeComment(0, 0));
    EXPECT_EQ(comment(*one.sheet, 0, 0), "(none)");
    EXPECT_FALSE(one.sheet->removeComment(0, 0));
    const Book again = loaded(saved(*one.book));
    EXPECT_EQ(comment(*again->getSheet(0), 0, 0), "(none)");
    EXPECT_EQ(comment(*again->getSheet(0), 1, 0), "new");
    EXPECT_EQ(comment(*again->getSheet(0), 2, 0), "c");
    records = savedRecords(*again);
    EXPECT_EQ(only(records, 28).size(), 2u);
    EXPECT_EQ(only(records, 93).size(), 2u);
}

TEST(Comments, TenThousandOnOneSheet) {
    constexpr int count = 10000;
    NewSheet one;
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(one.sheet->writeComment(i, i % 200, std::to_string(i).c_str(), "A", 100, 50));
    const Book again = loaded(saved(*one.book));
    ISheetT<char>& sheet = *again->getSheet(0);
    for (int i = 0; i < count; ++i) ASSERT_EQ(comment(sheet, i, i % 200), std::to_string(i));
    // The first and every third go; those between stay what they are.
    for (int i = 0; i < count; i += 3) ASSERT_TRUE(sheet.removeComment(i, i % 200)) << again->errorMessage();
    const Book third = loaded(saved(*again));
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(comment(*third->getSheet(0), i, i % 200), i % 3 == 0 ? "(none)" : std::to_string(i));
}

// A sheet with a drawing, record by record: what was there before is the same but for lengths and counts.
TEST(Comments, BesideADrawing) {
    NewSheet one;
    one.book->addPictureData(png.data(), png.size());
    ASSERT_TRUE(one.sheet->placePictureSized(5, 5, 0));
    ASSERT_TRUE(one.sheet->writeComment(0, 0, "first", "A", 10, 10));
    const auto file = saved(*one.book);
    const auto before = sheetRecords(file);
    const Book book = loaded(file);
    ISheetT<char>& sheet = *book->getSheet(0);
    ASSERT_TRUE(sheet.writeComment(1, 1, "second", "B", 10, 10));
    ASSERT_TRUE(sheet.placePictureSized(7, 7, 0));
    const auto added = savedRecords(*book);
    const auto drawn = [](const std::vector<Record>& records) {
        std::vector<Record> found;
        for (const Record& record : records) {
            if (record.id == 236 || record.id == 93 || record.id == 438 || record.id == 60) found.push_back(record);
        }
        return found;
    };
    auto expected = drawn(before), found = drawn(added);
    ASSERT_EQ(found.size(), expected.size() + 8);
    found.resize(expected.size());
    // Lengths of the drawing and its group, the number of shapes and the last identifier.
    for (const std::size_t patched : {4, 16, 20, 28}) {
        for (Record* const record : {&expected[0], &found[0]}) storeLe(&record->body[patched], std::uint32_t{0});
    }
    EXPECT_EQ(found, expected);
    ASSERT_TRUE(sheet.removeComment(1, 1) && sheet.removePictureByIndex(1));
    auto removed = drawn(savedRecords(*book));
    auto original = drawn(before);
    for (const std::size_t count : {16, 20}) {
        for (Record* const record : {&removed[0], &original[0]}) storeLe(&record->body[count], std::uint32_t{0});
    }
    EXPECT_EQ(removed, original);
}

// The box of a text goes on behind the object: without it the comment is still read.
TEST(Comments, CopiesOfSheets) {
    NewSheet one;
    one.book->addPictureData(png.data(), png.size());
    ASSERT_TRUE(one.sheet->writeComment(3, 3, "note", "Ann", 10, 10));
    ASSERT_TRUE(one.sheet->placePictureSized(5, 5, 0, 20, 20, 0, 0, moveOnly));
    ASSERT_NE(one.book->addSheet("Copy", one.sheet), nullptr) << one.book->errorMessage();
    const Book other = newBook();
    ASSERT_NE(other->addSheet("Copy", one.sheet), nullptr) << other->errorMessage();
    for (IBookT<char>* const book : {one.book.get(), other.get()}) {
        const Book again = loaded(saved(*book));
        ISheetT<char>& sheet = *again->getSheet(again->sheetCount() - 1);
        EXPECT_EQ(comment(sheet, 3, 3), "note");
        int row = 0, width = 0;
        EXPECT_EQ(sheet.sheetPictureAt(0, &row, nullptr, nullptr, nullptr, &width, nullptr, nullptr, nullptr), 0);
        EXPECT_EQ(row, 5);
        EXPECT_EQ(width, 20);
        EXPECT_EQ(sheet.pictureTotalOnSheet(), 1);
        EXPECT_EQ(again->pictureTotal(), 1);
    }
    // A number and identifiers of its own: drawing 2, shapes from 2048 on.
    const auto copy = only(sheetRecords(saved(*one.book), 1), 236);
    EXPECT_EQ(Bytes(copy[0].body.begin() + 8, copy[0].body.begin() + 24), hex("2000 08F0 08000000 03000000 02080000"));
    ASSERT_TRUE(one.book->removeSheet(1));
    EXPECT_EQ(comment(*loaded(saved(*one.book))->getSheet(0), 3, 3), "note");
}

TEST(Comments, NotesOfTheOlderLayoutBecomeComments) {
    const OneSheet one(
        {{28, hex("0100 0200 0500 416E6E3A20")}, {28, hex("FFFF 0000 0300 626172")}, {28, hex("0200 FF00 0100 78")}},
        true);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    const Book again = loaded(saved(*one.book));
    EXPECT_EQ(comment(*one.sheet, 1, 2), "Ann: bar");
    EXPECT_EQ(comment(*again->getSheet(0), 1, 2), "Ann: bar");
    EXPECT_EQ(comment(*again->getSheet(0), 2, 255), "x");
}

TEST(Comments, WideCharacters) {
    IBookT<wchar_t>* const book = vlCreateBook<wchar_t>();
    ISheetT<wchar_t>* const sheet = book->addSheet(L"S");
    ASSERT_TRUE(sheet->writeComment(0, 0, L"\x416\x2192", L"\x42F", 10, 10));
    const wchar_t* const text = sheet->readComment(0, 0);
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text, L"\x416\x2192");
    EXPECT_EQ(book->addPictureData(png.data(), png.size()), 0);
    EXPECT_TRUE(sheet->placePicture(0, 0, 0));
    EXPECT_EQ(sheet->pictureTotalOnSheet(), 1);
    book->release();
}

}  // namespace
}  // namespace vellum::test
