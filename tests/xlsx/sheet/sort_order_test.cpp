// The order of many rows, which are not sorted the way a few are.
#include "xlsx/filters/sort_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace vellum::test {
namespace {

TEST(SortOrder, ManyRowsAsFewOnes) {
    std::mt19937_64 random(7);
    const auto column = [&](xlsx::SortPlace distinct, int shift) {
        std::vector<xlsx::SortPlace> places(30'000);
        for (auto& place : places) place = random() % distinct << shift;
        return places;
    };
    const std::vector<std::vector<xlsx::SortPlace>> tables[] = {
        {column(3, 62), column(1, 0), column(500, 7)},
        {column(2, 63), column(~xlsx::SortPlace{0}, 0)},
        {column(1, 5)},
        {column(40, 0), column(40, 30)},
    };
    for (const auto& columns : tables) {
        std::vector<std::uint32_t> expected(columns.front().size());
        std::iota(expected.begin(), expected.end(), 0u);
        std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
            for (const auto& places : columns) {
                if (places[a] != places[b]) return places[a] < places[b];
            }
            return false;
        });
        EXPECT_EQ(xlsx::sortedOrder(columns, expected.size()), expected);
    }
}

}  // namespace
}  // namespace vellum::test
