// The token stream of a formula's text.
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "formula/compiling/postfix_to_tokens.h"
#include "formula/compiling/text_to_postfix.h"
#include "formula/formula_context.h"

namespace vellum::formula {

/// Makes tokens of texts; its buffers are reused from call to call.
class FormulaTokens {
public:
    /// The BIFF8 tokens, alive until the next call. `text` may begin with "=". `at` is the cell that
    /// R1C1 text is relative to; `sheet` the one whose own names are seen.
    std::span<const std::byte> tokensOfText(std::wstring_view text, FormulaContext& book, int sheet, TextOrigin at);

private:
    std::wstring _text;
    PostfixMaker _postfix;
    TokenMaker _tokens;
};

}  // namespace vellum::formula
