#include "tools/json_line.h"

#include <charconv>

namespace tools {
namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : _rest(text) {}

    std::map<std::string, Scalars> object() {
        std::map<std::string, Scalars> members;
        expect('{');
        if (take('}')) return members;
        do {
            const std::string name = text();
            expect(':');
            members[name] = take('[') ? list() : Scalars{scalar()};
        } while (take(','));
        expect('}');
        return members;
    }

private:
    [[noreturn]] static void fail() { throw std::runtime_error("no JSON object of scalars and lists"); }
    void skipBlanks() {
        while (!_rest.empty() && _rest.front() <= ' ') _rest.remove_prefix(1);
    }
    bool take(char wanted) {
        skipBlanks();
        if (!_rest.starts_with(wanted)) return false;
        _rest.remove_prefix(1);
        return true;
    }
    void expect(char wanted) {
        if (!take(wanted)) fail();
    }
    bool takeWord(std::string_view word) {
        if (!_rest.starts_with(word)) return false;
        _rest.remove_prefix(word.size());
        return true;
    }
    Scalars list() {
        Scalars values;
        if (take(']')) return values;
        do {
            values.push_back(scalar());
        } while (take(','));
        expect(']');
        return values;
    }
    Scalar scalar() {
        skipBlanks();
        if (_rest.starts_with('"')) return text();
        if (takeWord("true")) return true;
        if (takeWord("false")) return false;
        if (takeWord("null")) return {};
        double number = 0;
        const auto read = std::from_chars(_rest.data(), _rest.data() + _rest.size(), number);
        if (read.ptr == _rest.data()) fail();
        _rest.remove_prefix(static_cast<std::size_t>(read.ptr - _rest.data()));
        return number;
    }
    std::string text() {
        expect('"');
        std::string result;
        while (!_rest.empty() && _rest.front() != '"') {
            char c = _rest.front();
            _rest.remove_prefix(1);
            if (c == '\\') c = escaped();
            result += c;
        }
        expect('"');
        return result;
    }
    /// Characters beyond these stand as UTF-8.
    char escaped() {
        if (_rest.empty()) fail();
        const char c = _rest.front();
        _rest.remove_prefix(1);
        switch (c) {
            case 'n':
                return '\n';
            case 't':
                return '\t';
            case 'r':
                return '\r';
            case '"':
            case '\\':
            case '/':
                return c;
            default:
                fail();
        }
    }

    std::string_view _rest;
};

}  // namespace

std::map<std::string, Scalars> readJsonLine(std::string_view line) {
    return Reader(line).object();
}

std::string jsonText(std::string_view utf8) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') text += '\\';
        if (static_cast<unsigned char>(c) < ' ') {
            text += {'\\', 'u', '0', '0', digits[c >> 4], digits[c & 15]};
        } else {
            text += c;
        }
    }
    return text + '"';
}

}  // namespace tools
