// Workbooks with names, and what is left of them in a saved file.
#pragma once
#include <string>
#include <vector>

#include "tests/biff/book/fixture.h"

namespace vellum::test {

/// A Lbl record: flags, sheet counted from 1 (0: the workbook), a text of one byte a character, tokens in hex.
inline Record lbl(const std::string& text, const std::string& tokens, std::uint8_t itab = 0, std::uint8_t flags = 0) {
    const Bytes rgce = hex(tokens);
    Bytes body = hex("0000 00 00 0000 0000 0000 00000000 00");
    body[0] = static_cast<std::byte>(flags);
    body[3] = static_cast<std::byte>(text.size());
    body[4] = static_cast<std::byte>(rgce.size());
    body[8] = static_cast<std::byte>(itab);
    for (const char c : text) body.push_back(static_cast<std::byte>(c));
    body.insert(body.end(), rgce.begin(), rgce.end());
    return {24, body};
}

/// Sheets A, B, C. References 0 to 2 are to them, 3 to A through B, 4 to a deleted sheet, 5 into another workbook, 6
/// to the workbook itself.
inline std::vector<char> threeSheets(const std::vector<Record>& names) {
    std::vector<Record> records{bof8};
    for (const char* sheet : {"A", "B", "C"}) records.push_back(boundSheet(sheet));
    records.push_back({430, hex("0300 0104")});
    records.push_back({430, hex("0100 0300 00 01 61 62 0100 00 58")});
    records.push_back({23, hex("0700 0000 0000 0000 0000 0100 0100 0000 0200 0200 0000 0000 0100 0000 FFFF FFFF "
                               "0100 0000 0000 0000 FEFF FEFF")});
    records.insert(records.end(), names.begin(), names.end());
    records.push_back(eof);
    for (int i = 0; i < 3; ++i) {
        records.push_back(sheetBof8);
        records.push_back(eof);
    }
    return compoundFile(records);
}

inline std::string hexOf(std::span<const std::byte> bytes) {
    std::string text;
    for (const std::byte b : bytes) {
        constexpr char digits[] = "0123456789ABCDEF";
        text += digits[std::to_integer<unsigned>(b) >> 4];
        text += digits[std::to_integer<unsigned>(b) & 15];
    }
    return text;
}

/// "text/flags/itab/tokens" of each name in the saved file; a code of a built-in name as a digit.
inline std::vector<std::string> savedNames(IBookT<char>& book) {
    std::vector<std::string> names;
    for (const Record& r : only(recordsOf(saved(book)), 24)) {
        std::string text;
        const auto size = std::to_integer<std::size_t>(r.body[3]);
        const bool wide = r.body[14] == std::byte{1};
        for (std::size_t i = 0; i < size; ++i) {
            const auto c = std::to_integer<char>(r.body[15 + i * (wide ? 2 : 1)]);
            text += c < 32 ? static_cast<char>('0' + c) : c;
        }
        const std::size_t at = 15 + size * (wide ? 2 : 1), cce = loadLe<std::uint16_t>(&r.body[4]);
        names.push_back(text + '/' + std::to_string(loadLe<std::uint16_t>(r.body.data())) + '/' +
                        std::to_string(loadLe<std::uint16_t>(&r.body[8])) + '/' +
                        hexOf(std::span(r.body).subspan(at, cce)));
    }
    return names;
}

/// "name@scope[r c r c]" of each name that a sheet sees; '!' in front of a hidden one.
inline std::string seen(IBookT<char>& book, int sheet) {
    std::string text;
    auto* const s = book.getSheet(sheet);
    for (int i = 0; i < s->namedRangeCount(); ++i) {
        int area[4], scope = -9;
        bool hidden = false;
        const char* const name = s->namedRange(i, &area[0], &area[1], &area[2], &area[3], &scope, &hidden);
        if (hidden) text += '!';
        text.append(name ? name : "?").append(1, '@').append(std::to_string(scope)).append(1, '[');
        for (const int v : area) text += std::to_string(v) + ' ';
        text.back() = ']';
        text += ' ';
    }
    return text;
}

}  // namespace vellum::test
