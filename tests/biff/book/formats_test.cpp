// Fonts, cell formats and number formats.
#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

using Format = IFormatT<char>;

struct Property {
    const char* name;
    int (*get)(Format&);
    void (*set)(Format&, int);
    int value;  // all bits of the field, or its largest value
    int initial;
    int usedBit;  // of the alignment word
};

#define INT_PROPERTY(getter, setter) \
#getter, [](Format & f) { return f.getter(); }, [](Format & f, int v) { f.setter(v); }
#define BOOL_PROPERTY(getter, setter) \
#getter, [](Format & f) { return int{f.getter()}; }, [](Format & f, int v) { f.setter(v != 0); }

const Property properties[] = {
    {INT_PROPERTY(numFormat, setNumFormat), 392, 0, 26},
    {INT_PROPERTY(alignHorizontal, setAlignHorizontal), 7, 0, 28},
    {INT_PROPERTY(alignVertical, setAlignVertical), 7, 2, 28},
    {BOOL_PROPERTY(wrapsText, setWrapsText), 1, 0, 28},
    {INT_PROPERTY(rotation, setRotation), 255, 0, 28},
    {INT_PROPERTY(indent, setIndent), 15, 0, 28},
    {BOOL_PROPERTY(shrinksToFit, setShrinksToFit), 1, 0, 28},
    {INT_PROPERTY(borderLeft, setBorderLeft), 15, 0, 29},
    {INT_PROPERTY(borderRight, setBorderRight), 15, 0, 29},
    {INT_PROPERTY(borderTop, setBorderTop), 15, 0, 29},
    {INT_PROPERTY(borderBottom, setBorderBottom), 15, 0, 29},
    {INT_PROPERTY(borderLeftColor, setBorderLeftColor), 127, 64, 29},
    {INT_PROPERTY(borderRightColor, setBorderRightColor), 127, 64, 29},
    {INT_PROPERTY(borderTopColor, setBorderTopColor), 127, 64, 29},
    {INT_PROPERTY(borderBottomColor, setBorderBottomColor), 127, 64, 29},
    {INT_PROPERTY(borderDiagonal, setBorderDiagonal), 3, 0, 29},
    {INT_PROPERTY(borderDiagonalStyle, setBorderDiagonalStyle), 15, 0, 29},
    {INT_PROPERTY(borderDiagonalColor, setBorderDiagonalColor), 127, 0, 29},
    {INT_PROPERTY(fillPattern, setFillPattern), 63, 0, 30},
    {INT_PROPERTY(patternForeColor, setPatternForeColor), 127, 64, 30},
    {INT_PROPERTY(patternBackColor, setPatternBackColor), 127, 65, 30},
    {BOOL_PROPERTY(isLocked, setLocked), 0, 1, 31},
    {BOOL_PROPERTY(isFormulaHidden, setFormulaHidden), 1, 0, 31},
};

TEST(Formats, EachPropertyHasBitsOfItsOwn) {
    const Book book = newBook();
    book->addSheet("A");
    for (const Property& p : properties) p.set(*book->newFormat(), p.value);
    const auto file = saved(*book);
    const Book again = loaded(file);
    const auto xfs = only(recordsOf(file), 224);
    int index = 21;
    for (const Property& p : properties) {
        SCOPED_TRACE(p.name);
        Format& format = *again->formatAt(index);
        for (const Property& q : properties) EXPECT_EQ(q.get(format), &p == &q ? q.value : q.initial) << q.name;
        const auto alignment = loadLe<std::uint32_t>(&xfs[static_cast<std::size_t>(index)].body[6]);
        EXPECT_EQ(alignment >> 26, 1U << (p.usedBit - 26));
        ++index;
    }
}

TEST(Formats, ValuesAreCutToTheirField) {
    const Book book = newBook();
    Format& format = *book->newFormat();
    format.setBorderLeft(0x12);
    format.setAlignHorizontal(-1);
    format.setFillPattern(64);
    EXPECT_EQ(format.borderLeft(), 2);
    EXPECT_EQ(format.borderRight(), 0);
    EXPECT_EQ(format.alignHorizontal(), 7);
    EXPECT_FALSE(format.wrapsText());
    EXPECT_EQ(format.fillPattern(), 0);
    for (const int bad : {-1, 181, 254, 256}) {
        EXPECT_FALSE(format.setRotation(bad)) << bad;
        EXPECT_STREQ(book->errorMessage(), "rotation must be in range 0-180 or 255");
    }
    EXPECT_TRUE(format.setRotation(180));
}

TEST(Formats, AllBordersAtOnce) {
    const Book book = newBook();
    Format& f = *book->newFormat();
    f.setBorderAll(5);
    f.setBorderColorAll(12);
    EXPECT_EQ((std::vector{f.borderLeft(), f.borderRight(), f.borderTop(), f.borderBottom()}), std::vector(4, 5));
    EXPECT_EQ((std::vector{f.borderLeftColor(), f.borderRightColor(), f.borderTopColor(), f.borderBottomColor()}),
              std::vector(4, 12));
}

// A cell format of a spreadsheet application: bold red, two decimals, centred, thin box, yellow.
TEST(Formats, RecordOfARealFile) {
    const Book book = loaded(compoundFile(withGlobals({
        {49, hex("C800 0000 FF7F 9001 0000 00 00 00 00 05 00 417269616C")},
        {49, hex("C800 0000 FF7F 9001 0000 00 00 00 00 05 00 417269616C")},
        {49, hex("C800 0000 FF7F 9001 0000 00 00 00 00 05 00 417269616C")},
        {49, hex("C800 0000 FF7F 9001 0000 00 00 00 00 05 00 417269616C")},
        {49, hex("F000 0200 0A00 BC02 0000 01 02 00 EA 09 00 54696D6573204E6577")},
        {224, hex("0500 0200 0100 22000078 11112040 40201004 0D20")},
    })));
    ASSERT_STREQ(book->errorMessage(), "ok");
    Format& f = *book->formatAt(0);
    ASSERT_NE(f.font(), nullptr);
    EXPECT_EQ(f.font(), book->fontAt(4));
    EXPECT_STREQ(f.font()->name(), "Times New");
    EXPECT_EQ(f.font()->size(), 12);
    EXPECT_TRUE(f.font()->isBold());
    EXPECT_TRUE(f.font()->isItalic());
    EXPECT_FALSE(f.font()->isStrikeOut());
    EXPECT_EQ(f.font()->color(), 10);
    EXPECT_EQ(f.font()->underline(), 1);
    EXPECT_EQ(f.numFormat(), 2);
    EXPECT_EQ(f.alignHorizontal(), 2);
    EXPECT_EQ(f.alignVertical(), 2);
    EXPECT_EQ(f.borderTop(), 1);
    EXPECT_EQ(f.borderLeftColor(), 32);
    EXPECT_EQ(f.borderRightColor(), 0);
    EXPECT_EQ(f.borderTopColor(), 64);
    EXPECT_EQ(f.fillPattern(), 1);
    EXPECT_EQ(f.patternForeColor(), 13);
    EXPECT_EQ(f.patternBackColor(), 64);
    EXPECT_FALSE(dynamic_cast<IFormatPrivate<char>&>(f).usesRgbColors());
    // Back in the file as they were.
    const auto records = recordsOf(saved(*book));
    EXPECT_EQ(only(records, 49).at(4).body, hex("F000 0200 0A00 BC02 0000 01 02 00 EA 09 00 54696D6573204E6577"));
    EXPECT_EQ(only(records, 224).at(0).body, hex("0500 0200 0100 22000078 11112040 40201004 0D20"));
}

TEST(Formats, EachHoldsTheTextOfItsNumberFormat) {
    const Book book = newBook();
    Format* const formats[] = {book->newFormat(), book->newFormat()};
    const char* texts[2] = {};
    for (int i = 0; i < 2; ++i) formats[i]->setNumFormat(book->newCustomNumFormat(i == 0 ? "0.000" : "0 \"m\""));
    for (int i = 0; i < 2; ++i) texts[i] = dynamic_cast<IFormatPrivate<char>&>(*formats[i]).customFormatText();
    EXPECT_STREQ(texts[0], "0.000");
    EXPECT_STREQ(texts[1], "0 \"m\"");
    formats[0]->setNumFormat(300);
    EXPECT_EQ(dynamic_cast<IFormatPrivate<char>&>(*formats[0]).customFormatText(), nullptr);
    EXPECT_STRNE(book->errorMessage(), "ok");
}

TEST(Formats, FontIndexFourDoesNotExist) {
    const Book book = newBook();
    book->addSheet("A");
    Format& format = *book->newFormat();
    for (int position : {0, 3, 4}) {
        EXPECT_TRUE(format.setFont(book->fontAt(position)));
        EXPECT_EQ(format.font(), book->fontAt(position));
        EXPECT_EQ(only(recordsOf(saved(*book)), 224).at(21).body[0], std::byte(position < 4 ? position : position + 1));
    }
    const Book other = newBook();
    EXPECT_FALSE(format.setFont(other->fontAt(0)));
    EXPECT_STREQ(book->errorMessage(), "specified font not found");
    for (const char* xf : {"0400 0000 0100", "FFFF 0000 0100"}) {
        const Book bad = loaded(compoundFile(withGlobals({{224, hex(xf)}})));
        EXPECT_EQ(bad->formatAt(0)->font(), nullptr);
        EXPECT_STREQ(bad->errorMessage(), "incorrect font");
    }
}

TEST(Formats, ACopyInAnotherBookBringsItsFontAndNumberFormat) {
    const Book source = newBook();
    Format& original = *source->newFormat();
    source->newCustomNumFormat("0.0");
    original.setNumFormat(source->newCustomNumFormat("0.000 \"m\""));
    IFontT<char>* const font = source->newFont();
    font->setName("Courier New");
    font->setSize(9);
    font->setStrikeOut(true);
    original.setFont(font);
    for (const Property& p : properties) {
        if (p.usedBit != 26) p.set(original, p.value);
    }
    const Book book = newBook();
    book->newCustomNumFormat("other");
    Format* const copy = book->newFormat(&original);
    ASSERT_NE(copy, nullptr) << book->errorMessage();
    for (const Property& p : properties) {
        if (p.usedBit != 26) {
            EXPECT_EQ(p.get(*copy), p.value) << p.name;
        }
    }
    EXPECT_EQ(copy->numFormat(), 165);
    EXPECT_STREQ(book->customNumFormatText(165), "0.000 \"m\"");
    EXPECT_EQ(copy->font(), book->fontAt(5));
    EXPECT_STREQ(copy->font()->name(), "Courier New");
    EXPECT_TRUE(copy->font()->isStrikeOut());
    book->newFormat(&original);
    EXPECT_EQ(book->fontTotal(), 6) << "one font for both copies";
}

TEST(Formats, NumbersOfCustomFormats) {
    const Book book =
        loaded(compoundFile(withGlobals({{1054, hex("0500 0300 00 302E31")}, {1054, hex("A600 0300 00 302E32")}})));
    ASSERT_STREQ(book->errorMessage(), "ok");
    EXPECT_EQ(book->newCustomNumFormat("0.1"), 5) << "a built-in id that the file lists";
    EXPECT_EQ(book->newCustomNumFormat("0.2"), 166);
    EXPECT_EQ(book->newCustomNumFormat("a"), 164);
    EXPECT_EQ(book->newCustomNumFormat("b"), 165);
    EXPECT_EQ(book->newCustomNumFormat("c"), 167);
    EXPECT_EQ(book->newCustomNumFormat(""), 168);
    EXPECT_EQ(book->newCustomNumFormat(""), 168);
    for (int i = 169; i <= 392; ++i) EXPECT_EQ(book->newCustomNumFormat(std::to_string(i).c_str()), i);
    EXPECT_EQ(book->newCustomNumFormat("one more"), 0);
    EXPECT_STREQ(book->errorMessage(), "maximum number of custom formats is exceeded");
    EXPECT_EQ(book->newCustomNumFormat(std::string(4110, '0').c_str()), 0) << "more than a record holds";
    EXPECT_STREQ(book->errorMessage(), "string is too long");
    EXPECT_STREQ(book->customNumFormatText(392), "392");
    EXPECT_EQ(book->customNumFormatText(163), nullptr);
    EXPECT_STREQ(book->errorMessage(), "custom number format not found");
    EXPECT_EQ(only(recordsOf(saved(*book)), 1054).back().body.size(), 5U + 6U);
}

TEST(Fonts, LimitsAndDefaults) {
    const Book book = newBook();
    IFontT<char>* const font = book->fontAt(0);
    EXPECT_STREQ(font->name(), "Arial");
    EXPECT_EQ(font->size(), 10);
    EXPECT_EQ(font->color(), 32767);
    font->setSize(500);
    EXPECT_EQ(font->size(), 8191 / 20);
    font->setBold(true);
    EXPECT_TRUE(font->isBold());
    EXPECT_FALSE(font->setName(std::string(256, 'x').c_str()));
    EXPECT_STREQ(book->errorMessage(), "ShortXLUnicodeString: string is too long");
    EXPECT_TRUE(book->setDefaultFontSpec("Calibri", 11));
    int size = 0;
    EXPECT_STREQ(book->defaultFontName(&size), "Calibri");
    EXPECT_EQ(size, 11);
    while (book->fontTotal() < 510) ASSERT_NE(book->newFont(), nullptr);
    EXPECT_EQ(book->newFont(), nullptr);
    EXPECT_STREQ(book->errorMessage(), "too many different fonts");
    EXPECT_EQ(book->fontAt(510), nullptr);
    EXPECT_STREQ(book->errorMessage(), "index is out of range");

    const Book none = loaded(compoundFile(withGlobals({})));
    EXPECT_EQ(none->defaultFontName(&size), nullptr);
    EXPECT_STREQ(none->errorMessage(), "fonts is empty");
}

TEST(Fonts, NamesThatEndTooEarlyAreRefused) {
    const struct {
        const char* body;
        const char* text;
        const char* name;
    } cases[] = {
        {"C800 0000 FF7F 9001 0000 00 00 00 00", "ok", ""},
        {"C800 0000 FF7F 9001 0000 00 00 00 00 00", "ok", ""},
        {"C800 0000 FF7F 9001 0000 00 00 00 00 01", "error in Font record", nullptr},
        {"C800 0000 FF7F 9001 0000 00 00 00 00 02 01 410042", "error in Font record", nullptr},
        {"C800 0000 FF7F 9001 0000 00 00 00 00 01 00 41 FFFF", "ok", "A"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.body);
        const Book book = loaded(compoundFile(withGlobals({{49, hex(c.body)}})));
        EXPECT_STREQ(book->errorMessage(), c.text);
        if (c.name != nullptr) {
            EXPECT_STREQ(book->fontAt(0)->name(), c.name);
        }
    }
}

}  // namespace
}  // namespace vellum::test
