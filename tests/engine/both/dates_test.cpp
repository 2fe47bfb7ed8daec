#include <tuple>

#include "engine/api/iformat.h"
#include "tests/engine/both/engines.h"

namespace vellum {
namespace {

using Dates = EachEngine;
INSTANTIATE_FOR_EACH_ENGINE(Dates);

TEST_P(Dates, NumbersOfBothDateSystems) {
    EXPECT_EQ(book->datePack(1900, 1, 1), 1);
    EXPECT_EQ(book->datePack(2021, 1, 1, 18), 44197.75);
    EXPECT_EQ(book->datePack(0, 0, 0, 12), isBinary() ? 0.0 : 0.5);  // a time without a date
    int year, month, day, hour, min, sec, msec;
    ASSERT_TRUE(book->dateUnpack(60, &year, &month, &day, &hour, &min, &sec, &msec));
    EXPECT_EQ(std::tuple(year, month, day, hour), std::tuple(1900, 2, 29, 0));
    EXPECT_TRUE(book->dateUnpack(1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_FALSE(book->dateUnpack(2958466, &year, &month, &day));

    EXPECT_FALSE(book->isDate1904());
    EXPECT_TRUE(book->setDate1904(true));
    EXPECT_EQ(book->datePack(1904, 1, 2), 1);
    book->addSheet("S");
    EXPECT_TRUE(reloaded()->isDate1904());
}

TEST_P(Dates, TheNumberFormatMakesADate) {
    auto* sheet = book->addSheet("S");
    const struct {
        const char* text;  // null: the id is built in
        int id;
        bool isDate;
    } cases[] = {
        {nullptr, 0, false},        {nullptr, 13, false},   {nullptr, 14, true},  {nullptr, 22, true},
        {nullptr, 45, true},        {nullptr, 48, false},   {nullptr, 49, false}, {"yyyy-mm-dd", 0, true},
        {"0.00\"days\"", 0, false}, {"[Red]0.0", 0, false}, {"[h]:mm", 0, true},  {"#,##0", 0, false},
    };
    int row = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text ? c.text : std::to_string(c.id));
        auto* format = book->newFormat();
        ASSERT_NE(format, nullptr) << error();
        const int id = c.text ? book->newCustomNumFormat(c.text) : c.id;
        EXPECT_EQ(c.text == nullptr, id < 164);
        format->setNumFormat(id);
        ASSERT_TRUE(sheet->writeNumber(row, 0, 44197.75, format)) << error();
        EXPECT_EQ(sheet->isDate(row, 0), c.isDate);
        ++row;
    }
    const auto loaded = reloaded();
    for (int i = 0; i < row; ++i) EXPECT_EQ(loaded->getSheet(0)->isDate(i, 0), cases[i].isDate) << i;
}

}  // namespace
}  // namespace vellum
