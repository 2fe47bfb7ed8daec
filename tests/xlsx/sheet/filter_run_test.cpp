// Which rows a filter hides, and how it sorts them.
#include <gtest/gtest.h>

#include "engine/api/enums.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"
#include "engine/api/iformat.h"
#include "tests/support/rounds.h"
#include "tests/xlsx/sheet/filter_model.h"
#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/styles/format.h"

namespace vellum::test {
namespace {

constexpr int firstRow = 2, firstCol = 1;  // of the filter; its header

template <class Tag>
class FilterRuns : public testing::Test {
protected:
    using Sheet = TestSheet<Tag>;

    void put(Sheet& sheet, int row, int col, const ModelCell& cell, ModelSource& source) {
        switch (cell.kind) {
            case ModelCell::number:
                if (source.below(5) == 0 && !cell.date) {
                    sheet->writeFormulaNumber(row, col, "A1", cell.value, nullptr);
                } else {
                    sheet->writeNumber(row, col, cell.value, cell.date ? dateFormat(sheet) : nullptr);
                }
                break;
            case ModelCell::text:
                if (source.below(5) == 0) {
                    sheet->writeFormulaText(row, col, "A1", cell.words.c_str(), nullptr);
                } else {
                    sheet->writeString(row, col, cell.words.c_str(), nullptr, stringIsText);
                }
                break;
            case ModelCell::boolean:
                sheet->writeBool(row, col, cell.value != 0, nullptr, errorNone);
                break;
            case ModelCell::error:
                sheet->writeError(row, col, cell.words == "#N/A" ? errorNotAvailable : errorDivisionByZero, nullptr);
                break;
            case ModelCell::blank:
                if (source.below(2) == 0) sheet->writeBlank(row, col, nullptr);
        }
    }
    IFormatT<char>* dateFormat(Sheet& sheet) {
        auto* const format = sheet.book.ensureStyles().newFormat(nullptr);
        format->setNumFormat(14);
        return format;
    }
    ModelTable fill(Sheet& sheet, int columns, ModelSource& source) {
        ModelTable table(source.below(14));
        for (std::size_t i = 0; i < table.size(); ++i) {
            const bool isLast = i + 1 == table.size();
            if (!isLast && source.below(6) == 0) continue;  // a row that is not there
            for (int c = 0; c < columns; ++c) table[i].push_back(source.cell());
            const int row = firstRow + 1 + static_cast<int>(i);
            sheet->writeNumber(row, 0, 7, nullptr);  // beside the filter
            for (int c = 0; c < columns; ++c)
                put(sheet, row, firstCol + c, table[i][static_cast<std::size_t>(c)], source);
        }
        return table;
    }
    void set(Sheet& sheet, const std::vector<ModelFilter>& filters, int rows) {
        auto* const filter = sheet->filterObject();
        filter->setFilterRange(firstRow, firstRow + rows + 5, firstCol,
                               firstCol + static_cast<int>(filters.size()) - 1);
        for (std::size_t c = 0; c < filters.size(); ++c) {
            const ModelFilter& wanted = filters[c];
            if (wanted.kind == ModelFilter::nothing && c % 2 == 0) continue;
            auto* const column = filter->filterColumn(static_cast<int>(c));
            auto& element = sheet->root().autoFilter().filterColumn().back();
            if (wanted.kind == ModelFilter::values) {
                auto& list = element.choice().filters();
                if (wanted.blank) list.blank(true);
                for (const auto& text : wanted.texts) column->addValueFilter(text.c_str());
                for (const auto& group : wanted.dates) addDates(list.dateGroupItem().append(), group);
            } else if (wanted.kind == ModelFilter::top) {
                EXPECT_TRUE(column->setTop10(wanted.count, wanted.greatest, wanted.percent));
            } else if (wanted.kind == ModelFilter::custom) {
                const bool two = wanted.rules.size() > 1;
                EXPECT_TRUE(column->setCustomFilter(wanted.rules[0].op, wanted.rules[0].value.c_str(),
                                                    two ? wanted.rules[1].op : 0,
                                                    two ? wanted.rules[1].value.c_str() : nullptr, wanted.both));
            } else if (wanted.kind == ModelFilter::notJudged) {
                element.choice().dynamicFilter().name = "dynamicFilter";
            }
        }
    }
    static void addDates(bindery::c_raw_node& item, const std::vector<int>& group) {
        constexpr const char* names[] = {"year", "month", "day", "hour", "minute", "second"};
        item.name = "dateGroupItem";
        for (std::size_t i = 0; i < group.size(); ++i) item.attrs.push_back({names[i], "", std::to_string(group[i])});
        item.attrs.push_back({"dateTimeGrouping", "", names[group.size() - 1]});
    }
    static auto* rowAt(Sheet& sheet, int row) {
        for (auto& element : sheet->root().sheetData().row()) {
            if (element.r() == static_cast<unsigned>(row) + 1) return &element;
        }
        return static_cast<decltype(&sheet->root().sheetData().row()[0])>(nullptr);
    }
};
using Dialects = testing::Types<excelNormal_tag, excelStrict_tag>;
TYPED_TEST_SUITE(FilterRuns, Dialects);

TYPED_TEST(FilterRuns, HideWhatASecondOpinionHides) {
    for (unsigned seed = 0; seed < rounds(10000); ++seed) {
        SCOPED_TRACE(seed);
        ModelSource source(seed);
        TestSheet<TypeParam> sheet("");
        sheet.book.workbook().sheets().sheet().append().name(L"S");
        std::vector<ModelFilter> filters(1 + source.below(3));
        const ModelTable table = this->fill(sheet, static_cast<int>(filters.size()), source);
        for (auto& filter : filters) filter = source.filter();
        this->set(sheet, filters, static_cast<int>(table.size()));
        bool isPartial = false;
        for (const auto& filter : filters) isPartial = isPartial || filter.kind == ModelFilter::notJudged;
        std::vector<bool> wasHidden(table.size());
        for (std::size_t i = 0; i < table.size(); ++i) {
            auto* const row = this->rowAt(sheet, firstRow + 1 + static_cast<int>(i));
            if (row && source.below(2) == 0) row->hidden(true), wasHidden[i] = true;
        }
        ASSERT_TRUE(sheet->applyFilter()) << sheet.error();
        const std::vector<ModelCell> none(filters.size());
        for (std::size_t i = 0; i < table.size(); ++i) {
            const auto& cells = table[i].empty() ? none : table[i];
            bool shown = true;
            for (std::size_t c = 0; c < filters.size(); ++c) shown = shown && passes(filters[c], table, c, cells[c]);
            const bool hidden = !shown || (isPartial && wasHidden[i]);
            const auto* const row = this->rowAt(sheet, firstRow + 1 + static_cast<int>(i));
            EXPECT_EQ(row && row->hidden(), hidden) << "row " << i << ": " << cells[0].shown();
            if (!row) {
                EXPECT_FALSE(hidden);
            }
        }
        EXPECT_EQ(sheet->lastRow(), table.empty() ? 0 : firstRow + 1 + static_cast<int>(table.size()));
    }
}

TYPED_TEST(FilterRuns, SortAsNeighboursThatChangePlaces) {
    for (unsigned seed = 0; seed < rounds(10000); ++seed) {
        SCOPED_TRACE(seed);
        ModelSource source(seed);
        TestSheet<TypeParam> sheet("");
        sheet.book.workbook().sheets().sheet().append().name(L"S");
        const int columns = 1 + static_cast<int>(source.below(3));
        ModelTable table = this->fill(sheet, columns, source);
        auto* const filter = sheet->filterObject();
        filter->setFilterRange(firstRow, firstRow + static_cast<int>(table.size()) + 2, firstCol,
                               firstCol + columns - 1);
        std::vector<std::pair<std::size_t, bool>> keys;
        for (unsigned n = 1 + source.below(3); n > 0; --n) {
            keys.emplace_back(source.below(static_cast<unsigned>(columns)), source.below(2) == 0);
            ASSERT_TRUE(filter->addSort(static_cast<int>(keys.back().first), keys.back().second));
        }
        bubbleSort(table, keys);
        ASSERT_TRUE(sheet->applyFilter()) << sheet.error();
        for (std::size_t i = 0; i < table.size(); ++i) {
            const int row = firstRow + 1 + static_cast<int>(i);
            for (int c = 0; c < columns; ++c) {
                const ModelCell cell = table[i].empty() ? ModelCell() : table[i][static_cast<std::size_t>(c)];
                const int col = firstCol + c;
                switch (cell.kind) {
                    case ModelCell::number:
                        EXPECT_EQ(sheet->readNumber(row, col, nullptr), cell.value) << i;
                        break;
                    case ModelCell::text:
                        EXPECT_EQ(sheet.string(row, col), cell.words) << i;
                        break;
                    case ModelCell::boolean:
                        EXPECT_EQ(sheet->readBool(row, col, nullptr), cell.value != 0) << i;
                        break;
                    case ModelCell::error:
                        EXPECT_EQ(sheet->readError(row, col, nullptr),
                                  cell.words == "#N/A" ? errorNotAvailable : errorDivisionByZero)
                            << i;
                        break;
                    default:
                        EXPECT_TRUE(sheet->cellType(row, col) == cellEmpty || sheet->cellType(row, col) == cellBlank)
                            << i;
                }
            }
        }
    }
}

TEST(FilterSorts, FormulasAndTheirGroups) {
    const std::string rows =
        R"(<row r="1"><c r="A1" t="str"><v>head</v></c></row>)"
        R"(<row r="2"><c r="A2"><v>3</v></c><c r="B2"><f t="shared" ref="B2:B4" si="0">A2*2</f><v>6</v></c></row>)"
        R"(<row r="3"><c r="A3"><v>1</v></c><c r="B3"><f t="shared" si="0"/><v>2</v></c></row>)"
        R"(<row r="4"><c r="A4"><v>2</v></c><c r="B4"><f t="shared" si="0"/><v>4</v></c>)"
        R"(<c r="C4"><f t="array" ref="C4:C5">A1:A2</f><v>0</v></c><c r="D4"><v>9</v></c></row>)";
    TestSheet sheet(rows);
    sheet.book.workbook().sheets().sheet().append().name(L"My 'sheet'");
    auto* const filter = sheet->filterObject();
    ASSERT_TRUE(filter->setFilterRange(0, 3, 0, 2));
    ASSERT_TRUE(filter->setSort(0, false));
    ASSERT_TRUE(sheet->applyFilter()) << sheet.error();
    EXPECT_EQ(sheet.formula(1, 1), "A3*2");  // as it stood there
    EXPECT_EQ(sheet.formula(2, 1), "A4*2");
    EXPECT_EQ(sheet.formula(3, 1), "A2*2");
    EXPECT_EQ(sheet->readNumber(3, 0, nullptr), 3);
    EXPECT_EQ(sheet->readNumber(3, 3, nullptr), 9);  // beside the filter
    EXPECT_EQ(sheet->root().sheetData().row()[2].c()[2].formula()->ref(), "C3:C4");
    const auto& name = sheet.book.workbook().definedNames().definedName()[0];
    EXPECT_EQ(name.name(), L"_xlnm._FilterDatabase");
    EXPECT_EQ(name.text(), L"'My ''sheet'''!$A$1:$C$4");
    EXPECT_TRUE(name.hidden());
    EXPECT_EQ(name.localSheetId(), 0u);
    EXPECT_TRUE(sheet->applyFilter());
    EXPECT_EQ(sheet.book.workbook().definedNames().definedName().size(), 1u);

    ASSERT_TRUE(filter->setSort(0, true));
    sheet->root().autoFilter().sortState().sortCondition()[0].sortBy("cellColor");
    EXPECT_TRUE(sheet->applyFilter());
    EXPECT_EQ(sheet->readNumber(1, 0, nullptr), 1);  // only an application knows that order
}

/// A file may number a row far behind the sheet: an insertion in front does not bring it back around, which would leave
/// the rows out of order for whoever looks for one.
TEST(Filters, JudgeRowsInOrderWhateverTheFileNumbers) {
    constexpr int count = 300;
    std::string rows;
    for (int row = 1; row <= count; ++row) {
        const std::string number = std::to_string(row);
        rows += "<row r=\"" + number + "\"><c r=\"A" + number + "\"><v>" + number + "</v></c></row>";
    }
    TestSheet sheet(rows + R"(<row r="4294967295" ht="20"/>)");
    sheet.book.workbook().sheets().sheet().append().name(L"S");
    ASSERT_TRUE(sheet->insertRows(0, 1, false)) << sheet.error();
    auto* const filter = sheet->filterObject();
    ASSERT_TRUE(filter->setFilterRange(2, count + 1, 0, 0));
    ASSERT_TRUE(filter->filterColumn(0)->addValueFilter("7"));
    ASSERT_TRUE(sheet->applyFilter()) << sheet.error();
    std::uint32_t last = 2;
    for (const auto& row : sheet->root().sheetData().row()) {
        EXPECT_EQ(row.r(), ++last);
        EXPECT_EQ(row.hidden(), row.r() != 3 && row.r() != 9) << row.r();
    }
    EXPECT_EQ(last, count + 2U);
}

TEST(Filters, ThatWereNeverFilledAreNotWritten) {
    TestSheet sheet("");
    sheet.book.workbook().sheets().sheet().append().name(L"S");
    EXPECT_FALSE(sheet->applyFilter());
    EXPECT_EQ(sheet.error(), "ref is not found");
    auto* const filter = sheet->filterObject();
    EXPECT_TRUE(sheet->hasFilter());
    EXPECT_EQ(sheet.saved().find("ilter"), std::string::npos);
    EXPECT_EQ(filter, sheet->filterObject());
    EXPECT_TRUE(filter->setFilterRange(0, 5, 0, 1));
    EXPECT_NE(sheet.saved().find("<autoFilter ref=\"A1:B6\"/>"), std::string::npos);
    EXPECT_NE(sheet.saved().find("filterMode=\"true\""), std::string::npos);
    EXPECT_TRUE(sheet->removeFilter());
    EXPECT_FALSE(sheet->hasFilter());
    EXPECT_EQ(sheet.saved().find("ilter"), std::string::npos);
    EXPECT_TRUE(sheet->removeFilter());
}

}  // namespace
}  // namespace vellum::test
