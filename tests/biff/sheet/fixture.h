// Worksheets from records, and the records of saved worksheets.
#pragma once
#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include "tests/biff/book/fixture.h"

namespace vellum::test {

/// A workbook of sheets "A", "B", ... with the given records between Bof and EOF each.
inline std::vector<char> workbook(const std::vector<std::vector<Record>>& sheets, bool biff5 = false,
                                  const std::vector<Record>& globals = {}) {
    std::vector<Record> all{biff5 ? bof5 : bof8};
    all.insert(all.end(), globals.begin(), globals.end());
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        all.push_back(boundSheet(std::string(1, static_cast<char>('A' + i)), biff5));
    }
    all.push_back(eof);
    for (const auto& records : sheets) {
        all.push_back(biff5 ? sheetBof5 : sheetBof8);
        all.insert(all.end(), records.begin(), records.end());
        all.push_back(eof);
    }
    return compoundFile(all);
}

/// A loaded workbook of one worksheet.
struct OneSheet {
    explicit OneSheet(const std::vector<Record>& records, bool biff5 = false)
        : book(loaded(workbook({records}, biff5))), sheet(book->getSheet(0)) {}

    Book book;
    ISheetT<char>* sheet;
};

/// What a load of a worksheet of these records says.
inline std::string loadText(const std::vector<Record>& records) {
    return loaded(workbook({records}))->errorMessage();
}

/// The records between Bof and EOF of a sheet in a saved file.
inline std::vector<Record> sheetRecords(const std::vector<char>& file, std::size_t sheet = 0) {
    std::vector<Record> out;
    std::size_t part = 0;  // 0: globals, 1: the first sheet
    int depth = 0;
    for (Record& record : recordsOf(file)) {
        if (record.id == 10 && --depth == 0) {
            ++part;
            continue;
        }
        const bool opens = record.id == 2057 && depth++ == 0;
        if (!opens && part == sheet + 1) out.push_back(std::move(record));
    }
    return out;
}

inline std::vector<Record> savedRecords(IBookT<char>& book, std::size_t sheet = 0) {
    return sheetRecords(saved(book), sheet);
}

inline std::vector<std::uint16_t> idsOf(const std::vector<Record>& records) {
    std::vector<std::uint16_t> ids;
    for (const Record& record : records) ids.push_back(record.id);
    return ids;
}

/// A new book with one sheet.
struct NewSheet {
    NewSheet() : book(newBook()), sheet(book->addSheet("S")) {}

    /// The saved record of a cell, the only one of the sheet.
    [[nodiscard]] Record cellRecord() {
        for (const Record& record : savedRecords(*book)) {
            if (std::ranges::count(cellIds, record.id) != 0) return record;
        }
        return {};
    }
    static constexpr std::uint16_t cellIds[] = {6, 253, 513, 515, 516, 517, 638};

    Book book;
    ISheetT<char>* sheet;
};

}  // namespace vellum::test
