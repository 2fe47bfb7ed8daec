// Formats, fonts, number formats: what the styles part holds after each operation.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/failure/vlerror.h"
#include "tests/xlsx/book/package.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/format.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

using testing::HasSubstr;
using testing::Not;

using Format = IFormatT<char>;
using Font = IFontT<char>;

BookPtr bookWithSheet() {
    BookPtr book = newBook();
    EXPECT_TRUE(book->addSheet("A", nullptr));
    return book;
}

std::string styles(IBookT<char>& book) {
    return savedParts(book)["xl/styles.xml"];
}

/// A book whose styles part holds this.
BookPtr bookWithStyles(const std::string& inside, const std::string& theme = {}) {
    Parts parts = samplePackage(
        1, {{"xl/styles.xml", "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">" +
                                  inside + "</styleSheet>"}});
    const std::string head = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const auto insert = [](std::string& xml, const std::string& what) { xml.insert(xml.rfind("</"), what); };
    const std::string type = "application/vnd.openxmlformats-officedocument.";
    insert(parts[0].second,
           "<Override PartName=\"/xl/styles.xml\" ContentType=\"" + type + "spreadsheetml.styles+xml\"/>");
    insert(parts[2].second, "<Relationship Id=\"s\" Type=\"" + head + "styles\" Target=\"styles.xml\"/>");
    if (!theme.empty()) {
        parts.emplace_back("xl/theme.xml", theme);
        insert(parts[0].second, "<Override PartName=\"/xl/theme.xml\" ContentType=\"" + type + "theme+xml\"/>");
        insert(parts[2].second, "<Relationship Id=\"t\" Type=\"" + head + "theme\" Target=\"theme.xml\"/>");
    }
    BookPtr book = newBook();
    EXPECT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    return book;
}

TEST(Styles, OfANewBook) {
    const BookPtr book = bookWithSheet();
    EXPECT_EQ(book->formatTotal(), 1);
    EXPECT_EQ(book->fontTotal(), 1);
    int size = 0;
    EXPECT_STREQ(book->defaultFontName(&size), "Calibri");
    EXPECT_EQ(size, 11);
    const std::string xml = styles(*book);
    EXPECT_THAT(xml, HasSubstr("<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
                               "<fill><patternFill patternType=\"gray125\"/></fill></fills>"));
    EXPECT_THAT(xml, HasSubstr("<left/><right/><top/><bottom/><diagonal/>"));
    EXPECT_THAT(xml, HasSubstr("name=\"Normal\" xfId=\"0\" builtinId=\"0\""));
    EXPECT_FALSE(book->formatAt(1));
    EXPECT_STREQ(book->errorMessage(), "index is out of range");
    EXPECT_FALSE(book->fontAt(-1));
}

TEST(Styles, TextsOfWhatIsMissing) {
    const BookPtr book = bookWithStyles("");
    EXPECT_EQ(book->defaultFontName(nullptr), nullptr);
    EXPECT_STREQ(book->errorMessage(), "fonts are not found");
    const auto text = [](auto&& make) -> std::string {
        try {
            make();
        } catch (const vlerror& e) {
            return e.what();
        }
        return "made";
    };
    using Tag = excelNormal_tag;
    Styles<char, Tag> styles;
    EXPECT_EQ(text([] { XMLFormatImplT<char, Tag>(nullptr, nullptr, 0); }), "XMLFormatImplT(): styles can't be 0");
    EXPECT_EQ(text([&] { XMLFormatImplT<char, Tag>(&styles, nullptr, 0); }), "XMLFormatImplT(): xf can't be 0");
    EXPECT_EQ(text([] { XMLFontImplT<char, Tag>(nullptr); }), "XMLFontImplT(): styles can't be 0");
}

struct Property {
    const char* name;
    int first, last;
    void (*set)(Format&, int);
    int (*get)(Format&);
};
const Property properties[] = {
    {"horizontal", 0, 7, [](Format& f, int v) { f.setAlignHorizontal(v); },
     [](Format& f) { return f.alignHorizontal(); }},
    {"vertical", 0, 4, [](Format& f, int v) { f.setAlignVertical(v); }, [](Format& f) { return f.alignVertical(); }},
    {"wrap", 0, 1, [](Format& f, int v) { f.setWrapsText(v != 0); }, [](Format& f) { return int{f.wrapsText()}; }},
    {"rotation", 0, 180, [](Format& f, int v) { f.setRotation(v); }, [](Format& f) { return f.rotation(); }},
    {"letters", 255, 255, [](Format& f, int v) { f.setRotation(v); }, [](Format& f) { return f.rotation(); }},
    {"indent", 0, 15, [](Format& f, int v) { f.setIndent(v); }, [](Format& f) { return f.indent(); }},
    {"shrink", 0, 1, [](Format& f, int v) { f.setShrinksToFit(v != 0); },
     [](Format& f) { return int{f.shrinksToFit()}; }},
    {"left", 0, 13, [](Format& f, int v) { f.setBorderLeft(v); }, [](Format& f) { return f.borderLeft(); }},
    {"right", 0, 13, [](Format& f, int v) { f.setBorderRight(v); }, [](Format& f) { return f.borderRight(); }},
    {"top", 0, 13, [](Format& f, int v) { f.setBorderTop(v); }, [](Format& f) { return f.borderTop(); }},
    {"bottom", 0, 13, [](Format& f, int v) { f.setBorderBottom(v); }, [](Format& f) { return f.borderBottom(); }},
    {"all", 0, 13, [](Format& f, int v) { f.setBorderAll(v); }, [](Format& f) { return f.borderTop(); }},
    {"diagonal", 0, 13, [](Format& f, int v) { f.setBorderDiagonalStyle(v); },
     [](Format& f) { return f.borderDiagonalStyle(); }},
    {"which", 0, 3, [](Format& f, int v) { f.setBorderDiagonal(v); }, [](Format& f) { return f.borderDiagonal(); }},
    {"left colour", 0, 63, [](Format& f, int v) { f.setBorderLeftColor(v); },
     [](Format& f) { return f.borderLeftColor(); }},
    {"all colours", 8, 9, [](Format& f, int v) { f.setBorderColorAll(v); },
     [](Format& f) { return f.borderBottomColor(); }},
    {"diagonal colour", 8, 9, [](Format& f, int v) { f.setBorderDiagonalColor(v); },
     [](Format& f) { return f.borderDiagonalColor(); }},
    {"pattern", 0, 18, [](Format& f, int v) { f.setFillPattern(v); }, [](Format& f) { return f.fillPattern(); }},
    {"fore", 8, 63, [](Format& f, int v) { f.setPatternForeColor(v); }, [](Format& f) { return f.patternForeColor(); }},
    {"back", 8, 63, [](Format& f, int v) { f.setPatternBackColor(v); }, [](Format& f) { return f.patternBackColor(); }},
    {"locked", 0, 1, [](Format& f, int v) { f.setLocked(v != 0); }, [](Format& f) { return int{f.isLocked()}; }},
    {"hidden", 0, 1, [](Format& f, int v) { f.setFormulaHidden(v != 0); },
     [](Format& f) { return int{f.isFormulaHidden()}; }},
    {"number", 0, 49, [](Format& f, int v) { f.setNumFormat(v); }, [](Format& f) { return f.numFormat(); }},
};

TEST(Format, EveryPropertyComesBack) {
    const BookPtr book = bookWithSheet();
    for (const Property& p : properties) {
        for (int v = p.first; v <= p.last; ++v) p.set(*book->newFormat(nullptr), v);
    }
    const auto parts = savedParts(*book);
    const BookPtr again = newBook();
    ASSERT_TRUE(load(*again, packed({parts.begin(), parts.end()}))) << again->errorMessage();
    int index = 1;
    for (const Property& p : properties) {
        for (int v = p.first; v <= p.last; ++v) EXPECT_EQ(p.get(*again->formatAt(index++)), v) << p.name;
    }
    Format& fresh = *again->formatAt(0);
    EXPECT_EQ(fresh.alignVertical(), 2);
    EXPECT_TRUE(fresh.isLocked());
    EXPECT_FALSE(fresh.setRotation(181));
    fresh.setBorderLeft(14);
    fresh.setFillPattern(-1);
    fresh.setBorderLeftColor(-1);
    fresh.setPatternForeColor(32767);
    EXPECT_EQ(fresh.borderLeftColor(), -1);
    EXPECT_THAT(styles(*again), HasSubstr("applyAlignment=\"true\""));
}

TEST(Format, BordersAndFillsAreCopiedOnFirstWrite) {
    const BookPtr book = bookWithSheet();
    Format& a = *book->newFormat(nullptr);
    Format& b = *book->newFormat(nullptr);
    a.setBorderLeft(1);
    a.setBorderRight(2);
    a.setFillPattern(1);
    a.setFillPattern(3);
    EXPECT_EQ(b.borderLeft(), 0);
    EXPECT_EQ(b.fillPattern(), 0);
    EXPECT_THAT(styles(*book), HasSubstr("<borders count=\"2\">"));
    EXPECT_THAT(styles(*book), HasSubstr("<fills count=\"3\">"));
    Format& copy = *book->newFormat(&a);
    EXPECT_EQ(copy.borderRight(), 2);
    a.setBorderRight(5);
    copy.setFillPattern(4);
    EXPECT_EQ(copy.borderRight(), 2);
    EXPECT_EQ(a.fillPattern(), 3);
}

TEST(Format, OfAnotherBook) {
    const BookPtr from = bookWithSheet(), to = bookWithSheet();
    Font& font = *from->newFont(nullptr);
    font.setName("Arial");
    font.setBold(true);
    Format& format = *from->newFormat(nullptr);
    ASSERT_TRUE(format.setFont(&font));
    EXPECT_FALSE(format.setFont(nullptr));
    EXPECT_FALSE(to->formatAt(0)->setFont(&font));
    format.setNumFormat(from->newCustomNumFormat("0.0000"));
    format.setBorderLeft(6);
    Format* const copy = to->newFormat(&format);
    ASSERT_TRUE(copy) << to->errorMessage();
    EXPECT_STREQ(copy->font()->name(), "Arial");
    EXPECT_TRUE(copy->font()->isBold());
    EXPECT_EQ(copy->borderLeft(), 6);
    EXPECT_STREQ(to->customNumFormatText(copy->numFormat()), "0.0000");
}

TEST(Format, OfTheTimeBeforeALoad) {
    const BookPtr book = bookWithSheet();
    Format* const old = book->newFormat(nullptr);
    ASSERT_TRUE(load(*book, samplePackageBytes(1)));
    EXPECT_FALSE(book->getSheet(0)->writeNumber(0, 0, 1, old));
    EXPECT_STREQ(book->errorMessage(), "format is not found (perhaps it is defined before loading a file)");
}

TEST(Styles, CustomNumberFormats) {
    const BookPtr book = bookWithSheet();
    EXPECT_EQ(book->newCustomNumFormat("0.0"), 166);
    EXPECT_EQ(book->newCustomNumFormat("0.00 \"x\""), 167);
    EXPECT_EQ(book->newCustomNumFormat("0.0"), 166);
    EXPECT_STREQ(book->customNumFormatText(167), "0.00 \"x\"");
    EXPECT_EQ(book->customNumFormatText(1), nullptr);
    EXPECT_STREQ(book->errorMessage(), "custom number format not found");
    for (int i = 2; i < 227; ++i) EXPECT_EQ(book->newCustomNumFormat(std::to_string(i).c_str()), 166 + i);
    EXPECT_EQ(book->newCustomNumFormat("one too many"), 0);
    EXPECT_STREQ(book->errorMessage(), "maximum number of custom formats is exceeded");
}

TEST(Styles, LimitOfFormats) {
    const BookPtr book = bookWithSheet();
    for (int i = 1; i < 65430; ++i) ASSERT_TRUE(book->newFormat(nullptr) && book->newFont(nullptr));
    EXPECT_FALSE(book->newFormat(nullptr));
    EXPECT_STREQ(book->errorMessage(), "too many different cell formats");
    EXPECT_FALSE(book->newFont(nullptr));
    EXPECT_STREQ(book->errorMessage(), "too many different fonts");
}

TEST(Styles, Dates) {
    const struct {
        int id;
        const char* text;
        bool isDate;
    } rows[] = {{0, nullptr, false},       {13, nullptr, false},      {14, nullptr, true}, {22, nullptr, true},
                {37, nullptr, false},      {44, nullptr, false},      {45, nullptr, true}, {47, nullptr, true},
                {48, nullptr, false},      {200, "0.0", false},       {200, "yyyy", true}, {200, "[Red]0", false},
                {200, "\"day\" 0", false}, {200, "[$-409]0 h", true}, {200, "\\m0", true}, {200, "[open h", false},
                {30, nullptr, false},      {30, "m/d/yy", true},      {36, "0.0", false},  {58, "yyyy", true}};
    for (const auto& row : rows) {
        const BookPtr book = bookWithStyles(
            (row.text ? "<numFmts count=\"1\"><numFmt numFmtId=\"" + std::to_string(row.id) + "\" formatCode=\"" +
                            std::string(row.text[0] == '"' ? "&quot;day&quot; 0" : row.text) + "\"/></numFmts>"
                      : "") +
            "<cellXfs><xf numFmtId=\"" + std::to_string(row.id) + "\"/></cellXfs>");
        EXPECT_EQ(book->getSheet(0)->isDate(0, 0), row.isDate) << row.id << (row.text ? row.text : "");
    }
}

TEST(Font, EveryPropertyComesBack) {
    const BookPtr book = bookWithSheet();
    Font& font = *book->newFont(nullptr);
    EXPECT_EQ(font.size(), 11);
    EXPECT_STREQ(font.name(), "Calibri");
    for (const int u : {0, 1, 2, 33, 34, 0}) {
        font.setUnderline(u);
        EXPECT_EQ(font.underline(), u);
    }
    for (const int s : {0, 1, 2}) {
        font.setScript(s);
        EXPECT_EQ(font.script(), s);
    }
    EXPECT_TRUE(font.setName("Courier"));
    EXPECT_FALSE(font.setName(nullptr));
    EXPECT_STREQ(font.name(), "Courier");
    font.setSize(20);
    font.setBold(true), font.setItalic(true), font.setStrikeOut(true);
    font.setColor(10);
    font.setColor(-2);
    EXPECT_TRUE(font.isBold() && font.isItalic() && font.isStrikeOut());
    EXPECT_EQ(font.color(), 10);
    EXPECT_THAT(styles(*book), HasSubstr("<fonts count=\"2\">"));
    const Font& copy = *book->newFont(&font);
    EXPECT_EQ(const_cast<Font&>(copy).size(), 20);
    font.setBold(false), font.setScript(0);
    font.setColor(32767);
    EXPECT_FALSE(font.isBold());
    EXPECT_THAT(styles(*book), HasSubstr("<vertAlign val=\"subscript\"/>"));
    EXPECT_TRUE(book->setDefaultFontSpec("Arial", 8));
    EXPECT_STREQ(book->fontAt(0)->name(), "Arial");
    EXPECT_EQ(bookWithStyles("<fonts><font><sz val=\"1e300\"/></font></fonts>")->fontAt(0)->size(), 0);
}

const std::string themeXml = [] {
    std::string xml =
        R"(<a:theme xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main" name="t"><a:themeElements>)"
        R"(<a:clrScheme name="c">)";
    const std::pair<const char*, const char*> colors[] = {
        {"dk1", ""},           {"lt1", "00FF00"},     {"dk2", "000010"},     {"lt2", "000020"},
        {"accent1", "000001"}, {"accent2", "000002"}, {"accent3", "000003"}, {"accent4", "000004"},
        {"accent5", "000005"}, {"accent6", "FF0000"}, {"hlink", "00000A"},   {"folHlink", "00000B"}};
    for (const auto& [name, rgb] : colors) {
        xml += "<a:" + std::string(name) + ">" +
               (*rgb ? "<a:srgbClr val=\"" + std::string(rgb) + "\"/>"
                     : R"(<a:sysClr val="windowText" lastClr="000000"/>)") +
               "</a:" + name + ">";
    }
    return xml +
           R"(</a:clrScheme><a:fontScheme name="f"><a:majorFont><a:latin typeface="A"/><a:ea typeface=""/><a:cs typeface=""/>)"
           R"(</a:majorFont><a:minorFont><a:latin typeface="A"/><a:ea typeface=""/><a:cs typeface=""/></a:minorFont>)"
           R"(</a:fontScheme><a:fmtScheme name="m"><a:fillStyleLst/><a:lnStyleLst/><a:effectStyleLst/><a:bgFillStyleLst/>)"
           R"(</a:fmtScheme></a:themeElements></a:theme>)";
}();

TEST(Font, ColorsOfAFile) {
    const struct {
        const char* xml;
        int index, rgb;  // by mode
    } rows[] = {{"rgb=\"FFFF0000\"", 10, 0xff0000},
                {"rgb=\"FF123456\"", -1, 0x123456},
                {"indexed=\"3\"", 3, 0x00ff00},
                {"indexed=\"9\"", 9, 0x010203},
                {"indexed=\"70\"", 70, -1},
                {"theme=\"0\"", 11, 0x00ff00},
                {"theme=\"1\"", 8, 0},
                {"theme=\"2\"", -1, 0x000020},
                {"theme=\"9\"", 10, 0xff0000},
                {"theme=\"11\"", -1, 0x00000b},
                {"theme=\"12\"", -1, -1},
                {"theme=\"1\" tint=\"0.5\"", -1, 0x7f7f7f},
                {"indexed=\"8\"", 8, 0},
                {"auto=\"1\"", -1, -1},
                {"rgb=\"FF80\"", -1, -1}};
    for (const auto& row : rows) {
        // Indices 0 to 9 are the file's own; those with fewer colours than the index use the fixed table.
        std::string own = "<colors><indexedColors>";
        for (int i = 0; i < 10; ++i) {
            own += i == 8   ? "<rgbColor/>"
                   : i == 9 ? "<rgbColor rgb=\"00010203\"/>"
                   : i == 3 ? "<rgbColor rgb=\"0000FF00\"/>"
                            : "<rgbColor rgb=\"00000000\"/>";
        }
        const BookPtr book = bookWithStyles(
            "<fonts><font><color " + std::string(row.xml) + "/></font></fonts>" + own + "</indexedColors></colors>",
            themeXml);
        EXPECT_EQ(book->fontAt(0)->color(), row.index) << row.xml;
        const bool good = std::string_view(row.xml) != "rgb=\"FF80\"";
        EXPECT_STREQ(book->errorMessage(), good ? "ok" : "rgb color is invalid");
        ASSERT_TRUE(book->setUsesRgbColors(true));
        EXPECT_EQ(book->fontAt(0)->color(), row.rgb) << row.xml;
        book->fontAt(0)->setColor(0x0a0b0c);
        EXPECT_EQ(book->fontAt(0)->color(), 0x0a0b0c);
        EXPECT_THAT(styles(*book), Not(HasSubstr("theme=")));
    }
    int r, g, b;
    const BookPtr book = bookWithSheet();
    EXPECT_EQ(book->packColor(1, 2, 3), 0x010203);
    EXPECT_TRUE(book->unpackColor(0x010203, &r, &g, &b));
    EXPECT_EQ(r * 100 + g * 10 + b, 123);
}

}  // namespace
}  // namespace vellum
