// The `col` elements.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "tests/support/rounds.h"
#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/styles/format.h"

namespace vellum::test {
namespace {

std::string colsOf(const std::string& saved) {
    const auto from = saved.find("<cols>"), to = saved.find("</cols>");
    return from == std::string::npos ? "" : saved.substr(from + 6, to - from - 6);
}

TEST(Columns, AreCutAtTheEdgesOfAChange) {
    TestSheet sheet(
        "", -1, -1,
        "<cols><col min=\"2\" max=\"11\" width=\"12\" style=\"0\" bestFit=\"true\" outlineLevel=\"2\"/></cols>");
    EXPECT_TRUE(sheet->setColumn(4, 4, 10, nullptr, true));
    const char* const rest = " width=\"12\" style=\"0\" bestFit=\"true\" outlineLevel=\"2\"/>";
    EXPECT_EQ(colsOf(sheet.saved()), std::string("<col min=\"2\" max=\"4\"") + rest +
                                         "<col min=\"5\" max=\"5\" width=\"10.7109375\" style=\"0\" hidden=\"true\" "
                                         "bestFit=\"true\" customWidth=\"true\" outlineLevel=\"2\"/>" +
                                         "<col min=\"6\" max=\"11\"" + rest);
    TestSheet gaps("", -1, -1, "<cols><col min=\"3\" max=\"3\" width=\"12\"/></cols>");
    EXPECT_TRUE(gaps->setColumnHidden(0, true));
    EXPECT_TRUE(gaps->setColumnHidden(2, true));
    EXPECT_TRUE(gaps->setColumnHidden(9, false));
    EXPECT_EQ(colsOf(gaps.saved()),
              "<col min=\"1\" max=\"1\" width=\"9.140625\" hidden=\"true\"/>"
              "<col min=\"3\" max=\"3\" width=\"12\" hidden=\"true\"/>");
    EXPECT_TRUE(gaps->isColumnHidden(2));
    EXPECT_FALSE(gaps->isColumnHidden(1));
}

TEST(Columns, OutOfOrderArePutInOrderOnLoading) {
    TestSheet sheet("", -1, -1,
                    "<cols><col min=\"5\" max=\"9\" width=\"5\"/><col min=\"1\" max=\"6\" width=\"1\"/></cols>"
                    "<cols><col min=\"3\" max=\"3\" width=\"3\"/><col min=\"8\" max=\"99999\" width=\"8\"/></cols>");
    EXPECT_EQ(colsOf(sheet.saved()),
              "<col min=\"1\" max=\"2\" width=\"1\"/><col min=\"3\" max=\"3\" width=\"3\"/>"
              "<col min=\"4\" max=\"6\" width=\"1\"/><col min=\"7\" max=\"7\" width=\"5\"/>"
              "<col min=\"8\" max=\"16384\" width=\"8\"/>");
}

TEST(Columns, AFormatIsInheritedByNewCells) {
    TestSheet sheet("");
    auto* const format = sheet.book.ensureStyles().newFormat(nullptr);
    EXPECT_TRUE(sheet->setColumn(1, 2, 10, format, false));
    EXPECT_TRUE(sheet->writeNumber(0, 2, 1, nullptr));
    EXPECT_EQ(sheet->cellFormatAt(0, 2), format);
    EXPECT_EQ(sheet->cellFormatAt(5, 1), format);
    SmallBook<excelNormal_tag> other;
    EXPECT_FALSE(sheet->setColumn(0, 5, 20, other.ensureStyles().newFormat(nullptr), false));
    EXPECT_EQ(sheet->columnWidth(0), 8.43) << "refused before anything changed";
}

TEST(Columns, GroupsHaveOneLevel) {
    TestSheet sheet("");
    EXPECT_TRUE(sheet->groupColumnRange(1, 3, false));
    EXPECT_TRUE(sheet->groupColumnRange(2, 2, true));
    EXPECT_EQ(colsOf(sheet.saved()),
              "<col min=\"2\" max=\"2\" width=\"9.140625\" outlineLevel=\"1\"/>"
              "<col min=\"3\" max=\"3\" width=\"9.140625\" hidden=\"true\" outlineLevel=\"2\"/>"
              "<col min=\"4\" max=\"4\" width=\"9.140625\" outlineLevel=\"1\" collapsed=\"true\"/>");
    EXPECT_NE(sheet.saved().find("<sheetFormatPr defaultRowHeight=\"15\" outlineLevelCol=\"2\"/>"), std::string::npos);
    const std::string before = sheet.saved();
    EXPECT_FALSE(sheet->groupColumnRange(0, 3, true));
    EXPECT_EQ(sheet.error(), "detect overlap");
    EXPECT_EQ(sheet.saved(), before);
    EXPECT_TRUE(sheet->setSummaryRight(false));
    EXPECT_TRUE(sheet->groupColumnRange(5, 6, true));
    EXPECT_NE(colsOf(sheet.saved()).find("<col min=\"5\" max=\"5\" width=\"9.140625\" collapsed=\"true\"/>"),
              std::string::npos);
    for (int i = 3; i <= 7; ++i) EXPECT_TRUE(sheet->groupColumnRange(2, 2, false));
    EXPECT_FALSE(sheet->groupColumnRange(2, 2, false));
    EXPECT_EQ(sheet.error(), "exceeded outline level");
}

TEST(Rows, GroupsStopWhereTheLevelDiffers) {
    TestSheet sheet("<row r=\"1\"/><row r=\"3\" outlineLevel=\"1\"/>");
    EXPECT_FALSE(sheet->groupRowRange(0, 4, true));
    EXPECT_EQ(sheet.error(), "detect overlap");
    EXPECT_EQ(sheet.savedRows(),
              "<row r=\"1\" hidden=\"true\" outlineLevel=\"1\"/><row r=\"2\" hidden=\"true\" "
              "outlineLevel=\"1\"/><row r=\"3\" outlineLevel=\"1\"/>");
    EXPECT_TRUE(sheet->setSummaryBelow(false));
    EXPECT_TRUE(sheet->groupRowRange(2, 2, true));
    EXPECT_NE(sheet.savedRows().find("<row r=\"2\" hidden=\"true\" outlineLevel=\"1\" collapsed=\"true\"/>"),
              std::string::npos);
    EXPECT_TRUE(sheet->groupRowRange(1048575, 1048575, true)) << "its summary would lie in front";
    EXPECT_NE(sheet.savedRows().find("<row r=\"1048575\" collapsed=\"true\"/>"), std::string::npos);
    EXPECT_NE(sheet.saved().find("outlineLevelRow=\"2\""), std::string::npos);
}

/// What each column has, without any element.
struct PlainColumn {
    int pixels = 64;
    bool hidden = false;
    unsigned level = 0;
    bool operator==(const PlainColumn&) const = default;
};

class Model {
public:
    explicit Model(TestSheet<>& sheet) : _sheet(sheet) {}

    void step(std::mt19937& random) {
        const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
        const int first = pick(52), last = first + pick(8);
        const bool flag = pick(2) != 0;
        switch (pick(5)) {
            case 0: {
                const int chars = 1 + pick(30);
                EXPECT_TRUE(_sheet->setColumn(first, last, chars, nullptr, flag));
                for (int i = first; i <= last; ++i) {
                    columns[at(i)].pixels = 7 * chars + 5;
                    columns[at(i)].hidden = flag;
                }
                break;
            }
            case 1:
                EXPECT_TRUE(_sheet->setColumnHidden(first, flag));
                columns[at(first)].hidden = flag;
                break;
            case 2:
                group(first, last, flag);
                break;
            case 3:
                EXPECT_TRUE(_sheet->insertColumns(first, last, true));
                std::move_backward(columns.begin() + first, columns.end() - (last - first + 1), columns.end());
                std::fill(columns.begin() + first, columns.begin() + last + 1, PlainColumn());
                break;
            default:
                EXPECT_TRUE(_sheet->removeColumns(first, last, true));
                std::move(columns.begin() + last + 1, columns.end(), columns.begin() + first);
                std::fill(columns.end() - (last - first + 1), columns.end(), PlainColumn());
                break;
        }
    }

    void compare() {
        std::uint32_t before = 0;
        std::array<PlainColumn, size> found{};
        for (const auto& cols : _sheet->root().cols()) {
            ASSERT_FALSE(cols.col().empty());
            for (const auto& col : cols.col()) {
                ASSERT_GT(col.min(), before);
                ASSERT_LE(col.min(), col.max());
                before = col.max();
                for (std::uint32_t i = col.min() - 1; i < col.max() && i < size; ++i) {
                    found[i].hidden = col.hidden();
                    found[i].level = col.outlineLevel();
                }
            }
        }
        for (int i = 0; i < size; ++i) {
            found[at(i)].pixels = _sheet->columnWidthPixels(i);
            ASSERT_TRUE(found[at(i)] == columns[at(i)]) << "column " << i;
        }
    }

private:
    static constexpr int size = 400;  // what moves stays within
    static std::size_t at(int i) { return static_cast<std::size_t>(i); }

    void group(int first, int last, bool collapsed) {
        const unsigned level = columns[at(first)].level;
        const bool fits = level < 7 && std::all_of(columns.begin() + first, columns.begin() + last + 1,
                                                   [&](const PlainColumn& c) { return c.level == level; });
        EXPECT_EQ(_sheet->groupColumnRange(first, last, collapsed), fits);
        for (int i = first; fits && i <= last; ++i) {
            columns[at(i)].level = level + 1;
            if (collapsed) columns[at(i)].hidden = true;
        }
    }

    TestSheet<>& _sheet;
    std::array<PlainColumn, size> columns{};
};

TEST(Columns, SayTheSameAsAPlainArray) {
    for (unsigned seed = 1; seed <= rounds(5000); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        TestSheet sheet("");
        sheet.book.workbook().sheets().sheet().append().name(L"S");
        Model model(sheet);
        for (int i = 0; i < 25; ++i) model.step(random);
        model.compare();
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace vellum::test
