#include "xlsx/package/part_path.h"

#include <algorithm>

namespace vellum {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    return lower(c) >= 'a' && lower(c) <= 'f' ? lower(c) - 'a' + 10 : -1;
}

std::string withoutEscapes(std::string_view target) {
    std::string text;
    for (std::size_t i = 0; i < target.size(); ++i) {
        const bool isEscape =
            target[i] == '%' && i + 2 < target.size() && hexDigit(target[i + 1]) >= 0 && hexDigit(target[i + 2]) >= 0;
        text += isEscape ? static_cast<char>(hexDigit(target[i + 1]) * 16 + hexDigit(target[i + 2])) : target[i];
        if (isEscape) i += 2;
    }
    return text;
}

}  // namespace

std::string partPath(std::string_view entryName) {
    std::string path(entryName);
    std::replace(path.begin(), path.end(), '\\', '/');
    if (path.empty() || path[0] != '/') path.insert(path.begin(), '/');
    return path;
}

std::string folderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return std::string(path.substr(0, slash == std::string_view::npos ? 0 : slash));
}

std::string relsPathOf(std::string_view path) {
    const std::string folder = folderOf(path);
    const std::string_view name = path.substr(std::min(path.size(), folder.size() + 1));
    return folder + "/_rels/" + std::string(name) + ".rels";
}

std::string absoluteTarget(std::string_view folder, std::string_view target) {
    const std::string prefix = std::string(folder) + "/";
    if (target.starts_with(prefix)) return std::string(target);
    if (target.starts_with("./")) target.remove_prefix(2);
    std::string base(folder);
    while (target.starts_with("../")) {
        target.remove_prefix(3);
        base = folderOf(base);
    }
    return base + "/" + std::string(target);
}

std::string comparablePath(std::string_view folder, std::string_view target) {
    const std::string decoded = withoutEscapes(target);
    const bool isAbsolute = decoded.starts_with('/') || decoded.starts_with('\\');
    std::string_view rest = decoded;
    std::string path;
    for (const char c : isAbsolute ? std::string_view() : folder) path += lower(c);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("/\\"), rest.size());
        const std::string_view segment = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (segment == "..") {
            path.resize(folderOf(path).size());
        } else if (!segment.empty() && segment != ".") {
            path += '/';
            for (const char c : segment) path += lower(c);
        }
    }
    return path;
}

std::string extensionOf(std::string_view path) {
    const std::size_t point = path.rfind('.');
    const std::size_t slash = path.rfind('/');
    if (point == std::string_view::npos || (slash != std::string_view::npos && slash > point)) return {};
    return std::string(path.substr(point + 1));
}

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

bool LessIgnoringCase::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

}  // namespace vellum
