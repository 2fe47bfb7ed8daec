#include <gtest/gtest.h>

#include <string>

#include "engine/facts/image_size.h"

namespace vellum {
namespace {

using namespace std::string_literals;

std::span<const std::byte> bytes(const std::string& text) {
    return std::as_bytes(std::span(text));
}

std::string little(std::uint64_t value, int size) {
    std::string out;
    for (int i = 0; i < size; ++i) out += static_cast<char>(value >> 8 * i);
    return out;
}
std::string big(std::uint64_t value, int size) {
    const std::string reversed = little(value, size);
    return {reversed.rbegin(), reversed.rend()};
}

std::string chunk(const std::string& name, const std::string& data) {
    return big(data.size(), 4) + name + data + "crc!";
}
std::string png(const std::string& chunks = "") {
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", big(640, 4) + big(480, 4) + "\x8\x6\0\0\0"s) + chunks +
           chunk("IDAT", "pixels") + chunk("IEND", "");
}
std::string phys(std::uint32_t x, std::uint32_t y, int unit) {
    return chunk("pHYs", big(x, 4) + big(y, 4) + static_cast<char>(unit));
}

std::string segment(int marker, const std::string& data) {
    return "\xFF"s + static_cast<char>(marker) + big(data.size() + 2, 2) + data;
}
std::string frame(int marker = 0xC0) {
    return segment(marker, "\x8"s + big(30, 2) + big(40, 2) + "\x1\x1\x11\0"s);
}
std::string jfif(int units, int x, int y) {
    return segment(0xE0, "JFIF\0\x1\x2"s + static_cast<char>(units) + big(x, 2) + big(y, 2) + "\0\0"s);
}
std::string jpeg(const std::string& segments) {
    return "\xFF\xD8"s + segments + "\xFF\xD9"s;
}

std::string dib(std::uint32_t header, std::int64_t width, std::int64_t height) {
    const int side = header == 12 ? 2 : 4;
    return little(header, 4) + little(width, side) + little(height, side) + little(1, 2) + little(24, 2) + "bits";
}
std::string bmp(const std::string& bitmap) {
    return "BM"s + little(14 + bitmap.size(), 4) + "\0\0\0\0"s + little(54, 4) + bitmap;
}

std::string placeable(int left, int top, int right, int bottom, int inch) {
    return "\xD7\xCD\xC6\x9A\0\0"s + little(left, 2) + little(top, 2) + little(right, 2) + little(bottom, 2) +
           little(inch, 2) + "\0\0\0\0\0\0"s + "\x1\0\x9\0"s;
}
std::string emf(std::initializer_list<int> boundsAndFrame) {
    std::string text = little(1, 4) + little(88, 4);
    for (const int side : boundsAndFrame) text += little(static_cast<std::uint32_t>(side), 4);
    return text + " EMF";
}

std::string entry(bool isBig, int tag, int type, std::uint32_t value) {
    const auto number = isBig ? big : little;
    const std::string text = number(value, type == 1 ? 1 : type == 3 ? 2 : 4);
    return number(tag, 2) + number(type, 2) + number(1, 4) + text + std::string(4 - text.size(), '\0');
}
std::string tiff(bool isBig, const std::string& entries, std::uint32_t directory = 8) {
    const auto number = isBig ? big : little;
    return (isBig ? "MM*\0"s : "II*\0"s) + number(directory, 4) + number(entries.size() / 12, 2) + entries;
}

struct Case {
    const char* name;
    std::string image;
    ImageFormat format;
    int width, height;
    int dpiX = 96, dpiY = 96;
    ImageFault fault = ImageFault::none;
};

void expectHeader(const Case& c) {
    SCOPED_TRACE(c.name);
    const ImageHeader header = readImageHeader(bytes(c.image));
    EXPECT_EQ(header.format, c.format) << imageFormatName(header.format);
    EXPECT_EQ(header.width, c.width);
    EXPECT_EQ(header.height, c.height);
    EXPECT_EQ(header.dpiX, c.dpiX);
    EXPECT_EQ(header.dpiY, c.dpiY);
    EXPECT_EQ(header.fault, c.fault);
}

TEST(ImageHeader, SizeAndDensityOfEachFormat) {
    using F = ImageFormat;
    const Case cases[] = {
        {"png", png(), F::png, 640, 480},
        {"5,906 pixels a metre", png(phys(5906, 2835, 1)), F::png, 640, 480, 150, 72},
        {"a ratio only", png(phys(2, 1, 0)), F::png, 640, 480},
        {"density 0", png(phys(0, 0, 1)), F::png, 640, 480},
        {"density behind other chunks", png(chunk("gAMA", "1234") + phys(11811, 11811, 1)), F::png, 640, 480, 300, 300},
        {"png that is wider than an int", "\x89PNG\r\n\x1A\n\0\0\0\xDIHDR"s + big(0xFFFFFFFF, 4) + big(1, 4), F::png,
         0x7FFFFFFF, 1},
        {"jpeg", jpeg(frame()), F::jpeg, 40, 30},
        {"dots per inch", jpeg(jfif(1, 300, 150) + frame(0xC2)), F::jpeg, 40, 30, 300, 150},
        {"dots per centimetre", jpeg(jfif(2, 100, 28) + frame()), F::jpeg, 40, 30, 254, 71},
        {"a ratio of 100 to 100", jpeg(jfif(0, 100, 100) + frame()), F::jpeg, 40, 30},
        {"density 0 of a jpeg", jpeg(jfif(1, 0, 300) + frame()), F::jpeg, 40, 30},
        {"another program's segment", jpeg(segment(0xE0, "JFXX\0\x10....\0\0"s) + frame()), F::jpeg, 40, 30},
        {"a density segment too short", jpeg(segment(0xE0, "JFIF") + frame()), F::jpeg, 40, 30},
        {"tables are no frame", jpeg(segment(0xC4, std::string(40, 'x')) + frame()), F::jpeg, 40, 30},
        {"fill bytes and restarts", jpeg("\xFF\xFF\xFF\xD0\xFF\x01"s + frame()), F::jpeg, 40, 30},
        {"gif", "GIF89a"s + little(500, 2) + little(2, 2) + "more", F::gif, 500, 2},
        {"bmp", bmp(dib(40, 33, 44)), F::bmp, 33, 44},
        {"bmp from the top down", bmp(dib(40, 33, -44)), F::bmp, 33, 44},
        {"bmp of 16-bit fields", bmp(dib(12, 33, 44)), F::bmp, 33, 44},
        {"lowest height", bmp(dib(40, 1, -0x80000000LL)), F::bmp, 1, 0x7FFFFFFF},
        {"dib", dib(40, 5, 6), F::dib, 5, 6},
        {"dib of version 5", dib(124, 5, 6), F::dib, 5, 6},
        {"dib of 16-bit fields", dib(12, 5, 6), F::dib, 5, 6},
        {"placeable", placeable(0, 0, 1440, 720, 1440), F::wmf, 96, 48},
        {"box from the right", placeable(720, 300, -720, 0, 300), F::wmf, 461, 96},
        {"no units", placeable(0, 0, 1440, 720, 0), F::wmf, 0, 0},
        {"bare wmf", "\x1\0\x9\0\0\x3"s, F::bareWmf, 0, 0},
        {"emf: bounds count both ends", emf({10, 20, 109, 69, 0, 0, 1, 1}), F::emf, 100, 50},
        {"emf: frame", emf({0, 0, -1, -1, 0, 0, 2540, 1270}), F::emf, 96, 48},
        {"emf: nothing", emf({0, 0, 0, 0, 0, 0, 0, 0}), F::emf, 0, 0},
        {"tiff", tiff(false, entry(false, 256, 3, 70) + entry(false, 257, 4, 80)), F::tiff, 70, 80},
        {"tiff, big-endian", tiff(true, entry(true, 256, 3, 70) + entry(true, 257, 1, 80)), F::tiff, 70, 80},
    };
    for (const Case& c : cases) expectHeader(c);
}

TEST(ImageHeader, WhatIsCutOrWrongHasNoSize) {
    using F = ImageFormat;
    const Case cases[] = {
        {"gif of six bytes", "GIF89a", F::gif, 0, 0, 96, 96, ImageFault::cut},
        {"png", png().substr(0, 23), F::png, 0, 0, 96, 96, ImageFault::cut},
        {"bmp", bmp(dib(40, 33, 44)).substr(0, 25), F::bmp, 0, 0, 96, 96, ImageFault::cut},
        {"placeable", placeable(0, 0, 9, 9, 9).substr(0, 15), F::wmf, 0, 0, 96, 96, ImageFault::cut},
        {"emf", emf({0, 0, 9, 9, 0, 0, 9, 9}).substr(0, 39), F::emf, 0, 0, 96, 96, ImageFault::cut},
        {"jpeg without a frame", jpeg(jfif(1, 300, 300)), F::jpeg, 0, 0, 300, 300, ImageFault::cut},
        {"jpeg that ends in a segment", jpeg(frame()).substr(0, 5), F::jpeg, 0, 0, 96, 96, ImageFault::cut},
        {"jpeg that ends in its frame", jpeg(frame()).substr(0, 10), F::jpeg, 0, 0, 96, 96, ImageFault::badSegment},
        {"segment beyond the end", "\xFF\xD8\xFF\xE1\xFF\xFF"s, F::jpeg, 0, 0, 96, 96, ImageFault::cut},
        {"segments that stand still", "\xFF\xD8\xFF\xE1\0\0\xFF\xE1\0\0"s, F::jpeg, 0, 0, 96, 96,
         ImageFault::badSegment},
        {"no marker", "\xFF\xD8\xFF\xE1\0\x2?"s, F::jpeg, 0, 0, 96, 96, ImageFault::noMarker},
        {"tiff without a length", tiff(false, entry(false, 256, 3, 70)), F::tiff, 0, 0, 96, 96,
         ImageFault::noDirectory},
        {"a width of another type", tiff(false, entry(false, 256, 2, 70) + entry(false, 257, 3, 1)), F::tiff, 0, 0, 96,
         96, ImageFault::noDirectory},
        {"directory at its own header", tiff(false, "", 0), F::tiff, 0, 0, 96, 96, ImageFault::noDirectory},
        {"directory far away", tiff(false, "", 0xFFFFFFFF), F::tiff, 0, 0, 96, 96, ImageFault::noDirectory},
        {"four bytes", "\x89PNG", F::other, 0, 0},
        {"svg", "<svg xmlns='http://www.w3.org/2000/svg'/>", F::other, 0, 0},
        {"webp", "RIFF....WEBPVP8 ", F::other, 0, 0},
        {"tiff that starts with a zero", "MM\0*...."s, F::other, 0, 0},
        {"nothing", "", F::other, 0, 0},
    };
    for (const Case& c : cases) expectHeader(c);
}

TEST(ImageHeader, DensityOfAJpegIsToldAsItStands) {
    const auto header = readImageHeader(bytes(jpeg(jfif(0, 72, 71) + jfif(1, 300, 300) + frame())));
    EXPECT_TRUE(header.density.present && header.density.jfif);
    EXPECT_EQ(header.density.units, 0);
    EXPECT_EQ(header.density.x, 72);
    EXPECT_EQ(header.density.y, 71);
    EXPECT_EQ(header.dpiX, 96);
}

TEST(ImageHeader, NoPrefixReadsBeyondItsEnd) {
    for (const std::string& image :
         {png(phys(1, 1, 1)), jpeg(jfif(1, 2, 3) + frame()), bmp(dib(40, 1, 1)), dib(12, 1, 1),
          placeable(0, 0, 1, 1, 1), emf({0, 0, 1, 1, 0, 0, 1, 1}), tiff(true, entry(true, 256, 3, 1))}) {
        for (std::size_t n = 0; n < image.size(); ++n) {
            const std::vector<std::byte> cut(bytes(image).begin(), bytes(image).begin() + n);  // own end, for asan
            const ImageHeader header = readImageHeader(cut);
            EXPECT_GE(header.width, 0);
        }
    }
}

}  // namespace
}  // namespace vellum
