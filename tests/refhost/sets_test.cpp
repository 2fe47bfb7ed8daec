#include "refhost/values/set.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace refhost {
namespace {

HostValue integer(int value) {
    HostValue slot{};
    slot.integer = value;
    return slot;
}
HostValue real(double value) {
    HostValue slot{};
    slot.real = value;
    return slot;
}
HostValue text(const char* value) {
    HostValue slot{};
    slot.text = value;
    return slot;
}

TEST(ExplicitSet, PositionsFollowTheOrderOfComing) {
    const TypeRegistry types;
    Set set(types, hostTypeText, true);
    char buffer[8] = "pear";
    EXPECT_EQ(set.add(text(buffer)), 1);
    buffer[0] = 'b';  // the set has a copy
    EXPECT_EQ(set.add(text("apple")), 2);
    EXPECT_EQ(set.add(text("pear")), 1);
    EXPECT_EQ(set.add(text(nullptr)), 3);
    EXPECT_EQ(set.find(text("")), 3);
    EXPECT_EQ(set.find(text("Apple")), std::nullopt);
    EXPECT_STREQ(set.element(1).text, "pear");
    EXPECT_EQ(set.first(), 1);
    EXPECT_EQ(set.last(), 3);
}

TEST(ExplicitSet, KeepsManyElementsApart) {
    const TypeRegistry types;
    Set set(types, hostTypeInteger, true);
    for (int i = 0; i < 5000; ++i) ASSERT_EQ(set.add(integer(i * 7 - 9000)), i + 1);
    for (int i = 0; i < 5000; ++i) ASSERT_EQ(set.find(integer(i * 7 - 9000)), i + 1);
    EXPECT_EQ(set.find(integer(1)), std::nullopt);
}

TEST(ExplicitSet, RealsThatAreOneValueAreOneElement) {
    const TypeRegistry types;
    Set set(types, hostTypeReal, true);
    EXPECT_EQ(set.add(real(0.0)), 1);
    EXPECT_EQ(set.add(real(-0.0)), 1);
    EXPECT_EQ(set.add(real(std::nan("1"))), 2);
    EXPECT_EQ(set.add(real(-std::nan("2"))), 2);
}

TEST(ExplicitSet, ObjectsAreFoundByValueAcrossAliases) {
    TypeRegistry types;
    const HostType day = types.addAlias("Day", typeDate);
    Set set(types, day, true);
    DateObject date(day), sameDate(typeDate);
    date.date = sameDate.date = *parseDate("2024-02-29");
    HostValue slot{};
    slot.object = &date;
    EXPECT_EQ(set.add(slot), 1);
    slot.object = &sameDate;
    EXPECT_EQ(set.find(slot), 1);
    EXPECT_EQ(static_cast<const Object*>(set.element(1).object)->type, day);
    UnionObject other(hostTypeAny);
    slot.object = &other;
    EXPECT_EQ(set.add(slot), std::nullopt) << "an object of another kind";
}

TEST(Set, StaticAndFinishedSetsTakeNothingNew) {
    const TypeRegistry types;
    Set fixed(types, hostTypeInteger, false);
    EXPECT_EQ(fixed.addInitial(integer(4)), 1);
    EXPECT_EQ(fixed.add(integer(4)), 1);
    EXPECT_EQ(fixed.add(integer(5)), std::nullopt);
    Set growing(types, hostTypeInteger, true);
    EXPECT_EQ(growing.flags(), hostTypeInteger | hostFlagDynamic | hostFlagExplicit);
    growing.finish();
    EXPECT_EQ(growing.flags(), hostTypeInteger | hostFlagExplicit);
    EXPECT_EQ(growing.add(integer(1)), std::nullopt);
}

TEST(RangeSet, IndexIsTheIntegerItself) {
    const TypeRegistry types;
    Set years(types, 2020, 2024, false);
    EXPECT_EQ(years.flags(), HostType{hostTypeInteger});
    EXPECT_EQ(years.size(), 5);
    EXPECT_EQ(years.find(integer(2024)), 2024);
    EXPECT_EQ(years.add(integer(2025)), std::nullopt);
    EXPECT_EQ(years.element(2021).integer, 2021);
}

TEST(RangeSet, DynamicOneReachesToWhatIsAdded) {
    const TypeRegistry types;
    Set range(types, 1, 0, true);
    EXPECT_EQ(range.size(), 0);
    EXPECT_EQ(range.add(integer(10)), 10);
    EXPECT_EQ(range.add(integer(7)), 7);
    EXPECT_TRUE(range.extendTo(12));
    EXPECT_EQ(range.first(), 7);
    EXPECT_EQ(range.last(), 12);
    EXPECT_EQ(range.add(integer(std::numeric_limits<int>::min())), std::nullopt) << "longer than an int counts";
}

}  // namespace
}  // namespace refhost
