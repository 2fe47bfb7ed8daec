// The example of docs/generated-bindings.md.

#include <gtest/gtest.h>

#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "tests/ooxml/classes/support.h"

namespace {

std::string merged(std::string_view part) {
    bindery::c_keeping_reader<bindery::c_xml_reader_memory> reader(part);
    sheet::c_worksheet worksheet;
    if (int code = worksheet.unmarshal(reader)) return bindery::errorText(code);

    for (auto& view : worksheet.sheetViews().sheetView())  // a repeating child
        if (auto* pane = view.find_pane()) pane->unset_topLeftCell();
    auto& merges = worksheet.mergeCells();  // made when it was absent
    merges.mergeCell().append().ref("A1:B2");
    merges.count(static_cast<unsigned>(merges.mergeCell().size()));

    bindery::c_xml_writer writer;
    if (int code = worksheet.marshal(writer)) return bindery::errorText(code);
    return writer.take();
}

TEST(Example, OfTheDocumentation) {
    const std::string text = merged(ooxml_test::worksheet(
        R"(<sheetViews><sheetView workbookViewId="0"><pane topLeftCell="A2" state="frozen"/></sheetView></sheetViews>)"
        R"(<sheetData/>)"));
    EXPECT_NE(text.find(R"(<pane state="frozen"/>)"), std::string::npos) << text;
    EXPECT_NE(text.find(R"(<mergeCells count="1"><mergeCell ref="A1:B2"/></mergeCells>)"), std::string::npos);
    EXPECT_EQ(merged("<worksheet/>"), "Element not found");
}

}  // namespace
