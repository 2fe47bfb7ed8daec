// Workbooks from records written one by one, and the records of saved workbooks.
#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "biff/container/memory_stream.h"
#include "biff/container/xls.h"
#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace vellum::test {

using Bytes = std::vector<std::byte>;

inline Bytes hex(const std::string& text) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += text[i] == ' ' ? 1 : 2) {
        if (text[i] != ' ') bytes.push_back(static_cast<std::byte>(std::stoi(text.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

struct Record {
    std::uint16_t id = 0;
    Bytes body;
    std::size_t position = 0;  // of its header in the workbook stream

    bool operator==(const Record& other) const { return id == other.id && body == other.body; }
};

inline const Record bof8{2057, hex("0006 0500 BB0D CC07 41000000 06000000")};
inline const Record bof5{2057, hex("0005 0500 6F10 CC07")};
inline const Record sheetBof8{2057, hex("0006 1000 BB0D CC07 41000000 06000000")};
inline const Record sheetBof5{2057, hex("0005 1000 6F10 CC07")};
inline const Record eof{10, {}};

/// A BoundSheet8 record of a visible worksheet.
inline Record boundSheet(const std::string& name, bool biff5 = false) {
    Bytes body(6);
    body.push_back(static_cast<std::byte>(name.size()));
    if (!biff5) body.push_back({});
    for (const char c : name) body.push_back(static_cast<std::byte>(c));
    return {133, body};
}

inline std::vector<char> compoundFile(const std::vector<Record>& records) {
    MemoryStream stream;
    Xls xls;
    xls.setStream(&stream);
    for (const Record& r : records) xls.writeRecord(r.id, r.body);
    xls.close();
    return stream.written();
}

/// All records of the workbook stream, which must end with the EOF of its last part.
inline std::vector<Record> recordsOf(const std::vector<char>& file) {
    MemoryStream stream(std::as_bytes(std::span(file)));
    Xls xls;
    xls.setStream(&stream);
    xls.measure();
    std::uint64_t counter = 0;
    xls.read(counter);
    std::vector<Record> records;
    while (xls.peekRecordId() != 0) {  // zeros fill the last sector
        Record r;
        r.position = xls.position();
        const RecordHeader header = xls.readHeader();
        const auto body = xls.body(header.size).rest();
        r.id = header.id;
        r.body.assign(body.begin(), body.end());
        records.push_back(std::move(r));
    }
    return records;
}

template <class CharT = char>
struct Release {
    void operator()(IBookT<CharT>* book) const { book->release(); }
};
using Book = std::unique_ptr<IBookT<char>, Release<char>>;

inline Book newBook() {
    Book book(vlCreateBook<char>());
    book->setLocale("UTF-8");
    return book;
}

inline std::vector<char> saved(IBookT<char>& book) {
    const char* data = nullptr;
    std::size_t size = 0;
    EXPECT_TRUE(book.saveMemory(&data, &size)) << book.errorMessage();
    return {data, data + size};
}

/// The book of a file; the caller looks at `errorMessage`.
inline Book loaded(const std::vector<char>& file) {
    Book book = newBook();
    book->loadMemory(file.data(), file.size());
    return book;
}

/// A workbook of one empty sheet "S" whose globals hold these records behind Bof.
inline std::vector<Record> withGlobals(const std::vector<Record>& globals, bool biff5 = false) {
    std::vector<Record> all{biff5 ? bof5 : bof8};
    all.insert(all.end(), globals.begin(), globals.end());
    all.push_back(boundSheet("S", biff5));
    all.push_back(eof);
    all.push_back(biff5 ? sheetBof5 : sheetBof8);
    all.push_back(eof);
    return all;
}

inline std::vector<Record> only(const std::vector<Record>& records, std::uint16_t id) {
    std::vector<Record> out;
    for (const Record& r : records) {
        if (r.id == id) out.push_back(r);
    }
    return out;
}

}  // namespace vellum::test
