#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/xlsx/book/package.h"

namespace vellum {
namespace {

using testing::HasSubstr;
using testing::Not;

BookPtr bookWith(const std::string& inside) {
    BookPtr book = newBook();
    EXPECT_TRUE(load(*book, samplePackageBytes(1, {{"xl/workbook.xml", workbookXml(1, inside)}})))
        << book->errorMessage();
    return book;
}

std::string workbook(IBookT<char>& book) {
    return savedParts(book)["xl/workbook.xml"];
}

TEST(Settings, R1C1) {
    const BookPtr book = bookWith("");
    EXPECT_FALSE(book->usesR1C1());
    EXPECT_TRUE(book->setUsesR1C1(true));
    EXPECT_TRUE(book->usesR1C1());
    EXPECT_THAT(workbook(*book), HasSubstr("refMode=\"R1C1\""));
    EXPECT_TRUE(book->setUsesR1C1(false));
    EXPECT_THAT(workbook(*book), Not(HasSubstr("R1C1")));
    EXPECT_TRUE(bookWith("<calcPr refMode=\"R1C1\"/>")->usesR1C1());
}

TEST(Settings, CalculationMode) {
    const std::pair<const char*, int> rows[] = {{"", 1},
                                                {"<calcPr/>", 1},
                                                {"<calcPr calcMode=\"auto\"/>", 1},
                                                {"<calcPr calcMode=\"autoNoTable\"/>", 2},
                                                {"<calcPr calcMode=\"manual\"/>", 0}};
    for (const auto& [xml, mode] : rows) EXPECT_EQ(bookWith(xml)->calculationMode(), mode) << xml;
    for (const int mode : {0, 2, 1}) {
        const BookPtr book = bookWith("");
        EXPECT_TRUE(book->setCalculationMode(mode));
        EXPECT_EQ(book->calculationMode(), mode);
        EXPECT_EQ(workbook(*book).find("calcMode") == std::string::npos, mode == 1);
    }
}

TEST(Settings, Date1904) {
    const BookPtr book = bookWith("");
    EXPECT_FALSE(book->isDate1904());
    EXPECT_EQ(book->datePack(2000, 1, 1, 12, 0, 0, 0), 36526.5);
    EXPECT_TRUE(book->setDate1904(false));
    EXPECT_THAT(workbook(*book), Not(HasSubstr("date1904")));
    EXPECT_TRUE(book->setDate1904(true));
    EXPECT_TRUE(book->isDate1904());
    EXPECT_EQ(book->datePack(2000, 1, 1, 12, 0, 0, 0), 36526.5 - 1462);
    EXPECT_TRUE(book->setDate1904(false));
    EXPECT_FALSE(book->isDate1904());
    EXPECT_THAT(workbook(*book), HasSubstr("date1904=\"false\""));
    EXPECT_EQ(book->datePack(0, 0, 0, 12, 0, 0, 0), 0.5);
    int year, month, day, hour, min, sec, msec;
    ASSERT_TRUE(book->dateUnpack(60, &year, &month, &day, &hour, &min, &sec, &msec));
    EXPECT_EQ(std::make_tuple(year, month, day), std::make_tuple(1900, 2, 29));
    EXPECT_FALSE(book->dateUnpack(2958466, &year, &month, &day, &hour, &min, &sec, &msec));
}

TEST(Settings, OtherFacts) {
    EXPECT_FALSE(bookWith("")->isWriteProtected());
    EXPECT_TRUE(bookWith("<fileSharing readOnlyRecommended=\"1\"/>")->isWriteProtected());
    const BookPtr book = bookWith("");
    EXPECT_EQ(book->engineVersion(), 0x4000301);
    EXPECT_EQ(book->binaryVersion(), 0);
    EXPECT_FALSE(book->setLocale(nullptr));
    EXPECT_STREQ(book->errorMessage(), "setlocale error (1)");
    EXPECT_FALSE(book->setLocale("no such locale"));
    EXPECT_STREQ(book->errorMessage(), "setlocale error (2)");
}

TEST(Settings, LinksOutOfTheBookAreCounted) {
    const std::string open = "<externalLink xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><";
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, samplePackageBytes(1, {{"xl/externalLinks/a.xml", open + "externalBook r:id=\"rId1\"/>"},
                                                   {"xl/externalLinks/b.xml", open + "ddeLink ddeService=\"s\"/>"},
                                                   {"xl/other.xml", "<externalBook />"}})));
    const auto outside = dynamic_cast<IBookNames&>(*book).outside();
    EXPECT_EQ(outside.otherBooks, 1);
    EXPECT_EQ(outside.ddeLinks, 1);
}

}  // namespace
}  // namespace vellum
