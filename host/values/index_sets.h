// Index sets of arrays: their bounds, what they take, and index values between cells and sets.
//
// A slot of an index tuple is the integer itself for a range set, and the position from 1 for any other set.
#pragma once
#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"

namespace quillet {

/// First and last slot of a set; the last is below the first in an empty set.
int firstIndex(HostSet* set);
int lastIndex(HostSet* set);

/// Whether the set is a range of integers.
bool isIntegerRange(HostSet* set);

/// The index after `index`; wraps at the end of the integers, where no range goes on.
constexpr int nextInteger(int index) {
    return int(unsigned(index) + 1u);
}

/// Which sets can be indices, beside those of base types.
enum class IndexRule {
    reading,       // aliases
    readingLists,  // aliases that convert to and from text
    writing        // all types that convert to and from text
};

/// The type of the values of a set, as readIndex takes it: a base type; for an alias its number shifted left by 12
/// over its base type; 0 for a set that the rule does not admit.
HostType indexType(HostContext* context, HostSet* set, IndexRule rule);

/// indexType of the first `count` sets. 0, or 1 after the message on a set that the rule does not admit.
int indexTypes(HostContext* context, HostSet* const* sets, int count, IndexRule rule, HostType* types);

/// Finds or adds a value in its set. For types that no slot holds, `*value` is the text of the value. 0 or failure,
/// without a message.
int indexFromValue(HostContext* context, HostSet* set, HostType type, HostValue* value, int* position);

/// Reads the first `count` used columns of a row as an index tuple. 0, or 1 after a message.
int readIndexColumns(HostContext* context, RangeSpec& range, HostSet* const* sets, const HostType* types, int count,
                     int row, int* tuple);

/// Writes an index tuple to the first `count` used columns of a row. 0, or 1 after a message.
int writeIndexColumns(HostContext* context, RangeSpec& range, HostSet* const* sets, const HostType* types, int count,
                      int row, const int* tuple);

/// The bracket that the host wants around walks of index sets with hostSetElement, over all sets but the first.
class IndexWalk {
public:
    IndexWalk(HostContext* context, HostSet* const* sets, int count);
    ~IndexWalk();
    IndexWalk(const IndexWalk&) = delete;
    IndexWalk& operator=(const IndexWalk&) = delete;

private:
    HostContext* _context;
    HostSet* const* _sets;
    int _count;
};

}  // namespace quillet
