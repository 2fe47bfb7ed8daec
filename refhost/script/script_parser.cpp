#include "refhost/script/script_parser.h"

#include <algorithm>
#include <array>

#include "refhost/values/format_real.h"

namespace refhost {
namespace {

constexpr std::string_view reservedWords[] = {"false", "inf", "nan", "null", "true"};

class Parser {
public:
    Parser(std::string_view script, TypeRegistry& types) : _in(tokenize(script)), _types(types) {}

    std::vector<Statement> run() {
        std::vector<Statement> statements;
        while (_in.peek().kind != TokenKind::end) {
            if (_in.peek().kind == TokenKind::newline) {
                _in.take();
                continue;
            }
            statements.push_back(statement());
            if (_in.peek().kind != TokenKind::newline) _in.fail("the end of the statement is expected");
        }
        return statements;
    }

private:
    Statement statement() {
        Statement made{_in.peek().at, {}};
        const Token keyword = _in.take();
        if (keyword.kind != TokenKind::name)
            throw ScriptError(keyword.at, "a statement is expected instead of " + keyword.shown());
        if (keyword.text == "declare")
            made.what = declare();
        else if (keyword.text == "read")
            made.what = transfer(false);
        else if (keyword.text == "write")
            made.what = transfer(true);
        else if (keyword.text == "print")
            made.what = PrintStatement{variable()};
        else if (keyword.text == "param")
            made.what = param();
        else if (keyword.text == "open")
            made.what = open();
        else if (keyword.text == "close")
            made.what = CloseStatement{_in.expectText("a source in quotes")};
        else if (keyword.text == "context")
            made.what = ContextStatement{_in.expectInteger("the number of a context")};
        else
            throw ScriptError(keyword.at, "there is no statement '" + keyword.text + "'");
        return made;
    }

    DeclareStatement declare() {
        DeclareStatement made;
        const Position at = _in.peek().at;
        made.name = _in.expectName("a name");
        if (isReserved(made.name)) throw ScriptError(at, "'" + made.name + "' is a word of the language");
        if (_scope.knows(made.name)) throw ScriptError(at, "'" + made.name + "' is declared already");
        _in.expect(":");
        const bool type = _in.peek().text == "record" || _in.peek().text == "alias";
        made.spec = parseType(_in, _scope, _types, made.name);
        if (type) _scope.addType(made.name, made.spec.elementType);
        if (_in.skip("=")) {
            made.value = parseLiteral(_in);
            checkLiteral(*made.value, made.spec, _scope, _types);
        }
        _scope.addVariable(made.name, made.spec);
        return made;
    }

    TransferStatement transfer(bool write) {
        TransferStatement made;
        made.write = write;
        made.source = _in.expectText("a source in quotes");
        _in.expect("{");
        while (!_in.skip("}")) {
            if (!made.items.empty()) {
                _in.expect(",");
                if (_in.skip("}")) break;
            }
            ItemSpec item;
            item.name = variable();
            _in.expectWord(write ? "to" : "from");
            item.label = _in.expectText("a label in quotes");
            made.items.push_back(std::move(item));
        }
        return made;
    }

    OpenStatement open() {
        OpenStatement made;
        made.source = _in.expectText("a source in quotes");
        made.update = _in.skipWord("update");
        return made;
    }

    ParamStatement param() {
        ParamStatement made;
        const Token which = _in.peek();
        const std::string name = _in.expectName("the name of a parameter");
        if (name == "realformat") {
            const Position at = _in.peek().at;
            made.text = _in.expectText("a format in quotes");
            // A csv file that is rewritten by a wrong format would lose its numbers.
            if (formatReal(nullptr, 0, made.text.c_str(), 0) < 0)
                throw ScriptError(at, "a printf format for one real is expected, such as \"%.15g\"");
        } else if (name == "deny") {
            made.kind = ParamStatement::deny;
            made.text = _in.expectText("a path in quotes");
        } else if (name == "finish") {
            made.kind = ParamStatement::finish;
            made.flag = _in.skipWord("true");
            if (!made.flag && !_in.skipWord("false")) _in.fail("true or false is expected");
        } else {
            throw ScriptError(which.at, "there is no parameter '" + name + "'");
        }
        return made;
    }

    std::string variable() {
        const Position at = _in.peek().at;
        std::string name = _in.expectName("the name of a variable");
        if (!_scope.variable(name)) throw ScriptError(at, "'" + name + "' is not declared");
        return name;
    }

    TokenStream _in;
    TypeRegistry& _types;
    Scope _scope;
};

}  // namespace

const VariableSpec* Scope::variable(const std::string& name) const {
    const auto found = _variables.find(name);
    return found == _variables.end() ? nullptr : &found->second;
}

const HostType* Scope::type(const std::string& name) const {
    const auto found = _types.find(name);
    return found == _types.end() ? nullptr : &found->second;
}

bool TokenStream::skip(std::string_view symbol) {
    if (!peek().is(symbol)) return false;
    ++_next;
    return true;
}

bool TokenStream::skipWord(std::string_view word) {
    if (peek().kind != TokenKind::name || peek().text != word) return false;
    ++_next;
    return true;
}

void TokenStream::expect(std::string_view symbol) {
    if (!skip(symbol)) fail("'" + std::string(symbol) + "' is expected");
}

void TokenStream::expectWord(std::string_view word) {
    if (!skipWord(word)) fail("'" + std::string(word) + "' is expected");
}

std::string TokenStream::expectName(const char* wanted) {
    if (peek().kind != TokenKind::name) fail(std::string(wanted) + " is expected");
    return take().text;
}

std::string TokenStream::expectText(const char* wanted) {
    if (peek().kind != TokenKind::text) fail(std::string(wanted) + " is expected");
    return take().text;
}

int TokenStream::expectInteger(const char* wanted) {
    const Position at = peek().at;
    const bool negative = skip("-");
    if (peek().kind != TokenKind::integer) fail(std::string(wanted) + " is expected");
    const std::int64_t value = negative ? -take().integer : take().integer;
    if (value < INT32_MIN || value > INT32_MAX) throw ScriptError(at, "this integer does not fit 32 bits");
    return static_cast<int>(value);
}

void TokenStream::fail(const std::string& wanted) const {
    throw ScriptError(peek().at, wanted + " instead of " + peek().shown());
}

bool isReserved(std::string_view word) {
    return std::find(std::begin(reservedWords), std::end(reservedWords), word) != std::end(reservedWords);
}

std::vector<Statement> parseScript(std::string_view script, TypeRegistry& types) {
    return Parser(script, types).run();
}

}  // namespace refhost
