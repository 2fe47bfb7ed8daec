// Pictures and comments of a new workbook, for timing beside other programs:
//   bench_drawings images N DIR | pictures N DIR OUT | comments N OUT | read-comments IN
// `images` writes N different PNG files of about 6.6 KB, which `pictures` places on one sheet, one below the other;
// `comments` writes N comments, ten in a row; `read-comments` reads them one by one and prints how many there are.
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

constexpr int columns = 10;

void require(bool ok, Book& book) {
    if (!ok) throw std::runtime_error(book.errorMessage());
}

void putBig(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>(value >> shift);
}

void chunk(std::string& out, const std::string& type, const std::string& data) {
    putBig(out, static_cast<std::uint32_t>(data.size()));
    const std::string checked = type + data;
    out += checked;
    putBig(out, static_cast<std::uint32_t>(
                    crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()))));
}

/// Noise of 46 by 47 pixels, which does not shrink.
std::string image(std::uint32_t seed) {
    constexpr std::uint32_t width = 46, height = 47;
    std::string pixels;
    for (std::uint32_t y = 0; y < height; ++y) {
        pixels += '\0';
        for (std::uint32_t x = 0; x < 3 * width; ++x) {
            seed = seed * 1664525 + 1013904223;
            pixels += static_cast<char>(seed >> 24);
        }
    }
    std::string packed(compressBound(pixels.size()), '\0');
    auto size = static_cast<uLongf>(packed.size());
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(pixels.data()),
             pixels.size());
    packed.resize(size);
    std::string head;
    putBig(head, width);
    putBig(head, height);
    head += std::string("\x08\x02\0\0\0", 5);
    std::string out = "\x89PNG\r\n\x1a\n";
    chunk(out, "IHDR", head);
    chunk(out, "IDAT", packed);
    chunk(out, "IEND", "");
    return out;
}

std::string imagePath(const std::string& folder, int number) {
    return folder + "/" + std::to_string(number) + ".png";
}

cli::BookPtr newBook(const std::string& out) {
    cli::BookPtr book(out.ends_with(".xlsx") ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    return book;
}

void pictures(int count, const std::string& folder, const std::string& out) {
    const auto book = newBook(out);
    Sheet* const sheet = book->addSheet("S", nullptr);
    for (int i = 0; i < count; ++i) {
        const int id = book->addPictureFile(imagePath(folder, i).c_str());
        require(id >= 0 && sheet->placePicture(3 * i, 0, id), *book);
    }
    require(book->saveFile(out.c_str(), false), *book);
}

void comments(int count, const std::string& out) {
    const auto book = newBook(out);
    Sheet* const sheet = book->addSheet("S", nullptr);
    for (int i = 0; i < count; ++i) {
        const std::string text = "Some text of comment " + std::to_string(i);
        require(sheet->writeComment(i / columns, i % columns, text.c_str(), "Author", 128, 74), *book);
    }
    require(book->saveFile(out.c_str(), false), *book);
}

void readComments(const char* in) {
    std::string error;
    const cli::BookPtr book = cli::loadBook(in, error);
    if (!book) throw std::runtime_error(error);
    Sheet* const sheet = book->getSheet(0);
    long found = 0, characters = 0;
    for (int row = 0; sheet->readComment(row, 0) != nullptr; ++row) {
        for (int col = 0; col < columns; ++col) {
            const char* const text = sheet->readComment(row, col);
            if (text == nullptr) continue;
            ++found;
            characters += static_cast<long>(std::string(text).size());
        }
    }
    std::printf("%ld comments, %ld characters\n", found, characters);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "";
    try {
        if (what == "images" && argc == 4) {
            for (int i = 0; i < std::atoi(argv[2]); ++i)
                std::ofstream(imagePath(argv[3], i), std::ios::binary) << image(static_cast<std::uint32_t>(i));
        } else if (what == "pictures" && argc == 5) {
            pictures(std::atoi(argv[2]), argv[3], argv[4]);
        } else if (what == "comments" && argc == 4) {
            comments(std::atoi(argv[2]), argv[3]);
        } else if (what == "read-comments" && argc == 3) {
            readComments(argv[2]);
        } else {
            std::fputs("usage: bench_drawings images N DIR | pictures N DIR OUT | comments N OUT | read-comments IN\n",
                       stderr);
            return 2;
        }
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
