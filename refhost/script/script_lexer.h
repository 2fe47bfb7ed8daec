// The words of a script.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/script/script_error.h"

namespace refhost {

enum class TokenKind { name, integer, real, text, symbol, newline, end };

struct Token {
    TokenKind kind = TokenKind::end;
    Position at;
    std::string text;  // the name, the text without quotes and escapes, or the symbol: one of ( ) [ ] { } , : = - + ..
    std::int64_t integer = 0;  // of an integer
    double real = 0;           // of an integer or real

    bool is(std::string_view symbol) const { return kind == TokenKind::symbol && text == symbol; }
    /// For messages.
    std::string shown() const;
};

/// The whole script. Newlines inside of brackets of any kind are left out, as are empty lines; the last token is `end`.
/// Throws ScriptError.
std::vector<Token> tokenize(std::string_view script);

}  // namespace refhost
