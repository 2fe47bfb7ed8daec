// Links, rules, errors that are not pointed out, protection.
#include <gtest/gtest.h>

#include <cmath>
#include <regex>

#include "engine/facts/password_hash.h"
#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

TEST(Passwords, HaveTheHashesOfTheFormat) {
    const struct {
        const wchar_t* password;
        int hash;
    } cases[] = {{L"password", 0x83AF},
                 {L"test", 0xCBEB},
                 {L"a", 0xCE88},
                 {L"0", 0xCE2A},
                 {L"01", 0xCEED},
                 {L"0123456789", 0xFF84},
                 {L"abcdefghijklmnop", 0xC643},
                 {L"this is a longer one", 0x97B5}};
    for (const auto& c : cases) EXPECT_EQ(passwordHash(c.password), c.hash) << c.password;
    EXPECT_EQ(passwordHash(L"\x100"), passwordHash(L"\x01"));  // its low byte is 0
}

template <class Tag>
class Rules : public testing::Test {
protected:
    Rules() : _sheet("") { _sheet.book.workbook().sheets().sheet().append().name(L"S"); }
    /// An element without its end tag; truth values as 0 and 1.
    std::string saved(const char* element) {
        const std::string all = std::regex_replace(
            std::regex_replace(_sheet.saved(), std::regex("=\"true\""), "=\"1\""), std::regex("=\"false\""), "=\"0\"");
        const auto from = all.find(std::string("<") + element);
        if (from == std::string::npos) return "";
        const auto end = all.find(std::string("</") + element + ">", from);
        return end == std::string::npos ? all.substr(from, all.find('>', from) + 1 - from)
                                        : all.substr(from, end - from);
    }
    TestSheet<Tag> _sheet;
};
using Dialects = testing::Types<excelNormal_tag, excelStrict_tag>;
TYPED_TEST_SUITE(Rules, Dialects);

TYPED_TEST(Rules, LinksOfEachKind) {
    auto& sheet = this->_sheet;
    const struct {
        const char* target;
        bool isPlace;
    } targets[] = {{"https://example.org/a!b c", false},
                   {"Sheet2!A1", true},
                   {"'My sheet'!A1", true},
                   {"folder/file.xlsx", false},
                   {"mailto:a@b", false},
                   {"\xC3\xA9!x", true},
                   {"x://y!z", false}};
    for (const auto& t : targets) EXPECT_TRUE(sheet->addHyperlink(t.target, 1, 1, 2, 2)) << sheet.error();
    ASSERT_EQ(sheet->hyperlinkTotal(), static_cast<int>(std::size(targets)));
    const auto& links = sheet->root().hyperlinks().hyperlink();
    for (int i = 0; i < sheet->hyperlinkTotal(); ++i) {
        const char* const kept = sheet->readString(0, 0, nullptr);
        const char* const target = sheet->hyperlinkAt(i, nullptr, nullptr, nullptr, nullptr);
        EXPECT_EQ(kept, nullptr);
        EXPECT_STREQ(target, targets[i].target);
        EXPECT_EQ(links[static_cast<std::size_t>(i)].isset_location(), targets[i].isPlace) << targets[i].target;
    }
    EXPECT_EQ(sheet.book.relationships->root().Relationship().size(), 4u);
    EXPECT_EQ(sheet.book.relationships->root().Relationship()[0].TargetMode(), "External");
    EXPECT_TRUE(sheet->addHyperlink("S!A1", 5, 3, 4, 2));
    int at[4];
    EXPECT_STREQ(sheet->hyperlinkAt(7, at, at + 1, at + 2, at + 3), "S!A1");
    EXPECT_EQ(links[7].ref(), "C4:E6");
    EXPECT_EQ(at[0] * 1000 + at[1] * 100 + at[2] * 10 + at[3], 3524);
    for (const int index : {-1, 8, 2147483647}) {
        EXPECT_EQ(sheet->hyperlinkAt(index, nullptr, nullptr, nullptr, nullptr), nullptr);
        EXPECT_EQ(sheet.error(), "index is out of range");
        EXPECT_FALSE(sheet->removeHyperlinkAt(index));
    }
    for (int i = 0; i < 8; ++i) EXPECT_TRUE(sheet->removeHyperlinkAt(0));
    EXPECT_FALSE(sheet->root().isset_hyperlinks());
    EXPECT_EQ(sheet.book.relationships->root().Relationship().size(), 4u);
}

TYPED_TEST(Rules, LinksOfOthers) {
    auto& sheet = this->_sheet;
    auto& links = sheet->root().hyperlinks().hyperlink();
    for (const char* const ref : {"A1", "A2", "A3", "oops", "A5"}) links.append().ref(ref);
    links[1].id("rId9");
    links[2].id("rId9");
    links[2].location(L"S!B2");
    links[4].id(sheet.book.ensureRelationshipsOf("").add("t", "file.txt", true));
    links[4].location(L"a place in it");
    const char* const texts[] = {"", nullptr, "S!B2", nullptr, "file.txt"};
    for (int i = 0; i < 5; ++i) EXPECT_STREQ(sheet->hyperlinkAt(i, nullptr, nullptr, nullptr, nullptr), texts[i]) << i;
    sheet->hyperlinkAt(1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(sheet.error(), "sheet relationships is not found");
    sheet->hyperlinkAt(3, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(sheet.error(), "ref has unrecognized format");
}

TYPED_TEST(Rules, OfValidation) {
    auto& sheet = this->_sheet;
    EXPECT_FALSE(sheet->removeValidationRules());
    EXPECT_EQ(sheet.error(), "data validations are not found");
    EXPECT_TRUE(sheet->addValidationRule(3, 0, 1, 4, 0, 0, "=\"a,b\"", nullptr, true, false, true, true, nullptr,
                                         nullptr, nullptr, nullptr, 0));
    EXPECT_TRUE(sheet->addValidationRuleNumeric(2, 7, 0, 0, 0, 0, 0.1, 2e300, false, true, false, false, "t", "p", "et",
                                                "e", 5));
    EXPECT_EQ(
        this->saved("dataValidations"),
        "<dataValidations count=\"2\">"
        "<dataValidation type=\"list\" errorStyle=\"stop\" operator=\"between\" allowBlank=\"1\" showDropDown=\"0\" "
        "showInputMessage=\"1\" showErrorMessage=\"1\" "
        "sqref=\"A2:A5\"><formula1>&quot;a,b&quot;</formula1></dataValidation>"
        "<dataValidation type=\"decimal\" errorStyle=\"information\" operator=\"greaterThanOrEqual\" allowBlank=\"0\" "
        "showDropDown=\"1\" showInputMessage=\"0\" showErrorMessage=\"0\" errorTitle=\"et\" error=\"e\" "
        "promptTitle=\"t\" prompt=\"p\" sqref=\"A1\"><formula1>0.10000000000000001</formula1>"
        "<formula2>2.0000000000000001e+300</formula2></dataValidation>");
    const struct {
        int type, op, row;
        double value;
        const char* text;
    } refused[] = {{8, 0, 0, 1, "type must be in range 0-7"},
                   {-1, 0, 0, 1, "type must be in range 0-7"},
                   {1, 8, 0, 1, "operator must be in range 0-7"},
                   {1, 0, 1048576, 1, "row must be in range 0-1048575"},
                   {1, 0, 0, INFINITY, "value must be a finite number"}};
    for (const auto& c : refused) {
        EXPECT_FALSE(sheet->addValidationRuleNumeric(c.type, c.op, c.row, c.row, 0, 0, c.value, 1, true, false, true,
                                                     true, nullptr, nullptr, nullptr, nullptr, 0));
        EXPECT_EQ(sheet.error(), c.text);
    }
    EXPECT_EQ(sheet->root().dataValidations().dataValidation().size(), 2u);
    EXPECT_TRUE(sheet->removeValidationRules());
    EXPECT_FALSE(sheet->removeValidationRules());
}

TYPED_TEST(Rules, OfIgnoredErrors) {
    auto& sheet = this->_sheet;
    EXPECT_TRUE(sheet->addIgnoredErrorRange(0, 0, 4, 2, 4));
    EXPECT_FALSE(sheet->addIgnoredErrorRange(0, 0, 4, 2, 4 | 8));
    EXPECT_EQ(sheet.error(), "ignored error already exists");
    EXPECT_TRUE(sheet->addIgnoredErrorRange(0, 0, 4, 2, 1 | 128));
    EXPECT_TRUE(sheet->addIgnoredErrorRange(0, 0, 0, 0, 2 | 8 | 16 | 32 | 64));
    EXPECT_EQ(this->saved("ignoredErrors"),
              "<ignoredErrors><ignoredError sqref=\"A1:C5\" evalError=\"1\" numberStoredAsText=\"1\" "
              "listDataValidation=\"1\"/><ignoredError sqref=\"A1\" twoDigitTextYear=\"1\" formula=\"1\" "
              "formulaRange=\"1\" unlockedFormula=\"1\" emptyCellReference=\"1\"/>");
    for (const int flags : {0, -1, 256}) {
        EXPECT_FALSE(sheet->addIgnoredErrorRange(7, 7, 7, 7, flags));
        EXPECT_EQ(sheet.error(), "flags must be in range 1-255");
    }
}

TYPED_TEST(Rules, OfProtection) {
    auto& sheet = this->_sheet;
    EXPECT_FALSE(sheet->isProtected());
    EXPECT_TRUE(sheet->setProtected(true, "test", -1));
    EXPECT_TRUE(sheet->isProtected());
    auto& element = sheet->root().sheetProtection();
    EXPECT_EQ(element.password().hex(), "CBEB");
    element.unset_password();
    EXPECT_EQ(this->saved("sheetProtection"), "<sheetProtection sheet=\"1\" objects=\"1\" scenarios=\"1\"/>");
    element.algorithmName(L"SHA-512");
    element.spinCount(100000);
    EXPECT_TRUE(sheet->setProtected(true, nullptr, 0));
    EXPECT_TRUE(element.isset_algorithmName());
    EXPECT_TRUE(sheet->setProtected(true, "password", 0));
    EXPECT_EQ(element.password().hex(), "83AF");
    element.unset_password();
    EXPECT_EQ(this->saved("sheetProtection"),
              "<sheetProtection sheet=\"1\" objects=\"1\" scenarios=\"1\" selectLockedCells=\"1\" "
              "selectUnlockedCells=\"1\"/>");
    EXPECT_TRUE(sheet->setProtected(true, "", 32767));
    EXPECT_EQ(
        this->saved("sheetProtection"),
        "<sheetProtection sheet=\"1\" formatCells=\"0\" formatColumns=\"0\" formatRows=\"0\" insertColumns=\"0\" "
        "insertRows=\"0\" insertHyperlinks=\"0\" deleteColumns=\"0\" deleteRows=\"0\" sort=\"0\" autoFilter=\"0\" "
        "pivotTables=\"0\"/>");
    EXPECT_TRUE(sheet->setProtected(false, nullptr, -1));
    EXPECT_FALSE(sheet->isProtected());
}

/// Nothing that is null or beyond all bounds does harm.
TYPED_TEST(Rules, NullsAndBounds) {
    auto& sheet = this->_sheet;
    EXPECT_FALSE(sheet->addHyperlink(nullptr, 0, 0, 0, 0));
    EXPECT_EQ(sheet.error(), "text is NULL");
    EXPECT_FALSE(sheet->setNamedRangeByName(nullptr, 0, 0, 0, 0, -1, false));
    EXPECT_EQ(sheet.error(), "text is NULL");
    EXPECT_FALSE(sheet->namedRangeByName(nullptr, nullptr, nullptr, nullptr, nullptr, -1, nullptr));
    EXPECT_FALSE(sheet->removeNamedRange(nullptr, -1));
    EXPECT_FALSE(sheet->parseCellAddress(nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(sheet.error(), "text is NULL");
    for (const int bad : {-1, 1048576, 2147483647}) {
        EXPECT_FALSE(sheet->setPrintAreaRange(0, bad, 0, 0));
        EXPECT_EQ(sheet.error(), "row must be in range 0-1048575");
        EXPECT_FALSE(sheet->setRepeatRows(bad, 0));
        EXPECT_EQ(sheet.error(), "row must be in range 0-1048575");
        EXPECT_FALSE(sheet->setRepeatColumns(0, bad));
        EXPECT_EQ(sheet.error(), "col must be in range 0-16383");
        EXPECT_FALSE(sheet->setNamedRangeByName("n", 0, 0, bad, 0, -1, false));
        EXPECT_EQ(sheet.error(), "col must be in range 0-16383");
        EXPECT_FALSE(sheet->addHyperlink("x", 0, 0, 0, bad));
        EXPECT_FALSE(sheet->addIgnoredErrorRange(bad, 0, 0, 0, 1));
    }
    EXPECT_FALSE(sheet.book.workbook().isset_definedNames());
    EXPECT_FALSE(sheet->root().isset_hyperlinks());
    EXPECT_FALSE(sheet->root().isset_ignoredErrors());
}

}  // namespace
}  // namespace vellum::test
