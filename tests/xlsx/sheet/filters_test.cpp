// The filter's objects: what they read, write and refuse.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/api/enums.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"
#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

template <class Tag>
class Filters : public testing::Test {
protected:
    Filters() : _sheet("") {
        _sheet.book.workbook().sheets().sheet().append().name(L"S");
        filter = _sheet->filterObject();
    }
    std::string saved() {
        const std::string all = _sheet.saved();
        const auto from = all.find("<autoFilter"), end = all.find("</autoFilter>");
        return from == std::string::npos || end == std::string::npos ? "" : all.substr(from, end - from);
    }
    TestSheet<Tag> _sheet;
    IAutoFilterT<char>* filter;
};
using Dialects = testing::Types<excelNormal_tag, excelStrict_tag>;
TYPED_TEST_SUITE(Filters, Dialects);

TYPED_TEST(Filters, Range) {
    auto& sheet = this->_sheet;
    auto& element = sheet->root().autoFilter();
    int at[4] = {};
    EXPECT_FALSE(this->filter->filterRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(sheet.error(), "ref is not found");
    EXPECT_EQ(this->filter->filterColumn(0), nullptr);
    EXPECT_EQ(sheet.error(), "ref is not found");
    EXPECT_FALSE(this->filter->setSort(0, false));
    EXPECT_EQ(sheet.error(), "AutoFilter ref is not specified");
    element.ref("A1");
    EXPECT_TRUE(this->filter->filterRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(at[0] + at[1] + at[2] + at[3], 0);
    EXPECT_FALSE(this->filter->addSort(0, false));  // a header alone
    EXPECT_EQ(sheet.error(), "AutoFilter ref is not specified");
    element.ref("oops");
    EXPECT_FALSE(this->filter->filterRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(sheet.error(), "ref has unrecognized format");
    EXPECT_FALSE(this->filter->sortOrder(nullptr, nullptr));
    EXPECT_EQ(sheet.error(), "ref has unrecognized format");
    element.ref("C1:A9");
    EXPECT_EQ(this->filter->filterColumn(0), nullptr);
    EXPECT_EQ(sheet.error(), "ref.colLast < ref.colFirst");
    const struct {
        int at[4];
        const char* text;
    } refused[] = {{{0, 1, 0, 16384}, "col must be less than 16384"},
                   {{0, 1, -1, 0}, "col must be less than 16384"},
                   {{2, 1, 0, 0}, "rowLast must be greater than or equal to rowFirst"},
                   {{0, 1, 2, 1}, "colLast must be greater than or equal to colFirst"},
                   {{0, 1048576, 0, 0}, "row must be in range 0-1048575"}};
    for (const auto& c : refused) {
        EXPECT_FALSE(this->filter->setFilterRange(c.at[0], c.at[1], c.at[2], c.at[3]));
        EXPECT_EQ(sheet.error(), c.text);
    }
    EXPECT_TRUE(this->filter->setFilterRange(1, 1, 2, 2));
    EXPECT_EQ(element.ref(), "C2:C2");
}

TYPED_TEST(Filters, ColumnsOutsideOfTheRangeAreNotSaved) {
    ASSERT_TRUE(this->filter->setFilterRange(0, 9, 0, 3));
    for (const int colId : {0, 1, 3}) ASSERT_TRUE(this->filter->filterColumn(colId)->addValueFilter("a"));
    ASSERT_TRUE(this->filter->setFilterRange(0, 9, 4, 5));
    EXPECT_EQ(this->filter->filterColumnTotal(), 3);
    EXPECT_EQ(this->saved(),
              "<autoFilter ref=\"E1:F10\"><filterColumn colId=\"0\"><filters><filter val=\"a\"/></filters>"
              "</filterColumn><filterColumn colId=\"1\"><filters><filter val=\"a\"/></filters></filterColumn>");
    EXPECT_EQ(this->filter->filterColumnTotal(), 2);
    EXPECT_EQ(this->filter->filterColumnAt(1)->columnId(), 1);
}

TYPED_TEST(Filters, Columns) {
    auto& sheet = this->_sheet;
    ASSERT_TRUE(this->filter->setFilterRange(0, 9, 2, 5));
    auto* const third = this->filter->filterColumn(2);
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(this->filter->filterColumn(2), third);
    EXPECT_EQ(this->filter->filterColumnAt(0), third);
    EXPECT_EQ(third->columnId(), 2);
    EXPECT_NE(this->filter->filterColumn(0), third);
    EXPECT_EQ(this->filter->filterColumnTotal(), 2);
    for (const int index : {-1, 2, 2147483647}) {
        EXPECT_EQ(this->filter->filterColumnAt(index), nullptr);
        EXPECT_EQ(sheet.error(), "index is out of range");
    }
    for (const int colId : {-1, 4, 2147483647}) {
        EXPECT_EQ(this->filter->filterColumn(colId), nullptr);
        EXPECT_EQ(sheet.error(), "colId is out of range");
    }
}

TYPED_TEST(Filters, SortsKeepTheHeaderOut) {
    auto& sheet = this->_sheet;
    int column = -1, at[4];
    bool descending = false;
    ASSERT_TRUE(this->filter->setFilterRange(0, 9, 2, 5));
    EXPECT_FALSE(this->filter->sortRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(sheet.error(), "sort state is not found");
    EXPECT_FALSE(this->filter->sortOrder(&column, &descending));
    EXPECT_EQ(sheet.error(), "sort state is not found");
    EXPECT_TRUE(this->filter->addSort(1, true));
    EXPECT_TRUE(this->filter->addSort(3, false));
    EXPECT_EQ(this->saved(),
              "<autoFilter ref=\"C1:F10\"><sortState ref=\"C2:F10\"><sortCondition descending=\"true\" "
              "ref=\"D2:D10\"/><sortCondition ref=\"F2:F10\"/></sortState>");
    EXPECT_TRUE(this->filter->sortOrder(&column, &descending));
    EXPECT_EQ(column, 1);
    EXPECT_TRUE(descending);
    EXPECT_TRUE(this->filter->sortRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(at[0] * 1000 + at[1] * 100 + at[2] * 10 + at[3], 1925);
    EXPECT_TRUE(this->filter->setSort(0, false));
    EXPECT_EQ(sheet->root().autoFilter().sortState().sortCondition().size(), 1u);
    for (const int index : {-1, 4, 2147483647}) {
        EXPECT_FALSE(this->filter->setSort(index, false));
        EXPECT_EQ(sheet.error(), "columnIndex is out of range");
    }
    for (int i = 1; i < 64; ++i) EXPECT_TRUE(this->filter->addSort(0, false));
    EXPECT_FALSE(this->filter->addSort(0, false));
    EXPECT_EQ(sheet.error(), "too many sort conditions");
    sheet->root().autoFilter().sortState().unset_sortCondition();
    EXPECT_FALSE(this->filter->sortOrder(&column, &descending));
    EXPECT_EQ(sheet.error(), "sort condition is not found");
}

TYPED_TEST(Filters, AColumnWithoutAChoice) {
    auto& sheet = this->_sheet;
    ASSERT_TRUE(this->filter->setFilterRange(0, 9, 0, 0));
    auto* const column = this->filter->filterColumn(0);
    double value = 0;
    bool flag = true, other = true;
    const char *one = nullptr, *two = nullptr;
    int op1 = -1, op2 = -1;
    EXPECT_EQ(column->filterKind(), filterNone);
    EXPECT_EQ(sheet.error(), "filter if not found");
    EXPECT_EQ(column->valueFilterTotal(), -1);
    EXPECT_EQ(sheet.error(), "value filter is not found");
    EXPECT_FALSE(column->top10(&value, &flag, &other));
    EXPECT_EQ(sheet.error(), "top10 filter is not found");
    EXPECT_FALSE(column->customFilter(&op1, &one, &op2, &two, &flag));
    EXPECT_EQ(sheet.error(), "custom filter is not found");
    EXPECT_FALSE(column->addValueFilter(nullptr));
    EXPECT_EQ(sheet.error(), "text is NULL");
}

TYPED_TEST(Filters, OneChoiceAColumn) {
    auto& sheet = this->_sheet;
    ASSERT_TRUE(this->filter->setFilterRange(0, 9, 0, 0));
    auto* const column = this->filter->filterColumn(0);
    EXPECT_TRUE(column->addValueFilter(" ") && column->addValueFilter("\xC3\xA9"));
    EXPECT_EQ(column->filterKind(), filterValues);
    EXPECT_EQ(column->valueFilterTotal(), 2);
    EXPECT_STREQ(column->valueFilterAt(1), "\xC3\xA9");
    for (const int index : {-1, 2, 2147483647}) {
        EXPECT_EQ(column->valueFilterAt(index), nullptr);
        EXPECT_EQ(sheet.error(), "index is out of range");
    }
    EXPECT_NE(this->saved().find("<filter val=\" \"/>"), std::string::npos);

    for (const double bad : {0.5, 0.0, 501.0, -3.0, static_cast<double>(NAN)}) {
        EXPECT_FALSE(column->setTop10(bad, true, false));
        EXPECT_EQ(sheet.error(), "setTop10: value is out of range");
    }
    EXPECT_EQ(column->filterKind(), filterValues);
    double value = 0;
    bool flag = true, other = true;
    EXPECT_TRUE(column->setTop10(500, false, true) && column->setTop10(1, false, true));
    EXPECT_EQ(column->filterKind(), filterTop10);
    EXPECT_TRUE(column->top10(&value, &flag, &other));
    EXPECT_TRUE(value == 1 && !flag && other);
    EXPECT_FALSE(column->addValueFilter("x"));
    EXPECT_EQ(sheet.error(), "value filter is not found");
    EXPECT_EQ(column->valueFilterAt(0), nullptr);
    EXPECT_EQ(sheet.error(), "value filter is not found");

    EXPECT_FALSE(column->setCustomFilter(0, nullptr, 0, nullptr, false));
    EXPECT_EQ(sheet.error(), "custom filter is not found");
    EXPECT_FALSE(column->setCustomFilter(6, "x", 0, nullptr, false));
    EXPECT_EQ(sheet.error(), "index is out of range");
    EXPECT_EQ(column->filterKind(), filterTop10);
    EXPECT_TRUE(column->setCustomFilter(5, " ", 0, "a*", true));
    EXPECT_EQ(this->saved(),
              "<autoFilter ref=\"A1:A10\"><filterColumn colId=\"0\"><customFilters and=\"true\">"
              "<customFilter operator=\"notEqual\" val=\" \"/><customFilter val=\"a*\"/></customFilters>"
              "</filterColumn>");
    const char *one = nullptr, *two = nullptr;
    int op1 = -1, op2 = -1;
    EXPECT_TRUE(column->customFilter(&op1, &one, &op2, &two, &flag));
    EXPECT_STREQ(one, " ");
    EXPECT_STREQ(two, "a*");
    EXPECT_TRUE(op1 == filterNotEqual && op2 == filterEqual && flag);
    EXPECT_TRUE(column->setCustomFilter(1, "5", 0, nullptr, false));
    EXPECT_TRUE(column->customFilter(&op1, &one, &op2, &two, &flag));
    EXPECT_EQ(two, nullptr);
    EXPECT_TRUE(column->clearFilter() && column->clearFilter());
    EXPECT_EQ(column->filterKind(), filterNone);
}

/// The format has extensions as one more choice, and files have them beside a real one.
TEST(FilterExtensions, StayBesideAChoice) {
    const char* const extension = "<extLst><ext uri=\"{1}\"/></extLst>";
    const std::string filter = "<filters><filter val=\"a\"/></filters>";
    const auto sheetWith = [&](const std::string& column) {
        return TestSheet(
            "", -1, -1, "",
            "<autoFilter ref=\"A1:A3\"><filterColumn colId=\"0\">" + column + "</filterColumn></autoFilter>");
    };
    for (const std::string& column : {filter + extension, extension + filter}) {
        auto sheet = sheetWith(column);
        sheet.book.workbook().sheets().sheet().append().name(L"S");
        auto* const object = sheet->filterObject()->filterColumnAt(0);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->filterKind(), filterValues);
        EXPECT_NE(sheet.saved().find(filter + extension), std::string::npos) << sheet.saved();
    }
    auto alone = sheetWith(extension);
    auto* const object = alone->filterObject()->filterColumnAt(0);
    EXPECT_EQ(object->filterKind(), filterExtension);
    EXPECT_TRUE(object->addValueFilter("a"));
    EXPECT_NE(alone.saved().find(filter + extension), std::string::npos) << alone.saved();
}

}  // namespace
}  // namespace vellum::test
