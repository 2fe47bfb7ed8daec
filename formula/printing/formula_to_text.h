// The text of a token stream.
#pragma once
#include <cstddef>
#include <span>
#include <string>

#include "formula/cell_location.h"
#include "formula/formula_context.h"
#include "formula/printing/infix.h"

namespace vellum::formula {

/// Makes texts; its buffers are reused from call to call.
class FormulaText {
public:
    /// The text without a leading "=", alive until the next call. `rgce` are the tokens alone. `base` is the cell for
    /// tokens that cells share; it needs no row limit.
    const std::wstring& formulaToText(std::span<const std::byte> rgce, const FormulaContext& book,
                                      Generation generation, LocationBase base, TextOrigin origin);

private:
    std::wstring _postfix;
    InfixBuilder _infix;
};

/// The tokens of an expression: 16 bits of their size, the tokens, and what follows them. A size beyond the bytes that
/// are there means all of these.
std::span<const std::byte> tokensOf(std::span<const std::byte> expression);

}  // namespace vellum::formula
