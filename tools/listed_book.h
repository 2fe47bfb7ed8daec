// New workbooks that use all of what cells can have, with a list on standard output of what a reader must see.
#pragma once
#include <cstdio>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "engine/api/isheet.h"

namespace tools {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;
using Format = vellum::IFormatT<char>;
using Font = vellum::IFontT<char>;

/// Writes cells, and to standard output what was written.
class Writer {
public:
    explicit Writer(Book& book) : _book(book) {}

    Sheet& sheet(const char* name) {
        _sheet = _book.addSheet(name);
        require(_sheet != nullptr);
        ++_index;
        return *_sheet;
    }
    Sheet& sheet() { return *_sheet; }

    void number(int row, int col, double value, Format* format = nullptr) {
        require(_sheet->writeNumber(row, col, value, format));
        std::printf("%d\t%d\t%d\tn\t%.17g\n", _index, row, col, value);
    }
    void text(int row, int col, const std::string& value, Format* format = nullptr) {
        require(_sheet->writeString(row, col, value.c_str(), format));
        expect(row, col, 's', value);
    }
    void boolean(int row, int col, bool value) {
        require(_sheet->writeBool(row, col, value));
        expect(row, col, 'b', value ? "1" : "0");
    }
    void error(int row, int col, int code, const char* value) {
        require(_sheet->writeError(row, col, code));
        expect(row, col, 'e', value);
    }
    void expect(int row, int col, char kind, const std::string& value) {
        std::printf("%d\t%d\t%d\t%c\t%s\n", _index, row, col, kind, value.c_str());
    }
    void require(bool ok) {
        if (!ok) throw std::runtime_error(_book.errorMessage());
    }

private:
    Book& _book;
    Sheet* _sheet = nullptr;
    int _index = -1;
};

/// A property of formats and its values.
struct FormatProperty {
    const char* name;
    int first, last;
    void (*set)(Format&, int);
};

inline constexpr FormatProperty formatProperties[] = {
    {"horizontal", 0, 7, [](Format& f, int v) { f.setAlignHorizontal(v); }},
    {"vertical", 0, 4, [](Format& f, int v) { f.setAlignVertical(v); }},
    {"wrap", 0, 1, [](Format& f, int v) { f.setWrapsText(v != 0); }},
    {"rotation", 0, 180, [](Format& f, int v) { f.setRotation(v); }},
    {"indent", 0, 15, [](Format& f, int v) { f.setIndent(v); }},
    {"shrink", 0, 1, [](Format& f, int v) { f.setShrinksToFit(v != 0); }},
    {"border", 0, 13, [](Format& f, int v) { f.setBorderAll(v); }},
    {"border colour", 8, 63, [](Format& f, int v) { f.setBorderAll(1), f.setBorderColorAll(v); }},
    {"diagonal", 0, 3, [](Format& f, int v) { f.setBorderDiagonalStyle(1), f.setBorderDiagonal(v); }},
    {"pattern", 0, 18, [](Format& f, int v) { f.setFillPattern(v); }},
    {"fore colour", 8, 63, [](Format& f, int v) { f.setFillPattern(1), f.setPatternForeColor(v); }},
    {"back colour", 8, 63, [](Format& f, int v) { f.setFillPattern(2), f.setPatternBackColor(v); }},
};
inline constexpr FormatProperty protectionProperties[] = {
    {"locked", 0, 1, [](Format& f, int v) { f.setLocked(v != 0); }},
    {"hidden", 0, 1, [](Format& f, int v) { f.setFormulaHidden(v != 0); }},
};

/// One row for each value of each property, from `row` on: its name, and the value in a cell that has it. The row
/// behind them.
inline int listFormats(Book& book, Writer& out, std::span<const FormatProperty> properties, int row, int rowsApart) {
    for (const FormatProperty& p : properties) {
        for (int v = p.first; v <= p.last; ++v, row += rowsApart) {
            Format* const format = book.newFormat();
            out.require(format != nullptr);
            p.set(*format, v);
            out.text(row, 0, p.name);
            out.number(row, 1, v, format);
        }
    }
    return row;
}

/// A rich text of up to five runs, each in the font that `fontOf` gives for its number.
template <class FontOf>
void listRichText(Book& book, Writer& out, int row, int col, FontOf&& fontOf) {
    auto* const text = book.newRichString();
    out.require(text != nullptr);
    std::string all;
    for (int run = 0; run <= row % 5; ++run) {
        const std::string part = "run " + std::to_string(row) + "/" + std::to_string(run) + " ";
        out.require(text->addRun(part.c_str(), fontOf(*text, run)));
        all += part;
    }
    out.require(out.sheet().writeRichText(row, col, text));
    out.expect(row, col, 's', all);
}

struct Maker {
    const char* name;
    void (*make)(Book&, Writer&);
};

/// What `main` does with the arguments KIND OUT: fills the book by the maker of that name, and saves it.
inline int runMaker(std::span<const Maker> makers, const cli::BookPtr& book, int argc, char** argv, const char* usage) {
    for (const Maker& maker : makers) {
        if (argc != 3 || std::strcmp(argv[1], maker.name) != 0) continue;
        try {
            book->setLocale("UTF-8");
            Writer out(*book);
            maker.make(*book, out);
            out.require(book->saveFile(argv[2]));
            return 0;
        } catch (const std::exception& e) {
            std::fprintf(stderr, "%s\n", e.what());
            return 1;
        }
    }
    std::fputs(usage, stderr);
    return 2;
}

}  // namespace tools
