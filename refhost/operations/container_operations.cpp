// The host's operations on sets, arrays and lists.
#include "refhost/operations/host.h"
#include "refhost/operations/host_operations.h"
#include "refhost/values/array.h"
#include "refhost/values/list.h"
#include "refhost/values/set.h"

namespace refhost {
namespace {

Set& of(HostSet* set) {
    return *reinterpret_cast<Set*>(set);
}
Array& of(HostArray* array) {
    return *reinterpret_cast<Array*>(array);
}
List& of(HostList* list) {
    return *reinterpret_cast<List*>(list);
}
Host& hostOf(HostContext* context) {
    return Context::of(context).host;
}

int hostSetSize(HostSet* set) {
    return of(set).size();
}
HostType hostSetFlags(HostSet* set) {
    return of(set).flags();
}
int hostRangeFirst(HostSet* set) {
    return of(set).first();
}
int hostRangeLast(HostSet* set) {
    return of(set).last();
}
int hostSetContains(HostContext*, HostSet* set, HostValue value) {
    return of(set).find(value).has_value();
}

int hostSetFind(HostContext*, HostSet* set, HostValue value) {
    const auto index = of(set).find(value);
    return index ? *index - of(set).first() + 1 : 0;
}

int hostSetAdd(HostContext* context, HostSet* set, HostValue value, int* position) {
    if (hostOf(context).faults.setAdd.hits()) return 1;
    const auto index = of(set).add(value);
    if (!index) return 1;
    if (position) *position = *index;
    return 0;
}

void hostSetElement(HostContext*, HostSet* set, int index, HostValue* value) {
    *value = of(set).element(index);
}

void hostSetOpenWalk(HostContext* context, HostSet* set) {
    ++hostOf(context).counts.walkOpens;
    ++of(set).openWalks;
}

void hostSetCloseWalk(HostContext* context, HostSet* set) {
    ++hostOf(context).counts.walkCloses;
    --of(set).openWalks;
}

void hostSetFinish(HostContext* context, HostSet* set) {
    ++hostOf(context).counts.setsFinished;
    of(set).finish();
}

int hostArrayDims(HostArray* array) {
    return of(array).dims();
}

void hostArraySets(HostArray* array, HostSet** sets) {
    for (Set* set : of(array).sets()) *sets++ = reinterpret_cast<HostSet*>(set);
}

HostType hostArrayElemType(HostArray* array) {
    return of(array).flags();
}
int hostArrayCount(HostArray* array) {
    return of(array).count();
}
int hostArrayFirstTuple(HostArray* array, int* indices) {
    return !of(array).firstTuple(indices);
}
int hostArrayNextTuple(HostArray* array, int* indices) {
    return !of(array).nextTuple(indices);
}
int hostArrayFirstEntry(HostArray* array, int* indices) {
    return !of(array).firstEntry(indices);
}
int hostArrayNextEntry(HostArray* array, int* indices) {
    return !of(array).nextEntry(indices);
}
void hostArrayGet(HostArray* array, const int* indices, HostValue* value) {
    *value = of(array).get(indices);
}
int hostArrayExists(HostArray* array, const int* indices) {
    return of(array).exists(indices);
}

int hostArrayStore(HostContext* context, HostArray* handle, const int* indices, HostValue* value) {
    Host& host = hostOf(context);
    Array& array = of(handle);
    if (host.faults.arrayStore.hits()) return 1;
    if (isBaseType(array.elementType())) {
        HostValue* slot = array.slot(indices);
        if (slot) *slot = *value;
        return slot ? 0 : 1;
    }
    const TypeInfo* type = host.types.resolved(array.elementType());
    if (!type || type->classWord == 0) return 1;  // a date takes text
    const HostValue* slot = array.slot(indices);
    if (!slot) return 1;
    value->object = slot->object;
    return 2;
}

int hostArrayStoreText(HostContext* context, HostArray* handle, const int* indices, const char* text) {
    Host& host = hostOf(context);
    Array& array = of(handle);
    if (host.faults.arrayStore.hits()) return 1;
    ObjectPtr object = createObject(host.types, array.elementType());
    if (!object || !objectFromText(Context::of(context), *object, text)) return 1;  // before an entry is made for it
    HostValue* slot = array.slot(indices);
    if (!slot) return 1;
    delete static_cast<Object*>(slot->object);
    slot->object = object.release();
    return 0;
}

int hostTupleCompare(int dims, const int* a, const int* b) {
    return compareTuples(static_cast<std::size_t>(dims), a, b);
}

int hostArrayBegin(HostContext* context, HostArray*) {
    Host& host = hostOf(context);
    if (host.faults.arrayBegin.hits()) return 1;
    ++host.counts.arrayBegins;
    return 0;
}

int hostArrayEnd(HostContext* context, HostArray*, int status) {
    Host& host = hostOf(context);
    ++host.counts.arrayEnds;
    return status != 0 ? status : host.faults.arrayEndStatus.load();
}

int hostListLength(HostList* list) {
    return static_cast<int>(of(list).items().size());
}
HostType hostListElemType(HostList* list) {
    return of(list).elementWord();
}

// The handle of an item is its address.
void* hostListNext(HostList* list, void* previous, HostType* type, HostValue* value) {
    const auto& items = of(list).items();
    const ListItem* next = previous ? static_cast<const ListItem*>(previous) + 1 : items.data();
    if (next == items.data() + items.size()) return nullptr;
    *type = next->type;
    *value = next->value;
    return const_cast<ListItem*>(next);
}

int hostListAppend(HostContext* context, HostList* list, HostType type, HostValue value, int) {
    if (hostOf(context).faults.listAppend.hits()) return 1;
    return of(list).append(type, value) ? 0 : 1;
}

}  // namespace

void fillContainerOperations(HostApi& api) {
    api.hostSetSize = hostSetSize;
    api.hostSetFlags = hostSetFlags;
    api.hostRangeFirst = hostRangeFirst;
    api.hostRangeLast = hostRangeLast;
    api.hostSetContains = hostSetContains;
    api.hostSetFind = hostSetFind;
    api.hostSetAdd = hostSetAdd;
    api.hostSetElement = hostSetElement;
    api.hostSetOpenWalk = hostSetOpenWalk;
    api.hostSetCloseWalk = hostSetCloseWalk;
    api.hostSetFinish = hostSetFinish;
    api.hostArrayDims = hostArrayDims;
    api.hostArraySets = hostArraySets;
    api.hostArrayElemType = hostArrayElemType;
    api.hostArrayCount = hostArrayCount;
    api.hostArrayFirstTuple = hostArrayFirstTuple;
    api.hostArrayNextTuple = hostArrayNextTuple;
    api.hostArrayFirstEntry = hostArrayFirstEntry;
    api.hostArrayNextEntry = hostArrayNextEntry;
    api.hostArrayGet = hostArrayGet;
    api.hostArrayExists = hostArrayExists;
    api.hostArrayStore = hostArrayStore;
    api.hostArrayStoreText = hostArrayStoreText;
    api.hostTupleCompare = hostTupleCompare;
    api.hostArrayBegin = hostArrayBegin;
    api.hostArrayEnd = hostArrayEnd;
    api.hostListLength = hostListLength;
    api.hostListElemType = hostListElemType;
    api.hostListNext = hostListNext;
    api.hostListAppend = hostListAppend;
}

const HostApi& hostApiTable() {
    static const HostApi table = [] {
        HostApi api{};
        fillValueOperations(api);
        fillContainerOperations(api);
        return api;
    }();
    return table;
}

}  // namespace refhost
