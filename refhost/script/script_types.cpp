// Types as they stand in declarations.
#include <algorithm>
#include <array>
#include <stdexcept>

#include "refhost/script/script_parser.h"

namespace refhost {
namespace {

struct NamedType {
    std::string_view name;
    HostType type;
};
constexpr NamedType builtInTypes[] = {{"integer", hostTypeInteger}, {"real", hostTypeReal}, {"text", hostTypeText},
                                      {"boolean", hostTypeBoolean}, {"any", hostTypeAny},   {"date", typeDate}};

constexpr std::string_view typeWords[] = {"alias", "array", "dynamic", "list", "range", "record", "set", "static"};

/// Words that a type may begin with. In a type they mean that, even where a variable has such a name.
bool isTypeWord(std::string_view word) {
    const auto isBuiltIn = [&](const NamedType& type) { return type.name == word; };
    return std::any_of(std::begin(builtInTypes), std::end(builtInTypes), isBuiltIn) ||
           std::find(std::begin(typeWords), std::end(typeWords), word) != std::end(typeWords);
}

class TypeParser {
public:
    TypeParser(TokenStream& in, const Scope& scope, TypeRegistry& types, const std::string& name)
        : _in(in), _scope(scope), _types(types), _name(name) {}

    VariableSpec variable() {
        VariableSpec spec;
        const Token& first = _in.peek();
        const bool isDynamic = _in.skipWord("dynamic");
        const bool isStatic = !isDynamic && _in.skipWord("static");
        spec.dynamic = isDynamic;
        if (_in.peek().text == "range" || (isDynamic && startsRange())) {
            spec.form = Form::set;
            spec.elementType = hostTypeInteger;
            range(spec);
        } else if (_in.skipWord("set")) {
            spec.form = Form::set;
            spec.elementType = ofElement();
        } else if (_in.skipWord("list")) {
            spec.form = Form::list;
            spec.dynamic = !isStatic;
            if (_in.peek().text == "of" && _in.peek(1).text == "array") {
                _in.take();
                _in.take();
                spec.ofArrays = true;
            } else {
                spec.elementType = ofElement();
            }
        } else if (_in.skipWord("array")) {
            spec.form = Form::array;
            _in.expect("(");
            do spec.indices.push_back(index());
            while (_in.skip(","));
            _in.expect(")");
            spec.elementType = ofElement();
        } else if (isDynamic || isStatic) {
            throw ScriptError(first.at, "'" + first.text + "' goes with a set, range, list or array");
        } else {
            spec.elementType = element();
        }
        return spec;
    }

private:
    bool startsRange() const { return _in.peek().text == "range"; }

    /// "range", "range A..B".
    template <class Spec>
    void range(Spec& spec) {
        const Position at = _in.peek().at;
        _in.expectWord("range");
        spec.range = true;
        if (startsInteger())
            bounds(spec);
        else if (!spec.dynamic)
            throw ScriptError(at, "a range that is not dynamic needs its bounds, as in 1..10");
    }

    bool startsInteger() const {
        return _in.peek().kind == TokenKind::integer || (_in.peek().is("-") && _in.peek(1).kind == TokenKind::integer);
    }

    template <class Spec>
    void bounds(Spec& spec) {
        const Position at = _in.peek().at;
        spec.first = _in.expectInteger("the first integer of a range");
        _in.expect("..");
        spec.last = _in.expectInteger("the last integer of a range");
        if (std::int64_t{spec.last} - spec.first >= INT32_MAX - 1) throw ScriptError(at, "this range is too long");
    }

    IndexSpec index() {
        IndexSpec spec;
        const Token& token = _in.peek();
        if (startsInteger()) {
            spec.elementType = hostTypeInteger;
            spec.range = true;
            spec.dynamic = false;
            bounds(spec);
            return spec;
        }
        const bool mayBeDeclared = token.kind == TokenKind::name && !isTypeWord(token.text);
        const VariableSpec* known = mayBeDeclared ? _scope.variable(token.text) : nullptr;
        if (known && known->form == Form::set) {
            spec.setName = token.text;
            spec.elementType = known->elementType;
            spec.range = known->range;
            _in.take();
            return spec;
        }
        if (known && !_scope.type(token.text)) throw ScriptError(token.at, "'" + token.text + "' is no set");
        if (token.text == "dynamic" || token.text == "set" || token.text == "range") {
            spec.dynamic = _in.skipWord("dynamic");
            if (_in.skipWord("set")) {
                spec.elementType = ofElement();
                return spec;
            }
            spec.elementType = hostTypeInteger;
            // A bare "range" between the parentheses grows, as all sets do that an array has for itself.
            if (_in.peek(1).kind != TokenKind::integer && !_in.peek(1).is("-")) spec.dynamic = true;
            range(spec);
            return spec;
        }
        spec.elementType = element();
        return spec;
    }

    HostType ofElement() {
        _in.expectWord("of");
        return element();
    }

    HostType element() {
        const Token token = _in.peek();
        if (token.kind != TokenKind::name) _in.fail("a type is expected");
        _in.take();
        for (const NamedType& known : builtInTypes)
            if (known.name == token.text) return known.type;
        if (token.text == "alias") return registered(token.at, [&] { return _types.addAlias(_name, ofElement()); });
        if (token.text == "record") return registered(token.at, [&] { return record(); });
        if (const HostType* declared = _scope.type(token.text)) return *declared;
        if (token.text == "set" || token.text == "list" || token.text == "array" || token.text == "range" ||
            token.text == "dynamic")
            throw ScriptError(token.at, "'" + token.text + "' cannot stand here: elements are scalars or records");
        throw ScriptError(token.at, "there is no type '" + token.text + "'");
    }

    HostType record() {
        std::vector<RecordField> fields;
        _in.expect("(");
        do {
            const Position at = _in.peek().at;
            RecordField field;
            field.name = _in.expectName("the name of a field");
            for (const RecordField& other : fields)
                if (other.name == field.name) throw ScriptError(at, "a second field '" + field.name + "'");
            _in.expect(":");
            field.type = element();
            fields.push_back(std::move(field));
        } while (_in.skip(","));
        _in.expect(")");
        return _types.addRecord(_name, std::move(fields));
    }

    template <class Register>
    HostType registered(Position at, Register&& body) {
        try {
            return body();
        } catch (const std::length_error& e) {
            throw ScriptError(at, e.what());
        }
    }

    TokenStream& _in;
    const Scope& _scope;
    TypeRegistry& _types;
    const std::string& _name;
};

}  // namespace

VariableSpec parseType(TokenStream& in, const Scope& scope, TypeRegistry& types, const std::string& name) {
    return TypeParser(in, scope, types, name).variable();
}

}  // namespace refhost
