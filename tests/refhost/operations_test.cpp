// Operations as the module calls them, where they do more than ask a container.
#include <gtest/gtest.h>

#include <string>

#include "refhost/operations/host.h"
#include "refhost/operations/statement.h"
#include "refhost/values/array.h"
#include "refhost/values/list.h"

namespace refhost {
namespace {

struct Operations : testing::Test {
    Host host{"/"};
    HostContext* context = host.context(1).handle();
    const HostApi& api = hostApiTable();
    HostType day = host.types.addAlias("Day", typeDate);
    HostType point = host.types.addRecord("Point", {{"x", hostTypeReal}, {"name", hostTypeText}});
    HostType line = host.types.addRecord("Line", {{"from", point}, {"at", typeDate}, {"note", hostTypeAny}});

    HostArray* handle(Array& array) { return reinterpret_cast<HostArray*>(&array); }
    HostList* handle(List& list) { return reinterpret_cast<HostList*>(&list); }
    std::string text(HostType type, HostValue value) {
        char buffer[64];
        return api.hostValueToText(context, type, value, buffer, sizeof buffer) < 0 ? "(none)" : buffer;
    }
    static HostValue object(void* pointer) {
        HostValue value{};
        value.object = pointer;
        return value;
    }
};

TEST_F(Operations, EveryOneIsThere) {
    const auto* pointers = reinterpret_cast<void* const*>(&api);
    for (std::size_t i = 0; i < sizeof api / sizeof(void*); ++i) EXPECT_NE(pointers[i], nullptr) << "operation " << i;
}

TEST_F(Operations, TypeWords) {
    constexpr std::uint32_t none = 0xffffffff;
    const struct {
        HostType type;
        std::uint32_t classWord, capability;
    } cases[] = {
        {hostTypeAny, hostClassUnion, hostTextCapable},
        {hostTypeReal, 0, hostTextCapable},
        {typeDate, 0, hostTextCapable},
        {day, hostClassAlias | typeDate, hostTextCapable},
        {point, hostClassRecord, none},
        {7, none, none},
        {4000, none, none},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        std::uint32_t classWord = none, capability = none;
        EXPECT_EQ(api.hostTypeInfo(context, c.type, hostInfoClass, &classWord), c.classWord == none);
        EXPECT_EQ(api.hostTypeInfo(context, c.type, hostInfoCapability, &capability), c.capability == none);
        EXPECT_EQ(classWord, c.classWord);
        EXPECT_EQ(capability, c.capability);
    }
    EXPECT_EQ(host.types.addAlias("Count", hostTypeInteger), HostType{hostTypeInteger});
}

TEST_F(Operations, FieldListsOfNestedRecords) {
    const HostType items[] = {hostClassList | line, hostTypeReal, point};
    const TypeWords words(host.types, items);
    const auto field = [](HostType type, int index, int place) {
        return type | HostType(index) << 12 | HostType(place) << 22;
    };
    const std::vector<HostType> expected = {
        hostClassList | field(line, 0, 6),
        hostTypeReal,
        field(point, 0, 3),
        2,
        field(hostTypeReal, 0, 0),
        field(hostTypeText, 1, 0),  // Point, at 3
        3,
        field(point, 0, 3),
        field(typeDate, 1, 0),
        field(hostTypeAny, 2, 0),  // Line, at 6
    };
    EXPECT_EQ(words.words(), expected);
}

TEST_F(Operations, ArraysOfObjectsAreStoredThroughTheObjectOrByText) {
    Set set(host.types, 1, 3, false);
    Array unions(host.types, {&set}, hostTypeAny, true), dates(host.types, {&set}, typeDate, true);
    const int one[] = {1}, two[] = {2}, four[] = {4};
    HostValue value{};
    ASSERT_EQ(api.hostArrayStore(context, handle(unions), one, &value), 2);
    void* const element = value.object;
    ASSERT_EQ(api.hostArrayStore(context, handle(unions), one, &value), 2);
    EXPECT_EQ(value.object, element);
    EXPECT_EQ(api.hostValueFromText(context, hostTypeAny, element, "some text", 0), 0);
    EXPECT_EQ(text(hostTypeAny, value), "some text");
    EXPECT_NE(api.hostArrayStore(context, handle(unions), four, &value), 0) << "not in the set";

    EXPECT_NE(api.hostArrayStore(context, handle(dates), one, &value), 0);
    EXPECT_EQ(api.hostArrayStoreText(context, handle(dates), one, "2024-05-06"), 0);
    EXPECT_NE(api.hostArrayStoreText(context, handle(dates), two, "never"), 0);
    EXPECT_EQ(api.hostArrayCount(handle(dates)), 1) << "a refused text makes no entry";
    api.hostArrayGet(handle(dates), one, &value);
    EXPECT_EQ(text(typeDate, value), "2024-05-06");
    api.hostArrayGet(handle(dates), two, &value);
    EXPECT_EQ(value.object, nullptr);
}

TEST_F(Operations, RecordsOfAStaticArrayAreThereWhenAskedFor) {
    Set set(host.types, 1, 2, false);
    Array array(host.types, {&set}, point, false);
    const int two[] = {2};
    HostValue record{}, field{};
    api.hostArrayGet(handle(array), two, &record);
    ASSERT_NE(record.object, nullptr);
    field.real = 1.5;
    EXPECT_EQ(api.hostFieldSet(context, point, record.object, 0, field), 0);
    api.hostFieldRef(context, point, record.object, 0, &field);
    EXPECT_EQ(field.real, 1.5);
    EXPECT_NE(api.hostFieldSet(context, point, record.object, 2, field), 0) << "no such field";
}

TEST_F(Operations, UnionsHoldCopies) {
    void* any = api.hostCreateObject(context, hostTypeAny, 0);
    void* date = api.hostCreateObject(context, typeDate, 0);
    ASSERT_EQ(api.hostValueFromText(context, typeDate, date, "2024-01-02", 0), 0);
    HostValue value{};
    EXPECT_EQ(api.hostUnionGet(context, any, &value), 0);
    EXPECT_EQ(api.hostUnionType(any), HostType{hostTypeAny});
    EXPECT_EQ(api.hostUnionSet(context, any, typeDate, object(date)), 0);
    api.hostDeleteObject(context, typeDate, date);
    EXPECT_EQ(api.hostUnionGet(context, any, &value), static_cast<int>(typeDate));
    EXPECT_EQ(text(api.hostUnionType(any), value), "2024-01-02");
    EXPECT_EQ(api.hostValueFromText(context, api.hostUnionType(any), any, "just text", 0), 0);
    EXPECT_EQ(api.hostUnionGet(context, any, &value), hostTypeText);
    EXPECT_EQ(api.hostUnionClear(context, any), 0);
    EXPECT_EQ(api.hostUnionGet(context, any, &value), 0);
    api.hostDeleteObject(context, hostTypeAny, any);
    EXPECT_TRUE(host.counts.balanced());
}

TEST_F(Operations, ListsWalkInOrderWithTheItemsTypes) {
    Set set(host.types, 1, 2, false);
    Array array(host.types, {&set}, hostTypeReal, true);
    List list(host.types, hostClassUnion, true), integers(host.types, hostTypeInteger, true);
    HostValue value{};
    value.integer = 4;
    EXPECT_EQ(api.hostListAppend(context, handle(list), hostTypeInteger, value, 0), 0);
    ASSERT_TRUE(list.append(hostClassArray | array.flags(), object(&array)));
    EXPECT_EQ(api.hostListElemType(handle(list)), hostClassUnion | hostFlagDynamic);
    HostType type = 99;
    void* item = api.hostListNext(handle(list), nullptr, &type, &value);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(type, HostType{hostTypeAny});
    EXPECT_EQ(text(type, value), "4");
    item = api.hostListNext(handle(list), item, &type, &value);
    EXPECT_EQ(type, hostClassArray | hostTypeReal);
    EXPECT_EQ(value.object, &array);
    EXPECT_EQ(api.hostListNext(handle(list), item, &type, &value), nullptr);
    EXPECT_EQ(api.hostListNext(handle(integers), nullptr, &type, &value), nullptr);
    EXPECT_NE(api.hostListAppend(context, handle(integers), hostTypeReal, value, 0), 0);
}

TEST_F(Operations, TextsAreCutAtTheBufferAndTheirLengthTold) {
    HostValue value{};
    value.text = "a long text";
    char buffer[5] = "????";
    EXPECT_EQ(api.hostValueToText(context, hostTypeText, value, buffer, 5), 11);
    EXPECT_STREQ(buffer, "a lo");
}

TEST_F(Operations, TheNthCallFails) {
    host.faults.createObject = 2;
    void* first = api.hostCreateObject(context, typeDate, 0);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(api.hostCreateObject(context, typeDate, 0), nullptr);
    void* third = api.hostCreateObject(context, typeDate, 0);
    EXPECT_NE(third, nullptr);
    EXPECT_FALSE(host.counts.balanced());
    for (void* made : {first, third}) api.hostDeleteObject(context, typeDate, made);
    EXPECT_TRUE(host.counts.balanced());
}

}  // namespace
}  // namespace refhost
