#include "formula/compiling/formula_from_text.h"

#include "engine/facts/r1c1.h"

namespace vellum::formula {

std::span<const std::byte> FormulaTokens::tokensOfText(std::wstring_view text, FormulaContext& book, int sheet,
                                                       TextOrigin at) {
    _text = text;
    if (book.usesR1C1Text()) r1c1ToA1(_text, at.row, at.col, true);
    return _tokens.compileFormula(_postfix.textToPostfix(_text), book, sheet);
}

}  // namespace vellum::formula
