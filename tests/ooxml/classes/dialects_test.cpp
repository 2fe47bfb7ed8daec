// One text serves both dialects.

#include <gtest/gtest.h>

#include "ooxml/generated/dialect.h"
#include "ooxml/generated/dml-main-strict/dml-main-strict.h"
#include "ooxml/generated/dml-main/dml-main.h"
#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/sml-comments/sml-comments.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "ooxml/generated/strictDrawing/strictDrawing.h"
#include "tests/ooxml/classes/support.h"

namespace {

template <class Tag>
class Dialects : public testing::Test {};
using Tags = testing::Types<ooxml::excelNormal_tag, ooxml::excelStrict_tag>;
TYPED_TEST_SUITE(Dialects, Tags);

template <class Root>
std::string rewritten(const Root& root) {
    bindery::c_xml_writer writer;
    EXPECT_EQ(root.marshal(writer), 0);
    const std::string once = writer.take();
    return ooxml_test::Bound<Root>(once).written();
}

TYPED_TEST(Dialects, WorksheetBuiltWrittenAndReadAgain) {
    using dialect = ooxml::dialect<TypeParam>;
    typename dialect::c_worksheet worksheet;
    worksheet.sheetData();
    worksheet.sheetProtection().password(bindery::c_binary{{0xCA, 0xFE}});
    worksheet.legacyDrawing().id("rId2");
    worksheet.pageMargins().left(0.7);
    const std::string text = rewritten(worksheet);
    EXPECT_NE(text.find(R"(<sheetProtection password="CAFE"/>)"), std::string::npos) << text;
    EXPECT_NE(text.find(R"(<legacyDrawing r:id="rId2"/>)"), std::string::npos) << text;
    EXPECT_NE(text.find(R"(<pageMargins left="0.7")"), std::string::npos) << text;
}

TYPED_TEST(Dialects, StylesWithBordersOfBothForms) {
    using dialect = ooxml::dialect<TypeParam>;
    typename dialect::c_styleSheet styles;
    typename dialect::sml::c_CT_Border& border = styles.borders().border().append();
    border.left().style("thin");
    border.end().style("thick");
    EXPECT_NE(rewritten(styles).find(R"(<border><end style="thick"/><left style="thin"/></border>)"),
              std::string::npos);
}

TYPED_TEST(Dialects, CommentsDrawingAndTheme) {
    using dialect = ooxml::dialect<TypeParam>;
    typename dialect::c_comments comments;
    comments.authors().author().append().text(L"Ann");
    comments.commentList().comment().append().text().t().text(L"note");
    EXPECT_NE(rewritten(comments).find("<text><t>note</t></text>"), std::string::npos);

    typename dialect::c_wsDr drawing;
    auto& anchor = drawing.EG_Anchor().append().twoCellAnchor();
    anchor.from().col(1);
    anchor.to().row(2);
    anchor.pic().blipFill().blip().embed("rId1");
    anchor.clientData();
    EXPECT_NE(rewritten(drawing).find(R"(<a:blip r:embed="rId1"/>)"), std::string::npos);

    typename dialect::c_theme theme;
    theme.themeElements().clrScheme().dk1().srgbClr().val(bindery::c_binary{{1, 2, 3}});
    EXPECT_NE(rewritten(theme).find(R"(<a:srgbClr val="010203"/>)"), std::string::npos);
}

}  // namespace
