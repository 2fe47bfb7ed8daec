// A workbook around hostile bytes, and what is done to it.
#pragma once
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include "biff/container/memory_stream.h"
#include "biff/container/xls.h"
#include "biff/records/continue_writer.h"
#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace fuzz {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};
using BookPtr = std::unique_ptr<Book, Release>;

inline BookPtr newBook() {
    BookPtr book(vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    return book;
}

inline void bof(vellum::Sink& out, std::uint16_t kind) {
    constexpr std::uint16_t biff8 = 0x0600;
    out.putAll(vellum::record_id::Bof, std::uint16_t{8}, biff8, kind, std::uint16_t{8346}, std::uint16_t{1997});
}

/// One sheet of these records in a book with a drawing group of these bytes, or none.
inline std::vector<char> workbook(std::span<const std::byte> group, std::span<const std::byte> records) {
    constexpr std::uint8_t name[] = {0, 0, 0, 0, 0, 0, 1, 0, 'S'};
    vellum::MemoryStream stream;
    vellum::Xls xls;
    xls.setStream(&stream);
    bof(xls.out(), 5);
    xls.writeRecord(vellum::record_id::BoundSheet8, std::as_bytes(std::span(name)));
    if (!group.empty()) vellum::writeSplit(xls, vellum::record_id::MsoDrawingGroup, group);
    xls.writeRecordHeader(vellum::record_id::Eof, 0);
    bof(xls.out(), 16);
    xls.writeBytes(records);
    xls.writeRecordHeader(vellum::record_id::Eof, 0);
    xls.close();
    return stream.written();
}

inline std::vector<char> saved(Book& book) {
    const char* data = nullptr;
    std::size_t size = 0;
    if (!book.saveMemory(&data, &size)) std::abort();
    return {data, data + size};
}

/// What a save writes a load must read.
inline void saveAndLoad(Book& book) {
    const std::vector<char> file = saved(book);
    if (!book.loadMemory(file.data(), file.size())) std::abort();
}

inline void readPictures(Book& book) {
    auto* const sizes = dynamic_cast<vellum::IBookPictures*>(&book);
    for (int i = 0; i < book.pictureTotal(); ++i) {
        const char* data = nullptr;
        std::size_t size = 0;
        int width = 0, height = 0;
        if (book.pictureAt(i, &data, &size) != vellum::pictureUnknown && size > 0) {
            volatile char last = data[size - 1];
            static_cast<void>(last);
        }
        sizes->pictureSize(i, &width, &height);
    }
}

/// All that lies on the sheet; the number of pictures and comments.
inline std::size_t readSheet(Sheet& sheet) {
    auto* const objects = dynamic_cast<vellum::ISheetObjects<char>*>(&sheet);
    const auto comments = objects->comments();
    for (const auto& comment : comments) {
        if (comment.col < 256 && sheet.readComment(comment.row, comment.col) == nullptr) std::abort();
    }
    objects->shapes();
    const int pictures = sheet.pictureTotalOnSheet();
    for (int i = 0; i < pictures; ++i) {
        int row, col, rowBottom, colRight, width, height, x, y;
        sheet.sheetPictureAt(i, &row, &col, &rowBottom, &colRight, &width, &height, &x, &y);
        if (width < 0 || height < 0) std::abort();
    }
    return static_cast<std::size_t>(pictures) + comments.size();
}

/// A picture of one white pixel.
inline constexpr std::uint8_t png[] = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D',
                                       'R',  0,   0,   0,   1,  0,  0,  0,  1, 8, 0, 0,  0,   0};

}  // namespace fuzz
