// From postfix text to the text of a formula as people write it.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formula/formula_context.h"

namespace vellum::formula {

/// Builds the text in one pass over the words and one over the tree that they make, so that deep nesting costs no
/// more than its length. Its buffers are reused from call to call.
class InfixBuilder {
public:
    /// Lives until the next call. Throws the texts of "toInfix error: ...", and "can't build infix formula string".
    const std::wstring& toInfix(std::wstring_view postfix, const FormulaContext& book, TextOrigin origin);

private:
    enum class Shape : std::uint8_t { operand, minus, plus, percent, range, binary, paren, function, userCall };
    struct Node {
        std::wstring_view word;  // of a function: its name
        std::uint32_t first;     // of the nodes that belong to it, itself the last
        std::uint32_t operands;
        Shape shape;
    };
    /// What is still to be written: a node, or a piece of text.
    struct Pending {
        static constexpr std::uint32_t textOnly = 0xFFFFFFFF;
        std::uint32_t node;
        std::wstring_view text;
    };

    static Node classify(std::wstring_view word);
    static const char* shortStackText(Shape shape);
    void parse(std::wstring_view postfix);
    void writeNode(std::uint32_t index, std::wstring_view separator);
    void pushOperands(const Node& node, std::uint32_t index, std::wstring_view separator, std::uint32_t skipFirst);
    void push(std::wstring_view text) { _pending.push_back({Pending::textOnly, text}); }

    std::vector<Node> _nodes;
    std::vector<Pending> _pending;
    std::wstring _text;
    TextOrigin _origin;
    bool _r1c1 = false;
};

}  // namespace vellum::formula
