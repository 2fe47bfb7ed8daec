#include "ooxml/cells/row_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

#include "ooxml/cells/row.h"

namespace ooxml {
namespace {

using Row = c_CT_Row<SheetFamily>;
using List = RowList<Row>;

std::vector<std::uint32_t> numbers(const List& list) {
    std::vector<std::uint32_t> out;
    for (const Row& row : list) out.push_back(row.r());
    return out;
}

List::iterator placeOf(List& list, std::size_t at) {
    auto place = list.begin();
    std::advance(place, at);
    return place;
}

/// Whether it holds the same rows, forwards, backwards and by number.
void expectSame(List& list, const std::vector<std::uint32_t>& rows) {
    ASSERT_EQ(list.size(), rows.size());
    ASSERT_EQ(numbers(list), rows);
    std::vector<std::uint32_t> back;
    for (auto at = list.end(); at != list.begin();) back.push_back((--at)->r());
    std::reverse(back.begin(), back.end());
    ASSERT_EQ(back, rows);
    if (rows.empty()) return;
    EXPECT_EQ(list.back().r(), rows.back());
    EXPECT_EQ(list[rows.size() / 2].r(), rows[rows.size() / 2]);
}

}  // namespace

TEST(RowList, HoldsWhatAVectorHolds) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
    for (const unsigned spread : {50u, 5'000u, 1'000'000u}) {
        List list;
        std::vector<std::uint32_t> rows;
        for (int step = 0; step < 6'000; ++step) {
            if (below(200) == 0 && !rows.empty()) {  // a stretch goes, across blocks
                const std::size_t first = below(rows.size() + 1), past = first + below(rows.size() - first + 1);
                const auto behind = list.erase(placeOf(list, first), placeOf(list, past));
                ASSERT_EQ(behind, placeOf(list, first));
                rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(first),
                           rows.begin() + static_cast<std::ptrdiff_t>(past));
                continue;
            }
            const auto row = static_cast<std::uint32_t>(below(spread));
            const auto wanted = std::lower_bound(rows.begin(), rows.end(), row + 1);
            auto at = list.firstFrom(row);
            ASSERT_EQ(at == list.end() ? 0 : at->r(), wanted == rows.end() ? 0 : *wanted);
            if (at != list.end() && at->r() == row + 1) continue;
            at = list.insert(at);
            ASSERT_TRUE(list.holds(at));
            at->r(row + 1);
            rows.insert(wanted, row + 1);
        }
        expectSame(list, rows);
        List copy = list;
        list.clear();
        expectSame(list, {});
        expectSame(copy, rows);
    }
}

TEST(RowList, FromEitherSideAndBetween) {
    for (const int order : {1, -1, 0}) {
        List list;
        std::vector<std::uint32_t> rows;
        list.append().r(100'000);
        list.append().r(200'000);
        for (std::uint32_t i = 1; i <= 2'000; ++i) {
            const std::uint32_t row = order > 0 ? 300'000 + i : order < 0 ? 50'000 - i : 150'000 + i;
            list.insert(list.firstFrom(row - 1))->r(row);
            rows.push_back(row);
        }
        rows.insert(rows.end(), {100'000, 200'000});
        std::sort(rows.begin(), rows.end());
        expectSame(list, rows);
    }
}

}  // namespace ooxml
