#include "biff/cells/sheet_index.h"

#include <gtest/gtest.h>

#include <array>

#include <map>
#include <random>
#include <utility>

#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

using Model = std::map<std::pair<std::uint32_t, std::uint32_t>, CellSlot>;

void expectSame(const SheetIndex& index, const Model& model) {
    Model found;
    index.forEach(
        [&](std::uint32_t row, std::uint32_t col, CellSlot slot) { found.emplace(std::pair(row, col), slot); });
    ASSERT_EQ(found, model);
    std::uint32_t row = 0, col = 0;
    for (const auto& [place, slot] : model) {
        ASSERT_TRUE(index.nextOccupied(row, col));
        ASSERT_EQ(std::pair(row, col), place);
        ASSERT_EQ(index.at(static_cast<std::uint16_t>(row), col), slot);
        ++col;
    }
    ASSERT_FALSE(index.nextOccupied(row, col));
}

// Writing, erasing and freeing rows at random, with places that meet often.
TEST(SheetIndex, AnswersAsAMapDoes) {
    std::mt19937 random(7);
    SheetIndex index;
    Model model;
    for (int step = 0; step < 20000; ++step) {
        const auto row = static_cast<std::uint16_t>(random() % 2 == 0 ? random() % 40 : 65535 - random() % 70);
        const auto col = static_cast<std::uint32_t>(random() % 256);
        if (random() % 4 != 0) {
            const CellSlot slot(static_cast<SlotKind>(1 + random() % 7), random() % CellSlot::maxIndex);
            index.forWrite(row, col) = slot;
            model.insert_or_assign({row, col}, slot);
        } else if (random() % 2 == 0) {
            index.erase(row, col);
            model.erase({row, col});
        } else {
            for (std::uint32_t c = 0; c < SheetIndex::colLimit; ++c) {
                index.erase(row, c);
                model.erase({row, c});
            }
            index.freeRowIfEmpty(row);
            ASSERT_FALSE(index.hasRow(row));
        }
        if (step % 1000 == 0) expectSame(index, model);
    }
    expectSame(index, model);
}

TEST(SheetIndex, ASlotHoldsItsKindAndIndex) {
    const CellSlot slot(SlotKind::label, CellSlot::maxIndex);
    EXPECT_TRUE(slot.occupied());
    EXPECT_EQ(slot.kind(), SlotKind::label);
    EXPECT_EQ(slot.index(), CellSlot::maxIndex);
}

TEST(SheetIndex, ReadingMakesNoRowAndColumn256IsRefused) {
    SheetIndex index;
    EXPECT_FALSE(index.at(500, 255).occupied());
    EXPECT_FALSE(index.hasRow(500));
    EXPECT_EQ(index.memoryBytes(), 0U);
    try {
        index.forWrite(0, 256);
        FAIL();
    } catch (const vlerror& e) {
        EXPECT_STREQ(e.what(), "SheetIndex: col can't be more than 255");
    }
    EXPECT_THROW(static_cast<void>(index.at(0, 256)), vlerror);
}

// A file must not claim memory with a few bytes per cell: 14 for a record.
TEST(SheetIndex, CostsWhatIsTouched) {
    const struct {
        const char* what;
        std::uint32_t rowStep, colFirst, columns;
        std::size_t maxBytesPerCell;
    } cases[] = {{"one column", 1, 255, 1, 160},
                 {"ten columns", 1, 0, 10, 16},
                 {"all", 1, 0, 256, 10},
                 {"lone cells", 32, 100, 1, 700}};
    for (const auto& c : cases) {
        SheetIndex index;
        std::size_t cells = 0;
        for (std::uint32_t row = 0; row < SheetIndex::rowLimit; row += c.rowStep) {
            for (std::uint32_t i = 0; i < c.columns; ++i, ++cells) {
                index.forWrite(static_cast<std::uint16_t>(row), c.colFirst + i) = CellSlot(SlotKind::rk, cells);
            }
        }
        EXPECT_LE(index.memoryBytes() / cells, c.maxBytesPerCell) << c.what;
    }
}

// Thousands of sheets may hold one cell each.
TEST(SheetIndex, ALoneCellCostsLittleWhereverItStands) {
    for (const auto row : std::to_array<std::uint16_t>({0, 31, 32, 40000, 65535})) {
        SheetIndex index;
        index.forWrite(row, 255) = CellSlot(SlotKind::blank, 0);
        EXPECT_LE(index.memoryBytes(), 512U) << row;
        EXPECT_EQ(index.nextRow(0), row);
    }
}

TEST(SheetIndex, FreedRowsAreUsedAgain) {
    SheetIndex index;
    std::size_t after = 0;
    for (int round = 0; round < 50; ++round) {
        for (std::uint32_t col = 0; col < 256; ++col) index.forWrite(9, col) = CellSlot(SlotKind::rk, col);
        for (std::uint32_t col = 0; col < 256; ++col) index.erase(9, col);
        index.freeRowIfEmpty(9);
        if (round == 1) after = index.memoryBytes();
    }
    EXPECT_LE(index.memoryBytes(), after * 2);
}

}  // namespace
}  // namespace vellum
