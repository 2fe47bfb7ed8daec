// From tokens to postfix text: words with a blank between, operands before their operator.
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "formula/cell_location.h"
#include "formula/formula_context.h"
#include "formula/token_cut.h"

namespace vellum::formula {

/// Appends a token's word, or nothing for a token that has none. `base` is added to relative locations without a
/// sheet. The operands are used up; when they are short, this throws.
void appendTokenWord(std::wstring& out, Token& token, const FormulaContext& book, Generation generation,
                     LocationBase base);

/// Appends the words of a whole stream, each with a blank behind it.
void appendPostfix(std::wstring& out, std::span<const std::byte> rgce, const FormulaContext& book,
                   Generation generation, LocationBase base);

/// The sheets of a reference as a prefix of a cell: `Sheet1!`, `'First:Last one'!`, "#REF!" for sheets that are gone or
/// elsewhere.
void appendSheetPrefix(std::wstring& out, const SheetSpan& span, const FormulaContext& book);

/// A text in double quotes, each `"` inside written twice.
void appendQuoted(std::wstring& out, std::wstring_view text);

}  // namespace vellum::formula
