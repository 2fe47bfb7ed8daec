// Values as they stand in declarations: their form, and whether they fit what is declared.
#include <limits>

#include "refhost/script/script_parser.h"
#include "refhost/values/date.h"

namespace refhost {
namespace {

Literal parseNumber(TokenStream& in) {
    Literal literal;
    literal.at = in.peek().at;
    const bool negative = in.peek().is("-");
    if (negative || in.peek().is("+")) in.take();
    const Token& token = in.peek();
    if (token.kind == TokenKind::integer || token.kind == TokenKind::real) {
        literal.kind = token.kind == TokenKind::integer ? Literal::integer : Literal::real;
        literal.whole = negative ? -token.integer : token.integer;
        literal.number = negative ? -token.real : token.real;
    } else if (token.kind == TokenKind::name && token.text == "inf") {
        literal.kind = Literal::real;
        literal.number = negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    } else {
        in.fail("a number is expected");
    }
    in.take();
    if (literal.kind == Literal::integer && in.skip("..")) {
        literal.kind = Literal::range;
        literal.last = in.expectInteger("the last integer of a range");
    }
    return literal;
}

Literal parseWord(TokenStream& in) {
    const Token& token = in.peek();
    if (token.text == "inf") return parseNumber(in);
    in.take();
    Literal literal;
    literal.at = token.at;
    if (token.text == "null") {
        literal.kind = Literal::null;
    } else if (token.text == "nan") {
        literal.kind = Literal::real;
        literal.number = std::numeric_limits<double>::quiet_NaN();
    } else if (token.text == "true" || token.text == "false") {
        literal.kind = Literal::boolean;
        literal.flag = token.text == "true";
    } else {
        literal.kind = Literal::name;
        literal.word = token.text;
    }
    return literal;
}

Literal parseGroup(TokenStream& in, int depth, Literal::Kind kind, std::string_view closing) {
    Literal group;
    group.kind = kind;
    group.at = in.take().at;
    if (depth >= maxLiteralDepth) throw ScriptError(group.at, "brackets are nested too deep");
    while (!in.skip(closing)) {
        if (!group.items.empty()) {
            in.expect(",");
            if (in.skip(closing)) break;  // a comma behind the last item
        }
        if (kind == Literal::parens && in.peek().kind == TokenKind::name && in.peek(1).is(":")) {
            if (group.fieldNames.size() != group.items.size()) in.fail("either all fields have their name or none");
            group.fieldNames.push_back(in.take().text);
            in.take();
        } else if (!group.fieldNames.empty()) {
            in.fail("either all fields have their name or none");
        }
        group.items.push_back(parseLiteral(in, depth + 1));
        if (kind != Literal::braces) continue;
        if (in.peek().is(":")) {
            if (group.values.size() + 1 != group.items.size()) in.fail("either all entries have indices or none");
            in.take();
            group.values.push_back(parseLiteral(in, depth + 1));
        } else if (!group.values.empty()) {
            in.fail("':' is expected");
        }
    }
    return group;
}

class Checker {
public:
    Checker(const Scope& scope, const TypeRegistry& types) : _scope(scope), _types(types) {}

    void container(const Literal& literal, const VariableSpec& spec) const {
        if (literal.kind == Literal::null) return;
        switch (spec.form) {
            case Form::set:
                set(literal, spec);
                break;
            case Form::list:
                list(literal, spec);
                break;
            case Form::array:
                array(literal, spec);
                break;
            case Form::scalar:
                break;
        }
    }

    void value(const Literal& literal, HostType type) const {
        const TypeInfo& info = *_types.resolved(type);
        if (literal.kind == Literal::name) return named(literal, info);
        switch (info.number) {
            case hostTypeInteger:
                require(literal.kind == Literal::integer, literal, "an integer");
                if (literal.whole < INT32_MIN || literal.whole > INT32_MAX)
                    throw ScriptError(literal.at, "this integer does not fit 32 bits");
                return;
            case hostTypeReal:
                return require(literal.kind == Literal::integer || literal.kind == Literal::real, literal, "a number");
            case hostTypeText:
                return require(literal.kind == Literal::text || literal.kind == Literal::null, literal, "a text");
            case hostTypeBoolean:
                return require(literal.kind == Literal::boolean, literal, "true or false");
            case hostTypeAny:
                return require(literal.kind <= Literal::boolean, literal, "a scalar value");
            case typeDate:
                if (literal.kind == Literal::null) return;
                require(literal.kind == Literal::text, literal, "a date in quotes");
                if (!parseDate(literal.word))
                    throw ScriptError(literal.at, "'" + literal.word + "' is no date such as 2024-03-01");
                return;
            default:
                return record(literal, info);
        }
    }

private:
    static void require(bool fits, const Literal& literal, const char* wanted) {
        if (!fits) throw ScriptError(literal.at, std::string(wanted) + " is expected");
    }

    void named(const Literal& literal, const TypeInfo& wanted) const {
        const VariableSpec* known = _scope.variable(literal.word);
        if (!known) throw ScriptError(literal.at, "'" + literal.word + "' is not declared");
        const bool fits = known->form == Form::scalar &&
                          (wanted.number == hostTypeAny || _types.resolve(known->elementType) == wanted.number);
        if (!fits) throw ScriptError(literal.at, "'" + literal.word + "' is not of type " + wanted.name);
    }

    void record(const Literal& literal, const TypeInfo& info) const {
        require(literal.kind == Literal::parens, literal, "a record in parentheses");
        if (literal.items.size() != info.fields.size())
            throw ScriptError(literal.at, "record '" + info.name + "' has " + std::to_string(info.fields.size()) +
                                              " fields, not " + std::to_string(literal.items.size()));
        for (std::size_t i = 0; i < literal.items.size(); ++i) {
            if (!literal.fieldNames.empty() && literal.fieldNames[i] != info.fields[i].name)
                throw ScriptError(literal.items[i].at, "field '" + info.fields[i].name + "' is expected here");
            value(literal.items[i], info.fields[i].type);
        }
    }

    void set(const Literal& literal, const VariableSpec& spec) const {
        if (literal.kind == Literal::range && spec.elementType == hostTypeInteger) {
            if (literal.whole < INT32_MIN || literal.whole > INT32_MAX || literal.last - literal.whole >= INT32_MAX - 1)
                throw ScriptError(literal.at, "this range does not fit 32 bits");
            return;
        }
        require(literal.kind == Literal::braces && literal.values.empty(), literal, "a set in braces");
        for (const Literal& item : literal.items) {
            // An entry "(i, j): v" would have been taken for an array.
            value(item, spec.elementType);
        }
    }

    void list(const Literal& literal, const VariableSpec& spec) const {
        require(literal.kind == Literal::brackets, literal, "a list in brackets");
        for (const Literal& item : literal.items) {
            if (!spec.ofArrays && spec.elementType != hostTypeAny) {
                value(item, spec.elementType);
                continue;
            }
            // Containers go into a list of arrays or of any by their names.
            if (spec.ofArrays) require(item.kind == Literal::name, item, "the name of an array");
            if (item.kind != Literal::name)
                value(item, spec.elementType);
            else if (!_scope.variable(item.word))
                throw ScriptError(item.at, "'" + item.word + "' is not declared");
        }
    }

    void array(const Literal& literal, const VariableSpec& spec) const {
        require(literal.kind == Literal::braces && literal.values.size() == literal.items.size(), literal,
                "an array as entries (index, ...): value in braces");
        for (std::size_t i = 0; i < literal.items.size(); ++i) {
            key(literal.items[i], spec);
            value(literal.values[i], spec.elementType);
        }
    }

    void key(const Literal& literal, const VariableSpec& spec) const {
        if (literal.kind != Literal::parens && spec.indices.size() == 1)
            return value(literal, spec.indices.front().elementType);
        require(literal.kind == Literal::parens && literal.fieldNames.empty(), literal,
                "an index tuple in parentheses");
        if (literal.items.size() != spec.indices.size())
            throw ScriptError(literal.at, "this array has " + std::to_string(spec.indices.size()) + " indices, not " +
                                              std::to_string(literal.items.size()));
        for (std::size_t d = 0; d < spec.indices.size(); ++d) value(literal.items[d], spec.indices[d].elementType);
    }

    const Scope& _scope;
    const TypeRegistry& _types;
};

}  // namespace

Literal parseLiteral(TokenStream& in, int depth) {
    const Token& token = in.peek();
    if (token.kind == TokenKind::name) return parseWord(in);
    if (token.kind == TokenKind::text) {
        Literal literal;
        literal.kind = Literal::text;
        literal.at = token.at;
        literal.word = in.take().text;
        return literal;
    }
    if (token.is("{")) return parseGroup(in, depth, Literal::braces, "}");
    if (token.is("[")) return parseGroup(in, depth, Literal::brackets, "]");
    if (token.is("(")) return parseGroup(in, depth, Literal::parens, ")");
    if (token.kind == TokenKind::integer || token.kind == TokenKind::real || token.is("-") || token.is("+"))
        return parseNumber(in);
    in.fail("a value is expected");
}

void checkLiteral(const Literal& literal, const VariableSpec& spec, const Scope& scope, const TypeRegistry& types) {
    const Checker checker(scope, types);
    if (spec.form == Form::scalar)
        checker.value(literal, spec.elementType);
    else
        checker.container(literal, spec);
}

}  // namespace refhost
