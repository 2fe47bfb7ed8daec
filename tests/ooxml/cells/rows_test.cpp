#include <gtest/gtest.h>

#include "bindery/classes/extras.h"
#include "tests/ooxml/cells/sheet_text.h"

namespace ooxml {
namespace {

class RangeReader : public Reader {
public:
    using Reader::Reader;
    bool wantsItem(std::int64_t row) const override {
        return (firstRow < 0 || row >= firstRow) && (lastRow < 0 || row <= lastRow);
    }
    int firstRow = -1, lastRow = -1;
};

std::string rowNumbers(const std::string& text, int first, int last) {
    RangeReader reader(text);
    reader.firstRow = first;
    reader.lastRow = last;
    sheet::c_worksheet root;
    if (const int code = root.unmarshal(reader)) return "!" + std::to_string(code);
    std::string out;
    for (const auto& row : root.sheetData().row()) out += (row.isset_r() ? std::to_string(row.r()) : "-") + " ";
    return out;
}

}  // namespace

TEST(Rows, ComeBackAsTheyWere) {
    const std::string rows[] = {
        "<row/>",
        "<row r=\"7\" spans=\"1:10 12:14\" s=\"3\" customFormat=\"true\" ht=\"15.75\" hidden=\"false\" "
        "customHeight=\"true\" outlineLevel=\"7\" collapsed=\"true\" thickTop=\"false\" thickBot=\"true\" ph=\"true\" "
        "x14ac:dyDescent=\"0.25\"><c r=\"A7\"/></row>",
        "<row r=\"1\" x14ac:dyDescent=\"0.25\" x14ac:other=\"1\" plain=\"p\"/>",
        "<row r=\"1\"><n1/><c r=\"A1\"/><n2/><c r=\"B1\"><v>1</v></c><n3/><extLst><ext/></extLst><n4/></row>",
        "<n0/><row r=\"1\"/><mc:AlternateContent><mc:Choice Requires=\"x14ac\"/></mc:AlternateContent><row "
        "r=\"2\"/><n2/>",
        "<row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"1\"/><row r=\"1048576\"><c "
        "r=\"A1048576\"><v>1</v></c></row>",
    };
    for (const std::string& text : rows) EXPECT_EQ(through(sheetText(text)), text);
}

TEST(Rows, OwnMeaningOfThePrefixOfDyDescent) {
    // Another namespace under the same prefix: kept like any other attribute, with its declaration.
    const std::string text = replaced(sheetText("<row r=\"1\" x14ac:dyDescent=\"1\"><c r=\"A1\"><v>1</v></c></row>"),
                                      "http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac", "urn:other");
    EXPECT_EQ(through(text), "<row r=\"1\" x14ac:dyDescent=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    sheet::c_worksheet root;
    Reader reader(text);
    ASSERT_EQ(root.unmarshal(reader), 0);
    EXPECT_EQ(root.sheetData().row()[0].extras()->attrs[0].uri, "urn:other");
}

TEST(Rows, ValuesThatAreRefused) {
    for (const char* tag :
         {"<row r=\"x\"/>", "<row ht=\"1,5\"/>", "<row hidden=\"yes\"/>", "<row outlineLevel=\"256\"/>"})
        EXPECT_EQ(through(sheetText(tag)).substr(0, 4), "!35 ") << tag;
    EXPECT_EQ(through(sheetText("<row r=\"1\" r=\"1\"/>")), "!3 @r");
    EXPECT_EQ(through(sheetText("<row r=\"1\"></rows>")), "!23 row");
}

TEST(Rows, PlainReaderReportsWhatItDoesNotKnow) {
    const std::string cases[] = {"<row r=\"1\" x14ac:dyDescent=\"1\"/>", "<row r=\"1\"><n/></row>",
                                 "<row r=\"1\"><c r=\"A1\" x=\"1\"/></row>"};
    for (const std::string& rows : cases) {
        const std::string text = sheetText(rows);
        bindery::c_xml_reader_memory reader(text);
        sheet::c_worksheet root;
        const int code = root.unmarshal(reader);
        EXPECT_TRUE(code == 39 || code == 31) << rows;
    }
}

TEST(Rows, RangeLeavesOutTheOthers) {
    const std::string numbered = sheetText("<row r=\"1\"/><row r=\"5\"><c r=\"A5\"><v>1</v></c></row><row r=\"9\"/>");
    EXPECT_EQ(rowNumbers(numbered, -1, -1), "1 5 9 ");
    EXPECT_EQ(rowNumbers(numbered, 4, 4), "5 ");
    EXPECT_EQ(rowNumbers(numbered, 4, -1), "5 9 ");
    EXPECT_EQ(rowNumbers(numbered, -1, 4), "1 5 ");
    // Rows without a number count on from the one before.
    EXPECT_EQ(rowNumbers(sheetText("<row/><row/><row r=\"10\"/><row/>"), 1, 10), "- 10 - ");
}

TEST(Rows, CellsAreCopiedWithTheirRow) {
    const std::string text =
        sheetText("<row r=\"1\"><c r=\"A1\"><f>B1</f><v>a long text that lies outside</v></c></row>");
    sheet::c_worksheet root;
    Reader reader(text);
    ASSERT_EQ(root.unmarshal(reader), 0);
    const std::unique_ptr<sheet::c_worksheet> copy(root.clone());
    root.sheetData().row()[0].c()[0].setText("x");
    root.sheetData().row()[0].c()[0].clearFormula();
    EXPECT_EQ(copy->sheetData().row()[0].c()[0].text(), "a long text that lies outside");
    EXPECT_TRUE(copy->sheetData().row()[0].c()[0].hasFormula());
}

TEST(Rows, UnknownAttributesByName) {
    sheet::c_CT_Row row;
    EXPECT_EQ(row.unknownAttribute("x14ac:dyDescent"), nullptr);
    row.setUnknownAttribute("x14ac:dyDescent", "", "0.3");
    row.setUnknownAttribute("y:z", "urn:y", "1");
    ASSERT_NE(row.unknownAttribute("x14ac:dyDescent"), nullptr);
    EXPECT_EQ(*row.unknownAttribute("x14ac:dyDescent"), "0.3");
    EXPECT_EQ(*row.unknownAttribute("y:z"), "1");
    EXPECT_TRUE(row.removeUnknownAttribute("x14ac:dyDescent"));
    EXPECT_FALSE(row.removeUnknownAttribute("x14ac:dyDescent"));
}

}  // namespace ooxml
