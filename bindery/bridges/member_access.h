// Access to the members of a bound object.
#pragma once
#include <cstddef>

#include "bindery/bridges/bridges.h"
#include "bindery/classes/class_info.h"
#include "bindery/classes/raw_node.h"
#include "bindery/values/holders.h"

namespace bindery {

// From an object and its tables to its members.

inline void* holderOf(c_node& object, const MemberInfo& member) {
    return reinterpret_cast<std::byte*>(&object) + member.offset;
}
inline const void* holderOf(const c_node& object, const MemberInfo& member) {
    return reinterpret_cast<const std::byte*>(&object) + member.offset;
}

inline ct_choice& choiceOf(c_node& object, const ClassInfo& info) {
    return *reinterpret_cast<ct_choice*>(reinterpret_cast<std::byte*>(&object) + info.choiceOffset);
}
inline const ct_choice& choiceOf(const c_node& object, const ClassInfo& info) {
    return *reinterpret_cast<const ct_choice*>(reinterpret_cast<const std::byte*>(&object) + info.choiceOffset);
}

inline bool isGroup(const MemberInfo& member) {
    return member.kind == Kind::group || member.kind == Kind::groups;
}

/// A new object for a child, raw or not.
c_node* makeChild(const MemberInfo& member);

/// How many elements, or groups, a member holds.
std::size_t countOf(const c_node& object, const MemberInfo& member);

/// Marks the mandatory values among the elements as not there, before they are read.
void markElementsMissing(c_node& object, const ClassInfo& info);

/// Whether an element can still go into the last repeat of a group, rather than begin a new one.
bool groupTakes(const c_node& group, const ClassInfo& info, std::size_t index);

}  // namespace bindery
