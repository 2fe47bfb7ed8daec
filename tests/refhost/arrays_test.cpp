#include "refhost/values/array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>

namespace refhost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Tuple = std::vector<int>;

void store(Array& array, Tuple tuple, double value) {
    HostValue* slot = array.slot(tuple.data());
    ASSERT_NE(slot, nullptr);
    slot->real = value;
}
double at(Array& array, Tuple tuple) {
    return array.get(tuple.data()).real;
}

std::vector<Tuple> entries(Array& array) {
    std::vector<Tuple> all;
    Tuple tuple(static_cast<std::size_t>(array.dims()));
    for (bool more = array.firstEntry(tuple.data()); more; more = array.nextEntry(tuple.data())) all.push_back(tuple);
    return all;
}

struct Arrays : testing::Test {
    TypeRegistry types;
    Set rows{types, 10, 12, false}, growing{types, 1, 0, true}, columns{types, 1, 2, false};
};

TEST_F(Arrays, StaticHasAnEntryAtEveryTuple) {
    Array array(types, {&rows, &columns}, hostTypeReal, false);
    store(array, {11, 2}, 5);
    EXPECT_EQ(array.count(), 6);
    EXPECT_THAT(entries(array),
                ElementsAre(Tuple{10, 1}, Tuple{10, 2}, Tuple{11, 1}, Tuple{11, 2}, Tuple{12, 1}, Tuple{12, 2}));
    EXPECT_EQ(at(array, {11, 2}), 5);
    EXPECT_EQ(at(array, {12, 1}), 0);
    const int outside[] = {13, 1};
    EXPECT_FALSE(array.exists(outside));
    EXPECT_EQ(array.slot(outside), nullptr);
}

TEST_F(Arrays, DynamicHasWhatWasStoredInOrder) {
    Array array(types, {&rows, &columns}, hostTypeReal, true);
    EXPECT_THAT(entries(array), IsEmpty());
    store(array, {12, 1}, 1);
    store(array, {10, 2}, 2);
    store(array, {12, 1}, 3);
    EXPECT_THAT(entries(array), ElementsAre(Tuple{10, 2}, Tuple{12, 1}));
    store(array, {10, 1}, 4);  // after a walk
    EXPECT_THAT(entries(array), ElementsAre(Tuple{10, 1}, Tuple{10, 2}, Tuple{12, 1}));
    EXPECT_EQ(at(array, {12, 1}), 3);
}

TEST_F(Arrays, WalkGoesOnFromATupleThatIsNoEntry) {
    Array array(types, {&rows, &columns}, hostTypeReal, true);
    for (const Tuple& tuple : {Tuple{10, 1}, Tuple{11, 1}, Tuple{12, 2}}) store(array, tuple, 1);
    Tuple tuple{10, 2};  // the last index pushed to its end, as the module does to leave a row
    ASSERT_TRUE(array.nextEntry(tuple.data()));
    EXPECT_EQ(tuple, (Tuple{11, 1}));
    tuple = {12, 2};
    EXPECT_FALSE(array.nextEntry(tuple.data()));
}

TEST_F(Arrays, AllTuplesOfAnEmptySetAreNone) {
    const Array array(types, {&rows, &growing}, hostTypeReal, false);
    Tuple tuple(2);
    EXPECT_FALSE(array.firstTuple(tuple.data()));
}

TEST_F(Arrays, StoringExtendsADynamicRange) {
    Array array(types, {&growing}, hostTypeReal, true);
    store(array, {5}, 1);
    store(array, {8}, 2);
    EXPECT_EQ(growing.first(), 5);
    EXPECT_EQ(growing.last(), 8);
    EXPECT_THAT(entries(array), ElementsAre(Tuple{5}, Tuple{8}));
}

// Values stay where they are while the sets grow at both ends, in all dimensions.
TEST_F(Arrays, StaticGrowsWithItsSets) {
    Set other(types, 1, 0, true);
    Array array(types, {&growing, &columns, &other}, hostTypeReal, false);
    std::mt19937 random(7);
    std::uniform_int_distribution<int> index(-20, 20);
    std::map<Tuple, double> expected;
    for (int i = 0; i < 400; ++i) {
        const Tuple tuple{index(random), 1 + i % 2, index(random)};
        store(array, tuple, expected[tuple] = i);
    }
    for (const auto& [tuple, value] : expected) EXPECT_EQ(at(array, tuple), value);
    EXPECT_EQ(array.count(), growing.size() * 2 * other.size());
}

TEST_F(Arrays, SparseFindsWhatItHoldsAmongMany) {
    Array array(types, {&growing, &rows}, hostTypeReal, true);
    std::mt19937 random(3);
    std::uniform_int_distribution<int> index(-5000, 5000);
    std::set<Tuple> expected;
    for (int i = 0; i < 3000; ++i) {
        const Tuple tuple{index(random), 10 + i % 3};
        expected.insert(tuple);
        store(array, tuple, tuple[0]);
    }
    EXPECT_EQ(entries(array), std::vector<Tuple>(expected.begin(), expected.end()));
    for (const Tuple& tuple : expected) ASSERT_EQ(at(array, tuple), tuple[0]);
}

TEST_F(Arrays, AStaticArrayTooLargeForAGridIsStillOne) {
    Set other(types, 1, 0, true);
    Array array(types, {&growing, &other}, hostTypeReal, false);
    store(array, {1, 1}, 5);
    store(array, {1000000, 1000000}, 6);
    EXPECT_EQ(at(array, {1, 1}), 5);
    EXPECT_EQ(at(array, {1000000, 1000000}), 6);
    const int between[] = {500000, 3};
    EXPECT_TRUE(array.exists(between));
    Tuple tuple(2);
    ASSERT_TRUE(array.firstEntry(tuple.data()) && array.nextEntry(tuple.data()));
    EXPECT_EQ(tuple, (Tuple{1, 2}));
}

TEST_F(Arrays, TuplesCompareByTheirFirstDifference) {
    const struct {
        Tuple a, b;
        int sign;
    } cases[] = {{{1, 2}, {1, 2}, 0}, {{1, 2}, {1, 3}, -1}, {{2, 1}, {1, 9}, 1}, {{-5, 0}, {3, 0}, -1}};
    for (const auto& c : cases) EXPECT_EQ(compareTuples(2, c.a.data(), c.b.data()), c.sign);
}

}  // namespace
}  // namespace refhost
