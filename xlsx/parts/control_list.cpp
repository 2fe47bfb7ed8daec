#include "xlsx/parts/control_list.h"

#include "xlsx/parts/alternatives.h"

namespace vellum::xlsx {
namespace {

using bindery::c_raw_node;

std::string relationshipId(const c_raw_node& control) {
    for (const bindery::Attr& attr : control.attrs) {
        const std::size_t colon = attr.name.find(':');
        if (attr.uri.ends_with("/relationships") && attr.name.substr(colon + 1) == "id") return attr.value;
    }
    return {};
}

/// Goes on into the children that an alternative chooses; `visit` takes every other element.
template <class Visit>
void eachChosen(const c_raw_node& parent, int depth, Visit&& visit) {
    if (depth > deepestNesting) return;
    for (const auto& child : parent.children) {
        if (const c_raw_node* const branch = chosenBranch(*child)) {
            eachChosen(*branch, depth + 1, visit);
        } else {
            visit(*child);
        }
    }
}

}  // namespace

std::vector<std::string> controlIds(const c_raw_node* controls, const bindery::Extras* kept) {
    std::vector<std::string> ids;
    const auto readControls = [&](const c_raw_node& list) {
        eachChosen(list, 0, [&](const c_raw_node& node) {
            if (node.localName() == "control") ids.push_back(relationshipId(node));
        });
    };
    if (controls) readControls(*controls);
    if (!kept) return ids;
    for (const bindery::Placed& placed : kept->elements) {
        const c_raw_node* const branch = chosenBranch(placed.node);
        if (!branch) continue;
        eachChosen(*branch, 0, [&](const c_raw_node& node) {
            if (node.localName() == "controls") readControls(node);
        });
    }
    return ids;
}

}  // namespace vellum::xlsx
