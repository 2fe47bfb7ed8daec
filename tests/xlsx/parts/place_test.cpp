#include <gtest/gtest.h>

#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "tests/xlsx/parts/images.h"
#include "xlsx/parts/anchor.h"

namespace vellum::test {
namespace {

/// What a sheet says of one of its pictures: id, corners, size, offsets.
std::string placeOf(ISheetT<char>& sheet, int index, const char** link = nullptr) {
    int row = 0, col = 0, rowBottom = 0, colRight = 0, width = 0, height = 0, x = 0, y = 0;
    const int id = sheet.sheetPictureAt(index, &row, &col, &rowBottom, &colRight, &width, &height, &x, &y, link);
    std::string text = std::to_string(id);
    for (const int n : {row, col, rowBottom, colRight, width, height, x, y}) text.append(" ").append(std::to_string(n));
    return text;
}

TEST(Lengths, WithAUnitAndWithout) {
    const struct {
        const char* text;
        std::int64_t pixels;
    } cases[] = {{"914400", 96}, {"1in", 96},    {"-1in", -96},
                 {"2.54cm", 96}, {"25.4mm", 96}, {"72pt", 96},
                 {"6pc", 96},    {"6pi", 96},    {"4762", 0},
                 {"4763", 1},    {"-4763", -1},  {"1ft", 0},
                 {"in", 0},      {"", 0},        {"x", 0},
                 {"1e3in", 0},   {"1e30", 0},    {"99999999999in", std::int64_t{1} << 40}};
    for (const auto& c : cases) EXPECT_EQ(xlsx::pixelsOf(std::string_view(c.text)), c.pixels) << c.text;
}

class Placing : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        package.inSheet = "";
        book = package.book();
        sheet = book->getSheet(0);
    }
    std::string error() { return book->errorMessage(); }
    std::string part(const std::string& name) { return savedParts(*book).at(name); }

    ObjectPackage package{GetParam()};
    BookPtr book;
    ISheetT<char>* sheet = nullptr;
};
INSTANTIATE_TEST_SUITE_P(In, Placing, testing::Bool(),
                         [](const auto& dialect) { return dialect.param ? "Strict" : "Transitional"; });

// Columns have 64 pixels, rows 20.
TEST_P(Placing, TheFirstPictureMakesTheDrawingAndTheSecondUsesIt) {
    ASSERT_EQ(addPicture(*book, pngOf(128, 100)), 0);
    EXPECT_EQ(sheet->pictureTotalOnSheet(), 0);
    EXPECT_EQ(error(), "can't find drawing object");
    ASSERT_TRUE(sheet->placePictureSized(1, 1, 0)) << error();
    ASSERT_TRUE(sheet->placePictureSized(2, 0, 0, 64, 20, 10, 5, moveOnly)) << error();
    EXPECT_EQ(sheet->pictureTotalOnSheet(), 2);
    EXPECT_EQ(placeOf(*sheet, 0), "0 1 1 6 3 128 100 0 0");
    EXPECT_EQ(placeOf(*sheet, 1), "0 2 0 3 1 64 20 10 5");
    EXPECT_EQ(error(), "ok");

    const auto parts = savedParts(*book);
    EXPECT_TRUE(parts.contains("xl/drawings/drawing1.xml"));
    EXPECT_FALSE(parts.contains("xl/drawings/drawing2.xml"));
    EXPECT_NE(parts.at("xl/worksheets/_rels/sheet1.xml.rels").find("Target=\"../drawings/drawing1.xml\""),
              std::string::npos);
    EXPECT_NE(parts.at("[Content_Types].xml").find("/xl/drawings/drawing1.xml"), std::string::npos);
    const std::string& rels = parts.at("xl/drawings/_rels/drawing1.xml.rels");
    EXPECT_NE(rels.find("Id=\"rId2\""), std::string::npos);
    EXPECT_NE(rels.find("officeDocument/2006/relationships/image\""), std::string::npos);
    EXPECT_NE(rels.find("Target=\"../media/image1.png\""), std::string::npos);
    const std::string& drawing = parts.at("xl/drawings/drawing1.xml");
    for (const char* piece : {"editAs=\"oneCell\"", "name=\"Picture 2\"", "name=\"Picture 3\"", "noChangeAspect=",
                              "x=\"685800\" y=\"904875\"", "cx=\"1219370\" cy=\"1219370\"", "prst=\"rect\""}) {
        EXPECT_NE(drawing.find(piece), std::string::npos) << piece << '\n' << drawing;
    }
    const BookPtr again = newBook();
    ASSERT_TRUE(load(*again, packed({parts.begin(), parts.end()}))) << again->errorMessage();
    EXPECT_EQ(placeOf(*again->getSheet(0), 1), "0 2 0 3 1 64 20 10 5");
}

// Rows behind the last one that the sheet has are counted at once.
TEST_P(Placing, TallPicturesPassManyRows) {
    ASSERT_EQ(addPicture(*book, pngOf(100, 50)), 0);
    ASSERT_TRUE(sheet->placePictureSized(10, 0, 0, 64, 100'000, 0, 5)) << error();
    EXPECT_EQ(placeOf(*sheet, 0), "0 10 0 5010 1 64 100000 0 5");
    ASSERT_TRUE(sheet->setRow(3000, 30)) << error();  // 40 pixels
    EXPECT_EQ(placeOf(*sheet, 0), "0 10 0 5010 1 64 100020 0 5");
    ASSERT_TRUE(sheet->placePictureSized(0, 0, 0, 64, 100'000, 0, 0)) << error();
    EXPECT_EQ(placeOf(*sheet, 1), "0 0 0 4999 1 64 100000 0 0");
    ASSERT_TRUE(sheet->placePictureSized(4000, 0, 0, 64, 2'000'000'000, 0, 0)) << error();
    EXPECT_EQ(placeOf(*sheet, 2), "0 4000 0 1048575 1 64 2000000000 0 0");
}

TEST_P(Placing, AnchorsAreWalkedOverTheCells) {
    ASSERT_EQ(addPicture(*book, pngOf(100, 50)), 0);
    ASSERT_EQ(addPicture(*book, bareWmf), 1);
    const struct {
        int row, col, id, width, height, x, y;
        const char* place;
    } cases[] = {
        {0, 0, 0, 63, 19, 0, 0, "0 0 0 0 0 63 19 0 0"},
        {0, 0, 0, 64, 20, 0, 0, "0 0 0 1 1 64 20 0 0"},           // up to the next corner
        {5, 3, 0, 1000, 1, 100, 30, "0 5 3 6 20 1000 1 100 30"},  // offsets beyond the cell stay
        {3, 2, 0, -1, -1, 0, 0, "0 3 2 5 3 100 50 0 0"},
        {3, 2, 1, -1, -1, 7, 7, "1 3 2 3 2 0 0 7 7"},  // of unknown size
        {1048575, 16383, 0, 5000, 5000, 0, 0, "0 1048575 16383 1048575 16383 5000 5000 0 0"},
        {1048570, 16380, 0, 1000, 1000, 0, 0, "0 1048570 16380 1048575 16383 1000 1000 0 0"},
    };
    int index = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.place);
        ASSERT_TRUE(sheet->placePictureSized(c.row, c.col, c.id, c.width, c.height, c.x, c.y)) << error();
        EXPECT_EQ(placeOf(*sheet, index++), c.place);
    }
}

TEST_P(Placing, AScaleCountsAtTheDensityOfThePicture) {
    ASSERT_EQ(addPicture(*book, pngOf(300, 150, 5906)), 0);  // 150 dots per inch
    ASSERT_TRUE(sheet->placePicture(0, 0, 0, 1.0)) << error();
    ASSERT_TRUE(sheet->placePicture(0, 0, 0, 0.5, 2, 3, stayInPlace)) << error();
    EXPECT_EQ(placeOf(*sheet, 0), "0 0 0 4 3 192 96 0 0");
    EXPECT_EQ(placeOf(*sheet, 1), "0 0 0 2 1 96 48 2 3");
    EXPECT_NE(part("xl/drawings/drawing1.xml").find("editAs=\"absolute\""), std::string::npos);
}

TEST_P(Placing, ALinkNamesTheFileAndHasNoPart) {
    const std::string path = fileOf("a picture.png", pngOf(64, 40));
    const int id = book->addPictureLink(path.c_str(), false);
    ASSERT_EQ(id, 0) << error();
    const char* data = "";
    std::size_t size = 1;
    EXPECT_EQ(book->pictureAt(id, &data, &size), picturePng);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0u);
    ASSERT_TRUE(sheet->placePictureSized(0, 0, id)) << error();
    const char* link = nullptr;
    EXPECT_EQ(placeOf(*sheet, 0, &link), "0 0 0 2 1 64 40 0 0");
    EXPECT_STREQ(link, path.c_str());
    const auto parts = savedParts(*book);
    EXPECT_NE(parts.at("xl/drawings/_rels/drawing1.xml.rels").find("TargetMode=\"External\""), std::string::npos);
    EXPECT_NE(parts.at("xl/drawings/_rels/drawing1.xml.rels").find("a%20picture.png"), std::string::npos);
    EXPECT_NE(parts.at("xl/drawings/drawing1.xml").find("r:link=\"rId1\""), std::string::npos);
    EXPECT_FALSE(parts.contains("xl/media/image1.png"));

    // A file says where the picture is, and no more.
    const BookPtr again = newBook();
    ASSERT_TRUE(load(*again, packed({parts.begin(), parts.end()})));
    EXPECT_EQ(placeOf(*again->getSheet(0), 0, &link).substr(0, 3), "-1 ");
    EXPECT_STREQ(again->errorMessage(), "picture not found");
    EXPECT_NE(std::string(link).find("file:///"), std::string::npos);

    EXPECT_EQ(book->addPictureLink(path.c_str(), true), 1);
    EXPECT_EQ(book->addPictureLink(fileOf("no.picture", "text only").c_str(), false), 2);
    EXPECT_EQ(book->pictureAt(2, nullptr, nullptr), pictureUnknown);
    EXPECT_EQ(error(), "ok");
}

TEST_P(Placing, FailuresHaveTheirTexts) {
    EXPECT_FALSE(sheet->placePictureSized(0, 0, 0));
    EXPECT_EQ(error(), "pictureId is out of range");
    EXPECT_FALSE(sheet->placePicture(0, 0, -1));
    EXPECT_EQ(error(), "pictureId is out of range");
    ASSERT_EQ(addPicture(*book, pngOf(1, 1)), 0);
    EXPECT_FALSE(sheet->placePictureSized(0, 16384, 0));
    EXPECT_EQ(error(), "col must be in range 0-16383");
    EXPECT_FALSE(sheet->placePictureSized(-1, 0, 0));
    EXPECT_EQ(error(), "row must be in range 0-1048575");
    EXPECT_EQ(placeOf(*sheet, 0).substr(0, 2), "-1");
    EXPECT_EQ(error(), "can't find drawing object");
    EXPECT_FALSE(sheet->removePictureAt(0, 0));
    EXPECT_EQ(error(), "picture not found");
    EXPECT_FALSE(sheet->removePictureByIndex(0));
    EXPECT_EQ(error(), "picture index is out of range");
    ASSERT_TRUE(sheet->placePictureSized(0, 0, 0));
    EXPECT_EQ(placeOf(*sheet, 1).substr(0, 2), "-1");
    EXPECT_EQ(error(), "picture index is out of range");
    EXPECT_FALSE(sheet->removePictureAt(0, 1));
    EXPECT_EQ(error(), "picture not found");
    EXPECT_FALSE(sheet->removePictureByIndex(1));
    EXPECT_EQ(error(), "picture index is out of range");
    EXPECT_TRUE(sheet->removePictureAt(0, 0));
    EXPECT_EQ(sheet->pictureTotalOnSheet(), 0);
    EXPECT_EQ(error(), "ok");  // the drawing stays
}

TEST(Drawings, ADrawingThatCannotBeReachedIsNotReplaced) {
    ObjectPackage package;
    package.inSheet = "<drawing r:id=\"rId9\"/>";
    const BookPtr book = package.book();
    ASSERT_EQ(addPicture(*book, pngOf(1, 1)), 0);
    EXPECT_FALSE(book->getSheet(0)->placePictureSized(0, 0, 0));
    EXPECT_STREQ(book->errorMessage(), "can't get access to existing drawing object");
}

TEST_P(Placing, AnchorsOfAFileInTheirThreeForms) {
    package.addDrawing(
        "<xdr:twoCellAnchor>" + marker("from", 1, 19050, 1, 9525) + marker("to", 3, 0, 6, 0) + pic() +
            "</xdr:twoCellAnchor><xdr:oneCellAnchor>" + marker("from", 2, 9525, 4, 0) + extent(128 * 9525, 40 * 9525) +
            pic() + "</xdr:oneCellAnchor><xdr:absoluteAnchor><xdr:pos x=\"666750\" y=\"" +
            (GetParam() ? "1in" : "914400") + "\"/>" + extent(64 * 9525, 10 * 9525) + pic("r:embed=\"rId2\"") +
            "</xdr:absoluteAnchor>" + twoCell(plainShape) + twoCell(pic("r:embed=\"rId3\"")) +
            twoCell(pic("r:link=\"rId4\"")) + "<xdr:twoCellAnchor>" + marker("from", -5, 0, 99999999, 0) +
            marker("to", 99999, 0, 2, 0) + pic() + "</xdr:twoCellAnchor>",
        {{"rId1", "image ../media/image1.png"},
         {"rId2", "image /xl/media/image1.png"},
         {"rId3", "image ../media/nowhere.png"},
         {"rId4", "image file:///C:\\pictures\\x.png"}});
    package.parts["xl/media/image1.png"] = pngOf(1, 1);
    book = package.book();
    sheet = book->getSheet(0);
    ASSERT_EQ(sheet->pictureTotalOnSheet(), 6);
    EXPECT_EQ(placeOf(*sheet, 0), "0 1 1 6 3 126 99 2 1");
    EXPECT_EQ(placeOf(*sheet, 1), "0 4 2 6 4 128 40 1 0");
    EXPECT_EQ(placeOf(*sheet, 2), "0 4 1 5 2 64 10 6 16");
    EXPECT_EQ(error(), "ok");
    const char* link = nullptr;
    EXPECT_EQ(placeOf(*sheet, 3, &link), "-1 0 0 1 1 64 20 0 0");
    EXPECT_EQ(link, nullptr);
    EXPECT_EQ(error(), "picture not found");
    EXPECT_EQ(placeOf(*sheet, 4, &link), "-1 0 0 1 1 64 20 0 0");
    EXPECT_STREQ(link, "file:///C:\\pictures\\x.png");
    EXPECT_EQ(placeOf(*sheet, 5), "0 1048575 0 2 16383 1048512 0 0 0");  // no cell outside of a sheet
    EXPECT_TRUE(sheet->removePictureAt(4, 2));
    EXPECT_EQ(sheet->pictureTotalOnSheet(), 5);
    EXPECT_EQ(placeOf(*sheet, 1), "0 4 1 5 2 64 10 6 16");
}

TEST(Drawings, WithoutRelationshipsTheirPicturesAreNotFound) {
    ObjectPackage package;
    package.addDrawing(twoCell(pic()));
    const BookPtr book = package.book();
    EXPECT_EQ(placeOf(*book->getSheet(0), 0).substr(0, 3), "-1 ");
    EXPECT_STREQ(book->errorMessage(), "can't find drawing relationships");
}

// What stands between anchors keeps its place among those that are left.
TEST(Drawings, RemovingAPictureLeavesTheRestAsItWas) {
    const std::string alternative =
        "<mc:AlternateContent><mc:Choice Requires=\"x\"><xdr:twoCellAnchor/></mc:Choice>"
        "</mc:AlternateContent>";
    for (int removed = 0; removed < 3; ++removed) {
        std::vector<std::string> anchors{alternative,         twoCell(pic(), 1), twoCell(pic(), 2), alternative,
                                         twoCell(plainShape), alternative,       twoCell(pic(), 3)};
        const std::size_t places[] = {1, 2, 6};
        ObjectPackage package, expected;
        std::string all, rest;
        for (std::size_t i = 0; i < anchors.size(); ++i) {
            all += anchors[i];
            if (i != places[removed]) rest += anchors[i];
        }
        package.addDrawing(all, {{"rId1", "image ../media/image1.png"}});
        expected.addDrawing(rest, {{"rId1", "image ../media/image1.png"}});
        const BookPtr book = package.book(), wanted = expected.book();
        EXPECT_TRUE(book->getSheet(0)->removePictureByIndex(removed)) << book->errorMessage();
        EXPECT_EQ(savedParts(*book).at("xl/drawings/drawing1.xml"), savedParts(*wanted).at("xl/drawings/drawing1.xml"))
            << removed;
    }
}

}  // namespace
}  // namespace vellum::test
