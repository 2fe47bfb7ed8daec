// The hash of texts that come from files.
#pragma once
#include <cstddef>
#include <string_view>

namespace vellum {

/// A hash under a key that each process draws anew: a file cannot hold texts that are made to collide in it, which
/// would turn a table into a list. The same text has the same hash as long as the process runs.
std::size_t textHash(std::wstring_view text);
std::size_t textHash(std::string_view text);

/// The same for tables that are searched by views.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const { return textHash(text); }
    std::size_t operator()(std::string_view text) const { return textHash(text); }
};

}  // namespace vellum
