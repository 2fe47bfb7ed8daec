#include "refhost/script/script_lexer.h"

#include <charconv>
#include <cstring>

namespace refhost {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool startsName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

class Lexer {
public:
    explicit Lexer(std::string_view script) : _script(script) {}

    std::vector<Token> run() {
        if (_script.starts_with("\xEF\xBB\xBF")) _next += 3;  // a byte order mark
        while (_next < _script.size()) step();
        add(TokenKind::newline, _at);
        add(TokenKind::end, _at);
        return std::move(_tokens);
    }

private:
    char peek(std::size_t ahead = 0) const { return _next + ahead < _script.size() ? _script[_next + ahead] : '\0'; }

    char take() {
        const char c = _script[_next++];
        if (c == '\n')
            ++_at.line, _at.column = 1;
        else if ((static_cast<unsigned char>(c) & 0xc0) != 0x80)
            ++_at.column;  // bytes inside of a character do not count
        return c;
    }

    Token& add(TokenKind kind, Position at) {
        if (kind == TokenKind::newline && (_depth > 0 || _tokens.empty() || _tokens.back().kind == TokenKind::newline))
            return _unused;
        return _tokens.emplace_back(Token{kind, at, {}, 0, 0});
    }

    void step() {
        const Position at = _at;
        const char c = peek();
        if (c == '\n') {
            take();
            add(TokenKind::newline, at);
        } else if (c == ' ' || c == '\t' || c == '\r') {
            take();
        } else if (c == '#') {
            while (_next < _script.size() && peek() != '\n') take();
        } else if (c == '"') {
            takeText(at);
        } else if (isDigit(c) || (c == '.' && isDigit(peek(1)))) {
            takeNumber(at);
        } else if (startsName(c)) {
            std::string name;
            while (startsName(peek()) || isDigit(peek())) name += take();
            add(TokenKind::name, at).text = std::move(name);
        } else {
            takeSymbol(at);
        }
    }

    void takeText(Position at) {
        std::string text;
        take();
        for (;;) {
            if (_next == _script.size() || peek() == '\n') throw ScriptError(at, "this text has no closing quote");
            const Position here = _at;
            char c = take();
            if (c == '"') break;
            if (c == '\\') {
                constexpr std::string_view escapes = "\"\\nt", meanings = "\"\\\n\t";
                const std::size_t which = escapes.find(peek());
                if (_next == _script.size() || which == escapes.npos)
                    throw ScriptError(here, "a text knows the escapes \\\", \\\\, \\n and \\t only");
                take();
                c = meanings[which];
            }
            if (c == '\0') throw ScriptError(here, "a text cannot hold a NUL");
            text += c;
        }
        add(TokenKind::text, at).text = std::move(text);
    }

    void takeNumber(Position at) {
        const std::size_t start = _next;
        bool real = false;
        while (isDigit(peek())) take();
        if (peek() == '.' && peek(1) != '.') {  // two of them make a range
            real = true;
            take();
            while (isDigit(peek())) take();
        }
        if (peek() == 'e' || peek() == 'E') {
            const std::size_t sign = peek(1) == '+' || peek(1) == '-';
            if (isDigit(peek(1 + sign))) {
                real = true;
                for (std::size_t i = 0; i <= sign; ++i) take();
                while (isDigit(peek())) take();
            }
        }
        if (startsName(peek())) throw ScriptError(at, "this is neither a number nor a name");
        const char *first = _script.data() + start, *last = _script.data() + _next;
        double value = 0;
        if (std::from_chars(first, last, value).ec != std::errc()) throw ScriptError(at, "number out of range");
        std::int64_t whole = 0;
        if (!real && std::from_chars(first, last, whole).ec != std::errc()) real = true;
        Token& token = add(real ? TokenKind::real : TokenKind::integer, at);
        token.text.assign(first, last);
        token.integer = whole;
        token.real = value;
    }

    void takeSymbol(Position at) {
        const char c = take();
        std::string text(1, c);
        if (c == '.' && peek() == '.') {
            text += take();
        } else if (c == '\0' || !std::strchr("()[]{},:=-+", c)) {
            const bool visible = c > ' ' && c < '\x7f';
            throw ScriptError(at,
                              visible ? "'" + text + "' has no meaning here" : "a character that has no meaning here");
        }
        if (std::strchr("([{", c)) ++_depth;
        if (std::strchr(")]}", c) && _depth > 0) --_depth;
        add(TokenKind::symbol, at).text = std::move(text);
    }

    std::string_view _script;
    std::size_t _next = 0;
    Position _at;
    int _depth = 0;  // open brackets
    std::vector<Token> _tokens;
    Token _unused;
};

}  // namespace

std::string Token::shown() const {
    switch (kind) {
        case TokenKind::newline:
            return "the end of the line";
        case TokenKind::end:
            return "the end of the script";
        case TokenKind::text:
            return "a text";
        default:
            return "'" + text + "'";
    }
}

std::vector<Token> tokenize(std::string_view script) {
    return Lexer(script).run();
}

}  // namespace refhost
