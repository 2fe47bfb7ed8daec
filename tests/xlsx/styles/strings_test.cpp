// The string table, escapes, rich strings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/api/ifont.h"
#include "engine/api/irichstring.h"
#include "engine/api/isheet.h"
#include "engine/failure/vlerror.h"
#include "tests/xlsx/book/package.h"
#include "xlsx/strings/shared_strings.h"

namespace vellum {
namespace {

using testing::HasSubstr;

using Strings = SharedStrings<char, excelNormal_tag>;

std::string text(Strings& strings) {
    std::string xml;
    strings.writeToPath(xml);
    return xml;
}

TEST(SharedStrings, Escapes) {
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"plain \t\n\r", L"plain \t\n\r"},
        {std::wstring(1, 1), L"_x0001_"},
        {L"_x0041_", L"_x005F_x0041_"},
        {L"__x00aF__x00aF_", L"__x005F_x00aF__x005F_x00aF_"},
        {L"_x041_ _X0041_ _x0041", L"_x041_ _X0041_ _x0041"},
        {std::wstring{0xD800, 0xDFFF, 0xFFFE, 0xFFFF}, L"_xD800__xDFFF__xFFFE__xFFFF_"},
        {std::wstring{0xE000, 0xFFFD, 0x10000, 0x10FFFF}, std::wstring{0xE000, 0xFFFD, 0x10000, 0x10FFFF}}};
    for (const auto& [raw, escaped] : rows) {
        std::wstring scratch;
        EXPECT_EQ(escapeSharedText(raw, scratch), escaped);
    }
}

TEST(SharedStrings, EqualTextsStandOnce) {
    Strings strings;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(strings.addString(L"A"), 0u);
    EXPECT_EQ(strings.addString(L" B"), 1u);
    EXPECT_EQ(strings.addString(L""), 2u);
    EXPECT_THAT(text(strings), HasSubstr("count=\"5\" uniqueCount=\"3\""));
    EXPECT_THAT(text(strings), HasSubstr("<t xml:space=\"preserve\"> B</t>"));
    EXPECT_EQ(strings.addString(std::wstring(32767, L'x')), 3u);
    EXPECT_THROW(strings.addString(std::wstring(32768, L'x')), vlerror);
    EXPECT_THROW(strings.textAt(4), vlerror);
    EXPECT_THROW(strings.isRich(4), vlerror);
}

const std::string sst =
    R"(<sst xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" uniqueCount="99"><si><t>a</t></si>)"
    R"(<si><r><t>Hel</t></r><r><rPr><b/><sz val="9"/></rPr><t>lo</t></r><rPh sb="0" eb="1"><t>p</t></rPh></si>)"
    R"(<si><t>a</t></si></sst>)";

TEST(SharedStrings, OfAFile) {
    Strings strings(PartBytes{sst, nullptr});
    EXPECT_EQ(strings.textAt(1), L"Hello");
    EXPECT_TRUE(strings.isRich(1));
    EXPECT_FALSE(strings.isRich(0));
    EXPECT_EQ(strings.addString(L"a"), 2u);      // the later of two
    EXPECT_EQ(strings.addString(L"Hello"), 1u);  // a rich text stands under its characters
    EXPECT_EQ(strings.addString(L"Hel"), 3u);
    EXPECT_THAT(text(strings), HasSubstr("count=\"3\" uniqueCount=\"4\""));
    EXPECT_THAT(text(strings), HasSubstr("<rPh sb=\"0\" eb=\"1\"><t>p</t></rPh>"));
}

TEST(RichString, PlainTextsKeepApartFromRunsThatGrow) {
    const BookPtr book = newBook();
    ISheetT<char>* const sheet = book->addSheet("A", nullptr);
    IRichStringT<char>* const rich = book->newRichString();
    ASSERT_TRUE(sheet->writeString(0, 0, "", nullptr, 2));
    ASSERT_TRUE(rich->addRun("Hel", nullptr));
    ASSERT_TRUE(sheet->writeString(1, 0, "Hel", nullptr, 2));
    ASSERT_TRUE(rich->addRun("lo", nullptr));
    ASSERT_TRUE(sheet->writeString(2, 0, "Hel", nullptr, 2));
    const char* const texts[] = {"", "Hel", "Hel"};
    for (int row = 0; row < 3; ++row) EXPECT_STREQ(sheet->readString(row, 0, nullptr), texts[row]);
}

TEST(RichString, RunsComeBack) {
    const BookPtr book = newBook();
    ISheetT<char>* const sheet = book->addSheet("A", nullptr);
    IRichStringT<char>* const rich = book->newRichString();
    ASSERT_TRUE(rich);
    EXPECT_EQ(rich->runTotal(), 0);
    IFontT<char>* const font = rich->addFont(nullptr);
    font->setBold(true);
    font->setSize(20);
    font->setUnderline(33);
    font->setScript(1);
    font->setName("Arial");
    ASSERT_TRUE(rich->addRun("one ", nullptr));
    ASSERT_TRUE(rich->addRun("two", font));
    ASSERT_TRUE(sheet->writeRichText(0, 0, rich, nullptr)) << book->errorMessage();
    const auto parts = savedParts(*book);
    EXPECT_THAT(parts.at("xl/sharedStrings.xml"), HasSubstr("uniqueCount=\"1\""));

    const BookPtr again = newBook();
    ASSERT_TRUE(load(*again, packed({parts.begin(), parts.end()}))) << again->errorMessage();
    EXPECT_TRUE(again->getSheet(0)->isRichTextCell(0, 0));
    EXPECT_STREQ(again->getSheet(0)->readString(0, 0, nullptr), "one two");
    IRichStringT<char>* const read = again->getSheet(0)->readRichText(0, 0, nullptr);
    ASSERT_TRUE(read) << again->errorMessage();
    ASSERT_EQ(read->runTotal(), 2);
    IFontT<char>* fontRead = nullptr;
    EXPECT_STREQ(read->runAt(1, &fontRead), "two");
    ASSERT_TRUE(fontRead);
    EXPECT_TRUE(fontRead->isBold());
    EXPECT_FALSE(fontRead->isItalic());
    EXPECT_EQ(fontRead->size(), 20);
    EXPECT_EQ(fontRead->underline(), 33);
    EXPECT_EQ(fontRead->script(), 1);
    EXPECT_STREQ(fontRead->name(), "Arial");
    EXPECT_STREQ(read->runAt(0, &fontRead), "one ");
    EXPECT_EQ(read->runAt(2, nullptr), nullptr);
    EXPECT_EQ(read->runAt(-1, nullptr), nullptr);
}

}  // namespace
}  // namespace vellum
