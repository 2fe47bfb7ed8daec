// Pictures of a binary workbook: what is taken, how it is stored, where it stands.
#include <zlib.h>

#include "engine/facts/digest.h"
#include "tests/biff/sheet/fixture.h"
#include "tests/drawing/images.h"

namespace vellum::test {
namespace {

int add(IBookT<char>& book, const Bytes& image) {
    return book.addPictureData(image.data(), image.size());
}

Bytes pictureBytes(IBookT<char>& book, int id, int* kind = nullptr) {
    const char* data = nullptr;
    std::size_t size = 0;
    const int found = book.pictureAt(id, &data, &size);
    if (kind != nullptr) *kind = found;
    const auto* const bytes = reinterpret_cast<const std::byte*>(data);
    return found == pictureUnknown ? Bytes() : Bytes(bytes, bytes + size);
}

Bytes behind(const Bytes& bytes, std::size_t n) {
    return {bytes.begin() + static_cast<std::ptrdiff_t>(n), bytes.end()};
}

// The bytes of the drawing group, and of the first sheet's drawing.
Bytes bodies(const std::vector<Record>& records, std::uint16_t id) {
    Bytes all;
    bool inside = false;
    for (const Record& record : records) {
        inside = record.id == id || (inside && record.id == 60);
        if (inside) all.insert(all.end(), record.body.begin(), record.body.end());
    }
    return all;
}

bool contains(const Bytes& bytes, const Bytes& part) {
    return std::search(bytes.begin(), bytes.end(), part.begin(), part.end()) != bytes.end();
}

TEST(Pictures, WhatIsTakenAndWhatIsGiven) {
    const struct {
        const char* what;
        Bytes image;
        int kind;
        std::size_t cut;    // bytes that come off
        int width, height;  // as placed; 0 stands for no matter
        const char* text = "unknown picture format";
    } cases[] = {
        {"png", png, picturePng, 0, 32, 16},
        {"jpeg", jpeg, pictureJpeg, 0, 32, 16},
        {"wmf", placeableWmf, pictureWmf, 22, 32, 16},
        {"bare wmf", bareWmf, pictureEmf, 0, 960, 720},
        {"bmp", bmp, pictureBmp, 14, 32, 16},
        {"dib", dib, pictureBmp, 0, 32, 16},
        {"emf", emf(), pictureEmf, 0, 32, 16},
        {"gif", hex("474946383961 2000 1000"), pictureUnknown, 0, 0, 0},
        {"tiff", hex("49492A0008000000"), pictureUnknown, 0, 0, 0},
        {"four bytes of png", hex("89504E47"), pictureUnknown, 0, 0, 0},
        {"text", hex("68656C6C6F20776F726C64"), pictureUnknown, 0, 0, 0},
        {"nothing", {}, pictureUnknown, 0, 0, 0},
        {"wmf of its header", Bytes(placeableWmf.begin(), placeableWmf.begin() + 22), pictureUnknown, 0, 0, 0,
         "OfficeArtBlip: buffer is empty"},
        {"bmp of its header", Bytes(bmp.begin(), bmp.begin() + 14), pictureUnknown, 0, 0, 0,
         "OfficeArtBlip: buffer is empty"},
        {"jpeg cut in a segment", Bytes(jpeg.begin(), jpeg.begin() + 12), pictureUnknown, 0, 0, 0,
         "jpg picture is corrupted"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        NewSheet one;
        const int id = add(*one.book, c.image);
        if (c.kind == pictureUnknown) {
            EXPECT_EQ(id, -1);
            EXPECT_STREQ(one.book->errorMessage(), c.text);
            EXPECT_EQ(one.book->pictureTotal(), 0);
            EXPECT_TRUE(only(recordsOf(saved(*one.book)), 235).empty());
            continue;
        }
        ASSERT_EQ(id, 0) << one.book->errorMessage();
        ASSERT_TRUE(one.sheet->placePictureSized(1, 1, id)) << one.book->errorMessage();
        const Book again = loaded(saved(*one.book));
        for (IBookT<char>* const book : {one.book.get(), again.get()}) {
            int kind = 0, width = 0, height = 0;
            EXPECT_EQ(pictureBytes(*book, 0, &kind), behind(c.image, c.cut));
            EXPECT_EQ(kind, c.kind);
            EXPECT_EQ(book->getSheet(0)->sheetPictureAt(0, nullptr, nullptr, nullptr, nullptr, &width, &height, nullptr,
                                                        nullptr),
                      0);
            EXPECT_EQ(width, c.width);
            EXPECT_EQ(height, c.height);
        }
    }
}

TEST(Pictures, TheSameBitmapWithAndWithoutFileHeaderIsStoredAlike) {
    NewSheet one;
    EXPECT_EQ(add(*one.book, bmp), 0);
    EXPECT_EQ(add(*one.book, dib), 1);
    EXPECT_EQ(pictureBytes(*one.book, 0), pictureBytes(*one.book, 1));
    const Bytes group = bodies(recordsOf(saved(*one.book)), 235);
    const auto uid = md5(dib);
    const auto* const bytes = reinterpret_cast<const std::byte*>(uid.data());
    // Twice in each entry: in its head and in its picture.
    int found = 0;
    for (auto at = group.begin(); (at = std::search(at, group.end(), bytes, bytes + 16)) != group.end(); ++at) ++found;
    EXPECT_EQ(found, 4);
}

// The first drawing of a new group, byte for byte.
TEST(Pictures, TheFirstPictureMakesGroupAndDrawing) {
    NewSheet one;
    ASSERT_EQ(add(*one.book, png), 0);
    ASSERT_TRUE(one.sheet->placePictureSized(1, 1, 0, 64, 20));
    const auto file = saved(*one.book);
    const Bytes group = bodies(recordsOf(file), 235);
    const Bytes head =
        hex("0F00 00F0 C0000000 0000 06F0 18000000 03040000 02000000 03000000 01000000 01000000 03000000 "
            "1F00 01F0 66000000 6200 07F0");
    EXPECT_EQ(Bytes(group.begin(), group.begin() + static_cast<std::ptrdiff_t>(head.size())), head);
    EXPECT_TRUE(contains(group, hex("3300 0BF0 12000000 BF00 41000008 8101 41000008 C001 40000008 "
                                    "4000 1EF1 10000000 0D000008 0C000008 17000008 F7000010")));
    const std::vector<Record> records = sheetRecords(file);
    EXPECT_EQ(only(records, 236).size(), 1u);
    EXPECT_EQ(bodies(records, 236),
              hex("0F00 02F0 9A000000 1000 08F0 08000000 03000000 02040000 "
                  "0F00 03F0 82000000 0F00 04F0 28000000 0100 09F0 10000000 00000000 00000000 00000000 00000000 "
                  "0200 0AF0 08000000 00040000 05000000 "
                  "0F00 04F0 4A000000 B204 0AF0 08000000 01040000 000A0000 "
                  "2300 0BF0 10000000 0441 01000000 05C1 04000000 33000000 "
                  "0000 10F0 12000000 0000 0100 0000 0100 0000 0200 0000 0200 2D00 0000 11F0 00000000"));
    const auto objects = only(records, 93);
    ASSERT_EQ(objects.size(), 1u);
    EXPECT_EQ(objects[0].body,
              hex("1500 1200 0800 0100 1160 000000000000000000000000 0700 0200 FFFF 0800 0200 0100 0000 0000"));
}

TEST(Pictures, IdentifiersGoOnOverDrawingsAndClusters) {
    NewSheet one;
    ISheetT<char>* const other = one.book->addSheet("T");
    ASSERT_EQ(add(*one.book, png), 0);
    for (int i = 0; i < 1100; ++i)
        ASSERT_TRUE(one.sheet->placePictureSized(i, 0, 0, 10, 10)) << one.book->errorMessage();
    ASSERT_TRUE(other->placePictureSized(0, 0, 0, 10, 10));
    const auto file = saved(*one.book);
    const Bytes group = bodies(recordsOf(file), 235);
    // spidMax, clusters and one, shapes, drawings; then 1024, 77 and 2 identifiers of drawings 1, 1 and 2.
    EXPECT_EQ(Bytes(group.begin() + 16, group.begin() + 56),
              hex("020C0000 04000000 4F040000 02000000 01000000 00040000 01000000 4D000000 02000000 02000000"));
    const auto records = sheetRecords(file);
    std::size_t bytes = 0;
    for (const Record& record : records) {
        if (record.id != 236 && record.id != 60) continue;
        bytes += record.body.size();
        EXPECT_EQ(record.id == 236, bytes <= 8224) << bytes;
    }
    const Book again = loaded(file);
    EXPECT_EQ(again->getSheet(0)->pictureTotalOnSheet(), 1100);
    ASSERT_TRUE(again->getSheet(0)->placePictureSized(0, 0, 0, 10, 10));
    EXPECT_EQ(loaded(saved(*again))->getSheet(0)->pictureTotalOnSheet(), 1101);
}

struct Placed {
    int rowTop = -1, colLeft = -1, rowBottom = -1, colRight = -1, width = -1, height = -1, x = -1, y = -1;
    bool operator==(const Placed&) const = default;
};
Placed placedAt(ISheetT<char>& sheet, int index) {
    Placed p;
    sheet.sheetPictureAt(index, &p.rowTop, &p.colLeft, &p.rowBottom, &p.colRight, &p.width, &p.height, &p.x, &p.y);
    return p;
}

// Columns are 64 pixels wide and rows 17 high, but for column 3 and row 3, which are hidden.
TEST(Pictures, AnchorsThereAndBack) {
    const struct {
        const char* what;
        int row, col, width, height, x, y;
        Placed placed;
        const char* text = "ok";
    } cases[] = {
        {"within the cell", 0, 0, 10, 10, 5, 4, {0, 0, 0, 0, 10, 10, 5, 4}},
        {"to the edge", 0, 0, 64, 17, 0, 0, {0, 0, 1, 1, 64, 17, 0, 0}},
        {"over hidden cells", 2, 2, 70, 20, 0, 0, {2, 2, 4, 4, 70, 20, 0, 0}},
        {"no extent", 5, 5, 0, 0, 1, 1, {5, 5, 5, 5, 0, 0, 1, 1}},
        {"x beyond the cell",
         0,
         0,
         10,
         10,
         100,
         4,
         {0, 1, 0, 1, 10, 10, 0, 4},
         "warning: offset_x exceed cell's width"},
        {"y beyond the cell",
         0,
         0,
         10,
         10,
         5,
         40,
         {1, 0, 1, 0, 10, 10, 5, 0},
         "warning: offset_y exceed cell's height"},
        {"both",
         0,
         0,
         10,
         10,
         100,
         40,
         {1, 1, 1, 1, 10, 10, 0, 0},
         "warning: offset_x and offset_y exceed cell's size"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        NewSheet one;
        one.sheet->setColumnHidden(3, true);
        one.sheet->setRowHidden(3, true);
        add(*one.book, png);
        EXPECT_TRUE(one.sheet->placePictureSized(c.row, c.col, 0, c.width, c.height, c.x, c.y));
        EXPECT_STREQ(one.book->errorMessage(), c.text);
        Placed found = placedAt(*one.sheet, 0);
        // An offset that is cut to the cell's end is still one of that cell.
        if (std::string(c.text) != "ok") {
            EXPECT_EQ(found.rowTop, 0);
            EXPECT_EQ(found.colLeft, 0);
            EXPECT_EQ(found.width, c.width);
            EXPECT_EQ(found.height, c.height);
            continue;
        }
        EXPECT_EQ(found, c.placed);
    }
}

TEST(Pictures, PlacementAndScale) {
    const std::pair<int, const char*> flags[] = {{moveAndSize, "0000"}, {moveOnly, "0200"}, {stayInPlace, "0300"}};
    for (const auto& [placement, wire] : flags) {
        NewSheet one;
        add(*one.book, png);
        EXPECT_TRUE(one.sheet->placePicture(0, 0, 0, 2.0, 0, 0, placement));
        const Bytes drawing = bodies(savedRecords(*one.book), 236);
        EXPECT_TRUE(contains(drawing, hex(std::string("000010F012000000") + wire + "00000000"))) << placement;
        EXPECT_EQ(placedAt(*one.sheet, 0).width, 64);
        EXPECT_EQ(placedAt(*one.sheet, 0).height, 32);
    }
}

TEST(Pictures, FailuresAndTheirTexts) {
    NewSheet one;
    add(*one.book, png);
    ASSERT_TRUE(one.sheet->placePictureSized(3, 4, 0));
    auto& book = *one.book;
    auto& sheet = *one.sheet;
    const struct {
        const char* text;
        std::function<bool()> fails;
    } cases[] = {
        {"pictureId is out of range", [&] { return !sheet.placePicture(0, 0, 1); }},
        {"pictureId is out of range", [&] { return !sheet.placePictureSized(0, 0, -1); }},
        {"incorrect picture position", [&] { return !sheet.placePictureSized(0, 250, 0, 2000, 10); }},
        {"incorrect picture position", [&] { return !sheet.placePictureSized(65530, 0, 0, 10, 2000); }},
        {"incorrect picture position", [&] { return !sheet.placePicture(0, 0, 0, 1e30); }},
        {"row must be in range 0-65535", [&] { return !sheet.placePicture(65536, 0, 0); }},
        {"col must be in range 0-255", [&] { return !sheet.removePictureAt(0, 256); }},
        {"picture not found",
         [&] {
             return sheet.sheetPictureAt(1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) ==
                    -1;
         }},
        {"picture not found", [&] { return !sheet.removePictureAt(4, 3); }},
        {"picture not found", [&] { return !sheet.removePictureByIndex(-1); }},
        {"index is out of range", [&] { return book.pictureAt(1, nullptr, nullptr) == 255; }},
        {"file name can't be 0", [&] { return book.addPictureFile(nullptr) == -1; }},
        {"can't open file", [&] { return book.addPictureFile("/no/such/picture.png") == -1; }},
        {"error in record OfficeArtBlipJPEG (2)", [&] { return add(book, hex("FFD8FFE0 0001 4A464946 00")) == -1; }},
        {"function is not supported for xls files", [&] { return book.addPictureLink("a.png", false) == -1; }},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(c.fails()) << c.text;
        EXPECT_STREQ(book.errorMessage(), c.text);
    }
    EXPECT_EQ(sheet.pictureTotalOnSheet(), 1);
    EXPECT_STREQ(book.errorMessage(), "ok");
}

TEST(Pictures, AsManyAsASheetHasNumbersFor) {
    NewSheet one;
    add(*one.book, png);
    int placed = 0;
    while (placed < 70000 && one.sheet->placePictureSized(placed % 65536, 0, 0, 10, 10)) ++placed;
    EXPECT_EQ(placed, 65535);
    EXPECT_STREQ(one.book->errorMessage(), "too many objects on the sheet");
}

TEST(Pictures, RemovingLeavesTheOthers) {
    for (const int gone : {0, 1, 2}) {
        NewSheet one;
        for (int i = 0; i < 3; ++i) {
            add(*one.book, png);
            ASSERT_TRUE(one.sheet->placePictureSized(i, i, i, 10, 10));
        }
        ASSERT_TRUE(one.sheet->removePictureAt(gone, gone));
        const Book again = loaded(saved(*one.book));
        EXPECT_EQ(again->pictureTotal(), 3);
        ISheetT<char>& sheet = *again->getSheet(0);
        ASSERT_EQ(sheet.pictureTotalOnSheet(), 2) << again->errorMessage();
        EXPECT_EQ(placedAt(sheet, 0).rowTop, gone == 0 ? 1 : 0);
        EXPECT_EQ(placedAt(sheet, 1).rowTop, gone == 2 ? 1 : 2);
        const auto records = savedRecords(*again);
        EXPECT_EQ(only(records, 93).size(), 2u);
        EXPECT_EQ(only(records, 236).size(), 2u);
        ASSERT_TRUE(sheet.removePictureByIndex(1) && sheet.removePictureByIndex(0));
        EXPECT_TRUE(only(savedRecords(*again), 93).empty());
        EXPECT_EQ(only(savedRecords(*again), 236).size(), 1u);
        EXPECT_TRUE(sheet.placePictureSized(0, 0, 1, 10, 10));
        EXPECT_EQ(loaded(saved(*again))->getSheet(0)->pictureTotalOnSheet(), 1);
    }
}

// In any order, with comments between them, and asked for after each change.
TEST(Pictures, ListedRightAfterEachRemoval) {
    for (const int step : {0, 1, 5, 12}) {
        NewSheet one;
        ISheetT<char>& sheet = *one.sheet;
        add(*one.book, png);
        std::vector<int> rows;
        for (int row = 0; row < 13; ++row) {
            ASSERT_TRUE(sheet.placePictureSized(row, 0, 0, 10, 10));
            rows.push_back(row);
            ASSERT_TRUE(row % 3 != 0 || sheet.writeComment(row, 1, "c", "A", 10, 10));
            EXPECT_EQ(sheet.pictureTotalOnSheet(), row + 1);
        }
        while (!rows.empty()) {
            const auto gone = rows.begin() + static_cast<std::ptrdiff_t>(step % static_cast<int>(rows.size()));
            ASSERT_TRUE(*gone % 3 != 0 || sheet.removeComment(*gone, 1));
            ASSERT_TRUE(sheet.removePictureByIndex(step % static_cast<int>(rows.size())));
            rows.erase(gone);
            std::vector<int> found;
            for (int i = 0; i < sheet.pictureTotalOnSheet(); ++i) found.push_back(placedAt(sheet, i).rowTop);
            EXPECT_EQ(found, rows);
        }
        EXPECT_EQ(loaded(saved(*one.book))->getSheet(0)->pictureTotalOnSheet(), 0);
    }
}

// A deflated metafile is given inflated; broken data have their text.
TEST(Pictures, DeflatedMetafiles) {
    const Bytes plain = emf();
    Bytes deflated(compressBound(plain.size()));
    auto size = static_cast<uLongf>(deflated.size());
    ASSERT_EQ(compress(reinterpret_cast<Bytef*>(deflated.data()), &size, reinterpret_cast<const Bytef*>(plain.data()),
                       plain.size()),
              Z_OK);
    deflated.resize(size);
    NewSheet one;
    ASSERT_EQ(add(*one.book, plain), 0);
    auto records = recordsOf(saved(*one.book));
    const auto group = std::ranges::find(records, 235, &Record::id);
    const auto at =
        std::search(group->body.begin(), group->body.end(), plain.begin(), plain.end()) - group->body.begin();
    const auto with = [&](const Bytes& data, std::uint32_t cb) {
        auto changed = records;
        Bytes& body = changed[static_cast<std::size_t>(group - records.begin())].body;
        body[static_cast<std::size_t>(at) - 2] = {};  // deflated
        storeLe(&body[static_cast<std::size_t>(at) - 34], cb);
        std::ranges::copy(data, body.begin() + at);
        return changed;
    };
    const auto kindOf = [&](const std::vector<Record>& changed, Bytes* bytes) {
        const Book book = loaded(compoundFile(changed));
        int kind = 0;
        *bytes = pictureBytes(*book, 0, &kind);
        return std::pair(kind, std::string(book->errorMessage()));
    };
    Bytes found;
    EXPECT_EQ(kindOf(with(deflated, 108), &found), std::pair(int{pictureEmf}, std::string("ok")));
    EXPECT_EQ(found, plain);
    EXPECT_EQ(kindOf(with(deflated, 200), &found).first, pictureEmf);  // shorter than it says: given as it is
    EXPECT_EQ(found, plain);
    const std::pair broken(int{pictureUnknown}, std::string("error in compressed data"));
    EXPECT_EQ(kindOf(with(deflated, 100), &found), broken);
    EXPECT_EQ(kindOf(with(deflated, 0xFFFFFFFF), &found), broken);
    EXPECT_EQ(kindOf(with(Bytes(40, std::byte{0x55}), 108), &found), broken);
}

}  // namespace
}  // namespace vellum::test
