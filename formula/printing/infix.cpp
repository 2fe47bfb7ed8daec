#include "formula/printing/infix.h"

#include "engine/facts/r1c1.h"
#include "engine/failure/vlerror.h"
#include "formula/function_table.h"
#include "formula/function_word.h"
#include "formula/messages.h"
#include "formula/operators.h"
#include "formula/postfix_words.h"

namespace vellum::formula {

using namespace std::string_view_literals;
namespace {

constexpr std::size_t maxText = 32767;  // characters of a text at the interface

}  // namespace

InfixBuilder::Node InfixBuilder::classify(std::wstring_view word) {
    if (word == L"uMinus"sv) return {word, 0, 1, Shape::minus};
    if (word == L"uPlus"sv) return {word, 0, 1, Shape::plus};
    if (word == L"uPercent"sv) return {word, 0, 1, Shape::percent};
    if (word == L"ptgRange"sv) return {word, 0, 2, Shape::range};
    if (word == L"("sv) return {word, 0, 1, Shape::paren};
    if (isBinaryOperator(word)) return {word, 0, 2, Shape::binary};
    if (const auto call = parseFunctionWord(word)) {
        const bool user = call->name == userDefinedName && call->count > 0;
        return {call->name, 0, call->count, user ? Shape::userCall : Shape::function};
    }
    return {word, 0, 0, Shape::operand};
}

const char* InfixBuilder::shortStackText(Shape shape) {
    switch (shape) {
        case Shape::minus:
            return msg::unaryMinus;
        case Shape::plus:
            return msg::unaryPlus;
        case Shape::percent:
            return msg::percent;
        case Shape::range:
            return msg::range;
        case Shape::binary:
            return msg::twoOperands;
        case Shape::paren:
            return msg::brackets;
        default:
            return msg::functionExpression;
    }
}

void InfixBuilder::parse(std::wstring_view postfix) {
    _nodes.clear();
    std::uint32_t values = 0;
    for (std::wstring_view word = takeWord(postfix); !word.empty(); word = takeWord(postfix)) {
        Node node = classify(word);
        if (node.operands > values) throw vlerror(shortStackText(node.shape));
        node.first = static_cast<std::uint32_t>(_nodes.size());
        for (std::uint32_t i = 0; i < node.operands; ++i) node.first = _nodes[node.first - 1].first;
        values = values - node.operands + 1;
        _nodes.push_back(node);
    }
    if (values != 1) throw vlerror(msg::noInfix);
}

// The operands of a node from the last to the first, which is the order of a stack. `skipFirst` stay out.
void InfixBuilder::pushOperands(const Node& node, std::uint32_t index, std::wstring_view separator,
                                std::uint32_t skipFirst) {
    std::uint32_t operand = index - 1;
    for (std::uint32_t i = node.operands; i > skipFirst; --i) {
        if (i < node.operands) push(separator);
        _pending.push_back({operand, {}});
        operand = _nodes[operand].first - 1;
    }
    if (skipFirst == 0) return;
    push(L"(");
    _pending.push_back({operand, {}});
}

void InfixBuilder::writeNode(std::uint32_t index, std::wstring_view separator) {
    const Node& node = _nodes[index];
    switch (node.shape) {
        case Shape::operand:
            if (!_r1c1 || !appendR1C1(_text, node.word, _origin.row, _origin.col)) _text += node.word;
            return;
        case Shape::minus:
        case Shape::plus:
            _text += node.shape == Shape::minus ? L'-' : L'+';
            return pushOperands(node, index, {}, 0);
        case Shape::percent:
            push(L"%");
            return pushOperands(node, index, {}, 0);
        case Shape::paren:
            _text += L'(';
            push(L")");
            return pushOperands(node, index, {}, 0);
        case Shape::range:
            return pushOperands(node, index, L":", 0);
        case Shape::binary:
            return pushOperands(node, index, node.word, 0);
        case Shape::function:
            _text += node.word;
            _text += L'(';
            push(L")");
            return pushOperands(node, index, separator, 0);
        case Shape::userCall:
            push(L")");
            return pushOperands(node, index, separator, 1);
    }
}

const std::wstring& InfixBuilder::toInfix(std::wstring_view postfix, const FormulaContext& book, TextOrigin origin) {
    parse(postfix);
    _text.clear();
    _pending.clear();
    _origin = origin;
    _r1c1 = book.usesR1C1Text();
    const wchar_t separator = book.argumentSeparator();
    _pending.push_back({static_cast<std::uint32_t>(_nodes.size() - 1), {}});
    while (!_pending.empty()) {
        const Pending next = _pending.back();
        _pending.pop_back();
        if (next.node == Pending::textOnly) {
            _text += next.text;
        } else {
            writeNode(next.node, {&separator, 1});
        }
    }
    if (_text.size() > maxText) throw vlerror(msg::stringTooLong);
    return _text;
}

}  // namespace vellum::formula
