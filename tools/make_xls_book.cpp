// Makes new .xls workbooks that use all of what cells can have, for other programs to open.
//   make_xls_book KIND OUT
// KIND is formats (every property of formats and fonts, every built-in number format, all palette colours), strings
// (70,000 different ones), edges (the last row and column, all kinds of cell) or rich (rich strings). What a reader
// must see goes to standard output: per line sheet, row, column (from 0), kind (n, s, b, e) and value, separated by
// tabs.
#include <string>

#include "engine/api/enums.h"
#include "engine/factories/factories.h"
#include "tools/listed_book.h"

namespace {

using namespace tools;

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

void formats(Book& book, Writer& out) {
    out.sheet("Formats");
    const int row = listFormats(book, out, formatProperties, 0, 1);
    listFormats(book, out, protectionProperties, row, 1);
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
    const auto fontOf = [&](auto&, int run) { return book.fontAt(run % 5); };
    for (int row = 0; row < 3000; ++row) listRichText(book, out, row, 0, fontOf);
}

}  // namespace

int main(int argc, char** argv) {
    constexpr Maker makers[] = {{"formats", formats}, {"strings", strings}, {"edges", edges}, {"rich", rich}};
    return runMaker(makers, cli::BookPtr(vellum::vlCreateBook<char>()), argc, argv,
                    "usage: make_xls_book formats|strings|edges|rich OUT\n");
}
