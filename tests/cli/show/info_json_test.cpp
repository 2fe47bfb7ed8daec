// The report on a workbook, for programs.
#include "cli/info/info_json.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/workbook/book_file.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace cli {
namespace {

TEST(InfoJson, WhatThereIs) {
    const BookPtr book(vellum::vlCreateXMLBook<char>());
    book->setLocale("UTF-8");
    auto* const sheet = book->addSheet("A \"b\"");
    sheet->writeNumber(1, 1, 5);
    sheet->addMerge(3, 4, 0, 1);
    sheet->splitAt(1, 0);
    sheet->setRowHidden(0, true);
    sheet->setPrintAreaRange(0, 8, 0, 2);
    book->addSheet("Empty")->setVisibilityState(2);
    sheet->setNamedRangeByName("Five", 1, 1, 1, 1);
    const std::string path = testing::TempDir() + "info_json.xlsx";
    ASSERT_TRUE(book->saveFile(path.c_str()));

    std::ostringstream out, errors;
    EXPECT_EQ(infoJson(path, out, errors), 0) << errors.str();
    const std::string head =
        R"({"file":")" + path +
        R"(","kind":"Open XML","biff":0,"datesFrom":1900,"template":false,"writeProtected":false,)";
    EXPECT_EQ(out.str().substr(0, head.size()), head);
    const auto at = out.str().find(R"("pictures")");
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(
        out.str().substr(at),
        R"("pictures":[],"sheets":[{"name":"A \"b\"","kind":"worksheet","state":"visible","area":"B2:B2",)"
        R"("panes":"A2","protected":false,"printArea":"A1:C9","repeatedRows":null,"repeatedColumns":null,)"
        R"("pageBreaks":0,"merges":1,"links":0,"filter":null,"tables":[],"hiddenRows":1,"hiddenColumns":0,)"
        R"("validationRules":0,"rowLevels":0,"columnLevels":0,"pictures":0,"comments":0,"controls":0,"charts":0,)"
        R"("otherShapes":0},{"name":"Empty","kind":"worksheet","state":"very hidden","area":null,"panes":null,)"
        R"("protected":false,"printArea":null,"repeatedRows":null,"repeatedColumns":null,"pageBreaks":0,"merges":0,)"
        R"("links":0,"filter":null,"tables":[],"hiddenRows":0,"hiddenColumns":0,"validationRules":0,"rowLevels":0,)"
        R"("columnLevels":0,"pictures":0,"comments":0,"controls":0,"charts":0,"otherShapes":0}],)"
        R"("names":[{"name":"_xlnm.Print_Area","sheet":"A \"b\"","hidden":false,"formula":"'A \"b\"'!$A$1:$C$9"},)"
        R"({"name":"Five","sheet":null,"hidden":false,"formula":"'A \"b\"'!$B$2"}],"otherWorkbooks":0,)"
        R"("addInFunctions":0,"ddeLinks":0,"lostFormulas":0,"kept":[]})"
        "\n");
    EXPECT_EQ(infoJson(path + ".none", out, errors), 1);
    EXPECT_NE(errors.str(), "");
}

}  // namespace
}  // namespace cli
