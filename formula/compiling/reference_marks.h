// Marking the cells that a function wants as references.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vellum::formula {

/// Appends `R` to each single cell that stands as an argument of a function which takes a reference there, so that
/// compiling makes a token of the reference class of it.
class ReferenceMarker {
public:
    /// Lives until the next call.
    const std::wstring& mark(std::wstring_view text);

private:
    struct Call {
        std::uint32_t mask;
        std::uint32_t argument = 0;
        std::uint32_t nested = 0;  // parentheses open within the call
        bool waiting = true;       // for its own parenthesis
    };
    void append(std::wstring_view word, std::wstring_view rest);

    std::vector<Call> _calls;
    std::wstring _text;
};

}  // namespace vellum::formula
