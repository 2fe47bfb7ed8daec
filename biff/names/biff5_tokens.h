// Expressions of the generation before BIFF8 in the newer form.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "biff/names/links.h"

namespace vellum::biff {

struct Expression {
    std::vector<std::byte> tokens;
    std::vector<std::byte> extra;  // values of arrays, which stand behind the tokens
};

/// Token by token: rows and columns are widened, references to sheets of this workbook go through `links`, texts get
/// their flags. Null when a token has no form in BIFF8, and for bytes that are no tokens.
std::optional<Expression> expressionFromBiff5(std::span<const std::byte> tokens, std::span<const std::byte> extra,
                                              Links& links, std::size_t sheetCount);

}  // namespace vellum::biff
