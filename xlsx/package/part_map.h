// The parts of a package by their paths.
#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "xlsx/package/part_path.h"
#include "xlsx/package/xfile.h"

namespace vellum::xlsx {

/// Parts in the order of their paths; a part may be null. Paths of two parts may differ in case alone.
class PartMap {
    using Parts = std::map<std::string, std::unique_ptr<XFile>, std::less<>>;

public:
    using iterator = Parts::iterator;
    using const_iterator = Parts::const_iterator;

    [[nodiscard]] iterator begin() { return _parts.begin(); }
    [[nodiscard]] iterator end() { return _parts.end(); }
    [[nodiscard]] const_iterator begin() const { return _parts.begin(); }
    [[nodiscard]] const_iterator end() const { return _parts.end(); }

    [[nodiscard]] iterator find(std::string_view path) { return _parts.find(path); }
    [[nodiscard]] const_iterator find(std::string_view path) const { return _parts.find(path); }
    /// The first of the paths that differ from this one in case at most.
    [[nodiscard]] iterator findIgnoringCase(std::string_view path);

    /// In the place of an older part of that path.
    void insert_or_assign(const std::string& path, std::unique_ptr<XFile> part);
    iterator erase(iterator part);
    void erase(const std::string& path);
    void clear();

private:
    Parts _parts;
    std::multimap<std::string_view, iterator, LessIgnoringCase> _inAnyCase;  // by the paths that _parts holds
};

}  // namespace vellum::xlsx
