// Members of JSON objects as texts.
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// The members of the object inside of {"key":{...}}, each with its value as it is written. Only for what this program
/// wrote itself.
std::map<std::string, std::string> jsonMembers(std::string_view line);

/// The elements of [...], each as it is written; none of anything else.
std::vector<std::string> jsonElements(std::string_view list);

}  // namespace cli
