// The parser's parts: what has been declared so far, types, literals.
#pragma once
#include <map>

#include "refhost/script/script.h"
#include "refhost/script/script_lexer.h"

namespace refhost {

/// What the script declared so far.
class Scope {
public:
    /// Null when there is no such variable or type.
    const VariableSpec* variable(const std::string& name) const;
    const HostType* type(const std::string& name) const;
    bool knows(const std::string& name) const { return _variables.count(name) || _types.count(name); }
    void addVariable(const std::string& name, VariableSpec spec) { _variables[name] = std::move(spec); }
    void addType(const std::string& name, HostType type) { _types[name] = type; }

private:
    std::map<std::string, VariableSpec> _variables;
    std::map<std::string, HostType> _types;
};

/// The tokens of a script, one after the other.
class TokenStream {
public:
    explicit TokenStream(std::vector<Token> tokens) : _tokens(std::move(tokens)) {}

    const Token& peek(std::size_t ahead = 0) const { return _tokens[std::min(_next + ahead, _tokens.size() - 1)]; }
    const Token& take() { return _tokens[std::min(_next++, _tokens.size() - 1)]; }
    bool skip(std::string_view symbol);
    bool skipWord(std::string_view word);
    void expect(std::string_view symbol);
    void expectWord(std::string_view word);
    /// `wanted` completes "... is expected".
    std::string expectName(const char* wanted);
    std::string expectText(const char* wanted);
    /// An integer with its sign, within 32 bits.
    int expectInteger(const char* wanted);
    [[noreturn]] void fail(const std::string& wanted) const;

private:
    std::vector<Token> _tokens;
    std::size_t _next = 0;
};

/// Words that are values, and so cannot name a variable or type. All other words of the language can.
bool isReserved(std::string_view word);

/// A type as it stands behind the ":" of a declaration. `name` is what is being declared; a record or alias spelt out
/// there becomes a type of that name.
VariableSpec parseType(TokenStream& in, const Scope& scope, TypeRegistry& types, const std::string& name);

/// Literals nest at most so deep.
constexpr int maxLiteralDepth = 100;
Literal parseLiteral(TokenStream& in, int depth = 0);

/// Throws ScriptError unless the literal is a value for what is declared.
void checkLiteral(const Literal& literal, const VariableSpec& spec, const Scope& scope, const TypeRegistry& types);

}  // namespace refhost
