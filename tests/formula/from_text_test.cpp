#include "tests/formula/fixture.h"

namespace vellum::test {
namespace {

std::wstring postfixOf(std::wstring text) {
    try {
        return formula::PostfixMaker().textToPostfix(text);
    } catch (const vlerror& e) {
        const std::string_view failure = e.what();
        return {failure.begin(), failure.end()};
    }
}

TEST(TextToPostfix, WordsInTheOrderOfWork) {
    const struct {
        const wchar_t *text, *postfix;
    } cases[] = {
        {L"=1+2*3", L"1 2 3 * +"},
        {L"(1+2)*3", L"1 2 + ( 3 *"},
        {L"2^3^2", L"2 3 ^ 2 ^"},
        {L"-A1", L"A1 uMinus"},
        {L"A1*-2", L"A1 2 uMinus *"},
        {L"-2^2", L"2 uMinus 2 ^"},
        {L"1--2", L"1 2 uMinus -"},
        {L"10%", L"10 uPercent"},
        {L"A1&B1=\"x\"", L"A1 B1 \"x\" = &"},
        {L"1<2=3", L"1 2 < 3 ="},
        {L"1>=2<>3", L"1 2 >= 3 <>"},
        {L"\"a b\"&\"c\"", L"\"a b\" \"c\" &"},
        {L"'My Sheet'!A1", L"'My Sheet'!A1"},
        {L" = 1 + 2 ", L"1 2 +"},
        {L"SUM(A1:B2;C1)", L"A1:B2 C1 SUM2F"},
        {L"SUM(A1:B2,C1)", L"A1:B2 C1 SUM2F"},
        {L"SUM(1,(2+3)*4)", L"1 2 3 + ( 4 * SUM2F"},
        {L"IF(A1>1,SUM(1,2),PI())", L"A1 1 > 1 2 SUM2F PI0F IF3F"},
        {L"LEN(\"\")", L"\"\" LEN1F"},
        {L"LEN(\"a,b)\")", L"\"a,b)\" LEN1F"},
        {L"IF(\"don't\"=A1,1,2)", L"\"don't\" A1 = 1 2 IF3F"},
        {L"VLOOKUP(A1,B1:C9,2,)", L"A1 B1:C9 2 VLOOKUP4F"},
        {L"SUM(,2)", L"2 SUM1F"},
        {L"PI()*2", L"PI0F 2 *"},
        {L"TRUE+1", L"TRUE 1 +"},
        {L"IF(TRUE,1,2)", L"TRUE 1 2 IF3F"},
        {L"TRUE()", L"TRUE0F"},
        {L"TRUE", L"error: function parentheses not found"},
        {L"A1=TRUE", L"error: function parentheses not found"},
        {L"A1)", L"error in formula"},
        {L"SUM(A1", L"error: function parentheses not found"},
        {L"SUM", L"error: function parentheses not found"},
        {L"SUM+(1)", L"error: function name without open parenthesis"},
        {L"(1+2", L"1 2 + ("},
        {L"", L""},
        {L"#N/A", L"#N/A"},
        {L"=#N/A", L"#N A /"},
        {L"#REF!+1", L"#REF! 1 +"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(postfixOf(c.text), c.postfix) << std::string(c.text, c.text + std::wcslen(c.text));
    }
}

TEST(TextToPostfix, MarksCellsThatFunctionsTakeAsReferences) {
    const struct {
        const wchar_t *text, *postfix;
    } cases[] = {
        {L"ROWS(A1)", L"A1R ROWS1F"},
        {L"ABS(A1)", L"A1 ABS1F"},
        {L"COUNT(A1,B2,C3:D4)", L"A1R B2R C3:D4 COUNT3F"},
        {L"NPV(A1,B1)", L"A1 B1R NPV2F"},
        {L"VLOOKUP(A1,B1,C1)", L"A1 B1R C1R VLOOKUP3F"},
        {L"COUNT(ABS(A1),B1)", L"A1 ABS1F B1R COUNT2F"},
        {L"COUNT((A1),B1)", L"A1R ( B1R COUNT2F"},
        {L"COUNT(A1)+A1", L"A1R COUNT1F A1 +"},
        {L"ROWS('My! Sheet'!$A$1)", L"'My! Sheet'!$A$1R ROWS1F"},
        {L"ROWS(Rate)", L"Rate ROWS1F"},
        {L"ROWS(IF(TRUE,A1,B1))", L"TRUE A1 B1 IF3F ROWS1F"},
        {L"CELL(\"row\",A1)", L"\"row\" A1R CELL2F"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(postfixOf(c.text), c.postfix) << std::string(c.text, c.text + std::wcslen(c.text));
    }
}

struct TokenCase {
    const wchar_t* text;
    const char* tokens;
};

void expectTokens(std::span<const TokenCase> cases) {
    for (const auto& c : cases) {
        FakeBook book;
        EXPECT_EQ(tokensOf(c.text, book), c.tokens) << std::string(c.text, c.text + std::wcslen(c.text));
    }
}

TEST(TextToTokens, Constants) {
    expectTokens(std::vector<TokenCase>{
        {L"5", "1E 05 00"},
        {L"65535", "1E FF FF"},
        {L"65536", "1F 00 00 00 00 00 00 F0 40"},
        {L"123456", "1F 00 00 00 00 00 24 FE 40"},
        {L"0.5", "1F 00 00 00 00 00 00 E0 3F"},
        {L".5", "1F 00 00 00 00 00 00 E0 3F"},
        {L"1.", "1F 00 00 00 00 00 00 F0 3F"},
        {L"1.5.3", "1F 00 00 00 00 00 00 F8 3F"},
        {L"..", "incorrect token in formula"},
        {L"1E5", "incorrect token in formula"},
        {L"\"x\"\"y\"", "17 03 01 78 00 22 00 79 00"},
        {L"\"\"", "17 00 01"},
        {L"\"\u65E5\"", "17 01 01 E5 65"},
        {L"TRUE&\"\"", "1D 01 17 00 01 08"},
        {L"#N/A", "1C 2A"},
        {L"#NUM!", "1C 24"},
        {L"#NAME?", "1C 1D"},
        {L"#REF!", "1C 17"},
        {L"#VALUE!", "1C 0F"},
        {L"#DIV/0!", "1C 07"},
        {L"#NULL!", "1C 00"},
        {L"=#REF!", "1C 17"},
        {L"=#N/A", "incorrect token in formula"},
    });
    FakeBook book;
    EXPECT_EQ(tokensOf(std::wstring(400, L'9'), book), "incorrect token in formula");
    EXPECT_EQ(tokensOf(L'"' + std::wstring(256, L'x') + L'"', book), "ShortXLUnicodeString: string is too long");
    EXPECT_EQ(tokensOf(L'"' + std::wstring(255, L'x') + L'"', book).size(), (3 + 510) * 3 - 1);
}

TEST(TextToTokens, CellsAndAreas) {
    expectTokens(std::vector<TokenCase>{
        {L"A1+1", "44 00 00 00 C0 1E 01 00 03"},
        {L"$A$1", "44 00 00 00 00"},
        {L"$b2", "44 01 00 01 80"},
        {L"IV65536", "44 FF FF FF C0"},
        {L"IW1", "Column is out of range"},
        {L"A65537", "Row is out of range"},
        {L"A0", "Row is out of range"},
        {L"ABCDEFGHIJKLMNOP1", "Column is out of range"},
        {L"A99999999999999999999", "Row is out of range"},
        {L"TAX2024", "Column is out of range"},
        {L"A1:B2", "25 00 00 01 00 00 C0 01 C0"},
        {L"A1:IW2", "Column is out of range"},
        {L"A:A", "incorrect token in formula"},
        {L"A1R", "24 00 00 00 C0"},
        {L"A1B", "incorrect token in formula"},
        {L"rate", "43 01 00 00 00"},
        {L"Total", "43 03 00 00 00"},
        {L"MISS", "incorrect token in formula"},
    });
}

TEST(TextToTokens, Sheets) {
    FakeBook book;
    book.spans = {{SheetSpan::Where::ownBook, 1, 1}};
    const TokenCase cases[] = {
        {L"Sheet2!A1", "5A 00 00 00 00 00 C0"},
        {L"sheet1!A1", "5A 01 00 00 00 00 C0"},
        {L"'My Sheet'!$A$1:B2", "3B 02 00 00 00 01 00 00 00 01 C0"},
        {L"'O''Neil'!A1", "5A 03 00 00 00 00 C0"},
        {L"ROWS(Sheet2!A1)", "3A 00 00 00 00 00 C0 42 01 4C 00"},
        {L"Sheet1:Sheet2!A1", "5A 04 00 00 00 00 C0"},
        {L"'Sheet1:My Sheet'!A1", "5A 05 00 00 00 00 C0"},
        {L"'Sheet1':'My Sheet'!A1", "5A 05 00 00 00 00 C0"},
        {L"Sheet1!A1:Sheet2!B2", "29 0F 00 3A 01 00 00 00 00 C0 3A 00 00 01 00 01 C0 11"},
        {L"Gone!A1", "sheet is not found"},
        {L"#REF!A1", "sheet is not found"},
        {L"Sheet1!IW1", "Column is out of range"},
        {L"Sheet1!Rate", "incorrect token in formula"},
        {L"Sheet1!", "incorrect token in formula"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(tokensOf(c.text, book), c.tokens) << std::string(c.text, c.text + std::wcslen(c.text));
    }
    EXPECT_EQ(tokensOf(L"SUM('O''Neil:Sheet1'!A1)+nothing", book), "incorrect token in formula");
    EXPECT_EQ(book.spans.size(), 6U) << "what fails adds no reference";
}

TEST(TextToTokens, Functions) {
    expectTokens(std::vector<TokenCase>{
        {L"ROWS(A1)", "24 00 00 00 C0 42 01 4C 00"},
        {L"SUM(A1:B2)", "25 00 00 01 00 00 C0 01 C0 42 01 04 00"},
        {L"TODAY()", "19 01 00 00 41 DD 00"},
        {L"OFFSET(A1,1,2)", "24 00 00 00 C0 1E 01 00 1E 02 00 22 03 4E 00"},
        {L"LOG10(2)", "1E 02 00 42 01 17 00"},
        {L"DAYS360(1,2)", "1E 01 00 1E 02 00 42 02 DC 00"},
        {L"ATAN2(1,2)", "1E 01 00 1E 02 00 42 02 61 00"},
        {L"PI()", "42 00 13 00"},
        {L"SUMPRODUCT(A1:A3,B1:B3)", "25 00 00 02 00 00 C0 00 C0 25 00 00 02 00 01 C0 01 C0 42 02 E4 00"},
        {L"SUMPRODUCT(A1:A3*B1:B3)", "65 00 00 02 00 00 C0 00 C0 65 00 00 02 00 01 C0 01 C0 05 42 01 E4 00"},
        {L"SUMPRODUCT(SUM(A1:A3)*B1:B3)",
         "25 00 00 02 00 00 C0 00 C0 42 01 04 00 65 00 00 02 00 01 C0 01 C0 05 42 01 E4 00"},
        {L"SUMXMY2(A1:A2,B1:B2)", "incorrect token in formula"},
        {L"SUMX2MY2(A1:A2,B1:B2)", "incorrect token in formula"},
        {L"sum(A1)", "incorrect token in formula"},
        {L"USERDEFINED(1)", "incorrect token in formula"},
        {L"SUM(A1 B1)", "incorrect token in formula"},
        // The stream that docs/formulas.md tells byte by byte.
        {L"IF(A1>10,ROUND(B1/3,2),\"none\")",
         "44 00 00 00 C0 1E 0A 00 0D 44 00 00 01 C0 1E 03 00 06 1E 02 00 42 02 1B 00 "
         "17 04 01 6E 00 6F 00 6E 00 65 00 42 03 01 00"},
        {L"GET.CELL(1,A1)", "1E 01 00 24 00 00 00 C0 42 02 B9 00"},
    });
    FakeBook book;
    std::wstring many = L"SUM(1";
    for (int i = 1; i < 30; ++i) many += L",1";
    EXPECT_EQ(tokensOf(many + L")", book).substr(90 * 3), "42 1E 04 00");
    EXPECT_EQ(tokensOf(many + L",1)", book), "incorrect token in formula");
}

// A stream in which a token lacks its operands makes other programs call the file damaged.
TEST(TextToTokens, RefusesWhatIsNoExpression) {
    FakeBook book;
    for (const wchar_t* text : {L"", L"=", L"1+", L"*", L"VLOOKUP(A1,B1:C9,2,)", L"A1,B1", L"1 2;3", L"()", L"Rate(1)",
                                L"(1+2", L"SUM1", L"TODAY(1)", L"%", L"A1 SUM1F"}) {
        const std::string tokens = tokensOf(text, book);
        if (std::wstring_view(text) == L"(1+2") {
            EXPECT_EQ(tokens, "1E 01 00 1E 02 00 03 15") << "an open parenthesis counts as closed";
            continue;
        }
        EXPECT_TRUE(tokens == "incorrect token in formula" || tokens == "error: function parentheses not found")
            << std::string(text, text + std::wcslen(text)) << ": " << tokens;
    }
    std::wstring large = L"1";
    for (int i = 0; i < 2000; ++i) large += L"+1";
    EXPECT_EQ(tokensOf(large, book).size(), (3 + 2000 * 4) * 3 - 1U);
    for (int i = 0; i < 50; ++i) large += L"+1";
    EXPECT_EQ(tokensOf(large, book), "string is too long");
}

TEST(TextToTokens, R1C1) {
    FakeBook book;
    book.r1c1 = true;
    const TokenCase cases[] = {
        {L"RC[-1]+R2C2", "44 02 00 01 C0 44 01 00 01 00 03"},
        {L"r[1]c", "44 03 00 02 C0"},
        {L"SUM(R1C1:R[-1]C)", "25 00 00 01 00 00 00 02 C0 42 01 04 00"},
        {L"Sheet2!RC", "5A 00 00 02 00 02 C0"},
        {L"R[-5]C", "44 FD FF 02 C0"},
        {L"RC[254]", "Column is out of range"},
        {L"R0C1", "row must be in range 0-1048575"},
        {L"R1C20000", "col must be in range 0-16383"},
        {L"\"RC\"&RC", "17 02 01 52 00 43 00 44 02 00 02 C0 08"},
        {L"RATE(1,2,3)", "1E 01 00 1E 02 00 1E 03 00 42 03 3C 00"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(tokensOf(c.text, book, {.row = 2, .col = 2}), c.tokens)
            << std::string(c.text, c.text + std::wcslen(c.text));
    }
}

}  // namespace
}  // namespace vellum::test
