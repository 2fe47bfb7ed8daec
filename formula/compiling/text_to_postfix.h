// From the text of a formula to postfix text.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formula/compiling/argument_counts.h"
#include "formula/compiling/reference_marks.h"

namespace vellum::formula {

/// Cleans a text, marks the cells that functions want as references, and brings it into postfix order by precedence.
/// Both ',' and ';' separate arguments. Its buffers are reused from call to call.
class PostfixMaker {
public:
    /// Lives until the next call. The text is cleaned in place. Parentheses that no function needs are not checked:
    /// one that stays open comes out at the end.
    const std::wstring& textToPostfix(std::wstring& text);

private:
    /// An operator, parenthesis or function that waits for its operands.
    struct Waiting {
        std::wstring_view word;
        std::uint32_t arguments;  // of a function
        std::int8_t precedence;   // -1: a function
    };

    void convert(std::wstring_view text);
    void write(std::wstring_view word);
    void writeTop();
    void pushFunction(std::wstring_view name, std::size_t end);
    void pushOperator(std::wstring_view word, int precedence, bool separator);
    void openParenthesis();
    void closeParenthesis();
    void operand(std::wstring_view word);
    [[nodiscard]] bool topIsFunction() const { return !_waiting.empty() && _waiting.back().precedence < 0; }

    ReferenceMarker _marker;
    ArgumentCounts _counts;
    std::wstring _postfix;
    std::vector<Waiting> _waiting;
    std::vector<bool> _written;  // for each open parenthesis: it stands in the text for itself
    std::size_t _operands = 0;   // since the last operator
    bool _functionParenthesis = false;
};

}  // namespace vellum::formula
