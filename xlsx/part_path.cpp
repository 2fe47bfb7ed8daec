#include "xlsx/part_path.h"

#include <algorithm>

namespace vellum {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
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
