#include <set>

#include "formula/token_cut.h"
#include "tests/formula/fixture.h"

namespace vellum::test {
namespace {

using formula::Generation;

struct TextCase {
    const char* tokens;
    const wchar_t* text;
};

SheetSpan own(int first, int last) {
    return {SheetSpan::Where::ownBook, first, last};
}

TEST(TokensToText, Constants) {
    const TextCase cases[] = {
        {"1E 05 00", L"5"},
        {"1E FF FF", L"65535"},
        {"1F 9A 99 99 99 99 99 B9 3F", L"0.1"},
        {"1F 3A 8C 30 E2 8E 79 C7 3B", L"0"},  // 1E-20
        {"1F 40 8C B5 78 1D AF 15 44", L"100000000000000000000"},
        {"1F 00 00 00 00 00 00 00 80", L"-0"},
        {"1F 00 00 00 00 00 00 F0 3F", L"1"},
        {"17 03 00 61 22 62", L"\"a\"\"b\""},
        {"17 02 01 E5 65 2C 67", L"\"\u65E5\u672C\""},
        {"17 03 00 61 20 62", L"\"a b\""},
        {"17 05 00 64 6F 6E 27 74", L"\"don't\""},
        {"17 00 00", L"\"\""},
        {"1D 01", L"TRUE"},
        {"1D 00", L"FALSE"},
        {"1C 00", L"#NULL!"},
        {"1C 07", L"#DIV/0!"},
        {"1C 0F", L"#VALUE!"},
        {"1C 17", L"#REF!"},
        {"1C 1D", L"#NAME?"},
        {"1C 24", L"#NUM!"},
        {"1C 2A", L"#N/A"},
        {"1C 2B", L"ERR"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(c.tokens, FakeBook()), c.text) << c.tokens;
}

TEST(TokensToText, Operators) {
    const TextCase cases[] = {
        {"1E 01 00 1E 02 00 03 15", L"(1+2)"},
        {"1E 01 00 1E 02 00 0A", L"1<=2"},
        {"1E 01 00 1E 02 00 0E", L"1<>2"},
        {"44 00 00 00 C0 13", L"-A1"},
        {"44 00 00 00 C0 12", L"+A1"},
        {"1E 0A 00 14", L"10%"},
        {"44 00 00 00 C0 44 01 00 00 C0 11", L"A1:A2"},
        {"29 0B 00 44 00 00 00 C0 44 01 00 00 C0 11", L"A1:A2"},
        {"13", L"toInfix error: incorrect unary minus expression"},
        {"12", L"toInfix error: incorrect unary plus expression"},
        {"14", L"toInfix error: incorrect percent expression"},
        {"1E 01 00 11", L"toInfix error: incorrect ptgRange expression"},
        {"1E 01 00 03", L"toInfix error: expected two operands for binary operator"},
        {"15", L"toInfix error: incorrect brackets"},
        {"42 01 04 00", L"toInfix error: incorrect function expression"},
        {"1E 01 00 1E 02 00", L"can't build infix formula string"},
        {"", L"can't build infix formula string"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(c.tokens, FakeBook()), c.text) << c.tokens;
}

TEST(TokensToText, Functions) {
    const TextCase cases[] = {
        {"1E 01 00 1E 02 00 21 1B 00", L"ROUND(1;2)"},
        {"41 13 00", L"PI()"},
        {"1E 01 00 1E 02 00 1E 03 00 42 03 01 00", L"IF(1;2;3)"},
        {"44 00 00 00 C0 16 1E 02 00 22 03 01 00", L"IF(A1;MISS;2)"},
        {"25 00 00 02 00 00 C0 00 C0 19 10 00 00", L"SUM(A1:A3)"},
        {"65 00 00 02 00 00 00 00 00 19 10 34 12", L"SUM($A$1:$A$3)"},
        {"1E 01 00 21 17 00", L"LOG10(1)"},
        {"1E 01 00 1E 02 00 21 61 00", L"ATAN2(1;2)"},
        {"1E 01 00 1E 02 00 42 02 DC 00", L"DAYS360(1;2)"},
        {"1E 01 00 42 01 6D 00", L"LOG(1)"},
        {"23 01 00 00 00 1E 02 00 42 02 FF 00", L"Rate(2)"},
        {"39 00 00 01 00 00 00 1E 02 00 1E 03 00 42 03 FF 00", L"?(2;3)"},
        {"23 01 00 00 00 42 01 FF 00", L"Rate()"},
        {"42 00 FF 00", L"USERDEFINED()"},
        {"1E 05 00 1E 06 00 42 02 CA 00", L"?(5;6)"},                // an id that no function has
        {"1E 01 00 41 CA 00", L"can't build infix formula string"},  // the same with a fixed count
        {"42 03 01 80", L"?"},                                       // a command of the application
        {"19 01 00 00 41 DD 00", L"TODAY()"},
        {"44 00 00 00 C0 19 02 07 00 1E 01 00 19 08 03 00 42 02 01 00", L"IF(A1;1)"},
        {"1E 01 00 19 40 00 02", L"1"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(c.tokens, FakeBook()), c.text) << c.tokens;
    FakeBook comma;
    comma.separator = L',';
    EXPECT_EQ(textOf("44 00 00 00 C0 44 00 00 01 C0 42 02 04 00", comma), L"SUM(A1,B1)");
}

// A list of values makes the choose attribute fall apart, since its table is taken for bytes.
TEST(TokensToText, SubstitutesAndWhatHasNoText) {
    const TextCase cases[] = {
        {"01 05 00 03 00", L"?"},
        {"20 00 00 00 00 00 00 00", L"?"},
        {"43 01 00 00 00", L"Rate"},
        {"23 00 00 00 00", L"?"},
        {"23 04 00 00 00", L"?"},
        {"63 01 00 00 00", L"?"},
        {"2A 00 00 00 00", L"#REF!"},
        {"4A 00 00 00 00", L"ERR"},
        {"2B 00 00 00 00 00 00 00 00", L"ERR"},
        {"59 00 00 01 00 00 00", L"?"},
        {"3C 00 00 00 00 00 00", L"ERR"},
        {"18 0A 00 00 00 00 00", L"?"},
        {"18 04 00 00 00 00 00", L"unknown Ptg 0x18"},
        {"19 03 00 00", L"unknown Ptg 0x19"},
        {"00", L"can't recognize formula block: unknown ptg"},
        {"1A", L"can't recognize formula block: unknown ptg"},
        {"2E 00 00", L"can't recognize formula block: unknown ptg"},
        {"7E", L"can't recognize formula block: unknown ptg"},
        {"FF", L"can't recognize formula block: unknown ptg"},
        {"1E 02 00 19 04 01 00 04 00 08 00 1E 05 00 42 02 64 00", L"can't recognize formula block: unknown ptg"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(c.tokens, FakeBook()), c.text) << c.tokens;
}

TEST(TokensToText, CellsAndSharedCells) {
    const TextCase cases[] = {
        {"24 00 00 00 C0", L"B3"},
        {"24 00 00 00 00", L"$A$1"},
        {"24 FF FF FF C0", L"A2"},  // one row and one column back, and no wrap into other bits
        {"2C 00 00 00 80", L"$A3"},
        {"2D 00 00 01 00 00 40 FE C0", L"B$1:IV4"},
        {"5A 00 00 00 00 00 C0", L"Sheet1!A1"},  // with a sheet, nothing is added
    };
    FakeBook book;
    book.spans = {own(0, 0)};
    for (const auto& c : cases) {
        EXPECT_EQ(textOf(c.tokens, book, Generation::biff8, {.row = 2, .col = 1}), c.text) << c.tokens;
    }
    EXPECT_EQ(textOf("44 FF FF FF 00", book), L"$IV$65536");
    EXPECT_EQ(textOf("44 00 00 1A 3F", book), L"$AA$1") << "bits above the column are nothing";
}

TEST(TokensToText, SheetPrefixes) {
    FakeBook book;
    book.spans = {own(0, 0), own(2, 2), own(3, 3), own(0, 1), own(0, 2), own(-1, -1), own(0, 9), SheetSpan{}};
    const TextCase cases[] = {
        {"3A 00 00 00 00 00 C0", L"Sheet1!A1"},
        {"3A 01 00 00 00 00 C0", L"'My Sheet'!A1"},
        {"3A 02 00 00 00 00 C0", L"'O''Neil'!A1"},
        {"3A 03 00 00 00 00 C0", L"Sheet1:Sheet2!A1"},
        {"3B 04 00 00 00 01 00 00 C0 01 C0", L"'Sheet1:My Sheet'!A1:B2"},
        {"3A 05 00 00 00 00 C0", L"#REF!A1"},
        {"3A 06 00 00 00 00 C0", L"#REF!A1"},
        {"3A 07 00 00 00 00 C0", L"#REF!A1"},
        {"3A 08 00 00 00 00 C0", L"#REF!A1"},
        {"3B 05 00 00 00 01 00 00 C0 02 00", L"#REF!A:$C"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(c.tokens, book), c.text) << c.tokens;
    book.spans = {{SheetSpan::Where::noBooks, -1, -1}};
    EXPECT_EQ(textOf("3A 00 00 00 00 00 C0", book), L"A1");
    EXPECT_EQ(textOf("3B 00 00 00 00 01 00 00 C0 01 C0", book), L"A1:B2");
}

TEST(TokensToText, R1C1) {
    FakeBook book;
    book.r1c1 = true;
    const TextCase cases[] = {
        {"44 01 00 01 C0", L"RC"},
        {"44 01 00 01 00", L"R2C2"},
        {"44 00 00 00 C0", L"R[-1]C[-1]"},
        {"44 02 00 03 80", L"R[1]C4"},
        {"25 00 00 01 00 00 C0 01 C0", L"A1:B2"},
        {"17 02 00 42 32", L"\"B2\""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(textOf(c.tokens, book, Generation::biff8, {}, {.row = 1, .col = 1}), c.text) << c.tokens;
    }
}

// The older layout: one byte a character, relative bits in the row, sheets named by the tokens themselves.
TEST(TokensToText, OlderLayout) {
    const TextCase cases[] = {
        {"17 02 61 62", L"\"ab\""},
        {"24 00 C0 00", L"A1"},
        {"25 00 C0 02 40 00 01", L"A1:B$3"},
        {"2C FF FF FF", L"A2"},
        {"23 01 00 00 00 00 00 00 00 00 00 00 00 00 00", L"Rate"},
        {"3A FE FF 00 00 00 00 00 00 01 00 01 00 01 00 00 00 00", L"Sheet2!$A$1"},
        {"3B FF FF 00 00 00 00 00 00 00 00 00 00 01 00 00 C0 01 C0 00 01", L"Sheet1:Sheet2!A1:B2"},
        {"3A FE FF 00 00 00 00 00 00 00 00 FF FF FF FF 00 00 00", L"#REF!$A$1"},
        {"3A 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00", L"#REF!$A$1"},
        {"1E 02 00 19 04 01 00 04 00 08 00 1E 05 00 42 02 64 00", L"CHOOSE(2;5)"},
    };
    for (const auto& c : cases) {
        const formula::LocationBase base =
            c.tokens[1] == 'C' ? formula::LocationBase{.row = 2, .col = 1} : formula::LocationBase{};
        EXPECT_EQ(textOf(c.tokens, FakeBook(), Generation::biff5, base), c.text) << c.tokens;
    }
}

// Whatever the stream's end cuts off a token: a text, and never half a token.
TEST(TokensToText, TokensCutShort) {
    const char* const whole[] = {
        "17 02 01 61 00 62 00",
        "1F 00 00 00 00 00 00 F0 3F",
        "24 00 00 00 C0",
        "25 00 00 00 00 00 00 00 00",
        "23 01 00 00 00",
        "42 02 04 00",
        "1D 01",
        "20 00 00 00 00 00 00 00",
        "3A 00 00 00 00 00 C0",
        "19 10 00 00",
        "01 00 00 00 00",
        "29 00 00",
        "18 0A 00 00 00 00 00",
    };
    std::set<std::wstring> texts;
    for (const char* tokens : whole) {
        const auto bytes = hex(tokens);
        for (std::size_t n = 1; n < bytes.size(); ++n) {
            const std::wstring text = textOf(hexOf(std::span(bytes).first(n)), FakeBook());
            EXPECT_TRUE(text.starts_with(L"ByteStream::pop") && text.ends_with(L"() error")) << tokens << " " << n;
            texts.insert(text);
        }
    }
    EXPECT_TRUE(texts.contains(L"ByteStream::popInt32() error"));
    EXPECT_TRUE(texts.contains(L"ByteStream::popDouble() error"));
}

TEST(TokensToText, DeepNestingTakesNoLonger) {
    std::string deep = "1E 01 00";
    for (int i = 0; i < 16000; ++i) deep += " 15";
    const std::wstring text = textOf(deep, FakeBook());
    EXPECT_EQ(text.size(), 32001U);
    EXPECT_EQ(textOf(deep + deep.substr(8, 3 * 500), FakeBook()), L"string is too long");
}

TEST(TokenWalk, GoesByPublishedWidths) {
    const auto stream =
        hex("1E 02 00 19 04 02 00 06 00 0A 00 0E 00 1E 05 00 19 08 09 00 1E 06 00 19 08 03 00 42 03 64 00 18 0A 00 00 "
            "00 00 2E 00 00 19 21 00 00");
    std::string codes;
    formula::TokenWalk walk(stream);
    while (walk.next()) codes += hexOf(stream).substr(3 * walk.offset(), 3);
    EXPECT_EQ(codes, "1E 19 1E 19 1E 19 42 18 2E 19 ");
    EXPECT_FALSE(walk.isBroken());
    for (const char* broken : {"1E 00", "00", "17 05 00 61", "19 04 FF FF 00", "19 03 00 00", "7F"}) {
        const auto bytes = hex(broken);
        formula::TokenWalk cut(bytes);
        EXPECT_FALSE(cut.next()) << broken;
        EXPECT_TRUE(cut.isBroken()) << broken;
    }
}

}  // namespace
}  // namespace vellum::test
