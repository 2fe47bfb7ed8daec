// Functions that files have under a prefix.
#include "xlsx/features/future_functions.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <random>
#include <vector>

#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

/// A search for each name in turn, as the rule says it.
std::wstring searched(std::wstring text) {
    if (text.find(L'(') == std::wstring::npos) return text;
    for (const std::wstring_view name : xlsx::futureFunctions()) {
        std::vector<bool> quoted;
        bool single = false, doubled = false;
        for (const wchar_t c : text) {
            if (c == L'\'') single = !single;
            if (c == L'"') doubled = !doubled;
            quoted.push_back(single || doubled);
        }
        std::wstring result;
        for (std::size_t i = 0; i < text.size();) {
            const bool isHit = text.compare(i, name.size(), name) == 0 && !quoted[i] &&
                               (i == 0 || !std::iswalpha(static_cast<wint_t>(text[i - 1])));
            if (isHit) {
                result.append(L"_xlfn.").append(name);
                i += name.size();
            } else {
                result += text[i++];
            }
        }
        text = result;
    }
    return text;
}

TEST(FutureFunctions, AsTheRuleSays) {
    const struct {
        const wchar_t *text, *prefixed;
    } cases[] = {
        {L"ACOT(1)+MACOT(1)", L"_xlfn.ACOT(1)+MACOT(1)"},
        {L"ACOTH(ACOT(1))", L"_xlfn.ACOTH(_xlfn.ACOT(1))"},
        {L"\"ACOT(\"&'ACOT('!A1", L"\"ACOT(\"&'ACOT('!A1"},
        {L"\"it's\"&ACOT(1)", L"\"it's\"&ACOT(1)"},  // the apostrophe shields the rest
        {L"_xlfn.ACOT(1)", L"_xlfn._xlfn.ACOT(1)"},
        {L"NETWORKDAYS(A1,B1)-DAYS(A1,B1)", L"NETWORKDAYS(A1,B1)-_xlfn.DAYS(A1,B1)"},
        {L"T.DIST.2T(1,2)+x.T.DIST(1)+2T.DIST(1)", L"_xlfn.T.DIST.2T(1,2)+x._xlfn.T.DIST(1)+2_xlfn.T.DIST(1)"},
        {L"acot(1)+ACOT (1)", L"acot(1)+ACOT (1)"},
        {L"ACOT", L"ACOT"},
        {L"(ACOT(", L"(_xlfn.ACOT("},
    };
    for (const auto& c : cases) {
        std::wstring text = c.text;
        xlsx::prefixFunctions(text);
        EXPECT_EQ(text, c.prefixed);
        EXPECT_EQ(searched(c.text), c.prefixed);
    }
}

TEST(FutureFunctions, TheShortWayIsTheLongOne) {
    std::mt19937 random(119);
    const auto names = xlsx::futureFunctions();
    const std::wstring_view glue[] = {L"'", L"\"", L"_xlfn.", L".",    L"+", L"A", L"9",
                                      L"(", L")",  L" ",      L"\xE9", L"T", L"x"};
    for (int round = 0; round < 100000; ++round) {
        std::wstring text;
        for (unsigned pieces = random() % 8; pieces > 0; --pieces) {
            if (random() % 2 == 0) {
                const std::wstring_view name = names[random() % names.size()];
                text += random() % 5 == 0 ? name.substr(random() % name.size()) : name;
            } else {
                text += glue[random() % std::size(glue)];
            }
        }
        std::wstring fast = text;
        xlsx::prefixFunctions(fast);
        ASSERT_EQ(fast, searched(text)) << round;
    }
}

TEST(FutureFunctions, EachIsWrittenWithItsPrefixAndReadWithout) {
    TestSheet sheet("");
    int row = 0;
    for (const std::wstring_view name : xlsx::futureFunctions()) {
        const std::string text = std::string(name.begin(), name.end()) + "A1;2)";
        ASSERT_TRUE(sheet->writeFormula(row, 0, ("=" + text).c_str(), nullptr));
        const std::wstring& stored =
            sheet->root().sheetData().row()[static_cast<std::size_t>(row)].c()[0].formula()->text();
        EXPECT_EQ(stored, L"_xlfn." + std::wstring(name) + L"A1,2)");
        EXPECT_EQ(sheet.formula(row, 0), std::string(name.begin(), name.end()) + "A1,2)");
        ++row;
    }
    EXPECT_EQ(row, 119);
    EXPECT_TRUE(sheet->writeFormulaNumber(row, 0, "{=XOR(A1)}", 1, nullptr));
    EXPECT_EQ(sheet->root().sheetData().row().back().c()[0].formula()->text(), L"_xlfn.XOR(A1)");
}

}  // namespace
}  // namespace vellum::test
