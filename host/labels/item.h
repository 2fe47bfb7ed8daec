// One item of a statement: its label, its type and its value slot, and the range that the label names.
#pragma once
#include "host/interface/observer.h"
#include "host/labels/range_spec.h"
#include "host/sources/driver_context.h"

namespace quillet {

/// What an item is read into or written from, and the range that goes with it. Not to be moved: the range points to
/// the special values beside it.
struct Item {
    HostContext* context;
    HostType type;               // the item's type word
    const HostType* fieldTable;  // the statement's types
    void* object;                // what the value slot points to: the scalar, set, list or array; may be null
    RangeSpec range = {};
    SpecialValues specialValues = {};
};

/// Parses the options and the range of a label, which may be null. Options of the label count for this item alone;
/// `rangesize;` is known on a read only. 0, or 1 after one or more messages.
int openItem(Item& item, DriverContext* source, const char* label, ItemUse use);

/// What an item is, by the class of its type word.
enum class ItemForm { scalar, set, list, array, unknown };
ItemForm itemForm(HostType type);

}  // namespace quillet
