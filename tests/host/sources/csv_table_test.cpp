#include "host/sources/csv_table.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>

#include "host/sources/table_ops.h"

namespace quillet {
namespace {

std::string textAt(CsvTable& table, int row, int col) {
    return csvTableOps.readText(&table, row, col, nullptr);
}

/// A text in the first cell, as the loader brings it.
void loadText(CsvTable& table, const std::string& text) {
    CsvStretch stretch = {};
    const CsvTexts::Arriving arriving =
        table.texts().note(text.data(), text.size(), &stretch.store(0, csvArenaText).text);
    ASSERT_TRUE(table.texts().keep(&arriving, 1));
    ASSERT_NE(table.appendStretch(0, 0, stretch), nullptr);
}

TEST(CsvTable, FindsWhatWasStoredInAnyOrder) {
    CsvTable table(nullptr, nullptr, 0);
    std::map<std::pair<int, int>, double> expected;
    std::mt19937 random(7);
    for (int i = 0; i < 5000; ++i) {
        const int row = static_cast<int>(random() % 40), col = static_cast<int>(random() % 16384);
        ASSERT_EQ(table.storeNumber(row, col, i), 1);
        expected[{row, col}] = i;
    }
    for (int probe = 0; probe < 20000; ++probe) {
        const int row = static_cast<int>(random() % 42), col = static_cast<int>(random() % 16390);
        const auto found = expected.find({row, col});
        ASSERT_EQ(csvTableOps.cellKind(&table, row, col), found == expected.end() ? cellEmpty : cellNumber);
        ASSERT_EQ(csvTableOps.readReal(&table, row, col, nullptr), found == expected.end() ? 0 : found->second);
    }
    EXPECT_EQ(table.lastRow, 39);
    EXPECT_EQ(table.rowCapacity, 256);
}

TEST(CsvTable, RowSlotsGrowAsLaidDown) {
    const struct {
        int row;
        std::int32_t capacity;
    } steps[] = {{0, 256}, {256, 512}, {512, 1024}, {1300, 1536}, {1536, 3072}, {20000, 20224}, {20224, 28416}};
    CsvTable table(nullptr, nullptr, 0);
    for (const auto& step : steps) {
        table.storeNumber(step.row, 0, 1);
        EXPECT_EQ(table.rowCapacity, step.capacity) << step.row;
    }
    EXPECT_EQ(table.memorySize(), 136 + 16 * 28416 + 600 * 7);
}

TEST(CsvTable, TextsReplaceEachOther) {
    CsvTable table(nullptr, nullptr, 0);
    const std::string shortText = "1234567", longText = "12345678";
    loadText(table, longText);
    table.storeText(0, 1, longText.c_str());
    EXPECT_EQ(table.memorySize(), 136 + 16 * 256 + 600 + 2 * 9);
    table.storeText(0, 0, textAt(table, 0, 1).c_str());
    table.storeText(0, 1, csvTableOps.readText(&table, 0, 1, nullptr));  // onto itself
    EXPECT_EQ(textAt(table, 0, 0), longText);
    EXPECT_EQ(textAt(table, 0, 1), longText);
    table.storeText(0, 0, shortText.c_str());
    EXPECT_EQ(textAt(table, 0, 0), shortText);
    EXPECT_EQ(csvTableOps.cellKind(&table, 0, 0), cellText);
    table.storeText(0, 0, "");
    EXPECT_EQ(csvTableOps.cellKind(&table, 0, 0), cellEmpty);
    EXPECT_EQ(csvTableOps.readBoolText(&table, 0, 0), std::string("FALSE"));
    EXPECT_EQ(csvTableOps.readBoolText(&table, 1, 0), nullptr);
}

TEST(CsvTable, TextsAsNumbersAndBooleans) {
    CsvTable table(nullptr, nullptr, 0);
    table.decimalSep = ',';
    const struct {
        const char* text;
        double real;
        int boolean;
    } cases[] = {{"1,5 kg", 1.5, 1}, {"TRUE", 0, 1},  {"FALSE", 0, 0}, {"true", 0, 0},
                 {"-2", -2, 1},      {"0,7", 0.7, 0}, {"abc", 0, 0},   {"007", 7, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        table.storeText(3, 3, c.text);
        EXPECT_EQ(csvTableOps.textToReal(&table, 3, 3), c.real);
        EXPECT_EQ(csvTableOps.textToBool(&table, 3, 3), c.boolean);
        EXPECT_EQ(textAt(table, 3, 3), c.text);
    }
}

TEST(CsvTable, IsABookOfOneSheetOnceARowExists) {
    CsvTable table(nullptr, nullptr, 0);
    EXPECT_EQ(csvTableOps.sheetCount(&table), 0);
    EXPECT_EQ(csvTableOps.sheetName(&table), nullptr);
    EXPECT_EQ(csvTableOps.firstRow(&table), notGiven);
    Sheet* const sheet = csvTableOps.addSheet(&table, "any", nullptr);
    EXPECT_EQ(sheet, &table);
    EXPECT_STREQ(csvTableOps.sheetName(sheet), "Sheet1");
    EXPECT_EQ(csvTableOps.lastCol(sheet), 0);
    EXPECT_EQ(csvTableOps.addSheet(&table, "any", nullptr), nullptr);
}

}  // namespace
}  // namespace quillet
