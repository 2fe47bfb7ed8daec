// Makes new .xlsx workbooks that use all of what cells can have, for other programs to open.
//   make_xlsx_book KIND OUT
// KIND is formats (every property of formats and fonts, both modes of colours), strings (200,000 different ones),
// rows (1,048,576), columns (16,384) or kinds (all kinds of cell, rich strings). What a reader must see goes to
// standard output: per line sheet, row, column (from 0), kind (n, s, b, e, f) and value, separated by tabs; for a
// property of a format its name, and the value that the cell beside holds.
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

    Sheet& sheet(const char* name) {
        _sheet = _book.addSheet(name, nullptr);
        require(_sheet != nullptr);
        ++_index;
        return *_sheet;
    }
    void number(int row, int col, double value, Format* format = nullptr) {
        require(_sheet->writeNumber(row, col, value, format));
        std::printf("%d\t%d\t%d\tn\t%.17g\n", _index, row, col, value);
    }
    void text(int row, int col, const std::string& value, Format* format = nullptr) {
        require(_sheet->writeString(row, col, value.c_str(), format));
        expect(row, col, 's', value);
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

// One row for each value of each property: its name, and the value in a cell that has it.
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
    {"left", 0, 13, [](Format& f, int v) { f.setBorderLeft(v); }},
    {"right", 0, 13, [](Format& f, int v) { f.setBorderRight(v); }},
    {"top", 0, 13, [](Format& f, int v) { f.setBorderTop(v); }},
    {"bottom", 0, 13, [](Format& f, int v) { f.setBorderBottom(v); }},
    {"locked", 0, 1, [](Format& f, int v) { f.setLocked(v != 0); }},
    {"hidden", 0, 1, [](Format& f, int v) { f.setFormulaHidden(v != 0); }},
};

void formats(Book& book, Writer& out) {
    out.sheet("Formats");
    int row = 0;
    for (const auto& p : formatsProperties) {
        for (int v = p.first; v <= p.last; ++v, row += 2) {  // lines between two rows belong to both
            Format* const format = book.newFormat(nullptr);
            out.require(format != nullptr);
            p.set(*format, v);
            out.text(row, 0, p.name);
            out.number(row, 1, v, format);
        }
    }
    out.sheet("Fonts");
    const struct {
        const char* name;
        void (*set)(Font&);
    } fonts[] = {
        {"bold", [](Font& f) { f.setBold(true); }},
        {"italic", [](Font& f) { f.setItalic(true); }},
        {"strike", [](Font& f) { f.setStrikeOut(true); }},
        {"single", [](Font& f) { f.setUnderline(1); }},
        {"double", [](Font& f) { f.setUnderline(2); }},
        {"singleAccounting", [](Font& f) { f.setUnderline(33); }},
        {"doubleAccounting", [](Font& f) { f.setUnderline(34); }},
        {"superscript", [](Font& f) { f.setScript(1); }},
        {"subscript", [](Font& f) { f.setScript(2); }},
        {"red", [](Font& f) { f.setColor(10); }},
        {"24", [](Font& f) { f.setSize(24); }},
        {"Times New Roman", [](Font& f) { f.setName("Times New Roman"); }},
    };
    row = 0;
    for (const auto& f : fonts) {
        Font* const font = book.newFont(book.fontAt(0));
        f.set(*font);
        Format* const format = book.newFormat(nullptr);
        out.require(format->setFont(font));
        out.text(row++, 0, f.name, format);
    }
    out.sheet("Number formats");
    row = 0;
    for (const char* custom : {"0.000", "yyyy\\-mm\\-dd", "[Red]-0.0;[Blue]0.0", "\"\xE2\x82\xAC\" #,##0", "@"}) {
        Format* const format = book.newFormat(nullptr);
        format->setNumFormat(book.newCustomNumFormat(custom));
        out.text(row++, 0, custom, format);
    }
    out.sheet("Colours");
    out.require(book.setUsesRgbColors(true));
    for (int i = 0; i < 56; ++i) {
        Format* const format = book.newFormat(nullptr);
        format->setFillPattern(1);
        format->setPatternForeColor(book.packColor(i * 4, 255 - i * 4, 99));
        out.number(i, 0, book.packColor(i * 4, 255 - i * 4, 99), format);
    }
}

void strings(Book&, Writer& out) {
    out.sheet("Strings");
    for (int i = 0; i < 200'000; ++i) {
        out.text(i / 4, i % 4, "string " + std::to_string(i) + (i % 7 ? "" : " \xC3\xA4\xE2\x82\xAC <&>"));
    }
    out.text(0, 5, std::string(32'767, 'y'));
}

void rows(Book&, Writer& out) {
    out.sheet("Rows");
    for (int row = 0; row < 1'048'576; ++row) out.number(row, 0, row + 0.5);
}

void columns(Book&, Writer& out) {
    out.sheet("Columns");
    for (int col = 0; col < 16'384; ++col) out.number(0, col, -col);
    out.text(1'048'575, 16'383, "last");
}

void kinds(Book& book, Writer& out) {
    Sheet& sheet = out.sheet("Kinds");
    const double numbers[] = {0, 1, -1, 0.1, 1.5, 1e-300, 1.7976931348623157e308, 123456789012345, 1.0 / 3};
    int row = 0;
    for (const double value : numbers) out.number(row++, 0, value);
    for (const bool value : {true, false}) {
        out.require(sheet.writeBool(row, 0, value));
        out.expect(row++, 0, 'b', value ? "1" : "0");
    }
    const std::pair<int, const char*> errors[] = {{0, "#NULL!"},  {7, "#DIV/0!"}, {15, "#VALUE!"}, {23, "#REF!"},
                                                  {29, "#NAME?"}, {36, "#NUM!"},  {42, "#N/A"}};
    for (const auto& [code, text] : errors) {
        out.require(sheet.writeError(row, 0, code, nullptr));
        out.expect(row++, 0, 'e', text);
    }
    for (const char* text : {" outer blanks ", "a\"b'c<d>&e", "\xE4\xB8\xAD\xF0\x9F\x98\x80"}) out.text(row++, 0, text);
    out.require(sheet.writeFormulaNumber(row, 0, "A1+A2", 1, nullptr));
    out.expect(row++, 0, 'f', "=A1+A2");
    out.require(sheet.writeFormulaText(row, 0, "=UPPER(\"a\")&\";\"", "A;", nullptr));
    out.expect(row++, 0, 'f', "=UPPER(\"a\")&\",\"");  // a ";" separates arguments wherever it stands
    out.require(sheet.writeFormulaBoolean(row, 0, "AND(A1;A2)", false, nullptr));
    out.expect(row++, 0, 'f', "=AND(A1,A2)");
    for (int i = 0; i < 500; ++i) {
        auto* const text = book.newRichString();
        std::string all;
        for (int run = 0; run <= i % 5; ++run) {
            Font* const font = text->addFont(nullptr);
            font->setBold(run % 2 == 1);
            font->setSize(10 + run);
            const std::string part = "run " + std::to_string(i) + "/" + std::to_string(run) + " ";
            out.require(text->addRun(part.c_str(), font));
            all += part;
        }
        out.require(sheet.writeRichText(i, 2, text, nullptr));
        out.expect(i, 2, 's', all);
    }
    out.sheet("\xC3\x84\xE4\xB8\xAD");
    out.text(0, 0, "a sheet with another name");
}

}  // namespace

int main(int argc, char** argv) {
    const struct {
        const char* name;
        void (*make)(Book&, Writer&);
    } makers[] = {{"formats", formats}, {"strings", strings}, {"rows", rows}, {"columns", columns}, {"kinds", kinds}};
    for (const auto& maker : makers) {
        if (argc != 3 || std::strcmp(argv[1], maker.name) != 0) continue;
        try {
            const std::unique_ptr<Book, Release> book(vellum::vlCreateXMLBook<char>());
            book->setLocale("UTF-8");
            Writer out(*book);
            maker.make(*book, out);
            out.require(book->saveFile(argv[2], false));
            return 0;
        } catch (const std::exception& e) {
            std::fprintf(stderr, "%s\n", e.what());
            return 1;
        }
    }
    std::fputs("usage: make_xlsx_book formats|strings|rows|columns|kinds OUT\n", stderr);
    return 2;
}
