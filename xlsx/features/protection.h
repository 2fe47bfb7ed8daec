// What the users of a sheet may change.
#pragma once
#include <optional>
#include <string_view>

namespace vellum::xlsx {

template <class Worksheet>
bool isProtected(const Worksheet& worksheet);

/// An empty password takes the one that there is away, none leaves it. `options` below 0 leave what is allowed.
template <class Worksheet>
void setProtected(Worksheet& worksheet, bool enable, std::optional<std::wstring_view> password, int options);

}  // namespace vellum::xlsx
