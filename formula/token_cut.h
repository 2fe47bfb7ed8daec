// Cutting a token stream into its tokens.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "formula/byte_stream.h"
#include "formula/formula_context.h"
#include "formula/token_table.h"

namespace vellum::formula {

/// A token by itself: who decodes it cannot read past its end.
struct Token {
    std::uint8_t code = 0;
    const TokenRow* row = nullptr;
    ByteStream operands;
};

/// Cuts the next token off the front, for its text. BIFF8 widths are those of the text, which differ from the
/// published ones for a few kinds of 18 and 19. Where the stream ends inside the token its operands are short, and
/// decoding them fails. Throws for a code, an extended kind or an attribute that has no text.
Token cutToken(ByteStream& in, Generation generation);

/// Walks over the tokens by their published widths, for who patches bytes:
///
///     for (TokenWalk walk(rgce); walk.next();) patch(walk.code(), rgce.subspan(walk.offset() + 1));
class TokenWalk {
public:
    explicit TokenWalk(std::span<const std::byte> rgce, Generation generation = Generation::biff8)
        : _rgce(rgce), _generation(generation) {}

    /// Goes to the next token; false at the end, and where the bytes are no whole token.
    bool next();
    /// After `next` was false: whether bytes are left that are no whole token.
    [[nodiscard]] bool isBroken() const { return _end < _rgce.size(); }

    [[nodiscard]] std::uint8_t code() const { return _row == nullptr ? 0 : std::to_integer<std::uint8_t>(_rgce[_at]); }
    /// The code in the reference class.
    [[nodiscard]] std::uint8_t base() const { return tokenBase(code()); }
    [[nodiscard]] const TokenRow& row() const { return *_row; }
    /// Of the code byte, from the front of the stream.
    [[nodiscard]] std::size_t offset() const { return _at; }
    [[nodiscard]] std::span<const std::byte> operands() const { return _rgce.subspan(_at + 1, _end - _at - 1); }

private:
    std::span<const std::byte> _rgce;
    Generation _generation;
    std::size_t _at = 0, _end = 0;
    const TokenRow* _row = nullptr;
};

/// Whether every token of a BIFF8 stream finds its operands and one value is left.
bool isBalanced(std::span<const std::byte> rgce);

}  // namespace vellum::formula
