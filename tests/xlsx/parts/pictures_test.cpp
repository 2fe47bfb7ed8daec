#include <gtest/gtest.h>

#include "engine/api/enums.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "tests/xlsx/parts/images.h"

namespace vellum::test {
namespace {

TEST(Pictures, KindTypeAndSizeOfEachFormat) {
    const struct {
        std::string bytes;
        int kind;
        const char *extension, *contentType;
        int width, height;
    } cases[] = {
        {pngOf(64, 48), picturePng, "png", "image/png", 64, 48}, {jpeg40x30, pictureJpeg, "jpg", "image/jpeg", 40, 30},
        {gif5x2, pictureGif, "gif", "image/gif", 5, 2},          {wmf96x48, pictureWmf, "wmf", "image/x-wmf", 96, 48},
        {bmp3x4, pictureBmp, "bmp", "image/bmp", 3, 4},          {emf8x9, pictureEmf, "emf", "image/x-emf", 8, 9},
        {bareWmf, pictureEmf, "emf", "image/x-emf", 0, 0},       {tiff7x6, pictureTiff, "tiff", "image/tiff", 7, 6},
    };
    const BookPtr book = newBook();
    book->addSheet("S");
    int expectedId = 0;
    std::map<std::string, int> names;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.extension);
        EXPECT_EQ(addPicture(*book, c.bytes), expectedId) << book->errorMessage();
        const char* data = nullptr;
        std::size_t size = 0;
        EXPECT_EQ(book->pictureAt(expectedId, &data, &size), c.kind);
        EXPECT_EQ(std::string(data, size), c.bytes);
        int width = -1, height = -1;
        EXPECT_TRUE(dynamic_cast<IBookPictures&>(*book).pictureSize(expectedId++, &width, &height));
        EXPECT_EQ(width, c.width);
        EXPECT_EQ(height, c.height);
        const auto parts = savedParts(*book);
        const std::string name = "image" + std::to_string(++names[c.extension]) + "." + c.extension;
        EXPECT_EQ(parts.at("xl/media/" + name), c.bytes);
        EXPECT_NE(parts.at("[Content_Types].xml")
                      .find(R"(Extension=")"s + c.extension + R"(" ContentType=")" + c.contentType),
                  std::string::npos);
    }
    EXPECT_EQ(book->pictureTotal(), expectedId);
    EXPECT_STREQ(book->errorMessage(), "ok");
}

TEST(Pictures, WhatCannotBeAddedLeavesNothing) {
    const std::string folder = testing::TempDir(), empty = fileOf("empty.png", ""), three = fileOf("three.png", "abc");
    const std::string missing = folder + "no such file.png";
    const struct {
        const char* text;
        std::string bytes;
    } cases[] = {
        {"unknown picture format", "\x89PN"},
        {"unknown picture format", "\x89PNG"},
        {"unknown picture format", "<svg xmlns='http://www.w3.org/2000/svg'/>"},
        {"unknown picture format", "\x28\0\0\0\x5\0\0\0\x6\0\0\0"s},  // a bitmap without its file header
        {"unknown picture format", "II*\0\x8\0\0\0\0\0"s},            // a directory without a size
        {"gif picture is corrupted", "GIF89a"},
        {"invalid jpg file", "\xFF\xD8\xFF\xE1\0\x2?"s},
        {"jpg picture is corrupted", "\xFF\xD8\xFF\xE1\xFF\xFF"s},
    };
    const BookPtr book = newBook();
    book->addSheet("S");
    const auto before = savedParts(*book);
    for (const auto& c : cases) {
        EXPECT_EQ(addPicture(*book, c.bytes), -1);
        EXPECT_STREQ(book->errorMessage(), c.text);
    }
    const struct {
        const char *path, *text;
    } files[] = {{nullptr, "file name can't be 0"},
                 {missing.c_str(), "can't open file"},
                 {folder.c_str(), "can't open file"},
                 {empty.c_str(), "file is empty"},
                 {three.c_str(), "unknown picture format"}};
    for (const auto& c : files) {
        EXPECT_EQ(book->addPictureFile(c.path), -1);
        EXPECT_STREQ(book->errorMessage(), c.text);
        if (c.path == three.c_str()) continue;
        EXPECT_EQ(book->addPictureLink(c.path, false), -1);
        EXPECT_STREQ(book->errorMessage(), c.text);
    }
    EXPECT_EQ(book->pictureTotal(), 0);
    EXPECT_EQ(savedParts(*book), before);
    EXPECT_EQ(book->pictureAt(0, nullptr, nullptr), pictureUnknown);
    EXPECT_STREQ(book->errorMessage(), "index is out of range");
}

TEST(Pictures, NamesAreTakenInTurnAndFreeOnesFound) {
    ObjectPackage package;
    package.parts["xl/media/image2.png"] = pngOf(1, 1);
    const BookPtr book = package.book();
    EXPECT_EQ(book->pictureTotal(), 1);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(addPicture(*book, pngOf(2, 2)), i + 1);
    const auto parts = savedParts(*book);
    for (const char* name : {"image1.png", "image2.png", "image3.png", "image4.png"}) {
        EXPECT_TRUE(parts.contains("xl/media/"s + name)) << name;
    }
    EXPECT_EQ(parts.at("xl/media/image2.png"), pngOf(1, 1));
}

TEST(Pictures, OfAFileInTheOrderOfItsArchiveThumbnailsToo) {
    ObjectPackage package;
    package.parts["docProps/thumbnail.png"] = pngOf(3, 3);
    package.parts["xl/media/drawn.svg"] = "<svg/>";
    package.parts["xl/media/broken.png"] = "\x89PNG\r\n";
    package.parts["_rels/.rels"] =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
        "Id=\"rId1\" Type=\"" +
        package.ns.relationships +
        "/officeDocument\" Target=\"xl/workbook.xml\"/>"
        "<Relationship Id=\"rId2\" Type=\"http://schemas.openxmlformats.org/package/2006/relationships/metadata/"
        "thumbnail\" Target=\"docProps/thumbnail.png\"/></Relationships>";
    const BookPtr book = package.book();
    ASSERT_EQ(book->pictureTotal(), 3);
    auto& known = dynamic_cast<IBookPictures&>(*book);
    const char* data = nullptr;
    std::size_t size = 0;
    int width = -1, height = -1;
    EXPECT_EQ(book->pictureAt(0, &data, &size), picturePng);
    EXPECT_TRUE(known.isThumbnail(0));
    EXPECT_EQ(book->pictureAt(1, &data, &size), picturePng);
    EXPECT_TRUE(known.pictureSize(1, &width, &height));
    EXPECT_EQ(width, 0);  // what cannot be read fails no load
    EXPECT_EQ(book->pictureAt(2, &data, &size), pictureUnknown);
    EXPECT_STREQ(book->errorMessage(), "ok");
    EXPECT_EQ(std::string(data, size), "<svg/>");
    EXPECT_FALSE(known.isThumbnail(2));
    EXPECT_FALSE(known.pictureSize(3, &width, &height));
}

}  // namespace
}  // namespace vellum::test
