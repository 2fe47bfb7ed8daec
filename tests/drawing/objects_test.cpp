// The block of a sheet's drawing: which record belongs where, and what is broken.
#include <set>

#include "engine/facts/digest.h"
#include "tests/biff/sheet/fixture.h"
#include "tests/drawing/images.h"

namespace vellum::test {
namespace {

// Drawing 1 with its group shape and one text box that has client data; 8 more bytes are its text box.
const Bytes frame =
    hex("0F00 02F0 8A000000 1000 08F0 08000000 02000000 01040000 "
        "0F00 03F0 72000000 0F00 04F0 28000000 0100 09F0 10000000 00000000 00000000 00000000 00000000 "
        "0200 0AF0 08000000 00040000 05000000 "
        "0F00 04F0 3A000000 A20C 0AF0 08000000 01040000 000A0000 "
        "0000 10F0 12000000 000000000000000000000000000000000000 0000 11F0 00000000");
const Record textbox{236, hex("0000 0DF0 00000000")};

// An Obj of a type with sub-records behind the common one.
Record obj(const char* type, const char* rest = "0000 0000") {
    return {93, hex(std::string("1500 1200 ") + type + " 0100 1140 000000000000000000000000 " + rest)};
}

const Record chartBof{2057, hex("0006 2000 BB0D CC07 41000000 06000000")};

TEST(Objects, KeepTheirBytesAndPlaces) {
    const std::vector<Record> block{
        {236, frame},
        obj("1900"),
        textbox,
        {438, hex("1202 0000 000000000000 0300 1000 0000 0000")},
        {60, hex("00 616263")},
        {60, hex("0000 0000 00000000 0300 0000 00000000")},
        {237, hex("0000 19F1 10000000 01000000 00000000 01040000 01040000")},
    };
    OneSheet one(block);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    std::vector<Record> found;
    for (const Record& record : savedRecords(*one.book)) {
        if (record.id == 236 || record.id == 93 || record.id == 438 || record.id == 60 || record.id == 237)
            found.push_back(record);
    }
    EXPECT_EQ(found, block);
}

TEST(Objects, BrokenRecordsHaveTheirTexts) {
    const struct {
        Record broken;
        const char* text;
    } cases[] = {
        {{236, hex("0F0002F0")}, "MsoDrawing size is incorrect"},
        {{93, hex("1500")}, "error in record Obj"},
        {{93, hex("1500 1200 1900")}, "error in record Obj"},
        {obj("1400", "0400 0900 00"), "error in record FtMacro"},
        {obj("0800", "0900 FFFF 00"), "error in record FtPictFmla"},
        {obj("1000", "0E00 0300 00"), "error in record ObjLinkFmla"},
        {obj("0B00", "1200 0800 00"), "error in record FtCblsData"},
        {obj("0C00", "1100 0400 00"), "error in record FtRboData"},
        {obj("0D00", "1000 0800 00"), "error in record FtEdoData"},
        {obj("1300", "0F00 0600 00"), "error in record FtGboData"},
        {obj("1400", "1300"), "error in record FtLbsData"},
        {{438, hex("1202 0000 000000000000 0000 0000")}, "error in record TextObject"},
        {{438, hex("1202 0000 000000000000 FFFF 1000 0000 0000")}, "error in record TextObject"},
        {{438, hex("1202 0000 000000000000 0000 0000 0000 0400 00")}, "error in record ObjFmla"},
        {{236, hex("0F00 02F0 10000000")}, "OfficeArtDgContainer: file is corrupt"},
    };
    for (const auto& c : cases) EXPECT_EQ(loadText({c.broken}), c.text);
    // Lengths that are none.
    for (const char* const list : {"1300 EE1F 00000000", "1300 0000", "1300 FFFF"}) {
        EXPECT_EQ(loadText({obj("1400", list)}), "ok") << list;
    }
}

// What continues what: text and runs are counted off, another continuation is the drawing's.
TEST(Objects, ContinuationsBehindATextAreTheDrawings) {
    const Record text{438, hex("1202 0000 000000000000 0600 0800 0000 0000")};
    OneSheet one({{236, Bytes(frame.begin(), frame.begin() + 100)},
                  {60, Bytes(frame.begin() + 100, frame.end())},
                  obj("1900"),
                  {60, textbox.body},
                  text,
                  {60, hex("00 616263")},
                  {60, hex("01 640065006600")},
                  {60, hex("0600 0000 00000000")},
                  {28, hex("0400 0500 0000 0100 0100 00 41")}});
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_STREQ(one.sheet->readComment(4, 5), "abcdef");
    ASSERT_TRUE(one.sheet->removeComment(4, 5)) << one.book->errorMessage();
    const auto left = savedRecords(*one.book);
    ASSERT_EQ(only(left, 236).size(), 1u);
    EXPECT_EQ(only(left, 236)[0].body.size(), 80u);  // the frame
    EXPECT_TRUE(only(left, 93).empty() && only(left, 438).empty() && only(left, 60).empty());
}

TEST(Objects, AChartGoesFromItsBofToTheEofThatBalancesIt) {
    Bytes whole = frame;
    whole.insert(whole.end(), textbox.body.begin(), textbox.body.end());
    const std::vector<Record> block{{236, whole}, obj("0500"), chartBof,   {4097, hex("0100")},
                                    chartBof,     eof,         {4098, {}}, eof};
    OneSheet one(block);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    const auto saved = savedRecords(*one.book);
    const auto at = std::ranges::search(saved, std::vector<Record>(block.begin() + 2, block.end() - 1));
    EXPECT_FALSE(at.empty());
    ASSERT_TRUE(one.sheet->writeComment(0, 0, "t", "A", 10, 10)) << one.book->errorMessage();
    EXPECT_EQ(only(savedRecords(*one.book), 4097).size(), 1u);
}

/// A drawing record around what it holds.
Bytes art(std::uint16_t verAndInstance, std::uint16_t type, const std::vector<Bytes>& parts) {
    Bytes made(8);
    for (const Bytes& part : parts) made.insert(made.end(), part.begin(), part.end());
    storeLe(&made[0], verAndInstance);
    storeLe(&made[2], type);
    storeLe(&made[4], static_cast<std::uint32_t>(made.size() - 8));
    return made;
}

// Its pieces behind the first 8,224 bytes are continuations, like parts of a text and of what has no drawing.
TEST(Objects, AChartsDrawingOfManyRecordsGetsNumbersOfItsOwn) {
    const auto shape = [](const char* fsp, const Bytes& rest, std::size_t behind) {
        Bytes made = art(0x000F, 61444, {art(0x0A02, 61450, {hex(fsp)}), rest});
        storeLe(&made[4], static_cast<std::uint32_t>(made.size() - 8 + behind));
        return made;
    };
    const Bytes clientData = hex("0000 11F0 00000000");
    Bytes table = art(0x0013, 61451, {hex("4581 00210000"), Bytes(0x2100)});
    table.insert(table.end(), clientData.begin(), clientData.end());
    const Bytes long1 = shape("01080000 000A0000", table, textbox.body.size());
    const Bytes short1 = shape("02080000 000A0000", clientData, 0);
    const Bytes top = art(0x000F, 61444, {art(1, 61449, {Bytes(16)}), art(2, 61450, {hex("00080000 05000000")})});
    Bytes group = art(0x000F, 61443, {top});
    storeLe(&group[4], static_cast<std::uint32_t>(top.size() + long1.size() + textbox.body.size() + short1.size()));
    Bytes whole = art(0x000F, 61442, {art(0x0020, 61448, {hex("03000000 02080000")}), group, long1});
    storeLe(&whole[4], static_cast<std::uint32_t>(whole.size() - 8 + textbox.body.size() + short1.size()));

    Bytes outer = frame;
    outer.insert(outer.end(), textbox.body.begin(), textbox.body.end());
    const std::vector<Record> chart{
        {236, Bytes(whole.begin(), whole.begin() + 8224)},
        {60, Bytes(whole.begin() + 8224, whole.end())},
        obj("1900"),
        {60, textbox.body},
        {438, hex("1202 0000 000000000000 0300 1000 0000 0000")},
        {60, hex("00 616263")},
        {60, hex("0000 0000 00000000 0300 0000 00000000")},
        {60, short1},
        obj("1900"),
        {4198, hex("0102")},
        {60, short1},  // of the record in front
    };
    std::vector<Record> block{{236, outer}, obj("0500"), chartBof};
    block.insert(block.end(), chart.begin(), chart.end());
    block.push_back(eof);
    OneSheet one(block);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    ASSERT_NE(one.book->addSheet("Copy", one.sheet), nullptr) << one.book->errorMessage();
    const auto copied = savedRecords(*one.book, 1);
    const auto at = std::ranges::find(copied, chartBof);
    ASSERT_TRUE(copied.end() - at > static_cast<std::ptrdiff_t>(chart.size()));

    auto expected = chart;
    const auto first = loadLe<std::uint32_t>(&at[1].body[24 + 16 + 24 + 8]);  // of the group's shape
    EXPECT_NE(first, 2048u);
    EXPECT_EQ(first % 1024, 0u);
    storeLe(&expected[0].body[8], loadLe<std::uint16_t>(&at[1].body[8]));
    EXPECT_NE(loadLe<std::uint16_t>(&at[1].body[8]), 0x0020);
    storeLe(&expected[0].body[20], first + 2);
    storeLe(&expected[0].body[72], first);
    storeLe(&expected[0].body[96], first + 1);
    storeLe(&expected[7].body[16], first + 2);
    EXPECT_EQ(std::vector<Record>(at + 1, at + 1 + static_cast<std::ptrdiff_t>(chart.size())), expected);
}

/// The drawing group of a book with one picture and the drawings 1 to 3.
std::vector<Record> onePicture() {
    NewSheet source;
    source.book->addPictureData(png.data(), png.size());
    EXPECT_TRUE(source.sheet->placePictureSized(1, 1, 0));
    for (const char* const name : {"T", "U"}) EXPECT_TRUE(source.book->addSheet(name)->placePictureSized(1, 1, 0));
    return only(recordsOf(saved(*source.book)), 235);
}

/// How many shapes show the picture, as the saved book has it.
std::uint32_t usesOf(IBookT<char>& book) {
    const Bytes group = only(recordsOf(saved(book)), 235).at(0).body;
    const auto uid = md5(png);
    const auto* const bytes = reinterpret_cast<const std::byte*>(uid.data());
    const auto at = std::search(group.begin(), group.end(), bytes, bytes + 16) - group.begin();
    return loadLe<std::uint32_t>(&group[static_cast<std::size_t>(at) + 16 + 2 + 4]);
}

/// The shapes and the drawings that the group counts.
std::pair<std::uint32_t, std::uint32_t> countsOf(IBookT<char>& book) {
    const Bytes group = only(recordsOf(saved(book)), 235).at(0).body;
    return {loadLe<std::uint32_t>(&group[24]), loadLe<std::uint32_t>(&group[28])};
}

/// A drawing of a group and one shape that shows the picture three times.
Bytes drawingOfUses(unsigned dgid) {
    const auto spids = [dgid](const char* rest, unsigned index) {
        Bytes made = hex(std::string("00000000 ") + rest);
        storeLe(made.data(), static_cast<std::uint32_t>(1024 * dgid + index));
        return made;
    };
    const Bytes filled = art(0x000F, 61444,
                             {art(0x0A02, 61450, {spids("000A0000", 1)}), art(0x0013, 61451, {hex("8641 01000000")}),
                              art(0x0023, 61729, {hex("8641 01000000 C541 01000000")}),
                              art(0x0013, 61730, {hex("86C1 01000000 00")}), hex("0000 11F0 00000000")});
    const Bytes top = art(0x000F, 61444, {art(1, 61449, {Bytes(16)}), art(2, 61450, {spids("05000000", 0)})});
    Bytes counts = hex("02000000 00000000");
    storeLe(&counts[4], static_cast<std::uint32_t>(1024 * dgid + 1));
    return art(0x000F, 61442,
               {art(static_cast<std::uint16_t>(dgid << 4), 61448, {counts}), art(0x000F, 61443, {top, filled})});
}

// A shape names pictures in any of its tables; one that is complex has the picture itself, and tells its length.
TEST(Objects, PicturesOfEveryTableCountAsUsed) {
    const Book book = loaded(workbook({{{236, drawingOfUses(1)}, obj("1E00")}}, false, onePicture()));
    ASSERT_NE(book->getSheet(0), nullptr) << book->errorMessage();
    const auto before = usesOf(*book);
    ASSERT_NE(book->addSheet("Copy", book->getSheet(0)), nullptr) << book->errorMessage();
    EXPECT_EQ(usesOf(*book), before + 3);
    ASSERT_TRUE(book->removeSheet(1));
    EXPECT_EQ(usesOf(*book), before);
}

// The drawing of a chart, and that of a chart in it, are drawings like those of sheets.
TEST(Objects, PicturesInTheDrawingsOfChartsCountAsUsed) {
    const std::vector<Record> chart{
        chartBof, {236, drawingOfUses(2)}, obj("0500"), chartBof, {4098, {}}, {236, drawingOfUses(3)}, obj("1E00"),
        eof,      {4097, hex("0100")},     eof};
    std::vector<Record> embedded{{236, drawingOfUses(1)}, obj("0500")};
    embedded.insert(embedded.end(), chart.begin(), chart.end());
    std::vector<Record> alone{bof8};
    const auto picture = onePicture();
    alone.insert(alone.end(), picture.begin(), picture.end());
    alone.insert(alone.end(), {boundSheet("S"), boundSheet("C"), eof, sheetBof8, eof});
    alone[alone.size() - 4].body[5] = std::byte{2};
    alone.insert(alone.end(), chart.begin(), chart.end());
    const struct {
        const char* what;
        std::vector<char> file;
        std::uint32_t drawings;
        std::size_t elsewhere;  // records of the chart itself in a copy in another book
    } cases[] = {{"embedded", workbook({{}, embedded}, false, picture), 3, 0}, {"sheet", compoundFile(alone), 2, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(c.file);
        ASSERT_NE(book->getSheet(1), nullptr) << book->errorMessage();
        const auto uses = usesOf(*book);
        const auto counts = countsOf(*book);
        ASSERT_NE(book->addSheet("Copy", book->getSheet(1)), nullptr) << book->errorMessage();
        EXPECT_EQ(usesOf(*book), uses + 3 * c.drawings);
        EXPECT_EQ(countsOf(*book), std::pair(counts.first + 2 * c.drawings, counts.second + c.drawings));
        std::set<std::uint32_t> numbers;
        for (const Record& record : only(recordsOf(saved(*book)), 236)) {
            numbers.insert(loadLe<std::uint16_t>(&record.body[8]));
        }
        EXPECT_EQ(numbers.size(), 2 * c.drawings);
        ASSERT_TRUE(book->removeSheet(2));
        EXPECT_EQ(usesOf(*book), uses);
        EXPECT_EQ(countsOf(*book), counts);

        const Book other = newBook();
        ASSERT_NE(other->addSheet("Copy", book->getSheet(1)), nullptr) << other->errorMessage();
        const auto kept = savedRecords(*other);
        EXPECT_EQ(only(kept, 4097).size(), c.elsewhere);
        EXPECT_TRUE(only(kept, 4098).empty() && only(kept, 93).empty());
    }
}

TEST(Objects, SheetsThatTakeNone) {
    const Book book = loaded(compoundFile({bof8, boundSheet("C"), eof, chartBof, eof}));
    ISheetT<char>* const sheet = book->getSheet(0);
    ASSERT_NE(sheet, nullptr) << book->errorMessage();
    EXPECT_EQ(sheet->pictureTotalOnSheet(), 0);
    EXPECT_STREQ(book->errorMessage(), "ok");
    EXPECT_FALSE(sheet->writeComment(0, 0, "t", "A", 10, 10));
    EXPECT_STREQ(book->errorMessage(), "pictures and comments need a worksheet");
    OneSheet strange({{236, hex("0F00 09F9 00000000")}});
    EXPECT_FALSE(strange.sheet->writeComment(0, 0, "t", "A", 10, 10));
    EXPECT_STREQ(strange.book->errorMessage(), "the sheet's drawing can't be changed");
}

// A group in more records than one reads like one in a single record, and its end is kept.
TEST(Objects, DrawingGroups) {
    const Bytes group =
        hex("0F00 00F0 39000000 0000 06F0 18000000 02040000 02000000 02000000 01000000 01000000 02000000 "
            "3300 0BF0 06000000 BF00 08000800 AAAABBBBCC");
    const std::vector<std::vector<Record>> cuts = {
        {{235, group}},
        {{235, Bytes(group.begin(), group.begin() + 13)}, {60, Bytes(group.begin() + 13, group.end())}},
        {{235, Bytes(group.begin(), group.begin() + 7)},
         {235, Bytes(group.begin() + 7, group.begin() + 30)},
         {60, Bytes(group.begin() + 30, group.end())}},
    };
    for (const auto& records : cuts) {
        const auto file = compoundFile(withGlobals(records));
        const Book book = loaded(file);
        ASSERT_STREQ(book->errorMessage(), "ok");
        std::vector<Record> found;
        for (const Record& record : recordsOf(saved(*book))) {
            if (record.id == 235 || record.id == 60) found.push_back(record);
        }
        EXPECT_EQ(found, records);
        ASSERT_TRUE(book->getSheet(0)->writeComment(0, 0, "t", "A", 10, 10)) << book->errorMessage();
        const auto changed = only(recordsOf(saved(*book)), 235);
        ASSERT_EQ(changed.size(), 1u);
        EXPECT_TRUE(std::ranges::equal(std::span(changed[0].body).last(5), std::span(group).last(5)));
        EXPECT_EQ(Bytes(changed[0].body.begin() + 16, changed[0].body.begin() + 48),
                  hex("02080000 03000000 04000000 02000000 01000000 02000000 02000000 02000000"));
    }
    const std::pair<Bytes, const char*> broken[] = {
        {hex("0F00 01F0 00000000"), "error in record OfficeArtDggContainer"},
        {hex("0F00 00F0 18000000 0000 06F0 10000000 02040000 00000010 02000000 01000000"),
         "error in record OfficeArtFDGGBlock"},
        {hex("0F00 00F0 61000000 0000 06F0 18000000 02040000 02000000 02000000 01000000 01000000 02000000"
             "1F00 01F0 39000000 6200 07F0 31000000 0606 00000000000000000000000000000000 FF00 0D000000 01000000"
             "00000000 00000000 006E 1EF0 05000000 1122334455"),
         "OfficeArtBlip: data is corrupted"},
    };
    for (const auto& [bytes, text] : broken) {
        EXPECT_STREQ(loaded(compoundFile(withGlobals({{235, bytes}})))->errorMessage(), text);
    }
    // Identifiers of drawings up to the last one, and a picture that was deleted.
    const Book full = loaded(compoundFile(
        withGlobals({{235, hex("0F00 00F0 54000000 0000 06F0 18000000 02040000 02000000 02000000 01000000 FE0F0000"
                               "02000000 1F00 01F0 2C000000 0200 07F0 24000000 0000 00000000000000000000000000000000"
                               "FF00 00000000 00000000 00000000 00000000")}})));
    ASSERT_STREQ(full->errorMessage(), "ok");
    EXPECT_FALSE(full->getSheet(0)->writeComment(0, 0, "t", "A", 10, 10));
    EXPECT_STREQ(full->errorMessage(), "too many drawings in the workbook");
    EXPECT_FALSE(full->getSheet(0)->placePicture(0, 0, 0));
    EXPECT_STREQ(full->errorMessage(), "picture is empty");
}

}  // namespace
}  // namespace vellum::test
