// How many arguments each call in a formula's text has.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vellum::formula {

/// Counts the arguments behind every opening parenthesis, all at once: a separator at a call's own level counts one,
/// and any other character makes one of none. So `F(1,)` has 2 and `F(,2)` has 1, one short of what it holds.
class ArgumentCounts {
public:
    void scan(std::wstring_view text);
    /// For a function whose name ends before `at`. Throws when the call has no parenthesis of its own there, or it is
    /// never closed.
    [[nodiscard]] std::uint32_t behind(std::size_t at) const;

private:
    static constexpr std::int32_t neverClosed = -1;
    std::wstring_view _text;
    std::vector<std::int32_t> _counts;  // by the place of the parenthesis
    struct Open {
        std::size_t place;
        std::int32_t count;
    };
    std::vector<Open> _open;
};

}  // namespace vellum::formula
