#include "cli/diff/json_members.h"

namespace cli {
namespace {

/// The end of a value: the comma or bracket behind it.
std::size_t valueEnd(std::string_view text, std::size_t at) {
    int depth = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '"') {
            for (++at; at < text.size() && text[at] != '"'; ++at) at += text[at] == '\\';
        } else if (c == '[' || c == '{') {
            ++depth;
        } else if (c == ']' || c == '}') {
            if (depth-- == 0) return at;
        } else if (c == ',' && depth == 0) {
            return at;
        }
    }
    return at;
}

}  // namespace

std::vector<std::string> jsonElements(std::string_view list) {
    std::vector<std::string> elements;
    for (std::size_t at = 1; at < list.size() && list[at] != ']';) {
        const std::size_t end = valueEnd(list, at);
        elements.emplace_back(list.substr(at, end - at));
        at = end + 1;
        if (end >= list.size() || list[end] != ',') break;
    }
    return elements;
}

std::map<std::string, std::string> jsonMembers(std::string_view line) {
    std::map<std::string, std::string> members;
    std::size_t at = line.find(":{");
    if (at == line.npos) return members;
    at += 2;
    while (at < line.size() && line[at] == '"') {
        const std::size_t keyEnd = line.find('"', at + 1);
        const std::size_t end = valueEnd(line, keyEnd + 2);
        members.emplace(line.substr(at + 1, keyEnd - at - 1), line.substr(keyEnd + 2, end - keyEnd - 2));
        if (end >= line.size() || line[end] != ',') break;
        at = end + 1;
    }
    return members;
}

}  // namespace cli
