// What is refused, and what is reported on the way.

#include <gtest/gtest.h>

#include "ooxml/generated/dml-main/dml-main.h"
#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/opc-contentTypes/opc-contentTypes.h"
#include "ooxml/generated/opc-relationships/opc-relationships.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "tests/ooxml/classes/support.h"

namespace {

using namespace ooxml_test;

constexpr const char* relationship =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship )";

TEST(Failures, ATargetModeThatDoesNotExist) {
    const std::string text =
        std::string(relationship) + R"(Id="rId1" Type="t" Target="x" TargetMode="Foo"/></Relationships>)";
    Bound<relationships::c_Relationships> bound(text);
    EXPECT_EQ(bound.code, bindery::not_enumerated);
    EXPECT_EQ(bound.error.item, "@TargetMode");
    EXPECT_STREQ(bound.error.file, "ooxml/opc-relationships");
    EXPECT_GT(bound.error.line, 0);
    EXPECT_EQ(bound.error.xmlLine, 1);
}

TEST(Failures, AnElementsValueIsNamedWithoutTheSignOfAttributes) {
    const std::string text =
        R"(<xdr:wsDr xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing"><xdr:oneCellAnchor>)"
        R"(<xdr:from><xdr:col>x</xdr:col></xdr:from></xdr:oneCellAnchor></xdr:wsDr>)";
    Bound<drawing::c_wsDr> bound(text);
    EXPECT_EQ(bound.code, bindery::bad_value);
    EXPECT_EQ(bound.error.item, "xdr:col");
}

TEST(Failures, AreOfTheFileThatIsNamed) {
    const struct {
        const char* content;  // of a worksheet
        int code;
        const char* file;
    } cases[] = {
        {"<sheetData><row r='1'><c r='A1' s='x'/></row></sheetData>", 35, "ooxml/handwritten/cell"},
        {"<sheetData><row r='1'><c r='A1'/><c r='A2' cm='x'/></row></sheetData>", 35, "ooxml/handwritten/cell"},
        {"<sheetData><row r='1'/><row r='x'/></sheetData>", 35, "ooxml/handwritten/row"},
        {"<sheetData><row r='1'><c r='B1'><f t='x'/></c></row></sheetData>", 38, "ooxml/sml-sheet"},
        {"<sheetData><row r='1'><c r='A1' x='1'/></row></sheetData>", 39, "ooxml/handwritten/cell"},
        {"<sheetData><row r='1'><c r='A1'><v>1</v></c><x/></row></sheetData>", 31, "ooxml/handwritten/row"},
        {"<sheetData/><mergeCells><mergeCell ref='A1'/></mergeCells><x/>", 31, "ooxml/sml-sheet"},
        {"<dimension ref='A1'/>", 21, "ooxml/sml-sheet"},
        {"<sheetData><row r='1'><c r='A1'></row></sheetData>", 23, "bindery/binderyparse"},
        {"<sheetData><row r='1'><c r='A1'><v>1</v></c><", 23, "bindery/binderyparse"},
        {"<sheetData><row r=1></sheetData>", 23, "bindery/binderyparse"},
    };
    for (const auto& c : cases) {
        const std::string text = document("worksheet", c.content);
        bindery::c_xml_reader_memory reader(text);
        sheet::c_worksheet root;
        EXPECT_EQ(root.unmarshal(reader), c.code) << c.content;
        EXPECT_TRUE(std::string_view(reader.error().file).starts_with(c.file)) << c.content << reader.error().file;
        EXPECT_GT(reader.error().line, 0) << c.content;
    }
}

TEST(Failures, RootInAnotherNamespace) {
    const struct {
        const char* root;
        int code;
    } cases[] = {
        {R"(<worksheet xmlns="http://purl.oclc.org/ooxml/spreadsheetml/main"><sheetData/></worksheet>)", 16},
        {R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"/>)", 16},
        {R"(<worksheet><sheetData/></worksheet>)", 16},
        {R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><sheetData/></worksheet>)", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(Bound<sheet::c_worksheet>(c.root).code, c.code) << c.root;
    EXPECT_EQ(Bound<strict::c_worksheet>(cases[0].root).code, 0);
}

TEST(Failures, ChoiceNotSelected) {
    dml_main::c_CT_Color colour;
    colour.EG_ColorChoice();  // made, but nothing chosen
    bindery::c_xml_writer writer;
    EXPECT_EQ(colour.marshal(writer, "dk1"), bindery::wrong_choice);
    EXPECT_EQ(writer.error().item, "{anonymous compositor}");

    bindery::c_xml_writer another;
    EXPECT_EQ(sheet::c_root().marshal(another), bindery::wrong_choice);
    EXPECT_EQ(another.error().item, "{anonymous compositor}");
}

TEST(Failures, AnyRootOfTheFamily) {
    const std::string text = document("sst", "<si><t>a</t></si>");
    ForgivingReader reader(text);
    sheet::c_root root;
    ASSERT_EQ(root.unmarshal(reader), 0);
    ASSERT_TRUE(root.isset_sst());
    EXPECT_EQ(root.sst().si()[0].t().text(), L"a");

    const std::string unknown = document("chartsheet", "");
    ForgivingReader other(unknown);
    EXPECT_EQ(sheet::c_root().unmarshal(other), bindery::element_not_found);
}

TEST(Failures, ReadersThatForgiveAndThatDoNot) {
    const struct {
        const char* what;
        std::string text;
        int plain, forgiving;
    } cases[] = {
        {"unknown attribute", worksheet(R"(<sheetData new="1"/>)"), 39, 0},
        {"unknown element", worksheet("<sheetData/><new/>"), 31, 0},
        {"bad boolean", worksheet(R"(<sheetPr filterMode="yes"/><sheetData/>)"), 35, 35},
        {"not in the enumeration", worksheet(R"(<sheetData/><pageSetup orientation="up"/>)"), 38, 38},
        {"required attribute missing", worksheet("<sheetViews><sheetView/></sheetViews><sheetData/>"), 25, 0},
        {"attribute twice", worksheet(R"(<sheetData><row x14ac:dyDescent="1" x14ac:dyDescent="2"/></sheetData>)"), 39,
         3},
        {"attribute of a text twice", worksheet(R"(<sheetData><row><c><v a="" a="">1</v></c></row></sheetData>)"), 3,
         3},
        {"mandatory element missing", worksheet(""), 21, 0},
        {"too many", worksheet("<sheetData/><sheetData/>"), 26, 0},
        {"not well formed", worksheet("<sheetData>"), 23, 23},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        bindery::c_xml_reader_memory reader(c.text);
        sheet::c_worksheet plain;
        // The declarations of the root itself are no failure for anybody; its mc:Ignorable is.
        class KnowsIgnorable : public bindery::c_xml_reader_memory {
        public:
            using c_xml_reader_memory::c_xml_reader_memory;
            int userError(int code, std::string_view item, const char*, int) override {
                return item == "@mc:Ignorable" ? 0 : code;
            }
        } plainReader(c.text);
        EXPECT_EQ(plain.unmarshal(plainReader), c.plain);
        EXPECT_EQ(Bound<sheet::c_worksheet>(c.text).code, c.forgiving);
    }
}

TEST(Failures, ContentTypesThatMatchNoPatternAreFoundQuickly) {
    std::string open = "a/b; x=&quot;";
    for (int i = 0; i < 1000; ++i) open += "q ";
    const struct {
        std::string extension, type;
        int code;
    } cases[] = {
        {"png", "image/png", 0},
        {"a%4a:b", "a/b ; c=d;e=&quot;\\&quot; x&quot;", 0},
        {std::string(1000, ':') + "/", "a/b", 22},
        {"png", "a b/c", 22},
        {"png", "a/b;c", 22},
        {"png", open, 22},
    };
    const auto plain = [](const std::string& extension, const std::string& type) {
        const std::string text =
            R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default)"
            " Extension=\"" +
            extension + "\" ContentType=\"" + type + "\"/></Types>";
        bindery::c_xml_reader_memory reader(text);
        return contentypes::c_Types().unmarshal(reader);
    };
    for (const auto& c : cases) EXPECT_EQ(plain(c.extension, c.type), c.code) << c.extension << ' ' << c.type;
}

TEST(Failures, NoRelationshipsIsAnEmptyList) {
    Bound<relationships::c_Relationships> bound(
        R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"/>)");
    EXPECT_EQ(bound.code, 0);
    EXPECT_TRUE(bound.root.Relationship().empty());
}

TEST(Failures, ARelationshipWithoutATargetIsKept) {
    const std::string text = std::string(relationship) + R"(Type="t" Id="rId1"/></Relationships>)";
    EXPECT_EQ(bodyAfterRoundTrip<relationships::c_Relationships>(text), R"(<Relationship Type="t" Id="rId1"/>)");
}

TEST(Failures, FacetsAreForgivenAndStored) {
    Bound<sheet::c_styleSheet> bound(
        document("styleSheet", R"(<fonts count="1"><font><color rgb="FF8000"/><family val="99"/></font></fonts>)"));
    ASSERT_EQ(bound.code, 0) << bound.error.item;
    const auto& font = bound.root.fonts().font()[0];
    EXPECT_EQ(font.color().rgb().hex(), "FF8000");
    EXPECT_EQ(font.family().val(), 99);
}

}  // namespace
