#include "xlsx/parts/sheet_parts.h"

#include <algorithm>

#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"

namespace vellum::xlsx {

std::string partOfTarget(std::string_view owner, std::string_view target, PackageContext& package) {
    if (target.starts_with('/')) return std::string(target);
    if (target.starts_with("../")) {
        std::string path = "/xl" + std::string(target.substr(2));
        if (package.findPart(path)) return path;
    }
    return absoluteTarget(folderOf(owner), target);
}

std::string relativeTarget(std::string_view owner, std::string_view part) {
    const std::string folder = folderOf(owner) + "/";
    std::size_t common = 0;  // behind the last "/" that both have
    for (std::size_t i = 0; i < std::min(folder.size(), part.size()) && folder[i] == part[i]; ++i) {
        if (part[i] == '/') common = i + 1;
    }
    std::string target;
    for (std::size_t i = common; i < folder.size(); ++i) {
        if (folder[i] == '/') target += "../";
    }
    return target.append(part.substr(common));
}

std::string firstPartOfEnding(std::string_view owner, std::string_view ending, PackageContext& package) {
    const Relationships* const relationships = package.findRelationshipsOf(owner);
    if (!relationships) return {};
    const auto targets = relationships->targetsOfEnding(ending);
    return targets.empty() ? std::string() : partOfTarget(owner, targets[0], package);
}

}  // namespace vellum::xlsx
