#include "formula/compiling/text_to_postfix.h"

#include "engine/failure/vlerror.h"
#include "formula/error_words.h"
#include "formula/function_table.h"
#include "formula/function_word.h"
#include "formula/messages.h"
#include "formula/operators.h"
#include "formula/text_words.h"

namespace vellum::formula {

using namespace std::string_view_literals;
namespace {

// Beside those of the binary operators.
constexpr int functionPrecedence = -1, parenthesisPrecedence = 0, separatorPrecedence = 1, unaryPrecedence = 9;

}  // namespace

void PostfixMaker::write(std::wstring_view word) {
    _postfix += word;
    _postfix += L' ';
}

void PostfixMaker::writeTop() {
    const Waiting top = _waiting.back();
    _waiting.pop_back();
    if (top.precedence != functionPrecedence) return write(top.word);
    appendFunctionWord(_postfix, top.word, top.arguments);
    _postfix += L' ';
}

void PostfixMaker::operand(std::wstring_view word) {
    write(word);
    ++_operands;
}

void PostfixMaker::pushFunction(std::wstring_view name, std::size_t end) {
    _waiting.push_back({name, _counts.behind(end), functionPrecedence});
    _written.push_back(false);
    _functionParenthesis = true;
    _operands = 0;
}

void PostfixMaker::openParenthesis() {
    _waiting.push_back({L"(", 0, parenthesisPrecedence});
    if (!_functionParenthesis) _written.push_back(true);
    _functionParenthesis = false;
}

void PostfixMaker::closeParenthesis() {
    while (!_waiting.empty() && _waiting.back().precedence != parenthesisPrecedence) writeTop();
    if (_waiting.empty() || _written.empty()) throw vlerror(msg::formulaError);
    if (_written.back()) write(L"(");
    _waiting.pop_back();
    _written.pop_back();
    if (!topIsFunction()) return;
    writeTop();
    ++_operands;
}

void PostfixMaker::pushOperator(std::wstring_view word, int precedence, bool separator) {
    if (_operands > 0 || separator) {
        while (!_waiting.empty() && _waiting.back().precedence >= precedence) writeTop();
    }
    if (!separator) {
        const bool unary = _operands == 0 && (word == L"-"sv || word == L"+"sv);
        if (unary) {
            _waiting.push_back({word == L"-"sv ? L"uMinus" : L"uPlus", 0, unaryPrecedence});
        } else {
            _waiting.push_back({word, 0, static_cast<std::int8_t>(precedence)});
        }
    }
    _operands = 0;
}

void PostfixMaker::convert(std::wstring_view text) {
    TextWords words(text);
    std::uint32_t mask = 0;
    for (auto word = words.next(); !word.empty(); word = words.next()) {
        const bool constant =
            (word == L"TRUE"sv || word == L"FALSE"sv) && !words.rest().empty() && !words.rest().starts_with(L'(');
        if (!constant && isFunctionName(word, mask)) {
            pushFunction(word, words.position());
        } else if (word == L"%"sv) {
            write(L"uPercent");
        } else if (word == L"("sv) {
            openParenthesis();
        } else if (word == L")"sv) {
            closeParenthesis();
        } else if (word == L";"sv || word == L","sv) {
            pushOperator(word, separatorPrecedence, true);
        } else if (const BinaryOperator* const op = binaryOperator(word)) {
            pushOperator(word, op->precedence, false);
        } else {
            operand(word);
        }
    }
    while (!_waiting.empty()) writeTop();
    if (_postfix.ends_with(L' ')) _postfix.pop_back();
}

const std::wstring& PostfixMaker::textToPostfix(std::wstring& text) {
    _postfix.clear();
    _waiting.clear();
    _written.clear();
    _operands = 0;
    _functionParenthesis = false;
    if (errorCodeOf(text)) return _postfix = text;
    cleanText(text);
    const std::wstring& marked = _marker.mark(text);
    _counts.scan(marked);
    convert(marked);
    return _postfix;
}

}  // namespace vellum::formula
