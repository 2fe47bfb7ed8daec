#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "cli/dump/dump.h"
#include "cli/workbook/book_file.h"
#include "cli/workbook/info.h"
#include "cli/workbook/picture_file.h"
#include "cli/workbook/pictures.h"
#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace cli {
namespace {

using namespace std::string_literals;

const std::string png = "\x89PNG\r\n\x1A\n\0\0\0\xDIHDR\0\0\0\x80\0\0\0\x64\x8\x6\0\0\0"s;

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A package with one picture at B2 of its sheet.
std::string sampleFile() {
    const std::string path = testing::TempDir() + "objects.xlsx";
    const BookPtr book(vellum::vlCreateXMLBook<char>());
    auto* const sheet = book->addSheet("S");
    EXPECT_EQ(book->addPictureData(png.data(), png.size()), 0);
    EXPECT_TRUE(sheet->placePictureSized(1, 1, 0)) << book->errorMessage();
    EXPECT_TRUE(book->saveFile(path.c_str())) << book->errorMessage();
    return path;
}

TEST(Objects, AreDumpedInTheirOrder) {
    DumpOptions options;
    options.cells = false;
    options.objects = true;
    std::ostringstream out, errors;
    EXPECT_EQ(dump(sampleFile(), options, out, errors), 0);
    EXPECT_EQ(out.str(),
              R"({"image":{"id":0,"kind":0,"format":"png","size":29,"md5":"69946ae4b353335bb75b553e9fb6ab6f"}}
{"sheet":{"index":0,"name":"S"}}
{"picture":{"index":0,"id":0,"row":1,"col":1,"rowBottom":6,"colRight":3,"x":0,"y":0,"width":128,"height":100,"link":null}}
)");
    EXPECT_EQ(errors.str(), "");
}

TEST(Objects, AreToldToPeople) {
    std::ostringstream out, errors;
    EXPECT_EQ(info(sampleFile(), out, errors), 0);
    for (const char* line : {"\nPictures: 1 png (29 bytes)\n", "1 picture\n"}) {
        EXPECT_NE(out.str().find(line), std::string::npos) << out.str();
    }
    EXPECT_EQ(out.str().find("image1.png"), std::string::npos);  // not among what is kept as bytes
}

TEST(Pictures, AreWrittenUnderNamesOfOurs) {
    const std::string folder = testing::TempDir() + "pictures/of a book";
    std::filesystem::remove_all(folder);
    std::ostringstream out, errors;
    EXPECT_EQ(pictures(sampleFile(), folder, out, errors), 0) << errors.str();
    EXPECT_EQ(out.str(), "picture-000.png  29 bytes  128 x 100  S!B2:D7\n");
    EXPECT_EQ(contentOf(folder + "/picture-000.png"), png);

    const std::string file = testing::TempDir() + "no folder";
    std::ofstream(file) << "a file";
    EXPECT_EQ(pictures(sampleFile(), file, out, errors), 1);
    std::filesystem::create_directories(folder + "/picture-000.png.folder");
    std::filesystem::remove(folder + "/picture-000.png");
    std::filesystem::create_directory(folder + "/picture-000.png");
    errors.str("");
    EXPECT_EQ(pictures(sampleFile(), folder, out, errors), 1);
    EXPECT_NE(errors.str().find("can't write the file"), std::string::npos);
    EXPECT_EQ(pictures(testing::TempDir() + "no such file.xlsx", folder, out, errors), 1);
}

TEST(Pictures, HaveWhatViewersNeed) {
    const std::string dib = "\x28\0\0\0\x4\0\0\0\x2\0\0\0\x1\0"s;
    const auto info = [&](int bits, int compression, int colours) {
        return dib + static_cast<char>(bits) + "\0"s + static_cast<char>(compression) + std::string(15, '\0') +
               static_cast<char>(colours) + std::string(7, '\0') + std::string(2000, 'p');
    };
    const auto bitmap = [](int size, int pixels) {
        const auto number = [](int n) { return std::string{static_cast<char>(n), static_cast<char>(n >> 8), 0, 0}; };
        return "BM" + number(14 + size) + "\0\0\0\0"s + number(14 + pixels);
    };
    const std::string core = "\xC\0\0\0\x4\0\x2\0\x1\0\x4\0"s + std::string(100, 'p');
    const struct {
        const char* name;
        int kind;
        std::string bytes;
        const char* extension;
        std::string front;
    } cases[] = {
        {"png", vellum::picturePng, png, "png", ""},
        {"true colours", vellum::pictureBmp, info(24, 0, 0), "bmp", bitmap(2040, 40)},
        {"256 colours", vellum::pictureBmp, info(8, 0, 0), "bmp", bitmap(2040, 40 + 1024)},
        {"10 colours", vellum::pictureBmp, info(8, 0, 10), "bmp", bitmap(2040, 40 + 40)},
        {"masks", vellum::pictureBmp, info(16, 3, 0), "bmp", bitmap(2040, 40 + 12)},
        {"core", vellum::pictureBmp, core, "bmp", bitmap(112, 12 + 48)},
        {"cut off", vellum::pictureBmp, dib, "bmp", bitmap(14, 14)},
        {"bare metafile", vellum::pictureWmf, "\x1\0\x9\0\0\x3"s, "wmf",
         "\xD7\xCD\xC6\x9A\0\0\0\0\0\0\x40\0\x30\0\x60\0\0\0\0\0"s + "\x01\x57"s},
        {"pict", vellum::picturePict, "\x11\x01 any", "pict", std::string(512, '\0')},
        {"unknown", vellum::pictureUnknown, "<svg/>", "bin", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const PictureFile file = pictureFile(c.kind, c.bytes, 64, 48);
        EXPECT_EQ(file.extension, c.extension);
        EXPECT_EQ(file.front, c.front);
    }
    EXPECT_EQ(pictureFile(vellum::pictureEmf, "\x1\0\x9\0\0\x3"s, 0, 0).front, "");  // without a size there is no box
}

}  // namespace
}  // namespace cli
