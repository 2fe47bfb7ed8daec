#include "formula/printing/formula_to_text.h"

#include <algorithm>

#include "formula/printing/token_word.h"

namespace vellum::formula {

const std::wstring& FormulaText::formulaToText(std::span<const std::byte> rgce, const FormulaContext& book,
                                               Generation generation, LocationBase base, TextOrigin origin) {
    if (generation == Generation::biff5) base.rowLimit = 16384;
    _postfix.clear();
    appendPostfix(_postfix, rgce, book, generation, base);
    return _infix.toInfix(_postfix, book, origin);
}

std::span<const std::byte> tokensOf(std::span<const std::byte> expression) {
    if (expression.size() < 2) return {};
    return expression.subspan(2,
                              std::min<std::size_t>(loadLe<std::uint16_t>(expression.data()), expression.size() - 2));
}

}  // namespace vellum::formula
