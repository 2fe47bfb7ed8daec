// Alternatives that a part offers to readers of different ages.
#pragma once
#include "bindery/classes/raw_node.h"

namespace vellum::xlsx {

/// How deep kept subtrees are followed; real files reach 4.
inline constexpr int deepestNesting = 64;

/// Of an AlternateContent the first choice, its fallback when it has no choice. Null for any other element.
inline const bindery::c_raw_node* chosenBranch(const bindery::c_raw_node& node) {
    if (node.localName() != "AlternateContent") return nullptr;
    const bindery::c_raw_node* const choice = node.child("Choice");
    return choice ? choice : node.child("Fallback");
}

}  // namespace vellum::xlsx
