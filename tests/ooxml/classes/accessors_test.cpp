// How the accessors of generated classes behave.

#include <gtest/gtest.h>

#include <utility>

#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/opc-contentTypes/opc-contentTypes.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "tests/ooxml/classes/support.h"

namespace {

using namespace ooxml_test;

template <class Object>
std::string written(const Object& object, const char* name) {
    bindery::c_xml_writer writer;
    return object.marshal(writer, name) == 0 ? writer.take() : "failed";
}

TEST(Accessors, AbsentAttributesHaveTheirDefaultAndAreNotWritten) {
    sheet::c_CT_SheetView view;
    EXPECT_TRUE(view.showGridLines());
    EXPECT_EQ(view.view(), "normal");
    EXPECT_EQ(view.zoomScale(), 100u);
    EXPECT_FALSE(view.isset_zoomScale());
    view.zoomScale(100);
    view.showGridLines(false);
    EXPECT_TRUE(view.isset_zoomScale());
    view.unset_showGridLines();
    EXPECT_EQ(written(view, "sheetView"), R"(<sheetView zoomScale="100" workbookViewId="0"/>)");
}

TEST(Accessors, ChildrenComeOnFirstAccess) {
    sheet::c_worksheet worksheet;
    const auto& reading = worksheet;
    EXPECT_EQ(reading.sheetViews().sheetView().size(), 0u);
    EXPECT_EQ(worksheet.find_sheetViews(), nullptr);
    worksheet.sheetViews().sheetView().append().pane().state("frozen");
    ASSERT_TRUE(worksheet.isset_sheetViews());
    EXPECT_EQ(worksheet.find_sheetViews()->sheetView()[0].pane().state(), "frozen");
    worksheet.unset_sheetViews();
    EXPECT_FALSE(worksheet.isset_sheetViews());
}

TEST(Accessors, CopiesAreDeep) {
    sheet::c_CT_MergeCells merges;
    merges.mergeCell().append().ref("A1:B2");
    const sheet::c_CT_MergeCells copy(merges);
    sheet::c_CT_MergeCells assigned;
    assigned = merges;
    merges.mergeCell()[0].ref("C3:D4");
    EXPECT_EQ(copy.mergeCell()[0].ref(), "A1:B2");
    EXPECT_EQ(assigned.mergeCell()[0].ref(), "A1:B2");
}

TEST(Accessors, FontPropertiesStandInSchemaOrder) {
    sheet::c_CT_Font font;
    font.sz().val(11);
    font.name().val(L"Calibri");
    font.b();
    EXPECT_EQ(written(font, "font"), R"(<font><name val="Calibri"/><b/><sz val="11"/></font>)");
    EXPECT_TRUE(font.b().val());
    font.unset_b();
    EXPECT_FALSE(font.isset_b());
    EXPECT_EQ(std::as_const(font).color().isset_rgb(), false);
    EXPECT_EQ(font.choice().size(), 2u);
}

TEST(Accessors, AChoiceHasOneLiveMember) {
    sheet::c_CT_FilterColumn column;
    column.colId(3);
    column.filters().filter().append().val("x");
    EXPECT_TRUE(column.isset_filters());
    column.customFilters().and_(true);
    EXPECT_FALSE(column.isset_filters());
    EXPECT_EQ(column.choice().option(), sheet::c_CT_FilterColumn::c_inner_CT_FilterColumn::option_customFilters);
    column.unset_customFilters();
    EXPECT_EQ(written(column, "filterColumn"), R"(<filterColumn colId="3"/>)");
}

TEST(Accessors, OptionsBelowAGroupAreReachedFromTheOutside) {
    drawing::c_CT_TwoCellAnchor anchor;
    EXPECT_FALSE(anchor.isset_pic());
    anchor.pic().nvPicPr().cNvPr().name(L"Picture 1");
    EXPECT_EQ(anchor.EG_ObjectChoices().choice().pic().nvPicPr().cNvPr().name(), L"Picture 1");
    EXPECT_EQ(anchor.find_sp(), nullptr);
}

TEST(Accessors, ListsOfChoicesKeepTheDocumentsOrder) {
    contentypes::c_Types types;
    types.choice().append().Override().PartName("/a.xml");
    types.choice().append().Default().Extension("xml");
    ASSERT_EQ(types.choice().size(), 2u);
    EXPECT_TRUE(types.choice()[0].isset_Override());
    EXPECT_EQ(types.choice()[1].find_Override(), nullptr);
}

TEST(Accessors, ListValuesAreSeparatedByOneBlank) {
    sheet::c_CT_IgnoredError error;
    error.sqref({"A1", "B2:C3"});
    error.numberStoredAsText(true);
    EXPECT_EQ(written(error, "ignoredError"), R"(<ignoredError sqref="A1 B2:C3" numberStoredAsText="true"/>)");
}

TEST(Accessors, AnElementOfAnotherNameIsNotRead) {
    const std::string text = document("sst", "");
    ForgivingReader reader(text);
    reader.nextRoot();
    sheet::c_CT_Sst strings;
    EXPECT_EQ(strings.unmarshal(reader, "table"), bindery::element_not_found);
}

}  // namespace
