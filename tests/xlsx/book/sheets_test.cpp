// The sheet list and what hangs on it: parts, names, the active sheet.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "tests/xlsx/book/package.h"

namespace vellum {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string order(IBookT<char>& book) {
    std::string names;
    for (int i = 0; i < book.sheetCount(); ++i) names += book.sheetNameAt(i);
    return names;
}

BookPtr bookOf(const char* names) {
    BookPtr book = newBook();
    for (; *names; ++names) {
        const char name[] = {*names, 0};
        EXPECT_TRUE(book->addSheet(name, nullptr));
    }
    return book;
}

std::string error(const BookPtr& book) {
    return book->errorMessage();
}

/// A book of three sheets S1 to S3 with defined names.
BookPtr bookWithNames(const std::string& names) {
    BookPtr book = newBook();
    EXPECT_TRUE(load(*book, samplePackageBytes(3, {{"xl/workbook.xml",
                                                    workbookXml(3, "<definedNames>" + names + "</definedNames>")}})))
        << error(book);
    return book;
}

TEST(OfAFile, CopiesAndRemovalsLeaveNothingDouble) {
    const std::string sheet =
        "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetPr codeName=\"Code1\"/>"
        "<sheetData/></worksheet>";
    BookPtr book = newBook();
    ASSERT_TRUE(
        load(*book, samplePackageBytes(3, {{"xl/worksheets/sheet1.xml", sheet}, {"xl/workbook.xml", workbookXml(3)}})));
    ASSERT_TRUE(book->addSheet("Copy", book->getSheet(0)));
    auto parts = savedParts(*book);
    EXPECT_THAT(parts["xl/worksheets/sheet1.xml"], HasSubstr("Code1"));
    EXPECT_THAT(parts["xl/worksheets/sheet4.xml"], Not(HasSubstr("Code1")));
}

// The first tab in sight has to be one that is there.
TEST(OfAFile, TheFirstTabFollowsTheLastSheet) {
    BookPtr book = newBook();
    const std::string views = "<bookViews><workbookView firstSheet=\"2\"/></bookViews><sheets>";
    std::string workbook = workbookXml(3);
    workbook.replace(workbook.find("<sheets>"), 8, views);
    ASSERT_TRUE(load(*book, samplePackageBytes(3, {{"xl/workbook.xml", workbook}}))) << error(book);
    EXPECT_THAT(savedParts(*book)["xl/workbook.xml"], HasSubstr("firstSheet=\"2\""));
    ASSERT_TRUE(book->removeSheet(2)) << error(book);
    EXPECT_THAT(savedParts(*book)["xl/workbook.xml"], HasSubstr("firstSheet=\"1\""));
}

TEST(OfAFile, PartsAreFoundInOtherCase) {
    BookPtr book = newBook();
    Parts parts = samplePackage(1);
    for (auto& [name, content] : parts) {
        if (name == "xl/worksheets/sheet1.xml") name = "xl/worksheets/Sheet1.xml";
    }
    ASSERT_TRUE(load(*book, packed(parts))) << error(book);
    ASSERT_TRUE(book->getSheet(0)) << error(book);
    EXPECT_EQ(book->getSheet(0)->readNumber(0, 0), 1);
}

TEST(OfAFile, TextsOfOtherBooksAreRefused) {
    const BookPtr one = bookOf("A"), other = bookOf("A");
    EXPECT_FALSE(one->getSheet(0)->writeRichText(0, 0, other->newRichString(), nullptr));
    EXPECT_EQ(error(one), "richString belongs to another workbook");
    EXPECT_TRUE(one->getSheet(0)->writeRichText(0, 0, one->newRichString(), nullptr)) << error(one);
}

TEST(NewBook, HasTheLeastParts) {
    const BookPtr book = newBook();
    EXPECT_EQ(book->sheetCount(), 0);
    const char* data = nullptr;
    std::size_t size = 0;
    EXPECT_FALSE(book->saveMemory(&data, &size));
    EXPECT_EQ(error(book), "min/max occurs error on marshaling");

    ASSERT_TRUE(book->addSheet("A", nullptr));
    auto parts = savedParts(*book);
    std::string names;
    for (const auto& [name, content] : parts) names += name + " ";
    EXPECT_EQ(names,
              "[Content_Types].xml _rels/.rels xl/_rels/workbook.xml.rels xl/styles.xml xl/workbook.xml "
              "xl/worksheets/sheet1.xml ");
    EXPECT_THAT(parts["xl/workbook.xml"], HasSubstr("fullCalcOnLoad"));
    EXPECT_THAT(parts["xl/workbook.xml"], HasSubstr("calcId=\"125725\""));
    EXPECT_THAT(parts["xl/workbook.xml"], HasSubstr("workbookView"));
}

TEST(SheetList, NamesAreChecked) {
    const BookPtr book = bookOf("A");
    const std::pair<const char*, const char*> rows[] = {
        {nullptr, "sheet name can't be 0"},
        {"a", "book already contains such sheet name"},
        {"", "sheet name can't be empty"},
        {"'x", "sheet name has an invalid character"},
        {"x:y", "sheet name has an invalid character"},
    };
    for (const auto& [name, text] : rows) {
        EXPECT_FALSE(book->addSheet(name, nullptr));
        EXPECT_EQ(error(book), text);
    }
    EXPECT_FALSE(book->insertSheet(-1, "B", nullptr));
    EXPECT_EQ(error(book), "index is out of range");
    EXPECT_FALSE(book->insertSheet(2, "B", nullptr));
    EXPECT_TRUE(book->addSheet("it's", nullptr));
    EXPECT_EQ(error(book), "ok");
    EXPECT_EQ(book->sheetNameAt(7), nullptr);
    EXPECT_EQ(error(book), "sheet index is out of range");
    EXPECT_FALSE(book->getSheet(7));
    EXPECT_EQ(error(book), "index is out of range");
}

// Sheets that were given out know their places, and numbers and names are free again.
TEST(SheetList, ComesAndGoesFromEitherEnd) {
    const BookPtr book = bookOf("A");
    ISheetT<char>* const first = book->getSheet(0);
    std::vector<ISheetT<char>*> sheets;
    for (int i = 0; i < 40; ++i) {
        sheets.push_back(book->insertSheet(i % 3 == 0 ? 0 : book->sheetCount(), std::to_string(i).c_str(), nullptr));
        ASSERT_TRUE(sheets.back()) << error(book);
    }
    EXPECT_FALSE(book->addSheet("39", nullptr));
    ASSERT_TRUE(sheets[39]->setSheetName("new"));
    EXPECT_TRUE(book->addSheet("39", nullptr));
    EXPECT_FALSE(book->addSheet("NEW", nullptr));
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(sheets[static_cast<std::size_t>(i)]->sheetName(), i == 39 ? "new" : std::to_string(i));
    ASSERT_TRUE(book->moveSheet(0, 20));
    EXPECT_STREQ(sheets[39]->sheetName(), "new");
    while (book->sheetCount() > 1) ASSERT_TRUE(book->removeSheet(book->getSheet(0) == first ? 1 : 0)) << error(book);
    EXPECT_STREQ(first->sheetName(), "A");
    ASSERT_TRUE(book->addSheet("39", nullptr));
    const auto parts = savedParts(*book);
    EXPECT_TRUE(parts.contains("xl/worksheets/sheet2.xml"));
    EXPECT_EQ(std::count_if(parts.begin(), parts.end(), [](const auto& p) { return p.first.starts_with("xl/works"); }),
              2);
    EXPECT_THAT(parts.at("[Content_Types].xml"), Not(HasSubstr("sheet3.xml")));
    EXPECT_THAT(parts.at("xl/_rels/workbook.xml.rels"), Not(HasSubstr("sheet3.xml")));
}

TEST(SheetList, LongNamesAreCutWithAWarning) {
    const BookPtr book = newBook();
    ASSERT_TRUE(book->setLocale("UTF-8"));
    std::string umlauts;
    for (int i = 0; i < 31; ++i) umlauts += "\xC3\xA4";
    EXPECT_TRUE(book->addSheet(umlauts.c_str(), nullptr));
    EXPECT_EQ(error(book), "ok");
    EXPECT_EQ(book->sheetNameAt(0), umlauts);
    EXPECT_TRUE(book->addSheet(std::string(32, 'x').c_str(), nullptr));
    EXPECT_EQ(error(book), "warning: sheet's name is cut to 31 characters");
    EXPECT_EQ(book->sheetNameAt(1), std::string(31, 'x'));
}

TEST(SheetList, PartsAreNumberedBehindTheGreatest) {
    const BookPtr book = bookOf("ABC");
    ASSERT_TRUE(book->removeSheet(1));
    ASSERT_TRUE(book->addSheet("D", nullptr));
    auto parts = savedParts(*book);
    EXPECT_EQ(parts.count("xl/worksheets/sheet2.xml"), 0u);
    EXPECT_EQ(parts.count("xl/worksheets/sheet4.xml"), 1u);
    EXPECT_THAT(parts["[Content_Types].xml"], Not(HasSubstr("sheet2.xml")));
    EXPECT_THAT(parts["xl/_rels/workbook.xml.rels"], Not(HasSubstr("sheet2.xml")));
    EXPECT_THAT(parts["xl/workbook.xml"], HasSubstr("name=\"D\" sheetId=\"4\""));
}

TEST(SheetList, Moves) {
    const struct {
        int from, to;
        const char* result;  // the order, or the text
    } rows[] = {{0, 2, "BAC"},
                {0, 3, "BCA"},
                {2, 0, "CAB"},
                {2, 1, "ACB"},
                {3, 0, "srcIndex is out of range"},
                {-1, 0, "srcIndex is out of range"},
                {0, 4, "dstIndex is out of range"},
                {1, 1, "there is no sense: srcIndex is equal to dstIndex"},
                {0, 1, "there is no sense: srcIndex is equal to dstIndex - 1"}};
    for (const auto& row : rows) {
        const BookPtr book = bookOf("ABC");
        const bool moved = book->moveSheet(row.from, row.to);
        EXPECT_EQ(moved ? order(*book) : error(book), row.result);
    }
}

TEST(SheetList, TheActiveSheetStays) {
    const BookPtr book = bookOf("ABC");
    ASSERT_TRUE(book->setActiveSheetIndex(2));
    ASSERT_TRUE(book->insertSheet(1, "X", nullptr));
    EXPECT_EQ(book->activeSheetIndex(), 3);
    ASSERT_TRUE(book->removeSheet(3));
    EXPECT_EQ(book->activeSheetIndex(), 2);
    EXPECT_FALSE(book->setActiveSheetIndex(3));
    EXPECT_EQ(error(book), "index is out of range");
    while (book->sheetCount() > 1) ASSERT_TRUE(book->removeSheet(0));
    EXPECT_EQ(book->activeSheetIndex(), 0);
    EXPECT_FALSE(book->removeSheet(0));
    EXPECT_EQ(error(book), "can't remove the last sheet in workbook");
}

constexpr const char* sampleNames =
    R"(<definedName name="one">S1!$A$1</definedName><definedName name="two" localSheetId="1">S2!$A$1</definedName>)"
    R"(<definedName name="three" localSheetId="2">'S3'!$A$1</definedName>)"
    R"(<definedName name="value" localSheetId="1">5</definedName>)";

std::string names(IBookT<char>& book) {
    std::string xml = savedParts(book)["xl/workbook.xml"];
    for (std::size_t at; (at = xml.find("&apos;")) != std::string::npos;) xml.replace(at, 6, 1, '\'');
    const std::size_t first = xml.find("<definedName ");
    if (first == std::string::npos) return "";
    return xml.substr(first, xml.find("</definedNames>") - first);
}

TEST(DefinedNames, FollowTheirSheets) {
    BookPtr book = bookWithNames(sampleNames);
    ASSERT_TRUE(book->moveSheet(2, 0));
    EXPECT_EQ(
        names(*book),
        R"(<definedName name="one">S1!$A$1</definedName><definedName name="two" localSheetId="2">S2!$A$1</definedName>)"
        R"(<definedName name="three" localSheetId="0">'S3'!$A$1</definedName>)"
        R"(<definedName name="value" localSheetId="2">5</definedName>)");
    book = bookWithNames(sampleNames);
    ASSERT_TRUE(book->insertSheet(1, "X", nullptr));
    EXPECT_THAT(names(*book), HasSubstr(R"(name="two" localSheetId="2")"));
    EXPECT_THAT(names(*book), HasSubstr(R"(name="three" localSheetId="3")"));
}

TEST(DefinedNames, GoWithTheirSheet) {
    BookPtr book = bookWithNames(sampleNames);
    ASSERT_TRUE(book->removeSheet(1));
    EXPECT_EQ(names(*book), R"(<definedName name="one">S1!$A$1</definedName>)"
                            R"(<definedName name="three" localSheetId="1">'S3'!$A$1</definedName>)"
                            R"(<definedName name="value" localSheetId="1">5</definedName>)");
    ASSERT_TRUE(book->removeSheet(1));  // "value" would belong to no sheet
    EXPECT_EQ(names(*book), R"(<definedName name="one">S1!$A$1</definedName>)");
    book = bookWithNames(R"(<definedName name="n" localSheetId="0">1</definedName>)"
                         R"(<definedName name="N" localSheetId="1">2</definedName>)");
    ASSERT_TRUE(book->removeSheet(0));
    EXPECT_EQ(names(*book), R"(<definedName name="N" localSheetId="0">2</definedName>)");
}

TEST(DefinedNames, AreCopiedWithTheirSheet) {
    BookPtr book = bookWithNames(sampleNames);
    ISheetT<char>* const copy = book->insertSheet(0, "New one", book->getSheet(1));
    ASSERT_TRUE(copy) << error(book);
    EXPECT_EQ(copy->readNumber(0, 0, nullptr), 2);
    EXPECT_THAT(names(*book), HasSubstr(R"(<definedName name="two" localSheetId="0">'New one'!$A$1</definedName>)"));
    EXPECT_THAT(names(*book), HasSubstr(R"(<definedName name="two" localSheetId="2">S2!$A$1</definedName>)"));
    const BookPtr other = bookOf("A");
    EXPECT_FALSE(book->addSheet("foreign", other->getSheet(0)));
}

TEST(SheetList, ACopySharesNoParts) {
    const std::string head = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const std::string main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string sheet =
        "<worksheet xmlns=\"" + main + "\" xmlns:r=\"" + head.substr(0, head.size() - 1) +
        "\"><sheetViews><sheetView workbookViewId=\"0\"><pivotSelection r:id=\"rId4\"/></sheetView></sheetViews>"
        "<sheetData/><hyperlinks><hyperlink ref=\"A1\" r:id=\"rId1\"/></hyperlinks>"
        "<drawing r:id=\"rId2\"/><tableParts count=\"1\"><tablePart r:id=\"rId3\"/></tableParts></worksheet>";
    const std::string rels =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"rId1\" Type=\"" +
        head + "hyperlink\" Target=\"http://a/\" TargetMode=\"External\"/><Relationship Id=\"rId2\" Type=\"" + head +
        "drawing\" Target=\"../drawings/d.xml\"/></Relationships>";
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, samplePackageBytes(1, {{"xl/worksheets/sheet1.xml", sheet},
                                                   {"xl/worksheets/_rels/sheet1.xml.rels", rels}})))
        << error(book);
    ASSERT_TRUE(book->addSheet("Copy", book->getSheet(0))) << error(book);
    auto parts = savedParts(*book);
    EXPECT_THAT(parts["xl/worksheets/sheet1.xml"], HasSubstr("<drawing "));
    EXPECT_THAT(parts["xl/worksheets/sheet2.xml"], Not(HasSubstr("drawing ")));
    EXPECT_THAT(parts["xl/worksheets/sheet2.xml"], Not(HasSubstr("tablePart")));
    EXPECT_THAT(parts["xl/worksheets/sheet2.xml"], Not(HasSubstr("pivot")));
    EXPECT_THAT(parts["xl/worksheets/sheet2.xml"], HasSubstr("rId1"));
    EXPECT_THAT(parts["xl/worksheets/_rels/sheet2.xml.rels"], HasSubstr("http://a/"));
    EXPECT_THAT(parts["xl/worksheets/_rels/sheet2.xml.rels"], Not(HasSubstr("d.xml")));
}

TEST(SheetList, HostileTargetsAreNoSheets) {
    // Sheets that lead to the workbook itself and to its styles.
    const std::string head = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    std::string rels = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    const char* const targets[] = {"worksheets/sheet1.xml", "workbook.xml", "../[Content_Types].xml"};
    for (int i = 0; i < 3; ++i) {
        for (const char* type : {"worksheet", "calcChain"}) {
            rels += "<Relationship Id=\"" + std::string(type == std::string("worksheet") ? "rId" : "c") +
                    std::to_string(i + 1) + "\" Type=\"" + head + type + "\" Target=\"" + targets[i] + "\"/>";
        }
    }
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, samplePackageBytes(3, {{"xl/_rels/workbook.xml.rels", rels + "</Relationships>"}})));
    EXPECT_FALSE(book->getSheet(1));
    EXPECT_EQ(error(book), "sheet not found");
    EXPECT_EQ(book->sheetKindAt(1), static_cast<int>(sheetOther));
    EXPECT_TRUE(book->removeSheet(2));
    EXPECT_TRUE(book->removeSheet(1));
    const char* data = nullptr;
    std::size_t size = 0;
    ASSERT_TRUE(book->saveMemory(&data, &size)) << error(book);
    EXPECT_TRUE(load(*newBook(), std::string(data, size)));  // the workbook has its type still
}

}  // namespace
}  // namespace vellum
