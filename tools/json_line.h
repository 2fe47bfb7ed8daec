// Flat JSON, as the check tools take it: {"op":"addMerge","sheet":0,"args":[0,1,"text",true,null]}.
#pragma once
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tools {

using Scalar = std::variant<std::monostate, bool, double, std::string>;
using Scalars = std::vector<Scalar>;

/// The members of one object. A scalar is a list of one; what is deeper, or no JSON, is thrown as runtime_error.
std::map<std::string, Scalars> readJsonLine(std::string_view line);

/// With its quotes.
std::string jsonText(std::string_view utf8);

}  // namespace tools
