#include "formula/compiling/formula_from_text.h"

#include "engine/facts/r1c1.h"

namespace vellum::formula {

std::span<const std::byte> FormulaTokens::tokensOfText(std::wstring& text, FormulaContext& book, int sheet,
                                                       TextOrigin at) {
    if (book.usesR1C1Text()) r1c1ToA1(text, at.row, at.col, true);
    return _tokens.compileFormula(_postfix.textToPostfix(text), book, sheet);
}

}  // namespace vellum::formula
