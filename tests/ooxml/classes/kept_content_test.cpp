// What current applications write beyond the schema: read, kept in place and written back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/sml-comments/sml-comments.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "tests/ooxml/classes/support.h"

namespace {

using namespace ooxml_test;
using testing::HasSubstr;

TEST(KeptContent, StaysAsItIs) {
    const struct {
        const char* what;
        const char* body;
    } cases[] = {
        {"x14ac:dyDescent on a known element",
         R"(<sheetFormatPr defaultRowHeight="15" x14ac:dyDescent="0.25"/><sheetData/>)"},
        {"x14ac:dyDescent on a row",
         R"(<sheetData><row r="1" x14ac:dyDescent="0.25"><c r="A1"><v>1</v></c></row></sheetData>)"},
        {"cm and vm on cells",
         R"(<sheetData><row r="1"><c r="A1" cm="1"><f t="array" ref="A1">SEQUENCE(2)</f><v>1</v></c>)"
         R"(<c r="B1" t="e" vm="2"><v>#VALUE!</v></c></row></sheetData>)"},
        {"AlternateContent around controls, behind the sheet's last child",
         R"(<sheetData/><mc:AlternateContent><mc:Choice Requires="x14"><controls><mc:AlternateContent>)"
         R"(<mc:Choice Requires="x14"><control shapeId="1025" r:id="rId4" name="B"/></mc:Choice></mc:AlternateContent>)"
         R"(</controls></mc:Choice></mc:AlternateContent>)"},
        {"AlternateContent between two known children",
         R"(<sheetViews><sheetView workbookViewId="0"/></sheetViews><mc:AlternateContent><mc:Fallback/>)"
         R"(</mc:AlternateContent><sheetData/>)"},
        {"AlternateContent inside oleObjects and controls",
         R"(<sheetData/><oleObjects><mc:AlternateContent><mc:Choice Requires="x14"><oleObject shapeId="1"/>)"
         R"(</mc:Choice><mc:Fallback><oleObject shapeId="1"/></mc:Fallback></mc:AlternateContent></oleObjects>)"
         R"(<controls><mc:AlternateContent><mc:Choice Requires="x14"/></mc:AlternateContent></controls>)"},
        {"extLst whose prefix the root declares",
         R"(<sheetData/><extLst><ext uri="{1}"><x14:conditionalFormattings><x14:conditionalFormatting/>)"
         R"(</x14:conditionalFormattings></ext></extLst>)"},
        {"a new element and a new attribute of the main namespace",
         R"(<sheetData/><mergeCells count="1" colour="red"><mergeCell ref="A1:B2"/></mergeCells><newThing a="1"><b/></newThing>)"},
        {"subtrees that are kept raw, with their white space",
         R"(<sheetData/><conditionalFormatting sqref="A1"><cfRule type="expression" priority="1"><formula> A1 </formula>)"
         R"(</cfRule></conditionalFormatting><conditionalFormatting sqref="B1"/>)"},
        {"white space in text elements",
         R"(<sheetData><row r="1"><c r="A1" t="inlineStr"><is><t xml:space="preserve"> a </t></is></c></row></sheetData>)"
         R"(<dataValidations count="1"><dataValidation type="list" sqref="A1 B2:C3">)"
         R"(<formula1 xml:space="preserve"> &quot;a,b&quot; </formula1></dataValidation></dataValidations>)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(bodyAfterRoundTrip<sheet::c_worksheet>(worksheet(c.body)), c.body);
    }
}

TEST(KeptContent, ChildrenOutOfOrderLeaveInOrder) {
    const char* const mixedUp =
        R"(<pageMargins left="1" right="1" top="1" bottom="1" header="0" footer="0"/><sheetData/><sheetPr/>)";
    EXPECT_EQ(bodyAfterRoundTrip<sheet::c_worksheet>(worksheet(mixedUp)),
              R"(<sheetPr/><sheetData/><pageMargins left="1" right="1" top="1" bottom="1" header="0" footer="0"/>)");
}

TEST(KeptContent, AttributesLeaveInTheSchemasOrder) {
    EXPECT_EQ(bodyAfterRoundTrip<sheet::c_worksheet>(worksheet(
                  R"(<cols><col xr:new="1" xmlns:xr="urn:xr" width="9" max="2" min="1"/></cols><sheetData/>)")),
              R"(<cols><col xmlns:xr="urn:xr" min="1" max="2" width="9" xr:new="1"/></cols><sheetData/>)");
}

TEST(KeptContent, AttributesOfInstancesStay) {
    const char* const body =
        R"(<sheetPr xsi:nil="false"/><sheetData xsi:a="1"><row r="1" xsi:b="2"><c r="A1" xsi:c="3"><v xsi:d="4">1</v></c>)"
        R"(</row></sheetData><headerFooter><oddHeader xsi:e="5">x</oddHeader></headerFooter>)";
    const char* const xsi = R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="a b")";
    const std::string text = worksheet(body, xsi);
    EXPECT_EQ(bodyAfterRoundTrip<sheet::c_worksheet>(text), body);
    EXPECT_THAT(Bound<sheet::c_worksheet>(text).written(), HasSubstr(R"(xsi:schemaLocation="a b")"));
    bindery::c_xml_reader_memory plain(text);  // one that keeps nothing takes them all the same
    EXPECT_EQ(sheet::c_worksheet().unmarshal(plain), 39);
    EXPECT_EQ(plain.error().item, "@mc:Ignorable");
}

TEST(KeptContent, ABlankThatWasReadStaysOne) {
    const char* const body =
        R"(<si><t xml:space="preserve"> </t></si><si><r><t xml:space="preserve"> </t></r><r><t>b</t></r></si><si><t> </t></si>)";
    Bound<sheet::c_sst> bound(document("sst", body));
    EXPECT_EQ(bodyAfterRoundTrip<sheet::c_sst>(document("sst", body)), body);
    bound.root.si()[0].t().text(L"x");
    bound.root.si()[2].r().append().t().text(L" ");  // not read
    EXPECT_THAT(bound.written(), HasSubstr(R"(<si><t xml:space="preserve">x</t></si>)"));
    EXPECT_THAT(bound.written(), HasSubstr("<si><t> </t><r><t>&#160;</t></r></si>"));
}

TEST(KeptContent, RootKeepsIgnorableUidAndDeclarations) {
    const std::string written =
        Bound<sheet::c_worksheet>(worksheet("<sheetData/>", R"( xmlns:xr="urn:xr" xr:uid="{00000000-0001}")"))
            .written();
    EXPECT_THAT(written, HasSubstr(R"(mc:Ignorable="x14ac")"));
    EXPECT_THAT(written, HasSubstr(R"(xmlns:xr="urn:xr")"));
    EXPECT_THAT(written, HasSubstr(R"(xr:uid="{00000000-0001}")"));
    EXPECT_THAT(written, HasSubstr(std::string("xmlns:x14ac=\"") + std::string(x14acUri) + '"'));
    EXPECT_EQ(written.find("mc:Ignorable"), written.rfind("mc:Ignorable"));
}

TEST(KeptContent, WorksheetGetsTheCompatibilityNamespaces) {
    const std::string written = Bound<sheet::c_worksheet>(document("worksheet", "<sheetData/>")).written();
    EXPECT_THAT(written, HasSubstr(R"(mc:Ignorable="x14ac")"));
    EXPECT_THAT(written, HasSubstr(std::string("xmlns:x14ac=\"") + std::string(x14acUri) + '"'));
}

TEST(KeptContent, AlternateContentOfTheWorkbook) {
    const char* const body =
        R"(<fileVersion appName="xl"/><workbookPr dateCompatibility="0"/><mc:AlternateContent><mc:Choice Requires="x15">)"
        R"(<x15ac:absPath xmlns:x15ac="urn:x15ac" url="C:\"/></mc:Choice></mc:AlternateContent>)"
        R"(<xr:revisionPtr xmlns:xr="urn:xr" documentId="8_{}"/><sheets><sheet name="A" sheetId="1" r:id="rId1"/></sheets>)";
    EXPECT_EQ(bodyAfterRoundTrip<sheet::c_workbook>(document("workbook", body)), body);
}

TEST(KeptContent, AlternateContentInAComment) {
    const char* const body =
        R"(<authors><author>Ann</author></authors><commentList><comment ref="A1" authorId="0" xr:uid="{1}" xmlns:xr="urn:xr">)"
        R"(<text><r><rPr><b/><sz val="9"/></rPr><t>x</t></r></text><mc:AlternateContent><mc:Choice Requires="v2"/>)"
        R"(</mc:AlternateContent></comment></commentList>)";
    const std::string written = bodyAfterRoundTrip<comments::c_comments>(document("comments", body));
    EXPECT_THAT(written, HasSubstr(R"(xr:uid="{1}")"));
    EXPECT_THAT(written,
                HasSubstr(R"(<mc:AlternateContent><mc:Choice Requires="v2"/></mc:AlternateContent></comment>)"));
    EXPECT_THAT(written, HasSubstr(R"(<rPr><b/><sz val="9"/></rPr>)"));
}

TEST(KeptContent, AlternateContentBetweenAnchors) {
    const std::string anchor =
        R"(<xdr:absoluteAnchor><xdr:pos x="0" y="0"/><xdr:ext cx="1" cy="1"/><xdr:sp macro=""><xdr:nvSpPr/></xdr:sp>)"
        R"(<xdr:clientData/></xdr:absoluteAnchor>)";
    const std::string body =
        anchor + R"(<mc:AlternateContent xmlns:mc="urn:mc"><mc:Choice xmlns:a14="urn:a14" Requires="a14">)" + anchor +
        "</mc:Choice><mc:Fallback/></mc:AlternateContent>" + anchor;
    const std::string drawingDocument =
        R"(<xdr:wsDr xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing")"
        R"( xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main">)" +
        body + "</xdr:wsDr>";
    EXPECT_EQ(bodyAfterRoundTrip<drawing::c_wsDr>(drawingDocument), body);
}

TEST(KeptContent, PrefixedElementsBecomeTheDefaultNamespace) {
    const std::string prefixed = "<x:worksheet xmlns:x=\"" + std::string(mainUri) +
                                 R"("><x:sheetData><x:row r="1"><x:c r="A1"><x:v>1</x:v></x:c></x:row></x:sheetData>)"
                                 "<x:extLst><x:ext uri=\"u\"/></x:extLst></x:worksheet>";
    Bound<sheet::c_worksheet> bound(prefixed);
    ASSERT_EQ(bound.code, 0) << bound.error.item;
    const std::string written = bound.written();
    EXPECT_THAT(written, HasSubstr(R"(<sheetData><row r="1"><c r="A1"><v>1</v></c></row></sheetData>)"));
    // The kept subtree has its own prefix, which has to mean the same where it stands now.
    Bound<sheet::c_worksheet> again(written);
    EXPECT_EQ(again.code, 0);
    ASSERT_TRUE(again.root.isset_extLst());
    EXPECT_EQ(again.root.find_extLst()->uri, mainUri);
}

TEST(KeptContent, PrefixOfTheSchemaUsedForSomethingElse) {
    const std::string odd =
        "<worksheet xmlns=\"" + std::string(mainUri) +
        R"(" xmlns:r="urn:other" r:own="1"><sheetData/><extLst><r:x r:y="2"/></extLst></worksheet>)";
    const std::string written = Bound<sheet::c_worksheet>(odd).written();
    Bound<sheet::c_worksheet> again(written);
    ASSERT_EQ(again.code, 0) << written;
    ASSERT_TRUE(again.root.isset_extLst()) << written;
    ASSERT_FALSE(again.root.find_extLst()->children.empty());
    EXPECT_EQ(again.root.find_extLst()->children[0]->uri, "urn:other") << written;
}

}  // namespace
