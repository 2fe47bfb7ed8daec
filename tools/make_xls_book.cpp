// Makes new .xls workbooks that use all of what cells can have, for other programs to open.
//   make_xls_book KIND OUT
// KIND is formats (every property of formats and fonts, every built-in number format, all palette colours), strings
// (70,000 different ones), edges (the last row and column, all kinds of cell) or rich (rich strings). What a reader
// must see goes to standard output: per line sheet, row, column (from 0), kind (n, s, b, e) and value, separated by
// tabs.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;
using Format = vellum::IFormatT<char>;
using Font = vellum::IFontT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};

/// Writes cells, and to standard output what was written.
class Writer {
public:
    explicit Writer(Book& book) : _book(book) {}

    void sheet(const char* name) {
        _sheet = _book.addSheet(name);
        require(_sheet != nullptr);
        ++_index;
    }
    Sheet& sheet() { return *_sheet; }

    void number(int row, int col, double value, Format* format = nullptr) {
        require(_sheet->writeNumber(row, col, value, format));
        std::printf("%d\t%d\t%d\tn\t%.17g\n", _index, row, col, value);
    }
    void text(int row, int col, const std::string& value, Format* format = nullptr) {
        require(_sheet->writeString(row, col, value.c_str(), format));
        expectText(row, col, value);
    }
    void boolean(int row, int col, bool value) {
        require(_sheet->writeBool(row, col, value));
        std::printf("%d\t%d\t%d\tb\t%d\n", _index, row, col, int{value});
    }
    void error(int row, int col, int code, const char* value) {
        require(_sheet->writeError(row, col, code));
        std::printf("%d\t%d\t%d\te\t%s\n", _index, row, col, value);
    }
    void expectText(int row, int col, const std::string& value) {
        std::printf("%d\t%d\t%d\ts\t%s\n", _index, row, col, value.c_str());
    }
    void require(bool ok) {
        if (!ok) throw std::runtime_error(_book.errorMessage());
    }

private:
    Book& _book;
    Sheet* _sheet = nullptr;
    int _index = -1;
};

void numberFormats(Book& book, Writer& out) {
    out.sheet("Number formats");
    int row = 0;
    for (int id = 0; id <= 49; ++id, ++row) {
        if (id > 22 && id < 37) continue;
        Format* const format = book.newFormat();
        format->setNumFormat(id);
        out.number(row, 0, id);
        out.number(row, 1, 36526.75, format);
        out.number(row, 2, -0.125, format);
    }
    for (const char* custom : {"0.000", "yyyy-mm-dd hh:mm:ss", "[Red]-0.0;[Blue]0.0", "\"\xE2\x82\xAC\" #,##0", "@"}) {
        Format* const format = book.newFormat();
        const int id = book.newCustomNumFormat(custom);
        out.require(id != 0);
        format->setNumFormat(id);
        out.text(row, 0, custom);
        out.number(row++, 1, 36526.75, format);
    }
}

void fonts(Book& book, Writer& out) {
    out.sheet("Fonts");
    int row = 0;
    const auto withFont = [&](const char* what, void (*set)(Font&)) {
        Font* const font = book.newFont();
        out.require(font != nullptr);
        set(*font);
        Format* const format = book.newFormat();
        out.require(format->setFont(font));
        out.text(row++, 0, what, format);
    };
    withFont("bold", [](Font& f) { f.setBold(true); });
    withFont("italic", [](Font& f) { f.setItalic(true); });
    withFont("strike-out", [](Font& f) { f.setStrikeOut(true); });
    withFont("underlined", [](Font& f) { f.setUnderline(vellum::underlineSingle); });
    withFont("doubly underlined", [](Font& f) { f.setUnderline(vellum::underlineDouble); });
    withFont("superscript", [](Font& f) { f.setScript(vellum::scriptSuper); });
    withFont("subscript", [](Font& f) { f.setScript(vellum::scriptSub); });
    withFont("24 points", [](Font& f) { f.setSize(24); });
    withFont("Times New Roman", [](Font& f) { f.setName("Times New Roman"); });
    withFont("red", [](Font& f) { f.setColor(10); });

    out.sheet("Colours");
    for (int i = 0; i < 56; ++i) {
        const int color = book.packColor(i * 4, 255 - i * 4, 99);
        Format* const format = book.newFormat();
        format->setFillPattern(1);
        format->setPatternForeColor(color);
        out.number(i, 0, color, format);
    }
}

// One row for each value of each property.
const struct {
    const char* name;
    int first, last;
    void (*set)(Format&, int);
} formatsProperties[] = {
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
    {"locked", 0, 1, [](Format& f, int v) { f.setLocked(v != 0); }},
    {"hidden", 0, 1, [](Format& f, int v) { f.setFormulaHidden(v != 0); }},
};

void formats(Book& book, Writer& out) {
    out.sheet("Formats");
    int row = 0;
    for (const auto& p : formatsProperties) {
        for (int v = p.first; v <= p.last; ++v, ++row) {
            Format* const format = book.newFormat();
            out.require(format != nullptr);
            p.set(*format, v);
            out.text(row, 0, p.name);
            out.number(row, 1, v, format);
        }
    }
    numberFormats(book, out);
    fonts(book, out);
}

void strings(Book&, Writer& out) {
    constexpr int count = 70'000, perColumn = 35'000;
    out.sheet("Strings");
    for (int i = 0; i < count; ++i) {
        // Lengths vary so that records end at every place of a string; every seventh is not ASCII.
        std::string text = "string " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 61), 'x');
        if (i % 7 == 0) text += " \xC3\xA4\xE2\x82\xAC";
        out.text(i % perColumn, i / perColumn, text);
    }
    out.text(0, 3, std::string(32'767, 'y'));
    out.text(1, 3, "");
}

void edges(Book&, Writer& out) {
    out.sheet("Edges");
    for (int row = 0; row < 65'536; ++row) out.number(row, 0, row + 0.5);
    for (int col = 1; col < 256; ++col) out.number(0, col, -col);
    out.text(65'535, 255, "last");
    out.sheet("Kinds");
    const double numbers[] = {0, -0.0, 1, -1, 0.1, 1.5, 1e-300, 1.7976931348623157e308, 123456789012345, 1.0 / 3};
    int row = 0;
    for (const double value : numbers) out.number(row++, 0, value);
    out.boolean(0, 1, true);
    out.boolean(1, 1, false);
    const struct {
        int code;
        const char* text;
    } errors[] = {{0, "#NULL!"},  {7, "#DIV/0!"}, {15, "#VALUE!"}, {23, "#REF!"},
                  {29, "#NAME?"}, {36, "#NUM!"},  {42, "#N/A"}};
    row = 0;
    for (const auto& e : errors) out.error(row++, 2, e.code, e.text);
    out.sheet("\xC3\x84\xE4\xB8\xAD");
    out.text(0, 0, "a sheet with another name");
}

void rich(Book& book, Writer& out) {
    out.sheet("Rich");
    for (int row = 0; row < 3000; ++row) {
        auto* const text = book.newRichString();
        out.require(text != nullptr);
        std::string all;
        for (int run = 0; run <= row % 5; ++run) {
            Font* const font = book.fontAt(run % 5);
            const std::string part = "run " + std::to_string(row) + "/" + std::to_string(run) + " ";
            out.require(text->addRun(part.c_str(), font));
            all += part;
        }
        out.require(out.sheet().writeRichText(row, 0, text));
        out.expectText(row, 0, all);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const struct {
        const char* name;
        void (*make)(Book&, Writer&);
    } kinds[] = {{"formats", formats}, {"strings", strings}, {"edges", edges}, {"rich", rich}};
    if (argc == 3) {
        for (const auto& kind : kinds) {
            if (std::strcmp(argv[1], kind.name) != 0) continue;
            try {
                const std::unique_ptr<Book, Release> book(vellum::vlCreateBook<char>());
                book->setLocale("UTF-8");
                Writer out(*book);
                kind.make(*book, out);
                out.require(book->saveFile(argv[2]));
                return 0;
            } catch (const std::exception& e) {
                std::fprintf(stderr, "%s\n", e.what());
                return 1;
            }
        }
    }
    std::fputs("usage: make_xls_book formats|strings|edges|rich OUT\n", stderr);
    return 2;
}
