// What a sheet's relationships lead to.
#pragma once
#include <string>
#include <string_view>

#include "xlsx/package/package_context.h"

namespace vellum::xlsx {

/// The part that a target of another part's relationships means. One level up is taken for the package's main folder,
/// as producers lay parts out; where no such part is there, the target is read as the format has it.
std::string partOfTarget(std::string_view owner, std::string_view target, PackageContext& package);

/// The target that leads from a part to another one.
std::string relativeTarget(std::string_view owner, std::string_view part);

/// The first of the owner's relationships with this ending of its type, in either dialect, as a part; "" for none.
std::string firstPartOfEnding(std::string_view owner, std::string_view ending, PackageContext& package);

}  // namespace vellum::xlsx
