// The controls that a worksheet lists.
#pragma once
#include <string>
#include <vector>

#include "bindery/classes/extras.h"
#include "bindery/classes/raw_node.h"

namespace vellum::xlsx {

/// The relationship Ids of all controls, in the order of the file. The list, and each control in it, may stand in an
/// alternative; `kept` is what the worksheet has beside the elements of its schema. A control without an Id is counted.
std::vector<std::string> controlIds(const bindery::c_raw_node* controls, const bindery::Extras* kept);

}  // namespace vellum::xlsx
