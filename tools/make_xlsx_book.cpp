// Makes new .xlsx workbooks that use all of what cells can have, for other programs to open.
//   make_xlsx_book KIND OUT
// KIND is formats (every property of formats and fonts, both modes of colours), strings (200,000 different ones),
// rows (1,048,576), columns (16,384) or kinds (all kinds of cell, rich strings). What a reader must see goes to
// standard output: per line sheet, row, column (from 0), kind (n, s, b, e, f) and value, separated by tabs; for a
// property of a format its name, and the value that the cell beside holds.
#include <string>
#include <utility>

#include "engine/factories/factories.h"
#include "tools/listed_book.h"

namespace {

using namespace tools;

constexpr FormatProperty borderProperties[] = {
    {"left", 0, 13, [](Format& f, int v) { f.setBorderLeft(v); }},
    {"right", 0, 13, [](Format& f, int v) { f.setBorderRight(v); }},
    {"top", 0, 13, [](Format& f, int v) { f.setBorderTop(v); }},
    {"bottom", 0, 13, [](Format& f, int v) { f.setBorderBottom(v); }},
};

void formats(Book& book, Writer& out) {
    out.sheet("Formats");
    constexpr int rowsApart = 2;  // lines between two rows belong to both
    int row = listFormats(book, out, formatProperties, 0, rowsApart);
    row = listFormats(book, out, borderProperties, row, rowsApart);
    listFormats(book, out, protectionProperties, row, rowsApart);
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
        out.boolean(row++, 0, value);
    }
    const std::pair<int, const char*> errors[] = {{0, "#NULL!"},  {7, "#DIV/0!"}, {15, "#VALUE!"}, {23, "#REF!"},
                                                  {29, "#NAME?"}, {36, "#NUM!"},  {42, "#N/A"}};
    for (const auto& [code, text] : errors) {
        out.error(row++, 0, code, text);
    }
    for (const char* text : {" outer blanks ", "a\"b'c<d>&e", "\xE4\xB8\xAD\xF0\x9F\x98\x80"}) out.text(row++, 0, text);
    out.require(sheet.writeFormulaNumber(row, 0, "A1+A2", 1, nullptr));
    out.expect(row++, 0, 'f', "=A1+A2");
    out.require(sheet.writeFormulaText(row, 0, "=UPPER(\"a\")&\";\"", "A;", nullptr));
    out.expect(row++, 0, 'f', "=UPPER(\"a\")&\",\"");  // a ";" separates arguments wherever it stands
    out.require(sheet.writeFormulaBoolean(row, 0, "AND(A1;A2)", false, nullptr));
    out.expect(row++, 0, 'f', "=AND(A1,A2)");
    const auto fontOf = [](auto& text, int run) {
        Font* const font = text.addFont(nullptr);
        font->setBold(run % 2 == 1);
        font->setSize(10 + run);
        return font;
    };
    for (row = 0; row < 500; ++row) listRichText(book, out, row, 2, fontOf);
    out.sheet("\xC3\x84\xE4\xB8\xAD");
    out.text(0, 0, "a sheet with another name");
}

}  // namespace

int main(int argc, char** argv) {
    constexpr Maker makers[] = {
        {"formats", formats}, {"strings", strings}, {"rows", rows}, {"columns", columns}, {"kinds", kinds}};
    return runMaker(makers, cli::BookPtr(vellum::vlCreateXMLBook<char>()), argc, argv,
                    "usage: make_xlsx_book formats|strings|rows|columns|kinds OUT\n");
}
