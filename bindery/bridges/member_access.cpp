#include "bindery/bridges/member_access.h"

namespace bindery {

c_node* makeChild(const MemberInfo& member) {
    if (member.kind == Kind::raw || member.kind == Kind::raws) return makeNode<c_raw_node>();
    return member.type->create();
}

std::size_t countOf(const c_node& object, const MemberInfo& member) {
    const void* holder = holderOf(object, member);
    switch (member.kind) {
        case Kind::multi:
            return multiSize(*member.spec, holder);
        case Kind::child:
        case Kind::raw:
        case Kind::group:
            return static_cast<const ct_child_base*>(holder)->isset() ? 1 : 0;
        case Kind::children:
        case Kind::raws:
        case Kind::groups:
            return static_cast<const ct_container_base*>(holder)->size();
        default:
            return isSet(member, holder) ? 1 : 0;
    }
}

void markElementsMissing(c_node& object, const ClassInfo& info) {
    if (info.content == Content::choice) return;
    for (const MemberInfo& member : info.elements)
        if (member.kind == Kind::single || member.kind == Kind::listSingle)
            markMissing(member, holderOf(object, member));
}

bool groupTakes(const c_node& group, const ClassInfo& info, std::size_t index) {
    if (info.content == Content::choice) return false;
    if (countOf(group, info.elements[index]) >= info.elements[index].maxOccurs) return false;
    for (std::size_t later = index + 1; later < info.elements.size(); ++later)
        if (countOf(group, info.elements[later]) != 0) return false;
    return true;
}

}  // namespace bindery
