// The shared strings and rich strings.
#include <chrono>

#include "biff/strings/str_map.h"
#include "engine/failure/vlerror.h"
#include "engine/text/string_pool.h"
#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes repeated(const std::string& unit, std::size_t n) {
    Bytes all;
    const Bytes one = hex(unit);
    for (std::size_t i = 0; i < n; ++i) all.insert(all.end(), one.begin(), one.end());
    return all;
}

struct Strings {
    StringPool pool;
    StrMap map{pool};

    /// Reads records, the first of which is the SST.
    void read(const std::vector<Record>& records) {
        const auto file = compoundFile(records);
        MemoryStream stream(std::as_bytes(std::span(file)));
        Xls xls;
        xls.setStream(&stream);
        xls.measure();
        std::uint64_t counter = 0;
        xls.read(counter);
        const RecordHeader header = xls.readHeader();
        map.read(xls, header.size);
        EXPECT_EQ(xls.peekRecordId(), 10) << "all of the table and no more is taken";
    }
    std::vector<Record> written() {
        MemoryStream stream;
        Xls xls;
        xls.setStream(&stream);
        map.write(xls);
        xls.close();
        return recordsOf(stream.written());
    }
};

const Record end{10, hex("01")};

TEST(SharedStrings, EqualTextsShareOneEntry) {
    Strings s;
    EXPECT_EQ(s.map.add(L"abc"), 0U);
    EXPECT_EQ(s.map.add(L"abd"), 1U);
    EXPECT_EQ(s.map.add(L""), 2U);
    for (int i = 0; i < 997; ++i) s.map.add(L"abc");
    EXPECT_EQ(s.map.add(L""), 2U);
    EXPECT_EQ(s.map.size(), 3U);
    EXPECT_EQ(s.map.cstTotal(), 1001U);
    EXPECT_STREQ(s.map.text(1), L"abd");
    EXPECT_STREQ(s.map.text(2), L"");
    EXPECT_EQ(s.written().at(0).body, hex("E9030000 03000000 0300 01 610062006300 0300 01 610062006400 0000 01"));
}

TEST(SharedStrings, EqualStringsOfAFileKeepTheirPlaces) {
    Strings s;
    const Record sst{252, hex("05000000 03000000 0100 00 61 0100 00 62 0100 00 61")};
    s.read({sst, end});
    EXPECT_EQ(s.map.size(), 3U);
    EXPECT_EQ(s.map.add(L"a"), 2U) << "the last of them is found";
    EXPECT_EQ(s.map.add(L"b"), 1U);
    EXPECT_EQ(s.map.add(L"c"), 3U);
    EXPECT_EQ(s.written().at(0).body, hex("08000000 04000000 0100 00 61 0100 00 62 0100 00 61 0100 01 6300"));
}

TEST(SharedStrings, ReplacedTextsAreFoundUnderTheirNewName) {
    Strings s;
    s.map.add(L"old");
    s.map.add(L"other");
    s.map.replace(0, L"new");
    EXPECT_EQ(s.map.add(L"new"), 0U);
    EXPECT_EQ(s.map.add(L"old"), 2U);
    EXPECT_STREQ(s.map.text(0), L"new");
    EXPECT_THROW(s.map.replace(3, L""), vlerror);
    try {
        static_cast<void>(s.map.text(3));
        FAIL();
    } catch (const vlerror& e) {
        EXPECT_STREQ(e.what(), "StrMap: sst is out of range (2)");
    }
}

TEST(SharedStrings, RunsAndReadingsMakeADifference) {
    Strings s;
    //                                      plain      rich: 1 run         phonetic: 2 bytes            the same again
    const Record sst{252, hex("04000000 05000000 0100 00 61 0100 08 0100 61 0000 0500 0100 04 02000000 61 EEEE "
                              "0100 04 02000000 61 EEEE 0100 08 0100 61 0000 0500")};
    s.read({sst, end});
    EXPECT_EQ(s.map.add(L"a"), 0U);
    EXPECT_EQ(s.map.addRich(1), 4U) << "an equal rich string";
    EXPECT_EQ(s.map.addRich(2), 2U) << "a string with a reading is equal to none";
    EXPECT_EQ(s.map.addRich(3), 3U);
    Bytes same = sst.body;
    same[0] = std::byte{8};
    EXPECT_EQ(s.written().at(0).body, same);
}

TEST(SharedStrings, UsesCountElementsOfKnownStringsOnly) {
    Strings s;
    s.map.add(L"a");
    s.map.noteUse(0);
    s.map.noteUse(0);
    s.map.noteUse(0xFFFFFFFF);
    s.map.dropUse(0);
    EXPECT_EQ(s.map.uses(0), 1U);
    EXPECT_EQ(s.map.uses(0xFFFFFFFF), 0U);
}

// 20,000 characters of two bytes: the first part holds 8 + 3 bytes of heads, and no character is cut.
TEST(SharedStrings, ALongStringSpansThreeRecords) {
    Strings s;
    s.map.add(std::wstring(20000, L'\x20AC'));
    const auto records = s.written();
    ASSERT_EQ(records.size(), 5U);
    const std::size_t sizes[] = {8223, 8223, 8223, 8223, 8223};
    std::size_t characters = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(records[i].id, i == 0 ? 252 : 60);
        EXPECT_EQ(records[i].body.size(), sizes[i]) << i;
        characters += (records[i].body.size() - (i == 0 ? 11 : 1)) / 2;
        if (i > 0) {
            EXPECT_EQ(records[i].body[0], std::byte{1});
        }
    }
    characters += (records[4].body.size() - 1) / 2;
    EXPECT_EQ(characters, 20000U);

    Strings again;
    auto withEnd = records;
    withEnd.push_back(end);
    again.read(withEnd);
    EXPECT_EQ(again.map.text(0), std::wstring(20000, L'\x20AC'));
}

TEST(SharedStrings, PartsChangeTheirWidthAndRunsHaveNoFlags) {
    Strings s;
    s.read({{252, joined({hex("01000000 02000000 0A00 09 0200"), repeated("AC20", 4)})},
            {60, joined({hex("00"), repeated("78", 6), hex("0000 05")})},
            {60, hex("00 0200 0600")},
            {60, hex("0100 00 7A")},
            end});
    EXPECT_STREQ(s.map.text(0), L"\x20AC\x20AC\x20AC\x20ACxxxxxx");
    ASSERT_EQ(s.map.at(0).runs().size(), 2U);
    EXPECT_EQ(s.map.at(0).runs()[0], (ExtStringRun{0, 5}));
    EXPECT_EQ(s.map.at(0).runs()[1], (ExtStringRun{2, 6}));
    EXPECT_STREQ(s.map.text(1), L"z");
}

TEST(SharedStrings, FalseCountsEndInAText) {
    const char* const bodies[] = {
        "01000000 FFFFFFFF",                      // strings without end
        "01000000 01000000 FFFF 00 61",           // characters
        "01000000 01000000 0100 08 FFFF 61",      // runs
        "01000000 01000000 0100 04 FFFFFFFF 61",  // a reading
        "01000000 01000000 01",                   // a head cut short
    };
    for (const char* body : bodies) {
        SCOPED_TRACE(body);
        Strings s;
        EXPECT_THROW(s.read({{252, hex(body)}}), vlerror);
    }
}

TEST(RichStrings, RunsComeBackWithTheirFonts) {
    const Book book = newBook();
    ISheetT<char>* const sheet = book->addSheet("A");
    IRichStringT<char>* const text = book->newRichString();
    IFontT<char>* const red = text->addFont(nullptr);
    red->setColor(10);
    IFontT<char>* const first = book->fontAt(0);
    EXPECT_EQ(text->runTotal(), 0);
    EXPECT_EQ(text->runAt(0, nullptr), nullptr);
    EXPECT_STREQ(book->errorMessage(), "rich string format records are not found");
    ASSERT_TRUE(text->addRun("plain ", first));
    ASSERT_TRUE(text->addRun("r\xC3\xB6t", red));
    EXPECT_FALSE(text->addRun("foreign", newBook()->fontAt(0)));
    EXPECT_STREQ(book->errorMessage(), "specified font is not found");
    ASSERT_TRUE(sheet->writeRichText(1, 1, text)) << book->errorMessage();

    const auto file = saved(*book);
    // The font at list position 5 has index 6 in the file.
    EXPECT_EQ(only(recordsOf(file), 252).at(0).body,
              hex("01000000 01000000 0900 09 0200 70006C00610069006E002000 7200F6007400 0000 0000 0600 0600"));
    const Book again = loaded(file);
    ISheetT<char>* const loadedSheet = again->getSheet(0);
    ASSERT_TRUE(loadedSheet->isRichTextCell(1, 1));
    IRichStringT<char>* const read = loadedSheet->readRichText(1, 1);
    ASSERT_NE(read, nullptr) << again->errorMessage();
    ASSERT_EQ(read->runTotal(), 2);
    IFontT<char>* font = nullptr;
    EXPECT_STREQ(read->runAt(1, &font), "r\xC3\xB6t");
    EXPECT_EQ(font, again->fontAt(5));
    EXPECT_EQ(font->color(), 10);
    EXPECT_STREQ(read->runAt(0, &font), "plain ");
    EXPECT_EQ(font, again->fontAt(0));
    EXPECT_EQ(read->runAt(2, &font), nullptr);
    EXPECT_STREQ(again->errorMessage(), "index is out of range");

    // Into another book the fonts go along.
    const Book other = newBook();
    ISheetT<char>* const target = other->addSheet("B");
    ASSERT_TRUE(target->writeRichText(0, 0, read)) << other->errorMessage();
    IRichStringT<char>* const copied = target->readRichText(0, 0);
    EXPECT_STREQ(copied->runAt(1, &font), "r\xC3\xB6t");
    EXPECT_EQ(font->color(), 10);
    EXPECT_EQ(font, other->fontAt(other->fontTotal() - 1));
}

// The pool of a book goes with it; nothing that another one took over may point there.
TEST(RichStrings, TakenOverByAnotherBookTheyOutliveTheirOwn) {
    const Record font{49, hex("C800 0000 FF7F 9001 0000 00 00 00 00 05 00 417269616C")};
    const Record red{49, hex("C800 0000 0A00 9001 0000 00 00 00 00 05 00 417269616C")};
    //                                      rich: 1 run                phonetic: 2 bytes            both
    const Record sst{252, hex("03000000 03000000 0100 08 0100 61 0000 0500 0100 04 02000000 62 EEEF "
                              "0100 0C 0100 02000000 63 0000 0500 ABCD")};
    auto records = withGlobals({font, font, font, font, red, sst});
    records.pop_back();
    for (const char* cell : {"0000 0000 0000 00000000", "0100 0000 0000 01000000", "0200 0000 0000 02000000"})
        records.push_back({253, hex(cell)});
    records.push_back(eof);
    Book source = loaded(compoundFile(records));
    ASSERT_STREQ(source->errorMessage(), "ok");
    const Book book = newBook();
    ISheetT<char>* const sheet = book->addSheet("copy", source->getSheet(0));
    ASSERT_NE(sheet, nullptr) << book->errorMessage();
    source.reset();
    IFontT<char>* runFont = nullptr;
    for (const auto& [row, text] : {std::pair{0, "a"}, std::pair{2, "c"}}) {
        IRichStringT<char>* const rich = sheet->readRichText(row, 0);
        ASSERT_NE(rich, nullptr) << book->errorMessage();
        EXPECT_STREQ(rich->runAt(0, &runFont), text);
        EXPECT_EQ(runFont->color(), 10);
    }
    const auto file = saved(*book);
    const auto index = std::to_string(only(recordsOf(file), 49).size());  // of the last font; 4 is left out
    ASSERT_EQ(index.size(), 1U);
    EXPECT_EQ(only(recordsOf(file), 252).at(0).body,
              hex("03000000 03000000 0100 08 0100 61 0000 0" + index +
                  "00 0100 04 02000000 62 EEEF 0100 0C 0100 02000000 63 0000 0" + index + "00 ABCD"));
}

// A text to which runs are still added changes; whatever is written meanwhile must not change with it.
TEST(RichStrings, UnfinishedOnesAreNobodyElses) {
    const Book book = newBook();
    ISheetT<char>* const sheet = book->addSheet("A");
    IFontT<char>* const font = book->fontAt(0);
    IRichStringT<char>* const open = book->newRichString();
    sheet->writeString(0, 0, "");
    IRichStringT<char>* const done = book->newRichString();
    for (auto* const text : {done, open}) ASSERT_TRUE(text->addRun("x", font));
    ASSERT_TRUE(sheet->writeRichText(1, 0, done));
    ASSERT_TRUE(open->addRun("y", font));
    ASSERT_TRUE(sheet->writeRichText(2, 0, open));
    EXPECT_STREQ(sheet->readString(0, 0), "");
    EXPECT_STREQ(sheet->readString(1, 0), "x");
    EXPECT_STREQ(sheet->readString(2, 0), "xy");
    EXPECT_FALSE(sheet->writeRichText(3, 0, nullptr));
    EXPECT_STREQ(book->errorMessage(), "richString is NULL");
}

// One text in 200,000 dresses: no two are equal, and each must be found among the others.
TEST(SharedStrings, OneTextWithManyRunsIsFoundInTime) {
    Strings s;
    Bytes body = hex("400D0300 400D0300");
    constexpr std::uint32_t count = 200'000;
    std::vector<Record> records{{252, body}};
    for (std::uint32_t i = 0; i < count; ++i) {
        Bytes one = hex("0100 08 0100 61 0000 0000");
        storeLe(&one[6], i);
        if (records.back().body.size() + one.size() > 8224) records.push_back({60, {}});
        records.back().body.insert(records.back().body.end(), one.begin(), one.end());
    }
    records.push_back(end);
    s.read(records);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(s.map.add(L"a"), count);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << "some ms, minutes as one chain";
}

}  // namespace
}  // namespace vellum::test
