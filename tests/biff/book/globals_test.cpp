// The first section of the stream: what is refused, what is kept, and in which order it is saved.
#include <algorithm>

#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

TEST(Globals, RecordsOfAWrongSizeAreNamed) {
    const struct {
        std::uint16_t id;
        std::size_t size;
        const char* text;
    } cases[] = {
        {14, 1, "CalcPrecision size is incorrect"},
        {18, 3, "Protect size is incorrect"},
        {34, 4, "Date1904 size is incorrect"},
        {47, 54, "workbook is encrypted"},
        {49, 13, "Font size is incorrect"},
        {61, 17, "Window1 size is incorrect"},
        {64, 0, "Backup size is incorrect"},
        {66, 4, "CodePage size is incorrect"},
        {133, 7, "BoundSheet8 size is incorrect"},
        {140, 2, "Country size is incorrect"},
        {141, 1, "HideObj size is incorrect"},
        {146, 5, "Palette size is incorrect"},
        {156, 1, "BuiltInFnGroupCount size is incorrect"},
        {193, 1, "Mms size is incorrect"},
        {218, 3, "BookBool size is incorrect"},
        {224, 5, "XF size is incorrect"},
        {226, 1, "InterfaceEnd size is incorrect"},
        {252, 7, "SST size is incorrect"},
        {317, 3, "RRTabId size is incorrect"},
        {352, 1, "UsesELFs size is incorrect"},
        {353, 1, "DSF size is incorrect"},
        {439, 1, "RefreshAll size is incorrect"},
        {448, 2, "Excel9File size is incorrect"},
        {449, 7, "RecalcId size is incorrect"},
        {659, 3, "Style size is incorrect"},
        {1054, 2, "Format size is incorrect"},
        {2057, 3, "Bof size is incorrect"},
        {0, 2, "read error: record id can't be 0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        const Book book = loaded(compoundFile(withGlobals({{c.id, Bytes(c.size)}})));
        EXPECT_STREQ(book->errorMessage(), c.text);
        EXPECT_EQ(book->sheetCount(), 0);
        EXPECT_EQ(book->formatTotal(), 21) << "a failed load leaves a new book";
    }
    Record old = bof8;
    old.body[0] = std::byte{0}, old.body[1] = std::byte{3};  // version 768
    EXPECT_STREQ(loaded(compoundFile({old, eof}))->errorMessage(), "This file format isn't supported");
}

TEST(Globals, ANewBookIsWrittenInThisOrder) {
    const Book book = newBook();
    book->addSheet("A");
    std::vector<std::uint16_t> ids;
    for (const Record& r : recordsOf(saved(*book))) {
        if (ids.empty() || ids.back() != r.id) ids.push_back(r.id);
        if (r.id == 10) break;
    }
    EXPECT_EQ(ids,
              (std::vector<std::uint16_t>{2057, 225, 193, 226, 92,  66, 353, 317, 156, 25,  18,  19,  431, 444, 61, 64,
                                          141,  34,  14,  439, 218, 49, 224, 659, 352, 133, 140, 449, 252, 255, 10}));
}

TEST(Globals, DefaultsOfANewBook) {
    const Book book = newBook();
    book->addSheet("A");
    const auto records = recordsOf(saved(*book));
    const struct {
        std::uint16_t id;
        std::size_t nth;
        const char* body;
    } cases[] = {
        {2057, 0, "0006 0500 9A20 CD07 C9C00000 06030000"},
        {61, 0, "0000 0F00 1B3F F627 3800 0000 0000 0100 5802"},
        {49, 4, "C800 0000 FF7F 9001 0000 00 00 00 00 05 01 41007200690061006C00"},
        //          font format prot  alignment border    colours  pattern
        {224, 0, "0000 0000 F5FF 20000000 00004020 40200000 C020"},
        {224, 1, "0100 0000 F5FF 200000F4 00004020 40200000 C020"},
        {224, 4, "0200 0000 F5FF 200000F4 00004020 40200000 C020"},
        {224, 14, "0000 0000 F5FF 200000F4 00004020 40200000 C020"},
        {224, 15, "0000 0000 0100 20000000 00004020 40200000 C020"},
        {224, 16, "0100 2C00 F5FF 200000F8 00004020 40200000 C020"},
        {224, 20, "0100 2900 F5FF 200000F8 00004020 40200000 C020"},
        {659, 0, "1080 04 FF"},
        {659, 2, "0080 00 FF"},
        {659, 5, "1480 06 FF"},
        {140, 0, "0100 0100"},
        {449, 0, "C101 0000 22BE0100"},
        {317, 0, "0100"},
        {252, 0, "00000000 00000000"},
        {255, 0, "0800"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.id) + " #" + std::to_string(c.nth));
        const auto found = only(records, c.id);
        ASSERT_GT(found.size(), c.nth);
        EXPECT_EQ(found[c.nth].body, hex(c.body));
    }
    EXPECT_EQ(only(records, 224).size(), 21U);
    EXPECT_EQ(only(records, 49).size(), 5U);
    EXPECT_EQ(only(records, 659).size(), 6U);
}

// A newer program's mark would make readers trust results that nobody calculated.
TEST(Globals, ReadersAreAskedToCalculate) {
    const struct {
        const char *loaded, *saved;
    } cases[] = {{"C101 0000 35EA0200", "C101 0000 22BE0100"},  // 191029, 114210
                 {"C101 0000 22BE0100", "C101 0000 22BE0100"},
                 {"C101 0000 17860100", "C101 0000 17860100"}};
    for (const auto& c : cases) {
        const Book book = loaded(compoundFile(withGlobals({{449, hex(c.loaded)}})));
        const auto marks = only(recordsOf(saved(*book)), 449);
        ASSERT_EQ(marks.size(), 1u) << c.loaded;
        EXPECT_EQ(marks[0].body, hex(c.saved)) << c.loaded;
    }
}

// Each kept record comes back at its place, and what goes on with it right behind it.
TEST(Globals, UnknownRecordsKeepTheirBytesAndTheirContinuations) {
    const std::vector<Record> kept{
        {448, {}},
        {211, {}},
        {445, {}},
        {442, hex("0100 00 41")},
        {2172, hex("7C08 0000 0000000000000000 0000 1500 12345678")},
        {2173, hex("7D08 0000 0000000000000000 0000 0F00 0000 0000")},
        {659, hex("0F00 0200 00 4142")},
        {2194, hex("9208 0000 00")},
        {2190, hex("8E08 01")},
        {2191, hex("8F08 02")},
        {2192, hex("9008 03")},
        {146, Bytes(2)},
        {4188, hex("0300 01")},
        {2202, hex("9A08")},
        {2211, hex("A308")},
        {2150, hex("6608 01")},
        {2066, hex("1208 02")},
        {235, hex("0F0000F0 00000000")},
        {235, hex("0200 1EF1 0100")},
        {60, hex("0000 03")},
        {255, hex("0800 0102")},
        {2147, hex("6308 0000 0000000000000000 15000000 00000000 01")},
        {2198, hex("9608 01")},
        {2175, hex("7F08 02")},
        {2203, hex("9B08")},
        {2188, hex("8C08")},
        {4711, hex("AABB")},
        {60, hex("CC")},
        {2189, hex("8D08")},
    };
    // Read in another order, and saved in this one.
    auto shuffled = kept;
    std::rotate(shuffled.begin(), shuffled.begin() + 13, shuffled.begin() + 26);
    // What goes on with a record that is not kept as bytes would go on with a stranger.
    shuffled.insert(shuffled.begin(), {{34, hex("0000")}, {60, hex("DD")}});
    const Book book = loaded(compoundFile(withGlobals(shuffled)));
    ASSERT_STREQ(book->errorMessage(), "ok");
    const auto records = recordsOf(saved(*book));
    std::vector<Record> found;
    for (const Record& r : records) {
        if (r.id == 10) break;
        if (std::ranges::find(kept, r.id, &Record::id) != kept.end()) found.push_back(r);
    }
    auto expected = kept;
    const auto palette = std::ranges::find(expected, 146, &Record::id);
    palette->body = std::ranges::find(found, 146, &Record::id)->body;  // completed with the standard colours
    EXPECT_EQ(palette->body.size(), 226U);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i], expected[i]) << i << " is " << found[i].id;
}

TEST(Globals, SheetPositionsAreTrue) {
    const Book book = newBook();
    for (const char* name : {"A", "B", "C"}) book->addSheet(name)->writeString(3, 3, name);
    const auto records = recordsOf(saved(*book));
    std::vector<std::size_t> starts;
    for (const Record& r : only(records, 2057)) starts.push_back(r.position);
    const auto sheets = only(records, 133);
    ASSERT_EQ(starts.size(), 4U);
    for (std::size_t i = 0; i < sheets.size(); ++i)
        EXPECT_EQ(loadLe<std::uint32_t>(sheets[i].body.data()), starts[i + 1]) << i;
}

// As one record such a list would have 9000 bytes.
TEST(Globals, TheIdsOfManySheetsGoOnInAnotherRecord) {
    const Record first{317, Bytes(8224, std::byte{1})}, rest{60, Bytes(776, std::byte{2})};
    const auto records = recordsOf(saved(*loaded(compoundFile(withGlobals({first, rest})))));
    EXPECT_EQ(only(records, 317), std::vector{first});
    EXPECT_EQ(only(records, 60), std::vector{rest});
}

// A file without the list of sheet ids gets one, of the sheets that are left.
TEST(Globals, TheIdsOfSheetsAreMadeWhenAFileHasNone) {
    const Record longEof{10, hex("0102")};  // its body is passed over
    const auto file = compoundFile({bof8, boundSheet("A"), boundSheet("B"), boundSheet("C"), longEof, sheetBof8, eof,
                                    sheetBof8, eof, sheetBof8, eof});
    const struct {
        int sheet;
        const char* ids;
    } cases[] = {{-1, "0100 0200 0300"}, {1, "0100"}};
    for (const auto& c : cases) {
        const Book book = newBook();
        ASSERT_TRUE(book->loadMemory(file.data(), file.size(), c.sheet)) << book->errorMessage();
        const auto again = saved(*book);
        EXPECT_EQ(only(recordsOf(again), 317).at(0).body, hex(c.ids));
        EXPECT_EQ(loaded(again)->sheetCount(), book->sheetCount());
    }
}

TEST(Globals, FlagsOfTemplatesAndReservations) {
    const Book book = loaded(compoundFile(withGlobals({{134, {}}, {96, {}}, {34, hex("0100")}})));
    EXPECT_TRUE(book->isTemplateFile());
    EXPECT_TRUE(book->isWriteProtected());
    EXPECT_TRUE(book->isDate1904());
    book->setTemplateFile(false);
    const auto records = recordsOf(saved(*book));
    EXPECT_EQ(only(records, 134).size(), 1U);
    EXPECT_TRUE(only(records, 96).empty());
}

TEST(Globals, TheUserNameKeepsItsFirst112Bytes) {
    for (const std::size_t size : {std::size_t{3}, std::size_t{112}, std::size_t{200}}) {
        Bytes body(size, std::byte{0x41});
        const Book book = loaded(compoundFile(withGlobals({{92, body}})));
        const auto saved92 = only(recordsOf(saved(*book)), 92);
        ASSERT_EQ(saved92.size(), 1U);
        ASSERT_EQ(saved92[0].body.size(), 112U);
        body.resize(std::min<std::size_t>(size, 112));
        EXPECT_TRUE(std::equal(body.begin(), body.end(), saved92[0].body.begin()));
    }
}

// Bytes of a file of the older generation: texts without flags bytes, formats of 16 bytes.
TEST(Globals, OlderFilesAreSavedInTheNewerForm) {
    const auto file = compoundFile(withGlobals(
        {
            {225, {}},
            {66, hex("E404")},
            {49, hex("F000 0200 0A00 BC02 0000 01 02 00 00 05 5461686F6D")},
            {1054, hex("A400 03 302E30")},
            //     font format prot  al rot pattern   border
            {224, hex("0000 A400 0100 1B 02 82200107 D1100620")},
            {659, hex("0000 04 4D696E65")},
            {24, hex("0000 00 01 0000 0000 0100 00000000 41")},
            {430, hex("0100 0104")},
            {4711, hex("01")},
        },
        true));
    const Book book = loaded(file);
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_EQ(book->binaryVersion(), 1280);
    EXPECT_STREQ(book->customNumFormatText(164), "0.0");
    IFormatT<char>* const format = book->formatAt(0);
    ASSERT_NE(format, nullptr);
    EXPECT_STREQ(format->font()->name(), "Tahom");
    EXPECT_EQ(format->font()->size(), 12);
    EXPECT_EQ(format->alignHorizontal(), 3);
    EXPECT_TRUE(format->wrapsText());
    EXPECT_EQ(format->alignVertical(), 1);
    EXPECT_EQ(format->rotation(), 90);
    EXPECT_EQ(format->patternForeColor(), 2);
    EXPECT_EQ(format->patternBackColor(), 65);
    EXPECT_EQ(format->fillPattern(), 1);
    EXPECT_EQ(format->borderBottom(), 4);
    EXPECT_EQ(format->borderBottomColor(), 3);
    EXPECT_EQ(format->borderTop(), 1);
    EXPECT_EQ(format->borderLeft(), 2);
    EXPECT_EQ(format->borderRight(), 3);
    EXPECT_EQ(format->borderTopColor(), 8);
    EXPECT_EQ(format->borderLeftColor(), 6);
    EXPECT_EQ(format->borderRightColor(), 64);

    const auto records = recordsOf(saved(*book));
    for (const Record& r : only(records, 2057)) {
        EXPECT_EQ(r.body.size(), 16U);
        EXPECT_EQ(loadLe<std::uint16_t>(r.body.data()), 1536);
    }
    EXPECT_EQ(only(records, 66).at(0).body, hex("B004"));
    EXPECT_EQ(only(records, 225).at(0).body, hex("B004"));
    EXPECT_EQ(only(records, 1054).at(0).body, hex("A400 0300 00 302E30"));
    EXPECT_EQ(only(records, 659).at(0).body, hex("0000 0400 00 4D696E65"));
    EXPECT_EQ(only(records, 224).at(0).body.size(), 20U);
    for (const auto dropped : std::vector<std::uint16_t>{430, 4711})
        EXPECT_TRUE(only(records, dropped).empty()) << dropped;
}

TEST(Globals, OutlineKnowsTheSheetsAndSavesNothing) {
    auto records = withGlobals({boundSheet("First")});
    const std::string path = testing::TempDir() + "outline.xls";
    const auto file = compoundFile(records);
    std::FILE* out = std::fopen(path.c_str(), "wb");
    std::fwrite(file.data(), 1, file.size(), out);
    std::fclose(out);
    const Book book = newBook();
    ASSERT_TRUE(book->loadFileOutline(path.c_str())) << book->errorMessage();
    EXPECT_EQ(book->sheetCount(), 2);
    EXPECT_STREQ(book->sheetNameAt(0), "First");
    EXPECT_EQ(book->sheetKindAt(1), sheetWorksheet);
    EXPECT_EQ(book->getSheet(0), nullptr);
    EXPECT_STREQ(book->errorMessage(), "index is out of range");
    EXPECT_EQ(book->addSheet("New"), nullptr);
    EXPECT_STREQ(book->errorMessage(), "integrity error: _boundSheets.size() != _sheets.size()");
    EXPECT_FALSE(book->saveFile(path.c_str()));
    EXPECT_STREQ(book->errorMessage(), "integrity error: _boundSheets.size() != _sheets.size()");
    EXPECT_FALSE(book->loadFileSheet(path.c_str(), 2));
    EXPECT_STREQ(book->errorMessage(), "sheetIndex is out of range");
    std::remove(path.c_str());
}

}  // namespace
}  // namespace vellum::test
